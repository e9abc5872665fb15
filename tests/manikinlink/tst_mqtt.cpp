// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Broker.h"
#include "manikinlink/LinkHub.h"
#include "manikinlink/LinkSender.h"
#include "manikinlink/LinkStream.h"
#include "manikinlink/MqttWay.h"
#include "manikinlog/RecordText.h"
#include "manikinsim/Simulator.h"
#include "support/Rows.h"

#include <QDir>
#include <QSignalSpy>

using namespace manikinlink;
using namespace testsupport;

/// The way through a broker, with one that examples/broker has set up.
class TestMqtt : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (!Broker::isInstalled())
            QSKIP("mosquitto and openssl are not there: apt-get install mosquitto openssl");
        m_broker.emplace();
        QVERIFY(m_broker->room({"broker", "localhost", "127.0.0.1"}));
        QVERIFY(m_broker->room({"gateway", "gateway1", "room1", "m1"}));
        QVERIFY(m_broker->room({"gateway", "gateway2", "room2", "m1", "m2"}));
        QVERIFY(m_broker->room({"gateway", "class", "room1", "m1", "m2", "m3", "m4", "m5", "m6"}));
        QVERIFY(m_broker->room({"gateway", "former", "room1", "m1"}));
        QVERIFY(m_broker->room({"bridge", "bridge1", "room1"}));
        QVERIFY(m_broker->room({"recorder", "recorder1", "room1"}));
        QVERIFY(m_broker->room({"recorder", "recorder2", "room2"}));
        m_formerLogin = m_broker->loginOf("former");
        QVERIFY(m_broker->room({"broker", "localhost"}) == false); // there is one
        QVERIFY(QDir().rename(m_broker->path("members/former"), m_broker->path("taken")));
        QVERIFY(m_broker->room({"remove", "former"}));
        m_formerLogin.replaceInStrings("/members/former/", "/taken/");
        QVERIFY(m_broker->start());
        m_address = *LinkAddress::parse(QString("mqtt:127.0.0.1:%1/room1").arg(m_broker->port()));
    }

    void letsInOnlyMembers_data()
    {
        const QString password = m_broker->passwordOf("gateway1");
        const QStringList certificate = m_broker->certificateOf("gateway1");
        QVERIFY(run("openssl",
                    {"req", "-x509", "-newkey", "ec", "-pkeyopt", "ec_paramgen_curve:prime256v1",
                     "-nodes", "-subj", "/CN=gateway1", "-keyout", "own.key", "-out", "own.crt"},
                    m_broker->path({}))
                    .status
                == 0);
        const QStringList own{"--cert", m_broker->path("own.crt"), "--key",
                              m_broker->path("own.key")};
        const auto row = columns<QStringList, bool>("login", "isLetIn");
        row("member", certificate + QStringList{"-u", "gateway1", "-P", password}, true);
        row("no password", certificate, false);
        row("wrong password", certificate + QStringList{"-u", "gateway1", "-P", "guess"}, false);
        row("another's password", certificate + QStringList{"-u", "gateway2", "-P", password},
            false);
        row("no certificate", {"-u", "gateway1", "-P", password}, false);
        row("own certificate", own + QStringList{"-u", "gateway1", "-P", password}, false);
        row("removed member", m_formerLogin, false);
    }

    void letsInOnlyMembers()
    {
        QFETCH(QStringList, login);
        QFETCH(bool, isLetIn);
        const QStringList message{"-q", "1", "-t", "cprlink/room1/m1/stream", "-m", "x"};
        const Answer answer = run("mosquitto_pub", m_broker->address() + login + message);
        QCOMPARE(answer.status == 0, isLetIn);
    }

    void passesOnlyWhatMembersMay_data()
    {
        const auto row = columns<QString, QString, QString, QString, bool>(
            "writer", "topic", "reader", "fence", "isPassed");
        const QString answer = "cprlink/room1/m1/answer", about = "cprlink/room1/m1/about";
        const QString about2 = "cprlink/room2/m1/about";
        row("stream", "gateway1", "cprlink/room1/m1/stream", "recorder1", about, true);
        row("answer", "recorder1", answer, "gateway1", answer, true);
        row("another's manikin", "gateway1", "cprlink/room1/m2/stream", "recorder1", about, false);
        row("another site", "gateway1", "cprlink/room2/m1/stream", "recorder2", about2, false);
        row("another site's answer", "recorder2", answer, "gateway1", answer, false);
        row("reads another site", "gateway2", "cprlink/room2/m1/stream", "recorder1", about, false);
        row("reads the recorder's", "gateway1", "cprlink/room1/m1/stream", "gateway1", answer,
            false);
        row("recorder as manikin", "recorder1", "cprlink/room1/m1/stream", "recorder1", about,
            false);
        row("gateway as recorder", "gateway1", answer, "gateway1", answer, false);
        row("bridge", "bridge1", "cprlink/room1/m2/stream", "recorder1", about, true);
        row("bridge of another site", "bridge1", "cprlink/room2/m1/stream", "recorder2", about2,
            false);
        row("foreign topic", "gateway1", "lamps/room1", "recorder1", about, false);
        row("above the manikin", "gateway1", "cprlink/room1", "recorder1", about, false);
    }

    // What the reader gets on the fence, a topic that it may read, came behind the message.
    void passesOnlyWhatMembersMay()
    {
        QFETCH(QString, writer);
        QFETCH(QString, topic);
        QFETCH(QString, reader);
        QFETCH(QString, fence);
        QFETCH(bool, isPassed);
        QProcess subscriber;
        subscriber.start("mosquitto_sub",
                         m_broker->address() + m_broker->loginOf(reader)
                             + QStringList{"-q", "1", "-t", "#", "-F", "%t %p"});
        const QString fenceWriter = fence.endsWith("/answer") ? "recorder1"
            : fence.contains("/room1/")                       ? "gateway1"
                                                              : "gateway2";
        const auto passed = [&](const QByteArray &text) {
            publish(fenceWriter, fence, text);
            subscriber.waitForReadyRead(1000);
            m_read += subscriber.readAllStandardOutput();
            return m_read.contains(' ' + text + '\n');
        };
        m_read.clear();
        QTRY_VERIFY(passed("subscribed"));
        publish(writer, topic, "message");
        QTRY_VERIFY(passed("behind"));
        QCOMPARE(m_read.contains(topic.toUtf8() + " message\n"), isPassed);
        subscriber.kill();
        subscriber.waitForFinished();
    }

    void crossesNoNetworkInTheClear_data()
    {
        const auto row = columns<QString, QString, bool>("host", "caFile", "canReach");
        const QString ca = m_broker->path("ca.crt");
        row("this machine", "localhost", "", true);
        row("its loopback address", "[::1]", "", true);
        row("another machine", "192.0.2.1", "", false);
        row("another machine, by a name", "localhost.example", "", false);
        row("another machine, encrypted", "192.0.2.1", ca, true);
        row("no such file", "localhost", ca + 't', false);
    }

    void crossesNoNetworkInTheClear()
    {
        QFETCH(QString, host);
        QFETCH(QString, caFile);
        for (const char *variable : {"CPRLINK_CERT", "CPRLINK_KEY"})
            qunsetenv(variable);
        qputenv("CPRLINK_CA", caFile.toUtf8());
        const auto address = LinkAddress::parse(QString("mqtt:%1:8883/room1").arg(host));
        QString error;
        QTEST(LinkSender::canReach(*address, &error), "canReach");
        QCOMPARE(LinkHub().listen(*address), error.isEmpty());
    }

    void saysWhyTheBrokerRefuses()
    {
        logInAs("recorder1");
        qputenv("CPRLINK_PASSWORD", "guess");
        LinkHub hub;
        QSignalSpy lost(&hub, &LinkHub::brokerLost);
        QVERIFY(hub.listen(m_address));
        QVERIFY(lost.wait());
        QVERIFY(lost.at(0).at(1).toString().contains("refused", Qt::CaseInsensitive));
    }

    // A broker may pass a message twice, and none while nobody listens: what is there already is
    // left out, and behind a gap the sender begins anew.
    void passesEachBatchOnce()
    {
        logInAs("recorder1");
        std::unique_ptr<QIODevice> source;
        QByteArray received;
        QByteArray answers;
        QString error;
        const auto read = [&] { received += source->readAll(); };
        const auto add = [&](std::unique_ptr<QIODevice> device, bool) {
            source = std::move(device);
            read();
            connect(source.get(), &QIODevice::readyRead, source.get(), read);
        };
        const auto listener = MqttListener::listen(m_address, add, &error);
        QVERIFY2(listener, qPrintable(error));
        logInAs("gateway1");
        auto target = MqttTarget::connectTo(m_address, {"m1", "gateway", "s1"}, &error);
        QVERIFY2(target, qPrintable(error));
        connect(target.get(), &QIODevice::readyRead, this, [&] { answers += target->readAll(); });
        QSignalSpy connected(target.get(), &MqttTarget::connected);
        QVERIFY(connected.wait());
        const auto say = [&](const std::vector<const char *> &messages) {
            for (const char *message : messages)
                target->write(message);
        };
        // Nothing but the first line is given before the sender has its welcome.
        say({"cprlink 1 m1 gateway s1\n", "5 batch 1\n5 header 1\n"});
        QTRY_COMPARE(received, QByteArray("cprlink 1 m1 gateway s1\n"));
        source->write("welcome 0\n");
        QTRY_COMPARE(answers, QByteArray("welcome 0\n"));
        received.clear();
        say({"5 batch 1\n5 header 1\n", "5 batch 1\n5 header 1\n", "7 lost\n",
             "9 batch 3\n9 header 3\n", "9 bye\n", "9 beat\n"});
        QTRY_COMPARE(received, QByteArray("5 batch 1\n5 header 1\n7 lost\n9 beat\n"));
        QTRY_VERIFY((say({"9 beat\n"}), answers == "welcome 0\nwelcome 0\n"));
        say({"5 batch 1\n5 header 1\n", "8 batch 2\n8 header 2\n", "9 batch 3\n9 header 3\n",
             "9 bye\n"});
        QTRY_VERIFY(received.contains("8 batch 2\n8 header 2\n9 batch 3\n9 header 3\n9 bye\n"));
        // What a sender has forgotten, as another receiver had it, is not waited for.
        source->write("welcome 4\n");
        received.clear();
        QTRY_VERIFY_WITH_TIMEOUT(
            (say({"8 batch 7\n8 header 7\n"}), QTest::qWait(100), !received.isEmpty()), 20000);
        QCOMPARE(received, QByteArray("8 batch 7\n8 header 7\n"));
        // Without a bye the broker says that the sender is gone.
        QSignalSpy gone(source.get(), &QIODevice::readChannelFinished);
        target.reset();
        QVERIFY(gone.wait());
    }

    // A message that the broker has kept, one that is no stream's, and one of another manikin open
    // nothing; a session's first line and its description do.
    void opensNothingButStreams()
    {
        const QString topic = "cprlink/room1/m1/";
        publish("gateway1", topic + "stream", "cprlink 1 m1 gateway old\n", {"-r"});
        publish("gateway1", topic + "about", "cprlink 1 m1 gateway s1\n", {"-r"});
        logInAs("recorder1");
        QByteArray opened;
        const auto add = [&](const std::unique_ptr<QIODevice> &device, bool isDescribed) {
            opened += (isDescribed ? "described: " : "") + device->readAll();
        };
        const auto listener = MqttListener::listen(m_address, add, nullptr);
        QVERIFY(listener);
        QTRY_COMPARE(opened, QByteArray("described: cprlink 1 m1 gateway s1\n"));
        for (const char *text :
             {"\n", "good morning\n", "cprlink 1 m1 gateway\n", "cprlink 2 m1 gateway s\n",
              "cprlink 1 m2 gateway s\n", "cprlink 1 m1 .. s\n", "cprlink 1 m1 a s\r\n"})
            publish("gateway1", topic + "stream", text);
        publish("gateway1", topic + "stream", "cprlink 1 m1 gateway s2\n");
        QTRY_COMPARE(opened,
                     QByteArray("described: cprlink 1 m1 gateway s1\ncprlink 1 m1 gateway s2\n"));
        for (const char *name : {"stream", "about"})
            publish("gateway1", topic + name, {}, {"-r"});
    }

    void classOfSixIsReceivedWhole_data()
    {
        const auto row = columns<bool>("isKilled");
        row("undisturbed", false);
        row("broker killed in the middle", true);
    }

    void classOfSixIsReceivedWhole()
    {
        QFETCH(bool, isKilled);
        // What a broker has stored when it is killed may be older: the sessions before.
        QFile stored(m_broker->path("mosquitto.db"));
        QByteArray older;
        for (int i = 1; isKilled && i <= 6; ++i)
            publish("class", QString("cprlink/room1/m%1/about").arg(i),
                    "cprlink 1 m" + QByteArray::number(i) + " class s1\n", {"-r"});
        if (isKilled)
            QTRY_VERIFY(
                stored.open(QIODevice::ReadOnly)
                && (older = stored.readAll(), stored.close(), older.count(" class s1\n") == 6));
        logInAs("recorder1");
        LinkHub hub;
        QVERIFY(hub.listen(m_address));
        QMap<QString, QByteArray> received;
        connect(&hub, &LinkHub::streamAdded, this, [&](LinkStream *stream) {
            const auto acknowledge = [stream] { stream->acknowledge(stream->completeBatch()); };
            connect(stream, &LinkStream::batchCompleted, this, acknowledge);
            connect(stream, &LinkStream::ended, this, acknowledge);
            stream->setSink(
                [&received, id = stream->manikin()](const manikinlog::Record &record) {
                    if (!std::holds_alternative<manikinlog::Batch>(record.entry))
                        received[id] += *manikinlog::RecordText::text(record) + '\n';
                    return true;
                },
                {});
        });
        logInAs("class");
        QMap<QString, QByteArray> sent;
        std::vector<std::unique_ptr<LinkSender>> senders;
        int whole = 0;
        for (int seed = 1; seed <= 6; ++seed) {
            const QString id = QString("m%1").arg(seed);
            LinkSender &sender = *senders.emplace_back(std::make_unique<LinkSender>(
                m_address, manikinlog::Stream{id, "class", isKilled ? "s2" : "s1"}));
            connect(&sender, &LinkSender::finished, this,
                    [&](bool isWhole) { whole += isWhole ? 1 : 0; });
            sender.open();
            manikinsim::Simulator simulator(*manikinsim::Scenario::find("beginner"), quint64(seed));
            for (manikinlog::Record record; simulator.next(record);) {
                QCOMPARE(sender.send(record), LinkSender::Result::Accepted);
                sent[id] += *manikinlog::RecordText::text(record) + '\n';
            }
            sender.finish();
        }
        if (isKilled) {
            QTRY_VERIFY(received.value("m6").size() > 100'000);
            m_broker->kill();
            QVERIFY(stored.open(QIODevice::WriteOnly) && stored.write(older) == older.size());
            stored.close();
            QTest::qWait(700); // the senders try again at 0.6 and at 1.4 s, the receiver in between
            QVERIFY(m_broker->start());
        }
        QTRY_COMPARE_WITH_TIMEOUT(whole, 6, 60000);
        QCOMPARE(received, sent);
    }

private:
    void logInAs(const QString &member) const
    {
        qputenv("CPRLINK_USER", member.toUtf8());
        qputenv("CPRLINK_PASSWORD", m_broker->passwordOf(member).toUtf8());
        const QStringList certificate = m_broker->certificateOf(member);
        qputenv("CPRLINK_CA", m_broker->path("ca.crt").toUtf8());
        qputenv("CPRLINK_CERT", certificate.at(1).toUtf8());
        qputenv("CPRLINK_KEY", certificate.at(3).toUtf8());
    }

    void publish(const QString &member, const QString &topic, const QByteArray &text,
                 const QStringList &options = {}) const
    {
        run("mosquitto_pub",
            m_broker->address() + m_broker->loginOf(member)
                + QStringList{"-q", "1", "-t", topic, "-m", text} + options);
    }

    std::optional<Broker> m_broker;
    LinkAddress m_address;
    QStringList m_formerLogin; // of a member who has been removed
    QByteArray m_read; // by a subscriber
};

QTEST_GUILESS_MAIN(TestMqtt)
#include "tst_mqtt.moc"
