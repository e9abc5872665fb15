// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef UNITS_H
#define UNITS_H

#include <QtGlobal>

#include <algorithm>
#include <limits>

/// Between the units that the session is kept in and those of messages and of people.
namespace Units {

constexpr int msecsPerSecond = 1000;
constexpr int msecsPerMinute = 60 * msecsPerSecond;
/// Guideline sets, waves and statistics hold depths in hundredths of a millimetre.
constexpr int hmmPerMm = 100;

/// Times are computed in 64 bits and brought back to the int range here: a corrupt sequence
/// number must give a wrong time, not undefined behaviour.
inline int sessionMsecs(qint64 msecs)
{
    return static_cast<int>(std::clamp<qint64>(msecs, std::numeric_limits<int>::min(),
                                               std::numeric_limits<int>::max()));
}

/// The seconds that have begun: 12,001 ms are 13 s.
inline int secsBegun(int msecs)
{
    return msecs / msecsPerSecond + (msecs % msecsPerSecond > 0 ? 1 : 0);
}

/// Millimetres, with their fraction.
constexpr double mmOf(double hmm)
{
    return hmm / hmmPerMm;
}

} // namespace Units

#endif
