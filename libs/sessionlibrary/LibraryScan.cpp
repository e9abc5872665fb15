// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionlibrary/LibraryScan.h"

#include "sessionlibrary/ArchiveFolder.h"
#include "sessionlibrary/IndexWriter.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QHash>
#include <QThreadPool>

#include <algorithm>
#include <deque>
#include <future>

namespace sessionlibrary {

namespace {

constexpr std::size_t maxBatch = 200; // entries
constexpr int batchMs = 500; // others see them that late at most

class Scan {
public:
    Scan(SessionLibrary &library, const ScanOptions &options)
        : m_library(library), m_options(options), m_writer(library)
    {
    }

    ScanResult run()
    {
        const ArchiveList list = archivesIn(m_library.folder(), m_options.isCancelled);
        m_result.folders = list.folders;
        m_result.isCancelled = list.isCancelled;
        if (m_result.isCancelled)
            return m_result;
        for (int i = 0; i < list.unreadable.size(); ++i)
            m_result.problems.append({list.unreadable.at(i), list.reasons.at(i)});
        const std::optional<std::vector<StoredFile>> stored = m_writer.files();
        if (!stored)
            return failed();
        compare(list, *stored);
        m_total = int(m_toRead.size());
        if (!read() || !flush() || !m_writer.remove(m_gone))
            return failed();
        m_result.removed = int(m_gone.size());
        m_result.isComplete = !m_result.isCancelled && list.unreadable.isEmpty() && !m_isLeft;
        return m_result;
    }

private:
    ScanResult failed()
    {
        m_result.error = m_library.errorString();
        return m_result;
    }

    bool isCancelled() const { return m_options.isCancelled && m_options.isCancelled(); }

    // What has to be read and what is gone.
    void compare(const ArchiveList &list, const std::vector<StoredFile> &stored)
    {
        QHash<QString, const StoredFile *> known;
        known.reserve(int(stored.size()));
        for (const StoredFile &file : stored)
            known.insert(file.file, &file);
        for (const ListedFile &file : list.files) {
            const StoredFile *old = known.take(file.file);
            if (old && old->stamp == file.stamp) {
                ++m_result.unchanged;
                if (old->state != State::Whole)
                    addKnownProblem(file.file);
            } else {
                m_toRead.push_back({file.file, old != nullptr});
            }
        }
        for (auto left = known.cbegin(); left != known.cend(); ++left) {
            const bool isUnknown =
                std::any_of(list.unreadable.begin(), list.unreadable.end(),
                            [&](const QString &folder) { return left.key().startsWith(folder); });
            if (!isUnknown)
                m_gone.append(left.key());
        }
    }

    void addKnownProblem(const QString &file)
    {
        if (const std::optional<SessionEntry> entry = m_library.session(file))
            m_result.problems.append({file, entry->reason});
    }

    // False when the index cannot be written.
    bool read()
    {
        m_sinceFlush.start();
        if (m_options.jobs <= 1) {
            for (const ToRead &file : m_toRead) {
                if (!use(file, readEntry(m_library.folder(), file.file, m_options.isCancelled)))
                    return m_result.isCancelled;
            }
            return true;
        }
        return readInParallel();
    }

    bool readInParallel()
    {
        // Read, and not yet used, for each job: a slow one does not delay the others.
        constexpr std::size_t waitingPerJob = 4;
        std::deque<std::future<ReadEntry>> waiting;
        QThreadPool pool; // ends, with all of its threads, before what they use
        pool.setMaxThreadCount(m_options.jobs);
        std::size_t next = 0;
        for (std::size_t used = 0; used < m_toRead.size(); ++used) {
            for (; next < m_toRead.size()
                 && waiting.size() < std::size_t(m_options.jobs) * waitingPerJob;
                 ++next) {
                const auto promise = std::make_shared<std::promise<ReadEntry>>();
                waiting.push_back(promise->get_future());
                pool.start([promise, folder = m_library.folder(), file = m_toRead[next].file,
                            isEnded = m_options.isCancelled] {
                    promise->set_value(readEntry(folder, file, isEnded));
                });
            }
            const ReadEntry entry = waiting.front().get();
            waiting.pop_front();
            if (!use(m_toRead[used], entry)) {
                pool.clear();
                return m_result.isCancelled;
            }
        }
        return true;
    }

    struct ToRead {
        QString file;
        bool isKnown = false; // it has an entry
    };

    // False when there is nothing more to do.
    bool use(const ToRead &file, const ReadEntry &read)
    {
        m_result.isCancelled = read.result == ReadEntry::Result::Cancelled || isCancelled();
        switch (read.result) {
        case ReadEntry::Result::Read:
            m_batch.push_back(read.entry);
            (file.isKnown ? m_result.changed : m_result.added) += 1;
            if (read.entry.state != State::Whole)
                addProblem(read.entry);
            break;
        case ReadEntry::Result::Gone:
            if (file.isKnown)
                m_gone.append(file.file);
            break;
        case ReadEntry::Result::Changing:
            m_isLeft = m_result.isUnsettled = true;
            m_result.problems.append(
                {file.file,
                 QCoreApplication::translate("sessionlibrary",
                                             "it is being written; the next scan reads it")});
            break;
        case ReadEntry::Result::Unreadable:
            m_isLeft = true;
            m_result.problems.append({file.file, read.reason});
            break;
        case ReadEntry::Result::Cancelled:
            break;
        }
        if (m_options.advance)
            m_options.advance(++m_done, m_total, file.file);
        const bool isFull = m_batch.size() >= maxBatch || m_sinceFlush.elapsed() >= batchMs;
        return (!isFull || flush()) && !m_result.isCancelled;
    }

    void addProblem(const SessionEntry &entry)
    {
        constexpr qint64 nsPerMs = 1'000'000;
        constexpr qint64 settledMs = 60'000; // no copy pauses longer
        m_result.problems.append({entry.file, entry.reason});
        m_result.isUnsettled = m_result.isUnsettled
            || QDateTime::currentMSecsSinceEpoch() - entry.stamp.modifiedNs / nsPerMs < settledMs;
    }

    bool flush()
    {
        m_sinceFlush.restart();
        if (m_batch.empty())
            return true;
        const bool isStored = m_writer.store(m_batch);
        m_batch.clear();
        if (isStored && m_options.stored)
            m_options.stored();
        return isStored;
    }

    SessionLibrary &m_library;
    const ScanOptions &m_options;
    IndexWriter m_writer;
    ScanResult m_result;
    std::vector<ToRead> m_toRead;
    QStringList m_gone;
    std::vector<SessionEntry> m_batch;
    QElapsedTimer m_sinceFlush;
    int m_done = 0;
    int m_total = 0;
    bool m_isLeft = false; // an archive, as it was
};

} // namespace

ScanResult scan(SessionLibrary &library, const ScanOptions &options)
{
    return Scan(library, options).run();
}

} // namespace sessionlibrary
