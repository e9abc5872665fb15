// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_SESSIONFILE_H
#define CPRSESSION_SESSIONFILE_H

#include <QString>
#include <QStringList>

class CPRData;

/// Sessions in archives, as every verb reads and writes them.
namespace SessionFile {

struct LoadResult {
    bool isArchive = false; ///< the file could be opened as an archive
    bool isComplete = false; ///< the session reports that everything could be read
    QStringList missing; ///< members that are not there or cannot be opened
};

LoadResult load(const QString &name, CPRData &session);

/// Saves \a session under \a name. Until all of it is written, a file of that name stays as it
/// was. Returns what went wrong; empty when nothing did.
QString save(const QString &name, CPRData &session);

} // namespace SessionFile

#endif
