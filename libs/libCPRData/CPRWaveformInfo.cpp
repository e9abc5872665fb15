// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRWaveformInfo.h"

#include "private/MessageLayouts.h"
#include "private/RepeatedWarning.h"
#include "private/SessionArchive.h"
#include "private/Units.h"
#include "private/XmlReading.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <QLoggingCategory>
#include <QTimer>
#include <QXmlStreamWriter>

Q_LOGGING_CATEGORY(lcWaveformInfo, "Kelmar.CPRData.CPRWaveformInfo", QtWarningMsg)

namespace {

using namespace SessionArchive;

using Units::msecsPerSecond;

template <std::size_t N>
void writeAttributes(const CPRWaveformInfo &info, QXmlStreamWriter *writer,
                     const std::array<const char *, N> &names)
{
    for (const char *name : names)
        info.writeAttribFromProperty(writer, QString::fromLatin1(name));
}

} // namespace

CPRWaveformInfo::CPRWaveformInfo(CPRData *cprData) : CPRDataBase(cprData)
{
    announceChanges();
}

CPRWaveformInfo::CPRWaveformInfo(const CPRWaveformInfo &original, CPRData *cprData)
    : CPRDataBase(original, cprData), m_values(original.m_values)
{
    announceChanges();
}

CPRWaveformInfo::~CPRWaveformInfo() = default;

void CPRWaveformInfo::announceChanges()
{
    connect(signalTimer(), &QTimer::timeout, this, &CPRWaveformInfo::waveformInfoChanged);
}

void CPRWaveformInfo::setSampleRate(int rate)
{
    if (rate <= 0 || rate > msecsPerSecond) {
        if (isWarningPrinted(lcWaveformInfo, m_refused))
            qCWarning(lcWaveformInfo) << "Sample rate refused:" << rate;
        return;
    }
    m_values.samplePeriod = msecsPerSecond / rate;
    store(m_values.sampleRate, rate);
}

void CPRWaveformInfo::setSamplePeriod(int period)
{
    if (period <= 0 || period > msecsPerSecond) {
        if (isWarningPrinted(lcWaveformInfo, m_refused))
            qCWarning(lcWaveformInfo) << "Sample period refused:" << period << "ms";
        return;
    }
    m_values.sampleRate = msecsPerSecond / period;
    store(m_values.samplePeriod, period);
}

bool CPRWaveformInfo::incomingMsg(bls_2010::RMessage *msg)
{
    if (MessageLayouts::identifierOf(msg) != CommunicationIDs::RPL_WAVEINFO)
        return false;
    const int period = MessageLayouts::intOf(*msg, MessageLayouts::waveSamplePeriod);
    setSamplePeriod(period);
    // A message with a refused period is corrupt; its time is not believed either.
    if (period > 0)
        setMsecs(MessageLayouts::intOf(*msg, MessageLayouts::waveTime));
    return true;
}

void CPRWaveformInfo::write(QXmlStreamWriter *writer)
{
    if (!writer)
        return;
    writer->writeStartElement(QString::fromLatin1(waveForm));
    writeAttributes(*this, writer, waveFormAttributes);
    writer->writeStartElement(QString::fromLatin1(waveScale));
    writeAttributes(*this, writer, waveScaleAttributes);
    writer->writeEndElement();
    writer->writeStartElement(QString::fromLatin1(waveFile));
    writeAttributes(*this, writer, waveFileAttributes);
    writer->writeEndElement();
    writer->writeEndElement();
}

void CPRWaveformInfo::read(QXmlStreamReader *reader)
{
    if (!reader || !readNextChild(*reader) || reader->name() != QLatin1String(waveForm))
        return;
    readAttribsToProperties(reader);
    // Other elements are entered, so a description that a later version wraps is still found.
    while (!reader->atEnd()) {
        reader->readNext();
        if (reader->isEndElement() && reader->name() == QLatin1String(waveForm))
            return;
        if (reader->isStartElement()
            && (reader->name() == QLatin1String(waveScale)
                || reader->name() == QLatin1String(waveFile))) {
            readAttribsToProperties(reader);
            reader->skipCurrentElement();
        }
    }
}
