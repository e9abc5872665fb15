// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/ManikinLogPlayer.h"
#include "manikinlog/ManikinLogReader.h"
#include "manikinlog/SessionJournal.h"
#include "sessionfiles/ArchiveCheck.h"
#include "sessionfiles/ArchiveSalvage.h"
#include "support/Damage.h"
#include "support/Program.h"
#include "support/Rows.h"

#include <QBuffer>
#include <QDataStream>
#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <csignal>
#include <sys/resource.h>
#include <zlib.h>

using namespace manikinlog;
using namespace testsupport;

namespace {

const QByteArray firstLine = QByteArray(ManikinLogReader::firstLine) + '\n';

/// The events as they stand in an archive, with the sum and sizes of \a whole before or behind.
QByteArray packedEvents(const QByteArray &content, int method, const QByteArray &whole,
                        bool sizesBehind)
{
    // A deflated content is what zlib's format has between its head of 2 and its sum of 4 bytes;
    // Qt puts the size in front.
    const QByteArray packed = method == 0 ? content : qCompress(content).mid(6).chopped(4);
    const auto sum = crc32(0, reinterpret_cast<const Bytef *>(whole.data()), uInt(whole.size()));
    QByteArray member;
    QDataStream stream(&member, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    const auto writeSizes = [&](quint32 factor) {
        stream << factor * quint32(sum) << factor * quint32(packed.size())
               << factor * quint32(whole.size());
    };
    stream << 0x04034b50 << qint16(20) << qint16(sizesBehind ? 8 : 0) << qint16(method) << 0;
    writeSizes(sizesBehind ? 0 : 1);
    const QByteArray name = "CPR/CPREvents.xml";
    stream << int(name.size());
    const QByteArray body = name + packed;
    stream.writeRawData(body.data(), body.size());
    if (sizesBehind) {
        stream << 0x08074b50;
        writeSizes(1);
    }
    return member;
}

Members contentsOf(const sessionfiles::SalvagedSession &session)
{
    Members contents;
    for (auto it = session.members.cbegin(); it != session.members.cend(); ++it)
        contents[it.key()] = (*it)()->readAll();
    return contents;
}

} // namespace

/// What a killed process, a full disk and a damaged file leave, and what is made of it.
class TestRecover : public QObject {
    Q_OBJECT

    // In memory where there is such a place: the archives are many.
    QTemporaryDir m_directory{QFileInfo("/dev/shm").isWritable() ? "/dev/shm/tst_recover-XXXXXX"
                                                                 : QDir::tempPath() + "/XXXXXX"};
    const QByteArray m_archive = bytesOf(goldenArchive);
    const Members m_whole = goldenMembers();
    QVector<int> m_headers; // of m_archive's members, and the directory behind them
    sessionfiles::SalvagedSession m_session;
    Members m_contents; // of m_session
    bool m_passesCheck = false; // the damaged archive
    // To the next byte that is damaged; every one takes ten seconds.
    const int m_step = qEnvironmentVariableIsSet("CPRDATA_EVERY_BYTE") ? 1 : 5;

    QString path(const QString &name) const { return m_directory.filePath(name); }

    void start(QProcess &process, const QStringList &arguments) const
    {
        process.setWorkingDirectory(m_directory.path());
        process.start(CPRSESSION_PROGRAM, arguments);
    }

    int run(const QStringList &arguments) const
    {
        return testsupport::run(CPRSESSION_PROGRAM, arguments, m_directory.path()).status;
    }

    // The number of the member that has this byte of m_archive; 5 is the directory.
    int memberAt(int place) const
    {
        return int(std::upper_bound(m_headers.begin() + 1, m_headers.end(), place)
                   - m_headers.begin() - 1);
    }

    // Salvages the archive into m_session, which has to be sound. The members from \a first to
    // \a last can be damaged; the others have to come back byte by byte.
    void salvage(const QByteArray &archive, int first, int last)
    {
        const QRegularExpression changes("length=\"\\d+\"|\n"); // the lengths follow the samples
        QVERIFY(store(path("damaged.zip"), archive));
        m_session = sessionfiles::salvage(path("damaged.zip"));
        m_contents = contentsOf(m_session);
        bool isAll = true;
        for (int i = 0; i < 5; ++i) {
            const QString &name = memberNames.at(i);
            const bool isSame = QString::fromLatin1(m_contents[name]).remove(changes)
                == QString::fromLatin1(m_whole[name]).remove(changes);
            const bool isWhole = m_session.report.contains("CPR/" + name + ": whole");
            QVERIFY2(isSame || (i >= first && i <= last && !isWhole), qPrintable(name));
            isAll = isAll && isWhole;
        }
        QCOMPARE(m_session.isAll, isAll);
        // The check passes nothing that is not all there.
        m_passesCheck = sessionfiles::check(path("damaged.zip")).errors() == 0;
        QVERIFY(isAll || !m_passesCheck);
        if (!m_session.holdsAnything)
            return;
        QVERIFY(sessionfiles::save(path("salvaged.zip"), m_session).isSaved);
        const auto findings = sessionfiles::check(path("salvaged.zip"));
        QVERIFY2(findings.errors() == 0, qPrintable(findings.toText()));
    }

private Q_SLOTS:
    void initTestCase()
    {
        // With a start of its own the log is what the journal of its replay has to be.
        QCOMPARE(run({"simulate", "--duration", "120", "--start", "2026-01-31T09:00:00Z", "-o",
                      "whole.cprlog"}),
                 0);
        for (const ZipEntry &each : directoryOf(m_archive))
            m_headers.append(each.header);
        m_headers.append(directoryOf(m_archive).first().entry);
        QCOMPARE(m_headers.size(), 6);
        QCOMPARE(contentsOf(sessionfiles::salvage(goldenArchive)), m_whole);
    }

    // Several sessions at twenty times the speed, each killed at some moment.
    void killedRunsComeBack()
    {
        constexpr int speed = 20;
        constexpr int mayBeLostMs = 1000;
        const QByteArray log = bytesOf(path("whole.cprlog"));
        const quint32 seed = QRandomGenerator::system()->generate();
        qInfo("seed %u", seed);
        QRandomGenerator random(seed);
        for (const QString archive : {"a.zip", "b.zip", "c.zip", "d.zip"}) {
            QProcess process;
            start(process, {"replay", "whole.cprlog", "-o", archive, "--speed", "20"});
            const QString journal = SessionJournal::nameFor(path(archive));
            QTRY_VERIFY(QFileInfo(journal).size() > firstLine.size());
            QElapsedTimer clock; // starts a little later than the session's
            clock.start();
            QTest::qSleep(random.bounded(1900));
            const qint64 played = clock.elapsed();
            process.kill();
            QVERIFY(process.waitForFinished());

            const QByteArray kept = bytesOf(journal);
            QVERIFY(log.startsWith(kept) && kept.endsWith('\n'));
            const qint64 next = log.mid(kept.size(), 20).split(' ').first().toLongLong();
            QVERIFY2(next > (played - mayBeLostMs) * speed, qPrintable(QString::number(next)));

            QVERIFY(store(path("cut.cprlog"), kept));
            QCOMPARE(run({"replay", "cut.cprlog", "-o", "cut.zip", "--force"}), 0);
            QCOMPARE(run({"recover", archive, "-o", archive}), 0);
            QCOMPARE(run({"diff", "cut.zip", archive, "--ignore-times"}), 0);
            QCOMPARE(run({"validate", archive}), 0);
        }
    }

    void damagedLines_data()
    {
        const auto row =
            columns<QByteArray, int, int, QString>("log", "records", "skipped", "error");
        const QByteArray endless(200'000, 'x');
        row("whole", "1 header 1\n2 header 2\n", 2, 0, "");
        row("half a line", "1 header 1\n2 header 21", 1, 1, "log:3: expected a whole line");
        row("in the middle", "1 header 1\n2 haeder 2\n3 header 3\n", 2, 1, "log:3: expected");
        row("wrong time", "1 header 1\n90 header 2\n3 header 3\n", 3, 0, "");
        row("two", "1 header\n2 haeder 2\n3 header 3\n", 1, 2, "log:2: expected");
        row("endless line", "1 header 1\n" + endless + "2 header 2\n3 header 3\n", 2, 1,
            "log:3: expected");
    }

    void damagedLines()
    {
        QFETCH(QByteArray, log);
        QFETCH(QString, error);
        QByteArray text = firstLine + log;
        QBuffer buffer(&text);
        buffer.open(QIODevice::ReadOnly);
        ManikinLogReader reader(&buffer, "log", ManikinLogReader::Damage::IsSkipped);
        CPRData session;
        int count = 0;
        QVERIFY(ManikinLogPlayer(&session).play(reader, [&count](qint64) { ++count; }));
        QTEST(count, "records");
        QTEST(int(reader.skippedLines()), "skipped");
        QCOMPARE(reader.skippedError().left(error.size()), error);
    }

    void journalBelongsToOne()
    {
        const QString target = path("one.zip");
        SessionJournal journal;
        SessionJournal other;
        // Of a version that locked by a file, on another machine.
        QVERIFY(store(target + ".journal.lock", "1\nreplay\nelsewhere\n"));
        QVERIFY(store(target, "") && QFile::setPermissions(target, QFile::ReadOwner));
        QVERIFY(journal.open(target) && QFile::remove(target + ".journal.lock"));
        QVERIFY(!(QFile(journal.fileName()).permissions() & (QFile::ReadGroup | QFile::ReadOther)));
        QVERIFY(QFile::link("one.zip", path("one-link.zip")));
        QVERIFY(!other.open(path("one-link.zip"), SessionJournal::LeftJournal::Discard));
        QVERIFY(QFile::remove(path("one-link.zip")) && QFile::remove(target));
        QVERIFY(journal.add({5, Learner{"Ann"}}) && journal.add({6, State{CPRData::CPR_INIT}})
                && journal.add({7, State{CPRData::CPR_START}}) && journal.add({8, WaveHeader{7}}));
        QTRY_VERIFY_WITH_TIMEOUT(bytesOf(journal.fileName()).endsWith("header 7\n"), 1000);
        const QByteArray content = bytesOf(journal.fileName());
        const QRegularExpression times(" start 20\\d\\d-\\d\\d-\\d\\dT[0-9:.]+Z\n");
        QCOMPARE(QString::fromUtf8(content).replace(times, " start\n").toUtf8(),
                 firstLine
                     + "5 start\n5 learner Ann\n6 state CPR_INIT\n7 start\n7 state CPR_START\n"
                       "8 header 7\n");
        QVERIFY(!SessionJournal::isRecoverable(target));
        QVERIFY(!other.open(target, SessionJournal::LeftJournal::Discard));
        QVERIFY(other.errorString().contains("one.zip.journal is in use"));
        QCOMPARE(run({"replay", "whole.cprlog", "-o", "one.zip", "--force"}), 1);
        QCOMPARE(run({"recover", "one.zip", "-o", "other.zip"}), 1);
        QCOMPARE(run({"recover", "one.zip.journal", "-o", "other.zip"}), 1);

        QVERIFY(journal.open(path("two.zip"))); // closes the first
        QVERIFY(SessionJournal::isRecoverable(target));
        QVERIFY(!other.open(target));
        QCOMPARE(bytesOf(target + ".journal"), content);
        QVERIFY(other.open(target, SessionJournal::LeftJournal::Discard) && other.remove());
        QVERIFY(journal.open(target)); // and two.zip's is left, but holds no record
        QVERIFY(other.open(path("two.zip")) && journal.remove() && other.remove());
        QCOMPARE(QDir(m_directory.path()).entryList({"one*", "two*"}), QStringList());
    }

    void journalWaitsForTheDisk()
    {
        CPRData session;
        SessionJournal journal;
        QSignalSpy failures(&journal, &SessionJournal::failed);
        QSignalSpy resumptions(&journal, &SessionJournal::resumed);
        ManikinLogPlayer player(&session);
        player.setJournal(&journal);
        QVERIFY(journal.open(path("full.zip")));
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit small{1000, before.rlim_max};
        std::signal(SIGXFSZ, SIG_IGN);
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        for (int i = 0; i < 500; ++i)
            QVERIFY(player.play({i, Learner{QString("Learner %1").arg(i)}}));
        QVERIFY(!journal.sync());
        setrlimit(RLIMIT_FSIZE, &before);

        QCOMPARE(session.learners().size(), 500);
        QCOMPARE(failures.count(), 1);
        QVERIFY(journal.errorString().contains("full.zip.journal cannot be written: File too"));
        const QByteArray kept = bytesOf(journal.fileName());
        QVERIFY(kept.startsWith(firstLine) && kept.endsWith('\n') && kept.size() <= 1000);
        QTRY_COMPARE_WITH_TIMEOUT(resumptions.count(), 1, 2000);
        const QByteArray whole = bytesOf(journal.fileName());
        QVERIFY(whole.startsWith(kept) && whole.endsWith("499 learner Learner 499\n"));
        QCOMPARE(whole.count(" learner "), 500);
    }

    void replayAndItsJournal()
    {
        QVERIFY(store(path("new.zip.journal"), firstLine + "1 header 1\n"));
        QCOMPARE(run({"replay", "whole.cprlog", "-o", "new.zip"}), 2);
        QCOMPARE(run({"replay", "new.zip.journal", "-o", "new.zip", "--force"}), 2);
        QCOMPARE(bytesOf(path("new.zip.journal")), firstLine + "1 header 1\n");
        QCOMPARE(run({"replay", "whole.cprlog", "-o", "new.zip", "--force"}), 0);
        QCOMPARE(QDir(m_directory.path()).entryList({"new*"}), QStringList{"new.zip"});

        QVERIFY(QDir().mkpath(path("odd.zip.journal"))); // no journal can be written
        QVERIFY(QFile::link("new.zip", path("also.zip.journal"))); // nor may it follow a link
        QCOMPARE(run({"replay", "whole.cprlog", "-o", "odd.zip"}), 0);
        QCOMPARE(run({"replay", "whole.cprlog", "-o", "also.zip", "--force"}), 0);
        QCOMPARE(run({"validate", "new.zip"}), 0);

        QProcess process; // whose target turns into a directory meanwhile
        start(process, {"replay", "whole.cprlog", "-o", "x.zip", "--speed", "300"});
        QTRY_VERIFY(QFileInfo(path("x.zip.journal")).size() > firstLine.size());
        QVERIFY(QDir().mkdir(path("x.zip")));
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 1);
        QVERIFY(process.readAllStandardError().contains("cprsession recover x.zip.journal"));
        QCOMPARE(run({"recover", "x.zip.journal", "-o", "saved.zip"}), 0);
        QCOMPARE(run({"diff", "new.zip", "saved.zip", "--ignore-times"}), 0);
        QCOMPARE(run({"recover", "saved.zip", "-o", "./saved.zip", "--force"}), 2);
        QCOMPARE(run({"recover", "x.zip", "-o", "nothing.zip"}), 1);
        QVERIFY(!QFile::exists(path("nothing.zip")));
    }

    void cutArchives()
    {
        const int end = m_archive.lastIndexOf("PK\5\6") + 4; // what follows can be missed
        int events = 0;
        int steps = 0;
        for (int size = 0; size < m_archive.size(); size += m_step) {
            salvage(m_archive.left(size), memberAt(size), 4);
            // With each byte there is more, and nothing that was not stored.
            const QByteArray content = m_contents[memberNames.first()];
            const QByteArray begin = content.left(content.lastIndexOf("</eventList>")).trimmed();
            const int count = m_session.holdsAnything ? content.count("<evt ") : 0;
            if (QTest::currentTestFailed() || (m_passesCheck && size < end) || count < events
                || (count > 1 && !m_whole[memberNames.first()].startsWith(begin)))
                QFAIL(qPrintable(QString("cut to %1 bytes").arg(size)));
            steps += count > events ? 1 : 0;
            events = count;
        }
        QCOMPARE(events, 15);
        QVERIFY(steps > 5);
    }

    void flippedBits()
    {
        int harmless = 0;
        int tried = 0;
        for (int place = 0; place < m_archive.size(); place += m_step, ++tried) {
            salvage(withFlippedBit(m_archive, place, place % 8), memberAt(place), memberAt(place));
            // What the header before a member says is also said by the directory.
            const int header = m_headers.at(memberAt(place));
            QVERIFY(m_session.isAll || place >= header + 30);
            if (QTest::currentTestFailed())
                QFAIL(qPrintable(QString("byte %1").arg(place)));
            harmless += m_passesCheck ? 1 : 0;
        }
        // Of the archive's bytes some three in four are packed content, sizes, names and sums.
        QVERIFY2(harmless * 4 <= tried, qPrintable(QString::number(harmless)));
    }

    void kindsOfMembers_data()
    {
        const auto row = columns<int, bool, QByteArray, QByteArray, QString>(
            "method", "sizesBehind", "from", "to", "report");
        constexpr int stored = 0;
        constexpr int deflated = 8;
        row("stored", stored, false, "", "", "whole");
        row("stored, sizes behind", stored, true, "", "", "whole");
        row("deflated", deflated, false, "", "", "whole");
        row("deflated, sizes behind", deflated, true, "", "", "whole");
        row("another value", deflated, false, "\"51.2", "\"52.2", "all 15 events");
        row("no value", stored, false, "\"51.2", "\"5x.2", "14 of 15 events");
        row("broken element", deflated, true, "LossEnd\"", "LossEnd ", "14 of 15 events");
        const QByteArray pair = "<evt type=\"Event\" msecs=\"7\"/><evt type=\"Event\"/>";
        row("many broken ones", stored, false, "</eventList>", pair.repeated(1100) + "</eventList>",
            "1115 of 2215 events");
        row("number of the summary", stored, true, "70000", "7000O", "all 15 events");
    }

    // The events alone, with a text that was changed behind the checksum's back.
    void kindsOfMembers()
    {
        QFETCH(int, method);
        QFETCH(bool, sizesBehind);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(QString, report);
        const QByteArray whole = m_whole[memberNames.first()];
        QByteArray content = whole;
        if (!from.isEmpty())
            content.replace(from, to);
        salvage("PK" + packedEvents(content, method, whole, sizesBehind), 0, 4);
        if (report != "whole")
            report += "; its checksum is another, so this is not certain";
        QCOMPARE(m_session.report.at(3), "CPR/CPREvents.xml: " + report);
        QVERIFY(m_contents[memberNames.first()].contains("Ann,Bob"));
        QCOMPARE(run({"recover", "damaged.zip", "-o", "kept.zip", "--force"}), 1);
    }

    void changedMeanwhile_data()
    {
        const auto row = columns<QByteArray, QByteArray>("archive", "later");
        const QByteArray cut = m_archive.chopped(30);
        const QByteArray events = m_whole[memberNames.first()];
        const auto broken = [&](QByteArray content) {
            return "PK" + packedEvents(content.replace("LossEnd\"", "LossEnd "), 0, events, false);
        };
        row("cut", cut, cut.left(cut.size() / 2));
        row("nothing left", cut, "");
        row("another session", cut, withFlippedBit(cut, m_headers.at(0) + 200, 0));
        row("another value", broken(events), broken(QByteArray(events).replace("51.2", "52.2")));
    }

    // After it was salvaged, and before that is saved.
    void changedMeanwhile()
    {
        QFETCH(QByteArray, archive);
        QFETCH(QByteArray, later);
        QVERIFY(store(path("damaged.zip"), archive));
        const auto session = sessionfiles::salvage(path("damaged.zip"));
        QVERIFY(session.holdsAnything && store(path("damaged.zip"), later));
        QVERIFY(store(path("old.zip"), "old"));
        const auto saved = sessionfiles::save(path("old.zip"), session);
        QVERIFY2(!saved.isSaved && saved.reason.contains("damaged.zip"), qPrintable(saved.reason));
        QCOMPARE(bytesOf(path("old.zip")), QByteArray("old"));
    }
};

QTEST_GUILESS_MAIN(TestRecover)
#include "tst_recover.moc"
