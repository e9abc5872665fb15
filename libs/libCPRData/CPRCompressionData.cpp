// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRCompressionData.h"

#include "CPRData.h"
#include "CPRGuidelines.h"
#include "private/MessageLayouts.h"
#include "private/SessionArchive.h"
#include "private/Units.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

using bls_2010::CommonDefs;

CPRCompressionData::CPRCompressionData(CPRData *cprData) : CPRWaveData(cprData)
{
    CPRCompressionData::initialize();
}

CPRCompressionData::CPRCompressionData(const CPRCompressionData &other, CPRData *cprData)
    : CPRWaveData(other, cprData), m_absoluteDepth(other.m_absoluteDepth),
      m_relativeDepth(other.m_relativeDepth), m_lastDepth(other.m_lastDepth),
      m_compressionRate(other.m_compressionRate)
{
}

void CPRCompressionData::initialize()
{
    CPRDataBase::initialize();
    reset();
    CPRWaveformInfo &info = *waveformInfo();
    info.setLsbValue(0.01F);
    info.setScaleUnits(CPRWaveformInfo::mm);
    info.setScaleUnitsPerMM(1.5F);
    info.setScaleMax(0);
    info.setScaleMin(-60);
    info.setFileName(SessionArchive::nameInFolder(SessionArchive::Compressions));
    info.setType(CPRWaveformInfo::comp);
    info.setBitsPerSample(16);
    info.setSampleRate(50);
    info.setMsecs(0);
    info.setLength(0);
}

void CPRCompressionData::reset()
{
    CPRWaveData::reset();
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
    switch (MessageLayouts::identifierOf(msg)) {
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

bool CPRCompressionData::rplmsg_RPL_COMP_RATE_UPDATE(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    setCompressionRate(
        static_cast<short>(MessageLayouts::intOf(*msg, MessageLayouts::compressionRate)));
    return true;
}

bool CPRCompressionData::rplmsg_RPL_COMP_PEAK_EV(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    Q_EMIT compressionPeakDepthChanged(MessageLayouts::intOf(*msg, MessageLayouts::peakDepth));
    return true;
}

bool CPRCompressionData::rplmsg_RPL_WAVEINFO(bls_2010::RMessage *msg)
{
    const quint8 wanted = usesAbsoluteDepth() ? CommonDefs::WAVE_ABSOLUTE_COMP_DEPTH
                                              : CommonDefs::WAVE_RELATIVE_COMP_DEPTH;
    return msg && MessageLayouts::intOf(*msg, MessageLayouts::waveType) == wanted
        && waveformInfo()->incomingMsg(msg);
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
    record(value, index);
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
    repeat(n, m_lastDepth);
}

int CPRCompressionData::sessionTimeFromData() const
{
    return Units::sessionMsecs(qint64(waveformInfo()->samplePeriod()) * count());
}

bool CPRCompressionData::writeCompresseionWave(QIODevice *device) const
{
    return writeSamples(device);
}

QString CPRCompressionData::readCompresseionWave(QIODevice *device)
{
    return readSamples(device);
}
