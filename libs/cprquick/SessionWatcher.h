// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_SESSIONWATCHER_H
#define CPRQUICK_SESSIONWATCHER_H

#include "cprquick_export.h"

#include <CPRData.h>

#include <QObject>
#include <QPointer>
#include <QTimer>

namespace cprquick {

/// Tells what happens to one session, whichever of its objects it happens to. It holds no session
/// alive: one that is destroyed is let go of, which is a sessionChanged() too.
class CPRQUICK_EXPORT SessionWatcher final : public QObject {
    Q_OBJECT

public:
    explicit SessionWatcher(QObject *parent = nullptr);
    ~SessionWatcher() override;

    /// Null when there is none.
    CPRData *session() const { return m_session; }
    /// The session's event list; null without a session.
    CPREvents *events() const { return m_session ? m_events.data() : nullptr; }
    void setSession(CPRData *session);

Q_SIGNALS:
    /// session() is another one, or none.
    void sessionChanged();
    /// The list was emptied for a new session.
    void cleared();
    /// An event was added, or an event that is listed was announced once more.
    void eventAnnounced(CPREventBase *event);
    /// An event has left the list: \a gone must be compared only.
    void eventRemoved(CPREventBase *gone);
    /// Times or parameters of an event of the list are others; a pause that goes on, for instance.
    void eventChanged(CPREventBase *event);
    /// Once for a burst of announced events.
    void eventsChanged();
    /// Learners, session info, statistics or scores are others.
    void summaryChanged();
    void guidelinesChanged();
    /// Session time, ms. Comes with every packet of the waves.
    void timeChanged(int msecs);
    /// A depth, volume or rate has arrived.
    void waveChanged();
    /// Something has happened, and all that belonged to it is done. While a session runs it comes
    /// some four times a second, with the session time.
    void settled();

private:
    void release();
    void settleSoon(int msecs);

    QPointer<CPRData> m_session;
    QPointer<CPREvents> m_events;
    QTimer m_settling;
};

} // namespace cprquick

#endif
