// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Row.h"

#include <CPREventCompression.h>

#include <QEventLoop>
#include <QVector>

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

} // namespace

std::vector<Row> liveRows()
{
    return {
        {7, "a live compression message to event, signal and notification",
         "new of the event and append", measureMessage},
        {8, "10,000 messages onto a list of 100,000", "the same onto an empty list", measureGrowth},
        {11, "a wave sample through the session", "QVector append", measureSamples},
    };
}

} // namespace bench
