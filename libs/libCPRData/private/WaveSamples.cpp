// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "private/WaveSamples.h"

#include "private/DeviceReading.h"
#include "private/Limits.h"
#include "private/SessionArchive.h"

#include <QByteArray>
#include <QIODevice>
#include <QLoggingCategory>
#include <QtEndian>

#include <algorithm>

Q_LOGGING_CATEGORY(lcWaveSamples, "Kelmar.CPRData.WaveSamples", QtWarningMsg)

using SessionArchive::bytesPerSample;

namespace {

constexpr int samplesPerBlock = 32768;

} // namespace

void WaveSamples::clear(int reserved)
{
    m_samples.clear();
    m_samples.reserve(reserved);
    m_isFull = false;
}

int WaveSamples::roomFor(int n)
{
    const int room = Limits::maxSamples - m_samples.size();
    if (n <= room)
        return n;
    if (!m_isFull)
        qCWarning(lcWaveSamples, "Lost data: a wave holds no more than %d samples",
                  Limits::maxSamples);
    m_isFull = true;
    return room;
}

void WaveSamples::overwrite(int index, int value)
{
    std::fill(m_samples.begin() + index, m_samples.end(), value);
}

void WaveSamples::fill(int n, int value)
{
    if (n > 0)
        m_samples.insert(m_samples.end(), roomFor(n), value);
}

void WaveSamples::cutOff(int msec, int samplePeriod)
{
    if (samplePeriod <= 0)
        return;
    const qint64 keep = qMax<qint64>(0, qint64(msec) / samplePeriod + 1);
    if (keep < m_samples.size()) {
        m_samples.resize(static_cast<int>(keep));
        m_isFull = false;
    }
}

bool WaveSamples::write(QIODevice *device) const
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

QString WaveSamples::read(QIODevice *device)
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
