// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_LIVEFEED_H
#define CPRVIEWER_LIVEFEED_H

#include "RecordSource.h"

#include <manikinlog/ManikinLogPlayer.h>

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

/// Lets the records of a source come into a session at their times, the way a manikin sends them.
class LiveFeed final : public QObject {
    Q_OBJECT

public:
    /// Neither \a session nor \a journal, which may be null, is owned.
    LiveFeed(CPRData *session, std::unique_ptr<RecordSource> source,
             manikinlog::SessionJournal *journal, QObject *parent = nullptr);
    ~LiveFeed() override;

    /// \a speed 2 lets time run twice as fast. What the machine cannot play in time comes later,
    /// but never blocks the window.
    void start(double speed);
    /// Plays what comes before the session time \a msecs at once.
    void advanceTo(qint64 msecs);
    /// Ends the session where it is.
    void stop();
    /// Lets \a entry, a learner, a remark or its removal, come in now: into the journal, then into
    /// the session.
    void insert(const manikinlog::Record::Entry &entry);
    /// What comes from now on goes into \a journal, which is not owned; null for none.
    void setJournal(manikinlog::SessionJournal *journal) { m_player.setJournal(journal); }
    bool isRunning() const { return m_isRunning; }
    /// stop() was too early: the session goes on from there.
    void resume();
    bool canResume() const { return !m_isRunning && m_hasNext; }

Q_SIGNALS:
    /// There will be no more records; \a error says why when that was not the end of the source.
    void finished(const QString &error);

private:
    qint64 now() const;
    void setClock();
    void catchUp();
    void playDue();
    bool playNext();
    bool isOver() const;
    void fetch();
    void finish();

    CPRData *m_session; // not owned
    std::unique_ptr<RecordSource> m_source;
    manikinlog::ManikinLogPlayer m_player;
    manikinlog::Record m_next;
    bool m_hasNext = false;
    bool m_isRunning = true;
    qint64 m_played = 0; // time of the record played last, ms of the source
    qint64 m_begin = 0; // time of the source at which the clock was started
    double m_speed = 1;
    QElapsedTimer m_clock;
    QTimer m_timer;
};

#endif
