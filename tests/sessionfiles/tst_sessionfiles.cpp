// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventUser.h"
#include "sessionfiles/ArchiveCheck.h"
#include "sessionfiles/SessionFile.h"
#include "sessionfiles/SessionTable.h"
#include "sessionfiles/TableWriter.h"
#include "support/Damage.h"
#include "support/Rows.h"

#include <QTemporaryDir>

using namespace sessionfiles;
using namespace testsupport;
using States = QVector<LoadedMember::State>;
Q_DECLARE_METATYPE(States)

/// What a host learns while it loads and saves.
class TestSessionFiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void progressReachesTheEnd()
    {
        qint64 total = 0;
        for (const QByteArray &content : goldenMembers())
            total += content.size();
        QVector<qint64> steps;
        CPRData session;
        const LoadResult result = load(goldenArchive, session, [&](qint64 done, qint64 of) {
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
            load(goldenArchive, session, [&](qint64, qint64) { return ++calls < 3; });
        QVERIFY(result.isCancelled && !result.isComplete);
        QCOMPARE(calls, 3);
    }

    // What the archive's own damage is, is told in the words of who found it.
    void damagedDataAreNamed()
    {
        const QTemporaryDir directory;
        const QString damaged = directory.filePath("damaged.zip");
        const QByteArray zip = bytesOf(goldenArchive);
        QVERIFY(store(damaged, withFlippedBit(zip, directoryOf(zip).first().payload + 40, 5)));
        CPRData session;
        const LoadResult result = load(damaged, session);
        QVERIFY(!result.isComplete);
        QCOMPARE(result.members[3].state, LoadedMember::Damaged);
        QVERIFY2(result.members[3].reason.contains("zip error"),
                 qPrintable(result.members[3].reason));
    }

    void membersAreReported_data()
    {
        // The member is left out when nothing is to be replaced; states in the order of reading.
        const auto row = columns<QString, QByteArray, QByteArray, States, QString>(
            "member", "from", "to", "states", "reason");
        constexpr auto whole = LoadedMember::Complete;
        constexpr auto damaged = LoadedMember::Damaged;
        constexpr auto missing = LoadedMember::Missing;
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
        QVERIFY(change(files.members, member, from, to) || member == "none");
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
        QVERIFY(save(name, copy).isComplete);
        CPRData loaded;
        QVERIFY(load(name, loaded).isComplete);
        QCOMPARE(saved(loaded), files.members);
        const SaveResult result = save(directory.filePath("none/saved.zip"), copy);
        QVERIFY(!result.isSaved && !result.isComplete && result.reason.contains("none/saved.zip"));
    }

    void longestComment()
    {
        const QTemporaryDir directory;
        const QString name = directory.filePath("comment.zip");
        const QByteArray archive = bytesOf(goldenArchive).chopped(2) + "\xFF\xFF";
        QVERIFY(store(name, archive + QByteArray(65'535, 'c')));
        CPRData session;
        QVERIFY(load(name, session).isComplete);
        QCOMPARE(check(name).errors(), 0);
    }

    void moreThanIsLoaded()
    {
        const QTemporaryDir directory;
        const QString name = directory.filePath("saved.zip");
        CPRData session;
        CPREvents &events = *session.cprEvents();
        for (int i = 0; i < 100'001; ++i)
            events.addEvent(new CPREventUser(1000 * i, &events, "a"), false);
        const SaveResult result = save(name, session);
        QVERIFY(result.isSaved && !result.isComplete && result.reason.contains(name));
    }

    void nullArguments()
    {
        CPRData session;
        QVERIFY(!SessionTable::create("nothing", {}, nullptr));
        QVERIFY(!SessionTable::create("waves", {"depth"}, nullptr));
        QVERIFY(!TableWriter::csv(nullptr, ",")->begin({}));
        QVERIFY(!TableWriter::json(nullptr)->end());
        QVERIFY(sessionfiles::save("no/such/folder.zip", session).reason.contains("folder.zip"));
    }
};

QTEST_GUILESS_MAIN(TestSessionFiles)
#include "tst_sessionfiles.moc"
