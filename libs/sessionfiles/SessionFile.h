// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_SESSIONFILE_H
#define SESSIONFILES_SESSIONFILE_H

#include <CPRReadReport.h>

#include <QString>
#include <QStringList>
#include <QVector>

#include <functional>

class CPRData;
class CPRFileHandler;

/// Sessions in files: what programs do with the archives that the library reads and writes.
namespace sessionfiles {

/// Is called with how many bytes of how many were read. False gives up.
using Progress = std::function<bool(qint64 done, qint64 total)>;

/// What became of one member of a session that was loaded.
using LoadedMember = CPRReadReport::Member;

/// What became of a session that was loaded.
struct LoadResult {
    /// Whether the session has something of at least one member.
    bool hasMembers() const;
    /// Whether the session has something of the file.
    bool hasSession() const { return isRecording || hasMembers(); }
    /// The names of the members that are not there.
    QStringList missing() const;

    bool isArchive = false; ///< the file could be opened as an archive
    bool isRecording = false; ///< the file is a recorded log, and at least one record was played
    /// All five members are in the session to their ends, or all of the recorded log.
    bool isComplete = false;
    bool isCancelled = false; ///< given up; the session is not to be used
    /// What was asked for, in the order in which it was read. Nothing is asked for behind a list of
    /// waves that is missing.
    QVector<LoadedMember> members;
    QString problem; ///< where and why a recorded log ended early; empty otherwise
};

/// Reads the archive or recorded log \a name into \a session, which should be new. \a progress may
/// be null. What is whole is read of a damaged archive, too, and of a damaged log what stands
/// before the damage.
LoadResult load(const QString &name, CPRData &session, const Progress &progress = {});
/// Reads the members that \a handler gives; they count as an archive.
LoadResult load(CPRFileHandler &handler, CPRData &session);

/// Whether the file \a name is a sound archive, but of others: no member in it is of a session.
bool isForeignArchive(const QString &name);

/// What became of a session that was saved.
struct [[nodiscard]] SaveResult {
    /// That of an archive \a name that could not be written.
    static SaveResult failed(const QString &name, const QString &reason);

    bool isSaved = false; ///< the archive is on the disk
    bool isComplete = false; ///< that, and load() will load all of it
    /// With the file's name: why the archive is not saved, or what load() will leave out. For
    /// people, and only when it is not complete.
    QString reason;
};

/// Saves \a session under \a name. Until all of it is written, a file of that name stays as it
/// was. A session that holds more than load() loads is saved all the same, but not complete.
SaveResult save(const QString &name, CPRData &session);

} // namespace sessionfiles

#endif
