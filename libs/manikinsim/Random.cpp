// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/Random.h"

namespace manikinsim {

Random::Random(quint64 seed, quint32 stream)
{
    std::seed_seq words{static_cast<quint32>(seed), static_cast<quint32>(seed >> 32), stream};
    m_generator.seed(words);
}

int Random::below(int count)
{
    return static_cast<int>(((m_generator() >> 32) * static_cast<quint64>(count)) >> 32);
}

int Random::around(int mean, int spread)
{
    // The sum of twelve numbers of 16 bits is a good bell curve. Its mean is 12 x 65535 / 2 and,
    // but for a part in 4 x 10^9, its standard deviation is 65536.
    constexpr qint64 one = 65536;
    qint64 bell = -12 * (one - 1) / 2;
    for (int i = 0; i < 12; ++i)
        bell += below(one);
    bell = qBound(-3 * one, bell, 3 * one);
    // Rounded to nearest; the bias keeps the dividend positive.
    const qint64 bias = 4 * qint64(qAbs(spread)) + 1;
    return static_cast<int>(mean - bias + (spread * bell + bias * one + one / 2) / one);
}

} // namespace manikinsim
