// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_SESSIONCOMPARISON_H
#define SESSIONREVIEW_SESSIONCOMPARISON_H

#include "sessionreview/RecordedFigures.h"

#include <QString>

#include <optional>
#include <vector>

class QLocale;

/// Two sessions side by side: of one learner before and after, or of two learners.
namespace sessionreview {

/// How a figure of one session is, compared with that of another.
enum class Outcome {
    NotJudged, ///< one of them has no value, or neither value is the better one
    AsGood, ///< the same, or as near to the target
    Better,
    Worse,
    OtherStandard ///< they went by different targets, or their protocols ask for different things
};
/// The same in words; empty for NotJudged.
QString outcomeText(Outcome outcome);

/// A figure of two sessions. What was not received, or not recorded, has no value.
struct ComparedFigure {
    const RecordedFigure *figure = nullptr; ///< what it is; never null, lives for ever
    std::optional<double> value; ///< of the session that is compared
    std::optional<double> other; ///< of the session that it is compared with
    /// The value less the other one, both as people read them; none when one is missing.
    std::optional<double> difference;
    Outcome outcome = Outcome::NotJudged; ///< of the value, compared with the other one

    /// The difference with sign and unit; empty when there is none.
    QString differenceText(const QLocale &locale) const;
};

/// A kind of fault of two sessions.
struct ComparedFault {
    Fault fault = Fault::TooShallow; ///< its kind
    int count = 0; ///< compressions or ventilations with it, of the session that is compared
    int other = 0; ///< the same of the other session
};

/// What two sessions have in common, and in what they differ.
struct SessionComparison {
    /// The manikin's scores, then all of recordedFigures(), in their order.
    std::vector<ComparedFigure> figures;
    /// The kinds of which one of the sessions has at least one, in the order of Fault.
    std::vector<ComparedFault> faults;
};

/// Compares \a review with \a other. A session compared with itself has no difference.
SessionComparison comparisonOf(const SessionReview &review, const SessionReview &other);

/// Which moments of two sessions are put side by side.
enum class Alignment {
    Start, ///< the starts of both
    FirstCompression ///< the starts of the first compression in each
};
/// The session time, ms, of that moment; none when the session has none.
std::optional<int> originOf(const SessionReview &review, Alignment alignment);

} // namespace sessionreview

#endif
