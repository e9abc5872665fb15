// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Row.h"

#include <CPREventCompression.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QVector>

#include <algorithm>
#include <cstdio>

namespace bench {

namespace {

using bls_2010::CommonDefs;

constexpr int burst = 10000;

void feed(CPRData &session, std::vector<bls_2010::RMessage> &messages, int begin, int count)
{
    for (int i = begin; i < begin + count; ++i) {
        if (!session.incomingMsg(&messages[static_cast<std::size_t>(i)]))
            qFatal("A compression was refused");
    }
}

// Lets the host's event loop run until the list has announced its changes.
void awaitNotification(CPRData &session)
{
    QEventLoop loop;
    QObject::connect(session.cprEvents(), &CPREvents::eventsChanged, &loop, &QEventLoop::quit);
    loop.exec();
}

// A host that draws each compression and looks the list over when it has changed.
std::vector<Figure> measureMessage(Bench &bench)
{
    std::vector<bls_2010::RMessage> messages = bench.sessions.compressions(burst);
    const auto subject = [&messages](Clock &clock) {
        const std::unique_ptr<CPRData> session = startedSession();
        int announced = 0;
        QObject::connect(session->cprEvents(), &CPREvents::compressionEvent,
                         [&announced](CPREventCompression *) { ++announced; });
        clock.start();
        feed(*session, messages, 0, burst);
        awaitNotification(*session);
        clock.stop();
        if (announced != burst)
            qFatal("A compression was not announced");
    };
    const auto reference = [](Clock &clock) {
        const std::unique_ptr<CPRData> session = startedSession();
        QList<CPREventCompression *> list;
        CPREventCompression *previous = nullptr;
        clock.start();
        for (int i = 0; i < burst; ++i) {
            previous = new CPREventCompression(i, session->cprEvents(), previous);
            list.append(previous);
        }
        clock.stop();
        keep(list);
    };
    return {withGoal(compare(bench.pairs, subject, reference, burst), 2)};
}

std::vector<Figure> measureGrowth(Bench &bench)
{
    constexpr int listed = 100000;
    std::vector<bls_2010::RMessage> messages = bench.sessions.compressions(listed + burst);
    const auto side = [&messages](Clock &clock, int before) {
        const std::unique_ptr<CPRData> session = startedSession();
        feed(*session, messages, 0, before);
        clock.start();
        feed(*session, messages, before, burst);
        clock.stop();
    };
    return {withGoal(compare(
                         bench.pairs, [&side](Clock &clock) { side(clock, listed); },
                         [&side](Clock &clock) { side(clock, 0); }, burst),
                     1.3)};
}

// The samples of an hour in the order in which they come: of each wave period a depth and a volume.
std::vector<Figure> measureSamples(Bench &bench)
{
    std::vector<manikinlog::WaveSample> samples;
    for (const manikinlog::Record &record : bench.sessions.hour()) {
        if (const auto *sample = std::get_if<manikinlog::WaveSample>(&record.entry))
            samples.push_back(*sample);
    }
    const auto subject = [&samples](Clock &clock) {
        const std::unique_ptr<CPRData> session = startedSession();
        clock.start();
        for (const manikinlog::WaveSample &sample : samples) {
            session->waveDataReceived(static_cast<CommonDefs::WaveType>(sample.waveType),
                                      sample.value, sample.sequence);
        }
        clock.stop();
        keep(session->compressionData()->count());
    };
    const auto reference = [&samples](Clock &clock) {
        QVector<int> depths;
        QVector<int> volumes;
        clock.start();
        for (const manikinlog::WaveSample &sample : samples) {
            (sample.waveType == CommonDefs::WAVE_VENT_VOLUME ? volumes : depths)
                .append(sample.value);
        }
        clock.stop();
        keep(depths);
        keep(volumes);
    };
    return {
        withGoal(compare(bench.pairs, subject, reference, static_cast<int>(samples.size())), 6)};
}

constexpr int countedSeconds = 60;
constexpr int packetsPerSecond = 50;
constexpr int compressionsPerSecond = 2;
constexpr char countedFunction[] = "benchLiveSecond";

} // namespace

// The second that valgrind counts; found by its name.
extern "C" __attribute__((noinline)) void benchLiveSecond(CPRData &session, int second,
                                                          bls_2010::RMessage *compressions)
{
    for (int i = 1; i <= packetsPerSecond; ++i) {
        const int sequence = second * packetsPerSecond + i;
        session.waveHeaderReceived(sequence);
        session.waveDataReceived(CommonDefs::WAVE_ABSOLUTE_COMP_DEPTH, -50 * (i % 25), sequence);
        session.waveDataReceived(CommonDefs::WAVE_VENT_VOLUME, 10 * i, sequence);
        constexpr int packetsPerCompression = packetsPerSecond / compressionsPerSecond;
        if (i % packetsPerCompression == 0)
            session.incomingMsg(&compressions[i / packetsPerCompression - 1]);
    }
}

int runInstructionTarget()
{
    Sessions sessions;
    std::vector<bls_2010::RMessage> messages =
        sessions.compressions(countedSeconds * compressionsPerSecond);
    const std::unique_ptr<CPRData> session = startedSession();
    for (int second = 0; second < countedSeconds; ++second) {
        benchLiveSecond(*session, second, messages.data() + second * compressionsPerSecond);
        // Not counted, but without it only the first change would start a notification.
        awaitNotification(*session);
    }
    return EXIT_SUCCESS;
}

namespace {

std::vector<Figure> measureInstructions(Bench &bench)
{
    Figure figure;
    figure.unit = Unit::Instructions;
    const QString valgrind = QStandardPaths::findExecutable(QStringLiteral("valgrind"));
    if (valgrind.isEmpty()) {
        figure.label = QStringLiteral("valgrind is not installed");
        return {figure};
    }
    QFile counts(bench.sessions.file(QStringLiteral("callgrind.out")));
    QProcess child;
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(valgrind,
                {QStringLiteral("--tool=callgrind"),
                 QStringLiteral("--toggle-collect=%1*").arg(QLatin1String(countedFunction)),
                 QStringLiteral("--callgrind-out-file=%1").arg(counts.fileName()),
                 QCoreApplication::applicationFilePath(),
                 QStringLiteral("--%1").arg(QLatin1String(instructionTarget))});
    constexpr int noLimit = -1;
    child.waitForFinished(noLimit);
    if (child.exitCode() == EXIT_SUCCESS && counts.open(QIODevice::ReadOnly)) {
        const QByteArray total = QByteArrayLiteral("totals: ");
        while (!counts.atEnd()) {
            const QByteArray line = counts.readLine();
            if (line.startsWith(total))
                figure.subject = line.mid(total.size()).toDouble() / countedSeconds;
        }
    }
    if (figure.subject <= 0) {
        std::fprintf(stderr, "valgrind has counted nothing:\n%s", child.readAll().constData());
        figure.label = QStringLiteral("valgrind failed");
    }
    return {figure};
}

} // namespace

std::vector<Row> liveRows()
{
    return {
        {7, "a live compression message to event, signal and notification",
         "new of the event and append", measureMessage},
        {8, "10,000 messages onto a list of 100,000", "the same onto an empty list", measureGrowth},
        {11, "a wave sample through the session", "QVector append", measureSamples},
        {16, "instructions of a live second: 50 headers, 100 samples, 2 compressions",
         "none: a number to keep from growing", measureInstructions},
    };
}

} // namespace bench
