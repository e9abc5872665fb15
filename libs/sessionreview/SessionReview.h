// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_SESSIONREVIEW_H
#define SESSIONREVIEW_SESSIONREVIEW_H

#include "sessionreview/Figures.h"
#include "sessionreview/JudgedEvents.h"

#include <optional>
#include <vector>

class CPRData;
class CPREventBase;

namespace sessionreview {

/// A stretch of session time.
struct Span {
    int begin = 0; ///< ms
    int end = 0; ///< ms
};

/// A run of compressions and the ventilations that follow it.
struct Cycle {
    int begin = 0; ///< ms of session time
    int end = 0; ///< ms of session time
    int compressions = 0; ///< their number, with those of which no message arrived
    int ventilations = 0; ///< their number
    /// Its numbers are compared with the guideline set's. Not those of the ventilations before the
    /// first compression, nor those of a cycle that the end of the session or the AED may have cut
    /// off.
    bool isJudged = false;
    /// Other numbers than the guideline set asks for.
    bool isMiscounted = false;
};

/// Something that happened around the rescuers.
struct Flag {
    /// What has happened: a shock, something that the AED did, another rhythm, a host's user event.
    enum class Kind { Shock, Aed, Rhythm, User };

    int msecs = 0; ///< session time
    Kind kind = Kind::User; ///< decides what code, detail and name are
    int code = 0; ///< energy in J; AEDEventType; AEDEcgRhythms
    int detail = 0; ///< remote-control button of an AED event
    QString name; ///< of a user event
};

/// The flag that stands for \a event; none for compressions, ventilations, pauses and the rest.
std::optional<Flag> flagOf(const CPREventBase &event);

/// What was found in a session, judged by the session's own guideline set. It has no ties to the
/// session.
struct SessionReview {
    Targets targets; ///< what was judged by
    Figures figures; ///< who, what and how well
    /// @{
    /// In order of time.
    std::vector<Compression> compressions;
    std::vector<Ventilation> ventilations;
    std::vector<Cycle> cycles;
    std::vector<Span> pauses;
    std::vector<Span> losses; ///< from the first sample that is missing to the one that arrived
    std::vector<Flag> flags;
    std::vector<Span> standClear; ///< the AED has everybody stand clear
    /// @}
    int end = 0; ///< ms; where the last event ends
};

/// How much of the session the link lost, ms.
int lostMsecs(const SessionReview &review);

/// What people or programs remarked on: the user events, in order of time.
std::vector<Flag> remarksOf(const SessionReview &review);

/// Walks over all events of the session.
SessionReview reviewOf(const CPRData &session);

} // namespace sessionreview

#endif
