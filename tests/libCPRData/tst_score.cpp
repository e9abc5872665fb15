// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "support/TestSupport.h"

#include <QRegularExpression>
#include <QSignalSpy>

#include <limits>
#include <memory>

using namespace TestSupport;
using E = CPREventBase;
using bls_2010::CommonDefs;

namespace {

const QLatin1Char blank(' ');

QVector<int> numbersIn(const QString &text)
{
    QVector<int> numbers;
    for (const QString &word : text.split(blank))
        numbers.append(word.toInt());
    return numbers;
}

// A scoring of zeros but for some bytes: "1:30 7:20".
QByteArray scores(int size, const QString &values)
{
    QByteArray content(size, '\0');
    for (const QString &value : values.split(blank, Qt::SkipEmptyParts))
        content[value.section(QLatin1Char(':'), 0, 0).toInt()] =
            static_cast<char>(value.section(QLatin1Char(':'), 1).toInt());
    return content;
}

// Primary and secondary advice.
QString advices(const CPREventSessionScore *score)
{
    const QString text =
        textOf(score, E::primaryAdvice) + blank + textOf(score, E::secondaryAdvice);
    const QString asked =
        QString::asprintf("%d %d", score->getPrimaryAdvice(), score->getSecondaryAdvice());
    return asked == text ? text : text + " but "_l1 + asked;
}

} // namespace

class TestScore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void overallScore_data()
    {
        // Protocol, manikin, compressions, ventilations, reduction for hands off, AED event.
        addRows({"values", "overall"},
                {"nothing|0 4 0 0 0 0|0",
                 "0.75 down|0 4 0 1 0 0|0",
                 "half up|0 4 0 2 0 0|1",
                 "weights|0 4 10 90 0 0|30",
                 "98.75 down|0 4 98 99 0 0|98",
                 "98.5 up|0 4 98 100 0 0|99",
                 "99.0|0 4 100 96 0 0|99",
                 "99.75 down|0 4 100 99 0 0|99",
                 "both perfect|0 4 100 100 0 0|100",
                 "infant weights|0 8 10 90 0 0|38",
                 "infant 73.5 down|0 8 80 60 0 0|73",
                 "infant 99.65 down|0 38 100 99 0 0|99",
                 "perfect infant|0 41 100 100 0 0|100",
                 "newborn as adult|0 101 10 90 0 0|30",
                 "child as adult|0 6 10 90 0 0|30",
                 "two rescuers|4 4 10 90 0 0|30",
                 "two rescuers, infant|4 100 10 90 0 0|38",
                 "compressions only|1 4 10 90 0 0|10",
                 "infant, compressions|1 8 10 90 0 0|10",
                 "ventilations only|2 4 10 90 0 0|90",
                 "automatic|3 4 10 90 0 0|90",
                 "high performance|5 4 10 90 0 0|90",
                 "unknown protocol|6 4 10 90 0 0|90",
                 "hands off|0 4 90 60 50 0|49",
                 "hands off, AED|0 4 90 60 50 1|83",
                 "hands off, compressions|1 4 90 60 50 0|45",
                 "the same, AED|1 4 90 60 50 1|90",
                 "33.5 down|1 4 50 0 33 0|33",
                 "hands off beyond all|1 4 90 0 200 0|0",
                 "beyond 100|1 4 255 0 0 0|100",
                 "beyond 100, AED|1 4 255 0 0 1|255",
                 "perfect but for hands off|0 4 100 100 1 0|99"});
    }

    void overallScore()
    {
        QFETCH(QString, values);
        const QVector<int> v = numbersIn(values);
        CPRData session;
        CPREvents *events = session.cprEvents();
        events->setCprProtocol(CommonDefs::CprProtocolType(v.at(0)));
        events->sessionInfo()->setParameter(E::manikinType, v.at(1));
        if (v.at(5) == 1)
            session.addUserEvent("pads on"_l1);
        const auto sent = [&](int size, const char *more, E::ParameterType parameter) {
            const auto text =
                QString::asprintf("6:%d 13:%d 18:%d %s", v.at(2), v.at(3), v.at(4), more);
            send(session, 108, scores(size, text));
            return textOf(events->sessionScore(), parameter);
        };
        QTEST(sent(19, "", E::overallScore), "overall");
        QCOMPARE(intOf(events->sessionScore(), E::compOverallScore), v.at(2));
        QCOMPARE(intOf(events->sessionScore(), E::isScoringModeAED), v.at(5));
        QCOMPARE(sent(20, "19:17", E::overallScore), "17"_l1);
        QCOMPARE(sent(21, "20:0", E::isScoringModeAED), "0"_l1);
        QCOMPARE(sent(21, "20:7", E::isScoringModeAED), "7"_l1);
    }

    void adviceOfEachReduction_data()
    {
        // By protocol: the advice that byte 1, 2, ... raises alone.
        addRows({"advices"},
                {"0|3 1 4 4 10 0 6 6 5 5 0 7 0 0 0 2 8 9 0 0 11 12 0 0 0 0",
                 "1|3 1 4 4 10 0 0 0 0 0 0 0 0 0 0 2 0 9 0 0 0 0 0 0 0 0",
                 "2|0 0 0 0 0 0 6 6 5 5 0 0 0 0 0 0 0 0 0 0 11 12 0 0 0 0",
                 "3|0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0",
                 "4|3 1 4 4 10 0 6 6 5 5 0 7 0 0 0 2 8 9 0 0 11 12 0 0 0 0",
                 "5|3 1 4 4 10 0 6 6 0 0 0 7 0 0 0 2 8 9 0 0 11 12 0 0 5 5"});
    }

    void adviceOfEachReduction()
    {
        QFETCH(QString, advices);
        int byte = 0;
        for (const QString &advice : advices.split(blank)) {
            ++byte;
            for (int reduction : {1, 100}) {
                CPRData session;
                const CPREventSessionScore *score = session.cprEvents()->sessionScore();
                session.cprEvents()->setCprProtocol(
                    CommonDefs::CprProtocolType(QByteArray(QTest::currentDataTag()).toInt()));
                QSignalSpy ready(score, &CPREventSessionScore::scoresReady);
                send(session, 108, scores(27, QStringLiteral("%1:%2").arg(byte).arg(reduction)));
                QCOMPARE(::advices(score), advice + " 0"_l1);
                QCOMPARE(ready.count(), 1);
                send(session, 108, scores(27, QString())); // nothing of the first scoring stays
                QCOMPARE(::advices(score), "0 0"_l1);
            }
        }
    }

    void adviceOrder_data()
    {
        // All equal: of each pair the later one of the ranking wins.
        addRows({"reductions", "expected"},
                {"all|7:30 9:30 22:30 21:30 3:30 1:30 2:30 16:30 5:30 18:30 12:30 17:30|8 7",
                 "no cycles|7:30 9:30 22:30 21:30 3:30 1:30 2:30 16:30 5:30 18:30|9 10",
                 "hands|7:30 9:30 22:30 21:30 3:30 1:30 2:30 16:30 5:30|10 2",
                 "depths|7:30 9:30 22:30 21:30 3:30 1:30 2:30 16:30|2 1",
                 "depth|7:30 9:30 22:30 21:30 3:30 1:30 2:30|1 3",
                 "release|7:30 9:30 22:30 21:30 3:30 1:30|3 4",
                 "rate|7:30 9:30 22:30 21:30 3:30|4 11",
                 "pre-ventilations|7:30 9:30 22:30 21:30|11 12",
                 "too many of them|7:30 9:30 22:30|12 5",
                 "ventilations|7:30 9:30|5 6",
                 "cycles beat hands off|12:30 18:30|7 9",
                 "hands beat depth|2:30 5:30|10 1",
                 "worst first|2:10 5:30 18:20|10 9",
                 "one point decides|17:30 7:31|6 8",
                 "72, depth 71|3:10 4:20 2:29|1 4",
                 "72, depth 72|3:10 4:20 2:28|1 4",
                 "72, depth 73|3:10 4:20 2:27|4 1",
                 "72.25 is 72|7:15 8:15 2:28|1 6",
                 "72.25 is below 73|7:15 8:15 2:27|6 1",
                 "-49.5 is -49|3:150 4:1 2:149|1 4",
                 "below 0|3:255 2:200|4 1",
                 "both beyond 100|3:200 4:200|0 0"});
    }

    void adviceOrder()
    {
        QFETCH(QString, reductions);
        CPRData session;
        CPREventSessionScore *score = session.cprEvents()->sessionScore();
        send(session, 108, scores(27, reductions));
        QTEST(advices(score), "expected");
        // A copy carries the ranking, and goes its own way.
        const std::unique_ptr<CPREventSessionScore> copy(score->clone(session.cprEvents()));
        send(session, 108, scores(27, QString()));
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
        QCOMPARE(advices(events->sessionScore()), "0 0"_l1);
        QCOMPARE(intOf(info, E::waveDelay), 10000);
        // Reductions of any size, as a file can hold them: the one that leaves less comes first.
        constexpr int minInt = std::numeric_limits<int>::min();
        constexpr int maxInt = std::numeric_limits<int>::max();
        events->sessionScore()->setParameter(E::compHandposScoreReduction, maxInt);
        events->sessionScore()->setParameter(E::compDepthScoreReduction, minInt);
        events->sessionScore()->setParameter(E::ventShallowScoreReduction, minInt);
        events->sessionScore()->setParameter(E::ventExcessiveScoreReduction, maxInt);
        events->sessionScore()->calculateAdvice();
        QCOMPARE(advices(events->sessionScore()), "6 10"_l1); // volume, hand position
        const QRegularExpression iso(
            "^\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d(Z|[+-]\\d\\d:\\d\\d)$"_l1);
        QVERIFY(iso.match(textOf(info, E::endTime)).hasMatch());
        const char *thresholds = "categoryThresholdBasic categoryThresholdAdvanced";
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
        addRows({"measured", "tooMuch"}, // correct, not enough
                {"rest|80 15|5", "all|0 0|100", "not measured|-1 10|-1", "far below 0|-128 10|-1",
                 "not enough unknown|80 -1|21", "twice all|100 100|-100", "8 bits|127 127|102"});
    }

    void tooMuchVolume()
    {
        QFETCH(QString, measured);
        const QVector<int> values = numbersIn(measured);
        CPRData session;
        send(session, 111, bytes({0, 1, 2, 3, 4, values.at(0), values.at(1)}));
        const E *statistics = session.cprEvents()->sessionStatistics();
        QTEST(textOf(statistics, E::ventTooMuchVolumePercentage), "tooMuch");
    }
};

QTEST_GUILESS_MAIN(TestScore)

#include "tst_score.moc"
