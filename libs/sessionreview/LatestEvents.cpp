// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/LatestEvents.h"

#include "sessionreview/StandClear.h"
#include "sessionreview/Words.h"

#include <CPRData.h>
#include <CPREventCompression.h>
#include <CPREventVentilation.h>
#include <private/Units.h>

#include <algorithm>
#include <utility>

namespace sessionreview {

namespace {

using E = CPREventBase;

// The manikin reports a pause every second; two reports may get lost.
constexpr int maxReportAgeMs = 2500;
// Guidelines count a gap between compressions as a pause from here on.
constexpr int minPauseMs = 2 * Units::msecsPerSecond;
constexpr int maxVentilationPauseMs = 10 * Units::msecsPerSecond;
constexpr int maxCompressionAgeMs = 3 * Units::msecsPerSecond;
constexpr int maxVentilationAgeMs = 8 * Units::msecsPerSecond; // alone they come every 4 to 7 s

int ventilationsFrom(const CPREvents &events, int from, int to)
{
    int found = 0;
    for (int i = begunUntil(events, E::TagVent, to) - 1; i >= 0; --i) {
        const E *event = events.at(E::TagVent, i);
        if (event->msecs() < from)
            break;
        if (event->eventEndTime() <= to)
            ++found;
    }
    return found;
}

int toldRate(const CPREventCompression &event)
{
    return event.compMeanRate();
}

int toldRate(const CPREventVentilation &event)
{
    return event.ventRate();
}

/// The last event of \a tag that has ended by \a msecs.
template <typename Event>
auto lastOf(const CPREvents &events, E::EventTag tag, const Targets &targets, int msecs, int &rate)
    -> std::optional<decltype(judged(std::declval<const Event &>(), targets))>
{
    for (int i = begunUntil(events, tag, msecs) - 1; i >= 0; --i) {
        const auto *event = qobject_cast<const Event *>(events.at(tag, i));
        if (!event)
            continue;
        const auto entry = judged(*event, targets);
        if (entry.end > msecs)
            continue;
        rate = toldRate(*event);
        return entry;
    }
    return std::nullopt;
}

void readAed(LatestEvents &latest, const CPREvents &events, int msecs)
{
    const std::vector<Flag> flags = aedFlagsOf(events, msecs);
    for (const Flag &flag : flags) {
        if (flag.kind == Flag::Kind::Rhythm)
            latest.rhythm = flag.code;
        else if (flag.kind == Flag::Kind::Shock)
            latest.aed = latest.shock = flag;
        // The AED's own report of a shock says less than the shock's event.
        else if (!aedStepText(flag).isEmpty()
                 && !(flag.code == E::AEDShockDelivered && latest.aed
                      && latest.aed->kind == Flag::Kind::Shock))
            latest.aed = flag;
    }
    latest.standClear = standClearOf(flags);
}

} // namespace

int begunUntil(const CPREvents &events, E::EventTag tag, int msecs)
{
    int first = 0;
    int last = events.count(tag);
    if (last > 0 && events.at(tag, last - 1)->msecs() <= msecs)
        return last; // now
    while (first < last) {
        const int middle = last - (last - first + 1) / 2;
        if (events.at(tag, middle)->msecs() <= msecs)
            first = middle + 1;
        else
            last = middle;
    }
    return first;
}

LatestEvents latestEventsOf(const CPRData &session, const Targets &targets, int msecs)
{
    LatestEvents latest;
    const CPREvents *events = session.cprEvents();
    if (!events)
        return latest;
    const Figures figures = figuresOf(session);
    latest.protocol = figures.protocol;
    latest.training = figures.training;

    latest.compression =
        lastOf<CPREventCompression>(*events, E::TagComp, targets, msecs, latest.rate);
    const int pauses = begunUntil(*events, E::TagInactivity, msecs);
    if (pauses > 0 && latest.compression
        && events->at(E::TagInactivity, pauses - 1)->msecs() >= latest.compression->begin)
        latest.rate = 0;
    if (latest.compression) {
        latest.compressionsInCycle = latest.compression->number;
        latest.faults = latest.compression->faults;
    }
    latest.ventilation =
        lastOf<CPREventVentilation>(*events, E::TagVent, targets, msecs, latest.ventilationRate);
    if (latest.ventilation
        && (!latest.compression || latest.ventilation->begin >= latest.compression->begin))
        latest.faults = latest.ventilation->faults;
    latest.ventilationsInCycle =
        ventilationsFrom(*events, latest.compression ? latest.compression->begin : 0, msecs);
    latest.hasTooManyCompressions = targets.compressionsPerCycle > 0
        && latest.compressionsInCycle > targets.compressionsPerCycle;
    latest.hasTooManyVentilations = targets.ventilationsPerCycle > 0 && latest.compression
        && latest.ventilationsInCycle > targets.ventilationsPerCycle;
    readAed(latest, *events, msecs);
    return latest;
}

bool isOutdated(const Compression &compression, int msecs)
{
    return qint64(msecs) - compression.end > maxCompressionAgeMs;
}

bool isOutdated(const Ventilation &ventilation, int msecs)
{
    return qint64(msecs) - ventilation.end > maxVentilationAgeMs;
}

RunningPause runningPause(const CPREvents &events, const LatestEvents &latest,
                          const Targets &targets, int msecs)
{
    const bool isPressed = trainingOf(latest.protocol).compressions;
    if (isPressed ? !latest.compression : !latest.ventilation)
        return {};
    const qint64 begin = isPressed ? latest.compression->end : latest.ventilation->end;
    RunningPause pause;
    if (msecs - begin < (isPressed ? minPauseMs : targets.maxSilence))
        return {};
    pause.msecs = static_cast<int>(msecs - begin);
    pause.isAskedFor = isStandClear(latest.standClear, msecs);
    if (pause.isAskedFor)
        return pause;

    qint64 from = begin; // what counts
    for (const Span &span : latest.standClear) {
        if (span.end <= msecs)
            from = std::max<qint64>(from, span.end);
    }
    const E *report = events.at(E::TagInactivity, begunUntil(events, E::TagInactivity, msecs) - 1);
    const auto isSince = [report](const auto &done) {
        return done && done->begin > report->msecs();
    };
    const bool isReported = report && qint64(msecs) - report->eventEndTime() <= maxReportAgeMs
        && !isSince(latest.compression) && !isSince(latest.ventilation)
        && msecs - std::max<qint64>(from, report->msecs()) >= targets.maxSilence;
    pause.isTooLong = isReported || (isPressed && msecs - from > maxVentilationPauseMs);
    return pause;
}

bool areCompressionsDue(const LatestEvents &latest, const RunningPause &pause,
                        const Targets &targets, int msecs)
{
    if (!trainingOf(latest.protocol).compressions || isStandClear(latest.standClear, msecs))
        return false;
    const bool areVentilationsDue = targets.compressionsPerCycle > 0
        && latest.compressionsInCycle >= targets.compressionsPerCycle
        && latest.ventilationsInCycle < targets.ventilationsPerCycle;
    return !areVentilationsDue || pause.isTooLong;
}

} // namespace sessionreview
