// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_SESSIONWRITER_H
#define CPRVIEWER_SESSIONWRITER_H

#include "SessionExport.h"

#include <CPRData.h>

#include <QObject>

#include <atomic>
#include <functional>
#include <memory>

class QThread;

/// Writes a file on a thread of its own, so that the window stays alive.
class SessionWriter final : public QObject {
    Q_OBJECT

public:
    /// Is given the session that start() was given.
    using Job = std::function<SessionExport::Written(CPRData *session)>;

    explicit SessionWriter(QObject *parent = nullptr);
    /// Waits until what is being written is on the disk; a job of many steps ends after the one
    /// that it is at. finished() does not come any more.
    ~SessionWriter() override;

    bool isWriting() const { return m_thread != nullptr; }
    /// Runs \a job on the thread, to which \a session, which may be null, belongs from then on.
    /// Nothing else may be being written.
    void start(std::unique_ptr<CPRData> session, const Job &job);
    /// For a job of many steps, on its thread: \a done of \a total are done, which progressed()
    /// says on this object's thread. False when the job is to end.
    bool advance(int done, int total);
    /// Asks a job of many steps to end after the one that it is at.
    void cancel() { m_isCancelled = true; }

Q_SIGNALS:
    void progressed(int done, int total);
    /// What the job has returned; isWriting() is false again.
    void finished(const SessionExport::Written &written);

private:
    QThread *m_thread = nullptr; // a child of this object while it runs
    std::atomic_bool m_isCancelled{false};
    // These belong to m_thread while that runs.
    std::unique_ptr<CPRData> m_session;
    SessionExport::Written m_written;
};

#endif
