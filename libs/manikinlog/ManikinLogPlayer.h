// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLOG_MANIKINLOGPLAYER_H
#define MANIKINLOG_MANIKINLOGPLAYER_H

#include "manikinlog/ManikinLogRecord.h"

#include <QtGlobal>

#include <functional>

namespace manikinlog {

class ManikinLogReader;
class SessionJournal;

/// Plays a recorded log into a session the way a host does that is connected to the manikin. The
/// log is played as fast as it can be read; the times of the records change nothing.
///
/// A log that says when it was recorded gives the session that start and, at its end, that end. Any
/// other session begins and ends when it is played.
class ManikinLogPlayer {
public:
    /// Called after each record with its time, in ms since the start of the recording.
    using Progress = std::function<void(qint64 msecs)>;

    /// \a session is not owned; with null nothing is played.
    explicit ManikinLogPlayer(CPRData *session);

    /// From now on each record is written to \a journal before it is played; null for none. The
    /// journal is not owned. When it fails, which it reports itself, the session goes on.
    void setJournal(SessionJournal *journal) { m_journal = journal; }

    /// Plays one record. False for a message that the session refuses, and for a remark to remove
    /// that it does not have.
    bool play(const Record &record);

    /// Plays the records that \a reader still has. False when the log could not be read to its
    /// end; the reader's errorString() says why, and the records before that were played.
    bool play(ManikinLogReader &reader, const Progress &progress = {});

    /// The log has ended. Whoever plays single records calls it behind the last one.
    void finish();

private:
    bool feed(const Message &entry);
    bool feed(const WaveHeader &header);
    bool feed(const WaveSample &sample);
    bool feed(const State &state);
    bool feed(const Learner &learner);
    bool feed(const Start &start);
    bool feed(const ManikinName &manikin);
    bool feed(const Remark &remark);
    bool feed(const RemarkRemoval &removal);
    bool feed(const Stream &stream);
    bool feed(const Batch &batch);
    void storeTime(CPREventBase::ParameterType type, qint64 msecs);

    CPRData *m_session; // not owned
    SessionJournal *m_journal = nullptr; // not owned
    QDateTime m_start; // invalid as long as the log has not said it
    qint64 m_startMsecs = 0; // when it said so
    qint64 m_msecs = 0; // of the last record
};

} // namespace manikinlog

#endif
