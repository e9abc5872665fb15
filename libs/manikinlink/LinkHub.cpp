// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlink/LinkHub.h"

#include "manikinlink/LinkChannel.h"
#include "manikinlink/MqttWay.h"
#include "manikinlink/StandardInput.h"
#include "manikinlog/JournalSync.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QPointer>
#include <QStorageInfo>
#include <QTcpServer>
#include <QTcpSocket>

#include <algorithm>
#include <sys/resource.h>
#include <sys/socket.h>
#include <utility>
#include <vector>

namespace manikinlink {

namespace {

constexpr int tickMs = 1000;
constexpr int patienceMs = 5 * 60 * 1000;
constexpr int firstLineMs = 5000; // for a connection to say who it is
constexpr int maxWaiting = 64; // connections that have not
constexpr int maxStreams = 512;
constexpr std::size_t maxFinished = 4096; // whole sessions that are remembered
constexpr qint64 minFreeBytes = 1024 * 1024 * 1024; // room for one more journal
constexpr qint64 smallDiskParts = 20; // or one of so many parts of a small disk

bool fail(QString *error, const QString &reason)
{
    if (error)
        *error = reason;
    return false;
}

// Qt lets 50 connections wait for their turn. A class that comes back at once is more, and those
// that find the queue full try again only after a second or longer.
void lengthenQueue(qintptr listeningSocket)
{
    ::listen(static_cast<int>(listeningSocket), SOMAXCONN);
}

// Whether a program listens at the local socket. A killed one leaves its file, at which nobody
// answers; one whose queue is full does not answer at once.
bool isListenedAt(const QString &file)
{
    QLocalSocket other;
    other.connectToServer(file);
    return other.state() != QLocalSocket::UnconnectedState;
}

// As many streams as this process can open files for; beyond, the journals of others would fail.
int streamsForFiles()
{
    constexpr rlim_t filesPerStream = 3; // connection, journal, archive
    constexpr rlim_t otherFiles = 128;
    struct rlimit files = {};
    if (::getrlimit(RLIMIT_NOFILE, &files) != 0 || files.rlim_cur == RLIM_INFINITY)
        return maxStreams;
    const rlim_t count = (std::max(files.rlim_cur, otherFiles) - otherFiles) / filesPerStream;
    return static_cast<int>(std::min(count, rlim_t(maxStreams)));
}

} // namespace

LinkHub::LinkHub(QObject *parent)
    : QObject(parent), m_sync(std::make_unique<manikinlog::JournalSync>()), m_patienceMs(patienceMs)
{
    m_timer.setInterval(tickMs);
    connect(&m_timer, &QTimer::timeout, this, &LinkHub::tick);
    m_timer.start();
}

LinkHub::~LinkHub()
{
    blockSignals(true);
}

bool LinkHub::listen(const LinkAddress &address, QString *error)
{
    const bool isKnown = std::any_of(
        m_addresses.cbegin(), m_addresses.cend(),
        [text = address.text()](const LinkAddress &known) { return known.text() == text; });
    if (isKnown)
        return true;
    switch (address.way()) {
    case LinkAddress::Way::Tcp:
        return listenTcp(address, error);
    case LinkAddress::Way::Local:
        return listenLocal(address, error);
    case LinkAddress::Way::StandardStream:
        listenStandardInput();
        return true;
    case LinkAddress::Way::Mqtt:
        return listenMqtt(address, error);
    }
    return false;
}

// What comes has no password and is not encrypted: it must not come from another machine.
bool LinkHub::listenTcp(const LinkAddress &address, QString *error)
{
    auto server = std::make_unique<QTcpServer>();
    if (!server->listen(QHostAddress::LocalHost, address.port()))
        return fail(error,
                    QCoreApplication::translate("manikinlink", "%1 cannot be listened at: %2")
                        .arg(address.text(), server->errorString()));
    QTcpServer *const tcp = server.release();
    tcp->setParent(this);
    lengthenQueue(tcp->socketDescriptor());
    connect(tcp, &QTcpServer::newConnection, this, [this, tcp] {
        while (std::unique_ptr<QTcpSocket> socket{tcp->nextPendingConnection()}) {
            socket->setParent(nullptr);
            // Rules of a firewall can lead other machines to this address.
            if (socket->peerAddress().isLoopback())
                add(std::move(socket), true);
        }
    });
    // A server stops accepting when the process has no file left for a connection.
    connect(&m_timer, &QTimer::timeout, tcp, &QTcpServer::resumeAccepting);
    m_addresses.append(address.withPort(tcp->serverPort()));
    return true;
}

bool LinkHub::listenLocal(const LinkAddress &address, QString *error)
{
    const std::optional<QString> file = address.socketFile();
    if (!file)
        return fail(
            error,
            QCoreApplication::translate("manikinlink",
                                        "there is no folder for local sockets that is this user's "
                                        "alone; is XDG_RUNTIME_DIR set?"));
    if (isListenedAt(*file))
        return fail(
            error,
            QCoreApplication::translate("manikinlink", "%1 is listened at by another program")
                .arg(address.text()));
    QLocalServer::removeServer(*file);
    auto server = std::make_unique<QLocalServer>();
    server->setSocketOptions(QLocalServer::UserAccessOption);
    if (!server->listen(*file))
        return fail(error,
                    QCoreApplication::translate("manikinlink", "%1 cannot be listened at: %2")
                        .arg(address.text(), server->errorString()));
    QLocalServer *const local = server.release();
    local->setParent(this);
    lengthenQueue(local->socketDescriptor());
    connect(local, &QLocalServer::newConnection, this, [this, local] {
        while (std::unique_ptr<QLocalSocket> socket{local->nextPendingConnection()}) {
            socket->setParent(nullptr);
            add(std::move(socket), true);
        }
    });
    // A server closes itself and removes its file when the process has no file left for a
    // connection. It still says that it listens.
    connect(&m_timer, &QTimer::timeout, local, [local, name = *file] {
        if (QFileInfo::exists(name))
            return;
        local->close();
        if (local->listen(name))
            lengthenQueue(local->socketDescriptor());
    });
    m_addresses.append(address);
    return true;
}

// Each manikin that the broker knows becomes a channel, as if it had connected.
bool LinkHub::listenMqtt(const LinkAddress &address, QString *error)
{
    auto listener = MqttListener::listen(
        address,
        [this](std::unique_ptr<QIODevice> device, bool isDescribed) {
            add(std::move(device), true, isDescribed);
        },
        error);
    if (!listener)
        return false;
    connect(listener.get(), &MqttListener::lost, this,
            [this, address](const QString &reason) { Q_EMIT brokerLost(address.text(), reason); });
    listener.release()->setParent(this);
    m_addresses.append(address);
    return true;
}

void LinkHub::listenStandardInput()
{
    m_hasStandardInput = true;
    m_addresses.append(LinkAddress());
    add(std::make_unique<StandardInput>(), false);
}

void LinkHub::addChannel(std::unique_ptr<QIODevice> device)
{
    if (device)
        add(std::move(device), true);
}

void LinkHub::add(std::unique_ptr<QIODevice> device, bool canReturn, bool isDescribed)
{
    // The oldest goes, but never standard input, which could not come back.
    const auto oldest = std::find_if(m_waiting.cbegin(), m_waiting.cend(),
                                     [](const LinkChannel *each) { return each->canReturn(); });
    if (m_waiting.size() >= maxWaiting && oldest != m_waiting.cend())
        forget(*oldest);
    auto *const channel = new LinkChannel(std::move(device), canReturn, this);
    m_waiting.append(channel);
    connect(channel, &LinkChannel::closed, this, [this, channel] { forget(channel); });
    channel->setReader([this, channel, isDescribed](const QByteArray &line) {
        if (!LinkText::isComment(line))
            parseFirstLine(channel, line, isDescribed);
        return LinkText::isComment(line);
    });
}

// A connection without a stream ends.
void LinkHub::forget(LinkChannel *channel)
{
    m_waiting.removeOne(channel);
    const bool wasLast = !channel->canReturn() && m_addresses.size() == 1;
    channel->close();
    channel->deleteLater();
    if (wasLast)
        Q_EMIT exhausted();
}

void LinkHub::parseFirstLine(LinkChannel *channel, const QByteArray &line, bool isDescribed)
{
    QString error;
    if (const std::optional<manikinlog::Stream> ids = LinkText::parseFirstLine(line, &error))
        claim(channel, *ids, isDescribed);
    else
        refuse(channel, QCoreApplication::translate("manikinlink", "somebody"), error);
}

void LinkHub::refuse(LinkChannel *channel, const QString &who, const QString &reason)
{
    channel->answer({LinkText::Answer::Kind::Refused, 0, reason});
    forget(channel);
    Q_EMIT refused(who, reason);
}

// The channel wants to go on, or to begin, with this session.
void LinkHub::claim(LinkChannel *channel, const manikinlog::Stream &ids, bool isDescribed)
{
    const auto finished = std::find_if(m_finished.begin(), m_finished.end(),
                                       [&ids](const Finished &each) { return each.ids == ids; });
    if (finished != m_finished.end()) {
        // Its sender has not heard that all is safe. As long as it is not, the sender comes again.
        if (finished->isSafe) {
            channel->answer({LinkText::Answer::Kind::Welcome, finished->batch, {}});
            channel->answer({LinkText::Answer::Kind::Ack, finished->batch, {}});
        }
        forget(channel);
        return;
    }
    LinkStream *const holder = m_streams.value(ids.manikin);
    const bool isSame = holder && holder->ids() == ids;
    // A broker that was killed may come back with the description of an earlier session. Whoever
    // has begun a new one says so itself.
    if (holder && !isSame && isDescribed) {
        forget(channel);
        return;
    }
    if (holder && holder->sender() != ids.sender && holder->isAlive()) {
        refuse(channel, ids.manikin,
               QCoreApplication::translate("manikinlink", "%1 is held by %2")
                   .arg(ids.manikin, holder->sender()));
        return;
    }
    if (!isSame) {
        // The holder stays where the comer cannot take its place.
        if (const std::optional<QString> why =
                whyFull(static_cast<int>(m_streams.size()) - (holder ? 1 : 0))) {
            refuse(channel, ids.manikin, *why);
            return;
        }
        if (holder)
            holder->end();
    }
    m_waiting.removeOne(channel);
    channel->disconnect(this);
    if (isSame) {
        holder->attach(channel);
        return;
    }
    auto *const stream = new LinkStream(ids, this);
    m_streams.insert(ids.manikin, stream);
    connect(stream, &LinkStream::ended, this, [this, stream] { streamEnded(stream); });
    // Its host may delete it before it has ended.
    connect(stream, &QObject::destroyed, this, [this, manikin = ids.manikin, stream] {
        if (m_streams.value(manikin) == stream)
            m_streams.remove(manikin);
    });
    stream->attach(channel);
    if (m_startsAtOnce)
        stream->start();
    Q_EMIT streamAdded(stream);
}

// Why there is no room for a stream beside so many others.
std::optional<QString> LinkHub::whyFull(int otherStreams) const
{
    if (otherStreams >= streamsForFiles())
        return QCoreApplication::translate("manikinlink",
                                           "%1 manikins are received, and no more can be")
            .arg(otherStreams);
    if (m_folder.isEmpty())
        return std::nullopt;
    const QStorageInfo disk(m_folder);
    const qint64 needed = std::min(minFreeBytes, disk.bytesTotal() / smallDiskParts);
    if (disk.isValid() && disk.bytesAvailable() < needed)
        return QCoreApplication::translate("manikinlink",
                                           "the disk has too little room for another session");
    return std::nullopt;
}

void LinkHub::streamEnded(LinkStream *stream)
{
    if (m_streams.value(stream->manikin()) == stream)
        m_streams.remove(stream->manikin());
    if (stream->isWhole()) {
        m_finished.push_back({stream->ids(), stream->position().batch, false});
        if (m_finished.size() > maxFinished)
            m_finished.pop_front();
    }
    // Standard input carries one stream.
    if (m_hasStandardInput && m_addresses.size() == 1)
        Q_EMIT exhausted();
}

void LinkHub::setSafe(const manikinlog::Stream &ids)
{
    for (Finished &each : m_finished)
        each.isSafe = each.isSafe || each.ids == ids;
}

void LinkHub::tick()
{
    const QList<LinkChannel *> waiting = m_waiting;
    for (LinkChannel *channel : waiting) {
        if (channel->canReturn() && channel->silentMs() > firstLineMs)
            forget(channel);
    }
    // What a stream announces may delete others.
    const std::vector<QPointer<LinkStream>> streams(m_streams.cbegin(), m_streams.cend());
    for (const QPointer<LinkStream> &stream : streams) {
        if (stream)
            stream->tick();
    }
}

} // namespace manikinlink
