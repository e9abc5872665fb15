// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "support/EventValues.h"
#include "support/Messages.h"
#include "support/Rows.h"

#include <QRegularExpression>
#include <QSignalSpy>

#include <limits>
#include <memory>

using namespace testsupport;
using E = CPREventBase;
using bls_2010::CommonDefs;

namespace {

using Bytes = QVector<QPair<int, int>>; // index and value
using Advices = QVector<int>;

// A scoring of zeros but for some bytes.
QByteArray scores(int size, const Bytes &values)
{
    QByteArray content(size, '\0');
    for (const auto &[index, value] : values)
        content[index] = static_cast<char>(value);
    return content;
}

// Primary and secondary advice.
Advices advices(const CPREventSessionScore *score)
{
    const Advices stored{intOf(score, E::primaryAdvice), intOf(score, E::secondaryAdvice)};
    const Advices asked{score->getPrimaryAdvice(), score->getSecondaryAdvice()};
    return asked == stored ? stored : stored + asked;
}

} // namespace

class TestScore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void overallScore_data()
    {
        const auto row = columns<int, int, int, int, int, bool, int>(
            "protocol", "manikin", "compressions", "ventilations", "handsOff", "hasAed", "overall");
        row("nothing", 0, 4, 0, 0, 0, false, 0);
        row("0.75 down", 0, 4, 0, 1, 0, false, 0);
        row("half up", 0, 4, 0, 2, 0, false, 1);
        row("weights", 0, 4, 10, 90, 0, false, 30);
        row("98.75 down", 0, 4, 98, 99, 0, false, 98);
        row("98.5 up", 0, 4, 98, 100, 0, false, 99);
        row("99.0", 0, 4, 100, 96, 0, false, 99);
        row("99.75 down", 0, 4, 100, 99, 0, false, 99);
        row("both perfect", 0, 4, 100, 100, 0, false, 100);
        row("infant weights", 0, 8, 10, 90, 0, false, 38);
        row("infant 73.5 down", 0, 8, 80, 60, 0, false, 73);
        row("infant 99.65 down", 0, 38, 100, 99, 0, false, 99);
        row("perfect infant", 0, 41, 100, 100, 0, false, 100);
        row("newborn as adult", 0, 101, 10, 90, 0, false, 30);
        row("child as adult", 0, 6, 10, 90, 0, false, 30);
        row("two rescuers", 4, 4, 10, 90, 0, false, 30);
        row("two rescuers, infant", 4, 100, 10, 90, 0, false, 38);
        row("compressions only", 1, 4, 10, 90, 0, false, 10);
        row("infant, compressions", 1, 8, 10, 90, 0, false, 10);
        row("ventilations only", 2, 4, 10, 90, 0, false, 90);
        row("automatic", 3, 4, 10, 90, 0, false, 90);
        row("high performance", 5, 4, 10, 90, 0, false, 90);
        row("unknown protocol", 6, 4, 10, 90, 0, false, 90);
        row("hands off", 0, 4, 90, 60, 50, false, 49);
        row("hands off, AED", 0, 4, 90, 60, 50, true, 83);
        row("hands off, compressions", 1, 4, 90, 60, 50, false, 45);
        row("the same, AED", 1, 4, 90, 60, 50, true, 90);
        row("33.5 down", 1, 4, 50, 0, 33, false, 33);
        row("hands off beyond all", 1, 4, 90, 0, 200, false, 0);
        row("beyond 100", 1, 4, 255, 0, 0, false, 100);
        row("beyond 100, AED", 1, 4, 255, 0, 0, true, 255);
        row("perfect but for hands off", 0, 4, 100, 100, 1, false, 99);
    }

    void overallScore()
    {
        QFETCH(int, protocol);
        QFETCH(int, manikin);
        QFETCH(int, compressions);
        QFETCH(int, ventilations);
        QFETCH(int, handsOff);
        QFETCH(bool, hasAed);
        CPRData session;
        CPREvents *events = session.cprEvents();
        const CPREventSessionScore *score = events->sessionScore();
        events->setCprProtocol(CommonDefs::CprProtocolType(protocol));
        events->sessionInfo()->setParameter(E::manikinType, manikin);
        if (hasAed)
            session.addUserEvent("pads on"_l1);
        const auto sendScores = [&](int size, const Bytes &more) {
            const Bytes values{{6, compressions}, {13, ventilations}, {18, handsOff}};
            send(session, 108, scores(size, values + more));
        };
        sendScores(19, {});
        QTEST(intOf(score, E::overallScore), "overall");
        QCOMPARE(intOf(score, E::compOverallScore), compressions);
        QCOMPARE(intOf(score, E::isScoringModeAED), int(hasAed));
        sendScores(20, {{19, 17}});
        QCOMPARE(intOf(score, E::overallScore), 17);
        sendScores(21, {{20, 0}});
        QCOMPARE(intOf(score, E::isScoringModeAED), 0);
        sendScores(21, {{20, 7}});
        QCOMPARE(intOf(score, E::isScoringModeAED), 7);
    }

    void adviceOfEachReduction_data()
    {
        // By protocol: the advice that byte 1, 2, ... raises alone.
        const auto row = columns<int, Advices>("protocol", "expected");
        // clang-format off
        row("0", 0, {3, 1, 4, 4, 10, 0, 6, 6, 5, 5, 0, 7, 0, 0, 0, 2, 8, 9, 0, 0, 11, 12, 0, 0, 0, 0});
        row("1", 1, {3, 1, 4, 4, 10, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2, 0, 9, 0, 0, 0, 0, 0, 0, 0, 0});
        row("2", 2, {0, 0, 0, 0, 0, 0, 6, 6, 5, 5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 11, 12, 0, 0, 0, 0});
        row("3", 3, {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
        row("4", 4, {3, 1, 4, 4, 10, 0, 6, 6, 5, 5, 0, 7, 0, 0, 0, 2, 8, 9, 0, 0, 11, 12, 0, 0, 0, 0});
        row("5", 5, {3, 1, 4, 4, 10, 0, 6, 6, 0, 0, 0, 7, 0, 0, 0, 2, 8, 9, 0, 0, 11, 12, 0, 0, 5, 5});
        // clang-format on
    }

    void adviceOfEachReduction()
    {
        QFETCH(int, protocol);
        QFETCH(Advices, expected);
        for (int byte = 1; byte <= expected.size(); ++byte) {
            for (int reduction : {1, 100}) {
                CPRData session;
                const CPREventSessionScore *score = session.cprEvents()->sessionScore();
                session.cprEvents()->setCprProtocol(CommonDefs::CprProtocolType(protocol));
                QSignalSpy ready(score, &CPREventSessionScore::scoresReady);
                send(session, 108, scores(27, {{byte, reduction}}));
                QCOMPARE(advices(score), Advices({expected.at(byte - 1), 0}));
                QCOMPARE(ready.count(), 1);
                send(session, 108, scores(27, {})); // nothing of the first scoring stays
                QCOMPARE(advices(score), Advices({0, 0}));
            }
        }
    }

    void adviceOrder_data()
    {
        // All equal: of each pair the later one of the ranking wins.
        const auto row = columns<Bytes, Advices>("reductions", "expected");
        // clang-format off
        row("all", {{7, 30}, {9, 30}, {22, 30}, {21, 30}, {3, 30}, {1, 30}, {2, 30}, {16, 30}, {5, 30}, {18, 30}, {12, 30}, {17, 30}}, {8, 7});
        row("no cycles", {{7, 30}, {9, 30}, {22, 30}, {21, 30}, {3, 30}, {1, 30}, {2, 30}, {16, 30}, {5, 30}, {18, 30}}, {9, 10});
        row("hands", {{7, 30}, {9, 30}, {22, 30}, {21, 30}, {3, 30}, {1, 30}, {2, 30}, {16, 30}, {5, 30}}, {10, 2});
        row("depths", {{7, 30}, {9, 30}, {22, 30}, {21, 30}, {3, 30}, {1, 30}, {2, 30}, {16, 30}}, {2, 1});
        row("depth", {{7, 30}, {9, 30}, {22, 30}, {21, 30}, {3, 30}, {1, 30}, {2, 30}}, {1, 3});
        row("release", {{7, 30}, {9, 30}, {22, 30}, {21, 30}, {3, 30}, {1, 30}}, {3, 4});
        row("rate", {{7, 30}, {9, 30}, {22, 30}, {21, 30}, {3, 30}}, {4, 11});
        row("pre-ventilations", {{7, 30}, {9, 30}, {22, 30}, {21, 30}}, {11, 12});
        row("too many of them", {{7, 30}, {9, 30}, {22, 30}}, {12, 5});
        row("ventilations", {{7, 30}, {9, 30}}, {5, 6});
        row("cycles beat hands off", {{12, 30}, {18, 30}}, {7, 9});
        row("hands beat depth", {{2, 30}, {5, 30}}, {10, 1});
        row("worst first", {{2, 10}, {5, 30}, {18, 20}}, {10, 9});
        row("one point decides", {{17, 30}, {7, 31}}, {6, 8});
        row("72, depth 71", {{3, 10}, {4, 20}, {2, 29}}, {1, 4});
        row("72, depth 72", {{3, 10}, {4, 20}, {2, 28}}, {1, 4});
        row("72, depth 73", {{3, 10}, {4, 20}, {2, 27}}, {4, 1});
        row("72.25 is 72", {{7, 15}, {8, 15}, {2, 28}}, {1, 6});
        row("72.25 is below 73", {{7, 15}, {8, 15}, {2, 27}}, {6, 1});
        row("-49.5 is -49", {{3, 150}, {4, 1}, {2, 149}}, {1, 4});
        row("below 0", {{3, 255}, {2, 200}}, {4, 1});
        row("both beyond 100", {{3, 200}, {4, 200}}, {0, 0});
        // clang-format on
    }

    void adviceOrder()
    {
        QFETCH(Bytes, reductions);
        CPRData session;
        CPREventSessionScore *score = session.cprEvents()->sessionScore();
        send(session, 108, scores(27, reductions));
        QTEST(advices(score), "expected");
        // A copy carries the ranking, and goes its own way.
        const std::unique_ptr<CPREventSessionScore> copy(score->clone(session.cprEvents()));
        send(session, 108, scores(27, {}));
        QTEST(advices(copy.get()), "expected");
    }

    void scoresEndTheSession()
    {
        CPRData session;
        CPREvents *events = session.cprEvents();
        const CPREventSessionInfo *info = events->sessionInfo();
        send(session, 77, bytes({0, 9, 20, 0, 0, 0, 0, 0x10, 0x27}));
        QVERIFY(textOf(info, E::endTime).isEmpty());
        events->sessionScore()->calculateAdvice(); // without any scoring
        QCOMPARE(advices(events->sessionScore()), Advices({0, 0}));
        QCOMPARE(intOf(info, E::waveDelay), 10000);
        // Reductions of any size, as a file can hold them: the one that leaves less comes first.
        constexpr int minInt = std::numeric_limits<int>::min();
        constexpr int maxInt = std::numeric_limits<int>::max();
        events->sessionScore()->setParameter(E::compHandposScoreReduction, maxInt);
        events->sessionScore()->setParameter(E::compDepthScoreReduction, minInt);
        events->sessionScore()->setParameter(E::ventShallowScoreReduction, minInt);
        events->sessionScore()->setParameter(E::ventExcessiveScoreReduction, maxInt);
        events->sessionScore()->calculateAdvice();
        QCOMPARE(advices(events->sessionScore()), Advices({6, 10})); // volume, hand position
        const QRegularExpression iso(
            "^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d(Z|[+-]\\d\\d:\\d\\d)$"_l1);
        QVERIFY(iso.match(textOf(info, E::endTime)).hasMatch());
        const auto thresholds = {"categoryThresholdBasic", "categoryThresholdAdvanced"};
        QCOMPARE(numbersOf(events->sessionScore(), thresholds), QVector<double>({50, 75}));
        events->setCategoryThresholdBasic(40);
        events->setCategoryThresholdAdvanced(80);
        QCOMPARE(numbersOf(events->sessionScore(), thresholds), QVector<double>({40, 80}));
    }

    void statisticsReadyInAnyOrder()
    {
        CPRData session;
        CPREventSessionStatistics *statistics = session.cprEvents()->sessionStatistics();
        QSignalSpy ready(statistics, &CPREventSessionStatistics::statisticsReady);
        QVector<int> counts;
        for (quint32 id : {111U, 111U, 109U, 110U, 109U, 108U}) {
            // A copy knows what has arrived.
            const std::unique_ptr<CPREventSessionStatistics> copy(
                statistics->clone(session.cprEvents()));
            QSignalSpy copyReady(copy.get(), &CPREventSessionStatistics::statisticsReady);
            bls_2010::RMessage message(110, numberedBytes(37));
            QVERIFY(copy->incomingMsg(&message));
            send(session, id, numberedBytes(68));
            counts.append(ready.count() * 10 + copyReady.count());
        }
        QCOMPARE(counts, QVector<int>({0, 0, 0, 11, 21, 21}));
    }

    void totalTimeIsLatched()
    {
        CPRData session;
        CPREvents *events = session.cprEvents();
        QSignalSpy announced(events->sessionStatistics(), &CPREventSessionStatistics::totalTime);
        const auto totalAfter = [&](const char *duration) {
            send(session, 109,
                 QByteArray::fromHex("0000000000").append(QByteArray::fromHex(duration)));
            return intOf(events->sessionInfo(), E::totalTime);
        };
        QCOMPARE(totalAfter("0000"), 0);
        QCOMPARE(totalAfter("2C01"), 300);
        QCOMPARE(totalAfter("9001"), 300);
        QCOMPARE(totalAfter("FFFF"), 300);
        QCOMPARE(announced, QList<QVariantList>({{0}, {300}, {400}, {-1}}));
        QCOMPARE(intOf(events->sessionStatistics(), E::sessionDuration), -1);
        events->reset(); // a new session of the same manikin: the latch stays
        QCOMPARE(totalAfter("9001"), 0);
        events->initialize();
        QCOMPARE(totalAfter("9001"), 400);
    }

    void tooMuchVolume_data()
    {
        const auto row = columns<int, int, int>("correct", "notEnough", "tooMuch");
        row("rest", 80, 15, 5);
        row("all", 0, 0, 100);
        row("not measured", -1, 10, -1);
        row("far below 0", -128, 10, -1);
        row("not enough unknown", 80, -1, 21);
        row("twice all", 100, 100, -100);
        row("8 bits", 127, 127, 102);
    }

    void tooMuchVolume()
    {
        QFETCH(int, correct);
        QFETCH(int, notEnough);
        CPRData session;
        send(session, 111, bytes({0, 1, 2, 3, 4, correct, notEnough}));
        const E *statistics = session.cprEvents()->sessionStatistics();
        QTEST(intOf(statistics, E::ventTooMuchVolumePercentage), "tooMuch");
    }
};

QTEST_GUILESS_MAIN(TestScore)

#include "tst_score.moc"
