// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_ARCHIVESALVAGE_H
#define CPRSESSION_ARCHIVESALVAGE_H

#include "ArchiveMember.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <array>
#include <functional>

/// Makes a whole session out of what is left of a damaged archive. Kept are
/// - each member that is whole, byte by byte;
/// - the events and guideline values that can be read and make sense, wherever they stand in a
///   damaged member: each is an element of its own, and says by itself whether it is sound;
/// - the samples up to the damage, since a wave has nothing that tells sound from unsound ones;
/// - the description of each wave that is sound.
/// What is gone is stored as a session stores it that has recorded nothing. The result passes
/// ArchiveCheck::run() without an error.
namespace ArchiveSalvage {

struct Session {
    std::array<QByteArray, ArchiveCheck::members.size()> contents; ///< by MemberIndex
    QStringList report; ///< a line for each member
    bool holdsAnything = false; ///< of what was in the archive
    bool isAll = true; ///< all members were whole
};

/// Looks through the archive \a name, which has to be readable. \a advance is told how many bytes
/// of how many have been looked through.
Session run(const QString &name, const std::function<void(qint64, qint64)> &advance);

/// Writes the archive \a name. Until all of it is written, a file of that name stays as it was.
/// Returns what went wrong; empty when nothing did.
QString write(const QString &name, const Session &session);

} // namespace ArchiveSalvage

#endif
