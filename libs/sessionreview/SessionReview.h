// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_SESSIONREVIEW_H
#define SESSIONREVIEW_SESSIONREVIEW_H

#include "sessionreview/Figures.h"
#include "sessionreview/Flag.h"
#include "sessionreview/JudgedEvents.h"

#include <vector>

class CPRData;

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
