// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONLIBRARY_LIBRARYWATCHER_H
#define SESSIONLIBRARY_LIBRARYWATCHER_H

#include "sessionlibrary/LibraryScan.h"

#include <QFileSystemWatcher>
#include <QObject>
#include <QTimer>

#include <atomic>

class QThread;

namespace sessionlibrary {

/// Keeps the index of a folder up to date for a window: scans on a thread of its own, follows what
/// changes in the folder, and notices what other programs do to the index. Signals come on the
/// thread that this object lives on, which needs an event loop.
class LibraryWatcher final : public QObject {
    Q_OBJECT

public:
    explicit LibraryWatcher(QObject *parent = nullptr);
    /// Cancels a scan and waits for it, as it does not take long.
    ~LibraryWatcher() override;

    /// Scans the library of \a folder, and again whenever something changes there. What was
    /// followed before is followed no more. An empty name only ends that.
    void follow(const QString &folder);
    /// The folder that is followed.
    QString folder() const { return m_folder; }
    /// Scans now; while a scan runs, after it.
    void scan();
    /// Ends the scan that runs; finished() comes all the same. What was read is in the index.
    void cancel();
    /// Whether a scan runs.
    bool isScanning() const { return m_thread != nullptr; }
    /// How opening the index for the last scan ended. Its reason is worth showing.
    const OpenResult &opened() const { return m_opened; }
    /// What the last scan found.
    const ScanResult &result() const { return m_result; }

Q_SIGNALS:
    /// A scan has begun.
    void started();
    /// \a done of \a total archives that are new or have changed were read; a hundred times or so.
    void progressed(int done, int total);
    /// The index may say something else than before: ask it again. While a scan runs it comes twice
    /// a second at most.
    void changed();
    /// A scan has ended; opened() and result() say how.
    void finished();

private:
    // How a scan ended; its thread has it until then.
    struct Outcome {
        OpenResult opened;
        ScanResult result;
    };
    void run(const QString &folder, Outcome &outcome);
    void watchFolders();
    void askIndex();

    QString m_folder;
    QThread *m_thread = nullptr; // a child of this object while it runs
    std::atomic<bool> m_isCancelled{false};
    OpenResult m_opened;
    ScanResult m_result;
    bool m_isScanWanted = false; // after the one that runs
    SessionLibrary m_index; // of this object's thread
    qint64 m_version = -1;
    QFileSystemWatcher m_folders;
    QTimer m_settling; // until a folder that changes is scanned
    QTimer m_polling; // of what nobody reports
    int m_polls = 0; // since the last scan
};

} // namespace sessionlibrary

#endif
