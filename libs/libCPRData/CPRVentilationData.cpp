// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRVentilationData.h"

#include "CPRData.h"
#include "private/MessageLayouts.h"
#include "private/ResponseId.h"
#include "private/SessionArchive.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <QLoggingCategory>

using bls_2010::CommonDefs;

Q_LOGGING_CATEGORY(lcVentilationData, "Kelmar.CPRData.CPRVentilationData", QtWarningMsg)

CPRVentilationData::CPRVentilationData(CPRData *cprData) : CPRWaveData(cprData)
{
    CPRVentilationData::initialize();
}

CPRVentilationData::CPRVentilationData(const CPRVentilationData &other, CPRData *cprData)
    : CPRWaveData(other, cprData), m_volume(other.m_volume), m_rate(other.m_rate)
{
}

void CPRVentilationData::initialize()
{
    CPRDataBase::initialize();
    CPRWaveformInfo &info = *waveformInfo();
    info.setLsbValue(1.0F);
    info.setScaleUnits(CPRWaveformInfo::ml);
    info.setScaleUnitsPerMM(100.0F);
    info.setScaleMax(3000.0F);
    info.setScaleMin(-1000.0F);
    info.setOffset(0);
    info.setFileName(SessionArchive::nameInFolder(SessionArchive::Ventilations));
    info.setMsecs(0);
    info.setType(CPRWaveformInfo::vent);
    info.setBitsPerSample(16);
    info.setSampleRate(50);
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
    return msg
        && MessageLayouts::intOf(*msg, MessageLayouts::waveType) == CommonDefs::WAVE_VENT_VOLUME
        && waveformInfo()->incomingMsg(msg);
}

bool CPRVentilationData::rplmsg_RPL_VENT_RATE_UPDATE(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    setVentilationRate(MessageLayouts::intOf(*msg, MessageLayouts::ventilationRate));
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
    if (count() == 0) {
        waveformInfo()->setMsecs(sessionTime());
        waveformInfo()->sendSignal();
    }
    record(value, sequence);
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
    repeat(n, 0);
}

void CPRVentilationData::cutOffWavedataAtTime(int msec)
{
    qCInfo(lcVentilationData) << Q_FUNC_INFO;
    CPRWaveData::cutOffWavedataAtTime(msec);
}

bool CPRVentilationData::writeVentilationWave(QIODevice *device) const
{
    qCInfo(lcVentilationData) << "Ventilation count:" << count()
                              << "msec:" << qint64(count()) * waveformInfo()->samplePeriod();
    return writeSamples(device);
}

QString CPRVentilationData::readVentilationWave(QIODevice *device)
{
    return readSamples(device);
}
