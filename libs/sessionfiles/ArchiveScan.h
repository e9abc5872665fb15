// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_ARCHIVESCAN_H
#define SESSIONFILES_ARCHIVESCAN_H

#include "sessionfiles/ArchiveMember.h"

#include <QByteArray>
#include <QString>

#include <array>
#include <functional>

/// The members of an archive that has lost its order: found by their own headers and by what is
/// left of the directory, wherever these lie in the file, and unpacked as far as that goes.
namespace sessionfiles::ArchiveScan {

/// What is left of one member.
struct Member {
    bool isFound = false; ///< a header tells of it
    bool isComplete = false; ///< it unpacks to its end, and its checksum agrees
    /// The content, or the beginning of it, is what was stored. False when a checksum is all that
    /// tells of damage, or unpacking fails somewhere: a flipped bit can have made what comes out
    /// wrong long before the place where that shows.
    bool isCertain = false;
    bool isCut = false; ///< the archive ends inside the member
    QByteArray content; ///< at most the bytes that a member may have
    QString damage; ///< what is wrong; empty when it is whole
};

using Members = std::array<Member, readingOrder.size()>;

/// Looks through the file \a name, which has to be readable. \a advance is told how many bytes of
/// how many have been looked through.
Members run(const QString &name, const std::function<void(qint64, qint64)> &advance);

} // namespace sessionfiles::ArchiveScan

#endif
