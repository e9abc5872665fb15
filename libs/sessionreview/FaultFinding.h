// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_FAULTFINDING_H
#define SESSIONREVIEW_FAULTFINDING_H

#include "sessionreview/LiveAdvice.h"
#include "sessionreview/SessionReview.h"

#include <map>
#include <vector>

/// What an instructor looks at first when a session is over.
namespace sessionreview {

/// How often each fault was made.
class FaultCounts {
public:
    /// Counts each of \a faults.
    void add(Faults faults);
    /// How often; 0 for never.
    int of(Fault fault) const;

private:
    std::map<Fault, int> m_counts;
};

/// In all compressions and ventilations of \a review.
FaultCounts faultsIn(const SessionReview &review);

/// A cycle, or in a protocol without cycles a run of compressions, and the faults in it.
struct CycleFaults {
    Cycle cycle; ///< its times and numbers
    int right = 0; ///< compressions without a fault; those of which no message arrived are not
    FaultCounts faults; ///< of compressions and ventilations
};

/// Of each cycle of \a review, in order of time.
std::vector<CycleFaults> faultsPerCycle(const SessionReview &review);

/// A stretch of a session in which one thing was wrong.
struct Moment {
    Prompt prompt = Prompt::None; ///< what would be said of it; always about a fault
    int begin = 0; ///< ms of session time
    int end = 0; ///< ms of session time
    int count = 0; ///< compressions or ventilations with the fault; 0 for a pause
};

/// The worst stretches of a session, at most \a maxCount, the most harmful first.
///
/// A stretch is a pause in compressions of more than 10 s, which guidelines ask to avoid, or a run
/// of events with the same fault, as many as LiveAdvice needs before it says anything: one that is
/// wrong by chance teaches nothing. A single right one does not end a run, two in a row do; an
/// event that cannot be judged, as the rate of the first compression after a pause, counts as
/// neither. Kinds of stretches stand in the order of Prompt, by the harm they do; among those of a
/// kind the longest pause, or the run of most faults, is the worst.
///
/// The worst stretch of each kind has its place before any second one: an instructor wants to know
/// all that has to be taught, not the same thing five times.
std::vector<Moment> worstMoments(const SessionReview &review, int maxCount);

} // namespace sessionreview

#endif
