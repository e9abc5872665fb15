// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_REMARKS_H
#define CPRVIEWER_REMARKS_H

#include <functional>

class CPRData;
class CPREventBase;
class QString;

namespace manikinlog {
struct Remark;
}

/// The instructor's remarks among a session's events.
namespace Remarks {

/// Adds what was typed at \a msecs of the session, by \a insert, which brings a record into it as a
/// manikin does. The event that came of it, which QML does not own; null for a blank text and when
/// the session refuses it.
CPREventBase *add(const CPRData &session, const QString &text, int msecs,
                  const std::function<void(const manikinlog::Remark &remark)> &insert);

/// What was typed; empty for an event that is no remark.
QString textOf(const CPREventBase *event);

} // namespace Remarks

#endif
