// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/JudgedEvents.h"

#include <CPREventCompression.h>
#include <CPREventVentilation.h>

#include <algorithm>
#include <cmath>

namespace sessionreview {

namespace {

using E = CPREventBase;

constexpr int msecsPerMinute = 60 * 1000;

// An end that lies farther behind the peak is not believed.
constexpr int maxRelease = 2000;

struct FaultAdvice {
    Fault fault;
    E::Advice advice;
};

// The worst first.
constexpr FaultAdvice advices[] = {
    {Fault::HandPosition, E::Advice_HandPosition},
    {Fault::TooShallow, E::Advice_CompressDeepEnough},
    {Fault::TooDeep, E::Advice_CompressNotSoDeep},
    {Fault::IncompleteRelease, E::Advice_ReleaseCompletely},
    {Fault::TooSlow, E::Advice_CorrectRate},
    {Fault::TooFast, E::Advice_CorrectRate},
    {Fault::TooLittle, E::Advice_CorrectVolume},
    {Fault::TooMuch, E::Advice_CorrectVolume},
};

template <typename Event> QVector<Fault> allFaults(const Event &event)
{
    QVector<Fault> faults;
    for (const Fault fault :
         {Fault::TooShallow, Fault::TooDeep, Fault::IncompleteRelease, Fault::HandPosition,
          Fault::TooSlow, Fault::TooFast, Fault::TooLittle, Fault::TooMuch}) {
        if (event.has(fault))
            faults.append(fault);
    }
    return faults;
}

} // namespace

bool Compression::has(Fault fault) const
{
    switch (fault) {
    case Fault::TooShallow:
        return depthSide == Side::Below;
    case Fault::TooDeep:
        return depthSide == Side::Above;
    case Fault::IncompleteRelease:
        return incompleteRelease;
    case Fault::HandPosition:
        return wrongHands;
    case Fault::TooSlow:
        return rateSide == Side::Below;
    case Fault::TooFast:
        return rateSide == Side::Above;
    case Fault::TooLittle:
    case Fault::TooMuch:
        break;
    }
    return false;
}

bool Ventilation::has(Fault fault) const
{
    return (fault == Fault::TooLittle && volumeSide == Side::Below)
        || (fault == Fault::TooMuch && volumeSide == Side::Above);
}

QVector<Fault> faultsOf(const Compression &compression)
{
    return allFaults(compression);
}

QVector<Fault> faultsOf(const Ventilation &ventilation)
{
    return allFaults(ventilation);
}

int adviceOn(const QVector<Fault> &faults)
{
    for (const FaultAdvice &row : advices) {
        if (faults.contains(row.fault))
            return row.advice;
    }
    return E::Advice_None;
}

Compression compressionOf(const CPREventCompression &event)
{
    Compression result;
    result.begin = event.msecs();
    result.peak = std::max(event.compPeakTime(), result.begin);
    result.end = event.eventEndTime();
    if (result.end < result.peak || qint64(result.end) - result.peak > maxRelease)
        result.end = result.peak;
    result.period = event.compInstantaneousPeriod();
    result.depth = std::abs(event.compDepth());
    result.releaseDepth = event.compReleaseDepth();
    result.rate = event.compMeanRate();
    if (result.rate <= 0 && result.period > 0)
        result.rate = msecsPerMinute / result.period;
    result.number = event.numberInCycle();
    result.incompleteRelease = event.compIncompleteRelease();
    result.wrongHands = event.compHandposError() || event.compHandposXiphoid();
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
    compression.depthSide = targets.depthSide(compression.depth);
    compression.rateSide =
        compression.rate > 0 ? targets.rate.side(compression.rate) : Side::Unknown;
}

void judge(Ventilation &ventilation, const Targets &targets)
{
    ventilation.volumeSide = targets.volumeSide(ventilation.volume);
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

} // namespace sessionreview
