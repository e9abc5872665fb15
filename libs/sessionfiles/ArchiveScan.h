// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_ARCHIVESCAN_H
#define SESSIONFILES_ARCHIVESCAN_H

#include "sessionfiles/ArchiveMember.h"

#include <QIODevice>
#include <QString>

#include <array>
#include <functional>
#include <memory>
#include <optional>

/// The members of an archive that has lost its order: found by their own headers and by what is
/// left of the directory, wherever these lie in the file, and unpacked as far as that goes.
namespace sessionfiles::ArchiveScan {

/// Where a member's content lies and how it is packed, by one header.
struct Packing {
    quint16 flags = 0;
    int method = 0;
    quint32 checksum = 0;
    qint64 packedSize = 0; ///< bytes; as the header says
    qint64 begin = 0; ///< position in the file
};

/// What is left of one member.
struct Member {
    /// The content, unpacked again while it is read. Where it is not what it was, or the archive
    /// cannot be read, a read gives -1.
    std::unique_ptr<QIODevice> open() const;
    /// Makes the content end after \a bytes. False when it is not what it was before.
    bool shorten(qint64 bytes);

    bool isFound = false; ///< a header tells of it
    bool isComplete = false; ///< it unpacks to its end, and its checksum agrees
    /// The content is what was stored, or its first bytes. False where a checksum is wrong or
    /// unpacking fails: a flipped bit can have spoilt the content long before that shows.
    bool isCertain = false;
    bool isCut = false; ///< the archive ends inside the member
    qint64 size = 0; ///< bytes of the content, at most those that a member may have
    quint32 sum = 0; ///< CRC-32 of these bytes
    QString damage; ///< what is wrong when it is not complete
    QString archive; ///< the file in which it lies
    Packing packing; ///< where it lies
    qint64 packedEnd = 0; ///< position in the file at which unpacking ends at the latest
};

using Members = std::array<Member, readingOrder.size()>;

/// What is left of an archive.
struct Found {
    Members members;
    std::optional<QString> failure; ///< why not all of the file could be read
};

/// Looks through the file \a name, which has to be readable, in little memory. \a advance is told
/// how many bytes of how many have been looked through. What cannot be read of the file is passed
/// over.
Found run(const QString &name, const std::function<void(qint64, qint64)> &advance);

} // namespace sessionfiles::ArchiveScan

#endif
