// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "WaveSamples.h"

#include <QByteArray>
#include <QIODevice>
#include <QtEndian>

#include <algorithm>

namespace {

constexpr int bytesPerSample = 2;
constexpr int samplesPerBlock = 32768;

} // namespace

void WaveSamples::clear(int reserved)
{
    m_samples.clear();
    m_samples.reserve(reserved);
}

void WaveSamples::overwrite(int index, int value)
{
    std::fill(m_samples.begin() + index, m_samples.end(), value);
}

void WaveSamples::fill(int n, int value)
{
    if (n > 0 && n <= maximalCount - m_samples.size())
        m_samples.insert(m_samples.end(), n, value);
}

void WaveSamples::cutOff(int msec, int samplePeriod)
{
    if (samplePeriod <= 0)
        return;
    const qint64 keep = qMax<qint64>(0, qint64(msec) / samplePeriod + 1);
    if (keep < m_samples.size())
        m_samples.resize(static_cast<int>(keep));
}

bool WaveSamples::write(QIODevice *device) const
{
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
    m_samples.reserve(static_cast<int>(qMin<qint64>(expected, maximalCount)));
    QByteArray block(samplesPerBlock * bytesPerSample, Qt::Uninitialized);
    int split = 0; // bytes of a sample that a read has split
    qint64 taken = 0;
    while ((taken = device->read(block.data() + split, block.size() - split)) > 0) {
        const int bytes = split + static_cast<int>(taken);
        const int samples = bytes / bytesPerSample;
        const int begin = m_samples.size();
        if (samples > maximalCount - begin)
            return QStringLiteral("more than %1 samples").arg(maximalCount);
        m_samples.resize(begin + samples);
        const char *from = block.constData();
        std::for_each(m_samples.begin() + begin, m_samples.end(), [&from](int &sample) {
            sample = qFromLittleEndian<qint16>(from);
            from += bytesPerSample;
        });
        split = bytes % bytesPerSample;
        std::copy_n(from, split, block.data());
    }
    // Some devices give -1 at their end as well.
    return taken < 0 && !device->atEnd() ? device->errorString() : QString();
}
