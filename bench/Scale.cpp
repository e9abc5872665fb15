// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Scale.h"

#include "Heap.h"
#include "ManikinLogPlayer.h"
#include "Row.h"
#include "Scenario.h"
#include "Simulator.h"

#include <QFileInfo>

namespace bench {

namespace {

enum class Part { All, Messages, Waves };

bool belongsTo(const manikinlog::Record &record, Part part)
{
    const bool isMessage = std::holds_alternative<manikinlog::Message>(record.entry);
    const bool isWave = std::holds_alternative<manikinlog::WaveHeader>(record.entry)
        || std::holds_alternative<manikinlog::WaveSample>(record.entry);
    return part == Part::All || (isMessage && part == Part::Messages)
        || (isWave && part == Part::Waves) || (!isMessage && !isWave);
}

// Hands a part of what the manikin sends to the session. Simulating it is not measured, so the
// records are made in pieces; all of a day would not leave room for anything else.
double feed(int seconds, Part part, CPRData &session)
{
    constexpr std::size_t piece = 10000;
    manikinsim::Simulator simulator(training(seconds), 1);
    manikinlog::ManikinLogPlayer player(&session);
    std::vector<manikinlog::Record> records;
    manikinlog::Record record;
    Clock clock;
    for (bool more = true; more;) {
        records.clear();
        while (records.size() < piece && (more = simulator.next(record))) {
            if (belongsTo(record, part))
                records.push_back(record);
        }
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

double feedMedian(int rounds, int seconds, Part part)
{
    return medianOf(rounds, [seconds, part] {
        CPRData session;
        return feed(seconds, part, session);
    });
}

ScalePoint measurePoint(Bench &bench, int seconds)
{
    // Long ones vary less and take their time.
    const int rounds = seconds <= secondsPerHour ? bench.pairs : 3;
    const QString file = bench.sessions.file(QStringLiteral("scale.zip"));
    ScalePoint point;
    point.hours = double(seconds) / secondsPerHour;
    point.live = feedMedian(rounds, seconds, Part::All);
    point.messages = feedMedian(rounds, seconds, Part::Messages);
    point.waves = feedMedian(rounds, seconds, Part::Waves);

    CPRData session;
    feed(seconds, Part::All, session);
    while (session.cprEvents()->at(point.events))
        ++point.events;
    point.samples = session.compressionData()->count() + session.ventilationData()->count();
    point.save = medianOf(rounds, [&] {
        Clock clock;
        clock.start();
        save(file, session);
        clock.stop();
        return clock.elapsed();
    });
    point.file = static_cast<double>(QFileInfo(file).size());
    point.load = medianOf(rounds, [&] {
        CPRData loaded;
        Clock clock;
        clock.start();
        load(file, loaded);
        clock.stop();
        return clock.elapsed();
    });
    const HeapCount heap;
    const std::unique_ptr<CPRData> loaded = loadedSession(file);
    point.memory = static_cast<double>(heap.live());
    return point;
}

} // namespace

std::vector<ScalePoint> measureScale(Bench &bench)
{
    std::vector<ScalePoint> points;
    for (const double hours : {0.01, 0.03, 0.1, 0.3, 1.0, 3.0, 10.0, 24.0}) {
        showProgress(QStringLiteral("a session of %1 h").arg(hours));
        points.push_back(measurePoint(bench, qRound(hours * secondsPerHour)));
    }
    return points;
}

} // namespace bench
