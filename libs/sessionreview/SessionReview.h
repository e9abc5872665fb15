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

/// Times in ms of session time.
struct Span {
    int begin = 0;
    int end = 0;
};

/// A run of compressions and the ventilations that follow it.
struct Cycle {
    int begin = 0;
    int end = 0;
    int compressions = 0;
    int ventilations = 0;
    /// Other numbers than the guideline set asks for. Never set for the ventilations before the
    /// first compression, nor for a cycle that the end of the session may have cut off.
    bool isMiscounted = false;
};

/// Something that happened around the rescuers.
struct Flag {
    enum class Kind { Shock, Aed, Rhythm, User };

    int msecs = 0;
    Kind kind = Kind::User;
    int code = 0; ///< energy in J; AEDEventType; AEDEcgRhythms
    int detail = 0; ///< remote-control button of an AED event
    QString name; ///< of a user event
};

/// The flag that stands for \a event; none for compressions, ventilations, pauses and the rest.
std::optional<Flag> flagOf(const CPREventBase &event);

/// What was found in a session, judged by the session's own guideline set. It has no ties to the
/// session.
struct SessionReview {
    Targets targets;
    Figures figures;
    /// @{
    /// In order of time.
    std::vector<Compression> compressions;
    std::vector<Ventilation> ventilations;
    std::vector<Cycle> cycles;
    std::vector<Span> pauses;
    std::vector<Span> losses; ///< from the first sample that is missing to the one that arrived
    std::vector<Flag> flags;
    /// @}
    int end = 0; ///< ms; where the last event ends
};

SessionReview reviewOf(const CPRData &session);

} // namespace sessionreview

#endif
