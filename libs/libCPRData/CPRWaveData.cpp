// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRWaveData.h"

#include "private/DeviceReading.h"
#include "private/Limits.h"
#include "private/SessionArchive.h"

#include <QByteArray>
#include <QIODevice>
#include <QLoggingCategory>
#include <QtEndian>

#include <algorithm>

using SessionArchive::bytesPerSample;

Q_LOGGING_CATEGORY(lcWaveData, "Kelmar.CPRData.CPRWaveData", QtWarningMsg)

namespace {

// Room for a first stretch of 40 s, so that a starting session does not grow the wave at once.
constexpr int reservedSamples = 2042;
constexpr int samplesPerBlock = 32768;

} // namespace

CPRWaveData::CPRWaveData(CPRData *cprData)
    : CPRDataBase(cprData), m_waveformInfo(new CPRWaveformInfo(cprData))
{
    m_waveformInfo->setParent(this);
}

CPRWaveData::CPRWaveData(const CPRWaveData &other, CPRData *cprData)
    : CPRDataBase(other, cprData), m_samples(other.m_samples), m_isFull(other.m_isFull),
      m_waveformInfo(new CPRWaveformInfo(*other.m_waveformInfo, cprData))
{
    m_waveformInfo->setParent(this);
}

void CPRWaveData::reset()
{
    CPRDataBase::reset();
    m_samples.clear();
    m_samples.reserve(reservedSamples);
    m_isFull = false;
}

// How many of n further samples the wave has room for. The first that it has none for is warned of.
int CPRWaveData::roomFor(int n)
{
    const int room = Limits::maxSamples - m_samples.size();
    if (n <= room)
        return n;
    if (!m_isFull)
        qCWarning(lcWaveData, "Lost data: a wave holds no more than %d samples",
                  Limits::maxSamples);
    m_isFull = true;
    return room;
}

void CPRWaveData::record(int value, int index)
{
    if (index >= 0 && index < m_samples.size())
        std::fill(m_samples.begin() + index, m_samples.end(), value);
    else if (roomFor(1) == 1)
        m_samples.append(value);
}

void CPRWaveData::repeat(int n, int value)
{
    if (n > 0)
        m_samples.insert(m_samples.end(), roomFor(n), value);
}

void CPRWaveData::cutOffWavedataAtTime(int msec)
{
    // At 0 one sample is left, a period before it none.
    const qint64 keep = qMax<qint64>(0, qint64(msec) / m_waveformInfo->samplePeriod() + 1);
    if (keep < m_samples.size()) {
        m_samples.resize(static_cast<int>(keep));
        m_isFull = false;
    }
}

bool CPRWaveData::writeSamples(QIODevice *device) const
{
    if (!device)
        return false;
    QByteArray block;
    for (int begin = 0; begin < m_samples.size(); begin += samplesPerBlock) {
        const int samples = qMin(samplesPerBlock, m_samples.size() - begin);
        block.resize(samples * bytesPerSample);
        char *to = block.data();
        for (int i = begin; i < begin + samples; ++i, to += bytesPerSample)
            qToLittleEndian(static_cast<qint16>(m_samples.at(i)), to);
        if (device->write(block) != block.size())
            return false;
    }
    return true;
}

QString CPRWaveData::readSamples(QIODevice *device)
{
    if (!device)
        return QString();
    const qint64 expected = m_samples.size() + device->bytesAvailable() / bytesPerSample;
    m_samples.reserve(static_cast<int>(qMin<qint64>(expected, Limits::maxSamples)));
    QByteArray block(samplesPerBlock * bytesPerSample, Qt::Uninitialized);
    bool hasFailed = false;
    qint64 bytes = 0;
    do {
        bytes = readFully(*device, block.data(), block.size(), hasFailed);
        const int samples = static_cast<int>(bytes) / bytesPerSample;
        const int begin = m_samples.size();
        m_samples.resize(begin + qMin(samples, Limits::maxSamples - begin));
        const char *from = block.constData();
        std::for_each(m_samples.begin() + begin, m_samples.end(), [&from](int &sample) {
            sample = qFromLittleEndian<qint16>(from);
            from += bytesPerSample;
        });
        if (m_samples.size() < begin + samples) // said by the result, not by a warning of its own
            return QStringLiteral("more than %1 samples").arg(Limits::maxSamples);
    } while (bytes == block.size());
    return hasFailed ? device->errorString() : QString();
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
