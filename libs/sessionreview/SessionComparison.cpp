// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/SessionComparison.h"

#include "sessionreview/FaultFinding.h"

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>
#include <cmath>

namespace sessionreview {

namespace {

using E = CPREventBase;
using Review = SessionReview;
using Optional = std::optional<double>;

Optional score(const Review &review, int percent, bool isTrained = true)
{
    return review.figures.hasScores && isTrained && percent >= 0 ? Optional(percent) : std::nullopt;
}

// Of the manikin, which goes by the whole guideline set.
const std::vector<RecordedFigure> &scoreFigures()
{
    using R = Review;
    constexpr auto percent = RecordedFigure::Unit::Percent;
    constexpr auto more = Aim::More;
    constexpr auto all = Standard::All;
    // clang-format off
    static const std::vector<RecordedFigure> rows = {
        {"overall_score_percent",     QT_TRANSLATE_NOOP("sessionreview", "Overall score"),     percent, E::overallScore,       more, all, [](const R &r) { return score(r, r.figures.overallScore); }},
        {"compression_score_percent", QT_TRANSLATE_NOOP("sessionreview", "Compression score"), percent, E::compOverallScore,   more, all, [](const R &r) { return score(r, r.figures.compressionScore, r.figures.training.compressions); }},
        {"ventilation_score_percent", QT_TRANSLATE_NOOP("sessionreview", "Ventilation score"), percent, E::ventOverallScore,   more, all, [](const R &r) { return score(r, r.figures.ventilationScore, r.figures.training.ventilations); }},
        {"flow_time_percent",         QT_TRANSLATE_NOOP("sessionreview", "Flow time"),         percent, E::flowTimePercentage, more, all, [](const R &r) { return score(r, r.figures.flowTime, r.figures.training.compressions); }},
    };
    // clang-format on
    return rows;
}

bool isSameCycle(const Targets &a, const Targets &b)
{
    return a.compressionsPerCycle == b.compressionsPerCycle
        && a.ventilationsPerCycle == b.ventilationsPerCycle;
}

bool isSame(Standard standard, const Review &a, const Review &b)
{
    const Targets &x = a.targets;
    const Targets &y = b.targets;
    switch (standard) {
    case Standard::None:
        break;
    case Standard::Depth:
        return x.depth == y.depth;
    case Standard::Release:
        return x.releaseDepth == y.releaseDepth;
    case Standard::Rate:
        return x.rate == y.rate;
    case Standard::DepthRateRelease:
        return x.depth == y.depth && x.rate == y.rate && x.releaseDepth == y.releaseDepth;
    case Standard::Volume:
        return x.volume == y.volume;
    case Standard::CompressionsPerCycle:
        return x.compressionsPerCycle == y.compressionsPerCycle;
    case Standard::VentilationsPerCycle:
        return x.ventilationsPerCycle == y.ventilationsPerCycle;
    case Standard::Cycle:
        return isSameCycle(x, y);
    case Standard::Protocol:
        return trainingOf(a.figures.protocol) == trainingOf(b.figures.protocol)
            && isSameCycle(x, y);
    case Standard::All:
        return a.figures.protocol == b.figures.protocol && x == y;
    }
    return true;
}

/// What a mean should lie in; of nothing where the set does not say.
Band targetOf(Standard standard, const Targets &targets)
{
    switch (standard) {
    case Standard::Depth:
        return targets.depth;
    case Standard::Release:
        return {0, targets.releaseDepth};
    case Standard::Rate:
        return targets.rate;
    case Standard::Volume:
        return targets.volume;
    case Standard::CompressionsPerCycle:
        return {double(targets.compressionsPerCycle), double(targets.compressionsPerCycle)};
    case Standard::VentilationsPerCycle:
        return {double(targets.ventilationsPerCycle), double(targets.ventilationsPerCycle)};
    default:
        return {};
    }
}

double distance(double value, const Band &band)
{
    return std::max({band.min - value, value - band.max, 0.0});
}

/// The greater it is, the better; none when that cannot be said.
Optional merit(const RecordedFigure &figure, double value, const Targets &targets)
{
    switch (figure.aim) {
    case Aim::More:
        return value;
    case Aim::Less:
        return -value;
    case Aim::Target: {
        const Band band = targetOf(figure.standard, targets);
        return band.max > 0 ? Optional(-figure.shown(distance(value, band))) : std::nullopt;
    }
    case Aim::Neither:
        break;
    }
    return std::nullopt;
}

ComparedFigure compared(const RecordedFigure &figure, const Review &review, const Review &other)
{
    ComparedFigure result;
    result.figure = &figure;
    result.value = figure.value(review);
    result.other = figure.value(other);
    if (!result.value || !result.other)
        return result;
    const double value = figure.shown(*result.value);
    const double otherValue = figure.shown(*result.other);
    result.difference = figure.shown(value - otherValue);
    const Optional merits[] = {merit(figure, value, review.targets),
                               merit(figure, otherValue, other.targets)};
    if (figure.aim != Aim::Neither && !isSame(figure.standard, review, other))
        result.outcome = Outcome::OtherStandard;
    else if (merits[0] && merits[1])
        result.outcome = merits[0] == merits[1] ? Outcome::AsGood
            : merits[0] > merits[1]             ? Outcome::Better
                                                : Outcome::Worse;
    return result;
}

} // namespace

QString outcomeText(Outcome outcome)
{
    switch (outcome) {
    case Outcome::NotJudged:
        break;
    case Outcome::AsGood:
        return QCoreApplication::translate("sessionreview", "as good");
    case Outcome::Better:
        return QCoreApplication::translate("sessionreview", "better");
    case Outcome::Worse:
        return QCoreApplication::translate("sessionreview", "worse");
    case Outcome::OtherStandard:
        return QCoreApplication::translate("sessionreview", "other rules");
    }
    return QString();
}

QString ComparedFigure::differenceText(const QLocale &locale) const
{
    if (!difference)
        return QString();
    const QString text = figure->text(std::abs(*difference), locale);
    if (*difference == 0)
        return text;
    return (*difference > 0 ? QLatin1Char('+') : QChar(0x2212)) + text;
}

SessionComparison comparisonOf(const Review &review, const Review &other)
{
    SessionComparison result;
    for (const auto *figures : {&scoreFigures(), &recordedFigures()}) {
        for (const RecordedFigure &figure : *figures)
            result.figures.push_back(compared(figure, review, other));
    }
    const FaultCounts counts = faultsIn(review);
    const FaultCounts otherCounts = faultsIn(other);
    for (const Fault fault :
         {Fault::TooShallow, Fault::TooDeep, Fault::IncompleteRelease, Fault::HandPosition,
          Fault::TooSlow, Fault::TooFast, Fault::TooLittle, Fault::TooMuch}) {
        const ComparedFault each{fault, counts.of(fault), otherCounts.of(fault)};
        if (each.count > 0 || each.other > 0)
            result.faults.push_back(each);
    }
    return result;
}

std::optional<int> originOf(const Review &review, Alignment alignment)
{
    if (alignment == Alignment::Start)
        return 0;
    return review.compressions.empty() ? std::nullopt
                                       : std::optional<int>(review.compressions.front().begin);
}

} // namespace sessionreview
