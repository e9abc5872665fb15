// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Row.h"

#include "sessionlibrary/ArchiveFolder.h"
#include "sessionlibrary/IndexColumns.h"
#include "sessionlibrary/IndexWriter.h"
#include "sessionlibrary/LibraryScan.h"

#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>

#include <algorithm>

#include <sys/stat.h>
#include <unistd.h>

namespace bench {

namespace {

using namespace sessionlibrary;

constexpr int many = 10000; // a training centre's years
constexpr int pageSize = 100;

// Archives of one minute: names of one file, so that they take no room. Their paths.
QStringList makeFolder(Bench &bench, const QString &folder, int count)
{
    QStringList paths;
    const QByteArray archive = QFile::encodeName(bench.sessions.archive(60));
    QDir().mkpath(folder);
    for (int i = 0; i < count; ++i) {
        paths.append(folder + QStringLiteral("/session-%1.zip").arg(i, 5, 10, QLatin1Char('0')));
        if (::link(archive.constData(), QFile::encodeName(paths.last()).constData()) != 0)
            qFatal("A file cannot have another name");
    }
    return paths;
}

// An empty index lies beside the folder, in memory.
void openNew(SessionLibrary &library, const QString &folder)
{
    const QString data = folder + QStringLiteral(".data");
    qputenv("XDG_DATA_HOME", QFile::encodeName(data));
    QDir(data).removeRecursively();
    if (!library.open(folder).isOpen)
        qFatal("A library cannot be opened");
}

// The folder and index of 10,000 sessions of 400 learners.
struct LargeLibrary {
    explicit LargeLibrary(Bench &bench)
        : folder(bench.sessions.file(QStringLiteral("many"))),
          paths(makeFolder(bench, folder, many))
    {
        openNew(library, folder);
        constexpr int learners = 400;
        constexpr int names = 20;
        constexpr qint64 secondsBetween = 5000;
        const SessionEntry model = readEntry(folder, QFileInfo(paths.first()).fileName()).entry;
        const QDateTime first(QDate(2020, 1, 1), QTime(8, 0), Qt::UTC);
        std::vector<SessionEntry> entries;
        for (int i = 0; i < many; ++i) {
            SessionEntry entry = model;
            const int learner = i * 7 % learners;
            entry.file = QFileInfo(paths.at(i)).fileName();
            entry.figures.learners = QStringList(QStringLiteral("%1ira %2olm")
                                                     .arg(QChar('A' + learner % names))
                                                     .arg(QChar('A' + learner / names)));
            entry.figures.startTime = first.addSecs(i * secondsBetween).toString(Qt::ISODate);
            entry.figures.overallScore = i % 101;
            entries.push_back(entry);
        }
        if (!IndexWriter(library).store(entries))
            qFatal("A library cannot be written");
    }

    QString folder;
    QStringList paths;
    SessionLibrary library;
};

LargeLibrary &largeLibrary(Bench &bench)
{
    static LargeLibrary library(bench);
    return library;
}

std::vector<Figure> measureScan(Bench &bench)
{
    constexpr int count = 1000;
    const QString folder = bench.sessions.file(QStringLiteral("new"));
    const QStringList paths = makeFolder(bench, folder, count);
    const auto subject = [&folder](Clock &clock) {
        SessionLibrary library;
        openNew(library, folder);
        clock.start();
        if (scan(library).added != count)
            qFatal("A folder cannot be scanned");
        clock.stop();
    };
    const auto reference = [&paths](Clock &clock) {
        clock.start();
        for (const QString &path : paths) {
            if (!loadedSession(path))
                qFatal("An archive cannot be loaded");
        }
        clock.stop();
    };
    return {withGoal(compare((bench.pairs + 2) / 3, subject, reference, count), 1.15)};
}

std::vector<Figure> measureRescan(Bench &bench)
{
    LargeLibrary &large = largeLibrary(bench);
    std::vector<QByteArray> names;
    for (const QString &path : qAsConst(large.paths))
        names.push_back(QFile::encodeName(path));
    const auto subject = [&large](Clock &clock) {
        clock.start();
        if (scan(large.library).unchanged != many)
            qFatal("A folder cannot be scanned");
        clock.stop();
    };
    const auto reference = [&names](Clock &clock) {
        struct stat status { };
        clock.start();
        for (const QByteArray &name : names)
            keep(::stat(name.constData(), &status));
        clock.stop();
    };
    return {withGoal(compare(bench.pairs, subject, reference, many), 3)};
}

std::vector<Figure> measurePage(Bench &bench)
{
    LargeLibrary &large = largeLibrary(bench);
    const QDir data(large.folder + QStringLiteral(".data/cprlibrary"));
    const QString index = data.filePath(data.entryList(QDir::Dirs | QDir::NoDotAndDotDot).first()
                                        + QStringLiteral("/index.sqlite"));
    QSqlDatabase database =
        QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("page"));
    database.setDatabaseName(index);
    database.open();
    const QString select = QStringLiteral("SELECT %1 FROM sessions ORDER BY start_ms DESC LIMIT %2")
                               .arg(columnNames())
                               .arg(pageSize);
    const auto subject = [&large](Clock &clock) {
        clock.start();
        if (large.library.page({}, {}, 0, pageSize)->size() != pageSize)
            qFatal("A library cannot be listed");
        clock.stop();
    };
    const auto reference = [&](Clock &clock) {
        clock.start();
        QSqlQuery query(database);
        query.setForwardOnly(true);
        query.exec(select);
        const int columns = int(indexColumns().size());
        while (query.next()) {
            for (int column = 0; column < columns; ++column)
                keep(query.value(column));
        }
        clock.stop();
    };
    const Figure figure = compare(bench.pairs, subject, reference);
    database = QSqlDatabase();
    QSqlDatabase::removeDatabase(QStringLiteral("page"));
    return {withGoal(figure, 2)};
}

// What a window asks after each key: how many, and the first page of them.
std::vector<Figure> measureSearch(Bench &bench)
{
    constexpr double frameNs = 16e6;
    constexpr double share = 0.99;
    LargeLibrary &large = largeLibrary(bench);
    const QStringList typed{QStringLiteral("Mira Holm"), QStringLiteral("session-00"),
                            QStringLiteral("one rescuer a"), QStringLiteral("xyz")};
    std::vector<double> times;
    for (int i = 0; i < bench.pairs; ++i) {
        for (const QString &text : typed) {
            for (int keys = 1; keys <= text.size(); ++keys) {
                Clock clock;
                Filter filter;
                filter.text = text.left(keys);
                clock.start();
                keep(large.library.count(filter));
                keep(large.library.page(filter, {}, 0, pageSize));
                clock.stop();
                times.push_back(clock.elapsed());
            }
        }
    }
    std::sort(times.begin(), times.end());
    Figure figure;
    figure.subject = times[std::size_t(share * double(times.size() - 1))];
    figure.reference = frameNs;
    figure.ratio = figure.subject / frameNs;
    return {withGoal(figure, 1)};
}

} // namespace

std::vector<Row> libraryRows()
{
    return {{16, "scan of 1,000 new archives, one thread", "loading the same", measureScan},
            {17, "rescan of 10,000 unchanged archives", "stat of the same files", measureRescan},
            {18, "first page of the list, 10,000 sessions", "the bare SQL query through Qt SQL",
             measurePage},
            {19, "a key of a search, 10,000 sessions, 99th percentile", "a frame of 16 ms",
             measureSearch}};
}

} // namespace bench
