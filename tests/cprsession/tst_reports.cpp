// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "support/Damage.h"
#include "support/Program.h"
#include "support/Rows.h"
#include "support/StoredSession.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace testsupport;

namespace {

const QString recordedLog = QStringLiteral(TEST_DATA_DIR "/two-rescuers.cprlog");

} // namespace

/// Pages to take home, and classes: what stands in them.
class TestReports : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_directory.isValid());
        if (QStandardPaths::findExecutable("pdftotext").isEmpty())
            QSKIP("pdftotext is not there");
        QCOMPARE(run({"replay", recordedLog, "-o", "session.zip"}).status, 0);
        QByteArray unscored;
        for (const QByteArray &line : bytesOf(recordedLog).split('\n')) {
            if (!line.contains(" msg 108 ") && !line.contains(" msg 109 "))
                unscored += line + '\n';
        }
        QVERIFY(store(path("unscored.cprlog"), unscored));
        QVERIFY(store(path("text.zip"), "Dear instructor,\n"));
        Members members = membersOf(path("session.zip"));
        QVERIFY(change(members, "COMP.WV", "", ""));
        QVERIFY(saveMembers(path("damaged.zip"), members));
        QVERIFY(QDir(m_directory.path()).mkdir("other"));
        QVERIFY(store(path("other/session.zip"), bytesOf(path("session.zip"))));
    }

    void holdsTheFiguresOfInfo_data()
    {
        const auto row = columns<QStringList>("texts");
        row("en",
            {"Mira Holm, Jörg Aldane", "CPR with two rescuers", "Length 2:00 min", "68 %",
             "Compressions 63 %", "Ventilations 81 %", "Flow time 75 %", "This was good",
             "1. Press faster.", "Too slow: 19 % (target: 100–120 per min)", "at least 75 %",
             "Instructor's remark"});
        row("de",
            {"Mira Holm, Jörg Aldane", "Zwei-Helfer-Reanimation", "Dauer 2:00 min", "68 %",
             "Kompressionen 63 %", "Beatmungen 81 %", "Hands-on-Zeit 75 %", "Das war gut",
             "1. Schneller drücken.", "Zu langsam: 19 % (Ziel: 100–120 pro min)", "mindestens 75 %",
             "Bemerkung der Kursleitung"});
    }

    void holdsTheFiguresOfInfo()
    {
        const QString language = QTest::currentDataTag();
        QFETCH(QStringList, texts);
        const QLocale locale(language);
        const QJsonObject info =
            QJsonDocument::fromJson(run({"info", "session.zip", "--json"}).output)
                .object()
                .value("recorded")
                .toObject();
        const QList<QPair<QString, int>> figures{{"compressions", 0},
                                                 {"mean_depth_mm", 1},
                                                 {"correct_depth_percent", 0},
                                                 {"mean_rate_per_min", 1},
                                                 {"correct_rate_percent", 0},
                                                 {"complete_release_percent", 0},
                                                 {"correct_hands_percent", 0},
                                                 {"longest_pause_s", 1},
                                                 {"correct_cycles_percent", 0},
                                                 {"ventilations", 0},
                                                 {"mean_volume_ml", 0},
                                                 {"correct_volume_percent", 0},
                                                 {"shocks", 0},
                                                 {"mean_peri_shock_pause_s", 1}};
        for (const auto &figure : figures) {
            QVERIFY2(info.contains(figure.first), qPrintable(figure.first));
            texts.append(locale.toString(info.value(figure.first).toDouble(), 'f', figure.second));
        }
        const QString page = textOf("session.zip", {"--language", language});
        for (const QString &text : std::as_const(texts))
            QVERIFY2(page.contains(text), qPrintable(text + "\n\n" + page));
        const QByteArray fonts = testsupport::run("pdffonts", {path("out/session.pdf")}).output;
        QVERIFY2(fonts.contains(" yes "), fonts);
        QVERIFY2(!fonts.contains(" no  no "), fonts); // embedded, subset
    }

    void names_data()
    {
        const auto row = columns<QStringList, QStringList>("learners", "texts");
        QStringList many;
        for (int i = 1; i <= 40; ++i)
            many.append(QString("Learner with a name %1").arg(i));
        row("long", {QString("Maximiliane ").repeated(25).trimmed()}, {"Maximiliane Maximil", "…"});
        row("one word", {QString(300, 'W')}, {"WWWWWWWWWWWWWWW", "…"});
        row("many", many, {"Learner with a name 1, Learner with a name 2", "+"});
        row("markup", {"<b>Rob</b> &amp; <img src=x>"}, {"<b>Rob</b> &amp; <img src=x>"});
        row("right to left", {"דנה לוי", "Ann"}, {"דנה", "Ann"});
        row("brackets", {"Ann (B) \\ %s %1 %2"}, {"Ann (B) \\ %s %1 %2"});
    }

    // The page stays one, and inside of it.
    void names()
    {
        QFETCH(QStringList, learners);
        QFETCH(QStringList, texts);
        QStringList arguments{"simulate",       "--duration",     "20",         "--force",
                              "--to",           "named.zip",      "--scenario", "aed",
                              "--manikin-name", QString(200, 'M')};
        for (const QString &learner : std::as_const(learners))
            arguments << "--learner" << learner;
        QCOMPARE(run(arguments).status, 0);
        const QString page = textOf("named.zip", {"--paper", "Letter"}).simplified();
        texts << "Instructor's name and signature";
        for (const QString &text : std::as_const(texts))
            QVERIFY2(page.contains(text), qPrintable(text + "\n\n" + page));

        const QByteArray boxes =
            testsupport::run("pdftotext", {"-bbox", path("out/named.pdf"), "-"}).output;
        static const QRegularExpression box(
            "xMin=\"([-0-9.]+)\" yMin=\"([-0-9.]+)\" xMax=\"([-0-9.]+)\" yMax=\"([-0-9.]+)\"");
        auto found = box.globalMatch(QString::fromUtf8(boxes));
        QVERIFY(found.hasNext());
        constexpr double margin = 30; // of 612 x 792 points
        while (found.hasNext()) {
            const auto match = found.next();
            QVERIFY2(match.captured(1).toDouble() > margin && match.captured(2).toDouble() > margin
                         && match.captured(3).toDouble() < 612 - margin
                         && match.captured(4).toDouble() < 792 - margin,
                     qPrintable(match.captured()));
        }
    }

    void whatIsNotThereIsSaid()
    {
        QVERIFY(textOf("unscored.cprlog", {}).contains("The manikin has sent no scores"));
        const Answer answer =
            run({"report", "damaged.zip", "text.zip", "session.zip", "-o", "out", "--force"});
        QCOMPARE(answer.status, 1);
        QVERIFY2(answer.errors.contains("damaged.zip is damaged")
                     && answer.errors.contains("text.zip cannot be read"),
                 answer.errors);
        QVERIFY(pageText("damaged").contains("The session's file is damaged."));
        QVERIFY(!QFile::exists(path("out/text.pdf")));
    }

    // The later of the same learners' sessions have the earlier ones.
    void trend()
    {
        for (const char *day : {"1", "2"})
            QCOMPARE(run({"simulate", "--duration", "20", "--learner", "Ann", "--start",
                          QString("2026-03-0%1T10:00:00Z").arg(day), "--to",
                          QString("ann%1.zip").arg(day)})
                         .status,
                     0);
        QCOMPARE(
            run({"report", "ann2.zip", "session.zip", "ann1.zip", "-o", "three", "-j", "2"}).status,
            0);
        QVERIFY(QDir(m_directory.path()).rename("three", "out-trend"));
        for (const auto &[name, hasTrend] : {std::pair("ann1", false), {"ann2", true}}) {
            const QByteArray text =
                testsupport::run("pdftotext", {path(QString("out-trend/%1.pdf").arg(name)), "-"})
                    .output;
            QCOMPARE(text.contains("The last sessions"), hasTrend);
            QCOMPARE(text.contains("3/1/26"), hasTrend);
        }
    }

    void refuses_data()
    {
        const auto row = columns<QStringList, int, QByteArray>("arguments", "status", "error");
        row("two of one name", {"report", "session.zip", "other/session.zip", "-o", "new"}, 2,
            "would both become");
        row("existing page", {"report", "session.zip", "-o", "other"}, 0, "");
        row("existing page, again", {"report", "session.zip", "-o", "other"}, 2, "--force");
        row("no folder", {"report", "session.zip", "-o", "session.zip/x"}, 1, "session.zip/x");
        row("no such language", {"report", "session.zip", "-o", "x", "--language", "xx"}, 2, "xx");
        row("PDF of a class on stdout", {"class", "session.zip", "--format", "pdf"}, 2, "-o");
        row("folder without archives", {"class", "out-none"}, 1, "out-none");
        row("class over its session", {"class", "session.zip", "-o", "session.zip"}, 2, "replace");
        row("damaged session", {"class", "damaged.zip"}, 1, "damaged.zip is damaged");
    }

    void refuses()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, error);
        QDir(m_directory.path()).mkdir("out-none");
        const Answer answer = run(arguments);
        QTEST(answer.status, "status");
        QVERIFY2(answer.errors.contains(error), answer.errors);
    }

    // Two learners, each with a session twice; the second has not got its scores. The figures of
    // the session stand in data/README.md.
    void classFigures()
    {
        const QStringList sessions{"class", "session.zip", "unscored.cprlog"};
        const QJsonObject object =
            QJsonDocument::fromJson(run(sessions + QStringList{"--format", "json"}).output)
                .object();
        QCOMPARE(object.value("sessions"), QJsonValue(2));
        const QJsonArray learners = object.value("learners").toArray();
        QCOMPARE(learners.size(), 2);
        for (const QJsonValue &learner : learners) {
            QCOMPARE(learner["sessions"], QJsonValue(2));
            QCOMPARE(learner["compression_fraction"], QJsonValue(0.7643));
            QVERIFY(learner["overall_score"].isNull() && learner["passed"].isNull());
        }
        QCOMPARE(object["means"]["compression_fraction"], QJsonValue(0.7643));
        const QJsonArray faults = object.value("shared_faults").toArray();
        for (const QJsonValue &fault : faults)
            QCOMPARE(fault["learners"], QJsonValue(2));

        const QList<QByteArray> lines =
            run({"class", "session.zip", "--format", "csv"}).output.split('\n');
        QCOMPARE(lines.size(), 4); // heads, two learners, the end
        QVERIFY2(lines[1].startsWith("Jörg Aldane,1,") && lines[1].contains(",68,"), lines[1]);
        QVERIFY2(lines[1].contains(",0.7643,"), lines[1]);

        QCOMPARE(run({"class", "session.zip", "-o", "class.pdf", "--language", "de"}).status, 0);
        const QByteArray page = testsupport::run("pdftotext", {path("class.pdf"), "-"}).output;
        for (const char *text :
             {"Kurs, ", "Lernende: 2", "Jörg Aldane", "68 %", "51,", "Kompressionspause, s"})
            QVERIFY2(page.contains(text), page);
    }

private:
    Answer run(const QStringList &arguments) const
    {
        return testsupport::run(CPRSESSION_PROGRAM, arguments, m_directory.path());
    }
    // The report of \a session, as text: one page.
    QString textOf(const QString &session, const QStringList &options) const
    {
        const Answer answer = run(QStringList{"report", session, "-o", "out", "--force"} + options);
        const QString text = pageText(QFileInfo(session).completeBaseName());
        return answer.status == 0 && text.count('\f') == 1 ? text : answer.errors;
    }
    QString pageText(const QString &name) const
    {
        return QString::fromUtf8(
                   testsupport::run("pdftotext", {path("out/" + name + ".pdf"), "-"}).output)
            .replace(QChar(0xa0), ' ')
            .replace(QRegularExpression("\\n(?!\\n)"), " ");
    }
    QString path(const QString &name) const { return m_directory.filePath(name); }

    QTemporaryDir m_directory;
};

QTEST_GUILESS_MAIN(TestReports)
#include "tst_reports.moc"
