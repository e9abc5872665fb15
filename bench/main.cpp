// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Row.h"

#include <QCommandLineParser>
#include <QDate>
#include <QFile>
#include <QGuiApplication>
#include <QSysInfo>
#include <QThread>

#include <algorithm>
#include <cstdio>

namespace bench {

namespace {

constexpr int wrongUsage = 2;

// clang-format off
const QCommandLineOption listOption(QStringLiteral("list"), QStringLiteral("Show the rows."));
const QCommandLineOption onlyOption(QStringLiteral("only"), QStringLiteral("Measure these rows."), QStringLiteral("N,M"));
const QCommandLineOption pairsOption(QStringLiteral("pairs"), QStringLiteral("How often each comparison is made."), QStringLiteral("N"), QStringLiteral("9"));
const QCommandLineOption pageOption(QStringLiteral("page"), QStringLiteral("Print a page; it has sessions from half a minute to a day and other forms of a session as well."));
// clang-format on

QString utf8(const char *text)
{
    return QString::fromUtf8(text);
}

void print(const QString &text)
{
    showProgress(QString());
    std::fputs(text.toUtf8().constData(), stdout);
    std::fflush(stdout);
}

int fail(const char *reason)
{
    std::fprintf(stderr, "cprbench: %s\n", reason);
    return wrongUsage;
}

QString processor()
{
    QFile file(QStringLiteral("/proc/cpuinfo"));
    if (file.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = file.readAll().split('\n');
        for (const QByteArray &item : lines) {
            if (item.startsWith("model name"))
                return QString::fromLatin1(item.mid(item.indexOf(':') + 1).trimmed());
        }
    }
    return QSysInfo::currentCpuArchitecture();
}

void printPageHead()
{
    print(utf8("# Performance\n\n"
               "Each figure is a ratio of two things that were measured in one run: pairs in turn, "
               "CPU\n"
               "time of the thread, median of the pairs. The yardsticks do no more than they have "
               "to.\n"
               "Memory is counted at the allocator. `./run bench --plot` measures and writes this\n"
               "page.\n\n"
               "Measured on: %1, %2 cores, %3, Qt %4, %5\n\n")
              .arg(processor(), QString::number(QThread::idealThreadCount()),
                   QSysInfo::prettyProductName(), utf8(qVersion()),
                   QDate::currentDate().toString(Qt::ISODate)));
}

void printPageTail(Bench &bench)
{
    print(utf8("\n## From half a minute to a day\n\n"
               "![What a session costs over its length](performance.svg)\n\n"
               "A session costs something before its first event: the manikin's introduction, "
               "the\n"
               "guidelines and the statistics. Short sessions show it. An event's share has that "
               "of the\n"
               "waves in it. The picture is drawn from this table:\n\n"));
    print(lengthTable(bench));
    print(utf8("\n## What a team would take instead\n\n"
               "The same session in other forms, each written for speed. The peers write\n"
               "from and read into plain structures, while the library makes an observable\n"
               "object of every event, numbers it and announces it.\n\n"));
    print(peerTable(bench));
}

std::vector<Row> allRows()
{
    std::vector<Row> rows;
    for (const auto part : {archiveRows, classRows, libraryRows, linkRows, liveRows, pageRows,
                            peerRows, pictureRows}) {
        const std::vector<Row> some = part();
        rows.insert(rows.end(), some.begin(), some.end());
    }
    std::sort(rows.begin(), rows.end(),
              [](const Row &a, const Row &b) { return a.number < b.number; });
    return rows;
}

// The rows that --only names, or all.
std::vector<Row> wantedRows(const QCommandLineParser &parser)
{
    std::vector<Row> rows = allRows();
    if (parser.isSet(onlyOption)) {
        const QStringList numbers = parser.value(onlyOption).split(QLatin1Char(','));
        rows.erase(std::remove_if(rows.begin(), rows.end(),
                                  [&numbers](const Row &row) {
                                      return !numbers.contains(QString::number(row.number));
                                  }),
                   rows.end());
    }
    return rows;
}

QString tableRow(const Row &row, const Figure &figure)
{
    const QString what =
        utf8(row.what) + (figure.label.isEmpty() ? QString() : QStringLiteral(": ") + figure.label);
    return tableLine(
        {QString::number(row.number), what, utf8(row.yardstick),
         QStringLiteral("≤ %1×").arg(figure.goal),
         QString::number(figure.ratio, 'f', figure.ratio < 0.1 ? 3 : 2) + QStringLiteral("×"),
         amount(figure.subject, figure.unit) + QStringLiteral(" / ")
             + amount(figure.reference, figure.unit),
         utf8(figure.isMissed() ? "MISS" : "pass")});
}

void measure(Bench &bench, const std::vector<Row> &rows)
{
    print(utf8("| # | what (an hour unless it says otherwise) | yardstick in the same run | goal "
               "| figure | library / yardstick | |\n"
               "|---|---|---|---|---|---|---|\n"));
    for (const Row &row : rows) {
        showProgress(utf8(row.what));
        for (const Figure &figure : row.measure(bench))
            print(tableRow(row, figure));
    }
}

int run(const QCoreApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Measures the library against yardsticks in the same run."));
    parser.addHelpOption();
    parser.addOptions({listOption, onlyOption, pairsOption, pageOption});
    parser.process(application);

    const std::vector<Row> rows = wantedRows(parser);
    if (rows.empty())
        return fail("there is no such row; --list shows them");
    Bench bench;
    bench.pairs = parser.value(pairsOption).toInt();
    if (bench.pairs < 1)
        return fail("--pairs takes a number from 1 on");
    if (parser.isSet(listOption)) {
        for (const Row &row : rows)
            print(QStringLiteral("%1  %2\n").arg(row.number, 2).arg(utf8(row.what)));
        return EXIT_SUCCESS;
    }
    if (parser.isSet(pageOption))
        printPageHead();
    measure(bench, rows);
    if (parser.isSet(pageOption))
        printPageTail(bench);
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
