// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRWaveData.h"

#include "private/WaveSamples.h"

namespace {

// Room for a first stretch of 40 s, so that a starting session does not grow the wave at once.
constexpr int reservedSamples = 2042;

} // namespace

CPRWaveData::CPRWaveData(CPRData *cprData)
    : CPRDataBase(cprData), m_samples(std::make_unique<WaveSamples>()),
      m_waveformInfo(new CPRWaveformInfo(cprData))
{
    m_waveformInfo->setParent(this);
}

CPRWaveData::CPRWaveData(const CPRWaveData &other, CPRData *cprData)
    : CPRDataBase(other, cprData), m_samples(std::make_unique<WaveSamples>(*other.m_samples)),
      m_waveformInfo(new CPRWaveformInfo(*other.m_waveformInfo, cprData))
{
    m_waveformInfo->setParent(this);
}

CPRWaveData::~CPRWaveData() = default;

void CPRWaveData::reset()
{
    CPRDataBase::reset();
    m_samples->clear(reservedSamples);
}

int CPRWaveData::at(int index) const
{
    return m_samples->at(index);
}

int CPRWaveData::count() const
{
    return m_samples->count();
}

void CPRWaveData::cutOffWavedataAtTime(int msec)
{
    m_samples->cutOff(msec, m_waveformInfo->samplePeriod());
}

void CPRWaveData::writeWaveformInfo(QXmlStreamWriter *writer)
{
    m_waveformInfo->setLength(count());
    m_waveformInfo->write(writer);
}

void CPRWaveData::readWaveformInfo(QXmlStreamReader *reader)
{
    read(reader);
    m_waveformInfo->read(reader);
}
