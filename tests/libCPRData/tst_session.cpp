// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventInactivityCPR.h"
#include "CPREventSessionInfo.h"
#include "CPRFileHandlerZip.h"
#include "CPRWaveformInfo.h"
#include "support/EventValues.h"
#include "support/Messages.h"
#include "support/Recorder.h"
#include "support/Rows.h"

#include <QLoggingCategory>
#include <QPointer>
#include <QSignalSpy>

#include <functional>
#include <memory>

using namespace testsupport;
using E = CPREventBase;
using bls_2010::CommonDefs;

namespace {

const QLatin1Char blank(' ');

void watchAll(Recorder &recorder, const CPRData &session)
{
    const auto time = &CPRDataBase::sessionTimeChanged;
    recorder.watch(session.compressionData(), time, "C"_l1);
    recorder.watch(session.ventilationData(), time, "V"_l1);
    recorder.watch(session.cprEvents(), time, "E"_l1);
    recorder.watch(session.cprGuidelines(), time, "G"_l1);
    recorder.watch(session.cprEvents(), &CPREvents::cprSessionInfoChanged, "info"_l1);
    recorder.watch(session.cprEvents(), &CPREvents::otherEventAdded, "other"_l1);
    recorder.watch(session.cprEvents(), &CPREvents::eventsCleared, "cleared"_l1);
    recorder.watch(&session, &CPRData::resumingSession, "resume"_l1);
    recorder.watch(&session, &CPRData::receiveDataComplete, "complete"_l1);
    recorder.watch(&session, &CPRData::learnersChanged, "learners"_l1);
    recorder.watch(&session, &CPRData::learnerNamesUpdated, "names"_l1);
    recorder.watch(&session, &CPRData::cprGuidelinesListChanged, "list"_l1);
    recorder.watch(&session, &CPRData::cprGuidelinesRecevied, "received"_l1);
    recorder.watch(&session, &CPRData::unsupportedFeature, "unsupported"_l1);
}

using Step = std::function<void(CPRData &)>;
using Steps = QVector<Step>;
using Ints = QVector<int>;
using Losses = QVector<QPair<int, int>>; // type and time

// clang-format off
Step to(CPRData::CprState state) { return [=](CPRData &session) { session.setCprState(state); }; }
const Step manikinReset = to(CPRData::CPR_MANIKIN_INIT);
const Step prepared = to(CPRData::CPR_INIT);
const Step started = to(CPRData::CPR_START);
const Step ended = to(CPRData::CPR_ENDED);
const Step stopped = to(CPRData::CPR_STOP);
const Step reconnected = to(CPRData::CPR_RECONNECTED);
const Step fast = [](CPRData &session) { session.compressionData()->waveformInfo()->setSamplePeriod(10); };
Step header(int number) { return [=](CPRData &session) { session.waveHeaderReceived(number); }; }
Step lossThreshold(int msecs) { return [=](CPRData &session) { session.setPacketLossThresholdMs(msecs); }; }
Step assigned(const QString &learner) { return [=](CPRData &session) { session.assignLearner(learner); }; }
Step released(const QString &learner) { return [=](CPRData &session) { session.releaseLearner(learner); }; }
// clang-format on

// Gives what the last step announces.
QString run(CPRData &session, const Steps &steps)
{
    Recorder recorder;
    watchAll(recorder, session);
    for (const Step &step : steps) {
        recorder.take();
        step(session);
    }
    return recorder.take();
}

// A set as it arrives.
struct Set {
    bool isActive;
    QString identifier;
    int tooDeepSetting;
    int minRate;
};

using Sets = QVector<Set>;

CPRGuidelines *guidelinesOf(const Set &set)
{
    auto *guidelines = new CPRGuidelines(static_cast<CPRData *>(nullptr));
    guidelines->setManikinGuidelineFlag(set.isActive);
    guidelines->setGuidelinesID(set.identifier);
    guidelines->setCompressionTooDeepSetting(set.tooDeepSetting);
    guidelines->setCompressionRateMin(set.minRate);
    return guidelines;
}

// The sets that the session knows: identifier and lowest rate.
QString known(const CPRData &session)
{
    QStringList texts;
    for (const QVariant &entry : session.cprGuidelinesList()) {
        const auto *set = qobject_cast<CPRGuidelines *>(entry.value<QObject *>());
        texts.append(
            QStringLiteral("%1:%2").arg(set->guidelinesID()).arg(set->compressionRateMin()));
    }
    return texts.join(blank);
}

QStringList logged; // function: text

void takeLogLine(QtMsgType /*type*/, const QMessageLogContext &context, const QString &text)
{
    const QString function = QString::fromLatin1(context.function);
    logged.append(function.section(QLatin1Char('('), 0, 0).section(blank, -1) + ": "_l1 + text);
}

QString studentsOf(const CPRData &session)
{
    return textOf(session.cprEvents()->sessionInfo(), E::students);
}

} // namespace

Q_DECLARE_METATYPE(Step)
Q_DECLARE_METATYPE(Set)

class TestSession : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void states_data()
    {
        // What the last step announces; threshold, last and expected header; the start is stamped.
        const auto row = columns<Steps, QString, Ints>("steps", "heard", "numbers");
        row("manikin", {manikinReset}, "cleared other C V E", {0, 0, 1, 0});
        row("manikin again", {manikinReset, manikinReset}, "", {0, 0, 1, 0});
        row("other manikin", {started, lossThreshold(70), header(7), manikinReset},
            "cleared other C V E", {0, 0, 1, 0});
        row("prepared", {prepared}, "other cleared C V E", {0, 0, 1, 0});
        row("prepared again", {prepared, prepared}, "", {0, 0, 1, 0});
        row("after a session", {started, lossThreshold(70), header(7), prepared},
            "other cleared C V E", {70, 0, 1, 0});
        row("started", {prepared, started}, "", {0, 0, 1, 1});
        row("not prepared", {started}, "resume", {0, 0, 1, 0});
        row("started again", {prepared, started, started}, "resume", {0, 0, 1, 1});
        row("ended", {started, header(7), ended}, "", {0, 7, 8, 0});
        row("resumed", {started, header(7), ended, started}, "resume", {0, 7, 8, 0});
        row("stopped", {prepared, stopped}, "", {0, 0, 1, 0});
        row("resumed from stop", {stopped, started}, "resume", {0, 0, 1, 0});
        row("reconnected", {prepared, reconnected}, "", {0, 0, 1, 0});
        row("resumed from reconnect", {reconnected, started}, "resume", {0, 0, 1, 0});
    }

    void states()
    {
        QFETCH(Steps, steps);
        CPRData session;
        QCOMPARE(session.cprState(), CPRData::CPR_UNINITIALIZED);
        QTEST(run(session, steps), "heard");
        const bool stamped = !textOf(session.cprEvents()->sessionInfo(), E::startTime).isEmpty();
        QTEST(Ints({session.packetLossThresholdMs(), session.lastWaveSequence(),
                    session.expectedWaveSequence(), stamped}),
              "numbers");
    }

    void headers_data()
    {
        // Expected header, last header, session time, samples of both waves; packet losses.
        const auto row =
            columns<Steps, Ints, Losses, QStringList>("steps", "numbers", "losses", "warnings");
        constexpr auto begin = E::CprPacketLossStart;
        constexpr auto end = E::CprPacketLossEnd;
        const QString jump = "Lost data: the wave jumps from %1 and is not filled";
        const QString tooMany = "Lost data: a wave holds no more than 8730000 samples";
        const QStringList full{tooMany, tooMany}; // both waves
        // clang-format off
        row("1, 2, 5", {fast, started, header(1), header(2), header(5)}, {6, 5, 50, 2, 2}, {{begin, 30}, {end, 40}}, {});
        row("at the threshold", {fast, lossThreshold(20), started, header(1), header(2), header(5)}, {6, 5, 50, 2, 2}, {}, {});
        row("above it", {fast, lossThreshold(19), started, header(1), header(2), header(5)},
            {6, 5, 50, 2, 2}, {{begin, 30}, {end, 40}}, {});
        row("two gaps", {fast, started, header(2), header(4)}, {5, 4, 40, 2, 2}, {{begin, 10}, {end, 10}, {begin, 30}, {end, 30}}, {});
        row("a lower number", {fast, started, header(1), header(2), header(1)}, {2, 1, 10, 0, 0}, {}, {});
        row("a negative number", {fast, started, header(-5)}, {-4, -5, -50, 0, 0}, {}, {});
        row("0", {fast, started, header(1), header(0)}, {2, 0, 10, 0, 0}, {}, {});
        row("not started", {fast, stopped, header(5)}, {1, 5, 0, 0, 0}, {}, {});
        row("pause", {fast, started, header(1), stopped, header(2), header(3), started, header(4)},
            {5, 4, 40, 2, 2}, {{begin, 20}, {end, 30}}, {});
        row("24 h", {started, header(1), header(4320002)},
            {4320003, 4320002, 86400040, 4320000, 4320000}, {{begin, 40}, {end, 86400020}}, {});
        row("more", {started, header(1), header(4320003), header(4320004)},
            {4320005, 4320004, 86400080, 0, 0}, {}, QStringList(jump.arg("2 to 4320003")));
        row("fuller than a wave can be", {fast, started, header(8640001), header(8730011)},
            {8730012, 8730011, 87300110, 8730000, 8730000},
            {{begin, 10}, {end, 86400000}, {begin, 86400020}, {end, 87300100}}, full);
        row("the last number", {started, header(2147483647), header(3)}, {4, 3, 60, 0, 0}, {}, QStringList(jump.arg("1 to 2147483647")));
        // clang-format on
    }

    void headers()
    {
        QFETCH(Steps, steps);
        QFETCH(QStringList, warnings);
        CPRData session;
        for (const QString &warning : warnings)
            QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
        run(session, steps);
        Losses losses;
        for (const E *event : session.cprEvents()->events().mid(1))
            losses.append({event->type(), event->msecs()});
        QTEST(losses, "losses");
        QTEST(Ints({session.expectedWaveSequence(), session.lastWaveSequence(),
                    session.cprEvents()->sessionTime(), session.compressionData()->count(),
                    session.ventilationData()->count()}),
              "numbers");
    }

    // Who hears of the session time finds the number of the header that brought it, and can begin
    // anew there.
    void headersInsideSignals()
    {
        CPRData session;
        start(session);
        QVector<int> expected;
        int resetAt = 0;
        connect(session.cprEvents(), &CPRDataBase::sessionTimeChanged, this, [&](int msecs) {
            expected.append(session.expectedWaveSequence());
            if (msecs == resetAt && msecs > 0)
                session.setCprState(CPRData::CPR_INIT);
        });
        for (int header : {1, 2, 5, 4})
            session.waveHeaderReceived(header);
        QCOMPARE(expected, QVector<int>({1, 2, 5, 4}));
        resetAt = 100;
        session.waveHeaderReceived(5);
        QCOMPARE(session.expectedWaveSequence(), 2); // 1 of the new session, and a step
        QCOMPARE(session.lastWaveSequence(), 5);
    }

    void samples_data()
    {
        const auto row = columns<int, int, QString>("type", "step", "age");
        row("adult", 4, 10, "A");
        row("undefined", 255, 10, "A");
        row("infant", 8, 1, "I");
        row("30", 30, 1, "I");
        row("31", 31, 1, "I");
        row("infant of coarse step", 38, 10, "I");
        row("41", 41, 1, "I");
        row("nine months", 100, 1, "T");
        row("newborn", 101, 1, "N");
        row("child", 6, 10, "C");
        row("21", 21, 10, "C");
        row("43", 43, 10, "C");
        row("40", 40, 10, "A");
    }

    void samples()
    {
        QFETCH(int, type);
        QFETCH(int, step);
        QFETCH(QString, age);
        CPRData session;
        CPREventSessionInfo *info = session.cprEvents()->sessionInfo();
        send(session, 64, QByteArray(10, '\0') + static_cast<char>(type));
        Ints stored;
        int sequence = 0;
        for (int value : {157, -157, 9, -9, 10}) {
            session.waveDataReceived(CommonDefs::WAVE_RELATIVE_COMP_DEPTH, value, sequence);
            session.waveDataReceived(CommonDefs::WAVE_VENT_VOLUME, value, sequence);
            stored += session.compressionData()->at(sequence);
            QCOMPARE(session.compressionData()->at(sequence),
                     session.ventilationData()->at(sequence));
            ++sequence;
        }
        QCOMPARE(stored, step == 1 ? Ints({157, -157, 9, -9, 10}) : Ints({150, -150, 0, 0, 10}));
        QCOMPARE(info->waveDataStep(), step);
        QCOMPARE(info->patientAgeType(), age);
        QCOMPARE(info->isInfant(), age == "T"_l1 || age == "I"_l1);
        QVERIFY(info->isNewborn() == (age == "N"_l1) && info->isInfant9Months() == (age == "T"_l1));
        QCOMPARE(info->isChild(), age == "C"_l1);
        session.cprGuidelines()->setGuidelinesID("Custom.Q"_l1);
        QCOMPARE(info->patientAgeType(), "Q"_l1);
        session.reset();
        QCOMPARE(info->waveDataStep(), 10);
    }

    void routing_data()
    {
        // Accepted or not: 77 (depth), 77 (other depth), 87, 104, 77 (volume), 88, 79, 80, 81,
        // 47, 75.
        const auto row = columns<CPRData::CprState, QString>("state", "accepted");
        row("prepared", CPRData::CPR_INIT, "+-++++++-++");
        row("running", CPRData::CPR_START, "+-+++++++++");
        row("ended", CPRData::CPR_ENDED, "---------++");
        row("stopped", CPRData::CPR_STOP, "+-++++++-++");
    }

    void routing()
    {
        QFETCH(CPRData::CprState, state);
        CPRData session;
        session.setCprState(state);
        session.setSessionTime(9000);
        // clang-format off
        const QVector<QPair<quint32, QByteArray>> messages{
            {77, bytes({0, 9, 20})}, {77, bytes({0, 13, 20})}, {87, bytes({0, 1})}, {104, bytes({0, 1})},
            {77, bytes({0, 12, 20})}, {88, bytes({0, 1})}, {79, {}}, {80, {}}, {81, bytes({0, 2, 0})},
            {47, {}}, {75, {}}};
        // clang-format on
        QString accepted;
        for (const auto &[id, content] : messages)
            accepted +=
                QLatin1Char(send(session, id, content + QByteArray(60, '\0'), 1) ? '+' : '-');
        QTEST(accepted, "accepted");
        Recorder recorder;
        watchAll(recorder, session);
        CPREvents *events = session.cprEvents();
        events->incomingCompressionEvent(9000, 100, {});
        events->incomingVentilationEvent(9100, 10, {});
        events->incomingInactivityTime(4000, 5);
        const bool isEnded = state == CPRData::CPR_ENDED;
        QCOMPARE(recorder.take(), isEnded ? ""_l1 : "complete complete complete"_l1);
        QCOMPARE(events->count(1) + events->count(2), isEnded ? 0 : 4);
    }

    void timeReceivingAndFlags()
    {
        CPRData session;
        Recorder recorder;
        watchAll(recorder, session);
        recorder.watch(session.cprGuidelines(), &CPRGuidelines::guidelinesChanged, "changed"_l1);
        recorder.watch(&session, &CPRData::isSavedChanged, "saved"_l1);
        recorder.watch(&session, &CPRData::isUploadedChanged, "uploaded"_l1);
        session.setSessionTime(500);
        session.setSessionTime(500);
        QCOMPARE(recorder.take(), "C V E C V E"_l1);
        for (bool receiving : {true, false}) { // while it receives, the guidelines hold still
            session.receivingData(receiving);
            QCOMPARE(session.receiving(), receiving);
            session.cprGuidelines()->setIsOfficial(receiving);
            settle();
            QCOMPARE(recorder.take(), receiving ? ""_l1 : "complete changed"_l1);
        }
        for (bool value : {false, true, true, false}) {
            session.setIsSaved(value);
            session.setIsUploaded(value);
        }
        QCOMPARE(recorder.take(), "saved uploaded saved uploaded"_l1);
    }

    void trimming_data()
    {
        // A wave of 3100 samples and a pause from 50 to 62 s; the statistics say 59 s.
        const auto row = columns<bool, int, Ints>("wanted", "time", "left");
        row("trimmed", true, 61000, {3001, 3001, 60000, 60000, 10});
        row("1 ms", true, 60001, {3001, 3001, 60000, 60000, 10});
        row("not over", true, 60000, {3100, 3100, 60000, 62000, 12});
        row("no", false, 61000, {3100, 3100, 61000, 62000, 12});
    }

    void trimming()
    {
        QFETCH(bool, wanted);
        QFETCH(int, time);
        CPRData session;
        CPREvents *events = session.cprEvents();
        session.setTrimToTotalTime(wanted);
        session.compressionData()->fill(3100);
        session.ventilationData()->fill(3100);
        auto *pause = new CPREventInactivityCPR(50000, events);
        pause->setEventEndTime(62000);
        pause->setParameter(E::compInactivity, 12);
        events->addEvent(pause, false);
        session.setSessionTime(time);
        events->setScoresToReceive(1);
        send(session, 109, bytes({0, 0, 0, 0, 0, 59, 0}));
        QTEST(Ints({session.compressionData()->count(), session.ventilationData()->count(),
                    events->sessionTime(), pause->eventEndTime(), intOf(pause, E::compInactivity)}),
              "left");
    }

    void learners_data()
    {
        // What the last step announces, in the order of the connections.
        const auto row = columns<Steps, QString, QString>("steps", "students", "heard");
        row("one", {assigned("Ola")}, "Ola", "info names learners");
        row("duplicate", {assigned("Ola"), assigned("Ola")}, "Ola", "");
        row("other case", {assigned("Ola"), assigned("ola")}, "Ola,ola", "info names learners");
        row("commas", {assigned("A,B"), assigned("C")}, "AB,C", "info names learners");
        row("only a comma", {assigned(","), assigned("C")}, "C", "info names learners");
        row("released", {assigned("A"), assigned("B"), released("A")}, "B", "info names learners");
        row("unknown released", {assigned("A"), released("B")}, "A", "info names learners");
    }

    void learners()
    {
        QFETCH(Steps, steps);
        CPRData session;
        QTEST(run(session, steps), "heard");
        QTEST(studentsOf(session), "students");
    }

    void learnersOfCrosswiseConnectedSessions()
    {
        CPRData one;
        CPRData two;
        connect(&one, &CPRData::learnersChanged, &two, &CPRData::onOtherLearnersChanged);
        connect(&two, &CPRData::learnersChanged, &one, &CPRData::onOtherLearnersChanged);
        one.assignLearner("A,1"_l1);
        two.assignLearner("B"_l1);
        QCOMPARE(one.learners(), QStringList({"A,1"_l1, "B"_l1}));
        QCOMPARE(two.learners(), one.learners());
        QCOMPARE(studentsOf(one) + QLatin1Char('/') + studentsOf(two), "A1,B/A1,B"_l1);
        QSignalSpy changes(&two, &CPRData::learnersChanged);
        two.onOtherLearnersChanged(); // by no session
        QCOMPARE(changes.count(), 0);
        Q_EMIT one.learnersChanged(); // the same names again
        QCOMPARE(changes.count(), 1);
    }

    void manyLearners()
    {
        CPRData session;
        for (int i = 0; i < 20000; ++i)
            session.assignLearner(QString::number(i % 19999));
        QCOMPARE(session.learners().size(), 19999);
        QCOMPARE(studentsOf(session).size(), 88885 + 19998); // digits and commas
    }

    // What comes in while a session takes over the names of another is not lost.
    void learnersComingInMeanwhile()
    {
        CPRData one;
        CPRData two;
        connect(&one, &CPRData::learnersChanged, &two, &CPRData::onOtherLearnersChanged);
        connect(&two, &CPRData::learnersChanged, &one, [&one] { one.assignLearner("B"_l1); });
        one.assignLearner("A"_l1);
        QCOMPARE(two.learners(), QStringList({"A"_l1, "B"_l1}));
        QCOMPARE(studentsOf(two), "A,B"_l1);
    }

    void guidelines_data()
    {
        // Sets as they arrive; what the last one announces; the list then; how many warnings.
        const auto row = columns<Sets, QString, QString, int>("sets", "heard", "list", "warnings");
        row("active", {{true, "2015-A", 1, 90}}, "received", "2015-A:90", 0);
        row("unknown setting", {{true, "2015-A", 0, 90}}, "unsupported received", "2015-A:90", 1);
        row("the same again", {{true, "2015-A", 0, 90}, {true, "2015-A", 0, 90}}, "received",
            "2015-A:90", 1);
        row("changed", {{true, "A", 0, 90}, {true, "A", 0, 91}}, "unsupported received", "A:91", 2);
        row("of 2010", {{true, "2010-A", 0, 90}}, "received", "2010-A:90", 0);
        row("2010 inside", {{true, "x2010", 0, 90}}, "unsupported received", "x2010:90", 1);
        row("new", {{true, "A", 1, 90}, {false, "B", 0, 80}}, "list received", "A:90 B:80", 0);
        row("known", {{false, "B", 0, 80}, {false, "C", 0, 70}, {false, "B", 0, 81}}, "received",
            ":100 B:81 C:70", 0);
        row("the active one's", {{true, "A", 1, 90}, {false, "A", 0, 80}}, "received", "A:80", 0);
    }

    void guidelines()
    {
        QFETCH(Sets, sets);
        QFETCH(int, warnings);
        for (bool clone : {false, true}) {
            CPRData session;
            session.setCloneIncomingGuidelines(clone);
            const CPRGuidelines *active = session.cprGuidelines();
            Recorder recorder;
            watchAll(recorder, session);
            for (int i = 0; i < warnings; ++i) {
                QTest::ignoreMessage(QtWarningMsg,
                                     "Manikin do not support compression too deep setting");
            }
            for (const Set &each : sets) {
                recorder.take();
                const QPointer<QObject> set = guidelinesOf(each);
                session.incomingGuidelines(qobject_cast<CPRGuidelines *>(set));
                const auto entry = QVariant::fromValue(set.data());
                QVERIFY(set.isNull() || session.cprGuidelinesList().contains(entry));
                QVERIFY(set.isNull() || set->parent() == &session);
            }
            QTEST(recorder.take(), "heard");
            QTEST(known(session), "list");
            QCOMPARE(session.cprGuidelines(), active);
            session.incomingGuidelines(nullptr);
            QCOMPARE(recorder.take(), QString());
            QTest::ignoreMessage(QtWarningMsg, "Invalid guideline received");
            QVERIFY(!send(session, 75, QByteArray(51, 'x')));
            const QVariantList held = session.cprGuidelinesList();
            for (const QVariant &entry : held) // nothing happens to one that is held
                session.incomingGuidelines(qobject_cast<CPRGuidelines *>(entry.value<QObject *>()));
            QTEST(known(session), "list");
            recorder.take();
            for (const QVariant &entry : held.mid(1))
                delete entry.value<QObject *>(); // leaves the list
            QCOMPARE(session.cprGuidelinesList(), held.mid(0, 1));
            QCOMPARE(recorder.take().count("list"_l1), held.size() - 1);
        }
    }

    void guidelineMessage()
    {
        CPRData session;
        QSignalSpy received(&session, &CPRData::cprGuidelinesRecevied);
        QByteArray content = numberedBytes(52) + "2010 x";
        QVERIFY(send(session, 75, content)); // byte 50 is not 1: not the active one
        QCOMPARE(known(session), ":100 2010 x:21"_l1);
        content[50] = 1;
        QVERIFY(send(session, 75, content));
        QCOMPARE(known(session), "2010 x:21 2010 x:21"_l1);
        QCOMPARE(received.at(1).at(0).value<CPRGuidelines *>(), session.cprGuidelines());
    }

    void copy()
    {
        auto source = std::make_unique<CPRData>();
        start(*source);
        source->setTrimToTotalTime(true);
        source->setIsSaved(true);
        source->setIsUploaded(true);
        source->setPacketLossThresholdMs(5);
        source->setCloneIncomingGuidelines(true);
        source->receivingData(true);
        source->assignLearner("Ola"_l1);
        source->cprEvents()->sessionInfo()->setTotalTime(60);
        for (const Set &set : {Set{true, "A", 1, 90}, Set{false, "B", 0, 80}})
            source->incomingGuidelines(guidelinesOf(set));
        source->waveHeaderReceived(1);
        source->waveDataReceived(CommonDefs::WAVE_RELATIVE_COMP_DEPTH, 500, 0);
        source->waveDataReceived(CommonDefs::WAVE_VENT_VOLUME, 300, 0);
        source->compressionData()->waveformInfo()->setSamplePeriod(10);

        CPRData copied(*source);
        QCOMPARE(copied.cprState(), CPRData::CPR_START);
        QVERIFY(copied.trimToTotalTime() && copied.isSaved() && !copied.isUploaded());
        QVERIFY(!copied.receiving() && !copied.cloneIncomingGuidelines());
        QVERIFY(copied.packetLossThresholdMs() == 0 && copied.filename().isEmpty());
        QCOMPARE(copied.expectedWaveSequence() * 10 + copied.lastWaveSequence(), 21);
        QCOMPARE(copied.learners().join(blank) + studentsOf(copied), "OlaOla"_l1);
        QCOMPARE(copied.cprGuidelinesList(), source->cprGuidelinesList());
        QVERIFY(copied.cprGuidelines() != source->cprGuidelines());
        QVERIFY(*copied.cprGuidelines() == *source->cprGuidelines());
        source->cprGuidelines()->setCompressionRateMin(1);
        Recorder recorder;
        watchAll(recorder, copied);
        source.reset();

        QCOMPARE(recorder.take(), "list list"_l1);
        QCOMPARE(known(copied), QString());
        QCOMPARE(copied.cprGuidelines()->compressionRateMin(), 90);
        copied.incomingGuidelines(guidelinesOf({false, "B", 0, 70}));
        QCOMPARE(known(copied), "B:70"_l1);
        QCOMPARE(run(copied, {assigned("Kari")}), "info names learners"_l1);
        QCOMPARE(studentsOf(copied), "Ola,Kari"_l1);
        copied.waveHeaderReceived(3);
        QCOMPARE(copied.compressionData()->at(1), 500); // the last depth fills the gap
        QCOMPARE(copied.compressionData()->count() + copied.ventilationData()->count(), 4);
        QCOMPARE(copied.cprEvents()->sessionTime(), 30);
        copied.cprEvents()->setScoresToReceive(1); // statistics never trim a copy
        copied.setSessionTime(90000);
        send(copied, 109, bytes({0, 0, 0, 0, 0, 1, 0}));
        QCOMPARE(copied.cprEvents()->sessionTime(), 90000);
        QCOMPARE(intOf(copied.cprEvents()->sessionInfo(), E::totalTime), 60);
    }

    void connectedAed()
    {
        CPRData session;
        session.setSessionTime(700);
        CPREvents *events = session.cprEvents();
        const CPREventSessionInfo *info = events->sessionInfo();
        QSignalSpy connected(info, &CPREventSessionInfo::connectedAEDTypeChanged);
        QStringList steps; // the type that is known, announcements, events
        for (int type : {4, 2, 2, 9, 200, 0, 3, 4, -1, 3}) {
            send(session, 64, bytes({type}).prepend(QByteArray(22, '\0')).left(type < 0 ? 22 : 23));
            steps.append(QString::asprintf("%d%d%d", info->connectedAEDType(),
                                           int(connected.count()), events->count(E::TagAed)));
        }
        QCOMPARE(steps.join(blank), "400 211 211 122 122 032 343 453 453 364"_l1);
        QCOMPARE(numbersOf(events->last(E::TagAed), {"msec", "aedEventType", "aedType"}),
                 QVector<double>({700, 29, 3}));
        events->reset(); // it is still connected
        QCOMPARE(numbersOf(events->last(E::TagAed), {"msec", "aedType"}), QVector<double>({0, 3}));
        QCOMPARE(events->count(E::TagAed), 1);
        // An info beside the list's own one knows its AED, too, and enters it once.
        const std::unique_ptr<CPREventSessionInfo> beside(events->sessionInfo()->clone(events));
        for (int i = 0; i < 2; ++i)
            beside->setVersionInfo(4, QString(), QString(), QString(), E::AEDTypeVolterm);
        QCOMPARE(int(beside->connectedAEDType()), int(E::AEDTypeVolterm));
        QCOMPARE(events->count(E::TagAed), 2);
        // The manikin can report it by an event as well.
        connected.clear();
        QVERIFY(send(session, 48, bytes({0, 29, 9})) && send(session, 48, bytes({0, 29, 1})));
        QCOMPARE(int(info->connectedAEDType()), 1);
        QCOMPARE(connected.count(), 1);
    }

    // A line names the operation that reports, and enumerators by their keys.
    void logLines_data()
    {
        const auto row = columns<Step>("act");
        row("CPRData::setCprState: State = CPR_ENDED", ended);
        row("CPRData::waveHeaderReceived: sequenceNumber 3 cprState CPR_START", header(3));
        row("CPRData::waveHeaderReceived: waveHeaderSync issue by 2, 40 ms", header(3));
        row("CPRVentilationData::waveDataReceived: wType 9 data 150 seqNumber 4",
            [](CPRData &session) {
                session.waveDataReceived(CommonDefs::WAVE_RELATIVE_COMP_DEPTH, 157, 4);
            });
        row("CPREvents::aedDetected: AED Type: AEDTypeVolterm",
            [](CPRData &session) { session.cprEvents()->aedDetected(E::AEDTypeVolterm); });
        row("CPREvents::addEvent: Event list tag TagExclFlowFraction",
            [](CPRData &session) { session.addUserEvent(QString()); });
        row("CPREvents::incomingMsg: ignoring event",
            [](CPRData &session) { send(session, 52, QByteArray()); });
        const auto write = [](CPRData &session) {
            CPRFileHandlerZip closed;
            session.writeData(&closed);
        };
        row("CPRFileHandlerZip::openFileForWriting: Failed to open file: \"Unknown error\"", write);
        row("CPRData::writeData: Unable to write CPR Data, CPREvents.xml", write);
    }

    void logLines()
    {
        QFETCH(Step, act);
        const QString line = QTest::currentDataTag();
        CPRData session;
        start(session);
        QLoggingCategory::setFilterRules("Kelmar.*=true"_l1);
        logged.clear();
        const QtMessageHandler previous = qInstallMessageHandler(takeLogLine);
        act(session);
        qInstallMessageHandler(previous);
        QLoggingCategory::setFilterRules(QString());
        QVERIFY2(logged.contains(line), qPrintable(logged.join(QLatin1Char('\n'))));
    }
};

QTEST_GUILESS_MAIN(TestSession)

#include "tst_session.moc"
