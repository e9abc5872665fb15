// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONLIBRARY_ARCHIVEFOLDER_H
#define SESSIONLIBRARY_ARCHIVEFOLDER_H

#include "sessionlibrary/SessionEntry.h"

#include <functional>
#include <vector>

namespace sessionlibrary {

/// The stamp of a file, or of the one that it leads to when it is a symbolic link. FileStamp() when
/// there is no regular file.
FileStamp stampOf(const QString &path);

/// An archive of a folder.
struct ListedFile {
    QString file; ///< relative to the folder
    FileStamp stamp;
};

/// The archives that lie in a folder and in the folders below it.
struct ArchiveList {
    std::vector<ListedFile> files; ///< in the order of the directories
    QStringList folders; ///< all folders that were looked into, as absolute names
    /// What could not be listed, relative to the folder with a / at its end; empty for the folder
    /// itself. Nothing is known of the archives in them.
    QStringList unreadable;
    QStringList reasons; ///< why, in the order of unreadable
    bool isCancelled = false; ///< it is not complete
};

/// Lists *.zip in \a folder. Left out is what has a dot before its name, and symbolic links to
/// folders, which may lead in a circle. \a isCancelled may be null.
ArchiveList archivesIn(const QString &folder, const std::function<bool()> &isCancelled = {});

} // namespace sessionlibrary

#endif
