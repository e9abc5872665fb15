// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlink/LinkHub.h"
#include "manikinlink/LinkSession.h"
#include "manikinlink/LinkText.h"
#include "manikinlog/ManikinLogReader.h"
#include "manikinlog/RecordText.h"
#include "manikinsim/Simulator.h"
#include "support/Rows.h"
#include "support/StoredSession.h"

#include <QLocalSocket>
#include <QNetworkInterface>
#include <QSignalSpy>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>
#include <sys/resource.h>
#include <sys/socket.h>

using namespace manikinlink;
using namespace testsupport;
using manikinlog::Record;
using manikinlog::RecordText::text;

namespace {

using Texts = QVector<QByteArray>; // what comes on each way

/// On this machine, on a port that is free.
const LinkAddress anyPort = *LinkAddress::parse("tcp:0");

/// A whole stream, from its first line to bye; each batch has 40 records.
QByteArray streamOf(const char *first, quint64 seed, int seconds)
{
    manikinsim::Scenario scenario = *manikinsim::Scenario::find("beginner");
    scenario.seconds = seconds;
    manikinsim::Simulator simulator(scenario, seed);
    QByteArray stream = QByteArray(first) + '\n';
    Record record;
    for (int i = 0; simulator.next(record); ++i) {
        if (i % 40 == 0)
            stream += *text({record.msecs, manikinlog::Batch{quint32(i / 40 + 1)}}) + '\n';
        stream += *text(record) + '\n';
    }
    return stream + QByteArray::number(record.msecs) + " bye\n";
}

/// A sender that says what a test wants.
struct Peer {
    explicit Peer(const LinkHub &hub, const QByteArray &bytes)
    {
        socket.connectToHost(QHostAddress::LocalHost, hub.addresses().first().port());
        socket.write(bytes);
    }
    QByteArray answers()
    {
        received += socket.readAll();
        return received;
    }
    bool isClosed() const { return socket.state() == QTcpSocket::UnconnectedState; }

    QTcpSocket socket;
    QByteArray received;
};

/// A hub, and all that its streams give.
struct Listening {
    Listening()
    {
        QObject::connect(&hub, &LinkHub::streamAdded, &hub, [this](LinkStream *stream) {
            streams.append(stream);
            stream->setSink(
                [this](const Record &record) {
                    given += *text(record) + '\n';
                    return true;
                },
                {});
        });
        isListening = hub.listen(anyPort);
    }

    bool isListening = false;
    QByteArray given; // the records
    QVector<QPointer<LinkStream>> streams;
    LinkHub hub;
};

/// What a sender says once it knows from the answers where to go on.
QByteArray behind(const QByteArray &stream, const QByteArray &answers)
{
    const QByteArray first = stream.left(stream.indexOf('\n') + 1);
    const int batch = answers.mid(8, answers.indexOf('\n') - 8).toInt(); // behind "welcome "
    const int at = stream.indexOf(" batch " + QByteArray::number(batch + 1) + '\n');
    return at < 0 ? first + "0 bye\n" : stream.mid(stream.lastIndexOf('\n', at) + 1);
}

/// The sender's records in a journal: not the batches, nor the receiver's own, in batch 0.
QByteArray recordsIn(const QString &journal)
{
    QFile file(journal);
    QByteArray records;
    bool isOwn = true;
    if (!file.open(QIODevice::ReadOnly))
        return records;
    manikinlog::ManikinLogReader reader(&file, journal,
                                        manikinlog::ManikinLogReader::Damage::IsSkipped);
    for (Record record; reader.read(record) == manikinlog::ManikinLogReader::Result::Record;) {
        if (const auto *batch = std::get_if<manikinlog::Batch>(&record.entry))
            isOwn = batch->number == 0;
        else if (!isOwn)
            records += *text(record) + '\n';
    }
    return records;
}
/// And those in a stream.
QByteArray recordsOf(const QByteArray &stream)
{
    QByteArray records;
    for (const QByteArray &line : stream.split('\n')) {
        if (!line.isEmpty() && !line.contains(" batch ") && !line.contains("cprlink")
            && !line.endsWith(" bye"))
            records += line + '\n';
    }
    return records;
}

} // namespace

class TestManikinLink : public QObject {
    Q_OBJECT

    QTemporaryDir m_directory;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_directory.isValid());
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(m_directory.path()));
        QFile::setPermissions(m_directory.path(),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void addresses_data()
    {
        const auto row = columns<QString>("error");
        for (const char *good : {"-", "tcp:1", "tcp:65535", "local:a.B_-9", "mqtt:[::1]:1883/site",
                                 "mqtt:broker.example:8883/St.Mary_1"})
            row(good, {});

        for (const char *wrong : {"tcp:0.0.0.0:4711", "tcp:192.168.1.1:1", "tcp:::1", "tcp:65536",
                                  "tcp:-1", "tcp:+1", "tcp:", "tcp: 1"})
            row(wrong, "on this machine alone");
        for (const char *wrong : {"local:", "local:/tmp/a", "local:..", "local:a b"})
            row(wrong, "a name");
        for (const char *wrong : {"mqtt:host", "mqtt:host:0/a", "mqtt:host:1/", "mqtt:host:1/a/b",
                                  "mqtt:host:1/+", "mqtt:u@host:1/a", "mqtt:[::1:1/a"})
            row(wrong, "a site");
        row("", "tcp:PORT, local:NAME");
        row("udp:1", "tcp:PORT, local:NAME");
    }

    void addresses()
    {
        QFETCH(QString, error);
        QString why;
        const auto address = LinkAddress::parse(QTest::currentDataTag(), &why);
        QCOMPARE(bool(address), error.isEmpty());
        QVERIFY2(why.contains(error), qPrintable(why));
        if (address)
            QCOMPARE(address->text(), QString(QTest::currentDataTag()));
    }

    void answers_data()
    {
        const auto row = columns<QByteArray>("again");
        for (const char *line : {"welcome 0", "welcome 4294967295", "ack 7", "start", "stop",
                                 "refused", "refused m1 is held by a"})
            row(line, line);
        for (const char *wrong : {"welcome", "welcome -1", "ack 4294967296", "ack 1 2", "start 1",
                                  "Start", " start", ""})
            row(wrong, {});
        row("refused a\x1b[2J", "refused a\\u001b[2J");
    }

    void answers()
    {
        QFETCH(QByteArray, again);
        const auto answer = LinkText::parseAnswer(QTest::currentDataTag());
        QCOMPARE(answer ? LinkText::text(*answer) : QByteArray(), again);
    }

    // Ways of one session, one behind the other; what is given for it, and what the last way is
    // answered.
    void receives_data()
    {
        const auto row = columns<Texts, QByteArray, QByteArray>("ways", "given", "answers");
        const QByteArray first = "cprlink 1 m1 s1 x1\n";
        const QByteArray begin = first + "0 batch 1\n1 header 1\n2 header 2\n";
        const QByteArray given = "0 batch 1\n1 header 1\n2 header 2\n";
        row("comments", {"# a\n\r\n" + first + "\n#\n0 batch 1\r\n1 header 1\n\n2 header 2\n"},
            given, "welcome 0\n");
        row("batch that was begun",
            {begin, first + "0 batch 1\n1 header 1\n2 header 2\n3 header 3\n"},
            given + "3 header 3\n", "welcome 0\n");
        row("batch again on one way", {begin + "2 batch 1\n1 header 1\n2 header 2\n3 header 3\n"},
            given + "3 header 3\n", "welcome 0\n");
        row("older batch",
            {begin + "2 batch 2\n3 header 3\n",
             first + "0 batch 1\n9 header 9\n2 batch 2\n3 header 3\n4 header 4\n"},
            given + "2 batch 2\n3 header 3\n4 header 4\n", "welcome 1\n");
        row("batches left out", {begin + "5 batch 4\n6 header 6\n"},
            given + "5 batch 4\n6 header 6\n", "welcome 0\n");
        row("message of its own", {begin + first + "2 batch 2\n3 header 3\n"},
            given + "2 batch 2\n3 header 3\n", "welcome 0\n");
        row("before the first batch", {first + "1 header 1\n0 batch 1\n1 header 1\n2 header 2\n"},
            given, "welcome 0\n");
        row("what no sender sends", {begin + "3 stream m1 s1 x1\n3 batch 0\nx\n3 header 3\n"},
            given + "3 header 3\n", "welcome 0\n");
        row("time that is set back", {begin + "1 header 3\n5 header 4\n"},
            given + "2 header 3\n5 header 4\n", "welcome 0\n");
        row("line that is too long",
            {begin + "3 learner " + QByteArray(200'000, 'x') + "\n3 header 3\n"},
            given + "3 header 3\n", "welcome 0\n");
        row("manikin lost and found", {begin + "3 state CPR_START\n4 lost\n5 found\n6 header 6\n"},
            given
                + "3 state CPR_START\n3 batch 0\n3 state CPR_RECONNECTED\n3 batch 1\n"
                  "3 batch 0\n3 state CPR_START\n3 batch 1\n6 header 6\n",
            "welcome 0\n");
        row("manikin lost, found by its records",
            {begin + "4 lost\n", first + "0 batch 1\n1 header 1\n2 header 2\n6 header 6\n"},
            given + "2 batch 0\n2 state CPR_RECONNECTED\n2 batch 1\n6 header 6\n", "welcome 0\n");
        row("after the end", {begin + "9 bye\n9 header 9\n"}, given, "welcome 0\n");
    }

    void receives()
    {
        QFETCH(Texts, ways);
        Listening listening;
        QVERIFY(listening.isListening);
        std::vector<std::unique_ptr<Peer>> peers;
        for (const QByteArray &way : ways) {
            // A new way takes the place of the one before, which stays open.
            peers.push_back(std::make_unique<Peer>(listening.hub, way));
            QTRY_VERIFY(peers.back()->answers().startsWith("welcome"));
        }
        QFETCH(QByteArray, given);
        QTRY_COMPARE(listening.given, given);
        QTest::qWait(10); // nothing more comes
        QCOMPARE(listening.given, given);
        QTEST(peers.back()->answers(), "answers");
        QCOMPARE(listening.streams.size(), 1);
        for (std::size_t i = 0; i + 1 < peers.size(); ++i)
            QTRY_VERIFY(peers[i]->isClosed());
    }

    void countsWhatIsLost()
    {
        Listening listening;
        Peer peer(
            listening.hub,
            "cprlink 1 m1 s1 x1\n0 batch 3\n0 manikin Manikin 3\nnonsense\n0 batch 3\n0 bye\n");
        QTRY_VERIFY(!listening.streams.isEmpty());
        LinkStream &stream = *listening.streams.first();
        QTRY_COMPARE(stream.state(), LinkStream::Ended);
        const LinkStream::Quality quality = stream.quality();
        QCOMPARE((QVector<qint64>{quality.batches, quality.lostBatches, quality.repeatedBatches,
                                  quality.badLines}),
                 (QVector<qint64>{1, 2, 1, 1}));
        QCOMPARE(stream.name(), QString("Manikin 3"));
        QVERIFY(stream.isWhole());
    }

    // What becomes of a second sender, and of the first one's session.
    void claims_data()
    {
        const auto row = columns<bool, QByteArray, QByteArray, bool>("isHolderOpen", "comer",
                                                                     "answer", "isReplaced");
        row("another sender", true, "cprlink 1 m1 s2 x1\n", "refused m1 is held by s1\n", false);
        row("another sender, holder gone", false, "cprlink 1 m1 s2 x1\n", "welcome 0\n", true);
        row("another session", true, "cprlink 1 m1 s1 x2\n", "welcome 0\n", true);
        row("the same on another way", true, "cprlink 1 m1 s1 x1\n", "welcome 0\n", false);
        row("another manikin", true, "cprlink 1 m2 s2 x1\n", "welcome 0\n", false);
        row("another version", true, "cprlink 2 m2 s2 x1\n",
            "refused expected \"cprlink 1 MANIKIN SENDER SESSION\", found \"cprlink 2 m2 s2 x1\"\n",
            false);
    }

    void claims()
    {
        QFETCH(bool, isHolderOpen);
        QFETCH(QByteArray, comer);
        QFETCH(bool, isReplaced);
        Listening listening;
        Peer holder(listening.hub, "cprlink 1 m1 s1 x1\n0 batch 1\n1 header 1\n");
        QTRY_VERIFY(listening.given.contains("header"));
        QPointer<LinkStream> held = listening.streams.first();
        if (!isHolderOpen) {
            holder.socket.close();
            QTRY_COMPARE(held->state(), LinkStream::Gone);
        }
        Peer second(listening.hub, comer);
        QTRY_VERIFY(second.answers().endsWith('\n'));
        QTEST(second.answers(), "answer");
        QCOMPARE(held->state() == LinkStream::Ended, isReplaced);
        QVERIFY(!held->isWhole());
    }

    void aThousandThatSayNothing()
    {
        Listening listening;
        std::vector<std::unique_ptr<Peer>> silent;
        for (int i = 0; i < 1000; ++i)
            silent.push_back(std::make_unique<Peer>(listening.hub, i % 2 ? "cprlink 1 m1" : ""));
        Peer peer(listening.hub, "cprlink 1 m1 s1 x1\n0 batch 1\n1 header 1\n");
        QTRY_VERIFY(listening.given.contains("header"));
        const auto open = [&silent] {
            return std::count_if(silent.begin(), silent.end(),
                                 [](const auto &each) { return !each->isClosed(); });
        };
        QTRY_VERIFY_WITH_TIMEOUT(open() <= 64, 20000);
        QTRY_COMPARE_WITH_TIMEOUT(open(), std::ptrdiff_t(0), 20000);
        QVERIFY(!peer.isClosed());
    }

    void aFloodHoldsUpNobody()
    {
        Listening listening;
        Peer flood(listening.hub, "cprlink 1 m1 s1 x1\n0 batch 1\n");
        const QByteArray lines = QByteArray("1 header 1\n").repeated(3'000'000);
        flood.socket.write(lines);
        QTRY_VERIFY(listening.given.size() > 100'000);
        const QByteArray stream = streamOf("cprlink 1 m2 s2 x1", 1, 5);
        Peer peer(listening.hub, stream);
        QTRY_COMPARE(listening.streams.size(), 2);
        QTRY_COMPARE(listening.streams[1]->state(), LinkStream::Ended);
        QVERIFY(flood.socket.bytesToWrite() > lines.size() / 2);
    }

    void otherUsersAreNotLetIn()
    {
        LinkHub hub;
        QVERIFY(hub.listen(*LinkAddress::parse("local:cpr")));
        QVERIFY(hub.listen(*LinkAddress::parse("local:cpr")));
        QCOMPARE(hub.addresses().size(), 1);
        QVERIFY(!LinkHub().listen(*LinkAddress::parse("local:cpr")));
        const auto permissions = QFileInfo(*hub.addresses().first().socketFile()).permissions();
        QVERIFY(!(permissions
                  & (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther)));
        LinkHub other;
        QVERIFY(other.listen(anyPort));
        QTcpSocket socket;
        for (const QHostAddress &address : QNetworkInterface::allAddresses()) {
            if (address.isLoopback())
                continue;
            socket.connectToHost(address, other.addresses().first().port());
            QVERIFY(!socket.waitForConnected(2000));
            socket.abort();
        }
        QLocalSocket local;
        local.connectToServer(*hub.addresses().first().socketFile());
        QVERIFY(local.waitForConnected());
    }

    // Wherever a kill cuts the journal, the session that comes back is whole in the end.
    void goesOnAfterAKill()
    {
        const QByteArray stream = streamOf("cprlink 1 m1 s1 x1", 2, 6);
        const QByteArray expected = recordsOf(stream);
        const QString target = m_directory.filePath("killed.zip");
        const QString journal = target + ".journal";
        QByteArray whole;
        // -1: before the first record of the receiver's own
        for (double share :
             {1.0, 0.0, 0.001, 0.01, 0.2, 0.333, 0.5, 0.77, 0.9, 0.999, 0.99999, -1.0}) {
            const int ownBegin = int(whole.indexOf(" batch 0\n")) + 9;
            if (share < 1.0)
                QVERIFY(
                    store(journal, whole.left(share < 0 ? ownBegin : int(share * whole.size()))));
            LinkHub hub;
            std::unique_ptr<LinkSession> session;
            connect(&hub, &LinkHub::streamAdded, this, [&](LinkStream *added) {
                session = std::make_unique<LinkSession>(added, target);
            });
            QVERIFY(hub.listen(anyPort));
            Peer peer(hub, stream.left(stream.indexOf('\n') + 1));
            QTRY_VERIFY(peer.answers().startsWith("welcome"));
            peer.socket.write(behind(stream, peer.answers()));
            QTRY_VERIFY(session->hasEnded());
            QTRY_VERIFY(peer.answers().contains("ack "));
            QCOMPARE(recordsIn(journal), expected);
            if (share == 1.0)
                whole = bytesOf(journal);
            // Played as it came, the session is that of its journal.
            CPRData played;
            QFile file(journal);
            QVERIFY(file.open(QIODevice::ReadOnly));
            manikinlog::ManikinLogReader reader(&file, journal);
            QVERIFY(manikinlog::ManikinLogPlayer(&played).play(reader));
            QCOMPARE(contentOf(*session->session()), contentOf(played));
            QVERIFY(session->removeJournal());
        }
    }

    // A full disk is waited for, unless the host ends the session meanwhile.
    void aDiskThatFailsIsWaitedFor_data()
    {
        const auto row = columns<bool>("isToEnd");
        row("it recovers", false);
        row("it does not", true);
    }

    void aDiskThatFailsIsWaitedFor()
    {
        QFETCH(bool, isToEnd);
        const QByteArray stream = streamOf("cprlink 1 m1 s1 x1", 4, 3);
        const qsizetype firstLine = stream.indexOf('\n') + 1;
        LinkHub hub;
        std::unique_ptr<LinkSession> session;
        connect(&hub, &LinkHub::streamAdded, this, [&](LinkStream *added) {
            session = std::make_unique<LinkSession>(added, m_directory.filePath("full.zip"),
                                                    LinkSession::Keeps::JournalAlone);
        });
        QVERIFY(hub.listen(anyPort));
        Peer peer(hub, stream.left(firstLine));
        QTRY_VERIFY(peer.answers().startsWith("welcome") && session->isOnDisk());
        QSignalSpy failed(session.get(), &LinkSession::journalFailed);
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit usual{};
        getrlimit(RLIMIT_FSIZE, &usual);
        // Before the records are sent; later the journal might have them all.
        const rlimit little{rlim_t(bytesOf(session->journalFile()).size() + qint64(100)),
                            usual.rlim_max};
        setrlimit(RLIMIT_FSIZE, &little);
        peer.socket.write(stream.mid(firstLine));
        const bool hasFailed = QTest::qWaitFor([&] { return !failed.isEmpty(); });
        QTest::qWait(100);
        const bool hasEnded = session->hasEnded();
        if (isToEnd)
            session->end();
        setrlimit(RLIMIT_FSIZE, &usual); // before a check can leave this function
        QVERIFY(hasFailed && !hasEnded);
        QCOMPARE(session->hasEnded(), isToEnd);
        QCOMPARE(session->isOnDisk(), false);
        QTRY_VERIFY(session->hasEnded() && session->isOnDisk());
        // One that was told to end has what had come until then.
        const QByteArray taken = recordsIn(session->journalFile());
        QCOMPARE(taken, isToEnd ? recordsOf(stream).left(taken.size()) : recordsOf(stream));
        QVERIFY(session->removeJournal());
    }

    void aSenderThatDoesNotWait_data()
    {
        const auto row = columns<QString>("address");
        row("tcp", "tcp:0");
        row("local", "local:hasty");
    }

    void aSenderThatDoesNotWait()
    {
        QFETCH(QString, address);
        const QByteArray stream = streamOf("cprlink 1 m1 s1 x1", 5, 60);
        LinkHub hub;
        std::unique_ptr<LinkSession> session;
        connect(&hub, &LinkHub::streamAdded, this, [&](LinkStream *added) {
            session = std::make_unique<LinkSession>(added, m_directory.filePath("hasty.zip"));
        });
        QVERIFY(hub.listen(*LinkAddress::parse(address)));
        const LinkAddress where = hub.addresses().first();
        const std::unique_ptr<QThread> sender(QThread::create([&] {
            QTcpSocket tcp;
            QLocalSocket local;
            tcp.connectToHost(QHostAddress::LocalHost, where.port());
            local.connectToServer(where.socketFile().value_or(QString()));
            QIODevice &way = where.port() ? static_cast<QIODevice &>(tcp) : local;
            way.write(stream);
            while (way.bytesToWrite() > 0 && way.waitForBytesWritten(5000)) { }
            // It has said all, and reads no answer.
            ::shutdown(int(tcp.socketDescriptor()), SHUT_WR);
            tcp.waitForDisconnected(5000);
        }));
        sender->start();
        QTRY_VERIFY(session && session->hasEnded());
        QVERIFY(sender->wait());
        QVERIFY(session->stream()->isWhole());
        QCOMPARE(recordsIn(session->journalFile()), recordsOf(stream));
        QVERIFY(session->removeJournal());
    }

    void aWholeSessionDoesNotComeTwice()
    {
        const QByteArray stream = streamOf("cprlink 1 m1 s1 x1", 3, 3);
        LinkHub hub;
        std::vector<std::unique_ptr<LinkSession>> sessions;
        connect(&hub, &LinkHub::streamAdded, this, [&](LinkStream *added) {
            sessions.push_back(
                std::make_unique<LinkSession>(added, m_directory.filePath("twice.zip")));
        });
        QVERIFY(hub.listen(anyPort));
        Peer peer(hub, stream);
        const QByteArray last = "ack " + QByteArray::number(stream.count(" batch ")) + '\n';
        QTRY_VERIFY(peer.answers().endsWith(last));
        Peer again(hub, stream);
        QTRY_VERIFY(again.isClosed());
        QCOMPARE(again.answers(), "welcome" + last.mid(3) + last);
        QCOMPARE(sessions.size(), std::size_t(1));
    }
};

QTEST_GUILESS_MAIN(TestManikinLink)
#include "tst_manikinlink.moc"
