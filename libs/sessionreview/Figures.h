// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_FIGURES_H
#define SESSIONREVIEW_FIGURES_H

#include "sessionreview/Targets.h"

#include <CPREventBase.h>

#include <QDateTime>
#include <QString>
#include <QStringList>

class CPRData;

namespace sessionreview {

/// Who trained what, and how it went: what a person wants to know first about a session.
struct Figures {
    QStringList learners; ///< without empty names
    QString startTime; ///< ISO 8601; empty when not known
    int protocol = 0; ///< the CPR protocol, 0 to 5
    /// What the protocol trains, and what was done in the session all the same.
    Training training = trainingOf(protocol);
    int secs = 0; ///< length, to the last event at least; 0 until the manikin has sent it
    int secsSoFar = 0; ///< the same; until then the session time
    QString manikinName; ///< empty when it has none
    int manikinType = 0; ///< CPREventBase::ManikinType
    QString ageLetter; ///< A, C, I, T or N
    QString firmware; ///< empty when not known
    QString guidelines; ///< identifier of the set

    /// @{
    /// Listed events.
    int compressions = 0;
    int ventilations = 0;
    int pauses = 0;
    /// @}

    bool hasStatistics = false; ///< the manikin has sent the means
    double meanDepth = 0; ///< mm; of compressions, as the rate
    int meanRate = 0; ///< per minute
    int meanVolume = 0; ///< ml

    bool hasScores = false; ///< the manikin has sent its scores and so the advice
    int overallScore = 0; ///< percent
    int compressionScore = 0; ///< percent
    int ventilationScore = 0; ///< percent
    int flowTime = -1; ///< percent; -1 when not known
    int primaryAdvice = 0; ///< CPREventBase::Advice
    Side primarySide = Side::Unknown; ///< of the target, on which it was not right
    int secondaryAdvice = 0; ///< CPREventBase::Advice
    Side secondarySide = Side::Unknown; ///< the same
    int basicThreshold = 0; ///< percent; least score of the basic level, 0 for none
    int advancedThreshold = 0; ///< percent; least score of the advanced level, 0 for none

    /// Whether all figures are the same.
    bool operator==(const Figures &other) const;
    QDateTime start() const; ///< invalid when not known
};

/// The figures as the session has them now.
Figures figuresOf(const CPRData &session);

/// Whether the manikin has sent the value that \a event has for \a parameter. Statistics and scores
/// begin with zeros that nobody has measured. True for events of other kinds, false for null.
bool hasArrived(const CPREventBase *event, CPREventBase::ParameterType parameter);

} // namespace sessionreview

#endif
