// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_FEEDBACK_H
#define SESSIONREVIEW_FEEDBACK_H

#include "sessionreview/LiveAdvice.h"
#include "sessionreview/RecordedFigures.h"

#include <QString>

#include <vector>

class QLocale;

/// What is said to a learner after a session: what was good, and what to work on.
namespace sessionreview {

/// What a protocol trains and a session is looked over for.
enum class Skill { Pauses, Depth, Rate, Release, Hands, VentilationRate, Volume, Cycles };

/// A skill is good from that share of compressions, ventilations or cycles on that have none of its
/// faults, percent. Programmes that look after the quality of CPR ask for as much.
constexpr double goodSharePercent = 80;
/// The share by which a session is looked over once more in which all skills were good, percent:
/// one fault in ten is worth a word when there is nothing worse.
constexpr double excellentSharePercent = 95;

/// How a skill went.
struct Finding {
    Skill skill = Skill::Pauses; ///< what was looked at
    Prompt prompt = Prompt::Right; ///< what is to be done better; Prompt::Right for nothing
    const RecordedFigure *figure = nullptr; ///< what tells it; never null, lives for ever
    double value = 0; ///< of the figure, rounded as RecordedFigure::value()

    /// Whether it is a thing that was good.
    bool isGood() const { return prompt == Prompt::Right; }
    /// The finding in a plain sentence, translated.
    QString text() const;
    /// The figure with its title and unit.
    QString figureText(const QLocale &locale) const;
};

/// How many of each kind are told at once.
constexpr std::size_t maxToldFindings = 3;

/// All findings of a session, the most important first: in the order of Prompt, by the harm of the
/// faults that the skill has.
struct Feedback {
    std::vector<Finding> good; ///< without faults, or nearly so
    std::vector<Finding> toWorkOn; ///< the others
};

/// Looks over what the session's protocol trains, by the figures of docs/figures.md. Nothing is
/// said of what was not recorded, has no target in the guideline set, or was done too rarely: fewer
/// than minJudgedCompressions, or minJudgedVentilations.
///
/// Of the faults on two sides the more frequent one is told, of equally frequent ones the more
/// harmful one. Pauses are to be worked on when one lasts longer than maxPauseSecs, or when the
/// compression fraction is below what the protocol asks for; but not for the fraction when the AED
/// had everybody stand clear.
Feedback feedbackOn(const SessionReview &review);

/// The skill that a fault belongs to. \a fault has to be one (isFault()).
Skill skillOf(Prompt fault);
/// What programs call a fault; never changes. Empty for what is no fault.
const char *keyOf(Prompt fault);
/// The sentence for a fault after a session; empty for what is no fault.
QString faultText(Prompt fault);

/// What a figure should be, with its unit; empty when nothing asks for anything.
QString targetText(const RecordedFigure &figure, const Targets &targets, const QLocale &locale);

} // namespace sessionreview

#endif
