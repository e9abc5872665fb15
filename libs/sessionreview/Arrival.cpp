// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/Arrival.h"

namespace sessionreview {

namespace {

using E = CPREventBase;

/// A parameter of a score that comes with the same message as \a parameter and that no fresh event
/// has; \a parameter itself where it is such a one, or is no matter of the manikin's.
E::ParameterType companionInScore(E::ParameterType parameter)
{
    const bool isSetting =
        parameter == E::categoryThresholdBasic || parameter == E::categoryThresholdAdvanced;
    return isSetting ? parameter : E::compReleaseScoreReduction;
}

/// The same for statistics.
E::ParameterType companionInStatistics(E::ParameterType parameter)
{
    switch (parameter) {
    // Counts, means and times.
    case E::sessionDuration:
    case E::compCount:
    case E::compMeanRate:
    case E::compHandPosCorrectPercentage:
    case E::ventCount:
    case E::ventCyclesCount:
    case E::ventMeanVolume:
    case E::ventMeanRate:
    case E::inactivityAverageTime:
    case E::inactivityTime:
        return E::compMeanDepth;
    // The end of that message, which older manikins do not send.
    case E::ventilationsPerMinute:
        return E::flowTimePercentage;
    // What depends on the guideline set.
    case E::compCorrectDepthPercentage:
    case E::compCorrectReleasePercentage:
    case E::compCorrectRatePercentage:
    case E::ventCorrectVolumePercentage:
    case E::ventTooMuchVolumePercentage:
    case E::ventNotEnoughVolumePercentage:
    case E::ventCorrectRateCprPercentage:
    case E::ventCorrectRateVentOnlyPercentage:
        return E::compTooLowRatePercentage;
    default:
        return parameter;
    }
}

} // namespace

bool hasArrived(const CPREventBase *event, CPREventBase::ParameterType parameter)
{
    QString key;
    if (!event)
        return false;
    if (event->type() == E::CprSessionScore)
        return event->hasParameterType(companionInScore(parameter), key);
    if (event->type() == E::CprSessionStatistics)
        return event->hasParameterType(companionInStatistics(parameter), key);
    return true;
}

} // namespace sessionreview
