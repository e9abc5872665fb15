// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_LIVECLASS_H
#define SESSIONREVIEW_LIVECLASS_H

#include "sessionreview/LiveAdvice.h"

#include <QtGlobal>

#include <optional>
#include <vector>

namespace sessionreview {

/// Percent of what was done so far that was right: compressions with depth, rate and release right,
/// or where none are trained ventilations with the right volume. It is no score of the manikin's.
/// No value before anything was done that can be judged.
std::optional<double> scoreSoFar(const SessionReview &review);

/// Whether rescuers should take turns at the chest.
enum class RescuerChange {
    None, ///< not yet
    Soon, ///< within 10 s
    Now ///< for 10 s from when it is due
};
/// At \a msecs of session time: every two minutes where two rescuers are trained.
RescuerChange rescuerChangeAt(int protocol, int msecs);

/// What a learner of a class is told, and how well the learner does.
struct LearnerNeed {
    int learner = 0; ///< a number of the caller's own, from 0 on
    Prompt prompt = Prompt::None; ///< what is said
    std::optional<double> score; ///< percent; none while it is not known, which counts as 0
};

/// Chooses the learner of a class whom the instructor should help first: the one with the most
/// harmful fault, of several with the same the one with the lowest score.
///
/// Who is chosen stays so for 6 s, so that it can be read, and then until somebody has a worse
/// fault or the fault is gone.
class FirstToHelp {
    // Long enough to find the learner in the room.
    static constexpr int minChosenMs = 6000;

public:
    /// No learner.
    static constexpr int nobody = -1;

    /// The learner to help first, of those in \a needs, at \a msecs of a clock that runs evenly;
    /// nobody when there is no fault. Who is no longer in \a needs is not chosen any more.
    int follow(const std::vector<LearnerNeed> &needs, qint64 msecs);

private:
    int m_learner = nobody;
    qint64 m_since = 0; // ms, when m_learner was chosen
};

} // namespace sessionreview

#endif
