// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLINK_LINKSESSION_H
#define MANIKINLINK_LINKSESSION_H

#include "manikinlink/LinkStream.h"
#include "manikinlog/ManikinLogPlayer.h"
#include "manikinlog/SessionJournal.h"

#include <QTimer>

#include <deque>
#include <memory>
#include <utility>
#include <vector>

namespace manikinlink {

/// A session that comes over a link: everything is written to a journal beside the archive in
/// which it will be saved, and played into a session. A journal that a killed program has left
/// of the same session is read first and continued; the sender goes on behind it.
///
/// A batch is acknowledged when the disk has it, or at once where there is no journal. While the
/// disk fails, nothing is acknowledged; where the journal alone is kept the stream is paused, and
/// waits in its sender. A session whose stream has ended is done, which ended() says, when the disk
/// has its journal. Where that alone is kept, a sync that fails then is tried again until it works
/// or end() is called; a session that is played is in memory, and done all the same.
class LinkSession final : public QObject {
    Q_OBJECT

public:
    /// What becomes of the records.
    enum class Keeps {
        Session, ///< they are played, and in the journal
        JournalAlone ///< the journal has them; who wants the session reads that
    };

    /// \a stream is deleted with this session. \a target is the archive beside which the journal
    /// lies; empty for a session without one. What was left is read by the event loop.
    LinkSession(LinkStream *stream, const QString &target, Keeps keeps = Keeps::Session,
                QObject *parent = nullptr);
    /// Deletes the stream as well. The journal stays.
    ~LinkSession() override;

    /// Null when the hub has deleted it.
    LinkStream *stream() const { return m_stream; }
    /// Null where the journal alone is kept, and once it has been taken.
    CPRData *session() const { return m_session.get(); }
    /// The caller owns the session from now on; only after ended().
    std::unique_ptr<CPRData> takeSession() { return std::move(m_session); }
    /// The archive to save to; it need not exist.
    QString target() const { return m_target; }
    /// Empty as long as there is none.
    QString journalFile() const { return m_journal.fileName(); }
    /// The journal can take records, perhaps into memory alone until the disk works again.
    bool isJournalled() const { return m_journal.isOpen(); }
    /// The disk has every record that the journal has accepted; true also where there is none.
    bool isOnDisk() const { return m_journal.syncedRecords() == m_journal.addedRecords(); }
    /// ended() has come.
    bool hasEnded() const { return m_hasEnded; }

    /// Adds what the host itself has to say, a learner or a remark, at the time of the last record.
    /// It waits until what was left is read. Not after takeSession().
    void insert(const manikinlog::Record::Entry &entry);
    /// Ends the stream, and does not wait for a disk that fails.
    void end();
    /// The session has been saved. False when the journal's file cannot be removed; true where
    /// there is none.
    bool removeJournal();

Q_SIGNALS:
    /// The stream has ended, and the disk has its journal, or it will not get it; see isOnDisk().
    /// Comes once.
    void ended();
    /// The journal cannot be made or written; see SessionJournal::failed(). The session goes on
    /// when its records are played too.
    void journalFailed(const QString &reason);
    /// The disk has all of it again.
    void journalResumed();

private:
    void readTurn();
    void openJournal();
    void count(const manikinlog::Record &record);
    void begin();
    bool take(const manikinlog::Record &record);
    void acknowledge();
    bool needsDisk() const;
    void journalHasFailed(const QString &reason);
    void close();
    void finish();

    const QPointer<LinkStream> m_stream;
    const QString m_target;
    const Keeps m_keeps;
    std::unique_ptr<CPRData> m_session; // null where the journal alone is kept
    manikinlog::SessionJournal m_journal;
    manikinlog::ManikinLogPlayer m_player;
    QTimer m_turn; // reads what was left
    LinkStream::Position m_position; // at the end of what was left
    qint64 m_skippedLines = 0; // of what was left
    bool m_isOpened = false; // the journal, or it has been tried
    bool m_isReading = false; // what was left
    bool m_isContinued = false; // what was left is of this stream
    bool m_isBegun = false; // the stream gives its records
    bool m_isOwn = true; // the records now are of batch 0, the receiver's
    bool m_hasStart = false; // the sender has said when it was recorded
    bool m_isToEnd = false; // end() has been called
    bool m_hasStreamEnded = false;
    bool m_hasEnded = false;
    std::vector<manikinlog::Record::Entry> m_early; // inserted before m_isBegun
    std::deque<std::pair<qint64, quint32>> m_complete; // records of the journal up to a batch's end
};

} // namespace manikinlink

#endif
