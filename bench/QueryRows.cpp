// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Row.h"

#include <CPREventCompression.h>

#include <QBuffer>

#include <random>

namespace bench {

namespace {

constexpr int listed = 100000;

// A session of 100,000 compressions with the statistics and the scores behind them.
std::unique_ptr<CPRData> longSession(Sessions &sessions)
{
    std::unique_ptr<CPRData> session = startedSession();
    for (bls_2010::RMessage &message : sessions.compressions(listed))
        session->incomingMsg(&message);
    session->setSessionTime(session->cprEvents()->last(CPREventBase::TagComp)->eventEndTime());
    for (const manikinlog::Record &record : sessions.hour()) {
        constexpr quint32 firstSummary = 108; // scores, then the three statistics
        constexpr quint32 lastSummary = 111;
        const auto *entry = std::get_if<manikinlog::Message>(&record.entry);
        if (entry && entry->identifier >= firstSummary && entry->identifier <= lastSummary) {
            bls_2010::RMessage message(entry->identifier, entry->content,
                                       bls_2010::HeaderElement(entry->sequence));
            session->incomingMsg(&message);
        }
    }
    return session;
}

std::vector<int> randomTimes(const CPREvents &events, int count)
{
    std::mt19937 random(1);
    const int end = events.last(CPREventBase::TagComp)->msecs();
    std::vector<int> times;
    for (int i = 0; i < count; ++i)
        times.push_back(static_cast<int>(random() % static_cast<unsigned>(end)) + 1);
    return times;
}

std::vector<Figure> measureAtTime(Bench &bench)
{
    constexpr int scanned = 1000;
    constexpr int queries = 200;
    const std::unique_ptr<CPRData> session = longSession(bench.sessions);
    const CPREvents &events = *session->cprEvents();
    const std::vector<int> times = randomTimes(events, queries);
    QList<const CPREventBase *> few;
    for (int i = 0; i < scanned; ++i)
        few.append(events.at(CPREventBase::TagComp, i));
    const int behind = few.last()->eventEndTime() + 1;

    const auto subject = [&](Clock &clock) {
        clock.start();
        for (const int time : times)
            keep(events.atTime(CPREventBase::TagComp, time));
        clock.stop();
    };
    const auto reference = [&](Clock &clock) {
        clock.start();
        for (int i = 0; i < queries; ++i) {
            const CPREventBase *found = nullptr;
            const int time = behind + i;
            for (const CPREventBase *event : qAsConst(few)) {
                if (event->msecs() <= time && event->eventEndTime() >= time) {
                    found = event;
                    break;
                }
            }
            keep(found);
        }
        clock.stop();
    };
    return {withGoal(compare(bench.pairs, subject, reference, queries), 1)};
}

// From some 500 to some 1,500 events before the end.
std::vector<Figure> measureEvents(Bench &bench)
{
    constexpr int queries = 200;
    const std::unique_ptr<CPRData> session = longSession(bench.sessions);
    const CPREvents &events = *session->cprEvents();
    std::vector<int> times;
    std::vector<QList<CPREventBase *>> results;
    for (int i = 0; i < queries; ++i) {
        times.push_back(events.at(CPREventBase::TagComp, listed - 1500 + 5 * i)->msecs() + 1);
        results.push_back(events.events(CPREventBase::TagComp, times.back()));
    }
    const auto subject = [&](Clock &clock) {
        clock.start();
        for (const int time : times)
            keep(events.events(CPREventBase::TagComp, time));
        clock.stop();
    };
    const auto reference = [&](Clock &clock) {
        clock.start();
        for (const QList<CPREventBase *> &result : results) {
            QList<CPREventBase *> copy = result;
            copy.detach();
            keep(copy);
        }
        clock.stop();
    };
    return {withGoal(compare(bench.pairs, subject, reference, queries), 2)};
}

// What a table of many sessions has of each: some from the session info, which begins the list,
// most from the scores, which end it, and a shock's energy, which no event has.
CPREvents::ParameterMapList_t columns()
{
    using E = CPREventBase;
    std::vector<int> parameters{E::students,
                                E::startTime,
                                E::totalTime,
                                E::manikinType,
                                E::cprProtocol,
                                E::shockEnergy,
                                E::primaryAdvice,
                                E::secondaryAdvice,
                                E::overallScore,
                                E::isScoringModeAED,
                                E::flowTimePercentage,
                                E::preVentsTooFewScoreReduction,
                                E::preVentsTooManyScoreReduction};
    for (int reduction = E::compReleaseScoreReduction; reduction <= E::compOverallScore;
         ++reduction)
        parameters.push_back(reduction);
    for (int reduction = E::ventShallowScoreReduction; reduction <= E::ventOverallScore;
         ++reduction)
        parameters.push_back(reduction);
    CPREvents::ParameterMapList_t result;
    for (const int parameter : parameters) {
        const auto type = static_cast<E::ParameterType>(parameter);
        result.append({type, E::parameterKey(type)});
    }
    return result;
}

std::vector<Figure> measureTableRow(Bench &bench)
{
    const std::unique_ptr<CPRData> session = longSession(bench.sessions);
    const CPREvents &events = *session->cprEvents();
    const CPREvents::ParameterMapList_t thirty = columns();
    if (thirty.size() != 30)
        qFatal("There are other than 30 columns");
    QList<const CPREventBase *> list;
    while (const CPREventBase *event = events.at(list.size()))
        list.append(event);

    const auto subject = [&](Clock &clock) {
        QBuffer device;
        device.open(QIODevice::WriteOnly);
        clock.start();
        events.write(&device, thirty, QStringLiteral(";"));
        clock.stop();
        keep(device.data());
    };
    const auto reference = [&list](Clock &clock) {
        clock.start();
        int holders = 0;
        for (const CPREventBase *event : qAsConst(list))
            holders += event->params() ? 1 : 0;
        clock.stop();
        keep(holders);
    };
    return {withGoal(compare(bench.pairs, subject, reference), 1.5)};
}

} // namespace

std::vector<Row> queryRows()
{
    return {
        {9, "atTime at random in 100,000 events", "a linear scan of 1,000", measureAtTime},
        {10, "events(tag, time) near the end of 100,000", "copying the result alone",
         measureEvents},
        {12, "CSV row of 30 columns over 100,000 events", "one walk of the list", measureTableRow},
    };
}

} // namespace bench
