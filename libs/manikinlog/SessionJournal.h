// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLOG_SESSIONJOURNAL_H
#define MANIKINLOG_SESSIONJOURNAL_H

#include "manikinlog/ManikinLogRecord.h"
#include "manikinlog/ManikinLogWriter.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QFile>
#include <QLockFile>
#include <QObject>
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
/// A journal that cannot be written any more, because the disk is full, say, reports that once and
/// then refuses all records. What it holds by then is good for recovery, and the session goes on.
/// Used on one thread.
class SessionJournal final : public QObject {
    Q_OBJECT

public:
    /// What happens to the journal that a killed process has left.
    enum class LeftJournal {
        Keep, ///< open() fails, so that it can be recovered
        Discard ///< it is overwritten
    };

    /// A journal that is not open.
    explicit SessionJournal(QObject *parent = nullptr);
    /// Closes the journal. Its file stays: the session may not have been saved.
    ~SessionJournal() override;

    /// The journal's file for the archive \a target.
    static QString nameFor(const QString &target);
    /// The lock that a process holds while it writes that journal, not yet tried. Whoever reads a
    /// journal that was left holds it meanwhile.
    static std::unique_ptr<QLockFile> lockFor(const QString &target);
    /// A killed process has left a journal for \a target, with a session in it. Read it with
    /// ManikinLogReader and Damage::IsSkipped.
    static bool isRecoverable(const QString &target);
    /// A process, perhaps this one, is writing the journal for \a target.
    static bool isBeingWritten(const QString &target);

    /// Begins the journal for the archive \a target. False, with the reason in errorString(), when
    /// another process is writing it, a killed one has left it and \a left says Keep, or it cannot
    /// be created. A journal without a record does not count as left. An open journal is closed
    /// first.
    bool open(const QString &target, LeftJournal left = LeftJournal::Keep);
    /// Whether records can be added.
    bool isOpen() const { return m_writer.has_value(); }

    /// Appends \a record, whose time is in ms since the start of the session. A journal whose
    /// records do not say themselves when they were recorded says it: in front of the first one,
    /// and again where the session starts. False when that failed, or the log cannot hold such a
    /// record; see ManikinLogWriter::write().
    bool add(const Record &record);

    /// Waits until the disk has everything; false when it has not. Blocks for as long as the disk
    /// takes, some ms as a rule.
    bool sync();
    /// Does so if a record has waited for its second. Costs nothing else.
    void syncWhenDue();

    /// Ends the journal and removes its file: the session has been saved. False when the file
    /// cannot be removed.
    bool remove();

    /// The file; empty before open().
    QString fileName() const { return m_file.fileName(); }
    /// What went wrong last; empty when nothing did.
    QString errorString() const { return m_errorString; }

Q_SIGNALS:
    /// The journal cannot be written any more, which comes once, or it had to refuse a record.
    void failed(const QString &reason);

private:
    bool create();
    bool write(const Record &record);
    bool needsStart(const Record &record);
    bool handOver();
    bool fail(const QString &reason);
    bool giveUp(const QString &reason);
    void close();

    std::unique_ptr<QLockFile> m_lock;
    QFile m_file;
    QBuffer m_pending; // lines that m_file has not got yet
    std::optional<ManikinLogWriter> m_writer; // as long as m_file can be written
    bool m_hasRecords = false;
    bool m_isRecording = false; // played again: its own records say when it was recorded
    CPRData::CprState m_state = CPRData::CPR_UNINITIALIZED; // of the last record of a state
    QElapsedTimer m_handedOver; // since m_file got something
    QElapsedTimer
        m_oldest; // since the oldest record came that is not on the disk; invalid for none
    QTimer m_timer;
    QString m_errorString;
};

} // namespace manikinlog

#endif
