// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_SESSIONRESULTS_H
#define CPRQUICK_SESSIONRESULTS_H

#include <sessionlibrary/SessionEntry.h>
#include <sessionreview/ClassFigures.h>

#include <QHash>
#include <QObject>
#include <QStringList>

#include <atomic>
#include <vector>

class QThread;

namespace cprquick {

/// The results of several archives, read on a thread of its own. What was read once and has not
/// changed since is not read again.
class SessionResults final : public QObject {
    Q_OBJECT

public:
    /// Reads nothing yet.
    explicit SessionResults(QObject *parent = nullptr);
    /// Gives up what is being read.
    ~SessionResults() override;

    /// Reads the archives of these absolute names; what is being read is given up. finished()
    /// comes, once for several calls.
    void read(const QStringList &names);
    /// finished() is still to come.
    bool isReading() const { return m_thread != nullptr; }
    /// Of the archives that could be read, in the order of their names in read().
    const std::vector<sessionreview::SessionResult> &results() const { return m_results; }
    /// How many could not be read at all.
    int unreadCount() const { return m_unread; }

Q_SIGNALS:
    /// results() has what was read.
    void finished();

private:
    struct Known {
        sessionlibrary::FileStamp stamp;
        sessionreview::SessionResult result;
    };

    void start();
    void run();

    QThread *m_thread = nullptr; // a child of this object while it runs
    std::atomic<bool> m_isCancelled{false};
    QStringList m_wanted;
    bool m_isWanted = false; // after what is being read
    // These belong to m_thread while that runs.
    QStringList m_names;
    QHash<QString, Known> m_known;
    std::vector<sessionreview::SessionResult> m_read;
    int m_unreadNow = 0;

    std::vector<sessionreview::SessionResult> m_results;
    int m_unread = 0;
};

} // namespace cprquick

#endif
