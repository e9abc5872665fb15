// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/RecordedFigures.h"

#include <CPREventBase.h>
#include <private/Units.h>

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>

namespace sessionreview {

namespace {

using E = CPREventBase;
using Review = SessionReview;
using Unit = RecordedFigure::Unit;
using Optional = std::optional<double>;

constexpr int maxGapMs = 2000;
constexpr double hundred = 100;

const Faults volumeFaults = Faults(Fault::TooLittle) | Fault::TooMuch;
const Faults depthFaults = Faults(Fault::TooShallow) | Fault::TooDeep;
const Faults rateFaults = Faults(Fault::TooSlow) | Fault::TooFast;

QString translated(const char *text)
{
    return QCoreApplication::translate("sessionreview", text);
}

Optional meanOf(const std::vector<double> &values)
{
    if (values.empty())
        return std::nullopt;
    double sum = 0;
    for (double value : values)
        sum += value;
    return sum / double(values.size());
}

std::vector<double> valuesOf(const Review &review, Measurement measurement)
{
    std::vector<double> values;
    if (measurement == Measurement::Volume) {
        for (const Ventilation &each : review.ventilations)
            values.push_back(each.volume);
        return values;
    }
    for (const Compression &each : review.compressions) {
        if (measurement == Measurement::Depth)
            values.push_back(each.depth);
        else if (measurement == Measurement::ReleaseDepth)
            values.push_back(each.releaseDepth);
        else if (each.rate > 0 && each.period > 0) // a run's first has no rate
            values.push_back(double(Units::msecsPerMinute) / each.period);
    }
    return values;
}

bool canJudge(const Compression &compression, Faults faults)
{
    return (!(faults & depthFaults) || compression.depthSide != Side::Unknown)
        && (!(faults & rateFaults) || compression.rateSide != Side::Unknown);
}

bool canJudge(const Ventilation &ventilation, Faults /*faults*/)
{
    return ventilation.volumeSide != Side::Unknown;
}

template <typename Entries> Optional shareOf(const Entries &entries, Faults faults)
{
    qint64 judged = 0;
    qint64 right = 0;
    for (const auto &each : entries) {
        if (canJudge(each, faults)) {
            ++judged;
            right += !(each.faults & faults);
        }
    }
    return judged > 0 ? Optional(hundred * double(right) / double(judged)) : std::nullopt;
}

double secsOf(const Span &span)
{
    return (double(span.end) - span.begin) / Units::msecsPerSecond;
}

double secsOf(const std::vector<Span> &spans)
{
    double secs = 0;
    for (const Span &span : spans)
        secs += secsOf(span);
    return secs;
}

bool isLong(const Span &span)
{
    return qint64(span.end) - span.begin > maxGapMs;
}

std::vector<Span> longOnes(std::vector<Span> spans)
{
    spans.erase(std::remove_if(spans.begin(), spans.end(), std::not_fn(isLong)), spans.end());
    return spans;
}

/// What is left of the spans without the holes. The spans, and the holes, follow each other.
std::vector<Span> withoutHoles(const std::vector<Span> &spans, const std::vector<Span> &holes)
{
    std::vector<Span> rest;
    auto first = holes.begin();
    for (Span span : spans) {
        while (first != holes.end() && first->end <= span.begin)
            ++first;
        for (auto hole = first; hole != holes.end() && hole->begin < span.end; ++hole) {
            if (hole->begin > span.begin)
                rest.push_back({span.begin, hole->begin});
            span.begin = std::max(span.begin, hole->end);
        }
        if (span.begin < span.end)
            rest.push_back(span);
    }
    return rest;
}

/// When compressions went on behind \a msecs: at \a next, or one period earlier when no message of
/// the compression before it arrived.
int resumption(const Compression &next, int msecs)
{
    const qint64 before = qint64(next.begin) - next.period;
    const bool isMissing = next.period > 0 && next.period <= maxGapMs && before > msecs;
    return isMissing ? static_cast<int>(before) : next.begin;
}

/// The gaps of more than 2 s between compressions.
std::vector<Span> gapsBetween(const Review &review)
{
    std::vector<Span> gaps;
    for (std::size_t i = 1; i < review.compressions.size(); ++i) {
        const int end = review.compressions[i - 1].end;
        gaps.push_back({end, resumption(review.compressions[i], end)});
    }
    return longOnes(std::move(gaps));
}

std::vector<Span> lossesOf(const Review &review)
{
    return longOnes(review.losses);
}

template <typename Entries> void extend(Span &span, const Entries &entries)
{
    for (const auto &each : entries) {
        span.begin = std::min(span.begin, each.begin);
        span.end = std::max(span.end, each.end);
    }
}

std::vector<const Cycle *> judgedCycles(const Review &review)
{
    std::vector<const Cycle *> cycles;
    for (const Cycle &cycle : review.cycles) {
        if (cycle.isJudged)
            cycles.push_back(&cycle);
    }
    return cycles;
}

Optional meanPerCycle(const Review &review, int Cycle::*number)
{
    std::vector<double> numbers;
    for (const Cycle *cycle : judgedCycles(review))
        numbers.push_back(cycle->*number);
    return meanOf(numbers);
}

Optional meanShockPause(const Review &review, Optional ShockPauses::*pause)
{
    std::vector<double> secs;
    for (const ShockPauses &shock : shockPausesOf(review)) {
        if (shock.*pause)
            secs.push_back(*(shock.*pause));
    }
    return meanOf(secs);
}

Optional unlessZero(int number)
{
    return number > 0 ? Optional(number) : std::nullopt;
}

struct UnitRow {
    Unit unit;
    const char *text;
    int decimals; // for people
    double scale; // from the value to what people read
    double steps; // in a unit, to which values are rounded
};

// clang-format off

constexpr UnitRow units[] = {
    {Unit::Count,     "",                                              0, 1,   1},
    {Unit::Number,    "",                                              1, 1,   100},
    {Unit::Mm,        "mm",                                            1, 1,   100},
    {Unit::PerMinute, QT_TRANSLATE_NOOP("sessionreview", "per min"),   1, 1,   100},
    {Unit::Ml,        "ml",                                            0, 1,   100},
    {Unit::Percent,   "%",                                             0, 1,   100},
    {Unit::Fraction,  "%",                                             0, 100, 10000},
    {Unit::Seconds,   QT_TRANSLATE_NOOP("sessionreview", "s"),         1, 1,   1000},
};

// clang-format on

constexpr bool standByValue()
{
    for (std::size_t i = 0; i < std::size(units); ++i) {
        if (units[i].unit != static_cast<Unit>(i))
            return false;
    }
    return true;
}
static_assert(standByValue());

const UnitRow &rowOf(Unit unit)
{
    return units[static_cast<std::size_t>(unit)];
}

double rounded(double value, Unit unit)
{
    const double steps = rowOf(unit).steps;
    return std::round(value * steps) / steps;
}

QString numberOf(Unit unit, double value, const QLocale &locale)
{
    const UnitRow &row = rowOf(unit);
    return locale.toString(value * row.scale, 'f', row.decimals);
}

QString textOf(Unit unit, double value, const QLocale &locale)
{
    const UnitRow &row = rowOf(unit);
    const QString number = numberOf(unit, value, locale);
    return *row.text ? QStringLiteral("%1\u00a0%2").arg(number, translated(row.text)) : number;
}

} // namespace

Optional mean(const Review &review, Measurement measurement)
{
    return meanOf(valuesOf(review, measurement));
}

Optional deviation(const Review &review, Measurement measurement)
{
    std::vector<double> values = valuesOf(review, measurement);
    if (values.size() < 2)
        return std::nullopt;
    const double middle = *meanOf(values);
    for (double &value : values)
        value = (value - middle) * (value - middle);
    return std::sqrt(*meanOf(values));
}

Optional shareWithout(const Review &review, Faults faults)
{
    return faults & volumeFaults ? shareOf(review.ventilations, faults)
                                 : shareOf(review.compressions, faults);
}

Optional shareWith(const Review &review, Fault fault)
{
    const Optional rest = shareWithout(review, fault);
    return rest ? Optional(hundred - *rest) : rest;
}

Optional shareAtVentilationRate(const Review &review, Side side)
{
    int judged = 0;
    int found = 0;
    for (const Ventilation &each : review.ventilations) {
        const Side rateSide =
            each.rate > 0 ? review.targets.ventilationRate.side(each.rate) : Side::Unknown;
        judged += rateSide != Side::Unknown;
        found += rateSide == side;
    }
    return judged > 0 ? Optional(hundred * found / judged) : std::nullopt;
}

Optional shareAllCorrect(const Review &review)
{
    const Faults faults = depthFaults | rateFaults | Fault::IncompleteRelease;
    if (!review.targets.depth.isValid() || !review.targets.rate.isValid()
        || review.compressions.empty())
        return std::nullopt;
    const auto right =
        std::count_if(review.compressions.begin(), review.compressions.end(),
                      [&](const Compression &each) { return !(each.faults & faults); });
    return hundred * double(right) / double(review.compressions.size());
}

Optional compressionFraction(const Review &review)
{
    if (review.compressions.empty())
        return std::nullopt;
    const Compression &first = review.compressions.front();
    const int lastEnd = review.compressions.back().end;
    Span session{first.begin, lastEnd};
    extend(session, review.compressions);
    for (const Ventilation &each : review.ventilations)
        session = {std::min(session.begin, each.begin), std::max(session.end, each.peak)};
    extend(session, review.pauses);

    std::vector<Span> gaps = gapsBetween(review);
    gaps.insert(gaps.begin(), {session.begin, resumption(first, session.begin)});
    gaps.push_back({lastEnd, session.end});
    gaps = longOnes(std::move(gaps));
    const std::vector<Span> known = withoutHoles(gaps, lossesOf(review));
    const double secs = secsOf(session) - (secsOf(gaps) - secsOf(known));
    return secs > 0 ? Optional((secs - secsOf(longOnes(known))) / secs) : std::nullopt;
}

std::vector<Span> pausesOf(const Review &review)
{
    return withoutHoles(longOnes(withoutHoles(gapsBetween(review), lossesOf(review))),
                        review.standClear);
}

Optional longestPause(const Review &review)
{
    Optional longest;
    for (const Span &pause : pausesOf(review))
        longest = std::max(longest.value_or(0), secsOf(pause));
    return longest;
}

bool isLongPause(const Span &pause)
{
    return secsOf(pause) > maxPauseSecs;
}

Optional longPauses(const Review &review)
{
    if (review.compressions.size() < 2)
        return std::nullopt;
    const std::vector<Span> pauses = pausesOf(review);
    return double(std::count_if(pauses.begin(), pauses.end(), isLongPause));
}

Optional meanVentilationPause(const Review &review)
{
    if (!trainingOf(review.figures.protocol).cycles)
        return std::nullopt;
    const std::vector<Ventilation> &all = review.ventilations;
    std::vector<double> secs;
    for (const Span &pause : pausesOf(review)) {
        const auto hasPeak = [&pause](const Ventilation &each) {
            return each.peak >= pause.begin && each.peak <= pause.end;
        };
        const auto next =
            std::lower_bound(all.begin(), all.end(), pause.begin,
                             [](const Ventilation &each, int msecs) { return each.begin < msecs; });
        // One that began during the last compression belongs to the pause, too.
        if ((next != all.end() && hasPeak(*next))
            || (next != all.begin() && hasPeak(*std::prev(next))))
            secs.push_back(secsOf(pause));
    }
    return meanOf(secs);
}

Optional aedPause(const Review &review)
{
    if (review.standClear.empty())
        return std::nullopt;
    const std::vector<Span> gaps = longOnes(withoutHoles(gapsBetween(review), lossesOf(review)));
    return secsOf(gaps) - secsOf(withoutHoles(gaps, review.standClear));
}

std::vector<ShockPauses> shockPausesOf(const Review &review)
{
    const std::vector<Compression> &all = review.compressions;
    std::vector<ShockPauses> shocks;
    for (const Flag &flag : review.flags) {
        if (flag.kind != Flag::Kind::Shock)
            continue;
        ShockPauses shock;
        shock.msecs = flag.msecs;
        const auto next =
            std::upper_bound(all.begin(), all.end(), flag.msecs,
                             [](int msecs, const Compression &each) { return msecs < each.begin; });
        if (next != all.begin())
            shock.before = std::max(0.0, secsOf({std::prev(next)->end, flag.msecs}));
        if (next != all.end())
            shock.after = secsOf({flag.msecs, resumption(*next, flag.msecs)});
        if (shock.before && shock.after)
            shock.around = rounded(*shock.before + *shock.after, Unit::Seconds);
        shocks.push_back(shock);
    }
    return shocks;
}

Optional shareOfCorrectCycles(const Review &review)
{
    const std::vector<const Cycle *> cycles = judgedCycles(review);
    if (cycles.empty())
        return std::nullopt;
    const auto right = std::count_if(cycles.begin(), cycles.end(),
                                     [](const Cycle *cycle) { return !cycle->isMiscounted; });
    return hundred * double(right) / double(cycles.size());
}

Optional compressionsPerCycle(const Review &review)
{
    return meanPerCycle(review, &Cycle::compressions);
}

Optional ventilationsPerCycle(const Review &review)
{
    return meanPerCycle(review, &Cycle::ventilations);
}

Optional RecordedFigure::value(const Review &review) const
{
    const Optional value = workOut(review);
    // A damaged file can hold depths that are no numbers.
    return value && std::isfinite(*value) ? Optional(rounded(*value)) : std::nullopt;
}

double RecordedFigure::rounded(double value) const
{
    return sessionreview::rounded(value, unit);
}

QString RecordedFigure::titleText() const
{
    return translated(title);
}

QString RecordedFigure::text(double value, const QLocale &locale) const
{
    return textOf(unit, value, locale);
}

QString RecordedFigure::number(double value, const QLocale &locale) const
{
    return numberOf(unit, value, locale);
}

QString RecordedFigure::unitText() const
{
    const UnitRow &row = rowOf(unit);
    return *row.text ? translated(row.text) : QString();
}

const RecordedFigure *recordedFigure(const char *key)
{
    const std::vector<RecordedFigure> &all = recordedFigures();
    const auto found = std::find_if(all.begin(), all.end(), [key](const RecordedFigure &each) {
        return qstrcmp(each.key, key) == 0;
    });
    return found != all.end() ? &*found : nullptr;
}

double RecordedFigure::shown(double value) const
{
    const UnitRow &row = rowOf(unit);
    return QString::number(value * row.scale, 'f', row.decimals).toDouble() / row.scale;
}

const std::vector<RecordedFigure> &recordedFigures()
{
    using M = Measurement;
    using R = Review;
    using F = Fault;
    using A = Aim;
    using S = Standard;
    constexpr int noParameter = -1;
    // Better is more of what was right, less of what was wrong, the shorter pause, and the smaller
    // deviation: a steady hand. A mean is as good as it is near to its target. Counts go with the
    // length of a session; but every pause of more than 10 s is one too many. What the AED asks for
    // the learner cannot change. Fraction and longest pause hold the pauses for ventilations that a
    // protocol asks for.
    // clang-format off
    static const std::vector<RecordedFigure> rows = {
        {"compressions",                  QT_TRANSLATE_NOOP("sessionreview", "Compressions"),                     Unit::Count,     E::compCount,                           A::Neither, S::None,                 [](const R &r) { return Optional(double(r.compressions.size())); }},
        {"mean_depth_mm",                 QT_TRANSLATE_NOOP("sessionreview", "Mean depth"),                       Unit::Mm,        E::compMeanDepth,                       A::Target,  S::Depth,                [](const R &r) { return mean(r, M::Depth); }},
        {"deviation_depth_mm",            QT_TRANSLATE_NOOP("sessionreview", "Deviation of depth"),               Unit::Mm,        E::compStdDeviationDepth,               A::Less,    S::None,                 [](const R &r) { return deviation(r, M::Depth); }},
        {"correct_depth_percent",         QT_TRANSLATE_NOOP("sessionreview", "Correct depth"),                    Unit::Percent,   E::compCorrectDepthPercentage,          A::More,    S::Depth,                [](const R &r) { return shareWithout(r, depthFaults); }},
        {"too_shallow_percent",           QT_TRANSLATE_NOOP("sessionreview", "Too shallow"),                      Unit::Percent,   noParameter,                            A::Less,    S::Depth,                [](const R &r) { return shareWith(r, F::TooShallow); }},
        {"too_deep_percent",              QT_TRANSLATE_NOOP("sessionreview", "Too deep"),                         Unit::Percent,   noParameter,                            A::Less,    S::Depth,                [](const R &r) { return shareWith(r, F::TooDeep); }},
        {"mean_rate_per_min",             QT_TRANSLATE_NOOP("sessionreview", "Mean rate"),                        Unit::PerMinute, E::compMeanRate,                        A::Target,  S::Rate,                 [](const R &r) { return mean(r, M::Rate); }},
        {"deviation_rate_per_min",        QT_TRANSLATE_NOOP("sessionreview", "Deviation of rate"),                Unit::PerMinute, E::compStdDeviationRate,                A::Less,    S::None,                 [](const R &r) { return deviation(r, M::Rate); }},
        {"correct_rate_percent",          QT_TRANSLATE_NOOP("sessionreview", "Correct rate"),                     Unit::Percent,   E::compCorrectRatePercentage,           A::More,    S::Rate,                 [](const R &r) { return shareWithout(r, rateFaults); }},
        {"too_slow_percent",              QT_TRANSLATE_NOOP("sessionreview", "Too slow"),                         Unit::Percent,   E::compTooLowRatePercentage,            A::Less,    S::Rate,                 [](const R &r) { return shareWith(r, F::TooSlow); }},
        {"too_fast_percent",              QT_TRANSLATE_NOOP("sessionreview", "Too fast"),                         Unit::Percent,   noParameter,                            A::Less,    S::Rate,                 [](const R &r) { return shareWith(r, F::TooFast); }},
        {"mean_release_depth_mm",         QT_TRANSLATE_NOOP("sessionreview", "Mean release depth"),               Unit::Mm,        E::compMeanReleaseDepth,                A::Target,  S::Release,              [](const R &r) { return mean(r, M::ReleaseDepth); }},
        {"deviation_release_depth_mm",    QT_TRANSLATE_NOOP("sessionreview", "Deviation of release depth"),       Unit::Mm,        E::compStdDeviationReleaseDepth,        A::Less,    S::None,                 [](const R &r) { return deviation(r, M::ReleaseDepth); }},
        {"complete_release_percent",      QT_TRANSLATE_NOOP("sessionreview", "Complete release"),                 Unit::Percent,   E::compCorrectReleasePercentage,        A::More,    S::Release,              [](const R &r) { return shareWithout(r, F::IncompleteRelease); }},
        {"leaning_percent",               QT_TRANSLATE_NOOP("sessionreview", "Incomplete release (leaning)"),     Unit::Percent,   noParameter,                            A::Less,    S::Release,              [](const R &r) { return shareWith(r, F::IncompleteRelease); }},
        {"correct_hands_percent",         QT_TRANSLATE_NOOP("sessionreview", "Correct hand position"),            Unit::Percent,   E::compHandPosCorrectPercentage,        A::More,    S::None,                 [](const R &r) { return shareWithout(r, F::HandPosition); }},
        {"wrong_hands_percent",           QT_TRANSLATE_NOOP("sessionreview", "Wrong hand position"),              Unit::Percent,   noParameter,                            A::Less,    S::None,                 [](const R &r) { return shareWith(r, F::HandPosition); }},
        {"all_correct_percent",           QT_TRANSLATE_NOOP("sessionreview", "Depth, rate and release correct"),  Unit::Percent,   noParameter,                            A::More,    S::DepthRateRelease,     shareAllCorrect},
        {"compression_fraction",          QT_TRANSLATE_NOOP("sessionreview", "Chest compression fraction"),       Unit::Fraction,  E::flowTimePercentage,                  A::More,    S::Protocol,             compressionFraction},
        {"longest_pause_s",               QT_TRANSLATE_NOOP("sessionreview", "Longest compression pause"),         Unit::Seconds,   noParameter,                            A::Less,    S::Protocol,             longestPause},
        {"pauses_over_10_s",              QT_TRANSLATE_NOOP("sessionreview", "Pauses of more than 10 s"),         Unit::Count,     noParameter,                            A::Less,    S::None,                 longPauses},
        {"mean_ventilation_pause_s",      QT_TRANSLATE_NOOP("sessionreview", "Mean pause for ventilations"),      Unit::Seconds,   noParameter,                            A::Less,    S::VentilationsPerCycle, meanVentilationPause},
        {"aed_pause_s",                   QT_TRANSLATE_NOOP("sessionreview", "Pauses that the AED asked for"),    Unit::Seconds,   noParameter,                            A::Neither, S::None,                 aedPause},
        {"shocks",                        QT_TRANSLATE_NOOP("sessionreview", "Shocks"),                           Unit::Count,     noParameter,                            A::Neither, S::None,                 [](const R &r) { return Optional(double(shockPausesOf(r).size())); }},
        {"mean_pre_shock_pause_s",        QT_TRANSLATE_NOOP("sessionreview", "Mean pause before a shock"),        Unit::Seconds,   noParameter,                            A::Less,    S::None,                 [](const R &r) { return meanShockPause(r, &ShockPauses::before); }},
        {"mean_post_shock_pause_s",       QT_TRANSLATE_NOOP("sessionreview", "Mean pause after a shock"),         Unit::Seconds,   noParameter,                            A::Less,    S::None,                 [](const R &r) { return meanShockPause(r, &ShockPauses::after); }},
        {"mean_peri_shock_pause_s",       QT_TRANSLATE_NOOP("sessionreview", "Mean pause around a shock"),        Unit::Seconds,   noParameter,                            A::Less,    S::None,                 [](const R &r) { return meanShockPause(r, &ShockPauses::around); }},
        {"ventilations",                  QT_TRANSLATE_NOOP("sessionreview", "Ventilations"),                     Unit::Count,     E::ventCount,                           A::Neither, S::None,                 [](const R &r) { return Optional(double(r.ventilations.size())); }},
        {"mean_volume_ml",                QT_TRANSLATE_NOOP("sessionreview", "Mean volume"),                      Unit::Ml,        E::ventMeanVolume,                      A::Target,  S::Volume,               [](const R &r) { return mean(r, M::Volume); }},
        {"deviation_volume_ml",           QT_TRANSLATE_NOOP("sessionreview", "Deviation of volume"),              Unit::Ml,        E::ventStdDeviationVolume,              A::Less,    S::None,                 [](const R &r) { return deviation(r, M::Volume); }},
        {"correct_volume_percent",        QT_TRANSLATE_NOOP("sessionreview", "Correct volume"),                   Unit::Percent,   E::ventCorrectVolumePercentage,         A::More,    S::Volume,               [](const R &r) { return shareWithout(r, volumeFaults); }},
        {"not_enough_volume_percent",     QT_TRANSLATE_NOOP("sessionreview", "Not enough volume"),                Unit::Percent,   E::ventNotEnoughVolumePercentage,       A::Less,    S::Volume,               [](const R &r) { return shareWith(r, F::TooLittle); }},
        {"too_much_volume_percent",       QT_TRANSLATE_NOOP("sessionreview", "Too much volume"),                  Unit::Percent,   E::ventTooMuchVolumePercentage,         A::Less,    S::Volume,               [](const R &r) { return shareWith(r, F::TooMuch); }},
        {"correct_cycles_percent",        QT_TRANSLATE_NOOP("sessionreview", "Cycles counted correctly"),         Unit::Percent,   noParameter,                            A::More,    S::Cycle,                shareOfCorrectCycles},
        {"mean_compressions_per_cycle",   QT_TRANSLATE_NOOP("sessionreview", "Compressions per cycle"),           Unit::Number,    E::averageNumberOfCompressionsPerCycle, A::Target,  S::CompressionsPerCycle, compressionsPerCycle},
        {"target_compressions_per_cycle", QT_TRANSLATE_NOOP("sessionreview", "Compressions asked for per cycle"), Unit::Count,     noParameter,                            A::Neither, S::None,                 [](const R &r) { return unlessZero(r.targets.compressionsPerCycle); }},
        {"mean_ventilations_per_cycle",   QT_TRANSLATE_NOOP("sessionreview", "Ventilations per cycle"),           Unit::Number,    E::averageNumberOfVentilationsPerCycle, A::Target,  S::VentilationsPerCycle, ventilationsPerCycle},
        {"target_ventilations_per_cycle", QT_TRANSLATE_NOOP("sessionreview", "Ventilations asked for per cycle"), Unit::Count,     noParameter,                            A::Neither, S::None,                 [](const R &r) { return unlessZero(r.targets.ventilationsPerCycle); }},
    };
    // clang-format on
    return rows;
}

QString shockTitle(const ShockPauses &shock, int number)
{
    const int secs = shock.msecs / Units::msecsPerSecond;
    constexpr int secsPerMinute = 60;
    return translated(QT_TRANSLATE_NOOP("sessionreview", "Shock %1 at %2:%3"))
        .arg(number)
        .arg(secs / secsPerMinute)
        .arg(secs % secsPerMinute, 2, 10, QLatin1Char('0'));
}

QString shockText(const ShockPauses &shock, const QLocale &locale)
{
    struct Part {
        const char *text;
        Optional secs;
    };
    const Part parts[] = {{QT_TRANSLATE_NOOP("sessionreview", "before %1"), shock.before},
                          {QT_TRANSLATE_NOOP("sessionreview", "after %1"), shock.after},
                          {QT_TRANSLATE_NOOP("sessionreview", "around %1"), shock.around}};
    QStringList texts;
    for (const Part &part : parts) {
        if (part.secs)
            texts.append(translated(part.text).arg(textOf(Unit::Seconds, *part.secs, locale)));
    }
    return texts.join(QStringLiteral(", "));
}

} // namespace sessionreview
