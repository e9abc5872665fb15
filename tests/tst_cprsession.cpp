// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString recordedLog = QStringLiteral(TEST_DATA_DIR "/two-rescuers.cprlog");

struct Answer {
    int status = -1;
    QByteArray output;
    QByteArray errors;
};

} // namespace

/// The program as a shell sees it: files, output, exit status.
class TestCprsession : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void infoAgreesWithTheLog();
    void wrongInput_data();
    void wrongInput();
    void replayKeepsWhatIsThere();
    void exportTables_data();
    void exportTables();

private:
    Answer run(const QStringList &arguments) const;
    QString path(const QString &name) const { return m_directory.filePath(name); }

    QTemporaryDir m_directory;
};

Answer TestCprsession::run(const QStringList &arguments) const
{
    QProcess process;
    process.setWorkingDirectory(m_directory.path());
    process.start(QStringLiteral(CPRSESSION_PROGRAM), arguments);
    Answer answer;
    if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit)
        answer.status = process.exitCode();
    answer.output = process.readAllStandardOutput();
    answer.errors = process.readAllStandardError();
    return answer;
}

void TestCprsession::initTestCase()
{
    QVERIFY(m_directory.isValid());
    const Answer answer = run({"replay", recordedLog, "-o", "session.zip"});
    QCOMPARE(answer.errors, QByteArray());
    QCOMPARE(answer.status, 0);

    const auto make = [this](const QString &name, const QByteArray &content) {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    };
    QFile whole(path("session.zip"));
    QVERIFY(whole.open(QIODevice::ReadOnly));
    QVERIFY(make("cut.zip", whole.read(whole.size() / 2)));
    QVERIFY(make("empty", QByteArray()));
    QVERIFY(make("text", "Dear instructor,\n"));
    QVERIFY(make("broken.cprlog", "cprlog 1\n0 state CPR_MANIKIN_INIT\n20 header one\n"));
}

// The figures follow from the scenario of the recording; its arithmetic stands in data/README.md.
void TestCprsession::infoAgreesWithTheLog()
{
    const Answer answer = run({"info", "session.zip", "--json"});
    QCOMPARE(answer.status, 0);
    QJsonObject info = QJsonDocument::fromJson(answer.output).object();
    QVERIFY(!info.take("start").toString().isEmpty());
    const QJsonObject expected{
        {"file", "session.zip"},
        {"learners", QJsonArray{"Mira Holm", QString::fromUtf8("Jörg Aldane")}},
        {"manikin", "KDX_ADULT_MALE"},
        {"firmware", "3.2.1.1047"},
        {"protocol", "Compression and ventilation - Two rescuer"},
        {"length_s", 120},
        {"compressions", 162},
        {"ventilations", 8},
        {"pauses", 2},
        {"mean_depth_mm", 51.64},
        {"mean_rate_per_min", 108},
        {"mean_volume_ml", 530},
        {"overall_score", 68},
        {"compression_score", 63},
        {"ventilation_score", 81},
        {"flow_time_percent", 75},
        {"primary_advice", "Advice_HandPosition"},
        {"secondary_advice", "Advice_CompressDeepEnough"},
        {"guidelines", "2025-EU-STD-A-01-20250901"},
        {"complete", true},
        {"missing_members", QJsonArray()},
    };
    QCOMPARE(info, expected);
}

void TestCprsession::wrongInput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("names"); // what the one line on stderr has to mention

    const auto row = [](const char *name, const QStringList &arguments, int status,
                        const char *names) {
        QTest::newRow(name) << arguments << status << QByteArray(names);
    };
    row("no verb", {}, 2, "--help");
    row("unknown option", {"info", "--jsom", "session.zip"}, 2, "--jsom");
    for (const char *input : {"missing", "empty", "text", "cut.zip", "."}) {
        row(qPrintable(QString("info of %1").arg(input)), {"info", input}, 1, input);
        row(qPrintable(QString("replay of %1").arg(input)), {"replay", input, "-o", "target.zip"},
            1, input);
        row(qPrintable(QString("export of %1").arg(input)),
            {"export", input, "--what", "events", "-o", "target.csv"}, 1, input);
    }
    row("damaged log", {"replay", "broken.cprlog", "-o", "target.zip"}, 1, "broken.cprlog:3: ");
    row("unwritable archive", {"replay", recordedLog, "-o", "no/target.zip"}, 1, "no/target.zip");
    row("unwritable table", {"export", "session.zip", "--what", "events", "-o", "no/target.csv"}, 1,
        "no/target.csv");
    row("target is a directory", {"replay", recordedLog, "-o", ".", "--force"}, 1, ".");
    row("existing archive", {"replay", recordedLog, "-o", "session.zip"}, 2, "--force");
    row("unknown column", {"export", "session.zip", "--what", "events", "--columns", "depth"}, 2,
        "depth");
    row("separator of two", {"export", "session.zip", "--what", "events", "--separator", "::"}, 2,
        "--separator");
    row("speed of zero", {"replay", recordedLog, "-o", "target.zip", "--speed", "0"}, 2, "--speed");
}

void TestCprsession::wrongInput()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, status);
    QFETCH(QByteArray, names);

    const QStringList before = QDir(m_directory.path()).entryList(QDir::AllEntries);
    const Answer answer = run(arguments);
    QCOMPARE(answer.status, status);
    QCOMPARE(answer.output, QByteArray());
    QCOMPARE(answer.errors.count('\n'), 1);
    QVERIFY2(answer.errors.contains(names), answer.errors.constData());
    QCOMPARE(QDir(m_directory.path()).entryList(QDir::AllEntries), before);
}

void TestCprsession::replayKeepsWhatIsThere()
{
    QVERIFY(QFile::copy(path("text"), path("kept.zip")));
    QCOMPARE(run({"replay", "broken.cprlog", "-o", "kept.zip", "--force"}).status, 1);
    QFile kept(path("kept.zip"));
    QVERIFY(kept.open(QIODevice::ReadOnly));
    QCOMPARE(kept.readAll(), QByteArray("Dear instructor,\n"));
    kept.close();
    QCOMPARE(run({"replay", recordedLog, "-o", "kept.zip", "--force"}).status, 0);
    QCOMPARE(run({"info", "kept.zip"}).status, 0);
}

void TestCprsession::exportTables_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("lines");
    QTest::addColumn<QByteArray>("line"); // one that has to be among them

    const auto row = [](const char *name, const QStringList &arguments, int lines,
                        const char *line) {
        QTest::newRow(name) << arguments << lines << QByteArray(line);
    };
    row("events", {"--what", "events", "--columns", "type,start,compDepth,compHandposError"}, 186,
        "CprCompEvent,43380,52,1\r\n");
    row("quoted names", {"--what", "summary", "--columns", "students,totalTime,primaryAdvice"}, 2,
        "\"Mira Holm,J\xc3\xb6rg Aldane\",120,10\r\n");
    row("units", {"--what", "summary", "--columns", "compMeanDepth,students"}, 2,
        "compMeanDepth (hmm),students\r\n");
    row("decimal comma", {"--what", "waves", "--separator", ";"}, 6001, "2100;25,5;0\r\n");
    row("guidelines", {"--what", "guidelines"}, 48, "CompressionDepthMin,5000,hmm\r\n");
    row("two archives", {"session.zip", "--what", "guidelines"}, 95,
        "session.zip,CompressionRateMax,120,rpm\r\n");
    row("JSON", {"--what", "events", "--format", "json", "--columns", "start,ventVolume"}, 187,
        "{\"start\":18180,\"ventVolume\":520},\n");
}

void TestCprsession::exportTables()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, lines);
    QFETCH(QByteArray, line);

    const Answer answer = run(QStringList{"export", "session.zip"} + arguments);
    QCOMPARE(answer.errors, QByteArray());
    QCOMPARE(answer.status, 0);
    QCOMPARE(answer.output.count('\n'), lines);
    QVERIFY2(answer.output.contains(line), answer.output.constData());
}

QTEST_GUILESS_MAIN(TestCprsession)
#include "tst_cprsession.moc"
