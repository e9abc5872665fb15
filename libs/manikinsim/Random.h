// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_RANDOM_H
#define MANIKINSIM_RANDOM_H

#include <QtGlobal>

#include <random>

namespace manikinsim {

/// Random integers that are the same on every platform for the same seed. The distributions of the
/// standard library differ from one library to the next and are not used; its generator does not.
class Random {
public:
    /// One seed has many independent streams, so that a draw more in one place of the simulation
    /// leaves all other places as they were.
    Random(quint64 seed, quint32 stream);

    /// A number from 0 to \a count - 1; \a count is positive.
    int below(int count);
    /// A number from \a first to \a last.
    int between(int first, int last) { return first + below(last - first + 1); }
    /// True in \a share of 100 draws.
    bool percent(int share) { return below(100) < share; }
    /// A number from a bell curve around \a mean with the standard deviation \a spread, never
    /// further away from the mean than three spreads.
    int around(int mean, int spread);

private:
    std::mt19937_64 m_generator;
};

} // namespace manikinsim

#endif
