// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Heap.h"
#include "Row.h"
#include "manikinlog/ManikinLogPlayer.h"
#include "manikinsim/Scenario.h"
#include "manikinsim/Simulator.h"

#include <QFileInfo>
#include <QStringList>

namespace bench {

namespace {

// Hands all that the manikin sends to the session. Simulating it is not measured, so the records
// are made in pieces; all of a day would not leave room for anything else.
double feed(int seconds, CPRData &session)
{
    constexpr std::size_t piece = 10000;
    manikinsim::Simulator simulator(training(seconds), 1);
    manikinlog::ManikinLogPlayer player(&session);
    std::vector<manikinlog::Record> records;
    manikinlog::Record record;
    Clock clock;
    for (bool more = true; more;) {
        records.clear();
        while (records.size() < piece && (more = simulator.next(record)))
            records.push_back(record);
        clock.start();
        for (const manikinlog::Record &item : records)
            player.play(item);
        clock.stop();
    }
    return clock.elapsed();
}

template <typename Measure> double medianOf(int rounds, Measure measure)
{
    std::vector<double> values;
    for (int i = 0; i < rounds; ++i)
        values.push_back(measure());
    return median(values);
}

// A line of the table. Units stand in its head alone, so that a program can draw it.
QString measureLength(Bench &bench, double hours)
{
    const int seconds = qRound(hours * secondsPerHour);
    // Long ones vary less and need more time.
    const int rounds = seconds <= secondsPerHour ? bench.pairs : 3;
    const QString file = bench.sessions.file(QStringLiteral("length.zip"));
    const double live = medianOf(rounds, [seconds] {
        CPRData session;
        return feed(seconds, session);
    });

    CPRData session;
    feed(seconds, session);
    int events = 0;
    while (session.cprEvents()->at(events))
        ++events;
    const int samples = session.compressionData()->count() + session.ventilationData()->count();
    const double saving = medianOf(rounds, [&] {
        Clock clock;
        clock.start();
        save(file, session);
        clock.stop();
        return clock.elapsed();
    });
    const double loading = medianOf(rounds, [&] {
        CPRData loaded;
        Clock clock;
        clock.start();
        load(file, loaded);
        clock.stop();
        return clock.elapsed();
    });
    const HeapCount heap;
    const std::unique_ptr<CPRData> loaded = loadedSession(file);
    const auto memory = static_cast<double>(heap.live());

    constexpr double second = 1e9;
    constexpr double megabyte = 1e6;
    QStringList cells{QString::number(hours), QString::number(events), QString::number(samples)};
    for (const double value : {loading / second, saving / second, live / second, memory / megabyte,
                               static_cast<double>(QFileInfo(file).size()) / megabyte}) {
        constexpr int digits = 3;
        cells.append(QString::number(value, 'g', digits));
    }
    return tableLine(cells);
}

} // namespace

QString lengthTable(Bench &bench)
{
    QString text = QStringLiteral(
        "| hours | events | samples | load, s | save, s | live, s | memory, MB | file, MB |\n"
        "|---|---|---|---|---|---|---|---|\n");
    for (const double hours : {0.01, 0.03, 0.1, 0.3, 1.0, 3.0, 10.0, 24.0}) {
        showProgress(QStringLiteral("a session of %1 h").arg(hours));
        text += measureLength(bench, hours);
    }
    return text;
}

} // namespace bench
