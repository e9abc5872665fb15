// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLOG_JOURNALSYNC_H
#define MANIKINLOG_JOURNALSYNC_H

#include <QHash>
#include <QObject>
#include <QString>
#include <QThreadPool>

#include <functional>

namespace manikinlog {

/// Waits for the disk on threads of its own, so that the thread that writes many journals does not
/// wait for one after the other. Used on one thread, with an event loop.
class JournalSync final : public QObject {
    Q_OBJECT

public:
    /// Hears that the disk has the file (0), or the errno that says why not.
    using Done = std::function<void(int error)>;

    /// Nothing is requested.
    explicit JournalSync(QObject *parent = nullptr);
    /// Waits until the disk has what was requested. Nobody hears of it any more.
    ~JournalSync() override;

    /// Has the disk get what was written to \a file, a descriptor that may be closed meanwhile, and
    /// the entry of its folder for the file's name \a name unless that is empty. \a done is called
    /// once, by the event loop. Gives a ticket, from 1; 0, with the reason in errno, when that
    /// cannot be, and then nobody calls \a done.
    quint64 request(int file, const QString &name, const Done &done);
    /// Nobody hears of that request any more; the disk gets the file all the same. An unknown
    /// ticket does nothing.
    void cancel(quint64 ticket) { m_requests.remove(ticket); }

private:
    void finish(quint64 ticket, int error);

    quint64 m_lastTicket = 0;
    QHash<quint64, Done> m_requests; // of which somebody wants to hear, by their tickets
    QThreadPool m_threads;
};

} // namespace manikinlog

#endif
