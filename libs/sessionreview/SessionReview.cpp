// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/SessionReview.h"

#include "sessionreview/StandClear.h"

#include <CPRData.h>
#include <CPREventCompression.h>
#include <CPREventVentilation.h>
#include <private/Units.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

namespace sessionreview {

namespace {

using E = CPREventBase;

using Units::msecsPerMinute;

// A compression that begins later than this after the end of the one before begins a new run. For
// a slow rescuer the limit is the time between two compressions, up to the second value.
constexpr int maxGapInRun = 500;
constexpr int maxGapInSlowRun = 1000;

// The periods show how many messages were lost. That is believed within these limits.
constexpr int minPeriod = 200;
constexpr int maxMissing = 3;

bool isSummary(E::EventType type)
{
    return type == E::CprSessionInfo || type == E::CprSessionStatistics
        || type == E::CprSessionScore;
}

template <typename Entry> void sortByBegin(std::vector<Entry> &entries)
{
    const auto earlier = [](const Entry &a, const Entry &b) { return a.begin < b.begin; };
    if (!std::is_sorted(entries.begin(), entries.end(), earlier))
        std::stable_sort(entries.begin(), entries.end(), earlier);
}

/// The time from the end of \a before to \a next. A compression between them, whose message was
/// lost, shows in the period that the manikin measured.
qint64 gapBetween(const Compression &before, const Compression &next)
{
    qint64 sinceBegin = qint64(next.begin) - before.begin;
    if (next.period > 0)
        sinceBegin = std::min<qint64>(sinceBegin, next.period);
    return sinceBegin - (qint64(before.end) - before.begin);
}

/// Compressions of a run between these two, of which no message arrived.
int missingBetween(const Compression &before, const Compression &next)
{
    if (next.period < minPeriod)
        return 0;
    const double periods = (double(next.begin) - before.begin) / next.period;
    return std::clamp(static_cast<int>(std::round(periods)) - 1, 0, maxMissing);
}

int maxGap(const Compression &next)
{
    if (next.rate <= 0)
        return maxGapInRun;
    return std::clamp(msecsPerMinute / next.rate, maxGapInRun, maxGapInSlowRun);
}

/// When a ventilation is given, for its order among compressions: a rescuer who begins to blow
/// during the last compression does not end the run before it.
qint64 moment(const Ventilation &ventilation)
{
    return (qint64(ventilation.begin) + ventilation.peak) / 2;
}

void readEvents(SessionReview &review, const CPRData &session)
{
    const CPREvents *events = session.cprEvents();
    if (!events)
        return;

    // A loss is shown up to the sample that arrived.
    const CPRCompressionData *wave = session.compressionData();
    const int period = wave ? wave->waveformInfo()->samplePeriod() : 0;
    const auto behind = [period](const E &event) {
        return static_cast<int>(
            std::min<qint64>(qint64(event.msecs()) + period, std::numeric_limits<int>::max()));
    };
    bool inLoss = false;
    int rhythm = E::AED_NoECGRhythm;
    const auto addFlag = [&](const Flag &flag) {
        if (flag.kind == Flag::Kind::Rhythm) {
            if (flag.code == rhythm)
                return;
            rhythm = flag.code;
        }
        if (flag.kind != Flag::Kind::Rhythm || flag.code != E::AED_NoECGRhythm)
            review.flags.push_back(flag);
    };

    for (const E *event : events->events()) {
        if (isSummary(event->type()))
            continue;
        review.end = std::max(review.end, event->msecs());
        switch (event->type()) {
        case E::CprCompEvent:
            if (const auto *compression = qobject_cast<const CPREventCompression *>(event))
                review.compressions.push_back(compressionOf(*compression));
            break;
        case E::CprVentEvent:
            if (const auto *ventilation = qobject_cast<const CPREventVentilation *>(event))
                review.ventilations.push_back(ventilationOf(*ventilation));
            break;
        case E::CprInactivityCPR:
            if (event->eventEndTime() > event->msecs()) {
                review.pauses.push_back({event->msecs(), event->eventEndTime()});
                review.end = std::max(review.end, event->eventEndTime());
            }
            break;
        case E::CprPacketLossStart:
            review.losses.push_back({event->msecs(), behind(*event)});
            inLoss = true;
            break;
        case E::CprPacketLossEnd:
            if (inLoss)
                review.losses.back().end = std::max(review.losses.back().end, behind(*event));
            inLoss = false;
            break;
        default:
            if (const std::optional<Flag> flag = flagOf(*event))
                addFlag(*flag);
            break;
        }
    }
    sortByBegin(review.compressions);
    sortByBegin(review.ventilations);
    sortByBegin(review.pauses);
    sortByBegin(review.losses);
}

void findRuns(SessionReview &review)
{
    std::vector<Cycle> &cycles = review.cycles;
    const bool hasCycles = review.figures.training.cycles;
    auto ventilation = review.ventilations.cbegin();
    auto pause = review.pauses.cbegin();
    const Compression *before = nullptr;

    const auto addVentilationsUntil = [&](qint64 msecs) {
        for (;
             hasCycles && ventilation != review.ventilations.cend() && moment(*ventilation) < msecs;
             ++ventilation) {
            if (cycles.empty())
                cycles.push_back({ventilation->begin, ventilation->end, 0, 0, false, false});
            cycles.back().end = std::max(cycles.back().end, ventilation->end);
            ++cycles.back().ventilations;
        }
    };

    for (Compression &compression : review.compressions) {
        addVentilationsUntil(compression.begin);
        while (pause != review.pauses.cend() && before && pause->begin < before->begin)
            ++pause;
        const bool hasPaused = pause != review.pauses.cend() && pause->begin < compression.begin;
        if (!before || cycles.empty() || cycles.back().ventilations > 0 || hasPaused
            || gapBetween(*before, compression) > maxGap(compression)) {
            cycles.push_back({compression.begin, compression.end, 0, 0, false, false});
            compression.rate = 0; // it would show the length of the pause
        } else {
            cycles.back().compressions += missingBetween(*before, compression);
        }
        cycles.back().end = std::max(cycles.back().end, compression.end);
        ++cycles.back().compressions;
        before = &compression;
    }
    addVentilationsUntil(std::numeric_limits<qint64>::max());
}

void judgeCycles(SessionReview &review)
{
    const int compressions = review.targets.compressionsPerCycle;
    const int ventilations = review.targets.ventilationsPerCycle;
    if (compressions <= 0 || ventilations <= 0)
        return;
    auto request = review.standClear.cbegin();
    for (auto cycle = review.cycles.begin(); cycle != review.cycles.end(); ++cycle) {
        const auto next = cycle + 1;
        const auto isBefore = [&](const Span &each) { return each.begin < cycle->begin; };
        request = std::find_if_not(request, review.standClear.cend(), isBefore);
        const bool isCutOff = next == review.cycles.end()
            || (request != review.standClear.cend() && request->begin < next->begin);
        const bool tooMany =
            cycle->compressions > compressions || cycle->ventilations > ventilations;
        const bool tooFew =
            cycle->compressions < compressions || cycle->ventilations < ventilations;
        cycle->isJudged = cycle->compressions > 0 && (tooMany || !tooFew || !isCutOff);
        cycle->isMiscounted = cycle->isJudged && (tooMany || tooFew);
    }
}

} // namespace

std::optional<Flag> flagOf(const CPREventBase &event)
{
    const auto intOf = [&event](E::ParameterType parameter) {
        return event.parameterValue(parameter, 0).toInt();
    };
    Flag flag;
    flag.msecs = event.msecs();
    switch (event.type()) {
    case E::ShockDelivered:
        flag.kind = Flag::Kind::Shock;
        flag.code = intOf(E::shockEnergy);
        return flag;
    case E::CprAedEvent:
        flag.kind = Flag::Kind::Aed;
        flag.code = intOf(E::aedEventType);
        flag.detail = intOf(E::aedRemoteOtherButtonId);
        if (flag.code != E::AEDECGRhythmStatus)
            return flag;
        break;
    case E::CprCprdEvent:
        break;
    case E::Event:
        flag.kind = Flag::Kind::User;
        flag.name = event.parameterValue(E::eventId, QVariant()).toString();
        return flag;
    default:
        return std::nullopt;
    }
    flag.kind = Flag::Kind::Rhythm;
    flag.code = intOf(E::aedECGRhythm);
    return flag;
}

int lostMsecs(const SessionReview &review)
{
    qint64 msecs = 0;
    for (const Span &loss : review.losses)
        msecs += qint64(loss.end) - loss.begin;
    return Units::sessionMsecs(msecs);
}

std::vector<Flag> remarksOf(const SessionReview &review)
{
    std::vector<Flag> remarks;
    std::copy_if(review.flags.begin(), review.flags.end(), std::back_inserter(remarks),
                 [](const Flag &flag) { return flag.kind == Flag::Kind::User; });
    std::stable_sort(remarks.begin(), remarks.end(),
                     [](const Flag &a, const Flag &b) { return a.msecs < b.msecs; });
    return remarks;
}

SessionReview reviewOf(const CPRData &session)
{
    SessionReview review;
    review.figures = figuresOf(session);
    review.targets = targetsOf(session);
    readEvents(review, session);
    review.standClear = standClearOf(review.flags);
    findRuns(review);
    judgeCycles(review);
    for (Compression &compression : review.compressions)
        judge(compression, review.targets);
    for (Ventilation &ventilation : review.ventilations)
        judge(ventilation, review.targets);
    return review;
}

} // namespace sessionreview
