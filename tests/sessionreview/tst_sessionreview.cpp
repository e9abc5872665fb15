// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/ManikinLogPlayer.h"
#include "manikinsim/Simulator.h"
#include "support/Messages.h"
#include "support/Rows.h"
#include "support/StoredSession.h"

#include "sessionreview/LatestEvents.h"
#include "sessionreview/LiveClass.h"
#include "sessionreview/Scores.h"
#include "sessionreview/SessionReview.h"
#include "sessionreview/StandClear.h"
#include "sessionreview/Words.h"

#include <CPREventCompression.h>
#include <CPREventSessionInfo.h>
#include <CPREventSessionScore.h>
#include <CPREventSessionStatistics.h>
#include <CPREventVentilation.h>

#include <QtTest>

#include <algorithm>

using namespace sessionreview;
using namespace testsupport;
using bls_2010::CommonDefs;
using E = CPREventBase;

namespace {

/// What a compression's message says; what is not given is right.
struct Pressed {
    int msecs = 0;
    float depth = 55; // mm
    int rate = 110; // per minute
    int number = 2; // in its cycle
    bool isReleased = true;
    bool isHandError = false;
    bool isXiphoid = false;
};

CPREventCompression *eventOf(const Pressed &pressed, CPREvents *owner = nullptr)
{
    auto *event = new CPREventCompression(pressed.msecs, owner, nullptr);
    event->setEventEndTime(pressed.msecs + 400);
    event->setProperty("compDepth", pressed.depth);
    event->setCompMeanRate(pressed.rate);
    event->setNumberInCycle(pressed.number);
    event->setProperty("compIncompleteRelease", !pressed.isReleased);
    event->setProperty("compHandposError", pressed.isHandError);
    event->setProperty("compHandposXiphoid", pressed.isXiphoid);
    return event;
}

CPREventVentilation *ventilation(int msecs, int volume, CPREvents *owner = nullptr)
{
    auto *event = new CPREventVentilation(msecs, owner);
    event->setProperty("ventVolume", volume);
    return event;
}

template <typename Entries, typename Condition> int count(const Entries &entries, Condition is)
{
    return static_cast<int>(std::count_if(entries.begin(), entries.end(), is));
}

} // namespace

Q_DECLARE_METATYPE(Training)
Q_DECLARE_METATYPE(Pressed)
Q_DECLARE_METATYPE(Prompt)

/// What a session means. Limits are those of a fresh guideline set: 50 to 60 mm, 100 to 120 per
/// minute, 400 to 699 ml.
class TestSessionReview : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(play(m_session, "two-rescuers.cprlog")); }

    void protocols_data()
    {
        // Targets: compressions and ventilations a cycle, flow time in %, limits of the
        // ventilations per minute.
        const auto row = columns<int, Training, QVector<int>>("protocol", "trained", "targets");
        row("single rescuer", 0, {true, true, true}, {30, 3, 71, 0, 0});
        row("compressions only", 1, {true, false, false}, {0, 0, 91, 0, 0});
        row("ventilations only", 2, {false, true, false}, {0, 0, 0, 7, 13});
        row("automatic", 3, {true, true, true}, {30, 3, 0, 0, 0});
        row("two rescuers", 4, {true, true, true}, {15, 3, 81, 0, 0});
        row("high performance", 5, {true, true, false}, {0, 0, 0, 9, 11});
        row("unknown", 6, {true, true, true}, {30, 3, 0, 0, 0});
    }

    // What is trained, what is asked for, what a simulated rescuer does and what is found in the
    // session that becomes of it.
    void protocols()
    {
        QFETCH(int, protocol);
        QFETCH(Training, trained);
        QFETCH(QVector<int>, targets);
        QVERIFY(trainingOf(protocol) == trained);

        CPRData session;
        CPRGuidelines *set = session.cprGuidelines();
        set->setCompressionsBetweenVentilations(30);
        set->setCompressionsBetweenVentilationsTwoRescuer(15);
        set->setVentilationsBetweenCompressions(3);
        set->setMinimumAcceptedFlowtimePercentageSingleRescuerCPR(71);
        set->setMinimumAcceptedFlowtimePercentageTwoRescuerCPR(81);
        set->setMinimumAcceptedFlowtimePercentageCompressionsOnly(91);
        set->setVentilationRateMinForVentilationsOnly(7);
        set->setVentilationRateMaxForVentilationsOnly(13);
        set->setVentilationRateMinHPCPR(9);
        set->setVentilationRateMaxHPCPR(11);
        session.cprEvents()->setCprProtocol(CommonDefs::CprProtocolType(protocol));
        const Targets asked = targetsOf(session);
        QCOMPARE(
            QVector<int>({asked.compressionsPerCycle, asked.ventilationsPerCycle, asked.minFlowTime,
                          int(asked.ventilationRate.min), int(asked.ventilationRate.max)}),
            targets);

        if (protocol > CommonDefs::CPR_HIGH_PERFORMANCE)
            return; // nobody can train it
        manikinsim::Scenario scenario = *manikinsim::Scenario::find("good");
        scenario.protocol = CommonDefs::CprProtocolType(protocol);
        scenario.seconds = 60;
        manikinsim::Simulator simulator(scenario, 3);
        CPRData simulated;
        manikinlog::ManikinLogPlayer player(&simulated);
        for (manikinlog::Record record; simulator.next(record);)
            player.play(record);
        QCOMPARE(simulated.cprEvents()->count(E::TagComp) > 0, trained.compressions);
        QCOMPARE(simulated.cprEvents()->count(E::TagVent) > 0, trained.ventilations);
        QCOMPARE(manikinsim::hasCycles(scenario.protocol), trained.cycles);
        const SessionReview review = reviewOf(simulated);
        QVERIFY(review.figures.training == trained);
        const bool takesTurns =
            std::any_of(review.cycles.begin(), review.cycles.end(), [](const Cycle &each) {
                return each.compressions > 0 && each.ventilations > 0;
            });
        QCOMPARE(takesTurns, trained.cycles);
    }

    // What was done is looked at, whatever the protocol.
    void eventsAgainstTheProtocol()
    {
        CPRData session;
        start(session);
        session.cprEvents()->setCprProtocol(CommonDefs::CPR_VENTILATION_ONLY);
        QVERIFY(!figuresOf(session).training.compressions);
        session.cprEvents()->addEvent(eventOf({1000}, session.cprEvents()), true);
        QVERIFY(figuresOf(session).training.compressions);
    }

    void compressionsAreJudged_data()
    {
        const auto row = columns<Pressed, QStringList>("pressed", "faults");
        // clang-format off
        row("right", {}, {});
        row("at the limits", {0, 50, 100}, {});
        row("at the other limits", {0, 60, 120}, {});
        row("half a hundredth less", {0, 49.996F}, {});
        row("a hundredth less", {0, 49.99F}, {"Too shallow"});
        row("a hundredth more", {0, 60.01F}, {"Too deep"});
        row("too slow", {0, 55, 99}, {"Too slow"});
        row("too fast", {0, 55, 121}, {"Too fast"});
        row("first of a run", {0, 55, 20, 1}, {});
        row("not released", {0, 55, 110, 2, false}, {"Incomplete release"});
        row("hands", {0, 55, 110, 2, true, true}, {"Hand position"});
        row("xiphoid", {0, 55, 110, 2, true, false, true}, {"Hand position"});
        row("all", {0, 40, 130, 2, false, true},
            {"Too shallow", "Incomplete release", "Hand position", "Too fast"});
        // clang-format on
    }

    void compressionsAreJudged()
    {
        QFETCH(Pressed, pressed);
        const std::unique_ptr<CPREventCompression> event(eventOf(pressed));
        const Faults faults = judged(*event, targetsOf(CPRData())).faults;
        QTEST(faultTexts(faults), "faults");
    }

    void ventilationsAreJudged_data()
    {
        const auto row = columns<int, QStringList>("volume", "faults");
        row("just enough", 400, {});
        row("too little", 399, {"Too little"});
        row("nearly too much", 699, {});
        row("the maximum", 700, {"Too much"});
    }

    void ventilationsAreJudged()
    {
        QFETCH(int, volume);
        const std::unique_ptr<CPREventVentilation> event(ventilation(0, volume));
        const Faults faults = judged(*event, targetsOf(CPRData())).faults;
        QTEST(faultTexts(faults), "faults");
    }

    // The figures follow from the recording's scenario; its arithmetic stands in data/README.md.
    void recordedSession()
    {
        const SessionReview review = reviewOf(m_session);
        const auto faulty = [&review](Fault fault) {
            return count(review.compressions,
                         [fault](const Compression &each) { return each.faults.testFlag(fault); });
        };
        QCOMPARE(review.compressions.size(), std::size_t(162));
        QCOMPARE(faulty(Fault::TooShallow), 22);
        QCOMPARE(faulty(Fault::TooDeep), 0);
        QCOMPARE(faulty(Fault::IncompleteRelease), 8);
        QCOMPARE(faulty(Fault::HandPosition), 2);
        // Without the first of each run, 29 of run 4 are too slow and 11 of run 5 too fast.
        QCOMPARE(faulty(Fault::TooSlow), 29);
        QCOMPARE(faulty(Fault::TooFast), 11);

        QVector<Side> sides;
        for (const Ventilation &each : review.ventilations)
            sides.append(each.volumeSide);
        QCOMPARE(sides,
                 QVector<Side>({Side::Inside, Side::Inside, Side::Below, Side::Inside, Side::Above,
                                Side::Above, Side::Below, Side::Inside}));
        QCOMPARE(review.pauses.size(), std::size_t(2));
        QCOMPARE(review.pauses.front().begin, 56220);
        QCOMPARE(review.losses.front().begin, 26860);
        QCOMPARE(review.losses.front().end, 27100); // when the next sample came
        QCOMPARE(review.figures.pauses, 2);
        QCOMPARE(review.figures.secs, 120);
        CPREventSessionInfo *info = m_session.cprEvents()->sessionInfo();
        info->setParameter(E::totalTime, 20); // of a wave that is cut
        QCOMPARE(figuresOf(m_session).secs, 119); // the last breath ends at 119600
        info->setParameter(E::totalTime, 120);
        QCOMPARE(review.figures.meanDepth, 51.64);
        QCOMPARE(review.figures.primaryAdvice, int(E::Advice_HandPosition));
    }

    // Limits come from the session's own guidelines.
    void limitsOfTheSession()
    {
        CPRData copy(m_session);
        copy.cprGuidelines()->setCompressionDepthMin(5250);
        // Run by run, less deep than 52.5 mm: 15 + 30 + 5 + 30 + 12 + 0.
        QCOMPARE(
            count(reviewOf(copy).compressions,
                  [](const Compression &each) { return each.faults.testFlag(Fault::TooShallow); }),
            92);
    }

    // Cycles by what stands in an archive: ventilations and pauses end them.
    void cyclesAreCounted()
    {
        const SessionReview review = reviewOf(m_session);
        QVector<std::pair<int, int>> counts;
        for (const Cycle &cycle : review.cycles)
            counts.append({cycle.compressions, cycle.ventilations});
        QCOMPARE(
            counts,
            (QVector<std::pair<int, int>>{{30, 2}, {30, 2}, {30, 0}, {30, 2}, {12, 0}, {30, 2}}));
        QVERIFY(!review.cycles.at(0).isMiscounted);
        QVERIFY(review.cycles.at(4).isMiscounted);
    }

    // By the scenario's runs: 4 is slow and ends too shallow, all of 5 is too shallow and fast; of
    // the breaths only those behind run 4 are wrong in a row.
    void faultsAreFound()
    {
        const SessionReview review = reviewOf(m_session);
        QStringList cycles;
        for (const CycleFaults &each : faultsPerCycle(review))
            cycles.append(QString::number(each.right) + '|' + faultTexts(each.faults).join(", "));
        QCOMPARE(cycles,
                 (QStringList{"30|", "28|Incomplete release 2, Too little 1", "28|Hand position 2",
                              "1|Too shallow 10, Too slow 29, Too much 2",
                              "0|Too shallow 12, Incomplete release 4, Too fast 11",
                              "28|Incomplete release 2, Too little 1"}));
        const auto texts = [](const SessionReview &in, int maxCount) {
            QStringList found;
            for (const Moment &each : worstMoments(in, maxCount))
                found.append(QStringLiteral("%1-%2 %3")
                                 .arg(each.begin)
                                 .arg(each.end)
                                 .arg(momentText(each, QLocale::c())));
            return found;
        };
        const QStringList worst{"79720-94300 Too shallow, 22 times",
                                "67560-85900 Too slow, 29 times", "89080-94300 Too fast, 11 times",
                                "86000-88500 Too much air, 2 times"};
        QCOMPARE(texts(review, 5), worst);
        QCOMPARE(texts(review, 2), worst.mid(0, 2));

        CPRData session;
        int msecs = 0;
        const auto press = [&session, &msecs](float depth) {
            session.cprEvents()->addEvent(eventOf({msecs, depth}, session.cprEvents()), false);
            msecs += 545;
        };
        // A right one among wrong ones ends no run, two do; each kind comes before a second of one.
        for (float depth :
             {45, 45, 55, 45, 45, 45, 55, 55, 45, 45, 45, 45, 45, 45, 55, 55, 65, 65, 65, 65, 65})
            press(depth);
        msecs += 12000;
        press(55);
        QCOMPARE(texts(reviewOf(session), 3),
                 (QStringList{"11300-23445 Pause of 12.1 s", "4360-7485 Too shallow, 6 times",
                              "8720-11300 Too deep, 5 times"}));
        QCOMPARE(texts(reviewOf(session), 5).size(), 4);
    }

    // At 43000 compression 5 of run 3 is the last that has ended and 6 has begun; at 60000 nothing
    // was done since 56220.
    void latestEventsThen()
    {
        const Targets targets = targetsOf(m_session);
        const LatestEvents then = latestEventsOf(m_session, targets, 43000);
        QCOMPARE(QVector<int>({then.compression->begin, then.compressionsInCycle, then.rate,
                               then.ventilation->volume, then.ventilationRate,
                               begunUntil(*m_session.cprEvents(), E::TagComp, 43000)}),
                 QVector<int>({42300, 5, 111, 600, 6, 66}));
        QCOMPARE(latestEventsOf(m_session, targets, 60000).rate, 0);
        QVERIFY(!latestEventsOf(m_session, targets, 2100).compression);
    }

    void remarksCanBeStored_data()
    {
        const auto row = columns<QString, QString>("typed", "stored");
        row("as it is", "Hände 7 + 1 \xf0\x9f\x91\x8d", "Hände 7 + 1 \xf0\x9f\x91\x8d");
        row("one line", " a\n\tb \r", "a b");
        row("blank", " \n", "");
        row("no characters", QString("a") + QChar(1) + QChar(0xFFFE), "a");
        row("half a character", QString("a") + QChar(0xD800), "a?");
        row("long", QString(1000, 'x'), QString(200, 'x'));
    }

    void remarksCanBeStored()
    {
        QFETCH(QString, typed);
        QTEST(remarkOf(typed), "stored");
    }

    void latestEvents_data()
    {
        // Times are those of ventilations when negative; numbers are those in the cycle, then
        // whether they are too many.
        const auto row = columns<QVector<int>, QVector<int>>("times", "numbers");
        row("nothing", {}, {0, 0, 0, 0});
        row("compressions", {1000, 1500}, {2, 0, 0, 0});
        row("one too many", {1000, 1500, 2000}, {3, 0, 1, 0});
        row("ventilations first", {-500, -1500, -2500}, {0, 3, 0, 0});
        row("ventilations follow", {1000, 1500, -3000}, {2, 1, 0, 0});
        row("one too many of them", {1000, 1500, -3000, -5000}, {2, 2, 0, 1});
        row("next cycle", {1000, 1500, -3000, 7000}, {1, 0, 0, 0});
    }

    void latestEvents()
    {
        QFETCH(QVector<int>, times);
        CPRData session;
        start(session);
        session.cprGuidelines()->setCompressionsBetweenVentilations(2);
        session.cprGuidelines()->setVentilationsBetweenCompressions(1);
        CPREvents *events = session.cprEvents();
        for (int time : times) {
            if (time < 0)
                events->finalizeIncomingEvent(false, ventilation(-time, 900, events));
            else
                events->finalizeIncomingEvent(false, eventOf({time, 40}, events));
        }
        const LatestEvents latest = latestEventsOf(session, targetsOf(session));
        QTEST(QVector<int>({latest.compressionsInCycle, latest.ventilationsInCycle,
                            latest.hasTooManyCompressions, latest.hasTooManyVentilations}),
              "numbers");
    }

    void aedSteps_data()
    {
        // What the AED reports at 10, 12, ... s; -1 is the shock.
        const auto row = columns<QVector<int>, QVector<int>>("reports", "standClear");
        row("no AED", {}, {});
        row("shock", {E::AEDPowerOn, E::AEDAnalyzing, E::AEDShockAdvised, E::AEDReadyToShock, -1},
            {12, 18});
        row("reported twice", {E::AEDAnalyzing, E::AEDReadyToShock, -1, E::AEDShockDelivered},
            {10, 14});
        row("no shock", {E::AEDAnalyzing, E::AEDNoShockIndicated}, {10, 12});
        row("cancelled", {E::AEDStartCharging, E::AEDShockCancelled}, {10, 12});
        row("interrupted, then again",
            {E::AEDAnalyzing, E::AEDAnalyzingInterrupted, E::AEDAnalyzing, E::AEDPowerOff},
            {10, 12, 14, 16});
        row("pads off", {E::AEDAnalyzing, E::AEDPatientMovementStarted, E::AEDPadsLoose}, {10, 14});
        row("its end got lost", {E::AEDAnalyzing, E::AEDReadyToShock}, {10, 42});
    }

    void aedSteps()
    {
        QFETCH(QVector<int>, reports);
        QFETCH(QVector<int>, standClear);
        CPRData session;
        start(session);
        int secs = 10;
        for (int report : reports) {
            session.setSessionTime(secs * 1000);
            send(session, report < 0 ? 47 : 48, bytes({0, quint8(report < 0 ? 200 : report)}));
            secs += 2;
        }
        QVector<int> found;
        for (const Span &span : reviewOf(session).standClear)
            found += {span.begin / 1000, span.end / 1000};
        QCOMPARE(found, standClear);
    }

    void askedPauses_data()
    {
        const auto row = columns<int, int, bool>("begin", "end", "isAsked");
        row("within", 12000, 15000, true);
        row("with 3 s for the hands", 8000, 21000, true);
        row("with more", 7999, 21000, false);
        row("another", 31000, 33000, false);
        row("of two analyses", 9000, 32000, true);
    }

    // The AED analyses from 10 s to 20 s, and from 21 s to 31 s.
    void askedPauses()
    {
        QFETCH(int, begin);
        QFETCH(int, end);
        QTEST(isAskedFor({begin, end}, {{10000, 20000}, {21000, 31000}}), "isAsked");
    }

    void runningPauses_data()
    {
        // Begin of the last compression, which takes 0.4 s; end of the pause that the manikin has
        // reported since 15 s; when the AED analyses; the compression's number in its cycle of 30.
        // The pause in ms; is it too long, or asked for; are compressions what comes next.
        const auto row = columns<QVector<int>, QVector<int>>("times", "pause");
        row("a moment", {18000, 0, 0}, {0, 0, 0, 1});
        row("ventilations", {15000, 0, 0, 30}, {4600, 0, 0, 0});
        row("too early for ventilations", {15000, 0, 0, 29}, {4600, 0, 0, 1});
        row("nothing done", {14000, 20000, 0}, {5600, 1, 0, 1});
        row("report of an earlier one", {14000, 17000, 0}, {5600, 0, 0, 1});
        row("done since", {16000, 16000, 0}, {3600, 0, 0, 1});
        row("longer than ventilations take", {9500, 0, 0, 30}, {10100, 1, 0, 1});
        row("the AED's", {5000, 20000, 16000}, {14600, 0, 1, 0});
        row("none before the first", {-1, 20000, 0}, {0, 0, 0, 1});
    }

    // At 20 s.
    void runningPauses()
    {
        QFETCH(QVector<int>, times);
        CPRData session;
        start(session);
        session.cprGuidelines()->setCompressionsBetweenVentilations(30);
        session.cprGuidelines()->setVentilationsBetweenCompressions(2);
        CPREvents *events = session.cprEvents();
        if (times.at(0) >= 0)
            events->addEvent(eventOf({times.at(0), 55, 110, times.value(3, 2)}, events), true);
        session.setSessionTime(times.at(1));
        if (times.at(1) > 15000)
            events->incomingInactivityTime(quint32(-1), (times.at(1) - 15000) / 1000);
        session.setSessionTime(times.at(2));
        if (times.at(2) > 0)
            send(session, 48, bytes({0, E::AEDAnalyzing}));
        const Targets targets = targetsOf(session);
        const LatestEvents latest = latestEventsOf(session, targets);
        const RunningPause pause = runningPause(*events, latest, targets, 20000);
        QTEST(QVector<int>({pause.msecs, pause.isTooLong, pause.isAskedFor,
                            areCompressionsDue(latest, pause, targets, 20000)}),
              "pause");
    }

    void liveAdvice_data()
    {
        // The prompts that are said first, and when a part of them begins, ms.
        const auto row =
            columns<QString, QVector<Prompt>, QVector<int>>("name", "prompts", "begin");
        row("right", "perfect", {Prompt::Right}, {});
        row("a slip now and then", "lossy-link", {Prompt::Right}, {});
        row("depth", "shallow", {Prompt::PressDeeper}, {});
        row("rate", "too-fast", {Prompt::PressSlower}, {});
        row("release", "leaning", {Prompt::ReleaseCompletely}, {});
        row("tires in each run", "beginner", {Prompt::Right, Prompt::PressDeeper}, {});
        row("pauses", "long-pauses", {Prompt::Right, Prompt::EndPause, Prompt::Right}, {});
        row("AED", "aed",
            {Prompt::Right, Prompt::StandClear, Prompt::ContinueCompressions, Prompt::Right,
             Prompt::StandClear, Prompt::ContinueCompressions, Prompt::Right},
            {-1, 26000, 36000, -1, 140000, 146000});
    }

    // What is said can be read, is the worst first, and does not depend on how often one looks.
    void liveAdvice()
    {
        QFETCH(QString, name);
        QFETCH(QVector<Prompt>, prompts);
        QFETCH(QVector<int>, begin);
        manikinsim::Simulator simulator(*manikinsim::Scenario::find(name), 1);
        CPRData session;
        manikinlog::ManikinLogPlayer player(&session);
        LiveAdvice often;
        LiveAdvice seldom;
        QVector<Prompt> said;
        for (manikinlog::Record record; simulator.next(record);) {
            player.play(record);
            const int msecs = session.cprEvents()->sessionTime();
            const int before = often.since();
            const int least = often.prompt() == Prompt::EndPause ? 2000 : 4000;
            often.follow(session, targetsOf(session), msecs);
            if (often.since() == before)
                continue;
            QVERIFY(often.since() - before >= least);
            if (begin.value(said.size(), -1) >= 0)
                QCOMPARE(often.since(), begin.at(said.size()));
            said.append(often.prompt());
            if (said.size() % 2 == 0) {
                seldom.follow(session, targetsOf(session), msecs);
                QCOMPARE(seldom.since(), often.since());
            }
        }
        QVERIFY(said.size() <= 16); // in two or three minutes
        QCOMPARE(said.mid(0, prompts.size()), prompts);
        QVERIFY(said.size() == prompts.size() || prompts.size() > 1);
    }

    // Of what was pressed and breathed so far, the share that is right.
    void scoreOfARunningSession()
    {
        SessionReview review;
        review.targets.depth = {50, 60};
        review.targets.rate = {100, 120};
        review.targets.volume = {400, 700};
        QVERIFY(!scoreSoFar(review));
        for (const int volume : {399, 400, 600, 700}) {
            Ventilation breath;
            breath.volume = volume;
            judge(breath, review.targets);
            review.ventilations.push_back(breath);
        }
        for (const double depth : {49.9, 50.0, 55.0, 60.0}) {
            Compression compression;
            compression.depth = depth;
            judge(compression, review.targets);
            review.compressions.push_back(compression);
        }
        QCOMPARE(scoreSoFar(review).value_or(-1), 75.0);
        review.figures.protocol = CommonDefs::CPR_VENTILATION_ONLY;
        QCOMPARE(scoreSoFar(review).value_or(-1), 50.0);
    }

    void rescuersChange()
    {
        const auto at = [](int protocol, int secs) {
            return rescuerChangeAt(protocol, secs * 1000);
        };
        for (const int protocol : {CommonDefs::CPR_TWO_RESCUER, CommonDefs::CPR_HIGH_PERFORMANCE}) {
            for (const auto &[secs, wanted] :
                 {std::pair(0, RescuerChange::None), std::pair(109, RescuerChange::None),
                  std::pair(110, RescuerChange::Soon), std::pair(120, RescuerChange::Now),
                  std::pair(129, RescuerChange::Now), std::pair(130, RescuerChange::None),
                  std::pair(240, RescuerChange::Now)})
                QCOMPARE(int(at(protocol, secs)), int(wanted));
        }
        QCOMPARE(int(at(CommonDefs::CPR_SINGLE_RESCUER, 120)), int(RescuerChange::None));
    }

    // Two learners, 7 and 8, of whom 7 has a score of 40 %.
    void firstToHelp()
    {
        FirstToHelp first;
        const auto at = [&first](int secs, Prompt seven, Prompt eight, double scoreOfEight = 50) {
            return first.follow({{7, seven, 40.0}, {8, eight, scoreOfEight}}, secs * 1000);
        };
        QCOMPARE(at(0, Prompt::Right, Prompt::StandClear), FirstToHelp::nobody);
        QCOMPARE(at(1, Prompt::Right, Prompt::ReleaseCompletely), 8);
        QCOMPARE(at(2, Prompt::PressDeeper, Prompt::ReleaseCompletely), 8);
        QCOMPARE(at(7, Prompt::PressDeeper, Prompt::ReleaseCompletely), 7);
        QCOMPARE(at(20, Prompt::PressDeeper, Prompt::PressDeeper, 10), 7);
        QCOMPARE(at(21, Prompt::Right, Prompt::PressDeeper), 8);
        QCOMPARE(at(22, Prompt::EndPause, Prompt::Right), 8);
        QCOMPARE(first.follow({{7, Prompt::PressDeeper, 40.0}}, 23000), 7);
        QCOMPARE(at(40, Prompt::Right, Prompt::None), FirstToHelp::nobody);
        QCOMPARE(at(41, Prompt::PressDeeper, Prompt::PressDeeper, 10), 8);
    }

    void arrival_data()
    {
        const auto row = columns<int, int, QVector<int>>("message", "size", "arrived");
        row("nothing", 0, 0, {});
        row("counts", 109, 49, {E::compCount, E::sessionDuration});
        row("counts of newer manikins", 109, 68,
            {E::compCount, E::sessionDuration, E::ventilationsPerMinute});
        row("bars", 110, 37, {E::compHistogramDepthBin_0});
        row("shares", 111, 14, {E::ventCorrectVolumePercentage});
        row("scores", 108, 21, {E::overallScore, E::primaryAdvice});
    }

    // What has not been received is no 0.
    void arrival()
    {
        QFETCH(int, message);
        QFETCH(int, size);
        QFETCH(QVector<int>, arrived);
        CPRData session;
        start(session);
        if (message > 0)
            send(session, quint32(message), QByteArray(size, '\0'));
        const CPREvents *events = session.cprEvents();
        QVector<int> found;
        for (int parameter : {E::compCount, E::sessionDuration, E::ventilationsPerMinute,
                              E::compHistogramDepthBin_0, E::ventCorrectVolumePercentage})
            if (hasArrived(events->sessionStatistics(), E::ParameterType(parameter)))
                found.append(parameter);
        for (int parameter : {E::overallScore, E::primaryAdvice})
            if (hasArrived(events->sessionScore(), E::ParameterType(parameter)))
                found.append(parameter);
        QCOMPARE(found, arrived);
        QCOMPARE(figuresOf(session).hasStatistics, message == 109);
        QCOMPARE(figuresOf(session).hasScores, message == 108);
    }

    // However much fresh events hold.
    void nothingHasArrived()
    {
        const CPRData session;
        for (const E *event : {session.cprEvents()->cprSessionStatistics(),
                               session.cprEvents()->cprSessionScore()}) {
            for (int i = 0; i <= E::manikinBatteryDisconnectCounter; ++i) {
                const bool isSetting =
                    i == E::categoryThresholdBasic || i == E::categoryThresholdAdvanced;
                QCOMPARE(hasArrived(event, E::ParameterType(i)),
                         isSetting && event->type() == E::CprSessionScore);
            }
        }
    }

    void adviceSaysTheSide_data()
    {
        const auto row = testsupport::columns<int, int, QString>("slow", "fast", "text");
        row("slow", 30, 0, "Press faster.");
        row("mostly fast", 5, 30, "Press slower.");
        row("both", 20, 20, "Compress at the target rate, neither slower nor faster.");
    }

    void adviceSaysTheSide()
    {
        QFETCH(int, slow);
        QFETCH(int, fast);
        CPRData session;
        CPREventSessionScore *score = session.cprEvents()->sessionScore();
        score->setParameter(E::compReleaseScoreReduction, 0); // the manikin has sent its scores
        score->setParameter(E::compRateLowScoreReduction, slow);
        score->setParameter(E::compRateHighScoreReduction, fast);
        score->calculateAdvice();
        const Figures figures = figuresOf(session);
        QTEST(adviceText(figures.primaryAdvice, figures.primarySide), "text");
    }

    void levels()
    {
        QCOMPARE(verdictOn(-1, 50, 75).text, QString());
        QCOMPARE(verdictOn(49, 50, 75).text, QString("below 50 %"));
        QCOMPARE(verdictOn(50, 50, 75).text, QString("basic, from 50 %"));
        QCOMPARE(verdictOn(75, 50, 75).text, QString("advanced, from 75 %"));
        QVERIFY(verdictOn(50, 50).isPassed && !verdictOn(49, 50).isPassed);
    }

    // 50 to 60 mm, 5 mm, 100 to 120 per minute, 400 to 699 ml.
    void barsInsideTheTarget()
    {
        const auto bars = [this](HistogramKind kind) {
            QString marks;
            for (const Bar &bar : barsOf(kind, targetsOf(m_session)))
                marks += bar.isTarget ? 'x' : '-';
            return marks;
        };
        QCOMPARE(bars(HistogramKind::Depth), QString("--xx--"));
        QCOMPARE(bars(HistogramKind::Release), QString("xx----"));
        QCOMPARE(bars(HistogramKind::CompressionRate), QString("--xx--"));
        QCOMPARE(bars(HistogramKind::Volume), QString("--xx--"));
    }

    void everyAdviceHasWords()
    {
        QVERIFY(adviceText(E::Advice_None).isEmpty());
        QSet<QString> texts;
        for (int advice = 1; advice <= E::Advice_TooManyPreVents; ++advice)
            texts.insert(adviceText(advice));
        QCOMPARE(texts.size(), 12);
        QVERIFY(!texts.contains(QString()));
    }

private:
    CPRData m_session;
};

QTEST_GUILESS_MAIN(TestSessionReview)
#include "tst_sessionreview.moc"
