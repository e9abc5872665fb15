// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRVentilationData.h"

#include "CPRData.h"
#include "private/MessageFields.h"
#include "private/ResponseId.h"
#include "private/SessionArchive.h"
#include "private/WaveSamples.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <QLoggingCategory>

using bls_2010::CommonDefs;

Q_LOGGING_CATEGORY(lcVentilationData, "Kelmar.CPRData.CPRVentilationData", QtWarningMsg)

CPRVentilationData::CPRVentilationData(CPRData *cprData)
    : CPRDataBase(cprData), m_samples(std::make_unique<WaveSamples>()),
      m_waveformInfo(new CPRWaveformInfo(cprData))
{
    m_waveformInfo->setParent(this);
    CPRVentilationData::initialize();
}

CPRVentilationData::CPRVentilationData(const CPRVentilationData &other, CPRData *cprData)
    : CPRDataBase(other, cprData), m_volume(other.m_volume),
      m_samples(std::make_unique<WaveSamples>(*other.m_samples)), m_rate(other.m_rate),
      m_waveformInfo(new CPRWaveformInfo(*other.m_waveformInfo, cprData))
{
    m_waveformInfo->setParent(this);
}

CPRVentilationData::~CPRVentilationData() = default;

void CPRVentilationData::initialize()
{
    CPRDataBase::initialize();
    m_waveformInfo->setLsbValue(1.0F);
    m_waveformInfo->setScaleUnits(CPRWaveformInfo::ml);
    m_waveformInfo->setScaleUnitsPerMM(100.0F);
    m_waveformInfo->setScaleMax(3000.0F);
    m_waveformInfo->setScaleMin(-1000.0F);
    m_waveformInfo->setOffset(0);
    m_waveformInfo->setFileName(SessionArchive::nameInFolder(SessionArchive::Ventilations));
    m_waveformInfo->setMsecs(0);
    m_waveformInfo->setType(CPRWaveformInfo::vent);
    m_waveformInfo->setBitsPerSample(16);
    m_waveformInfo->setSampleRate(50);
}

void CPRVentilationData::reset()
{
    CPRDataBase::reset();
    m_samples->clear();
}

bool CPRVentilationData::incomingMsg(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    qCInfo(lcVentilationData) << "ResponseID" << ResponseId{msg->getIdentifier()};
    switch (msg->getIdentifier()) {
    case CommunicationIDs::RPL_WAVEINFO:
        return rplmsg_RPL_WAVEINFO(msg);
    case CommunicationIDs::RPL_VENT_RATE_UPDATE:
        return rplmsg_RPL_VENT_RATE_UPDATE(msg);
    default:
        return false;
    }
}

bool CPRVentilationData::rplmsg_RPL_WAVEINFO(bls_2010::RMessage *msg)
{
    return msg && MessageFields::valueAt<quint8>(*msg, 1) == CommonDefs::WAVE_VENT_VOLUME
        && m_waveformInfo->incomingMsg(msg);
}

// RPL_VENT_RATE_UPDATE (88)
//   1  s8  ventilations per minute
bool CPRVentilationData::rplmsg_RPL_VENT_RATE_UPDATE(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    setVentilationRate(MessageFields::valueAt<qint8>(*msg, 1));
    return true;
}

void CPRVentilationData::waveDataReceived(CommonDefs::WaveType wType, int data, int seqNumber)
{
    qCDebug(lcVentilationData) << "wType" << wType << "data" << data << "seqNumber" << seqNumber;
    if (wType == CommonDefs::WAVE_VENT_VOLUME)
        setVentilationData(data, seqNumber);
}

void CPRVentilationData::setVentilationData(int value, int sequence)
{
    if (value == m_volume) {
        qCDebug(lcVentilationData) << "value" << value << "sequence" << sequence;
    } else {
        m_volume = value;
        qCInfo(lcVentilationData) << "value" << value << "sequence" << sequence;
        Q_EMIT ventilationVolumeChanged(value);
    }
    if (m_samples->count() == 0) {
        m_waveformInfo->setMsecs(sessionTime());
        m_waveformInfo->sendSignal();
    }
    m_samples->record(value, sequence);
}

void CPRVentilationData::setVentilationRate(int rate)
{
    qCInfo(lcVentilationData) << "rate" << rate;
    if (rate == m_rate)
        return;
    m_rate = rate;
    Q_EMIT ventilationRateChanged(rate);
}

void CPRVentilationData::fill(int n)
{
    qCDebug(lcVentilationData) << Q_FUNC_INFO;
    m_samples->fill(n, 0);
}

void CPRVentilationData::cutOffWavedataAtTime(int msec)
{
    qCInfo(lcVentilationData) << Q_FUNC_INFO;
    m_samples->cutOff(msec, m_waveformInfo->samplePeriod());
}

int CPRVentilationData::at(int index) const
{
    return m_samples->at(index);
}

int CPRVentilationData::count() const
{
    return m_samples->count();
}

bool CPRVentilationData::writeVentilationWave(QIODevice *device) const
{
    qCInfo(lcVentilationData) << "Ventilation count:" << count()
                              << "msec:" << qint64(count()) * m_waveformInfo->samplePeriod();
    return m_samples->write(device);
}

QString CPRVentilationData::readVentilationWave(QIODevice *device)
{
    return m_samples->read(device);
}

void CPRVentilationData::writeWaveformInfo(QXmlStreamWriter *writer)
{
    m_waveformInfo->setLength(count());
    m_waveformInfo->write(writer);
}

void CPRVentilationData::readWaveformInfo(QXmlStreamReader *reader)
{
    read(reader);
    m_waveformInfo->read(reader);
}
