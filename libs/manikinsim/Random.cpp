// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/Random.h"

namespace manikinsim {

namespace {

quint64 splitmix(quint64 &state)
{
    state += Q_UINT64_C(0x9e3779b97f4a7c15);
    quint64 mixed = state;
    mixed = (mixed ^ (mixed >> 30)) * Q_UINT64_C(0xbf58476d1ce4e5b9);
    mixed = (mixed ^ (mixed >> 27)) * Q_UINT64_C(0x94d049bb133111eb);
    return mixed ^ (mixed >> 31);
}

quint64 rotated(quint64 value, int bits)
{
    return (value << bits) | (value >> (64 - bits));
}

} // namespace

Random::Random(quint64 seed, quint64 stream)
{
    quint64 mixer = stream;
    quint64 state = seed ^ splitmix(mixer);
    for (quint64 &word : m_state)
        word = splitmix(state);
}

quint64 Random::next()
{
    const quint64 result = rotated(m_state[1] * 5, 7) * 9;
    const quint64 shifted = m_state[1] << 17;
    m_state[2] ^= m_state[0];
    m_state[3] ^= m_state[1];
    m_state[1] ^= m_state[2];
    m_state[0] ^= m_state[3];
    m_state[2] ^= shifted;
    m_state[3] = rotated(m_state[3], 45);
    return result;
}

int Random::below(int count)
{
    return static_cast<int>(((next() >> 32) * static_cast<quint64>(count)) >> 32);
}

int Random::around(int mean, int spread)
{
    // The sum of twelve numbers of 16 bits is a good bell curve. Its mean is 12 x 65535 / 2 and,
    // but for a part in 4 x 10^9, its standard deviation is 65536.
    constexpr qint64 one = 65536;
    qint64 bell = -12 * (one - 1) / 2;
    for (int i = 0; i < 3; ++i) {
        quint64 draw = next();
        for (int j = 0; j < 4; ++j, draw >>= 16)
            bell += static_cast<qint64>(draw & 0xffff);
    }
    bell = qBound(-3 * one, bell, 3 * one);
    // Rounded to nearest; the bias keeps the dividend positive.
    const qint64 bias = 4 * qint64(qAbs(spread)) + 1;
    return static_cast<int>(mean - bias + (spread * bell + bias * one + one / 2) / one);
}

} // namespace manikinsim
