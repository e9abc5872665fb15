// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_SESSIONWATCHER_H
#define CPRQUICK_SESSIONWATCHER_H

#include "cprquick_export.h"

#include <CPRData.h>

#include <QObject>
#include <QPointer>
#include <QTimer>

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
    /// Something that belonged to the list, most likely an event, is being destroyed: \a gone must
    /// be compared only.
    void childGone(QObject *gone);
    /// Once for a burst of announced events.
    void eventsChanged();
    /// Learners, session info, statistics or scores are others.
    void summaryChanged();
    void guidelinesChanged();
    /// Session time, ms. Comes with every packet of the waves.
    void timeChanged(int msecs);
    /// The last pause goes on: its end is another. The session itself does not tell.
    void pauseStretched(CPREventBase *pause);
    /// A depth, volume or rate has arrived.
    void waveChanged();
    /// Something has happened, and all that belonged to it is done. While a session runs it comes
    /// some four times a second, because what the session stores into an event that is listed
    /// already is not announced at all.
    void settled();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void release();
    void takeTime(int msecs);
    void settleSoon(int msecs);

    QPointer<CPRData> m_session;
    QPointer<CPREvents> m_events;
    QTimer m_settling;
    int m_pauseEnd = -1; // of the last pause, ms
};

#endif
