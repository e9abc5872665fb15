// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Heap.h"
#include "Row.h"

#include "manikinlink/LinkHub.h"
#include "manikinlink/LinkSession.h"
#include "manikinlink/LinkText.h"
#include "manikinlog/ManikinLogPlayer.h"
#include "manikinlog/ManikinLogReader.h"
#include "manikinlog/ManikinLogWriter.h"
#include "manikinlog/RecordText.h"

#include <QEventLoop>
#include <QFile>
#include <QLocalSocket>
#include <QThread>

#include <memory>

#include <sys/socket.h>
#include <unistd.h>

namespace bench {

namespace {

using namespace manikinlink;

// What a sender writes of a session: its first line, a batch for each 100 ms, and its end.
QByteArray linkText(const std::vector<manikinlog::Record> &records)
{
    constexpr qint64 batchMs = 100;
    QByteArray text = manikinlink::LinkText::firstLine(
                          {QStringLiteral("m"), QStringLiteral("s"), QStringLiteral("x")})
        + '\n';
    qint64 batchBegin = -batchMs;
    quint32 batches = 0;
    for (const manikinlog::Record &record : records) {
        if (record.msecs - batchBegin >= batchMs) {
            batchBegin = record.msecs;
            text += *manikinlog::RecordText::text({record.msecs, manikinlog::Batch{++batches}});
            text += '\n';
        }
        text += *manikinlog::RecordText::text(record) + '\n';
    }
    return text + QByteArray::number(records.back().msecs) + " bye\n";
}

/// Writes a text into a socket as fast as the other end reads it, on a thread of its own.
class Sender {
public:
    explicit Sender(const QByteArray &text)
    {
        int ends[2];
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0)
            qFatal("No sockets");
        way = std::make_unique<QLocalSocket>();
        way->setSocketDescriptor(ends[0]);
        m_thread.reset(QThread::create([&text, end = ends[1]] {
            qint64 sent = 0;
            while (sent < text.size()) {
                const auto count =
                    ::send(end, text.constData() + sent,
                           static_cast<std::size_t>(text.size() - sent), MSG_NOSIGNAL);
                if (count <= 0)
                    qFatal("The link was cut");
                sent += count;
            }
            ::close(end);
        }));
    }
    ~Sender() { m_thread->wait(); }
    Sender(const Sender &) = delete;
    Sender &operator=(const Sender &) = delete;

    void start() { m_thread->start(); }

    std::unique_ptr<QLocalSocket> way; ///< the receiver's end

private:
    std::unique_ptr<QThread> m_thread;
};

// Receives all that the sender writes; the session is there when its journal is on the disk.
std::unique_ptr<LinkSession> receive(LinkHub &hub, Sender &sender, const QString &target)
{
    std::unique_ptr<LinkSession> session;
    QEventLoop loop;
    const auto connection = QObject::connect(&hub, &LinkHub::streamAdded, [&](LinkStream *stream) {
        session = std::make_unique<LinkSession>(stream, target);
        QObject::connect(session.get(), &LinkSession::ended, &loop, &QEventLoop::quit);
    });
    sender.start();
    hub.addChannel(std::move(sender.way));
    loop.exec();
    QObject::disconnect(connection);
    return session;
}

std::vector<Figure> measureLink(Bench &bench)
{
    const std::vector<manikinlog::Record> &records = bench.sessions.hour();
    const QByteArray text = linkText(records);
    const QString name = bench.sessions.file(QStringLiteral("link.cprlog"));
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        qFatal("A log cannot be written");
    manikinlog::ManikinLogWriter writer(&file);
    for (const manikinlog::Record &record : records)
        writer.write(record);
    file.close();
    const auto subject = [&text](Clock &clock) {
        LinkHub hub;
        Sender sender(text);
        clock.start();
        const std::unique_ptr<LinkSession> session = receive(hub, sender, QString());
        clock.stop();
    };
    const auto reference = [&name](Clock &clock) {
        CPRData session;
        QFile log(name);
        clock.start();
        log.open(QIODevice::ReadOnly);
        manikinlog::ManikinLogReader reader(&log, name);
        if (!manikinlog::ManikinLogPlayer(&session).play(reader))
            qFatal("A log cannot be played");
        clock.stop();
    };
    return {
        withGoal(compare(bench.pairs, subject, reference, static_cast<int>(records.size())), 2)};
}

std::vector<Figure> measureMemory(Bench &bench)
{
    const std::vector<manikinlog::Record> &records = bench.sessions.hour();
    const QByteArray text = linkText(records);
    const auto received = [&] {
        const HeapCount heap;
        LinkHub hub;
        Sender sender(text);
        const std::unique_ptr<LinkSession> session =
            receive(hub, sender, bench.sessions.file(QStringLiteral("link.zip")));
        const double live = static_cast<double>(heap.live());
        session->removeJournal();
        return live;
    };
    received(); // what stays of the first is not the session's
    const double subject = received();
    const HeapCount heap;
    CPRData session;
    manikinlog::ManikinLogPlayer player(&session);
    for (const manikinlog::Record &record : records)
        player.play(record);
    return {withGoal(compareBytes(subject, static_cast<double>(heap.live())), 1.3)};
}

} // namespace

std::vector<Row> linkRows()
{
    return {
        {22, "a record by a link, socket to session", "the same played from a log", measureLink},
        {23, "memory of an hour by a link, with its journal", "the session itself", measureMemory},
    };
}

} // namespace bench
