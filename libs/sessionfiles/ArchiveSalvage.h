// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_ARCHIVESALVAGE_H
#define SESSIONFILES_ARCHIVESALVAGE_H

#include "sessionfiles/SessionFile.h"

#include <QIODevice>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace sessionfiles {

/// What was made of a damaged archive.
struct SalvagedSession {
    /// Opens a member's content for reading, from its beginning and in one direction.
    using Open = std::function<std::unique_ptr<QIODevice>()>;

    /// All five members, by names such as "CPREvents.xml". They are unpacked out of the damaged
    /// archive while they are read. One that is not what it was any more, or cannot be read, gives
    /// -1 instead of its end.
    QMap<QString, Open> members;
    QStringList report; ///< a line for each member, to be shown
    bool holdsAnything = false; ///< of what was in the archive
    bool isAll = true; ///< all members were whole, and all of the archive could be read
    std::optional<QString> failure; ///< why not all of the archive could be read
};

/// Makes a whole session out of what is left of the archive \a name, which has to be readable. Kept
/// are
/// - each member that is whole, byte by byte;
/// - the events and guideline values that can be read and make sense, wherever they stand in a
///   damaged member: each is an element of its own, and says by itself whether it is sound. Of
///   more than a session holds the first are kept;
/// - the samples up to the damage, since a wave has nothing that tells sound from unsound ones;
/// - the description of each wave that is sound.
/// What is gone is stored as a session stores it that has recorded nothing. load() loads the result
/// whole. However much the members hold, little of it is in memory at once, and the time grows as
/// their bytes do. \a advance is told how many bytes of how many have been looked through, and may
/// be null.
SalvagedSession salvage(const QString &name,
                        const std::function<void(qint64 done, qint64 total)> &advance = {});

/// Reads what was salvaged into \a session, which should be new.
LoadResult load(const SalvagedSession &salvaged, CPRData &session);

/// Saves \a session as the archive \a name. Until all of it is written, a file of that name stays
/// as it was. That fails, too, where a member cannot be read again as it was.
SaveResult save(const QString &name, const SalvagedSession &session);

} // namespace sessionfiles

#endif
