// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONLIBRARY_SESSIONENTRY_H
#define SESSIONLIBRARY_SESSIONENTRY_H

#include "sessionreview/ClassFigures.h"
#include "sessionreview/Figures.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

/// Many sessions: a folder of archives, and an index of it that answers quickly. The archives are
/// the truth; nothing stands in the index alone.
namespace sessionlibrary {

/// By what a file is known to be the one that was read.
struct FileStamp {
    qint64 size = -1; ///< bytes; -1 for no file
    qint64 modifiedNs = 0; ///< ns since 1970 in UTC
    qint64 inode = 0; ///< number on the file system; a file that replaces another has its own

    /// Whether it is the same file, with the same content as far as the system can tell.
    bool operator==(const FileStamp &other) const
    {
        return size == other.size && modifiedNs == other.modifiedNs && inode == other.inode;
    }
    /// The opposite.
    bool operator!=(const FileStamp &other) const { return !(*this == other); }
};

/// How much could be read of an archive. The numbers are stored.
enum class State {
    Whole = 0, ///< all of it
    Salvaged = 1, ///< it is damaged; the entry shows what is left
    Damaged = 2 ///< nothing; there is a file, and that is all
};

/// What the library knows of one archive.
struct SessionEntry {
    qint64 id = 0; ///< of the row; the same as long as the file is there and the index lives
    QString file; ///< its name, relative to the library's folder, with / between folders
    FileStamp stamp; ///< of the file that was read
    State state = State::Damaged; ///< how much of it was read
    QString reason; ///< what is wrong with the file, for people; empty when it is whole
    sessionreview::Figures figures; ///< who, what and how well; learners may be called anything
    /// The values of sessionreview::recordedFigures(), in their order.
    std::vector<std::optional<double>> recorded;
    /// What user events are called. Found by searching; not filled in by SessionLibrary's answers.
    QStringList notes;

    /// The value of one of sessionreview::recordedFigures() by its key; none for an unknown key.
    std::optional<double> recordedValue(const char *key) const;
    /// What can be compared with other sessions. It has no targets and no faults, which nobody
    /// stores; resultOf() of the session itself has them.
    sessionreview::SessionResult result() const;
};

/// What became of reading an archive.
struct ReadEntry {
    /// Gone: the file is there no more. Changing: it was written while it was read, several times.
    /// Unreadable: the system does not give all of it, which says nothing of its content.
    enum class Result { Read, Gone, Changing, Unreadable, Cancelled };

    Result result = Result::Gone; ///< decides whether there is an entry
    SessionEntry entry; ///< without id
    QString reason; ///< of an unreadable file, for people
};

/// Reads the archive \a file of \a folder. \a isCancelled is asked now and then and may be null. A
/// file that is replaced while it is read is read again. Runs on any thread.
ReadEntry readEntry(const QString &folder, const QString &file,
                    const std::function<bool()> &isCancelled = {});

} // namespace sessionlibrary

#endif
