// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_CLASSFIGURES_H
#define SESSIONREVIEW_CLASSFIGURES_H

#include "sessionreview/Feedback.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

/// How the learners of a class did, and what they have in common.
namespace sessionreview {

/// The figures by which sessions and learners are compared, in the order in which they are shown:
/// rows of recordedFigures().
const std::vector<const RecordedFigure *> &classFigures();

/// What is compared of a session. A plain value, made of a review or of what somebody has stored.
struct SessionResult {
    QStringList learners; ///< without empty names
    QDateTime start; ///< invalid when not known
    Targets targets; ///< of its guideline set
    std::optional<int> score; ///< percent, overall; none when the manikin has sent none
    int basicThreshold = 0; ///< percent; least score that passes, 0 for none
    int advancedThreshold = 0; ///< percent; least score of the advanced level, 0 for none
    /// A value for each of classFigures(), in their order; none for what was not recorded.
    std::vector<std::optional<double>> figures;
    std::vector<Prompt> toWorkOn; ///< faults, the most harmful first
    std::vector<Skill> judged; ///< the skills that something can be said of, good or not

    /// The value of the figure with that key; none when it is no class figure, too.
    std::optional<double> figure(const char *key) const;
    /// Whether the score passes; none without a score or without a threshold.
    std::optional<bool> isPassed() const;
};

/// The result of a session.
SessionResult resultOf(const SessionReview &review);

/// Whether \a a began before \a b. A session whose start is not known comes before all others.
bool isEarlier(const SessionResult &a, const SessionResult &b);

/// The \a results, in order of time, of the same learners as \a result that began before it; of a
/// session without named learners, or without a start, none.
std::vector<SessionResult> earlierOf(const SessionResult &result,
                                     const std::vector<SessionResult> &results);

/// A learner of a class: a name. Sessions without one are all of the learner without a name.
struct ClassRow {
    QString learner; ///< as the archives have it; may be empty
    int sessions = 0; ///< that the learner took part in
    SessionResult last; ///< of the last of them; of equal starts the later one in the list
};

/// A fault, and how many learners had it in their last session.
struct SharedFault {
    Prompt fault = Prompt::None; ///< what has to be taught
    int learners = 0; ///< that have it; at least one
    int judged = 0; ///< of whom the skill can be judged
};

/// A class. Means are those of the learners' last sessions.
struct ClassFigures {
    int sessions = 0; ///< of all learners; one of two learners counts once
    std::vector<ClassRow> rows; ///< by name, in the order of the language; without a name last
    std::optional<double> meanScore; ///< percent; of the learners with a score
    int passed = 0; ///< learners whose score passes
    int withThreshold = 0; ///< learners whose score passes or does not
    /// For each of classFigures(), in their order, the mean of the learners that have a value.
    std::vector<std::optional<double>> means;
    std::vector<SharedFault> faults; ///< most shared first, of equally shared the more harmful
};

/// The figures of a class whose sessions gave \a results, in any order.
ClassFigures classFiguresOf(const std::vector<SessionResult> &results);

/// What people call a learner of that name: "(no name)" for an empty one.
QString learnerText(const QString &name);
/// "3 of 5".
QString countText(int count, int all);

} // namespace sessionreview

#endif
