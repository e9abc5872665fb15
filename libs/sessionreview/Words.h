// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_WORDS_H
#define SESSIONREVIEW_WORDS_H

#include "sessionreview/FaultFinding.h"
#include "sessionreview/LiveAdvice.h"
#include "sessionreview/SessionReview.h"

#include <QString>
#include <QStringList>

class QLocale;

/// What the interface's values are called in front of people. The translations are in the context
/// "sessionreview".
namespace sessionreview {

/// An advice (CPREventBase::Advice) as a sentence to the learner; empty for no advice. \a side is
/// where the values lay that it is about.
QString adviceText(int advice, Side side = Side::Unknown);
/// What is said while the session runs; empty for nothing.
QString promptText(Prompt prompt);
/// A CPR protocol.
QString protocolText(int protocol);
/// A manikin type (CPREventBase::ManikinType) and the age that the letter stands for; empty when
/// neither is known.
QString manikinText(int type, const QString &ageLetter);
/// An ECG rhythm (CPREventBase::AEDEcgRhythms).
QString rhythmText(int rhythm);
/// A kind of AED event (CPREventBase::AEDEventType) that the learner notices; empty for others.
QString aedEventText(int event);
/// What the AED is at since \a flag; empty for a flag that changes nothing for the rescuer.
QString aedStepText(const Flag &flag);
/// Faults in two words or so each.
QStringList faultTexts(Faults faults);
/// What an instructor remarks with a single key, in the order of the keys 1 to 9: the texts that
/// user events hold. They are English everywhere; remarkText() translates them.
QStringList quickRemarks();
/// What a user event's name or an instructor's remark is shown as; it may have any length.
QString remarkText(const QString &name);
/// A remark as it is stored of what somebody has typed: one line of at most 200 characters that
/// files can hold; empty when nothing is left.
QString remarkOf(const QString &typed);
/// What was wrong in a stretch, and how long or how often.
QString momentText(const Moment &moment, const QLocale &locale);
/// Faults with their numbers, the kinds without any left out.
QStringList faultTexts(const FaultCounts &counts);
/// A short label; what somebody called an event is cut to what can be drawn.
QString flagText(const Flag &flag);
/// How important a flag is. Those of weight 0 are not shown; where there is not room for all
/// labels, the greater weights have theirs.
int flagWeight(const Flag &flag);

} // namespace sessionreview

#endif
