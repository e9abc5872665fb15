// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/MemoryFileHandler.h"
#include "sessionfiles/SessionFile.h"
#include "support/TestSupport.h"

#include <QFile>
#include <QTemporaryDir>

using namespace sessionfiles;
using States = QVector<LoadedMember::State>;
Q_DECLARE_METATYPE(States)

/// What a host learns while it loads and saves.
class TestSessionFiles : public QObject {
    Q_OBJECT

    static constexpr char golden[] = TEST_DATA_DIR "/golden.zip";

    // The members of the golden archive.
    static MemoryFileHandler::Members goldenMembers()
    {
        MemoryFileHandler::Members members;
        for (const char *name :
             {"CPREvents.xml", "CPRWaves.xml", "COMP.WV", "VENT.WV", "CPRGuidelines.xml"}) {
            QFile file(QString(TEST_DATA_DIR "/golden/CPR/") + name);
            if (file.open(QIODevice::ReadOnly))
                members[name] = file.readAll();
        }
        return members;
    }

private Q_SLOTS:
    void progressReachesTheEnd()
    {
        qint64 total = 0;
        for (const QByteArray &content : goldenMembers())
            total += content.size();
        QVector<qint64> steps;
        CPRData session;
        const LoadResult result = load(golden, session, [&](qint64 done, qint64 of) {
            steps.append(done);
            return of == total;
        });
        QVERIFY(result.isComplete && !result.isCancelled);
        QCOMPARE(steps.last(), total);
        QVERIFY(std::is_sorted(steps.begin(), steps.end()) && steps.size() >= 5);
    }

    void loadingIsGivenUp()
    {
        int calls = 0;
        CPRData session;
        const LoadResult result =
            load(golden, session, [&](qint64, qint64) { return ++calls < 3; });
        QVERIFY(result.isCancelled && !result.isComplete);
        QCOMPARE(calls, 3);
    }

    // What the archive's own damage is, is told in the words of who found it.
    void damagedDataAreNamed()
    {
        QFile file(golden);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArray zip = file.readAll();
        const QByteArray name = "CPR/CPREvents.xml";
        const int at = zip.indexOf(name) + name.size() + 40;
        zip[at] = char(zip.at(at) ^ 0x55);
        QTemporaryDir dir;
        QFile damaged(dir.filePath("damaged.zip"));
        QVERIFY(damaged.open(QIODevice::WriteOnly) && damaged.write(zip) == zip.size());
        damaged.close();
        CPRData session;
        const LoadResult result = load(damaged.fileName(), session);
        QVERIFY(!result.isComplete);
        QCOMPARE(result.members[3].state, LoadedMember::Damaged);
        QVERIFY2(result.members[3].reason.contains("zip error"),
                 qPrintable(result.members[3].reason));
    }

    void membersAreReported_data()
    {
        QTest::addColumn<QString>("member");
        QTest::addColumn<QByteArray>("from"); // the member is left out when this is empty
        QTest::addColumn<QByteArray>("to");
        QTest::addColumn<States>("states"); // in the order in which members are read
        QTest::addColumn<QString>("reason");

        constexpr auto whole = LoadedMember::Complete;
        constexpr auto damaged = LoadedMember::Damaged;
        constexpr auto missing = LoadedMember::Missing;
        const auto row = [](const char *name, const char *member, const char *from, const char *to,
                            const States &states, const char *reason) {
            QTest::newRow(name) << QString(member) << QByteArray(from) << QByteArray(to) << states
                                << QString(reason);
        };
        row("whole", "none", "", "", {whole, whole, whole, whole, whole}, "");
        row("no list of waves", "CPRWaves.xml", "", "", {missing}, "");
        row("no wave", "VENT.WV", "", "", {whole, whole, missing, whole, whole}, "");
        row("no events", "CPREvents.xml", "", "", {whole, whole, whole, missing, whole}, "");
        row("events cut", "CPREvents.xml", "</eventList>", " ",
            {whole, whole, whole, damaged, whole}, "line 206, column 0: ");
        row("two roots", "CPRGuidelines.xml", "</GuideLineSettings>", "</GuideLineSettings><a/>",
            {whole, whole, whole, whole, damaged}, "line ");
    }

    void membersAreReported()
    {
        QFETCH(QString, member);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(States, states);
        QFETCH(QString, reason);
        MemoryFileHandler files(goldenMembers());
        if (from.isEmpty())
            files.members.remove(member);
        else
            files.members[member].replace(from, to);
        CPRData session;
        const LoadResult result = load(files, session);
        States found;
        for (const LoadedMember &each : result.members) {
            found.append(each.state);
            if (each.state == LoadedMember::Damaged) {
                QCOMPARE(each.name, member);
                QVERIFY2(each.reason.startsWith(reason), qPrintable(each.reason));
            }
        }
        QCOMPARE(found, states);
        QCOMPARE(result.isComplete, states == States(5, LoadedMember::Complete));
    }

    void whatIsSavedIsLoaded()
    {
        const QTemporaryDir directory;
        const QString name = directory.filePath("saved.zip");
        MemoryFileHandler files(goldenMembers());
        CPRData session;
        QVERIFY(load(files, session).isComplete);
        CPRData copy(session); // lists statistics and score, too
        QCOMPARE(save(name, copy), QString());
        CPRData loaded;
        QVERIFY(load(name, loaded).isComplete);
        CPRData again(loaded);
        MemoryFileHandler stored;
        QVERIFY(again.writeData(&stored));
        QCOMPARE(stored.members, files.members);
        QVERIFY(save(directory.filePath("none/saved.zip"), copy).contains("none/saved.zip"));
    }
};

QTEST_GUILESS_MAIN(TestSessionFiles)
#include "tst_sessionfiles.moc"
