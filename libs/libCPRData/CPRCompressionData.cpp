// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRCompressionData.h"

#include "CPRData.h"
#include "CPRGuidelines.h"
#include "private/MessageFields.h"
#include "private/SessionArchive.h"
#include "private/SessionMsecs.h"
#include "private/WaveSamples.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

using bls_2010::CommonDefs;

namespace {

// Room for a first stretch of 40 s, so that a starting session does not grow the wave at once.
constexpr int reservedSamples = 2042;

} // namespace

CPRCompressionData::CPRCompressionData(CPRData *cprData)
    : CPRDataBase(cprData), m_samples(std::make_unique<WaveSamples>()),
      m_waveformInfo(new CPRWaveformInfo(cprData))
{
    m_waveformInfo->setParent(this);
    CPRCompressionData::initialize();
}

CPRCompressionData::CPRCompressionData(const CPRCompressionData &other, CPRData *cprData)
    : CPRDataBase(other, cprData), m_absoluteDepth(other.m_absoluteDepth),
      m_relativeDepth(other.m_relativeDepth), m_lastDepth(other.m_lastDepth),
      m_samples(std::make_unique<WaveSamples>(*other.m_samples)),
      m_compressionRate(other.m_compressionRate),
      m_waveformInfo(new CPRWaveformInfo(*other.m_waveformInfo, cprData))
{
    m_waveformInfo->setParent(this);
}

CPRCompressionData::~CPRCompressionData() = default;

void CPRCompressionData::initialize()
{
    CPRDataBase::initialize();
    reset();
    m_waveformInfo->setLsbValue(0.01F);
    m_waveformInfo->setScaleUnits(CPRWaveformInfo::mm);
    m_waveformInfo->setScaleUnitsPerMM(1.5F);
    m_waveformInfo->setScaleMax(0);
    m_waveformInfo->setScaleMin(-60);
    m_waveformInfo->setFileName(SessionArchive::nameInFolder(SessionArchive::Compressions));
    m_waveformInfo->setType(CPRWaveformInfo::comp);
    m_waveformInfo->setBitsPerSample(16);
    m_waveformInfo->setSampleRate(50);
    m_waveformInfo->setMsecs(0);
    m_waveformInfo->setLength(0);
}

void CPRCompressionData::reset()
{
    CPRDataBase::reset();
    m_samples->clear(reservedSamples);
    m_absoluteDepth = 0;
    m_relativeDepth = 0;
    m_compressionRate = 0;
}

bool CPRCompressionData::usesAbsoluteDepth() const
{
    const CPRGuidelines *guidelines = cprData() ? cprData()->cprGuidelines() : nullptr;
    return guidelines && guidelines->useAbsoluteDepth();
}

bool CPRCompressionData::incomingMsg(bls_2010::RMessage *msg)
{
    switch (MessageFields::identifierOf(msg)) {
    case CommunicationIDs::RPL_COMP_RATE_UPDATE:
        return rplmsg_RPL_COMP_RATE_UPDATE(msg);
    case CommunicationIDs::RPL_COMP_PEAK_EV:
        return rplmsg_RPL_COMP_PEAK_EV(msg);
    case CommunicationIDs::RPL_WAVEINFO:
        return rplmsg_RPL_WAVEINFO(msg);
    default:
        return false;
    }
}

// RPL_COMP_RATE_UPDATE (87)
//   1-2  s16  compressions per minute
bool CPRCompressionData::rplmsg_RPL_COMP_RATE_UPDATE(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    setCompressionRate(static_cast<qint16>(MessageFields::assembledU16(*msg, 1)));
    return true;
}

// RPL_COMP_PEAK_EV (104)
//   1-2  s16  peak depth, 10 micrometres
bool CPRCompressionData::rplmsg_RPL_COMP_PEAK_EV(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    Q_EMIT compressionPeakDepthChanged(static_cast<qint16>(MessageFields::assembledU16(*msg, 1)));
    return true;
}

bool CPRCompressionData::rplmsg_RPL_WAVEINFO(bls_2010::RMessage *msg)
{
    const quint8 wanted = usesAbsoluteDepth() ? CommonDefs::WAVE_ABSOLUTE_COMP_DEPTH
                                              : CommonDefs::WAVE_RELATIVE_COMP_DEPTH;
    return msg && MessageFields::valueAt<quint8>(*msg, 1) == wanted
        && m_waveformInfo->incomingMsg(msg);
}

void CPRCompressionData::waveDataReceived(CommonDefs::WaveType wType, int data, int seqNumber)
{
    if (wType == CommonDefs::WAVE_RELATIVE_COMP_DEPTH)
        setRelativeCompressionData(data, seqNumber);
    else if (wType == CommonDefs::WAVE_ABSOLUTE_COMP_DEPTH)
        setAbsoluteCompressionData(data, seqNumber);
}

void CPRCompressionData::setAbsoluteCompressionData(int value, int index)
{
    const bool changed = value != m_absoluteDepth;
    m_absoluteDepth = m_lastDepth = value;
    if (usesAbsoluteDepth())
        compressionWaveAppend(value, index);
    if (changed)
        Q_EMIT absoluteCompressionDepthChanged(value);
}

void CPRCompressionData::setRelativeCompressionData(int value, int index)
{
    const bool changed = value != m_relativeDepth;
    m_relativeDepth = m_lastDepth = value;
    if (!usesAbsoluteDepth())
        compressionWaveAppend(value, index);
    if (changed)
        Q_EMIT relativeCompressionDepthChanged(value);
}

void CPRCompressionData::compressionWaveAppend(int value, int index)
{
    m_samples->record(value, index);
}

void CPRCompressionData::setCompressionRate(short rate)
{
    if (rate == m_compressionRate)
        return;
    m_compressionRate = rate;
    Q_EMIT compressionRateChanged(rate);
}

void CPRCompressionData::fill(int n)
{
    m_samples->fill(n, m_lastDepth);
}

void CPRCompressionData::cutOffWavedataAtTime(int msec)
{
    m_samples->cutOff(msec, m_waveformInfo->samplePeriod());
}

int CPRCompressionData::at(int index) const
{
    return m_samples->at(index);
}

int CPRCompressionData::count() const
{
    return m_samples->count();
}

int CPRCompressionData::sessionTimeFromData() const
{
    return sessionMsecs(qint64(m_waveformInfo->samplePeriod()) * count());
}

bool CPRCompressionData::writeCompresseionWave(QIODevice *device) const
{
    return m_samples->write(device);
}

QString CPRCompressionData::readCompresseionWave(QIODevice *device)
{
    return m_samples->read(device);
}

void CPRCompressionData::writeWaveformInfo(QXmlStreamWriter *writer)
{
    m_waveformInfo->setLength(count());
    m_waveformInfo->write(writer);
}

void CPRCompressionData::readWaveformInfo(QXmlStreamReader *reader)
{
    read(reader);
    m_waveformInfo->read(reader);
}
