// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/LatestEvents.h"

#include "sessionreview/Figures.h"

#include <CPRData.h>
#include <CPREventCompression.h>
#include <CPREventSessionScore.h>
#include <CPREventVentilation.h>
#include <private/Units.h>

#include <algorithm>

namespace sessionreview {

namespace {

using E = CPREventBase;

// A pause that was not reported for this long is over. Reports come every second.
constexpr int maxSilenceMs = 2500;

/// The ventilations behind \a msecs.
int ventilationsSince(const CPREvents &events, int msecs)
{
    const int count = events.count(E::TagVent);
    int before = count;
    while (before > 0 && events.at(E::TagVent, before - 1)->msecs() >= msecs)
        --before;
    return count - before;
}

} // namespace

LatestEvents latestEventsOf(const CPRData &session, const Targets &targets)
{
    LatestEvents latest;
    const CPREvents *events = session.cprEvents();
    if (!events)
        return latest;

    if (const auto *event = qobject_cast<CPREventCompression *>(events->last(E::TagComp))) {
        latest.compression = judged(*event, targets);
        latest.compressionsInCycle = latest.compression->number;
        latest.faults = latest.compression->faults;
    }
    if (const auto *event = qobject_cast<CPREventVentilation *>(events->last(E::TagVent))) {
        latest.ventilation = judged(*event, targets);
        if (!latest.compression || latest.ventilation->begin >= latest.compression->begin)
            latest.faults = latest.ventilation->faults;
    }
    latest.ventilationsInCycle = latest.compression
        ? ventilationsSince(*events, latest.compression->begin)
        : events->count(E::TagVent);
    const CPREventSessionScore *score = events->sessionScore();
    latest.advice = hasArrived(score, E::primaryAdvice)
        ? score->parameterValue(E::primaryAdvice, 0).toInt()
        : adviceOn(latest.faults);
    return latest;
}

int runningPause(const CPREvents &events, int msecs)
{
    const E *pause = events.last(E::TagInactivity);
    const E *compression = events.last(E::TagComp);
    if (!pause || qint64(msecs) - pause->eventEndTime() > maxSilenceMs
        || (compression && compression->msecs() >= pause->eventEndTime()))
        return 0;
    return (std::max(msecs, pause->eventEndTime()) - pause->msecs()) / Units::msecsPerSecond;
}

} // namespace sessionreview
