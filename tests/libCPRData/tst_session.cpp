// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventInactivityCPR.h"
#include "CPREventSessionInfo.h"
#include "CPRFileHandlerZip.h"
#include "CPRWaveformInfo.h"
#include "support/TestSupport.h"

#include <QHash>
#include <QLoggingCategory>
#include <QMetaEnum>
#include <QPointer>
#include <QSignalSpy>

#include <functional>
#include <memory>

using namespace TestSupport;
using E = CPREventBase;
using bls_2010::CommonDefs;

Q_DECLARE_METATYPE(std::function<void(CPRData &)>)

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

// Runs words: a state's key without CPR_, or a letter with a number or name. Gives what the last
// one announces.
QString run(CPRData &session, const QString &words)
{
    QString value;
    const QHash<QChar, std::function<void()>> actions{
        {QLatin1Char('h'), [&] { session.waveHeaderReceived(value.toInt()); }},
        {QLatin1Char('p'),
         [&] { session.compressionData()->waveformInfo()->setSamplePeriod(value.toInt()); }},
        {QLatin1Char('l'), [&] { session.setPacketLossThresholdMs(value.toInt()); }},
        {QLatin1Char('+'), [&] { session.assignLearner(value); }},
        {QLatin1Char('-'), [&] { session.releaseLearner(value); }},
    };
    const auto states = QMetaEnum::fromType<CPRData::CprState>();
    Recorder recorder;
    watchAll(recorder, session);
    for (const QString &word : words.split(blank)) {
        recorder.take();
        value = word.section(QLatin1Char(':'), 1);
        if (value.isEmpty())
            session.setCprState(CPRData::CprState(states.keyToValue("CPR_" + word.toLatin1())));
        else
            actions.value(word.at(0))();
    }
    return recorder.take();
}

// A set as it arrives: "active:identifier:too-deep setting:lowest rate".
CPRGuidelines *guidelinesOf(const QString &text)
{
    const QStringList words = text.split(QLatin1Char(':'));
    auto *guidelines = new CPRGuidelines(static_cast<CPRData *>(nullptr));
    guidelines->setManikinGuidelineFlag(words.at(0) == "active"_l1);
    guidelines->setGuidelinesID(words.at(1));
    guidelines->setCompressionTooDeepSetting(words.at(2).toInt());
    guidelines->setCompressionRateMin(words.at(3).toInt());
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

class TestSession : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void states_data()
    {
        // What the last step announces; threshold, last and expected header; the start is stamped.
        addRows({"steps", "heard", "numbers"},
                {"manikin|MANIKIN_INIT|cleared other C V E|0 0 1 0",
                 "manikin again|MANIKIN_INIT MANIKIN_INIT||0 0 1 0",
                 "other manikin|START l:70 h:7 MANIKIN_INIT|cleared other C V E|0 0 1 0",
                 "prepared|INIT|other cleared C V E|0 0 1 0", "prepared again|INIT INIT||0 0 1 0",
                 "after a session|START l:70 h:7 INIT|other cleared C V E|70 0 1 0",
                 "started|INIT START||0 0 1 1", "not prepared|START|resume|0 0 1 0",
                 "started again|INIT START START|resume|0 0 1 1", "ended|START h:7 ENDED||0 7 8 0",
                 "resumed|START h:7 ENDED START|resume|0 7 8 0", "stopped|INIT STOP||0 0 1 0",
                 "resumed from stop|STOP START|resume|0 0 1 0",
                 "reconnected|INIT RECONNECTED||0 0 1 0",
                 "resumed from reconnect|RECONNECTED START|resume|0 0 1 0"});
    }

    void states()
    {
        QFETCH(QString, steps);
        CPRData session;
        QCOMPARE(session.cprState(), CPRData::CPR_UNINITIALIZED);
        QTEST(run(session, steps), "heard");
        const bool stamped = !textOf(session.cprEvents()->sessionInfo(), E::startTime).isEmpty();
        QTEST(QString::asprintf("%d %d %d %d", session.packetLossThresholdMs(),
                                session.lastWaveSequence(), session.expectedWaveSequence(),
                                stamped),
              "numbers");
    }

    void headers_data()
    {
        // Expected header, last header, session time, samples of both waves; packet losses.
        addRows(
            {"steps", "numbers", "losses", "warning"},
            {"1, 2, 5|p:10 START h:1 h:2 h:5|6 5 50 2 2|31@30 32@40|",
             "at the threshold|p:10 l:20 START h:1 h:2 h:5|6 5 50 2 2||",
             "above it|p:10 l:19 START h:1 h:2 h:5|6 5 50 2 2|31@30 32@40|",
             "two gaps|p:10 START h:2 h:4|5 4 40 2 2|31@10 32@10 31@30 32@30|",
             "a lower number|p:10 START h:1 h:2 h:1|2 1 10 0 0||",
             "a negative number|p:10 START h:-5|-4 -5 -50 0 0||",
             "0|p:10 START h:1 h:0|2 0 10 0 0||", "not started|p:10 STOP h:5|1 5 0 0 0||",
             "pause|p:10 START h:1 STOP h:2 h:3 START h:4|5 4 40 2 2|31@20 32@30|",
             "24 h|START h:1 h:4320002|4320003 4320002 86400040 4320000 4320000|"
             "31@40 32@86400020|",
             "more|START h:1 h:4320003 h:4320004|4320005 4320004 86400080 0 0||2 to 4320003",
             "fuller than a wave can be|p:10 START h:8640001 h:8730011|8730012 8730011 87300110 "
             "8730000 8730000|31@10 32@86400000 31@86400020 32@87300100|full",
             "the last number|START h:2147483647 h:3|4 3 60 0 0||1 to 2147483647"});
    }

    void headers()
    {
        QFETCH(QString, steps);
        QFETCH(QString, warning);
        CPRData session;
        if (warning == "full"_l1) {
            for (int wave = 0; wave < 2; ++wave) {
                QTest::ignoreMessage(QtWarningMsg,
                                     "Lost data: a wave holds no more than 8730000 samples");
            }
        } else if (!warning.isEmpty()) {
            const auto text = QStringLiteral("Lost data: the wave jumps from %1 and is not filled");
            QTest::ignoreMessage(QtWarningMsg, qPrintable(text.arg(warning)));
        }
        run(session, steps);
        QStringList losses;
        for (const E *event : session.cprEvents()->events().mid(1))
            losses.append(QString::asprintf("%d@%d", event->type(), event->msecs()));
        QTEST(losses.join(blank), "losses");
        QTEST(QString::asprintf("%d %d %d %d %d", session.expectedWaveSequence(),
                                session.lastWaveSequence(), session.cprEvents()->sessionTime(),
                                session.compressionData()->count(),
                                session.ventilationData()->count()),
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
        addRows({"type", "step", "age"},
                {"adult|4|10|A", "undefined|255|10|A", "infant|8|1|I", "30|30|1|I", "31|31|1|I",
                 "infant of coarse step|38|10|I", "41|41|1|I", "nine months|100|1|T",
                 "newborn|101|1|N", "child|6|10|C", "21|21|10|C", "43|43|10|C", "40|40|10|A"});
    }

    void samples()
    {
        QFETCH(QString, type);
        QFETCH(QString, step);
        QFETCH(QString, age);
        CPRData session;
        CPREventSessionInfo *info = session.cprEvents()->sessionInfo();
        send(session, 64, QByteArray(10, '\0') + static_cast<char>(type.toInt()));
        QString stored;
        int sequence = 0;
        for (int value : {157, -157, 9, -9, 10}) {
            session.waveDataReceived(CommonDefs::WAVE_RELATIVE_COMP_DEPTH, value, sequence);
            session.waveDataReceived(CommonDefs::WAVE_VENT_VOLUME, value, sequence);
            stored += QString::number(session.compressionData()->at(sequence)) + blank;
            QCOMPARE(session.compressionData()->at(sequence),
                     session.ventilationData()->at(sequence));
            ++sequence;
        }
        QCOMPARE(stored, step == "1"_l1 ? "157 -157 9 -9 10 "_l1 : "150 -150 0 0 10 "_l1);
        QCOMPARE(QString::number(info->waveDataStep()), step);
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
        // Taken or not: 77 (depth), 77 (other depth), 87, 104, 77 (volume), 88, 79, 80, 81, 47, 75.
        addRows({"state", "taken"},
                {"prepared|INIT|+-++++++-++", "running|START|+-+++++++++",
                 "ended|ENDED|---------++", "stopped|STOP|+-++++++-++"});
    }

    void routing()
    {
        QFETCH(QString, state);
        CPRData session;
        run(session, state);
        session.setSessionTime(9000);
        QString taken;
        for (const char *message : {"77 000914", "77 000D14", "87 0001", "104 0001", "77 000C14",
                                    "88 0001", "79 ", "80 ", "81 000200", "47 ", "75 "}) {
            const QByteArrayList words = QByteArray(message).split(' ');
            const auto content = QByteArray::fromHex(words.at(1)) + QByteArray(60, '\0');
            taken += QLatin1Char(send(session, words.at(0).toUInt(), content, 1) ? '+' : '-');
        }
        QTEST(taken, "taken");
        Recorder recorder;
        watchAll(recorder, session);
        CPREvents *events = session.cprEvents();
        events->incomingCompressionEvent(9000, 100, {});
        events->incomingVentilationEvent(9100, 10, {});
        events->incomingInactivityTime(4000, 5);
        const bool ended = state == "ENDED"_l1;
        QCOMPARE(recorder.take(), ended ? ""_l1 : "complete complete complete"_l1);
        QCOMPARE(events->count(1) + events->count(2), ended ? 0 : 4);
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
        addRows(
            {"wanted", "time", "left"},
            {"trimmed|1|61000|3001 3001 60000 60000 10", "1 ms|1|60001|3001 3001 60000 60000 10",
             "not over|1|60000|3100 3100 60000 62000 12", "no|0|61000|3100 3100 61000 62000 12"});
    }

    void trimming()
    {
        QFETCH(QString, wanted);
        QFETCH(QString, time);
        CPRData session;
        CPREvents *events = session.cprEvents();
        session.setTrimToTotalTime(wanted == "1"_l1);
        session.compressionData()->fill(3100);
        session.ventilationData()->fill(3100);
        auto *pause = new CPREventInactivityCPR(50000, events);
        pause->setEventEndTime(62000);
        pause->setParameter(E::compInactivity, 12);
        events->addEvent(pause, false);
        session.setSessionTime(time.toInt());
        events->setScoresToReceive(1);
        send(session, 109, bytes({0, 0, 0, 0, 0, 59, 0}));
        QTEST(QString::asprintf("%d %d %d %d %d", session.compressionData()->count(),
                                session.ventilationData()->count(), events->sessionTime(),
                                pause->eventEndTime(), intOf(pause, E::compInactivity)),
              "left");
    }

    void learners_data()
    {
        addRows({"steps", "students", "heard"}, // by the last step, in the order of the connections
                {"one|+:Ola|Ola|info names learners", "duplicate|+:Ola +:Ola|Ola|",
                 "other case|+:Ola +:ola|Ola,ola|info names learners",
                 "commas|+:A,B +:C|AB,C|info names learners",
                 "only a comma|+:, +:C|C|info names learners",
                 "released|+:A +:B -:A|B|info names learners",
                 "unknown released|+:A -:B|A|info names learners"});
    }

    void learners()
    {
        QFETCH(QString, steps);
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
        addRows({"sets", "heard", "list", "warnings"},
                {"active|active:2015-A:1:90|received|2015-A:90|0",
                 "unknown setting|active:2015-A:0:90|unsupported received|2015-A:90|1",
                 "the same again|active:2015-A:0:90 active:2015-A:0:90|received|2015-A:90|1",
                 "changed|active:A:0:90 active:A:0:91|unsupported received|A:91|2",
                 "of 2010|active:2010-A:0:90|received|2010-A:90|0",
                 "2010 inside|active:x2010:0:90|unsupported received|x2010:90|1",
                 "new|active:A:1:90 known:B:0:80|list received|A:90 B:80|0",
                 "known|known:B:0:80 known:C:0:70 known:B:0:81|received|:100 B:81 C:70|0",
                 "the active one's|active:A:1:90 known:A:0:80|received|A:80|0"});
    }

    void guidelines()
    {
        QFETCH(QString, sets);
        QFETCH(QString, warnings);
        for (bool clone : {false, true}) {
            CPRData session;
            session.setCloneIncomingGuidelines(clone);
            const CPRGuidelines *active = session.cprGuidelines();
            Recorder recorder;
            watchAll(recorder, session);
            for (int i = 0; i < warnings.toInt(); ++i) {
                QTest::ignoreMessage(QtWarningMsg,
                                     "Manikin do not support compression too deep setting");
            }
            for (const QString &text : sets.split(blank)) {
                recorder.take();
                const QPointer<QObject> set = guidelinesOf(text);
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
        for (QLatin1String set : {"active:A:1:90"_l1, "known:B:0:80"_l1})
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
        copied.incomingGuidelines(guidelinesOf("known:B:0:70"_l1));
        QCOMPARE(known(copied), "B:70"_l1);
        QCOMPARE(run(copied, "+:Kari"_l1), "info names learners"_l1);
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
        QCOMPARE(numbersOf(events->last(E::TagAed), "msec aedEventType aedType"),
                 QVector<double>({700, 29, 3}));
        events->reset(); // it is still connected
        QCOMPARE(numbersOf(events->last(E::TagAed), "msec aedType"), QVector<double>({0, 3}));
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
        using Act = std::function<void(CPRData &)>;
        QTest::addColumn<Act>("act");
        QTest::addColumn<QString>("line");
        const auto row = [](const char *line, const Act &act) {
            QTest::newRow(line) << act << line;
        };
        row("CPRData::setCprState: State = CPR_ENDED",
            [](CPRData &session) { session.setCprState(CPRData::CPR_ENDED); });
        row("CPRData::waveHeaderReceived: sequenceNumber 3 cprState CPR_START",
            [](CPRData &session) { session.waveHeaderReceived(3); });
        row("CPRData::waveHeaderReceived: waveHeaderSync issue by 2, 40 ms",
            [](CPRData &session) { session.waveHeaderReceived(3); });
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
        QFETCH(std::function<void(CPRData &)>, act);
        QFETCH(QString, line);
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
