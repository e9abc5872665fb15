// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/JudgedEvents.h"

#include "sessionreview/StandClear.h"

#include <CPREventCompression.h>
#include <CPREventVentilation.h>
#include <private/Units.h>

#include <algorithm>
#include <cmath>

namespace sessionreview {

namespace {

using Units::msecsPerMinute;

// An end that lies farther behind the peak is not believed.
constexpr int maxRelease = 2000;

void setFaults(Faults &faults, Side side, Fault below, Fault above)
{
    faults.setFlag(below, side == Side::Below);
    faults.setFlag(above, side == Side::Above);
}

} // namespace

Compression compressionOf(const CPREventCompression &event)
{
    Compression result;
    result.begin = event.msecs();
    result.peak = std::max(event.compPeakTime(), result.begin);
    result.end = event.eventEndTime();
    if (result.end < result.peak || qint64(result.end) - result.peak > maxRelease)
        result.end = result.peak;
    result.period = event.compInstantaneousPeriod();
    result.depth = roundedToHmm(std::abs(event.compDepth()));
    result.releaseDepth = roundedToHmm(event.compReleaseDepth());
    result.rate = event.compMeanRate();
    if (result.rate <= 0 && result.period > 0)
        result.rate = msecsPerMinute / result.period;
    result.number = event.numberInCycle();
    result.faults.setFlag(Fault::IncompleteRelease, event.compIncompleteRelease());
    result.faults.setFlag(Fault::HandPosition,
                          event.compHandposError() || event.compHandposXiphoid());
    return result;
}

Ventilation ventilationOf(const CPREventVentilation &event)
{
    Ventilation result;
    result.begin = event.msecs();
    result.peak = std::max(event.ventPeakTime(), result.begin);
    // Archives do not hold the end.
    result.end = std::max(event.eventEndTime(), result.peak);
    result.volume = event.ventVolume();
    result.rate = event.ventRate();
    return result;
}

void judge(Compression &compression, const Targets &targets)
{
    compression.depthSide = targets.depth.side(compression.depth);
    compression.rateSide =
        compression.rate > 0 ? targets.rate.side(compression.rate) : Side::Unknown;
    setFaults(compression.faults, compression.depthSide, Fault::TooShallow, Fault::TooDeep);
    setFaults(compression.faults, compression.rateSide, Fault::TooSlow, Fault::TooFast);
}

void judge(Ventilation &ventilation, const Targets &targets)
{
    ventilation.volumeSide = targets.volumeSide(ventilation.volume);
    setFaults(ventilation.faults, ventilation.volumeSide, Fault::TooLittle, Fault::TooMuch);
}

Compression judged(const CPREventCompression &event, const Targets &targets)
{
    Compression compression = compressionOf(event);
    if (compression.number <= 1)
        compression.rate = 0;
    judge(compression, targets);
    return compression;
}

Ventilation judged(const CPREventVentilation &event, const Targets &targets)
{
    Ventilation ventilation = ventilationOf(event);
    judge(ventilation, targets);
    return ventilation;
}

std::optional<bool> isRight(const CPREventBase &event, const Targets &targets)
{
    if (const auto *compression = qobject_cast<const CPREventCompression *>(&event))
        return !judged(*compression, targets).faults;
    if (const auto *ventilation = qobject_cast<const CPREventVentilation *>(&event))
        return !judged(*ventilation, targets).faults;
    const Span pause{event.msecs(), event.eventEndTime()};
    if (event.type() != CPREventBase::CprInactivityCPR || !event.events()
        || qint64(pause.end) - pause.begin < targets.maxSilence
        || isAskedFor(pause, standClearOf(aedFlagsOf(*event.events()))))
        return std::nullopt;
    return false;
}

} // namespace sessionreview
