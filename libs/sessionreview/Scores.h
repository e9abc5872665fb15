// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_SCORES_H
#define SESSIONREVIEW_SCORES_H

#include "sessionreview/Targets.h"

#include <QString>

#include <array>
#include <limits>

class CPREventBase;

namespace sessionreview {

/// On which side of its target the values lay that an advice (CPREventBase::Advice) of \a score is
/// about. Unknown when they lay on both, or the advice has one side only.
Side adviceSide(const CPREventBase &score, int advice);

/// Whether a score passes, and why.
struct Verdict {
    bool isPassed = false; ///< it is at least what is asked for
    QString text; ///< why, for people; empty when nothing is asked for or the score is not known
};
/// Below \a least percent a score does not pass, from \a advanced percent on it is of the advanced
/// level. 0 stands for a level that is not asked for.
Verdict verdictOn(int percent, int least, int advanced = 0);

/// What a bar of one of the manikin's histograms counts: values from one limit up to, but without,
/// the other.
struct Bar {
    double from = -std::numeric_limits<double>::infinity(); ///< the least value
    double to = std::numeric_limits<double>::infinity(); ///< all values are below it
    bool isTarget = false; ///< no value in it is outside the target
};

/// The histograms in the order of the manikin's statistics.
enum class HistogramKind { Depth, Release, CompressionRate, Pause, Volume, VentilationRate };
/// The bars of a histogram, from the least values on.
using Bars = std::array<Bar, 6>;
/// In mm, per minute, s or ml. Pauses and ventilation rates are not compared with a target.
Bars barsOf(HistogramKind kind, const Targets &targets);
/// Whether its values are whole numbers, so that a bar ends one before the next begins.
bool countsWholeNumbers(HistogramKind kind);

} // namespace sessionreview

#endif
