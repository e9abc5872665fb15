// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONREVIEW_ARRIVAL_H
#define SESSIONREVIEW_ARRIVAL_H

#include <CPREventBase.h>

namespace sessionreview {

/// Whether the value that \a event shows for \a parameter has come, and does not only stand for
/// one. Until the manikin has sent them, statistics and scores hold counts and scores of 0 that
/// nobody has measured. True for events of other kinds, false for null.
bool hasArrived(const CPREventBase *event, CPREventBase::ParameterType parameter);

} // namespace sessionreview

#endif
