// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_STANDCLEAR_H
#define SESSIONREVIEW_STANDCLEAR_H

#include "sessionreview/SessionReview.h"

#include <limits>
#include <vector>

class CPREvents;

namespace sessionreview {

/// Shocks, rhythms and what the AED did, up to \a msecs of session time, in order of time.
std::vector<Flag> aedFlagsOf(const CPREvents &events, int msecs = std::numeric_limits<int>::max());

/// The stretches in which the AED has everybody stand clear: from the start of an analysis to the
/// shock, or to its word that there is none. \a flags are in order of time. A report that does not
/// arrive ends no stretch, so one ends at the latest 30 s after what the AED reported last: by then
/// it has given up a shock that nobody gave.
std::vector<Span> standClearOf(const std::vector<Flag> &flags);

/// Whether the session time lies in one of the stretches; not their ends, at which the AED lets go.
bool isStandClear(const std::vector<Span> &standClear, int msecs);

/// Whether the AED asked for \a pause, so that it is not the rescuer's fault: what lies outside of
/// the stretches is no more than the hands need to leave the chest and to come back, 3 s.
bool isAskedFor(const Span &pause, const std::vector<Span> &standClear);

} // namespace sessionreview

#endif
