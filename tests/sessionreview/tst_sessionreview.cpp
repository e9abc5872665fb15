// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/ManikinLogPlayer.h"
#include "manikinsim/Simulator.h"
#include "support/Messages.h"
#include "support/Rows.h"
#include "support/StoredSession.h"

#include "sessionreview/LatestEvents.h"
#include "sessionreview/Scores.h"
#include "sessionreview/SessionReview.h"
#include "sessionreview/Words.h"

#include <CPREventCompression.h>
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

/// What a session means. Limits are those of a fresh guideline set: 50 to 60 mm, 100 to 120 per
/// minute, 400 to 699 ml.
class TestSessionReview : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(play(m_session, "two-rescuers.cprlog")); }

    void protocols_data()
    {
        // Targets: compressions and ventilations a cycle, flow time in %.
        const auto row = columns<int, Training, QVector<int>>("protocol", "trained", "targets");
        row("single rescuer", 0, {true, true, true}, {30, 3, 71});
        row("compressions only", 1, {true, false, false}, {0, 0, 91});
        row("ventilations only", 2, {false, true, false}, {0, 0, 0});
        row("automatic", 3, {true, true, true}, {30, 3, 0});
        row("two rescuers", 4, {true, true, true}, {15, 3, 81});
        row("high performance", 5, {true, true, false}, {0, 0, 0});
        row("unknown", 6, {true, true, true}, {30, 3, 0});
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
        session.cprEvents()->setCprProtocol(CommonDefs::CprProtocolType(protocol));
        const Targets asked = targetsOf(session);
        QCOMPARE(QVector<int>(
                     {asked.compressionsPerCycle, asked.ventilationsPerCycle, asked.minFlowTime}),
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
        const auto row = columns<Pressed, QStringList, int>("pressed", "faults", "advice");
        // clang-format off
        row("right", {}, {}, E::Advice_None);
        row("at the limits", {0, 50, 100}, {}, E::Advice_None);
        row("at the other limits", {0, 60, 120}, {}, E::Advice_None);
        row("half a hundredth less", {0, 49.996F}, {}, E::Advice_None);
        row("a hundredth less", {0, 49.99F}, {"Too shallow"}, E::Advice_CompressDeepEnough);
        row("a hundredth more", {0, 60.01F}, {"Too deep"}, E::Advice_CompressNotSoDeep);
        row("too slow", {0, 55, 99}, {"Too slow"}, E::Advice_CorrectRate);
        row("too fast", {0, 55, 121}, {"Too fast"}, E::Advice_CorrectRate);
        row("first of a run", {0, 55, 20, 1}, {}, E::Advice_None);
        row("not released", {0, 55, 110, 2, false}, {"Incomplete release"}, E::Advice_ReleaseCompletely);
        row("hands", {0, 55, 110, 2, true, true}, {"Hand position"}, E::Advice_HandPosition);
        row("xiphoid", {0, 55, 110, 2, true, false, true}, {"Hand position"}, E::Advice_HandPosition);
        row("all", {0, 40, 130, 2, false, true},
            {"Too shallow", "Incomplete release", "Hand position", "Too fast"},
            E::Advice_HandPosition);
        row("depth before release", {0, 70, 90, 2, false}, {"Too deep", "Incomplete release", "Too slow"}, E::Advice_CompressNotSoDeep);
        row("release before rate", {0, 55, 90, 2, false}, {"Incomplete release", "Too slow"}, E::Advice_ReleaseCompletely);
        // clang-format on
    }

    void compressionsAreJudged()
    {
        QFETCH(Pressed, pressed);
        const std::unique_ptr<CPREventCompression> event(eventOf(pressed));
        const Faults faults = judged(*event, targetsOf(CPRData())).faults;
        QTEST(faultTexts(faults), "faults");
        QTEST(adviceOn(faults), "advice");
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
        QCOMPARE(adviceOn(faults), faults ? E::Advice_CorrectVolume : E::Advice_None);
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

    void latestEvents_data()
    {
        // Times are those of ventilations when negative; numbers are those in the cycle.
        const auto row = columns<QVector<int>, QVector<int>, int>("times", "numbers", "advice");
        row("nothing", {}, {0, 0}, E::Advice_None);
        row("compressions", {1000, 1500, 2000}, {3, 0}, E::Advice_CompressDeepEnough);
        row("ventilation first", {-500}, {0, 1}, E::Advice_CorrectVolume);
        row("ventilations follow", {1000, 1500, -3000, -5000}, {2, 2}, E::Advice_CorrectVolume);
        row("next cycle", {1000, 1500, -3000, 7000}, {1, 0}, E::Advice_CompressDeepEnough);
    }

    // Every compression is too shallow, every ventilation too much.
    void latestEvents()
    {
        QFETCH(QVector<int>, times);
        CPRData session;
        start(session);
        CPREvents *events = session.cprEvents();
        for (int time : times) {
            if (time < 0)
                events->finalizeIncomingEvent(false, ventilation(-time, 900, events));
            else
                events->finalizeIncomingEvent(false, eventOf({time, 40}, events));
        }
        LatestEvents latest = latestEventsOf(session, targetsOf(session));
        QTEST(QVector<int>({latest.compressionsInCycle, latest.ventilationsInCycle}), "numbers");
        QTEST(latest.advice, "advice");
        // The manikin's own advice on the session: the release, byte 1, could hardly be worse.
        send(session, 108, bytes({0, 99}));
        latest = latestEventsOf(session, targetsOf(session));
        QCOMPARE(latest.advice, int(E::Advice_ReleaseCompletely));
    }

    void runningPauses_data()
    {
        const auto row = columns<int, int>("msecs", "secs");
        row("as reported", 20000, 5);
        row("before the next report", 21400, 6);
        row("reports stay away", 22500, 7);
        row("over", 22501, 0);
    }

    void runningPauses()
    {
        QFETCH(int, msecs);
        CPRData session;
        start(session);
        session.setSessionTime(20000);
        QCOMPARE(runningPause(*session.cprEvents(), msecs), 0);
        session.cprEvents()->incomingInactivityTime(quint32(-1), 5); // from 15 s
        QTEST(runningPause(*session.cprEvents(), msecs), "secs");
        session.cprEvents()->addEvent(eventOf({20000}, session.cprEvents()), true);
        QCOMPARE(runningPause(*session.cprEvents(), msecs), 0);
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
