// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/KeptWave.h"

#include <algorithm>
#include <array>

namespace manikinsim {

namespace {

// Some times as many samples as the longest loss takes.
constexpr int heldSamples = 2048;
constexpr int settledAtOnce = 2048;

constexpr std::array<quint32, 256> crcTable()
{
    std::array<quint32, 256> table{};
    for (quint32 i = 0; i < table.size(); ++i) {
        quint32 crc = i;
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc & 1) != 0 ? (crc >> 1) ^ 0xedb88320U : crc >> 1;
        table[i] = crc;
    }
    return table;
}

quint32 crcWith(quint32 crc, quint8 byte)
{
    static constexpr std::array<quint32, 256> table = crcTable();
    crc = ~crc;
    crc = (crc >> 8) ^ table[(crc ^ byte) & 0xff];
    return ~crc;
}

} // namespace

void KeptWave::record(int value, int index)
{
    if (index >= count() || index < m_settled.count) {
        fill(1, value);
        return;
    }
    std::fill(m_open.begin() + (index - m_settled.count), m_open.end(), value);
}

void KeptWave::fill(int samples, int value)
{
    m_open.insert(m_open.end(), static_cast<std::size_t>(samples), value);
    if (m_open.size() < heldSamples + settledAtOnce)
        return;
    const auto end = m_open.end() - heldSamples;
    std::for_each(m_open.begin(), end, [this](int open) { settle(m_settled, open); });
    m_open.erase(m_open.begin(), end);
}

void KeptWave::settle(Truth::Wave &wave, int value)
{
    wave.minimum = wave.count == 0 ? value : qMin(wave.minimum, value);
    wave.maximum = wave.count == 0 ? value : qMax(wave.maximum, value);
    ++wave.count;
    wave.crc32 = crcWith(wave.crc32, static_cast<quint8>(value));
    wave.crc32 = crcWith(wave.crc32, static_cast<quint8>(value >> 8));
}

Truth::Wave KeptWave::summary() const
{
    Truth::Wave wave = m_settled;
    for (const int value : m_open)
        settle(wave, value);
    return wave;
}

} // namespace manikinsim
