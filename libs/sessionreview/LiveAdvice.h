// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_LIVEADVICE_H
#define SESSIONREVIEW_LIVEADVICE_H

#include "sessionreview/LatestEvents.h"

#include <set>

namespace sessionreview {

/// What is said to a learner while a session runs and after it, the most urgent first. Faults
/// follow by the harm they do: no flow of blood at all; too little of it, because the chest is not
/// pressed deep enough, not at a good rate or not released; what injures or misses, too deep or in
/// a wrong place; and ventilations, without which the first minutes are survived.
enum class Prompt {
    StandClear, ///< the AED analyses, charges or shocks
    ContinueCompressions, ///< the AED has let go, and nobody presses yet
    ContinueVentilations, ///< the same where only ventilations are trained
    EndPause, ///< the first of the faults
    PressDeeper,
    PressFaster,
    PressSlower,
    ReleaseCompletely,
    PressLessDeep,
    MoveHands,
    VentilateSlower, ///< too much air in the chest keeps the blood out of it
    BlowLess,
    VentilateFaster,
    BlowMore,
    CountCycles, ///< said after the session only
    Right, ///< nothing is wrong
    None ///< too little was done to say anything
};

/// Whether it is about a fault.
bool isFault(Prompt prompt);
/// Whether it is about ventilations.
bool isOfVentilations(Prompt prompt);
/// What is said of a fault.
Prompt promptOf(Fault fault);

/// @{
/// Of fewer events nothing is said: a single one may be wrong by chance.
constexpr int minJudgedCompressions = 5;
constexpr int minJudgedVentilations = 2;
/// @}

/// Follows a running session and says one thing at a time.
///
/// A fault is said when three of the last ten compressions, or half of the last four ventilations,
/// have it, and until it has become rare. What is said stays for 4 s, so that it can be read; that
/// a pause has to end is said for 2 s when it is over; only what the AED asks for comes at once.
/// All times are those of the session, in steps of a quarter of a second: a replay says the same at
/// any speed.
class LiveAdvice {
public:
    /// Brings it up to \a msecs of session time. An earlier time than the last begins anew.
    void follow(const CPRData &session, const Targets &targets, int msecs);
    /// What is said; Prompt::None for nothing.
    Prompt prompt() const { return m_shown; }
    /// Since when it is said, ms of session time.
    int since() const { return m_since; }
    /// When it was last due to be heard, ms of session time: a fault that stays is said aloud again
    /// every 8 s, anything else once.
    int heardAt() const;

private:
    void step(const CPRData &session, const Targets &targets, int msecs);
    void findFaults(const CPRData &session, const Targets &targets, int msecs);
    void show(Prompt prompt, int msecs);

    std::set<Prompt> m_faults; // that are said when nothing worse is
    bool m_isJudged = false; // enough was done
    Prompt m_shown = Prompt::None;
    int m_since = 0;
    int m_done = 0; // the last step
    int m_msecs = 0; // the last follow()
};

} // namespace sessionreview

#endif
