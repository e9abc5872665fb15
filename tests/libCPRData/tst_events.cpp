// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventAED.h"
#include "CPREventCPRD.h"
#include "CPREventCompression.h"
#include "CPREventInactivityCPR.h"
#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "CPREventShock.h"
#include "CPREventUser.h"
#include "CPREventVentilation.h"
#include "support/EventValues.h"
#include "support/Messages.h"
#include "support/Recorder.h"
#include "support/Rows.h"

#include <QBuffer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>

#include <climits>
#include <functional>
#include <memory>
#include <random>

using namespace testsupport;
using E = CPREventBase;
using bls_2010::CommonDefs;

namespace {

const QLatin1Char blank(' ');

void watchAll(Recorder &recorder, const CPREvents *events)
{
    recorder.watch(events, &CPREvents::cprSessionInfoChanged, "info"_l1);
    recorder.watch(events, &CPREvents::cprSessionStatisticsChanged, "statistics"_l1);
    recorder.watch(events, &CPREvents::cprSessionScoreChanged, "score"_l1);
    recorder.watch(events, &CPREvents::cprGuiEventAdded, "gui"_l1);
    recorder.watch(events, &CPREvents::otherEventAdded, "other"_l1);
    recorder.watch(events, &CPREvents::eventsChanged, "changed"_l1);
    recorder.watch(events, &CPREvents::eventsCleared, "cleared"_l1);
    recorder.watch(events, &CPREvents::scoresReady, "ready"_l1);
    recorder.watch(events, &CPREvents::guidelinesChanged, "guidelines"_l1);
    recorder.watch(events, &CPREvents::inactivityCPREvent, "pause"_l1);
    recorder.watch(events, &CPREvents::compressionEvent, "compression"_l1);
    recorder.watch(events, &CPREvents::ventilationEvent, "ventilation"_l1);
    recorder.watch(events->cprData(), &CPRData::receiveDataComplete, "received"_l1);
    const CPREventSessionStatistics *statistics = events->sessionStatistics();
    recorder.watch(statistics, &CPREventSessionStatistics::statisticsReady, "s.ready"_l1);
    recorder.watch(statistics, &CPREventSessionStatistics::totalTime, "total"_l1);
    recorder.watch(events->sessionScore(), &CPREventSessionScore::scoresReady, "c.ready"_l1);
    recorder.watch(events->sessionInfo(), &CPREventSessionInfo::connectedAEDTypeChanged, "aed"_l1);
}

E *lasting(E *event, int end, const QString &name = QString())
{
    event->setEventEndTime(end);
    if (!name.isEmpty())
        event->setParameter(E::eventId, name);
    return event;
}

using Step = std::function<void(CPRData &)>;
using Steps = QVector<Step>;

void play(CPRData &session, const Steps &steps)
{
    for (const Step &step : steps)
        step(session);
}

// What the link has decoded.
Step compression(int start, int end)
{
    const CommonDefs::CompressionEvent_t event{0, 100, quint16(end - start - 100), 0, 0, 0, {}, 0,
                                               0, 0};
    return [=](CPRData &session) {
        session.cprEvents()->incomingCompressionEvent(uint(start), 100, event);
    };
}

Step ventilation(int start, int end)
{
    const CommonDefs::VentilationEvent_t event{0, 100, quint16(end - start - 100), 0, 0, 0};
    return [=](CPRData &session) {
        session.cprEvents()->incomingVentilationEvent(uint(start), 10, event);
    };
}

Step pauseReport(int start, int at, int secs = 1)
{
    return [=](CPRData &session) {
        session.setSessionTime(at);
        session.cprEvents()->incomingInactivityTime(uint(start), secs);
    };
}

// The manikin's message, at a session time.
Step pauseMessage(int at, int secs, bool isAccepted = true)
{
    return [=](CPRData &session) {
        session.setSessionTime(at);
        QCOMPARE(send(session, 81, bytes({0, secs & 0xFF, secs >> 8})), isAccepted);
    };
}

Step userEvent(int at)
{
    return [=](CPRData &session) {
        session.setSessionTime(at);
        session.addUserEvent("X"_l1);
    };
}

// Listed without an announcement.
Step pause(int start, int end)
{
    return [=](CPRData &session) {
        CPREvents *events = session.cprEvents();
        events->addEvent(lasting(new CPREventInactivityCPR(start, events), end), false);
    };
}

Step named(const QString &name, int start, int end)
{
    return [=](CPRData &session) {
        CPREvents *events = session.cprEvents();
        events->addEvent(lasting(new E(E::CprPacketLossStart, start, events), end, name), false);
    };
}

// A pause has to have so many seconds.
Step cut(int msecs, int minSecs)
{
    return [=](CPRData &session) {
        session.cprGuidelines()->setCompressionInactivityLevel0TimeoutCPR(minSecs);
        session.cprEvents()->removeInactivityEventAfter(msecs);
    };
}

/// A host's own kind of pause, without parameters.
class HostEvent : public CPREventInactivityCPR {
public:
    explicit HostEvent(CPREvents *owner) : CPREventInactivityCPR(-1, owner) { }
    HostEvent(const HostEvent &other, CPREvents *owner) : CPREventInactivityCPR(other, owner) { }
    using CPREventInactivityCPR::write;
    bool write(QIODevice *device, const QPair<ParameterType, QString> &column,
               const QString &separator) override
    {
        return column.first == compMeanRate && device->write("host" + separator.toUtf8()) > 0;
    }
    HostEvent *clone(CPREvents *owner) override { return new HostEvent(*this, owner); }
};

// The events in order: compressions by number, pauses by start, end and length, others by name.
QString listed(const QList<E *> &events)
{
    QStringList texts;
    for (const E *event : events) {
        const int secs = event->parameterValue(E::compInactivity, 0).toInt();
        if (event->type() == E::CprCompEvent)
            texts.append(QStringLiteral("C%1").arg(numberOf(event, "numberInCycle")));
        else if (event->type() == E::CprInactivityCPR)
            texts.append(
                QString::asprintf("%d-%d/%d", event->msecs(), event->eventEndTime(), secs));
        else if (event->type() == E::CprVentEvent)
            texts.append("V"_l1);
        else if (event->type() != E::CprSessionInfo)
            texts.append(textOf(event, E::eventId));
        else
            texts.append("i"_l1);
    }
    return texts.join(blank);
}

} // namespace

Q_DECLARE_METATYPE(Step)

class TestEvents : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void list_data()
    {
        const auto row = columns<Steps, QString>("steps", "order");
        // clang-format off
        row("in order", {named("a", 10, 20), named("b", 20, 30), named("c", 40, 40)}, "i a b c");
        row("equal times", {named("a", 5, 5), named("b", 5, 5), named("c", 5, 5)}, "i a b c");
        row("equal to the info", {named("a", 0, 0), named("b", 0, 0)}, "i a b");
        row("late", {named("a", 10, 10), named("b", 30, 30), named("c", 20, 20)}, "i a c b");
        row("inside another", {named("a", 10, 50), named("b", 49, 49)}, "i b a");
        row("at its end", {named("a", 10, 50), named("b", 50, 50)}, "i a b");
        row("inside two", {named("a", 0, 100), named("b", 100, 110), named("c", 90, 90)}, "i c a b");
        row("search from the back", {named("a", 10, 20), named("b", 0, 100), named("c", 30, 30)}, "i b a c");
        row("before all", {named("a", 10, 10), named("b", -5, -5)}, "b i a");
        // Numbers of compressions in their cycle.
        row("a cycle", {compression(9000, 9400), compression(9500, 9900), compression(10000, 10400)}, "i C1 C2 C3");
        row("500 ms", {compression(100, 500), compression(1000, 1400)}, "i C1 C2");
        row("501 ms", {compression(100, 500), compression(600, 900), compression(1401, 1800), compression(1900, 2200)}, "i C1 C2 C1 C2");
        row("ventilation",
            {compression(100, 500), compression(600, 900), ventilation(900, 1000),
             compression(1000, 1300), compression(1400, 1800)},
            "i C1 C2 V C1 C2");
        row("pause",
            {compression(100, 500), pauseReport(500, 9000), compression(700, 1000),
             compression(1100, 1300)},
            "i C1 500-500/0 C1 C2");
        row("other event", {compression(100, 500), userEvent(500), compression(600, 900)}, "i C1 X C2");
        row("ventilation before its time",
            {compression(100, 500), compression(510, 900), ventilation(1150, 1500), userEvent(1600),
             compression(1000, 1400)},
            "i C1 C2 C3 V X");
        row("counter after it",
            {compression(100, 500), ventilation(1150, 1500), userEvent(1600),
             compression(1000, 1400), compression(1700, 1900)},
            "i C1 C2 V X C1");
        row("at the peak",
            {compression(100, 500), compression(510, 900), ventilation(1100, 1500), userEvent(1600),
             compression(1000, 1400)},
            "i C1 C2 C1 V X");
        row("no compression before",
            {ventilation(1150, 1500), userEvent(1600), compression(1000, 1400),
             compression(1700, 1900)},
            "i C1 V X C1");
        row("pause goes on",
            {pauseMessage(10000, 5), compression(10000, 10400), pauseMessage(11000, 6),
             compression(10800, 11000)},
            "i 5000-11000/6 C1 C1");
        // Pauses that are reported again and again.
        row("5, 6, 7 s", {pauseMessage(10000, 5), pauseMessage(11000, 6), pauseMessage(12000, 7)}, "i 5000-12000/7");
        row("1000 ms late", {pauseMessage(10000, 5), pauseMessage(12000, 6)}, "i 5000-11000/6");
        row("1001 ms late", {pauseMessage(10000, 5), pauseMessage(12001, 6)}, "i 6001-12001/6 5000-10000/5");
        row("1000 ms early", {pauseMessage(10000, 5), pauseMessage(10000, 6)}, "i 5000-11000/6");
        row("1001 ms early", {pauseMessage(10000, 5), pauseMessage(9999, 6)}, "i 3999-9999/6 5000-10000/5");
        row("longer than the session", {pauseMessage(3000, 5)}, "i 0-3000/5");
        row("16 bits", {pauseMessage(10000000, 261)}, "i 9739000-10000000/261");
        row("longest", {pauseMessage(40000000, 32767)}, "i 7233000-40000000/32767");
        row("negative", {pauseMessage(10000, 32768, false), pauseMessage(10000, 65535, false)}, "i");
        row("no length", {pauseMessage(10000, 0, false)}, "i");
        row("no session time", {pauseMessage(0, 5, false)}, "i");
        row("host", {pauseReport(5000, 10000, 5), pauseReport(5000, 11000, 6)}, "i 5000-11000/6");
        row("host, tolerated", {pauseReport(4000, 10000, 5)}, "i 4000-9000/5");
        row("host, out of step", {pauseReport(2000, 10000, 5)}, "i 2000-2000/0");
        row("host, another", {pauseReport(5000, 10000, 5), pauseReport(18000, 20000, 2)}, "i 5000-10000/5 18000-20000/2");
        // clang-format on
    }

    void list()
    {
        QFETCH(Steps, steps);
        CPRData session;
        start(session);
        const CPREvents *events = session.cprEvents();
        Recorder recorder;
        recorder.watch(events, &CPREvents::inactivityCPREvent, "pause"_l1);
        connect(events, &CPREvents::compressionEvent, this,
                [](const CPREventCompression *added) { QVERIFY(added->numberInCycle() > 0); });
        play(session, steps);
        QTEST(listed(events->events()), "order");
        if (events->count(E::TagOther) == events->events().size()) // the session info, too
            QTEST(listed(events->events(E::TagOther, -1)), "order");
        QCOMPARE(recorder.take().count("pause"_l1), events->count(E::TagInactivity));
    }

    // Against the rule itself: behind the last event that ends at or before the start.
    void anyTimes()
    {
        CPRData session;
        CPREvents &events = *session.cprEvents();
        std::mt19937 random(7);
        const auto below = [&random](int limit) { return int(random() % quint32(limit)); };
        QMap<int, QList<E *>> expected{{0, events.events()}, {E::TagOther, events.events()}};
        for (int step = 0; step < 8000; ++step) {
            QList<E *> &all = expected[0];
            E *event = all.at(below(int(all.size())));
            switch (below(8)) {
            case 0:
                event->setEventEndTime(below(6000));
                continue;
            case 1:
                event->setMSecs(below(5000));
                continue;
            case 2:
                if (event == events.sessionInfo())
                    continue;
                for (QList<E *> &list : expected)
                    list.removeOne(event);
                delete event;
                continue;
            default:
                break;
            }
            const int start = step % 5 == 0 ? below(5000) : step;
            event = below(2) == 0 ? new CPREventShock(start, &events)
                                  : new E(E::CprPacketLossStart, start, &events);
            event->setEventEndTime(below(20) == 0 ? INT_MAX : start + below(50));
            events.addEvent(event, false);
            for (int tag : {0, 8, 32, 128}) {
                if (tag != 0 && (event->tag() & tag) == 0)
                    continue;
                QList<E *> &list = expected[tag];
                auto place = int(list.size());
                while (place > 0 && list.at(place - 1)->eventEndTime() > start)
                    --place;
                list.insert(place, event);
            }
        }
        QVERIFY(expected[0].size() > 3000);
        QCOMPARE(events.events(), expected[0]);
        for (int tag : {8, 32, 128})
            QCOMPARE(events.events(E::EventTag(tag), -1), expected[tag]);
        for (int i = 0; i < expected[8].size(); ++i)
            QCOMPARE(events.at(E::TagCprGui, i), expected[8].at(i));
    }

    void cutPauses_data()
    {
        const auto row = columns<Steps, QString>("steps", "order");
        row("ends at the cut", {pause(1000, 6000), cut(6000, 3)}, "i 1000-6000/0");
        row("ends behind", {pause(1000, 6000), cut(5999, 3)}, "i 1000-5999/4");
        row("3 s remain", {pause(1000, 6000), cut(4000, 3)}, "i 1000-4000/3");
        row("less remains", {pause(1000, 6000), cut(3999, 3)}, "i");
        row("at its start", {pause(4000, 9000), cut(4000, 0)}, "i");
        row("nothing too short", {pause(4000, 9000), cut(4001, 0)}, "i 4000-4001/0");
        row("two", {pause(1000, 6000), pause(8000, 12000), cut(5000, 3)}, "i 1000-5000/4");
        row("three", {pause(1000, 4000), pause(5000, 9000), pause(10000, 15000), cut(7000, 3)},
            "i 1000-4000/0");
        row("all, and none", {pause(1000, 4000), pause(5000, 9000), cut(0, 3), cut(0, 3)}, "i");
    }

    // Less than 3 s do not remain.
    void cutPauses()
    {
        QFETCH(Steps, steps);
        CPRData session;
        start(session);
        play(session, steps);
        QTEST(listed(session.cprEvents()->events()), "order");
    }

    void tagsAndSignals()
    {
        CPRData session;
        CPREvents *events = session.cprEvents();
        Recorder recorder;
        watchAll(recorder, events);
        const auto added = [&](E *event) {
            events->addEvent(event, true);
            const QString first = recorder.take();
            events->addEvent(event, true); // listed already, and announced once more
            const QString heard = recorder.take() == first ? first : "not the same"_l1;
            int lists = 0;
            for (int bit = 1; bit <= 128; bit *= 2)
                lists += bit * events->events(E::EventTag(bit), -1).count(event);
            return QStringLiteral("%1 %2 ").arg(int(event->tag())).arg(lists) + heard;
        };
        const auto rhythm = [&](E::AEDEcgRhythms first) {
            auto *event = new CPREventCPRD(0, events);
            event->setRhytmn(first, E::AED_PEA);
            return added(event);
        };
        QCOMPARE(added(new CPREventCompression(0, events, nullptr)), "1 1 compression"_l1);
        QCOMPARE(added(new CPREventVentilation(0, events)), "2 2 ventilation"_l1);
        QCOMPARE(added(new CPREventInactivityCPR(0, events)), "16 16 pause"_l1);
        QCOMPARE(added(new CPREventShock(0, events)), "168 168 gui"_l1);
        QCOMPARE(added(new CPREventUser(0, events, QString())), "136 136 gui"_l1);
        QCOMPARE(added(new E(E::CprPacketLossEnd, 0, events)), "32 32 other"_l1);
        QCOMPARE(added(new CPREventCPRD(0, events)), "192 192 other"_l1);
        QCOMPARE(rhythm(E::AED_VFIB), "200 200 gui"_l1);
        QCOMPARE(rhythm(E::AED_VFIB), "192 192 other"_l1);
        QCOMPARE(rhythm(E::AED_NSR), "200 200 gui"_l1);
        for (int kind = 0; kind <= 30; ++kind) {
            auto *event = new CPREventAED(0, events);
            if (kind > 0)
                event->setParameter(E::aedEventType, kind);
            const bool shown = QVector<int>{1, 2, 11, 13, 17, 19, 23, 25, 26, 28}.contains(kind);
            QCOMPARE(added(event), shown ? "140 140 gui"_l1 : "132 132 other"_l1);
        }
        events->addEvent(new CPREventShock(0, events), false);
        QCOMPARE(recorder.take(), QString());
    }

    void queries()
    {
        CPRData session;
        CPREvents *events = session.cprEvents();
        for (const auto &row : {QVector<int>{1000, 2000}, {3000, 3000}, {4000, 6000}}) {
            auto *event = new CPREventUser(row.at(0), events, QString::number(row.at(0) / 1000));
            events->addEvent(lasting(event, row.at(1)), false);
        }
        const auto name = [](const E *event) { return event ? textOf(event, E::eventId) : "-"_l1; };
        const auto gui = E::TagCprGui;
        QString found = name(events->first(gui)) + name(events->last(gui)) + blank;
        for (int i = -1; i <= 4; ++i)
            found += name(events->at(gui, i)) + name(events->at(i)); // the info, at 0, has no name
        QCOMPARE(found, "14 --13143-4--"_l1);
        found.clear();
        for (int time : {0, 500, 1000, 2000, 2001, 3000, 4000, 6000, 6001, -5})
            found += name(events->atTime(gui, time));
        QCOMPARE(found, "1411434444"_l1);
        found.clear();
        for (int time : {-1, 0, 1000, 2000, 2001, 3000, 3001, 6000, 6001})
            found += listed(events->events(gui, time)) + QLatin1Char(',');
        QCOMPARE(found, "1 3 4,1 3 4,1 3 4,1 3 4,3 4,3 4,4,4,,"_l1);
        QCOMPARE(events->count(8) + 10 * events->count(128), 33);
        for (uint mask : {0U, 3U, 136U, 256U, 0x80000008U})
            QCOMPARE(events->count(mask), 0);
        qDeleteAll(events->events(gui, -1));
        for (auto tag : {gui, E::TagComp}) {
            QVERIFY(!events->first(tag) && !events->last(tag) && !events->at(tag, 0));
            QVERIFY(!events->atTime(tag, 0) && !events->atTime(tag, 9));
            QVERIFY(events->events(tag, -1).isEmpty() && events->events(tag, 0).isEmpty());
        }
    }

    void hostEvents()
    {
        CPRData session;
        session.setSessionTime(1234);
        CPREvents *events = session.cprEvents();
        Recorder recorder;
        watchAll(recorder, events);
        const auto newest = [&](std::initializer_list<const char *> names) {
            const E *event = events->events().last();
            QString text = QLatin1String(event->typeAsString());
            for (double number : numbersOf(event, names))
                text += blank + QString::number(number);
            return text + QLatin1Char(':') + recorder.take();
        };
        session.addUserEvent("Morvane.Event.Deliver shock"_l1);
        QCOMPARE(newest({"msec", "shockEnergy"}), "ShockDelivered 1234 0:gui"_l1);
        session.addUserEvent("Morvane.Event.Deliver Shock"_l1);
        QCOMPARE(newest({"msec"}), "Event 1234:gui"_l1);
        QCOMPARE(textOf(events->at(2), E::eventId), "Morvane.Event.Deliver Shock"_l1);
        events->aedEvent({{E::aedEventType, 2}, {E::aedScenarioNumber, 7}});
        QCOMPARE(newest({"msec", "aedEventType", "aedScenarioNumber"}),
                 "CprAedEvent 1234 2 7:gui received"_l1);
        events->cprdEvent(E::AED_SVT, E::AED_PEA);
        QCOMPARE(newest({"msec", "aedEventType", "aedECGRhythm"}),
                 "CprCprdEvent 1234 19 8:gui received"_l1);
        QCOMPARE(qobject_cast<CPREventCPRD *>(events->at(4))->secondRhythm(), 6);
        const int children = events->children().size();
        events->cprdEvent(E::AED_NoECGRhythm, E::AED_PEA);
        QVERIFY(!send(session, 52, bytes({0, 0, 5})));
        QCOMPARE(events->children().size(), children);
        QVERIFY(!session.receiving());
        QCOMPARE(recorder.take(), "received"_l1);
        events->aedDetected(E::AEDTypes(7));
        QCOMPARE(newest({"msec", "aedEventType", "aedType"}), "CprAedEvent 1234 29 1:aed other"_l1);
        QCOMPARE(int(events->sessionInfo()->connectedAEDType()), 1);
        session.compressionData()->setCompressionRate(100);
        events->incomingInactivityTime(1234, 1);
        QCOMPARE(newest({"msec"}), "CprInactivityCPR 1234:pause received"_l1);
        QCOMPARE(int(session.compressionData()->compressionRate()), 0);
        settle();
        QCOMPARE(recorder.take(), "changed"_l1); // once for all of them
    }

    void scoreCounting()
    {
        CPRData session;
        CPREvents *events = session.cprEvents();
        Recorder recorder;
        watchAll(recorder, events);
        const auto heard = [&](std::initializer_list<quint32> ids) {
            QStringList texts;
            for (quint32 id : ids) {
                send(session, id, numberedBytes(68));
                texts.append(recorder.take());
            }
            return texts.join(QLatin1Char('|'));
        };
        QCOMPARE(heard({109, 110, 111, 108, 108, 109}),
                 "total other||s.ready|c.ready statistics ready score other|c.ready score|"
                 "total s.ready"_l1);
        QVERIFY(!events->isScoresReady());
        events->resume();
        QCOMPARE(heard({108, 110, 110}), "c.ready score|s.ready|s.ready"_l1);
        QCOMPARE(heard({111}), "s.ready statistics ready"_l1);
        QVERIFY(events->isScoresReady());
        events->setScoresToReceive(2);
        QVERIFY(!events->isScoresReady());
        QCOMPARE(heard({108, 108}), "c.ready score|c.ready statistics ready score"_l1);
        events->resume(); // the number to receive stays
        session.setSessionTime(61000);
        events->incomingSessionStatistics();
        QCOMPARE(recorder.take(), "received"_l1);
        events->incomingSessionScores();
        QCOMPARE(recorder.take(), "statistics ready score received"_l1);
        QCOMPARE(events->sessionStatistics()->msecs() + events->sessionScore()->msecs(), 122000);

        CPRData local; // what the host computes is counted, not listed
        local.cprEvents()->sessionScore()->setParameter(E::sessionDuration, 60);
        local.cprEvents()->incomingSessionScores();
        local.cprEvents()->incomingSessionStatistics();
        QCOMPARE(local.cprEvents()->events().size(), 1);
        QCOMPARE(intOf(local.cprEvents()->sessionInfo(), E::totalTime), 60);
    }

    void copiedList()
    {
        auto source = std::make_unique<CPRData>();
        source->setSessionTime(9000);
        send(*source, 108, numberedBytes(27));
        send(*source, 101, bytes({4, 4}));
        play(*source, {userEvent(1000), userEvent(3000), userEvent(2000), compression(4000, 4300)});
        const QString sessionID = source->cprEvents()->sessionInfo()->getSessionID();
        CPRData copied(*source);
        CPRData another(copied);
        source.reset();
        CPREvents *copy = copied.cprEvents();
        QVector<int> times;
        for (const E *event : copy->events())
            times.append(event->events() == copy ? event->msecs() : -1);
        QCOMPARE(times, QVector<int>({0, 0, 1000, 2000, 3000, 4000, 9000}));
        QCOMPARE(copy->at(1), copy->cprSessionStatistics());
        QCOMPARE(copy->at(6), copy->cprSessionScore());
        QCOMPARE(copy->count(E::TagOther), 0); // the standing ones are in no list of a tag
        QCOMPARE(copy->count(E::TagCprGui), 3);
        QCOMPARE(copy->sessionInfo()->getSessionID(), sessionID);
        QCOMPARE(int(copy->mode()), 4);

        Recorder recorder;
        watchAll(recorder, copy);
        play(copied, {compression(4800, 5000)});
        QCOMPARE(listed(copy->events(E::TagComp, -1)), "C1 C2"_l1);
        play(another, {compression(4801, 5000)}); // 501 ms later
        QCOMPARE(listed(another.cprEvents()->events(E::TagComp, -1)), "C1 C1"_l1);
        for (quint32 id : {108U, 111U, 110U, 64U})
            send(copied, id, numberedBytes(22));
        QVERIFY(!textOf(copy->sessionInfo(), E::endTime).isEmpty());
        copy->sessionStatistics()->setSessionDuration(77);
        QCOMPARE(intOf(copy->sessionInfo(), E::totalTime), 77);
        QCOMPARE(recorder.take(),
                 "compression received c.ready score statistics ready info info total"_l1);
        copied.cprGuidelines()->setIsOfficial(true);
        settle();
        const QString late = recorder.take();
        QVERIFY(late == "changed guidelines"_l1 || late == "guidelines changed"_l1);
    }

    void deletedAndReplaced()
    {
        CPRData session;
        CPREvents *events = session.cprEvents();
        const auto onlyInfo = [events] {
            const QList<E *> info{events->cprSessionInfo()};
            int tagged = 0;
            for (uint bit = 1; bit <= 128; bit *= 2)
                tagged += events->count(bit);
            return tagged == 1 && events->events() == info
                && events->events(E::TagOther, -1) == info;
        };
        E *aed = new CPREventAED(0, events);
        E *shock = new CPREventShock(0, events);
        for (E *event : {aed, shock})
            events->addEvent(event, false);
        shock->setMSecs(99); // they are found whatever has changed
        aed->setParameter(E::aedEventType, E::AEDPowerOn);
        delete aed;
        delete shock;
        QVERIFY(onlyInfo());

        events->setScoresToReceive(2);
        for (quint32 id : {108U, 109U, 47U})
            send(session, id, numberedBytes(68));
        play(session, {compression(100, 500)});
        QVERIFY(events->isScoresReady());
        session.assignLearner("Ola"_l1);
        events->sessionInfo()->setParameter(E::manikinName, "Nina"_l1);
        events->sessionInfo()->setParameter(E::manikinType, 8);
        const QVector<QPointer<E>> old{events->cprSessionInfo(), events->cprSessionScore(),
                                       events->cprSessionStatistics(), events->last(E::TagCprGui)};
        const QString sessionID = events->sessionInfo()->getSessionID();
        Recorder recorder;
        watchAll(recorder, events);
        events->reset();
        QCOMPARE(recorder.take(), "other cleared"_l1);
        QVERIFY(onlyInfo());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(old.at(3).isNull());
        QVERIFY(old.at(0) == events->cprSessionInfo() && old.at(1) == events->cprSessionScore());
        QVERIFY(old.at(2) == events->cprSessionStatistics());
        QVERIFY(events->sessionInfo()->getSessionID() != sessionID);
        const auto kept = [events] {
            return QStringList({textOf(events->cprSessionInfo(), E::manikinName),
                                textOf(events->cprSessionInfo(), E::students),
                                textOf(events->cprSessionInfo(), E::manikinType),
                                textOf(events->cprSessionScore(), E::compOverallScore)})
                .join(blank);
        };
        QCOMPARE(kept(), "Nina Ola 8 6"_l1);
        play(session, {compression(600, 900)}); // what was counted begins anew
        QCOMPARE(listed(events->events()), "i C1"_l1);
        QVERIFY(!events->isScoresReady());
        recorder.take();
        events->initialize();
        QCOMPARE(recorder.take(), "cleared other"_l1);
        QVERIFY(onlyInfo());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(old.at(0).isNull() && old.at(1).isNull() && old.at(2).isNull());
        QCOMPARE(kept(), "Nina Ola 255 0"_l1);
        events->sessionStatistics()->setSessionDuration(77);
        QCOMPARE(intOf(events->cprSessionInfo(), E::totalTime), 77);
    }

    // What leaves the list is told at once, what changes in it once for a burst.
    void removedAndChanged()
    {
        CPRData session;
        CPRData other;
        CPREvents *events = session.cprEvents();
        Recorder recorder;
        watchAll(recorder, events);
        recorder.watch(events, &CPREvents::eventRemoved, "removed"_l1);
        QVector<const E *> changed;
        connect(events, &CPREvents::eventChanged, this,
                [&changed](const E *event) { changed.append(event); });
        auto *user = new CPREventUser(10, events, "a"_l1);
        user->setMSecs(20); // not listed yet
        auto *moved = new CPREventUser(30, events, "b"_l1);
        auto *gone = new CPREventUser(40, events, "c"_l1);
        for (E *event : {user, moved, gone})
            events->addEvent(event, false);
        settle();
        recorder.take();
        QVERIFY(changed.isEmpty());
        for (int end : {50, 60}) {
            for (E *event : {user, gone})
                event->setEventEndTime(end);
        }
        user->setParameter(E::eventId, "d"_l1);
        events->setCategoryThresholdBasic(33); // a standing event that is not listed
        moved->setEventEndTime(80); // told by the list that it goes to, if at all
        other.cprEvents()->addEvent(moved, false);
        QCOMPARE(recorder.take(), "removed"_l1);
        delete gone;
        QCOMPARE(recorder.take(), "removed"_l1);
        QVERIFY(changed.isEmpty());
        settle();
        QCOMPARE(changed, QVector<const E *>({user, events->cprSessionScore()}));
        user->setEventEndTime(70); // emptied before it is told
        events->reset();
        QCOMPARE(recorder.take(), "other cleared"_l1);
        changed.clear();
        settle();
        QVERIFY(!changed.contains(user));
        delete events->cprSessionInfo(); // replaced, and listed, before anybody hears of it
        QCOMPARE(recorder.take(), "changed removed other"_l1);
    }

    // While the standing events are replaced, whoever listens finds the new ones.
    void replacedInsideSignals()
    {
        CPRData session;
        CPREvents *events = session.cprEvents();
        QVariantMap map;
        QVector<const E *> found;
        connect(events, &CPREvents::eventsCleared, this, [&] {
            events->telemetryTrainingSessionScoreData(map);
            events->telemetryTrainingSessionGuidelineData(map);
            events->setCategoryThresholdBasic(10);
            send(session, 70, bytes({0, 0, 9, 0, 0, 0}));
            send(session, 101, bytes({0, 1}));
            const CPRData copy(session);
            found = {events->cprSessionInfo(), events->cprSessionStatistics(),
                     events->cprSessionScore()};
        });
        const QVector<const E *> old{events->cprSessionInfo(), events->cprSessionStatistics(),
                                     events->cprSessionScore()};
        events->initialize();
        QCOMPARE(found,
                 QVector<const E *>({events->cprSessionInfo(), events->cprSessionStatistics(),
                                     events->cprSessionScore()}));
        for (const E *event : old)
            QVERIFY(!found.contains(event));
        QCOMPARE(intOf(events->sessionScore(), E::categoryThresholdBasic), 10);
        QCOMPARE(intOf(events->sessionInfo(), E::manikinCompressionCount), 9);
        QCOMPARE(map.size(), 2);
        // A time that is set while the list is emptied does not stay.
        connect(events, &CPREvents::otherEventAdded, this,
                [events] { events->setSessionTime(77); });
        events->reset();
        QCOMPARE(events->sessionTime(), 0);
    }

    // A pause that its host deletes when it hears that the rate is 0.
    void pauseDeletedMeanwhile()
    {
        CPRData session;
        start(session);
        CPREvents *events = session.cprEvents();
        play(session, {pauseReport(5000, 10000, 5)});
        session.compressionData()->setCompressionRate(90);
        connect(session.compressionData(), &CPRCompressionData::compressionRateChanged, this,
                [events] { delete events->last(E::TagInactivity); });
        play(session, {pauseReport(5000, 11000, 6)});
        QCOMPARE(listed(events->events()), "i"_l1);
        QVERIFY(!session.receiving());
    }

    void telemetry()
    {
        CPRData session;
        CPREvents *events = session.cprEvents();
        QVariantMap map{{"mine"_l1, 1}};
        const auto json = [&](QLatin1String key) {
            const QJsonObject object = QJsonObject::fromVariantMap(map.value(key).toMap());
            const QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Compact);
            return QString::fromUtf8(text)
                .replace(events->sessionInfo()->getSessionID(), "ID"_l1)
                .remove(QLatin1Char('"'))
                .remove("training_"_l1)
                .remove("compression_guideline_"_l1)
                .remove("ventilation_guideline_"_l1);
        };
        const auto scoreData = "training_session_score_data"_l1;
        events->telemetryTrainingSessionScoreData(map);
        QCOMPARE(json(scoreData),
                 "{average_compression_depth_mm:0,average_compression_rate:0,"
                 "average_ventilation_volume_ml:0,compression_descompression_ratio:0,"
                 "compression_score_percentage:0,compressions_complete_release_percentage:-1,"
                 "compressions_correct_depth_percentage:-1,"
                 "compressions_correct_hand_position_percentage:-1,flow_fraction_percentage:-1,"
                 "number_of_compressions:0,number_of_ventilations:0,session_id:ID,"
                 "total_score_percentage:0,ventilation_score_percentage:0}"_l1);
        for (quint32 id : {108U, 109U, 111U})
            send(session, id, numberedBytes(49));
        events->telemetryTrainingSessionScoreData(map);
        QCOMPARE(json(scoreData),
                 "{average_compression_depth_mm:6167,average_compression_rate:31,"
                 "average_ventilation_volume_ml:8737,compression_descompression_ratio:0,"
                 "compression_score_percentage:6,compressions_complete_release_percentage:2,"
                 "compressions_correct_depth_percentage:1,"
                 "compressions_correct_hand_position_percentage:39,flow_fraction_percentage:14,"
                 "number_of_compressions:3597,number_of_ventilations:4625,session_id:ID,"
                 "total_score_percentage:19,ventilation_score_percentage:13}"_l1);

        CPRGuidelines *limits = session.cprGuidelines();
        limits->setGuidelinesID("G-1"_l1);
        limits->setCompressionDepthMax(6099);
        limits->setVentilationRateMinDuringCPR(5);
        limits->setVentilationRateMaxDuringCPR(13);
        for (int i = 0; i <= 5; ++i) {
            limits->setPreVentilationsUsage(i);
            limits->setCompressionTooDeepSetting(i);
            events->setCprProtocol(CommonDefs::CprProtocolType(i));
            events->telemetryTrainingSessionGuidelineData(map);
            const auto expected = QStringLiteral(
                "{is_score_reduction_on_to_deep_compression_active:%1,"
                "is_tevo_5_initial_breaths_active:%2,base_guideline:G-1,compression_guideline:{"
                "max_depth_mm:60,max_rate_comp_per_minute:120,min_depth_mm:50,"
                "min_rate_comp_per_minute:100},number_of_rescuers:%3,protocol:%4,session_id:ID,"
                "ventilation_guideline:{max_rate_vent_per_minute:13,max_volume_ml:700,"
                "min_rate_vent_per_minute:5,min_volume_ml:400}}");
            QCOMPARE(json("training_session_guidelines"_l1),
                     expected.arg(i == 2 ? "true"_l1 : "false"_l1, i == 1 ? "true"_l1 : "false"_l1,
                                  i == 4 ? "2"_l1 : "1"_l1,
                                  events->sessionInfo()->cprProtocolToString()));
        }
        QCOMPARE(map.size(), 3);
    }

    void csv()
    {
        CPRData session;
        CPREvents *events = session.cprEvents();
        for (int energy : {150, 200})
            send(session, 47, bytes({0, energy, 0}));
        events->sessionInfo()->setParameter(E::manikinName, QStringLiteral("S\u00F8k"));
        const CPREvents::ParameterMapList_t columns{{E::shockEnergy, QStringLiteral("Sj\u00F8kk")},
                                                    {E::compMeanRate, "Rate"_l1},
                                                    {E::manikinName, "Name"_l1}};
        const auto written = [&](QLatin1String separator, QIODevice::OpenMode mode) {
            QBuffer device;
            device.open(mode);
            events->writeHeader(&device, columns, separator);
            events->write(&device, columns, separator);
            return QString::fromUtf8(device.data());
        };
        QCOMPARE(written(";"_l1, QIODevice::WriteOnly),
                 QStringLiteral("Sj\u00F8kk (J) ;Rate;Name;150;;;S\u00F8k;;"));
        QCOMPARE(written(""_l1, QIODevice::WriteOnly),
                 QStringLiteral("Sj\u00F8kk (J) RateName150S\u00F8k"));
        QCOMPARE(written(";"_l1, QIODevice::ReadOnly), QString());
        // An event of a class of the host writes its cells itself, a copy of it too.
        events->addEvent(new HostEvent(events), false);
        const auto expected = QStringLiteral("Sj\u00F8kk (J) ,Rate,Name,150,,host,,S\u00F8k,,");
        QCOMPARE(written(","_l1, QIODevice::WriteOnly), expected);
        const CPRData copy(session);
        events = copy.cprEvents();
        QCOMPARE(written(","_l1, QIODevice::WriteOnly), expected);
    }

    void textForm()
    {
        E event(E::CprPacketLossEnd, 40, nullptr);
        event.setEventEndTime(70);
        const auto text = [&event] { return QString(event).section(": "_l1, 1); };
        QCOMPARE(text(),
                 "CprPacketLossEnd, msecs: 40, endTime: 70, paramCount: 0, propertyCount: 5"_l1);
        event.setParameter(E::manikinBatteryCycleCounter, 12);
        QCOMPARE(text(),
                 "CprPacketLossEnd, msecs: 40, endTime: 70, paramCount: 1, propertyCount: 5\n"
                 "\tmanikinBatteryCycleCounter = 12"_l1);
        QVERIFY(QString(event).startsWith("0x"_l1) && QString(event).contains(", type: Cpr"_l1));
    }
};

QTEST_GUILESS_MAIN(TestEvents)

#include "tst_events.moc"
