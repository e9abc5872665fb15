// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/Scores.h"

#include <CPREventSessionInfo.h>
#include <CPREvents.h>
#include <private/HistogramBins.h>
#include <private/Units.h>

#include <QCoreApplication>

namespace sessionreview {

namespace {

using E = CPREventBase;
using bls_2010::CommonDefs;

Side sideOf(const E &score, E::ParameterType below, E::ParameterType above)
{
    // A few values on the other side do not change what has to be done.
    constexpr int muchMore = 3;
    const int low = score.parameterValue(below, 0).toInt();
    const int high = score.parameterValue(above, 0).toInt();
    if (low > muchMore * high)
        return Side::Below;
    return high > muchMore * low ? Side::Above : Side::Unknown;
}

bool isPerMinute(const E &score)
{
    const CPREvents *events = score.events();
    const E *info = events ? events->sessionInfo() : nullptr;
    return info
        && info->parameterValue(E::cprProtocol, 0).toInt() == CommonDefs::CPR_HIGH_PERFORMANCE;
}

struct HistogramRow {
    HistogramKind kind;
    HistogramBins::Beginnings beginnings;
    int unit; ///< of the beginnings in the unit that people read
};

constexpr HistogramRow histograms[] = {
    {HistogramKind::Depth, HistogramBins::depths, Units::hmmPerMm},
    {HistogramKind::Release, HistogramBins::releases, Units::hmmPerMm},
    {HistogramKind::CompressionRate, HistogramBins::rates, 1},
    {HistogramKind::Pause, HistogramBins::pauses, 1},
    {HistogramKind::Volume, HistogramBins::volumes, 1},
    {HistogramKind::VentilationRate, HistogramBins::ventilationRates, 1},
};

bool isTarget(const Bar &bar, HistogramKind kind, const Targets &targets)
{
    switch (kind) {
    case HistogramKind::Depth:
        return targets.depth.isValid() && bar.from >= targets.depth.min
            && bar.to <= targets.depth.max;
    case HistogramKind::Release:
        return bar.to <= targets.releaseDepth;
    case HistogramKind::CompressionRate:
        return targets.rate.isValid() && bar.from >= targets.rate.min
            && bar.to - 1 <= targets.rate.max;
    case HistogramKind::Volume:
        return targets.volume.isValid() && bar.from >= targets.volume.min
            && bar.to <= targets.volume.max;
    case HistogramKind::Pause:
    case HistogramKind::VentilationRate:
        break;
    }
    return false;
}

} // namespace

Side adviceSide(const CPREventBase &score, int advice)
{
    switch (advice) {
    case E::Advice_CorrectRate:
        return sideOf(score, E::compRateLowScoreReduction, E::compRateHighScoreReduction);
    case E::Advice_CorrectVolume:
        return sideOf(score, E::ventShallowScoreReduction, E::ventExcessiveScoreReduction);
    case E::Advice_CorrectVentRate:
        return isPerMinute(score)
            ? sideOf(score, E::ventsPerMinuteSlowScoreReduction,
                     E::ventsPerMinuteFastScoreReduction)
            : sideOf(score, E::ventRateLowScoreReduction, E::ventRateHighScoreReduction);
    default:
        return Side::Unknown;
    }
}

Verdict verdictOn(int percent, int least, int advanced)
{
    if (percent < 0 || least <= 0)
        return {};
    if (percent < least)
        return {false, QCoreApplication::translate("sessionreview", "below %1 %").arg(least)};
    if (advanced <= 0)
        return {true, QCoreApplication::translate("sessionreview", "at least %1 %").arg(least)};
    return percent < advanced
        ? Verdict{true, QCoreApplication::translate("sessionreview", "basic, from %1 %").arg(least)}
        : Verdict{
            true,
            QCoreApplication::translate("sessionreview", "advanced, from %1 %").arg(advanced)};
}

Bars barsOf(HistogramKind kind, const Targets &targets)
{
    const HistogramRow &row = histograms[static_cast<std::size_t>(kind)];
    Bars bars;
    for (std::size_t i = 0; i < bars.size(); ++i) {
        if (i > 0)
            bars[i].from = double(row.beginnings[i - 1]) / row.unit;
        if (i < row.beginnings.size())
            bars[i].to = double(row.beginnings[i]) / row.unit;
        bars[i].isTarget = isTarget(bars[i], kind, targets);
    }
    return bars;
}

bool countsWholeNumbers(HistogramKind kind)
{
    return histograms[static_cast<std::size_t>(kind)].unit == 1;
}

} // namespace sessionreview
