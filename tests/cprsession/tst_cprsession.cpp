// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "support/Damage.h"
#include "support/Program.h"
#include "support/Rows.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

#include <sys/stat.h>

using namespace testsupport;

namespace {

const QString recordedLog = QStringLiteral(TEST_DATA_DIR "/two-rescuers.cprlog");

} // namespace

/// The program as a shell sees it: files, output, exit status.
class TestCprsession : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_directory.isValid());
        const Answer answer = run({"replay", recordedLog, "-o", "session.zip"});
        QCOMPARE(answer.errors, QByteArray());
        QCOMPARE(answer.status, 0);

        const QByteArray whole = bytesOf(path("session.zip"));
        QVERIFY(store(path("session.png"), whole)
                && store(path("cut.zip"), whole.left(whole.size() / 2))
                && store(path("empty"), QByteArray()) && store(path("text"), "Dear instructor,\n"));
        QByteArray unscored;
        for (const QByteArray &line : bytesOf(recordedLog).split('\n')) {
            if (!line.contains(" msg 108 ") && !line.contains(" msg 109 "))
                unscored += line + '\n';
        }
        QVERIFY(store(path("unscored.cprlog"), unscored));
        QCOMPARE(run({"replay", "unscored.cprlog", "-o", "unscored.zip"}).status, 0);
        // A name that would be a spreadsheet's formula, and lines and commands of a terminal.
        changeArchive("=1+1\n\u009b.zip", "CPREvents.xml", "Mira Holm",
                      "=1+1&#10;Members       all read\u009b31m\u2028\u202e");
        Members members = membersOf(path("=1+1\n\u009b.zip"));
        QVERIFY(change(members, "CPRWaves.xml", "VENT.WV", "A&#10;B\u009d0;"));
        QVERIFY(saveMembers(path("=1+1\n\u009b.zip"), members));
        QCOMPARE(mkfifo(qPrintable(path("pipe.svg")), 0600), 0);
        QVERIFY(store(path("bare.cprlog"), "cprlog 1\n# nothing\n"));
        QVERIFY(store(path("nothing.zip"), "PK\5\6" + QByteArray(18, '\0')));
        QVERIFY(saveMembers(path("others.zip"), {{"letter.txt", "Dear instructor,\n"}}));
        QVERIFY(
            store(path("broken.cprlog"), "cprlog 1\n0 state CPR_MANIKIN_INIT\n20 header one\n"));
    }

    // The figures follow from the scenario of the recording; its arithmetic stands in
    // data/README.md.
    void infoAgreesWithTheLog()
    {
        const Answer answer = run({"info", "session.zip", "--json"});
        QCOMPARE(answer.status, 0);
        QJsonObject info = QJsonDocument::fromJson(answer.output).object();
        QVERIFY(!info.take("start").toString().isEmpty());
        const QJsonObject recorded = info.take("recorded").toObject();
        QCOMPARE(recorded.value("compression_fraction"), QJsonValue(0.7643));
        QCOMPARE(recorded.value("shock_pauses"),
                 QJsonValue(QJsonArray{QJsonObject{{"time_s", 63},
                                                   {"pre_shock_pause_s", 6.78},
                                                   {"post_shock_pause_s", 3.92},
                                                   {"peri_shock_pause_s", 10.7}}}));
        const QByteArray text = run({"info", "session.zip"}).output;
        QVERIFY2(text.contains("Chest compression fraction          76\u00a0%\n"), text);
        QVERIFY2(text.contains("\nRemarks       1 min 36 s  Change of rescuer\n"), text);
        const QJsonObject expected{
            {"file", "session.zip"},
            {"learners", QJsonArray{"Mira Holm", QString::fromUtf8("Jörg Aldane")}},
            {"manikin_name", QJsonValue()},
            {"manikin", "KDX_ADULT_MALE"},
            {"manikin_text", "KDX ADULT MALE (adult)"},
            {"firmware", "3.2.1.1047"},
            {"protocol", "Compression and ventilation - Two rescuer"},
            {"protocol_text", "CPR with two rescuers"},
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
            {"primary_advice_text", "Put the hands in the right place on the chest."},
            {"secondary_advice_text", "Press deeper."},
            {"guidelines", "2025-EU-STD-A-01-20250901"},
            {"remarks", QJsonArray{QJsonObject{{"time_s", 96}, {"text", "Change of rescuer"}}}},
            {"complete", true},
            {"missing_members", QJsonArray()},
        };
        QCOMPARE(info, expected);
    }

    void wrongInput_data()
    {
        // Names are what the one line on stderr has to mention.
        const auto row = columns<QStringList, int, QByteArray>("arguments", "status", "names");
        row("no verb", {}, 2, "--help");
        row("unknown option", {"info", "--jsom", "session.zip"}, 2, "--jsom");
        for (const char *input : {"missing", "empty", "text", "cut.zip", "."}) {
            row(qPrintable(QString("info of %1").arg(input)), {"info", input}, 1, input);
            row(qPrintable(QString("replay of %1").arg(input)),
                {"replay", input, "-o", "target.zip"}, 1, input);
            row(qPrintable(QString("validate of %1").arg(input)), {"validate", input}, 1, input);
            row(qPrintable(QString("diff of %1").arg(input)), {"diff", "session.zip", input}, 1,
                input);
            row(qPrintable(QString("plot of %1").arg(input)), {"plot", input, "-o", "target.png"},
                1, input);
            row(qPrintable(QString("export of %1").arg(input)),
                {"export", input, "--what", "events", "-o", "target.csv"}, 1, input);
        }
        row("damaged log", {"replay", "broken.cprlog", "-o", "target.zip"}, 1, "broken.cprlog:3: ");
        row("log without records", {"replay", "bare.cprlog", "-o", "target.zip"}, 1, "no record");
        row("unwritable archive", {"replay", recordedLog, "-o", "no/target.zip"}, 1,
            "no/target.zip");
        row("unwritable table",
            {"export", "session.zip", "--what", "events", "-o", "no/target.csv"}, 1,
            "no/target.csv");
        row("unwritable picture", {"plot", "session.zip", "-o", "no/target.png"}, 1,
            "no/target.png");
        row("picture into a pipe", {"plot", "session.zip", "--force", "-o", "pipe.svg"}, 1,
            "regular file");
        row("log into a pipe", {"simulate", "-o", "pipe.svg", "--force"}, 1, "regular file");
        row("unknown picture", {"plot", "session.zip", "-o", "target.bmp"}, 2, "target.bmp");
        row("size of nothing", {"plot", "session.zip", "-o", "target.png", "--size", "0x5"}, 2,
            "0x5");
        row("record from anywhere", {"record", "--from", "tcp:0.0.0.0:1", "-o", "."}, 2, "--from");
        row("record into nowhere", {"record", "--from", "-", "-o", "no"}, 1, "no cannot");
        row("unknown scenario", {"simulate", "--scenario", "sleepy", "--to", "target.zip"}, 2,
            "sleepy");
        row("unwritable log", {"simulate", "-o", "no/target.cprlog"}, 1, "no/target.cprlog");
        row("two targets", {"simulate", "-o", "a.cprlog", "--to", "a.zip"}, 2, "--to");
        row("endless session", {"simulate", "--to", "a.zip", "--duration", "100000"}, 2, "100000");
        row("target is a directory", {"replay", recordedLog, "-o", ".", "--force"}, 1, ".");
        row("existing archive", {"replay", recordedLog, "-o", "session.zip"}, 2, "--force");
        row("existing table", {"export", "session.zip", "--what", "events", "-o", "session.png"}, 2,
            "--force");
        for (const QStringList &verb : {QStringList{"info"},
                                        {"info", "--json"},
                                        {"validate"},
                                        {"diff", "session.zip"},
                                        {"plot", "-o", "target.png"},
                                        {"export", "--what", "waves", "-o", "target.csv"},
                                        {"recover", "-o", "target.zip"},
                                        {"replay", "-o", "target.zip"}})
            for (const char *zip : {"others.zip", "nothing.zip"})
                row(qPrintable(verb.join(' ') + ' ' + zip), verb + QStringList(zip), 1,
                    "is an archive, but there is no session in it");
        row("replay of an archive", {"replay", "session.zip", "-o", "target.zip"}, 1,
            "not a recorded log");
        row("existing picture", {"plot", "session.zip", "-o", "session.png"}, 2, "--force");
        row("paper of a PNG", {"plot", "session.zip", "-o", "target.png", "--paper", "A4"}, 2,
            "--paper");
        row("table over its session",
            {"export", "session.zip", "--what", "events", "-o", "./session.zip"}, 2,
            "session.zip would replace");
        row("picture over its session", {"plot", "session.png", "-o", "session.png"}, 2,
            "would replace");
        row("archive over its log", {"replay", "broken.cprlog", "-o", "broken.cprlog", "--force"},
            2, "would replace");
        row("unknown column", {"export", "session.zip", "--what", "events", "--columns", "depth"},
            2, "depth");
        row("separator of two", {"export", "session.zip", "--what", "events", "--separator", "::"},
            2, "--separator");
        for (const QStringList &wrong : {QStringList{"--from", "nan"},
                                         {"--to", "inf"},
                                         {"--from", "1e300"},
                                         {"--to", "-1"},
                                         {"--size", "100000x100000"},
                                         {"--size", ""}})
            row(qPrintable("plot " + wrong.join(' ')),
                QStringList{"plot", "session.zip", "-o", "target.png"} + wrong, 2,
                wrong.first().toUtf8());
        for (const QStringList &wrong : {QStringList{"--separator", "\""},
                                         {"--separator", "\n"},
                                         {"--separator", "\u00e4"},
                                         {"--jobs", "0"},
                                         {"--jobs", "1000000000"},
                                         {"--output", ""},
                                         {"--columns", ""}})
            row(qPrintable("export " + wrong.join(' ').toHtmlEscaped().simplified()),
                QStringList{"export", "session.zip", "--what", "events"} + wrong, 2,
                wrong.first().toUtf8());
        for (const char *speed : {"1e-300", "inf", "nan"})
            row(qPrintable(QString("speed of %1").arg(speed)),
                {"replay", recordedLog, "-o", "target.zip", "--speed", speed}, 2, "--speed");
        row("seed below zero", {"simulate", "--to", "target.zip", "--seed", "-1"}, 2, "--seed");
        row("names that forge", {"validate", "session.zip", "\x1b]0;\n"}, 2, "\\u001b]0;\\u000a");
        row("speed of zero", {"replay", recordedLog, "-o", "target.zip", "--speed", "0"}, 2,
            "--speed");
    }

    void wrongInput()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, status);
        QFETCH(QByteArray, names);

        static constexpr auto entries = QDir::AllEntries | QDir::NoDotAndDotDot;
        const auto files = [this] {
            QStringList namesAndSizes;
            for (const QFileInfo &file : QDir(m_directory.path()).entryInfoList(entries))
                namesAndSizes << file.fileName() + ' ' + QString::number(file.size());
            return namesAndSizes;
        };
        const QStringList before = files();
        const Answer answer = run(arguments);
        QCOMPARE(answer.status, status);
        QCOMPARE(answer.output, QByteArray());
        QCOMPARE(answer.errors.count('\n'), 1);
        QVERIFY2(answer.errors.contains(names), answer.errors.constData());
        QCOMPARE(files(), before);
    }

    // There is room for the first kilobyte of a file, which is less than a write's buffer holds.
    void fullDiskLeavesTheOldFile()
    {
        const QString limited = "ulimit -f 1; trap '' XFSZ; exec \"$0\" \"$@\"";
        for (const QStringList &arguments :
             {QStringList{"export", "session.zip", "--what", "events", "--force", "-o", "old.svg"},
              QStringList{"plot", "session.zip", "--force", "-o", "old.svg"},
              QStringList{"recover", "cut.zip", "--force", "-o", "old.svg"},
              QStringList{"simulate", "--duration", "5", "--force", "-o", "old.svg"},
              QStringList{"replay", recordedLog, "--force", "-o", "old.svg"}}) {
            QVERIFY(store(path("old.svg"), "old"));
            const QStringList shell{"-c", limited, CPRSESSION_PROGRAM};
            const Answer answer = testsupport::run("sh", shell + arguments, m_directory.path());
            QCOMPARE(answer.status, 1);
            QVERIFY(!answer.errors.isEmpty());
            QCOMPARE(bytesOf(path("old.svg")), "old");
        }
        QVERIFY(QFile::remove(path("old.svg")));
    }

    void fullOutputIsTold_data()
    {
        const auto row = columns<QStringList>("arguments");
        row("info", {"info", "session.zip"});
        row("validate", {"validate", "session.zip"});
        row("list", {"simulate", "--list"});
        row("export", {"export", "session.zip", "--what", "summary"});
        row("help", {"--help"});
    }

    void fullOutputIsTold()
    {
        QFETCH(QStringList, arguments);
        const QStringList shell{"-c", "exec \"$0\" \"$@\" >/dev/full", CPRSESSION_PROGRAM};
        const Answer answer = testsupport::run("sh", shell + arguments, m_directory.path());
        QCOMPARE(answer.status, 1);
        QCOMPARE(answer.errors.count('\n'), 1);
    }

    void textsForgeNothing_data()
    {
        // The lines are those on stdout and stderr; the text is among them.
        const auto row = columns<QStringList, int, QByteArray>("arguments", "lines", "text");
        row("info", {"info"}, 55, "NOT READ: A\\u000aB\\u009d0;");
        row("JSON", {"info", "--json"}, 88, "=1+1\\nMembers       all read\\u009b31m\\u2028");
        row("diff", {"diff", "session.zip"}, 1, "=1+1\\u000a\\u009b.zip cannot be read whole");
        row("validate", {"validate"}, 3, "A\\u000aB\\u009d0;");
        row("recover", {"recover", "-o", "forged.zip"}, 5, "VENT.WV: whole");
        row("table", {"export", "--what", "summary", "--columns", "students"}, 3,
            "\r\n\"'=1+1\\u000aMembers       all read\\u009b31m\\u2028\\u202e,");
    }

    void textsForgeNothing()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, lines);
        QFETCH(QByteArray, text);
        const Answer answer = run(arguments + QStringList("=1+1\n\u009b.zip"));
        const QByteArray all = answer.output + answer.errors;
        QVERIFY2(all.contains(text), all.constData());
        QVERIFY2(all.count('\n') == lines, all.constData());
        for (const uint c : QString::fromUtf8(all).toUcs4())
            QVERIFY2(c == '\n' || c == '\r' || (c >= ' ' && QChar::isPrint(c)), all.constData());
    }

    void recordingsAreSessions()
    {
        QCOMPARE(run({"diff", recordedLog, "session.zip", "--ignore-times"}).status, 0);
        const Answer both = run({"info", "--json", recordedLog, "session.zip"});
        QCOMPARE(both.status, 0);
        const QJsonArray sessions = QJsonDocument::fromJson(both.output).array();
        QCOMPARE(sessions.size(), 2);
        QCOMPARE(sessions[0].toObject()["recorded"], sessions[1].toObject()["recorded"]);
        QCOMPARE(sessions[1].toObject()["primary_advice_text"].toString(),
                 "Put the hands in the right place on the chest.");
        const Answer damaged = run({"info", "broken.cprlog"});
        QCOMPARE(damaged.status, 1);
        QVERIFY(damaged.output.contains("Recording     broken.cprlog:3: expected"));
    }

    void replayKeepsWhatIsThere()
    {
        QVERIFY(QFile::copy(path("text"), path("kept.zip")));
        QCOMPARE(run({"replay", "broken.cprlog", "-o", "kept.zip", "--force"}).status, 1);
        QCOMPARE(bytesOf(path("kept.zip")), QByteArray("Dear instructor,\n"));
        QCOMPARE(run({"replay", recordedLog, "-o", "kept.zip", "--force"}).status, 0);
        QCOMPARE(run({"info", "kept.zip"}).status, 0);
    }

    void exportTables_data()
    {
        // The line has to be among them.
        const auto row = columns<QStringList, int, QByteArray>("arguments", "lines", "line");
        // clang-format off
        row("events", {"--what", "events", "--columns", "type,start,compDepth,compHandposError"}, 186, "CprCompEvent,43380,52,1\r\n");
        row("quoted names", {"--what", "summary", "--columns", "students,totalTime,primaryAdvice"}, 2,
            "\"Mira Holm,J\xc3\xb6rg Aldane\",120,10\r\n");
        const QStringList notReceived{"unscored.zip", "--what", "summary", "--columns",
                                      "overallScore,primaryAdvice,compCount,compMeanDepth,totalTime"};
        row("not received", notReceived, 3, "unscored.zip,,,,,120\r\n");
        row("not received, JSON", notReceived + QStringList{"--format", "json"}, 4,
            "{\"compCount\":null,\"compMeanDepth\":null,\"file\":\"unscored.zip\","
            "\"overallScore\":null,\"primaryAdvice\":null,\"totalTime\":120}");
        row("recorded figures", {"--what", "summary", "--columns", "compMeanDepth,recorded_compression_fraction,recorded_aed_pause_s"}, 2,
            "51.64,0.7643,3\r\n");
        row("raw", {"--what", "summary", "--raw", "--columns", "students"}, 2, "Mira Holm");
        row("units", {"--what", "summary", "--columns", "compMeanDepth,students"}, 2, "compMeanDepth (mm),students\r\n");
        row("units of their own", {"--what", "events", "--columns", "compMeanRate,cprCardTimestamp"}, 186, "compMeanRate (cpm),cprCardTimestamp\r\n");
        row("words", {"--what", "summary", "--columns", "cprProtocol,cprProtocol_text,primaryAdvice_text,manikinType_text"}, 2,
            "4,CPR with two rescuers,Put the hands in the right place on the chest.,KDX ADULT MALE (adult)\r\n");
        row("guideline force", {"--what", "guidelines"}, 48, "CompressionDetectForce,2000,g\r\n");
        row("types in JSON", {"--what", "summary", "--format", "json", "--columns", "manikinFirmwareVersion,compMeanDepth,isScoringModeAED,cprCardTimestamp"}, 3,
            "{\"compMeanDepth\":51.64,\"cprCardTimestamp\":\"2026-01-01T00:00:00Z\",\"isScoringModeAED\":true,\"manikinFirmwareVersion\":\"3.2.1.1047\"}");
        row("not measured", {"--what", "events", "--columns", "start,ventRate,ventVolume"}, 186, "18180,,520\r\n");
        row("decimal comma", {"--what", "waves", "--separator", ";"}, 6001, "2100;25,5;0\r\n");
        row("guidelines", {"--what", "guidelines"}, 48, "CompressionDepthMin,50,mm\r\n");
        row("two archives", {"session.zip", "--what", "guidelines"}, 95, "session.zip,CompressionRateMax,120,rpm\r\n");
        row("JSON", {"--what", "events", "--format", "json", "--columns", "start,ventVolume"}, 187, "{\"start\":18180,\"ventVolume\":520},\n");
        // clang-format on
    }

    void exportTables()
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

    void exportOfMany_data()
    {
        // The rows are those of three sessions; with the titles in CSV.
        const auto row = columns<QStringList, int>("what", "rows");
        row("summary", {"summary"}, 1 + 3);
        row("waves", {"waves"}, 1 + 3 * 6000);
        row("JSON", {"events", "--format", "json"}, 3 * 185);
        row("telemetry", {"telemetry"}, 3);
    }

    // Several processes give what one gives; a bad archive costs nothing but its own rows.
    void exportOfMany()
    {
        QFETCH(QStringList, what);
        QFETCH(int, rows);
        QFile::copy(path("session.zip"), path("b.zip"));
        QFile::copy(path("session.zip"), path("a.zip"));
        changeArchive("holed.zip", "VENT.WV", "", "");
        const QStringList archives{"b.zip", "cut.zip", "holed.zip", "missing", "a.zip"};
        const QStringList rest = archives + QStringList{"--what"} + what;
        Answer one = run(QStringList{"export", "-j", "1"} + rest);
        Answer three = run(QStringList{"export", "-j", "3"} + rest);
        for (QByteArray *output : {&one.output, &three.output}) {
            // The identifier of a session is new each time that it is read.
            static const QRegularExpression identifier("[{][-0-9a-f]{36}[}]");
            *output = QString::fromUtf8(*output).replace(identifier, "id").toUtf8();
        }
        QCOMPARE(three.output, one.output);
        QCOMPARE(three.errors, one.errors);
        QVERIFY(one.status == 1 && three.status == 1);
        const QByteArrayList errors = one.errors.split('\n');
        QCOMPARE(errors.size(), 3 + 1);
        for (int i = 0; i < 3; ++i)
            QVERIFY2(errors.at(i).contains(archives.at(i + 1).toUtf8()), one.errors.constData());
        const int second = one.output.indexOf("holed.zip");
        QVERIFY(one.output.lastIndexOf("b.zip") < second && second < one.output.indexOf("a.zip"));
        const QJsonArray json = QJsonDocument::fromJson(one.output).array();
        QCOMPARE(json.isEmpty() ? one.output.count('\n') : json.size(), rows);
    }

    void scenariosAreSound()
    {
        const Answer list = run({"simulate", "--list"});
        QCOMPARE(list.output.count('\n'), 9);
        for (const QByteArray &line : list.output.split('\n')) {
            if (line.isEmpty())
                continue;
            const QString name = line.left(line.indexOf(' '));
            QCOMPARE(run({"simulate", "--scenario", name, "-o", name + ".cprlog"}).status, 0);
            QCOMPARE(run({"replay", name + ".cprlog", "-o", name + ".zip"}).status, 0);
            const Answer answer = run({"validate", name + ".zip", "--json"});
            QCOMPARE(answer.status, 0);
            const QJsonObject found = QJsonDocument::fromJson(answer.output).object();
            QVERIFY2(found.value("findings").toArray().isEmpty(), answer.output.constData());
        }
    }

    void validateFinds_data()
    {
        // The finding is what a line of the answer has to mention.
        const auto row = columns<QString, QByteArray, QByteArray, int, QByteArray>(
            "member", "from", "to", "status", "finding");
        // clang-format off
        row("wave left out", "VENT.WV", "", "", 1, "VENT.WV");
        row("half a sample", "COMP.WV", QByteArray(5, '\0'), QByteArray(4, '\0'), 0, "COMP.WV");
        row("wave too short", "COMP.WV", QByteArray(6, '\0'), QByteArray(4, '\0'), 0, "5999");
        row("XML cut", "CPREvents.xml", "</eventList>", "", 1, "CPREvents.xml");
        row("unknown kind", "CPREvents.xml", "\"CprVentEvent\"", "\"CprVent\"", 0, "CprVent");
        row("text for a number", "CPREvents.xml", "\"compDepth\" value=\"51\"", "\"compDepth\" value=\"deep\"", 0, "deep");
        row("wrong unit", "CPREvents.xml", "value=\"51\" units=\"mm\"", "value=\"51\" units=\"cm\"", 0, "cm");
        row("unknown parameter", "CPREvents.xml", "\"compPeakForce\"", "\"compPeakColour\"", 0, "compPeakColour");
        row("rate of 0", "CPRWaves.xml", "sampleRate=\"50\"", "sampleRate=\"0\"", 0, "sampleRate");
        row("unknown guideline", "CPRGuidelines.xml", "<CompressionRateMin ", "<CompressionRateMean ", 0, "CompressionRateMean");
        row("guideline that is no number", "CPRGuidelines.xml", "<CompressionRateMin value=\"100\"",
            "<CompressionRateMin value=\"many\"", 0, "many");
        // clang-format on
    }

    void validateFinds()
    {
        QFETCH(QString, member);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(int, status);
        QFETCH(QByteArray, finding);

        changeArchive("changed.zip", member, from, to);
        const Answer answer = run({"validate", "changed.zip"});
        QCOMPARE(answer.status, status);
        bool isTold = false;
        for (const QByteArray &line : answer.output.split('\n'))
            isTold = isTold || (line.contains(member.toUtf8()) && line.contains(finding));
        QVERIFY2(isTold, answer.output.constData());
    }

    void diffTells_data()
    {
        // The words stand in the one line that tells the difference.
        const auto row = columns<QString, QByteArray, QByteArray, QByteArrayList>("member", "from",
                                                                                  "to", "words");
        row("depth", "CPREvents.xml", "\"compDepth\" value=\"51\"", "\"compDepth\" value=\"52.5\"",
            {"CprCompEvent", "2000", "compDepth", "51", "52.5"});
        row("event left out", "CPREvents.xml", "<evt type=\"ShockDelivered\"",
            "<evt type=\"Nothing\"", {"ShockDelivered", "63000", "only in session.zip"});
        row("time", "CPREvents.xml", "\"CprVentEvent\" msecs=\"18180\"",
            "\"CprVentEvent\" msecs=\"18200\"", {"CprVentEvent", "18180", "18200"});
        row("score", "CPREvents.xml", "\"overallScore\" value=\"68\"",
            "\"overallScore\" value=\"86\"", {"score", "overallScore", "68", "86"});
        row("learner", "CPREvents.xml", "Mira Holm", "Mira Halm", {"Mira Holm", "Mira Halm"});
        row("guideline", "CPRGuidelines.xml", "<CompressionRateMax value=\"120\"",
            "<CompressionRateMax value=\"125\"", {"CompressionRateMax", "120", "125"});
    }

    void diffTells()
    {
        QFETCH(QString, member);
        QFETCH(QByteArray, from);
        QFETCH(QByteArray, to);
        QFETCH(QByteArrayList, words);

        const Answer same = run({"diff", "session.zip", "session.zip"});
        QCOMPARE(same.output, QByteArray());
        QCOMPARE(same.status, 0);
        changeArchive("changed.zip", member, from, to);
        const Answer answer = run({"diff", "session.zip", "changed.zip"});
        QCOMPARE(answer.status, 1);
        bool isTold = false;
        for (const QByteArray &line : answer.output.split('\n')) {
            isTold = isTold
                || std::all_of(words.cbegin(), words.cend(),
                               [&line](const QByteArray &word) { return line.contains(word); });
        }
        QVERIFY2(isTold, answer.output.constData());
    }

    // The numbers are those of diffTells().
    void diffSumsUp()
    {
        changeArchive("changed.zip", "CPREvents.xml", "\"compDepth\" value=\"51\"",
                      "\"compDepth\" value=\"52.5\"");
        Members members = membersOf(path("changed.zip"));
        QVERIFY(change(members, "CPREvents.xml", "<evt type=\"ShockDelivered\"", "<evt type=\"No\"")
                && change(members, "CPREvents.xml", "\"compMeanDepth\" value=\"5164\"",
                          "\"compMeanDepth\" value=\"5000\"")
                && change(members, "CPRGuidelines.xml", "<CompressionDepthMax value=\"6000\"",
                          "<CompressionDepthMax value=\"6500\"")
                && saveMembers(path("changed.zip"), members));
        const Answer summary = run({"diff", "--summary", "session.zip", "changed.zip"});
        QCOMPARE(summary.status, 1);
        QCOMPARE(summary.output,
                 "statistics: 1 changed\nevents CprCompEvent: 1 changed\n"
                 "events ShockDelivered: 1 only in session.zip\nguidelines: 1 changed\n");
        const QByteArray lines = run({"diff", "session.zip", "changed.zip"}).output;
        QVERIFY2(lines.contains("compMeanDepth 51.64 mm / 50 mm\n"), lines);
        QVERIFY2(lines.contains("CompressionDepthMax 60 mm / 65 mm\n"), lines);
        QCOMPARE(run({"diff", "--summary", "session.zip", "session.zip"}).output, QByteArray());
    }

    void plotDraws_data()
    {
        const auto row = columns<QString, QByteArray, QStringList>("file", "contains", "arguments");
        const QStringList size{"--size", "640x400", "--to", "60"};
        row("png", "picture.png", "\x89PNG", size);
        row("svg", "picture.svg", "<?xml", size);
        row("pdf", "picture.pdf", "%PDF", size);
        row("German", "german.svg", "Beatmungen", {"--language", "de"});
        row("dark", "dark.svg", "#14171b", {"--dark"});
        row("A4", "a4.pdf", "/MediaBox [0 0 842.", {"--paper", "A4"}); // 297 x 210 mm in points
        row("Letter", "letter.pdf", "/MediaBox [0 0 612.", {"--paper", "Letter", "--portrait"});
    }

    void plotDraws()
    {
        QFETCH(QString, file);
        QFETCH(QByteArray, contains);
        QFETCH(QStringList, arguments);
        const Answer answer = run(QStringList{"plot", "session.zip", "-o", file} + arguments);
        QCOMPARE(answer.errors, QByteArray());
        QCOMPARE(answer.status, 0);
        QVERIFY(bytesOf(path(file)).contains(contains));
        if (file.endsWith("png")) {
            const QImage image(path(file));
            QCOMPARE(image.size(), QSize(640, 400));
            QVERIFY(image.colorTable().size() != 1);
        }
    }

    // A log that another program still writes: the session is saved when the scores have come.
    void followWaitsForTheScores()
    {
        const QByteArray whole = bytesOf(recordedLog);
        QFile log(path("growing.cprlog"));
        QVERIFY(log.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        const int half = whole.size() / 2; // inside a line
        log.write(whole.left(half));

        QProcess process;
        process.setWorkingDirectory(m_directory.path());
        process.start(CPRSESSION_PROGRAM,
                      {"replay", "growing.cprlog", "-o", "grown.zip", "--follow"});
        QVERIFY(process.waitForStarted());
        QVERIFY(!process.waitForFinished(300));
        QVERIFY(!QFile::exists(path("grown.zip")));
        log.write(whole.mid(half));
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);
        QCOMPARE(run({"diff", "session.zip", "grown.zip", "--ignore-times"}).status, 0);
    }

    void lostLogIsSavedSoFar_data()
    {
        // The log begins with a third of the recording and half a line; the rest comes by the
        // shell.
        const auto row = columns<QString, QByteArray>("change", "reason");
        row("Ctrl-C", "kill -INT $0", "expected");
        row("cut", ": >followed.cprlog", "it was cut");
        row("deleted", "rm followed.cprlog", "it is not there any more");
        row("replaced", "mv other.cprlog followed.cprlog", "it was replaced");
        row("damaged", "echo x >>followed.cprlog", "expected");
        row("not followed", "", "expected");
    }

    void lostLogIsSavedSoFar()
    {
        QFETCH(QString, change);
        QFETCH(QByteArray, reason);
        const QByteArray whole = bytesOf(recordedLog);
        const QByteArray begin = whole.left(whole.indexOf('\n', whole.size() / 3) + 1);
        QVERIFY(store(path("followed.cprlog"), begin + "40123 wa") && store(path("so-far"), begin)
                && store(path("other.cprlog"), whole));
        QProcess process;
        process.setWorkingDirectory(m_directory.path());
        QStringList arguments{"replay", "followed.cprlog", "-o", "lost.zip", "--force"};
        if (!change.isEmpty())
            arguments.append("--follow");
        process.start(CPRSESSION_PROGRAM, arguments);
        const QByteArray last = begin.mid(begin.lastIndexOf('\n', begin.size() - 2));
        QTRY_VERIFY(change.isEmpty() || bytesOf(path("lost.zip.journal")).endsWith(last));
        QProcess::execute("sh",
                          {"-c", "cd " + m_directory.path() + "; " + change,
                           QString::number(process.processId())});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 1);
        const QByteArray errors = process.readAllStandardError();
        QVERIFY2(errors.contains(reason) && errors.contains("is saved as far"), errors.constData());
        QCOMPARE(run({"replay", "so-far", "-o", "so-far.zip", "--force"}).status, 0);
        QCOMPARE(run({"diff", "lost.zip", "so-far.zip", "--ignore-times"}).status, 0);
        QVERIFY(!QFile::exists(path("lost.zip.journal")));
    }

    void closedStderrIsNoOutput()
    {
        const QString closed = "exec \"$0\" \"$@\" 2>&-";
        testsupport::run("sh",
                         {"-c", closed, CPRSESSION_PROGRAM, "export", "session.zip", "missing",
                          "--what", "guidelines", "-o", "closed.csv"},
                         m_directory.path());
        QVERIFY(bytesOf(path("closed.csv")).startsWith("file,"));
        QVERIFY(!bytesOf(path("closed.csv")).contains("cprsession:"));
    }

    // The recording lasts 123 s.
    void speedPacesTheLog()
    {
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(run({"replay", recordedLog, "-o", "paced.zip", "--speed", "400"}).status, 0);
        QVERIFY(clock.elapsed() >= 123220 / 400);
    }

    void shellsKnowEveryVerb_data()
    {
        // The option is as it is written for the shell.
        const auto row = columns<QByteArray>("option");
        row("bash", "--separator");
        row("zsh", "\"--separator[");
        row("fish", "-l separator");
        row("man", "\\-\\-separator");
    }

    void shellsKnowEveryVerb()
    {
        QFETCH(QByteArray, option);
        const Answer answer = run({"generate", QTest::currentDataTag()});
        QCOMPARE(answer.status, 0);
        for (const char *verb : {"simulate", "replay", "record", "recover", "info", "validate",
                                 "export", "plot", "diff", "report", "class"})
            QVERIFY2(answer.output.contains(verb), verb);
        QVERIFY2(answer.output.contains(option), answer.output.constData());
        QVERIFY(!answer.output.contains("generate"));
    }

private:
    // Makes an archive like session.zip in which the first \a from in \a member is \a to. An empty
    // \a from leaves the member out.
    void changeArchive(const QString &name, const QString &member, const QByteArray &from,
                       const QByteArray &to) const
    {
        Members members = membersOf(path("session.zip"));
        QVERIFY2(change(members, member, from, to), from.constData());
        QVERIFY(saveMembers(path(name), members));
    }

    Answer run(const QStringList &arguments) const
    {
        return testsupport::run(CPRSESSION_PROGRAM, arguments, m_directory.path());
    }
    QString path(const QString &name) const { return m_directory.filePath(name); }

    QTemporaryDir m_directory;
};

QTEST_GUILESS_MAIN(TestCprsession)
#include "tst_cprsession.moc"
