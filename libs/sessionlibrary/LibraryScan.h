// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONLIBRARY_LIBRARYSCAN_H
#define SESSIONLIBRARY_LIBRARYSCAN_H

#include "sessionlibrary/SessionLibrary.h"

#include <QVector>

namespace sessionlibrary {

/// A file or folder that something is wrong with.
struct FileProblem {
    QString file; ///< relative to the library's folder; empty for that itself
    QString reason; ///< for people
};

/// How a scan runs.
struct ScanOptions {
    int jobs = 1; ///< threads that read archives; with 1 the caller's does
    /// Asked often, by several threads at once; true ends the scan. May be null.
    std::function<bool()> isCancelled;
    /// Told how many of how many archives that are new or have changed were read, and which one
    /// was. Runs on the caller's thread. May be null.
    std::function<void(int done, int total, const QString &file)> advance;
    /// Called on the caller's thread after each batch of entries, which all can see from then on.
    /// May be null.
    std::function<void()> stored;
};

/// What a scan found.
struct [[nodiscard]] ScanResult {
    bool isComplete = false; ///< the index is what the folder was while it was scanned
    bool isCancelled = false; ///< given up; what was read until then is in the index
    QString error; ///< for people: why the index could not be written; empty otherwise
    int added = 0; ///< archives that were new
    int changed = 0; ///< archives that were read again
    int removed = 0; ///< archives that are gone
    int unchanged = 0; ///< archives that were left alone
    /// Archives that are damaged, whether they were read now or before; folders that cannot be
    /// listed; archives that were being written all the time. The entries of the last two stay as
    /// they are.
    QVector<FileProblem> problems;
    bool isUnsettled = false; ///< somebody is writing archives: another scan soon will find more
    QStringList folders; ///< all folders that archives may be in, absolute names
};

/// Brings the index up to date with its folder. Archives whose size, time and number on the file
/// system are unchanged are not opened. Entries appear in batches; a scan that ends early, or is
/// killed, leaves less to do for the next.
ScanResult scan(SessionLibrary &library, const ScanOptions &options = {});

} // namespace sessionlibrary

#endif
