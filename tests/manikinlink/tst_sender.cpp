// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlink/LinkHub.h"
#include "manikinlink/LinkSender.h"
#include "manikinlink/LinkStream.h"
#include "manikinlog/RecordText.h"
#include "manikinsim/Simulator.h"
#include "support/Program.h"
#include "support/Rows.h"

#include <QDir>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <random>

using manikinlink::LinkAddress;
using manikinlink::LinkSender;
using manikinlink::LinkStream;
using manikinlog::Record;
using testsupport::columns;

namespace {
const manikinlog::Stream ids{"manikin-1", "test", "session-1"};
constexpr int patienceMs = 30000 * testsupport::slowdown;

QByteArray textOf(const Record &record)
{
    return manikinlog::RecordText::text(record).value_or("no text") + '\n';
}

LinkAddress tcp(quint16 port)
{
    return *LinkAddress::parse(QStringLiteral("tcp:%1").arg(port));
}

/// Between sender and receiver: after so many bytes at most it cuts the connection; 0 for never.
class Proxy {
public:
    Proxy(quint16 target, int mostBytes) : m_mostBytes(mostBytes)
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, [this, target] {
            QTcpSocket *comer = m_server.nextPendingConnection();
            auto *goal = new QTcpSocket(comer);
            goal->connectToHost(QHostAddress::LocalHost, target);
            const int most = std::uniform_int_distribution<int>(1, qMax(1, m_mostBytes))(m_random);
            auto left = std::make_shared<qint64>(m_mostBytes > 0 ? most : -1);
            const auto pass = [this, left, comer, goal](QTcpSocket *from, QTcpSocket *to) {
                const QByteArray bytes = *left < 0 ? from->readAll() : from->read(*left);
                *left -= *left < 0 ? 0 : bytes.size();
                to->write(bytes);
                if (*left == 0 && comer->state() == QTcpSocket::ConnectedState) {
                    ++cuts;
                    goal->disconnectFromHost();
                    comer->abort();
                }
            };
            QObject::connect(comer, &QTcpSocket::readyRead, goal, [=] { pass(comer, goal); });
            QObject::connect(goal, &QTcpSocket::readyRead, comer, [=] { pass(goal, comer); });
            QObject::connect(comer, &QTcpSocket::disconnected, goal,
                             [goal] { goal->disconnectFromHost(); });
            QObject::connect(goal, &QTcpSocket::disconnected, comer,
                             [comer] { comer->disconnectFromHost(); });
        });
    }
    quint16 port() const { return m_server.serverPort(); }

    int cuts = 0;

private:
    QTcpServer m_server;
    const int m_mostBytes;
    std::mt19937 m_random{17};
};

/// A receiver that says what a test wants.
class Receiver {
public:
    Receiver()
    {
        m_server.listen(QHostAddress::LocalHost);
        QObject::connect(&m_server, &QTcpServer::newConnection, [this] {
            socket = m_server.nextPendingConnection();
            QObject::connect(socket, &QTcpSocket::readyRead, [this] { got += socket->readAll(); });
        });
    }
    LinkAddress address() const { return tcp(m_server.serverPort()); }

    QTcpSocket *socket = nullptr; // of the last connection; the server owns it
    QByteArray got;

private:
    QTcpServer m_server;
};

} // namespace

/// The sender's end of the link.
class TestSender : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyRecordOnce_data()
    {
        const auto row = columns<int, int>("mostBytes", "leastCuts");
        row("no cut", 0, 0);
        row("cut now and then", 30000, 3);
        row("cut within some batches", 10000, 8);
    }

    void everyRecordOnce()
    {
        QFETCH(int, mostBytes);
        QFETCH(int, leastCuts);
        manikinlink::LinkHub hub;
        QVERIFY(hub.listen(tcp(0)));
        QByteArray received;
        bool isWhole = false;
        QObject::connect(&hub, &manikinlink::LinkHub::streamAdded, [&](LinkStream *stream) {
            stream->setSink(
                [&received](const Record &record) {
                    if (!std::holds_alternative<manikinlog::Batch>(record.entry))
                        received += textOf(record);
                    return true;
                },
                {});
            const auto acknowledge = [stream] { stream->acknowledge(stream->completeBatch()); };
            QObject::connect(stream, &LinkStream::batchCompleted, stream, acknowledge);
            QObject::connect(stream, &LinkStream::ended, stream, [=, &isWhole] {
                isWhole = stream->isWhole();
                acknowledge();
            });
        });
        Proxy proxy(hub.addresses().constFirst().port(), mostBytes);
        LinkSender sender(tcp(proxy.port()), ids);
        QSignalSpy finished(&sender, &LinkSender::finished);
        sender.open();
        manikinsim::Scenario scenario = *manikinsim::Scenario::find("lossy-link");
        scenario.seconds = 30;
        manikinsim::Simulator simulator(scenario, 4);
        QByteArray sent;
        for (Record record; simulator.next(record);) {
            sent += textOf(record);
            QCOMPARE(sender.send(record), LinkSender::Result::Accepted);
        }
        sender.finish();
        QTRY_COMPARE_WITH_TIMEOUT(finished.size(), 1, patienceMs);
        QVERIFY2(finished.at(0).at(0).toBool(), qPrintable(sender.errorString()));
        QVERIFY(isWhole);
        QCOMPARE(received, sent);
        QVERIFY(proxy.cuts >= leastCuts);
    }

    // A receiver that does not acknowledge fills the sender, which says so and drops nothing.
    void keepsNoMoreThanItMay()
    {
        Receiver receiver;
        LinkSender sender(receiver.address(), ids);
        sender.setCapacity(1); // that is, the least
        sender.open();
        QTRY_VERIFY(receiver.got.contains("session-1\n"));
        receiver.socket->write("welcome 0\n");
        QTRY_VERIFY(sender.isConnected());
        const Record record{0, manikinlog::Message{64, 0, QByteArray(1000, 'x')}};
        int accepted = 0;
        while (sender.send(record) == LinkSender::Result::Accepted && accepted < 1000)
            ++accepted;
        QCOMPARE(sender.send(record), LinkSender::Result::Full);
        QVERIFY(sender.keptBytes() < LinkSender::leastCapacity + textOf(record).size());
        QTRY_COMPARE(int(receiver.got.count(" msg ")), accepted);

        QSignalSpy freed(&sender, &LinkSender::spaceFreed);
        receiver.socket->write("ack 3\n");
        QTRY_COMPARE(freed.size(), 1);
        QCOMPARE(sender.send(record), LinkSender::Result::Accepted);
    }

    // What was lost and found while nobody was connected is not told; what still holds is.
    void lostAndFound()
    {
        Receiver receiver;
        LinkSender sender(receiver.address(), ids);
        sender.open();
        sender.lost();
        sender.found();
        sender.send({10, manikinlog::State{CPRData::CPR_START}});
        QTRY_VERIFY(receiver.got.endsWith("session-1\n"));
        receiver.socket->write("welcome 0\n");
        QTRY_VERIFY(receiver.got.endsWith("\n10 batch 1\n10 state CPR_START\n"));
        QVERIFY(!receiver.got.contains("found"));
        sender.lost();
        QTRY_VERIFY(receiver.got.endsWith(" lost\n"));
        receiver.got.clear();
        receiver.socket->abort();
        QTRY_VERIFY(receiver.got.endsWith("session-1\n"));
        receiver.socket->write("welcome 0\n");
        QTRY_VERIFY(receiver.got.endsWith(" lost\n"));
        receiver.got.clear();
        receiver.socket->abort();
        QTRY_VERIFY(!sender.isConnected());
        sender.found();
        QTRY_VERIFY(receiver.got.endsWith("session-1\n"));
        receiver.socket->write("welcome 0\n");
        QTRY_COMPARE(receiver.got,
                     QByteArray("cprlink 1 manikin-1 test session-1\n"
                                "10 found\n10 batch 1\n10 state CPR_START\n"));
    }

    void answers_data()
    {
        const auto row = columns<QByteArray, QByteArray, QByteArray, int, QByteArray>(
            "answer", "until", "next", "status", "end");
        row("start, then stop", "start\n", " state CPR_START\n", "stop\n", 0, " msg 108 ");
        row("stop before the start", "", " state CPR_INIT\n", "stop\n", 0, " msg 64 ");
        row("refused", "", "manikin-1", "refused no room\n", 1, "Manikin 1: refused: no room");
    }

    // What a sending program is told at once, and next; its last record, or what it prints.
    void answers()
    {
        QFETCH(QByteArray, answer);
        QFETCH(QByteArray, until);
        QFETCH(QByteArray, next);
        QFETCH(int, status);
        QFETCH(QByteArray, end);
        Receiver receiver;
        QProcess process;
        process.start(CPRSESSION_PROGRAM,
                      {"send", "--scenario", "good", "--duration", "36000", "--speed", "20", "--to",
                       receiver.address().text()});
        QTRY_VERIFY(receiver.socket);
        receiver.socket->write("welcome 0\n" + answer);
        QTRY_VERIFY(receiver.got.contains(until));
        receiver.socket->write(next);
        if (status == 0) {
            QTRY_VERIFY_WITH_TIMEOUT(receiver.got.endsWith(" bye\n"), patienceMs);
            receiver.socket->write("ack 1000\n");
        }
        QTRY_COMPARE_WITH_TIMEOUT(process.state(), QProcess::NotRunning, patienceMs);
        QCOMPARE(process.exitCode(), status);
        const QByteArray last = receiver.got.split('\n').value(receiver.got.count('\n') - 2);
        QVERIFY2((last + process.readAllStandardError()).contains(end), last);
    }

    void gateways_data()
    {
        const auto row = columns<QStringList>("command");
        row("cprsession send", {CPRSESSION_PROGRAM, "send", "LOG", "--speed", "50", "--to", "TO"});
        row("gateway.cpp", {GATEWAY_PROGRAM, "LOG", "TO", "50"});
        row("gateway.py", {PYTHON_PROGRAM, GATEWAY_SCRIPT, "LOG", "--speed", "50", "--to", "TO"});
    }

    // What a gateway sends is recorded as the log is replayed.
    void gateways()
    {
        QFETCH(QStringList, command);
        if (command.constFirst().isEmpty())
            QSKIP("There is no Python here.");
        QTemporaryDir folder;
        qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
        const auto path = [&folder](const char *name) { return folder.filePath(name); };
        const auto session = [](const QStringList &arguments) {
            return testsupport::run(CPRSESSION_PROGRAM, arguments);
        };
        QCOMPARE(session({"simulate", "--scenario", "aed", "--duration", "30", "--start",
                          "2026-01-31T09:00:00Z", "-o", path("a.cprlog")})
                     .status,
                 0);
        QCOMPARE(session({"replay", path("a.cprlog"), "-o", path("expected.zip")}).status, 0);
        QVERIFY(QDir(folder.path()).mkdir("recorded"));
        QProcess record;
        record.start(CPRSESSION_PROGRAM,
                     {"record", "--from", "local:gate", "-o", path("recorded"), "--sessions", "1"});
        QVERIFY(record.waitForStarted());
        for (QString &argument : command)
            argument = argument == "LOG" ? path("a.cprlog")
                : argument == "TO"       ? "local:gate"
                                         : argument;
        const QString program = command.takeFirst();
        const testsupport::Answer sent = testsupport::run(program, command);
        QVERIFY2(sent.status == 0, sent.errors);
        QVERIFY(record.waitForFinished(patienceMs));
        QVERIFY2(record.exitCode() == 0, record.readAllStandardError());
        const QStringList archives = QDir(path("recorded")).entryList(QDir::Files);
        QCOMPARE(archives.size(), 1);
        const testsupport::Answer diff = session({"diff", "--ignore-times", path("expected.zip"),
                                                  path("recorded") + "/" + archives.constFirst()});
        QVERIFY2(diff.status == 0, diff.output + diff.errors);
    }
};

QTEST_GUILESS_MAIN(TestSender)
#include "tst_sender.moc"
