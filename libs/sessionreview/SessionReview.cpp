// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/SessionReview.h"

#include <CPRData.h>
#include <CPREventSessionInfo.h>
#include <CPREventSessionScore.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <tuple>

namespace sessionreview {

namespace {

using E = CPREventBase;
using bls_2010::CommonDefs;

constexpr double hmmPerMm = 100;
constexpr int msecsPerSecond = 1000;
constexpr int msecsPerMinute = 60 * msecsPerSecond;

// A compression that begins later than this after the end of the one before begins a new run. For
// a slow rescuer it is the time between two compressions instead, up to the second value.
constexpr int longestGapInRun = 500;
constexpr int longestGapInSlowRun = 1000;

// What the periods tell about lost messages is believed within these limits.
constexpr int shortestPeriod = 200;
constexpr int mostMissing = 3;

// An end that lies farther behind the peak is not believed.
constexpr int longestRelease = 2000;

int intOf(const E *event, E::ParameterType parameter)
{
    return event ? event->parameterValue(parameter, 0).toInt() : 0;
}

QString textOf(const E *event, E::ParameterType parameter)
{
    return event ? event->parameterValue(parameter, QVariant()).toString() : QString();
}

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
    if (next.period < shortestPeriod)
        return 0;
    const double periods = (double(next.begin) - before.begin) / next.period;
    return std::clamp(static_cast<int>(std::round(periods)) - 1, 0, mostMissing);
}

int longestGap(const Compression &next)
{
    if (next.rate <= 0)
        return longestGapInRun;
    return std::clamp(msecsPerMinute / next.rate, longestGapInRun, longestGapInSlowRun);
}

/// When a ventilation is given, for its order among compressions: a rescuer who begins to blow
/// during the last compression does not end the run before it.
qint64 moment(const Ventilation &ventilation)
{
    return (qint64(ventilation.begin) + ventilation.peak) / 2;
}

} // namespace

Compression compressionOf(const CPREventCompression &event)
{
    Compression result;
    result.begin = event.msecs();
    result.peak = std::max(event.compPeakTime(), result.begin);
    result.end = event.eventEndTime();
    if (result.end < result.peak || qint64(result.end) - result.peak > longestRelease)
        result.end = result.peak;
    result.period = event.compInstantaneousPeriod();
    result.depth = std::abs(event.compDepth());
    result.rate = event.compMeanRate();
    if (result.rate <= 0 && result.period > 0)
        result.rate = msecsPerMinute / result.period;
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
    return result;
}

std::optional<Flag> flagOf(const CPREventBase &event)
{
    Flag flag;
    flag.msecs = event.msecs();
    switch (event.type()) {
    case E::ShockDelivered:
        flag.kind = Flag::Kind::Shock;
        flag.code = intOf(&event, E::shockEnergy);
        return flag;
    case E::CprAedEvent:
        flag.kind = Flag::Kind::Aed;
        flag.code = intOf(&event, E::aedEventType);
        flag.detail = intOf(&event, E::aedRemoteOtherButtonId);
        if (flag.code != E::AEDECGRhythmStatus)
            return flag;
        break;
    case E::CprCprdEvent:
        break;
    case E::Event:
        flag.kind = Flag::Kind::User;
        flag.name = textOf(&event, E::eventId);
        return flag;
    default:
        return std::nullopt;
    }
    flag.kind = Flag::Kind::Rhythm;
    flag.code = intOf(&event, E::aedECGRhythm);
    return flag;
}

Side Band::side(double value) const
{
    if (!isValid())
        return Side::Unknown;
    if (value < min)
        return Side::Below;
    return value > max ? Side::Above : Side::Inside;
}

bool Targets::operator==(const Targets &other) const
{
    const auto values = [](const Targets &t) {
        return std::tie(t.depth, t.releaseDepth, t.rate, t.volume, t.compressionsPerCycle,
                        t.ventilationsPerCycle, t.leastFlowTime);
    };
    return values(*this) == values(other);
}

bool Summary::operator==(const Summary &other) const
{
    const auto values = [](const Summary &s) {
        return std::tie(s.learners, s.start, s.protocol, s.secs, s.manikinName, s.manikinType,
                        s.ageLetter, s.guidelines, s.hasScores, s.overallScore, s.compressionScore,
                        s.ventilationScore, s.flowTime, s.primaryAdvice, s.secondaryAdvice);
    };
    return values(*this) == values(other);
}

double wholeHmm(float mm)
{
    return std::round(double(mm) * hmmPerMm) / hmmPerMm;
}

Side Targets::depthSide(float mm) const
{
    return depth.side(wholeHmm(mm));
}

Side Targets::volumeSide(int ml) const
{
    const Side side = volume.side(ml);
    // The maximum itself already counts as too much.
    return side == Side::Inside && ml >= volume.max ? Side::Above : side;
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

Summary summaryOf(const CPRData &session)
{
    Summary summary;
    summary.learners = session.learners();
    summary.learners.removeAll(QString()); // a session without learners has one empty name
    if (session.cprGuidelines())
        summary.guidelines = session.cprGuidelines()->guidelinesID();
    const CPREvents *events = session.cprEvents();
    if (!events)
        return summary;

    if (const CPREventSessionInfo *info = events->sessionInfo()) {
        summary.start = QDateTime::fromString(textOf(info, E::startTime), Qt::ISODate);
        summary.protocol = intOf(info, E::cprProtocol);
        summary.secs = intOf(info, E::totalTime);
        summary.manikinName = textOf(info, E::manikinName);
        summary.manikinType = info->getManikinType();
        summary.ageLetter = info->patientAgeType();
    }

    const CPREventSessionScore *score = events->sessionScore();
    QString key;
    // A fresh score event has scores of 0, but no reductions.
    summary.hasScores = score && score->hasParameters()
        && score->hasParameterType(E::compReleaseScoreReduction, key);
    if (!summary.hasScores)
        return summary;
    summary.overallScore = intOf(score, E::overallScore);
    summary.compressionScore = intOf(score, E::compOverallScore);
    summary.ventilationScore = intOf(score, E::ventOverallScore);
    summary.flowTime = intOf(score, E::flowTimePercentage);
    summary.primaryAdvice = intOf(score, E::primaryAdvice);
    summary.secondaryAdvice = intOf(score, E::secondaryAdvice);
    return summary;
}

Targets targetsOf(const CPRData &session)
{
    Targets targets;
    const CPRGuidelines *set = session.cprGuidelines();
    if (!set)
        return targets;
    targets.depth = {set->compressionDepthMin() / hmmPerMm, set->compressionDepthMax() / hmmPerMm};
    targets.releaseDepth = set->compressionAcceptableReleaseDepth() / hmmPerMm;
    targets.rate = {double(set->compressionRateMin()), double(set->compressionRateMax())};
    targets.volume = {double(set->ventilationVolumeMin()), double(set->ventilationVolumeMax())};

    targets.compressionsPerCycle = set->compressionsBetweenVentilations();
    targets.ventilationsPerCycle = set->ventilationsBetweenCompressions();
    const CPREvents *events = session.cprEvents();
    switch (intOf(events ? events->sessionInfo() : nullptr, E::cprProtocol)) {
    case CommonDefs::CPR_SINGLE_RESCUER:
        targets.leastFlowTime = set->minimumAcceptedFlowtimePercentageSingleRescuerCPR();
        break;
    case CommonDefs::CPR_TWO_RESCUER:
        targets.leastFlowTime = set->minimumAcceptedFlowtimePercentageTwoRescuerCPR();
        targets.compressionsPerCycle = set->compressionsBetweenVentilationsTwoRescuer();
        break;
    case CommonDefs::CPR_COMPRESSION_ONLY:
        targets.leastFlowTime = set->minimumAcceptedFlowtimePercentageCompressionsOnly();
        break;
    default:
        break;
    }
    return targets;
}

namespace {

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
}

void findRuns(SessionReview &review)
{
    std::vector<Cycle> &cycles = review.cycles;
    const bool taken = review.hasCycles();
    auto ventilation = review.ventilations.cbegin();
    auto pause = review.pauses.cbegin();
    const Compression *before = nullptr;

    const auto addVentilationsUntil = [&](qint64 msecs) {
        for (; taken && ventilation != review.ventilations.cend() && moment(*ventilation) < msecs;
             ++ventilation) {
            if (cycles.empty())
                cycles.push_back({ventilation->begin, ventilation->end, 0, 0, false});
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
            || gapBetween(*before, compression) > longestGap(compression)) {
            cycles.push_back({compression.begin, compression.end, 0, 0, false});
            compression.rate = 0; // it would tell the length of the pause
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
    if (!review.hasCycles() || compressions <= 0 || ventilations <= 0)
        return;
    for (Cycle &cycle : review.cycles) {
        const bool isLast = &cycle == &review.cycles.back();
        const bool tooMany = cycle.compressions > compressions || cycle.ventilations > ventilations;
        const bool tooFew = cycle.compressions < compressions || cycle.ventilations < ventilations;
        cycle.isMiscounted = cycle.compressions > 0 && (tooMany || (tooFew && !isLast));
    }
}

} // namespace

SessionReview reviewOf(const CPRData &session)
{
    SessionReview review;
    review.summary = summaryOf(session);
    review.targets = targetsOf(session);
    readEvents(review, session);
    findRuns(review);
    judgeCycles(review);
    for (Compression &compression : review.compressions)
        judge(compression, review.targets);
    for (Ventilation &ventilation : review.ventilations)
        judge(ventilation, review.targets);
    return review;
}

bool SessionReview::trainsCompressions() const
{
    return summary.protocol != CommonDefs::CPR_VENTILATION_ONLY || !compressions.empty();
}

bool SessionReview::trainsVentilations() const
{
    return summary.protocol != CommonDefs::CPR_COMPRESSION_ONLY || !ventilations.empty();
}

bool SessionReview::hasCycles() const
{
    switch (summary.protocol) {
    case CommonDefs::CPR_COMPRESSION_ONLY:
    case CommonDefs::CPR_VENTILATION_ONLY:
    case CommonDefs::CPR_HIGH_PERFORMANCE:
        return false;
    default:
        return true;
    }
}

} // namespace sessionreview
