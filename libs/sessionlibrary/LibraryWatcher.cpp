// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionlibrary/LibraryWatcher.h"

#include <QThread>

#include <memory>
#include <utility>

namespace sessionlibrary {

namespace {

constexpr int settlingMs = 300; // several archives that come together are one scan
constexpr int unsettledMs = 2000; // until an archive that was being written is looked at again
constexpr int pollingMs = 1000;
constexpr int pollsPerScan = 60; // a network folder reports nothing that others do

} // namespace

LibraryWatcher::LibraryWatcher(QObject *parent) : QObject(parent)
{
    m_settling.setSingleShot(true);
    m_polling.setInterval(pollingMs);
    connect(&m_settling, &QTimer::timeout, this, &LibraryWatcher::scan);
    connect(&m_polling, &QTimer::timeout, this, &LibraryWatcher::askIndex);
    connect(&m_folders, &QFileSystemWatcher::directoryChanged, this, [this] {
        if (!m_settling.isActive() || m_settling.remainingTime() > settlingMs)
            m_settling.start(settlingMs);
    });
}

LibraryWatcher::~LibraryWatcher()
{
    follow(QString());
}

void LibraryWatcher::follow(const QString &folder)
{
    m_isCancelled = true;
    if (QThread *thread = std::exchange(m_thread, nullptr)) {
        thread->wait();
        // Not at once: its finished() may still wait, and must not pass for that of the next
        // thread.
        thread->deleteLater();
    }
    m_settling.stop();
    m_polling.stop();
    if (const QStringList watched = m_folders.directories(); !watched.isEmpty())
        m_folders.removePaths(watched);
    m_opened = OpenResult();
    m_result = ScanResult();
    m_version = -1;
    m_folder = folder;
    if (!folder.isEmpty())
        scan();
}

void LibraryWatcher::scan()
{
    m_isScanWanted = m_thread != nullptr;
    if (m_thread || m_folder.isEmpty())
        return;
    m_isCancelled = false;
    m_polls = 0;
    const auto outcome = std::make_shared<Outcome>();
    m_thread = QThread::create([this, folder = m_folder, outcome] { run(folder, *outcome); });
    m_thread->setParent(this);
    connect(m_thread, &QThread::finished, this, [this, thread = m_thread, outcome] {
        if (thread != m_thread)
            return; // given up since
        m_thread = nullptr;
        thread->deleteLater();
        m_opened = outcome->opened;
        m_result = outcome->result;
        watchFolders();
        askIndex();
        m_polling.start();
        Q_EMIT finished();
        if (m_isScanWanted)
            scan();
        else if (m_result.isUnsettled && !m_result.isCancelled)
            m_settling.start(unsettledMs);
    });
    m_thread->start();
    Q_EMIT started();
}

void LibraryWatcher::cancel()
{
    m_isCancelled = true;
    m_isScanWanted = false;
}

// Runs on m_thread. Signals are delivered on that of their receivers.
void LibraryWatcher::run(const QString &folder, Outcome &outcome)
{
    SessionLibrary library;
    outcome.opened = library.open(folder, Check::Thorough);
    if (!outcome.opened.isOpen) {
        outcome.result.error = outcome.opened.reason;
        return;
    }
    constexpr int steps = 100;
    int reported = 0;
    ScanOptions options;
    options.jobs = QThread::idealThreadCount();
    options.isCancelled = [this] { return m_isCancelled.load(); };
    options.advance = [this, &reported](int done, int total, const QString & /*file*/) {
        if (done == total || done - reported > total / steps) {
            reported = done;
            Q_EMIT progressed(done, total);
        }
    };
    options.stored = [this] { Q_EMIT changed(); };
    outcome.result = sessionlibrary::scan(library, options);
}

void LibraryWatcher::watchFolders()
{
    const QStringList watched = m_folders.directories();
    for (const QString &folder : watched) {
        if (!m_result.folders.contains(folder))
            m_folders.removePath(folder);
    }
    for (const QString &folder : qAsConst(m_result.folders)) {
        if (!watched.contains(folder))
            m_folders.addPath(folder);
    }
}

void LibraryWatcher::askIndex()
{
    if (!m_index.isOpen() || m_index.folder() != m_folder)
        static_cast<void>(m_index.open(m_folder));
    const qint64 version = m_index.version();
    if (version != m_version) {
        m_version = version;
        Q_EMIT changed();
    }
    if (!m_thread && !m_settling.isActive() && ++m_polls >= pollsPerScan)
        scan();
}

} // namespace sessionlibrary
