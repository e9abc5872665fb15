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

/// Waits for the disk on threads of its own, so that many journals of one thread do not wait for it
/// one after the other. Used on one thread.
class JournalSync final : public QObject {
    Q_OBJECT

public:
    /// Hears that the disk has the file (0), or the errno that says why not.
    using Done = std::function<void(int error)>;

    /// Nothing is requested.
    explicit JournalSync(QObject *parent = nullptr);
    /// Waits until the disk has what was requested. Nobody hears of it any more.
    ~JournalSync() override;

    /// Has the disk get what was written to \a file, which may be closed meanwhile, and its name
    /// \a name unless that is empty. \a done is called once, by the event loop. Gives a ticket; 0,
    /// with the reason in errno, when that cannot be, and then nobody calls \a done.
    quint64 request(int file, const QString &name, const Done &done);
    /// Nobody is to hear of that request.
    void cancel(quint64 ticket) { m_requests.remove(ticket); }

private:
    void finish(quint64 ticket, int error);

    quint64 m_lastTicket = 0;
    QHash<quint64, Done> m_requests; // that are not done, by their tickets
    QThreadPool m_threads;
};

} // namespace manikinlog

#endif
