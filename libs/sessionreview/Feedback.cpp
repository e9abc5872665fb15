// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/Feedback.h"

#include "sessionreview/Words.h"

#include <CPREventBase.h>

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>
#include <iterator>

namespace sessionreview {

namespace {

using Review = SessionReview;
using Unit = RecordedFigure::Unit;
using Optional = std::optional<double>;

// Guideline sets have a target for it in some protocols only, so it is not among the figures of all
// sessions.
const RecordedFigure ventilationRateFigures[] = {
    {"correct_ventilation_rate_percent",
     QT_TRANSLATE_NOOP("sessionreview", "Correct ventilation rate"), Unit::Percent, -1, Aim::More,
     Standard::All,
     [](const Review &review) { return shareAtVentilationRate(review, Side::Inside); }},
    {"ventilated_too_slow_percent", QT_TRANSLATE_NOOP("sessionreview", "Ventilated too slowly"),
     Unit::Percent, -1, Aim::Less, Standard::All,
     [](const Review &review) { return shareAtVentilationRate(review, Side::Below); }},
    {"ventilated_too_fast_percent", QT_TRANSLATE_NOOP("sessionreview", "Ventilated too fast"),
     Unit::Percent, -1, Aim::Less, Standard::All,
     [](const Review &review) { return shareAtVentilationRate(review, Side::Above); }},
};

const RecordedFigure &figureOf(const char *key)
{
    for (const RecordedFigure &figure : ventilationRateFigures) {
        if (qstrcmp(figure.key, key) == 0)
            return figure;
    }
    return *recordedFigure(key);
}

struct FaultRow {
    Prompt prompt;
    Skill skill;
    const char *key;
    const char *figure; // with the fault; of pauses feedbackOn() decides
};

// clang-format off

// In the order of Prompt.
constexpr FaultRow faults[] = {
    {Prompt::EndPause,          Skill::Pauses,          "pauses",               nullptr},
    {Prompt::PressDeeper,       Skill::Depth,           "too_shallow",          "too_shallow_percent"},
    {Prompt::PressFaster,       Skill::Rate,            "too_slow",             "too_slow_percent"},
    {Prompt::PressSlower,       Skill::Rate,            "too_fast",             "too_fast_percent"},
    {Prompt::ReleaseCompletely, Skill::Release,         "incomplete_release",   "leaning_percent"},
    {Prompt::PressLessDeep,     Skill::Depth,           "too_deep",             "too_deep_percent"},
    {Prompt::MoveHands,         Skill::Hands,           "hand_position",        "wrong_hands_percent"},
    {Prompt::VentilateSlower,   Skill::VentilationRate, "ventilated_too_fast",  "ventilated_too_fast_percent"},
    {Prompt::BlowLess,          Skill::Volume,          "too_much_volume",      "too_much_volume_percent"},
    {Prompt::VentilateFaster,   Skill::VentilationRate, "ventilated_too_slow",  "ventilated_too_slow_percent"},
    {Prompt::BlowMore,          Skill::Volume,          "not_enough_volume",    "not_enough_volume_percent"},
    {Prompt::CountCycles,       Skill::Cycles,          "cycles",               "correct_cycles_percent"},
};

struct SkillRow {
    Skill skill;
    bool Training::*training;
    const char *correct; // the figure without faults; of pauses feedbackOn() decides
    const char *goodText;
};

constexpr SkillRow skills[] = {
    {Skill::Pauses,          &Training::compressions, nullptr,                            QT_TRANSLATE_NOOP("sessionreview", "The pauses in compressions were short.")},
    {Skill::Depth,           &Training::compressions, "correct_depth_percent",            QT_TRANSLATE_NOOP("sessionreview", "Pressed to the right depth.")},
    {Skill::Rate,            &Training::compressions, "correct_rate_percent",             QT_TRANSLATE_NOOP("sessionreview", "Pressed at the right rate.")},
    {Skill::Release,         &Training::compressions, "complete_release_percent",         QT_TRANSLATE_NOOP("sessionreview", "Released the chest completely.")},
    {Skill::Hands,           &Training::compressions, "correct_hands_percent",            QT_TRANSLATE_NOOP("sessionreview", "Hands in the right place.")},
    {Skill::VentilationRate, &Training::ventilations, "correct_ventilation_rate_percent", QT_TRANSLATE_NOOP("sessionreview", "Ventilated at the right rate.")},
    {Skill::Volume,          &Training::ventilations, "correct_volume_percent",           QT_TRANSLATE_NOOP("sessionreview", "Gave the right amount of air.")},
    {Skill::Cycles,          &Training::cycles,       "correct_cycles_percent",           QT_TRANSLATE_NOOP("sessionreview", "Counted compressions and ventilations correctly.")},
};

// clang-format on

constexpr bool standByValue()
{
    for (std::size_t i = 0; i < std::size(faults); ++i) {
        if (faults[i].prompt != static_cast<Prompt>(i + static_cast<std::size_t>(Prompt::EndPause)))
            return false;
    }
    for (std::size_t i = 0; i < std::size(skills); ++i) {
        if (skills[i].skill != static_cast<Skill>(i))
            return false;
    }
    return faults[std::size(faults) - 1].prompt == Prompt::CountCycles;
}
static_assert(standByValue());

const FaultRow &rowOf(Prompt fault)
{
    return faults[static_cast<std::size_t>(fault) - static_cast<std::size_t>(Prompt::EndPause)];
}

std::optional<Finding> found(const Review &review, Skill skill, Prompt prompt, const char *key)
{
    const RecordedFigure &figure = figureOf(key);
    const Optional value = figure.value(review);
    return value ? std::optional(Finding{skill, prompt, &figure, *value}) : std::nullopt;
}

std::optional<Finding> pausesIn(const Review &review)
{
    const bool asksForFraction = review.targets.minFlowTime > 0 && review.standClear.empty();
    std::optional<Finding> fraction =
        found(review, Skill::Pauses, Prompt::Right, "compression_fraction");
    std::optional<Finding> longest = found(review, Skill::Pauses, Prompt::Right, "longest_pause_s");
    constexpr double percent = 100;
    if (fraction && asksForFraction && fraction->value * percent < review.targets.minFlowTime)
        fraction->prompt = Prompt::EndPause;
    else if (longest && longest->value > maxPauseSecs)
        longest->prompt = Prompt::EndPause;
    if (longest && !longest->isGood())
        return longest;
    if (asksForFraction && fraction)
        return fraction;
    return longest ? longest : found(review, Skill::Pauses, Prompt::Right, "pauses_over_10_s");
}

/// How a skill went that is judged by the share without its faults.
std::optional<Finding> sharesIn(const Review &review, const SkillRow &row, double goodPercent)
{
    const std::optional<Finding> correct = found(review, row.skill, Prompt::Right, row.correct);
    if (!correct || correct->value >= goodPercent)
        return correct;
    std::optional<Finding> worst;
    for (const FaultRow &fault : faults) {
        if (fault.skill != row.skill)
            continue;
        const std::optional<Finding> one = found(review, row.skill, fault.prompt, fault.figure);
        if (one && (!worst || one->value > worst->value))
            worst = one;
    }
    return worst;
}

bool isDoneOftenEnough(const Review &review, bool Training::*training)
{
    const auto isEnough = [](const auto &entries, int least) {
        return static_cast<int>(entries.size()) >= least;
    };
    return training == &Training::ventilations
        ? isEnough(review.ventilations, minJudgedVentilations)
        : isEnough(review.compressions, minJudgedCompressions);
}

/// The rank of a skill: that of its most harmful fault.
Prompt worstOf(Skill skill)
{
    return std::find_if(std::begin(faults), std::end(faults),
                        [skill](const FaultRow &row) { return row.skill == skill; })
        ->prompt;
}

QString translated(const char *text)
{
    return QCoreApplication::translate("sessionreview", text);
}

/// With as many decimals as the limit has.
QString shortest(double limit, const QLocale &locale)
{
    return locale.toString(limit, 'f', QLocale::FloatingPointShortest);
}

QString bandText(const Band &band, const RecordedFigure &figure, const QLocale &locale)
{
    return QStringLiteral("%1\u2013%2\u00a0%3")
        .arg(shortest(band.min, locale), shortest(band.max, locale), figure.unitText());
}

QString atMost(const QString &text)
{
    return translated(QT_TRANSLATE_NOOP("sessionreview", "at most %1")).arg(text);
}

QString atLeast(const QString &text)
{
    return translated(QT_TRANSLATE_NOOP("sessionreview", "at least %1")).arg(text);
}

Feedback feedbackBy(double goodPercent, const Review &review)
{
    const Training training = trainingOf(review.figures.protocol);
    Feedback feedback;
    for (const SkillRow &row : skills) {
        if (!(training.*row.training) || !isDoneOftenEnough(review, row.training))
            continue;
        const std::optional<Finding> finding =
            row.skill == Skill::Pauses ? pausesIn(review) : sharesIn(review, row, goodPercent);
        if (finding)
            (finding->isGood() ? feedback.good : feedback.toWorkOn).push_back(*finding);
    }
    std::sort(feedback.good.begin(), feedback.good.end(), [](const Finding &a, const Finding &b) {
        return worstOf(a.skill) < worstOf(b.skill);
    });
    std::sort(feedback.toWorkOn.begin(), feedback.toWorkOn.end(),
              [](const Finding &a, const Finding &b) { return a.prompt < b.prompt; });
    return feedback;
}

} // namespace

QString Finding::text() const
{
    return isGood() ? translated(skills[static_cast<std::size_t>(skill)].goodText)
                    : faultText(prompt);
}

QString Finding::figureText(const QLocale &locale) const
{
    return QStringLiteral("%1: %2").arg(figure->titleText(), figure->text(value, locale));
}

Feedback feedbackOn(const Review &review)
{
    const Feedback feedback = feedbackBy(goodSharePercent, review);
    return feedback.toWorkOn.empty() ? feedbackBy(excellentSharePercent, review) : feedback;
}

Skill skillOf(Prompt fault)
{
    return rowOf(fault).skill;
}

const char *keyOf(Prompt fault)
{
    return isFault(fault) ? rowOf(fault).key : "";
}

QString faultText(Prompt fault)
{
    if (!isFault(fault))
        return QString();
    // While the session runs it is about the one pause.
    return fault == Prompt::EndPause ? adviceText(CPREventBase::Advice_MinimizeNoFlow)
                                     : promptText(fault);
}

QString targetText(const RecordedFigure &figure, const Targets &targets, const QLocale &locale)
{
    const auto is = [&figure](std::initializer_list<const char *> keys) {
        return std::any_of(keys.begin(), keys.end(),
                           [&figure](const char *key) { return qstrcmp(figure.key, key) == 0; });
    };
    const auto band = [&locale](const Band &limits, const char *key) {
        return limits.isValid() ? bandText(limits, *recordedFigure(key), locale) : QString();
    };
    if (is({"mean_depth_mm", "correct_depth_percent", "too_shallow_percent", "too_deep_percent"}))
        return band(targets.depth, "mean_depth_mm");
    if (is({"mean_rate_per_min", "correct_rate_percent", "too_slow_percent", "too_fast_percent"}))
        return band(targets.rate, "mean_rate_per_min");
    if (is({"mean_volume_ml", "correct_volume_percent", "not_enough_volume_percent",
            "too_much_volume_percent"}))
        return band(targets.volume, "mean_volume_ml");
    if (is({"correct_ventilation_rate_percent", "ventilated_too_slow_percent",
            "ventilated_too_fast_percent"}))
        return band(targets.ventilationRate, "mean_rate_per_min");
    if (is({"mean_release_depth_mm", "complete_release_percent", "leaning_percent"})) {
        return targets.releaseDepth > 0
            ? atMost(QStringLiteral("%1\u00a0mm").arg(shortest(targets.releaseDepth, locale)))
            : QString();
    }
    if (is({"compression_fraction"}))
        return targets.minFlowTime > 0
            ? atLeast(QStringLiteral("%1\u00a0%").arg(targets.minFlowTime))
            : QString();
    if (is({"longest_pause_s", "mean_ventilation_pause_s"}))
        return atMost(
            QStringLiteral("%1\u00a0%2")
                .arg(shortest(maxPauseSecs, locale), figureOf("longest_pause_s").unitText()));
    if (is({"pauses_over_10_s"}))
        return translated(QT_TRANSLATE_NOOP("sessionreview", "none"));
    constexpr double all = 100;
    if (is({"correct_hands_percent"}))
        return atLeast(QStringLiteral("%1\u00a0%").arg(goodSharePercent));
    if (is({"wrong_hands_percent"}))
        return atMost(QStringLiteral("%1\u00a0%").arg(all - goodSharePercent));
    if (is({"correct_cycles_percent"}) && targets.compressionsPerCycle > 0)
        return QStringLiteral("%1:%2")
            .arg(targets.compressionsPerCycle)
            .arg(targets.ventilationsPerCycle);
    return QString();
}

} // namespace sessionreview
