// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_UNSAVEDSESSIONS_H
#define CPRVIEWER_UNSAVEDSESSIONS_H

#include <QDateTime>
#include <QFile>
#include <QString>
#include <QStringList>

#include <memory>

/// A session that a killed program has left and that this one has claimed: while this object lives,
/// other programs do not offer it.
class LeftSession {
public:
    /// Null when another program was faster.
    static std::unique_ptr<LeftSession> claim(const QString &target);

    /// The file that holds it.
    QString journal() const;
    /// Deletes it, if it was not moved: it was saved, or is not wanted.
    void remove();
    /// Moves it to the file \a name: it was saved only in part. Where that fails it stays.
    void moveTo(const QString &name);

private:
    explicit LeftSession(const QString &target);

    QString m_target;
    bool m_isMoved = false;
    std::unique_ptr<QFile> m_claimed;
};

/// What there is to know of a session that was left, before it is loaded.
struct LeftSummary {
    QString target;
    QStringList learners;
    QDateTime start; ///< when it was recorded
    qint64 msecs = 0; ///< how long
};

/// The folder in which live sessions are journalled until they are saved. Each has an archive name
/// there that no archive will ever have; manikinlog::SessionJournal puts the journal beside it, and
/// while the session is being saved a note of where to lies there too.
class UnsavedSessions {
public:
    /// \a folder is made when it is needed. Without one nothing is journalled.
    explicit UnsavedSessions(const QString &folder);

    /// A name for a session that begins now, which none has; empty when nothing is journalled.
    QString newTarget() const;
    /// The name for the session \a id, which is always the same, so that it goes on after a kill;
    /// empty when nothing is journalled. \a id has to be the name of a file.
    QString targetOf(const QString &id) const;
    /// Empty when nothing is journalled.
    QString folder() const { return m_folder; }
    /// The names of the sessions that killed programs have left, the newest first. One that is
    /// being written, or was claimed, is not among them; nor is one over a link that has not begun,
    /// to which its sender may come back.
    QStringList left() const;

    /// Notes that the session \a target is about to be saved as \a archive, which is not there yet.
    /// Until forgetSaving() removeSaved() goes by that. Nothing for an empty \a target. On any
    /// thread.
    static void noteSaving(const QString &target, const QString &archive);
    /// The archive is there and the journal is not, or the other way round.
    static void forgetSaving(const QString &target);
    /// Removes the journals of sessions that were saved already: a viewer was killed before it
    /// could do so. Reads both, which takes a moment, and only after such a kill.
    void removeSaved() const;
    /// Looks into the journal of one.
    static LeftSummary summaryOf(const QString &target);

private:
    QString m_folder;
};

#endif
