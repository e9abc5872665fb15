// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Report.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QSaveFile>

#include <algorithm>
#include <cstdio>

namespace bench {

std::vector<Row> allRows()
{
    std::vector<Row> rows;
    for (const std::vector<Row> &part : {archiveRows(), waveRows(), memoryRows(), liveRows(),
                                         queryRows(), peerRows(), pictureRows()}) {
        rows.insert(rows.end(), part.begin(), part.end());
    }
    std::sort(rows.begin(), rows.end(),
              [](const Row &a, const Row &b) { return a.number < b.number; });
    return rows;
}

namespace {

constexpr int wrongUsage = 2;

// clang-format off
const QCommandLineOption listOption(QStringLiteral("list"), QStringLiteral("Show the rows."));
const QCommandLineOption onlyOption(QStringLiteral("only"), QStringLiteral("Measure these rows."), QStringLiteral("N,M"));
const QCommandLineOption pairsOption(QStringLiteral("pairs"), QStringLiteral("How often each comparison is made."), QStringLiteral("N"), QStringLiteral("9"));
const QCommandLineOption peersOption(QStringLiteral("peers"), QStringLiteral("Compare with other forms of a session as well."));
const QCommandLineOption plotOption(QStringLiteral("plot"), QStringLiteral("Measure sessions from half a minute to a day and draw what they cost."), QStringLiteral("FILE.svg|FILE.png"));
const QCommandLineOption jsonOption(QStringLiteral("json"), QStringLiteral("Write all figures to this file."), QStringLiteral("FILE"));
const QCommandLineOption reportOption(QStringLiteral("report"), QStringLiteral("Write a page about all figures."), QStringLiteral("FILE.md"));
const QCommandLineOption targetOption{QLatin1String(instructionTarget)};
// clang-format on

void print(const QString &text)
{
    showProgress(QString());
    std::fputs(text.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

int fail(const QString &reason, int status)
{
    showProgress(QString());
    std::fprintf(stderr, "cprbench: %s\n", qPrintable(reason));
    return status;
}

// The rows that --only names; none, and the reason in problem, when there is no such row.
std::vector<Row> wantedRows(const QCommandLineParser &parser, QString *problem)
{
    std::vector<Row> rows = allRows();
    if (!parser.isSet(onlyOption))
        return rows;
    std::vector<Row> wanted;
    const QStringList numbers = parser.value(onlyOption).split(QLatin1Char(','));
    for (const QString &number : numbers) {
        const auto row = std::find_if(rows.begin(), rows.end(), [&number](const Row &candidate) {
            return number == QString::number(candidate.number);
        });
        if (row != rows.end())
            wanted.push_back(*row);
        else
            *problem = QStringLiteral("there is no row \"%1\"; --list shows them").arg(number);
    }
    return wanted;
}

bool writeFile(const QString &name, const QByteArray &bytes)
{
    QSaveFile file(name);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

int measure(const QCommandLineParser &parser, const std::vector<Row> &rows, int pairs)
{
    Bench bench;
    bench.pairs = pairs;
    Report report;
    print(tableHead());
    for (const Row &row : rows) {
        showProgress(QString::fromUtf8(row.what));
        report.results.push_back({row, row.measure(bench)});
        print(tableRows(report.results.back()));
    }
    if (parser.isSet(peersOption)) {
        report.peers = comparePeers(bench);
        print(QLatin1Char('\n') + peerTable(report.peers));
    }
    const QString plot = parser.value(plotOption);
    const QString page = parser.value(reportOption);
    const QString json = parser.value(jsonOption);
    for (const QString &file : {plot, page, json}) {
        if (!file.isEmpty())
            QDir().mkpath(QFileInfo(file).path());
    }
    QString unwritable;
    if (!plot.isEmpty()) {
        report.scale = measureScale(bench);
        report.plot = QFileInfo(page).dir().relativeFilePath(QFileInfo(plot).absoluteFilePath());
        if (!drawScale(plot, report.scale))
            unwritable = plot;
    }
    showProgress(QString());
    if (!json.isEmpty() && !writeFile(json, toJson(report)))
        unwritable = json;
    if (!page.isEmpty() && !writeFile(page, toPage(report)))
        unwritable = page;
    return unwritable.isEmpty()
        ? EXIT_SUCCESS
        : fail(QStringLiteral("%1 cannot be written").arg(unwritable), EXIT_FAILURE);
}

int run(const QCoreApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Measures the library against yardsticks in the same run."));
    parser.addHelpOption();
    parser.addOptions({listOption, onlyOption, pairsOption, peersOption, plotOption, jsonOption,
                       reportOption, targetOption});
    parser.process(application);
    if (parser.isSet(targetOption))
        return runInstructionTarget();

    QString problem;
    const std::vector<Row> rows = wantedRows(parser, &problem);
    const int pairs = parser.value(pairsOption).toInt();
    if (pairs < 1)
        problem = QStringLiteral("--pairs takes a number from 1 on");
    if (parser.isSet(plotOption) && !canDraw(parser.value(plotOption)))
        problem = QStringLiteral("--plot takes the name of an .svg or .png file");
    if (!problem.isEmpty())
        return fail(problem, wrongUsage);
    if (!parser.isSet(listOption))
        return measure(parser, rows, pairs);
    for (const Row &row : rows)
        print(QStringLiteral("%1  %2\n").arg(row.number, 2).arg(QString::fromUtf8(row.what)));
    return EXIT_SUCCESS;
}

} // namespace

} // namespace bench

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // pictures, no windows
    // Where there is none, as in a build job, Qt would complain on stderr.
    const QTemporaryDir runtimeDirectory;
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", runtimeDirectory.path().toLocal8Bit());
    const QGuiApplication application(argc, argv);
    return bench::run(application);
}
