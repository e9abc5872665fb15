// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLOG_SESSIONJOURNAL_H
#define MANIKINLOG_SESSIONJOURNAL_H

#include "manikinlog/JournalSync.h"
#include "manikinlog/ManikinLogReader.h"
#include "manikinlog/ManikinLogRecord.h"
#include "manikinlog/ManikinLogWriter.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <memory>
#include <optional>

namespace manikinlog {

/// Keeps a running session safe: a recorded log that grows beside the archive in which the session
/// will be saved, and goes away once it is.
///
///     manikinlog::SessionJournal journal;
///     if (!journal.open(target))          // target: "monday.zip", which need not exist yet
///         warn(journal.errorString());    // the session can run without a journal
///     CPRData session;
///     manikinlog::ManikinLogPlayer player(&session);
///     player.setJournal(&journal);
///     QElapsedTimer clock;
///     clock.start();
///     ...
///     player.play({clock.elapsed(), manikinlog::State{CPRData::CPR_START}});
///     player.play({clock.elapsed(), manikinlog::messageOf(message)});  // from the link
///     ...
///     if (saved)
///         journal.remove();
///
/// A record is with the operating system after some ms, and on the disk within a second: no more
/// than that is lost when the process or the machine dies. add() sees to it and, while no more
/// records come, a timer; a host without an event loop calls syncWhenDue() while it waits.
///
/// While the disk is full, or fails, records wait in memory, up to 64 MiB, and the journal tries
/// again every second: failed() comes, and resumed() when the disk has them all. The session goes
/// on meanwhile. With more records than that the journal ends; what it holds is good for recovery.
///
/// A living process holds a lock of the operating system on the journal that it writes or reads.
/// The lock goes with the process, so that a journal nobody holds was left. Used on one thread.
class SessionJournal final : public QObject {
    Q_OBJECT

public:
    /// What happens to the journal that a killed process has left.
    enum class LeftJournal {
        Keep, ///< open() fails, so that it can be recovered
        Discard ///< it is removed
    };

    /// A journal that is not open.
    explicit SessionJournal(QObject *parent = nullptr);
    /// Closes the journal. Its file stays: the session may not have been saved.
    ~SessionJournal() override;

    /// The journal's file for the archive \a target; where that is a symbolic link, for the archive
    /// that it leads to.
    static QString nameFor(const QString &target);
    /// Opens the journal's file \a name for reading. Nobody else can open, replace or claim the
    /// journal until the file is closed. Null, and the reason in \a error (may be null), when it is
    /// no regular file, cannot be read, or another program writes or has claimed it.
    static std::unique_ptr<QFile> claim(const QString &name, QString *error = nullptr);
    /// A killed process has left a journal for \a target, with a session in it. Read it with
    /// ManikinLogReader and Damage::IsSkipped.
    static bool isRecoverable(const QString &target);
    /// A process, perhaps this one, writes or has claimed the journal for \a target.
    static bool isBeingWritten(const QString &target);

    /// Begins the journal for the archive \a target. False, with the reason in errorString(), when
    /// another process is writing it, a killed one has left it and \a left says Keep, what is there
    /// is no regular file, or it cannot be created. A journal without a record does not count as
    /// left. An open journal is closed first. The file has the permissions of \a target, if that is
    /// there.
    bool open(const QString &target, LeftJournal left = LeftJournal::Keep);

    /// From now on \a sync waits for the disk, so that add() never does; null for none. It is not
    /// owned and may go first. Before open() or resume().
    void setSync(JournalSync *sync) { m_sync = sync; }
    /// Opens the journal that a killed process has left for \a target, to go on with it: call
    /// readLeft() until it gives no further record, and then add(). False, with the reason in
    /// errorString(), when it is no regular file, cannot be read and written, or another process
    /// has it. An open journal is closed first.
    bool resume(const QString &target);
    /// Reads the next record of a resumed journal; damaged lines are left out. With End half a line
    /// was cut off, and records can be added. With Error the file cannot be read further, nothing
    /// can be added, and failed() has come. End also for a journal that is not resumed.
    ManikinLogReader::Result readLeft(Record &record);
    /// How many damaged lines of a resumed journal have been left out so far, half a line at its
    /// end among them.
    qint64 skippedLines() const { return m_left ? m_left->skippedLines() : 0; }

    /// Whether records can be added; also while they wait for the disk.
    bool isOpen() const { return m_writer.has_value(); }
    /// Whether records wait for a disk that failed.
    bool isWaiting() const { return m_isWaiting; }

    /// Appends \a record, whose time is in ms since the start of the session. A journal whose
    /// records do not say themselves when they were recorded says it: in front of the first one,
    /// and again where the session starts. False when that failed, or the log cannot hold such a
    /// record; see ManikinLogWriter::write().
    bool add(const Record &record);

    /// Waits until the disk has everything; false when it has not. Blocks for as long as the disk
    /// takes, some ms as a rule.
    bool sync();
    /// As requestSync(), if a record has waited for its second.
    void syncWhenDue();
    /// Has setSync()'s bring to the disk what it does not have yet, and does not wait for that;
    /// synced() comes, or failed(). Without one it is sync().
    void requestSync();

    /// Records that add() has accepted since open() or resume().
    qint64 addedRecords() const { return m_addedRecords; }
    /// How many of them the disk has.
    qint64 syncedRecords() const { return m_syncedRecords; }
    /// Bytes, those that wait for the disk too.
    qint64 size() const { return m_syncedBytes + m_pending.size(); }

    /// Ends the journal and removes its file: the session has been saved. False when the file
    /// cannot be removed, or none is open.
    bool remove();

    /// The file; empty before open().
    QString fileName() const { return m_file.fileName(); }
    /// What went wrong last; empty when nothing did.
    QString errorString() const { return m_errorString; }

Q_SIGNALS:
    /// The disk takes no records, which comes once until resumed() does; or the journal had to
    /// refuse a record, could not be removed, or has ended because too many records wait.
    void failed(const QString &reason);
    /// The disk has all records again; none is missing.
    void resumed();
    /// The disk has some more records; see syncedRecords().
    void synced();

private:
    bool create();
    bool openFile();
    void append();
    void setSynced(qint64 bytes, qint64 records);
    void finishRequest(int error);
    void cancelRequest();
    bool write(const Record &record);
    bool needsStart(const Record &record);
    void lookAt(const Record &record);
    bool handOver();
    bool fail(const QString &reason);
    bool makeFile(LeftJournal left, unsigned permissions);
    bool removeLeft(LeftJournal left);
    void waitForDisk(const QString &reason);
    void end();
    void close();

    QFile m_file; // locked while it is open
    QBuffer m_pending; // lines that may not be on the disk
    std::optional<ManikinLogReader> m_left; // of a resumed journal
    qint64 m_leftMsecs = 0; // time of the last record that it gave
    QPointer<JournalSync> m_sync; // not owned
    quint64 m_ticket = 0; // of the request that is under way; 0 for none
    qint64 m_requestedBytes = 0; // at the begin of m_pending, that the request is about
    qint64 m_requestedRecords = 0; // that the disk has when it is done
    bool m_isFolderSynced = false;
    bool m_isSyncDue = false; // again, as soon as the request is done
    std::optional<ManikinLogWriter> m_writer; // as long as m_file can be written
    bool m_hasRecords = false;
    bool m_isRecording = false; // played again: its own records say when it was recorded
    CPRData::CprState m_state = CPRData::CPR_UNINITIALIZED; // of the last record of a state
    QElapsedTimer m_handedOver; // since m_file got something
    QElapsedTimer m_oldest; // since the first of m_pending came, or the disk failed; or invalid
    QTimer m_timer;
    QString m_errorString;
    qint64 m_addedRecords = 0;
    qint64 m_syncedRecords = 0;
    qint64 m_handedBytes = 0; // of m_pending, which the operating system has
    qint64 m_syncedBytes = 0; // of m_file, before those of m_pending
    bool m_isWaiting = false; // for a disk that failed
};

} // namespace manikinlog

#endif
