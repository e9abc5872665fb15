// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_LATESTEVENTS_H
#define SESSIONREVIEW_LATESTEVENTS_H

#include "sessionreview/SessionReview.h"

#include <CPREventBase.h>

#include <limits>
#include <optional>
#include <vector>

class CPRData;
class CPREvents;

namespace sessionreview {

/// What the learner and the AED did last, for those who look on while a session runs.
struct LatestEvents {
    int protocol = 0; ///< the CPR protocol, 0 to 5
    Training training; ///< by the protocol, and what was done all the same
    std::optional<Compression> compression; ///< none before the first
    std::optional<Ventilation> ventilation; ///< none before the first
    /// @{
    /// In the cycle that is running: compressions, and the ventilations that followed them; and
    /// whether they are already more than the protocol asks for.
    int compressionsInCycle = 0;
    int ventilationsInCycle = 0;
    bool hasTooManyCompressions = false;
    bool hasTooManyVentilations = false;
    /// @}
    Faults faults; ///< of the compression or the ventilation, whichever came later
    std::optional<Flag> aed; ///< what the AED did, or the shock; none before the first
    std::optional<Flag> shock; ///< the last; none before the first
    int rhythm = 0; ///< CPREventBase::AEDEcgRhythms
    std::vector<Span> standClear; ///< the AED has everybody stand clear
    /// @{
    /// The running rates that the manikin told, per minute; 0 when it told none, and for
    /// compressions since it reported a pause.
    int rate = 0;
    int ventilationRate = 0;
    /// @}
};

/// How many events of \a tag have begun by \a msecs of session time. It costs a search, not a walk.
int begunUntil(const CPREvents &events, CPREventBase::EventTag tag, int msecs);

/// The latest events as somebody could know them at \a msecs of session time: what lasts is known
/// when it has ended.
LatestEvents latestEventsOf(const CPRData &session, const Targets &targets,
                            int msecs = std::numeric_limits<int>::max());

/// A verdict on what was done that long ago says nothing about now.
bool isOutdated(const Compression &compression, int msecs);
/// The same for a ventilation, which is rarer.
bool isOutdated(const Ventilation &ventilation, int msecs);

/// The time since the last compression, or without compressions in the protocol since the last
/// ventilation.
struct RunningPause {
    int msecs = 0; ///< 0 when none is running, and before the first compression
    bool isAskedFor = false; ///< the AED has everybody stand clear
    /// The rescuer should go on: the manikin has reported that nothing is done, or the chest was
    /// not pressed for 10 s, which guidelines allow for ventilations. Time in which the AED had
    /// everybody stand clear does not count.
    bool isTooLong = false;
};

/// The pause at \a msecs of session time, to which \a latest belongs.
RunningPause runningPause(const CPREvents &events, const LatestEvents &latest,
                          const Targets &targets, int msecs);

/// Whether somebody should compress at \a msecs of session time, of which \a latest and \a pause
/// are: compressions are trained, the AED does not have everybody stand clear, and it is not the
/// turn of ventilations, or has been for too long.
bool areCompressionsDue(const LatestEvents &latest, const RunningPause &pause,
                        const Targets &targets, int msecs);

} // namespace sessionreview

#endif
