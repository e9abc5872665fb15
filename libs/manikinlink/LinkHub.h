// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLINK_LINKHUB_H
#define MANIKINLINK_LINKHUB_H

#include "manikinlink/LinkAddress.h"
#include "manikinlink/LinkStream.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>

#include <deque>
#include <memory>
#include <optional>

class QIODevice;

namespace manikinlog {
class JournalSync;
}

namespace manikinlink {

class LinkChannel;

/// Receives manikins: listens, and matches connections to streams.
///
///     manikinlink::LinkHub hub;
///     connect(&hub, &manikinlink::LinkHub::streamAdded, this, &Host::addSession);
///     QString error;
///     if (!hub.listen(address, &error))
///         warn(error);
///
/// A manikin's id belongs to the sender that holds it, as long as that is alive. The same sender
/// and session on another connection go on there; the same sender with another session ends the
/// one before.
///
/// Used on one thread, with an event loop.
class LinkHub final : public QObject {
    Q_OBJECT

public:
    /// A hub that listens nowhere.
    explicit LinkHub(QObject *parent = nullptr);
    /// Closes all. The streams do not announce that they end.
    ~LinkHub() override;

    /// Listens at \a address too; once, however often it is asked. False, with the reason in
    /// \a error (may be null), when that is not possible. True for a broker that is not there yet:
    /// brokerLost() says so.
    bool listen(const LinkAddress &address, QString *error = nullptr);
    /// Where it listens, with the ports that were found to be free.
    QList<LinkAddress> addresses() const { return m_addresses; }

    /// Receives from a way of the host's own: \a device is open and sequential, and carries one
    /// stream. Null does nothing.
    void addChannel(std::unique_ptr<QIODevice> device);

    /// Every session may begin as soon as its manikin is there. Off at first. For new streams.
    void setStartsAtOnce(bool startsAtOnce) { m_startsAtOnce = startsAtOnce; }
    /// Where the sessions are kept: a stream is refused while that disk has less than 1 GiB free,
    /// or less than 5 % where that is less. Empty, as at first, for no such limit.
    void setFolder(const QString &folder) { m_folder = folder; }
    /// How long a sender may be away until its stream ends, in ms; 5 minutes at first.
    void setPatience(int ms) { m_patienceMs = ms; }

    /// Those that have not ended, in no order.
    QList<LinkStream *> streams() const { return m_streams.values(); }
    /// Brings the journals of all streams to the disk.
    manikinlog::JournalSync *journalSync() const { return m_sync.get(); }

Q_SIGNALS:
    /// A new session. It reads nothing until it has a sink. The hub is its parent and forgets it
    /// when it ends; a LinkSession deletes it, or whoever makes none.
    void streamAdded(LinkStream *stream);
    /// A connection was refused, or a stream that went wrong; both texts are one line for people.
    void refused(const QString &who, const QString &reason);
    /// The broker at \a address cannot be reached, or lets nobody in. It is tried again and again;
    /// the same reason comes once until it is reached.
    void brokerLost(const QString &address, const QString &reason);
    /// Standard input was all that it listened at, and that has ended.
    void exhausted();

private:
    friend class LinkStream;

    bool listenTcp(const LinkAddress &address, QString *error);
    bool listenLocal(const LinkAddress &address, QString *error);
    bool listenMqtt(const LinkAddress &address, QString *error);
    void listenStandardInput();
    void add(std::unique_ptr<QIODevice> device, bool canReturn, bool isDescribed = false);
    void parseFirstLine(LinkChannel *channel, const QByteArray &line, bool isDescribed);
    void claim(LinkChannel *channel, const manikinlog::Stream &ids, bool isDescribed);
    std::optional<QString> whyFull(int otherStreams) const;
    void refuse(LinkChannel *channel, const QString &who, const QString &reason);
    void forget(LinkChannel *channel);
    void streamEnded(LinkStream *stream);
    void setSafe(const manikinlog::Stream &ids);
    void tick();

    struct Finished {
        manikinlog::Stream ids;
        quint32 batch = 0; // the last one
        bool isSafe = false; // the disk has all of it, or it has no journal
    };
    std::unique_ptr<manikinlog::JournalSync> m_sync;
    QList<LinkAddress> m_addresses;
    QHash<QString, LinkStream *> m_streams; // by the manikin's id
    QList<LinkChannel *> m_waiting; // for their first line, the oldest first
    std::deque<Finished> m_finished; // whole ones, the oldest first
    QString m_folder;
    int m_patienceMs;
    bool m_startsAtOnce = false;
    bool m_hasStandardInput = false;
    QTimer m_timer;
};

} // namespace manikinlink

#endif
