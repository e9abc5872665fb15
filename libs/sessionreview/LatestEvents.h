// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_LATESTEVENTS_H
#define SESSIONREVIEW_LATESTEVENTS_H

#include "sessionreview/JudgedEvents.h"

#include <optional>

class CPRData;
class CPREvents;

namespace sessionreview {

/// What the learner did last, for those who look on while a session runs.
struct LatestEvents {
    std::optional<Compression> compression; ///< none before the first
    std::optional<Ventilation> ventilation; ///< none before the first
    /// @{
    /// In the cycle that is running: compressions, and the ventilations that followed them.
    int compressionsInCycle = 0;
    int ventilationsInCycle = 0;
    /// @}
    Faults faults; ///< of the compression or the ventilation, whichever came later
    /// CPREventBase::Advice, on the worst of the faults; once the manikin has sent its scores, the
    /// first advice on the session.
    int advice = 0;
};

/// The latest events as the session has them now.
LatestEvents latestEventsOf(const CPRData &session, const Targets &targets);

/// Length in s of the pause that is running at \a msecs of session time; 0 when none is.
int runningPause(const CPREvents &events, int msecs);

} // namespace sessionreview

#endif
