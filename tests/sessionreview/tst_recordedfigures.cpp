// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/ManikinLogPlayer.h"
#include "manikinsim/Simulator.h"
#include "support/Rows.h"
#include "support/StoredSession.h"

#include "sessionreview/SessionComparison.h"

#include <CPREventCompression.h>
#include <CPREventVentilation.h>

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <functional>

using namespace sessionreview;
using namespace testsupport;
using E = CPREventBase;
using Values = QMap<QString, double>;

namespace {

Values valuesOf(const SessionReview &review)
{
    Values values;
    for (const RecordedFigure &figure : recordedFigures()) {
        if (const auto value = figure.value(review))
            values.insert(figure.key, *value);
    }
    return values;
}

/// The same figures by plain walks over the session's events, for what the simulator does: a run's
/// periods are shorter than 0.9 s, no loss on the link lasts 2 s.
Values plainValuesOf(const CPRData &session, int protocol)
{
    QVector<const CPREventCompression *> comps;
    QVector<const CPREventVentilation *> vents;
    QVector<QPair<int, int>> clears; // from an analysis to the shock or its refusal
    int shock = -1;
    int begin = std::numeric_limits<int>::max();
    int end = 0;
    for (const E *event : session.cprEvents()->events()) {
        const auto *comp = qobject_cast<const CPREventCompression *>(event);
        const auto *vent = qobject_cast<const CPREventVentilation *>(event);
        if (comp)
            comps.append(comp);
        if (vent)
            vents.append(vent);
        if (comp || vent || event->type() == E::CprInactivityCPR) {
            begin = std::min(begin, event->msecs());
            end = std::max(end, vent ? vent->ventPeakTime() : event->eventEndTime());
        }
        const int aed = event->parameterValue(E::aedEventType, 0).toInt();
        if (event->type() == E::CprAedEvent && aed == E::AEDAnalyzing)
            clears.append({event->msecs(), 0});
        if (event->type() == E::ShockDelivered)
            shock = event->msecs();
        if (!clears.isEmpty() && clears.last().second == 0
            && (event->type() == E::ShockDelivered || aed == E::AEDNoShockIndicated))
            clears.last().second = event->msecs();
    }
    const auto byTime = [](const E *a, const E *b) { return a->msecs() < b->msecs(); };
    std::stable_sort(comps.begin(), comps.end(), byTime);
    std::stable_sort(vents.begin(), vents.end(), byTime);

    Values values{{"compressions", comps.size()}, {"ventilations", vents.size()}};
    const auto put = [&values](const char *mean, const char *deviation,
                               const QVector<double> &all) {
        double sum = 0;
        double squares = 0;
        for (double value : all)
            sum += value;
        for (double value : all)
            squares += std::pow(value - sum / all.size(), 2);
        if (!all.isEmpty())
            values.insert(mean, sum / all.size());
        if (all.size() > 1 && *deviation)
            values.insert(deviation, std::sqrt(squares / all.size()));
    };
    const auto share = [&values](const char *key, int part, int all) {
        if (all > 0)
            values.insert(key, 100.0 * part / all);
    };

    const bool hasTurns = protocol == 0 || protocol == 3 || protocol == 4;
    const CPRGuidelines &set = *session.cprGuidelines();
    QVector<double> depths, releases, rates, volumes, ventilationPauses;
    int deep = 0, shallow = 0, slow = 0, fast = 0, leaning = 0, hands = 0, correct = 0, judged = 0;
    double gaps = 0, longest = 0, forAed = 0;
    int over10 = 0;
    const auto gap = [&](int from, int to) { return to - from > 2000 ? to - from : 0; };
    for (int i = 0; i < comps.size(); ++i) {
        const CPREventCompression &comp = *comps[i];
        const int period = comp.compInstantaneousPeriod();
        const int depth = qRound(comp.compDepth() * 100);
        depths.append(depth / 100.0);
        releases.append(qRound(comp.compReleaseDepth() * 100) / 100.0);
        const bool isFirst =
            i == 0 || period > 900
            || (hasTurns && std::any_of(vents.begin(), vents.end(), [&](const E *vent) {
                    return vent->msecs() > comps[i - 1]->msecs() && vent->msecs() < comp.msecs();
                }));
        const int rate = isFirst      ? 0
            : comp.compMeanRate() > 0 ? comp.compMeanRate()
                                      : 60000 / period;
        if (!isFirst)
            rates.append(60000.0 / period);
        const bool isShallow = depth < set.compressionDepthMin();
        const bool isDeep = depth > set.compressionDepthMax();
        const bool isSlow = rate > 0 && rate < set.compressionRateMin();
        const bool isFast = rate > set.compressionRateMax();
        shallow += isShallow, deep += isDeep, slow += isSlow, fast += isFast, judged += rate > 0;
        leaning += comp.compIncompleteRelease();
        hands += comp.compHandposError() || comp.compHandposXiphoid();
        correct += !isShallow && !isDeep && !isSlow && !isFast && !comp.compIncompleteRelease();
        if (i == 0) {
            gaps += gap(begin, comp.msecs());
            continue;
        }
        const int from = comps[i - 1]->eventEndTime();
        // A compression whose message was lost is known by the period of the next.
        const int lost = comp.msecs() - period;
        const int to = period > 0 && period < 2000 && lost > from ? lost : comp.msecs();
        gaps += gap(from, to);
        QVector<QPair<int, int>> pauses{{from, to}};
        for (const auto &clear : clears) {
            if (clear.first < to && clear.second > from) {
                forAed += std::min(clear.second, to) - std::max(clear.first, from);
                pauses = {{from, clear.first}, {clear.second, to}};
            }
        }
        for (const auto &pause : pauses) {
            const double secs = (pause.second - pause.first) / 1000.0;
            if (gap(from, to) == 0 || secs <= 0)
                continue;
            longest = std::max(longest, secs);
            over10 += secs > 10;
            if (hasTurns && std::any_of(vents.begin(), vents.end(), [&](const auto *vent) {
                    return vent->ventPeakTime() > pause.first
                        && vent->ventPeakTime() < pause.second;
                }))
                ventilationPauses.append(secs);
        }
        if (shock >= from && shock < comp.msecs()) {
            values.insert("mean_pre_shock_pause_s", (shock - from) / 1000.0);
            values.insert("mean_post_shock_pause_s", (to - shock) / 1000.0);
            values.insert("mean_peri_shock_pause_s", (to - from) / 1000.0);
        }
    }
    int little = 0, much = 0;
    for (const CPREventVentilation *vent : vents) {
        volumes.append(vent->ventVolume());
        little += vent->ventVolume() < set.ventilationVolumeMin();
        much += vent->ventVolume() >= set.ventilationVolumeMax();
    }

    put("mean_depth_mm", "deviation_depth_mm", depths);
    put("mean_release_depth_mm", "deviation_release_depth_mm", releases);
    put("mean_rate_per_min", "deviation_rate_per_min", rates);
    put("mean_volume_ml", "deviation_volume_ml", volumes);
    put("mean_ventilation_pause_s", "", ventilationPauses);
    const int all = comps.size();
    share("too_shallow_percent", shallow, all);
    share("too_deep_percent", deep, all);
    share("correct_depth_percent", all - shallow - deep, all);
    share("too_slow_percent", slow, judged);
    share("too_fast_percent", fast, judged);
    share("correct_rate_percent", judged - slow - fast, judged);
    share("leaning_percent", leaning, all);
    share("complete_release_percent", all - leaning, all);
    share("wrong_hands_percent", hands, all);
    share("correct_hands_percent", all - hands, all);
    share("all_correct_percent", correct, all);
    share("not_enough_volume_percent", little, vents.size());
    share("too_much_volume_percent", much, vents.size());
    share("correct_volume_percent", vents.size() - little - much, vents.size());
    values.insert("shocks", shock >= 0 ? 1 : 0);
    if (!clears.isEmpty())
        values.insert("aed_pause_s", forAed / 1000);
    if (!comps.isEmpty()) {
        gaps += gap(comps.last()->eventEndTime(), end);
        values.insert("compression_fraction", 1 - gaps / (end - begin));
        values.insert("pauses_over_10_s", over10);
    }
    if (longest > 0)
        values.insert("longest_pause_s", longest);
    return values;
}

using Depths = QVector<double>;
using Change = std::function<void(SessionReview &)>;

/// Two compressions a second without a rate, judged by 50 to 60 mm, and an overall score of 80 %.
SessionReview reviewOfDepths(const Depths &depths)
{
    SessionReview review;
    review.targets.depth = {50, 60};
    review.figures.hasScores = true;
    review.figures.overallScore = 80;
    for (double depth : depths) {
        Compression compression;
        compression.begin = compression.end = 500 * int(review.compressions.size());
        compression.depth = depth;
        judge(compression, review.targets);
        review.compressions.push_back(compression);
    }
    return review;
}

} // namespace

Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(sessionreview::Outcome)

class TestRecordedFigures : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // Two rescuers, an AED and a shock; worked out by hand from the tables in data/README.md.
    void recordedSession()
    {
        CPRData session;
        QVERIFY(play(session, "two-rescuers.cprlog"));
        const Values expected{
            {"compressions", 162},
            {"mean_depth_mm", 51.64}, // 8365 mm / 162
            {"deviation_depth_mm", 2.78}, // root of 433185 / 162 - (8365 / 162)^2
            {"mean_rate_per_min", 108.13}, // 87 x 111.11, 29 x 107.14, 29 x 93.75, 11 x 125
            {"too_slow_percent", 18.59}, // 29 of 156
            {"too_fast_percent", 7.05}, // 11 of 156
            {"mean_release_depth_mm", 0.36}, // 2 x 9, 4 x 7 and 2 x 6 of 162
            {"leaning_percent", 4.94}, // 8 of 162
            {"wrong_hands_percent", 1.23}, // 2 of 162
            {"all_correct_percent", 72.22}, // 30, 28, 30, 1, 0 and 28 of 162
            // From 2.0 to 119.2 s, without gaps of 3 x 2.7, 10.7, 6.62 and, at the end, 2.2 s.
            {"compression_fraction", 0.7643},
            {"longest_pause_s", 6.62}, // the longer one has the AED's 3 s cut out
            {"pauses_over_10_s", 0},
            {"mean_ventilation_pause_s", 2.7},
            {"aed_pause_s", 3},
            {"shocks", 1},
            {"mean_pre_shock_pause_s", 6.78}, // 56.22 to 63
            {"mean_post_shock_pause_s", 3.92}, // to 66.92
            {"mean_peri_shock_pause_s", 10.7},
            {"mean_volume_ml", 530},
            {"not_enough_volume_percent", 25},
            {"too_much_volume_percent", 25},
            // 30:2 four times and 12:0; the AED cut off the third.
            {"correct_cycles_percent", 80},
            {"mean_compressions_per_cycle", 26.4},
            {"target_compressions_per_cycle", 30},
            {"mean_ventilations_per_cycle", 1.6},
        };
        const Values values = valuesOf(reviewOf(session));
        for (auto it = expected.begin(); it != expected.end(); ++it)
            QVERIFY2(values.contains(it.key()) && values.value(it.key()) == it.value(),
                     qPrintable(QString("%1 %2").arg(it.key()).arg(values.value(it.key(), -1))));
    }

    void everyScenario_data()
    {
        const auto row = columns<QString, int>("scenario", "protocol");
        for (const manikinsim::Scenario &scenario : manikinsim::Scenario::all()) {
            for (int protocol = 0; protocol < 6; ++protocol)
                row(qPrintable(QString("%1 %2").arg(scenario.name).arg(protocol)), scenario.name,
                    protocol);
        }
    }

    void everyScenario()
    {
        QFETCH(QString, scenario);
        QFETCH(int, protocol);
        manikinsim::Scenario trained = *manikinsim::Scenario::find(scenario);
        trained.protocol = manikinsim::Scenario::Protocol(protocol);
        manikinsim::Simulator simulator(trained, 7);
        CPRData session;
        manikinlog::ManikinLogPlayer player(&session);
        for (manikinlog::Record record; simulator.next(record);)
            player.play(record);

        Values values = valuesOf(reviewOf(session));
        CPRData loaded;
        const QString archive = m_directory.filePath("session.zip");
        QVERIFY(saveTo(archive, session) && loadFrom(archive, loaded));
        QCOMPARE(valuesOf(reviewOf(loaded)), values);
        for (const QString &key : values.keys()) {
            if (key.contains("cycle")) // the manikin counts those, too
                values.remove(key);
        }
        const Values plain = plainValuesOf(session, protocol);
        QCOMPARE(values.keys(), plain.keys());
        for (auto it = plain.begin(); it != plain.end(); ++it)
            QVERIFY2(
                std::abs(values.value(it.key()) - it.value()) <= 0.00501,
                qPrintable(
                    QString("%1 %2 %3").arg(it.key()).arg(values.value(it.key())).arg(it.value())));
    }

    void gaps_data()
    {
        // Compressions as begin, end, period; losses on the link; s without compressions, of
        // which there is a pause, and share of the time with them.
        using Spans = QVector<QVector<int>>;
        const auto row =
            columns<Spans, Spans, double, double>("compressions", "losses", "longest", "fraction");
        row("2 s", {{1000, 1400, 0}, {3400, 3800, 2400}}, {}, 0, 1);
        row("longer", {{1000, 1400, 0}, {3500, 3900, 2500}}, {}, 2.1, 0.2759); // 0.8 of 2.9
        row("message lost", {{1000, 1400, 0}, {4500, 4900, 500}}, {}, 2.6, 0.3333); // 1.3 of 3.9
        row("short loss", {{1000, 1400, 0}, {4400, 5000, 3400}}, {{2000, 4000}}, 3, 0.25); // 1 of 4
        row("nobody knows", {{1000, 1400, 0}, {5400, 5800, 500}}, {{1900, 4900}}, 0, 1);
        row("known in part", {{1000, 1400, 0}, {9400, 9900, 8400}}, {{1900, 4400}}, 5,
            0.2188); // 1.4 of 6.4
    }

    void gaps()
    {
        QFETCH(QVector<QVector<int>>, compressions);
        QFETCH(QVector<QVector<int>>, losses);
        SessionReview review;
        for (const QVector<int> &each : compressions) {
            Compression compression;
            compression.begin = each[0];
            compression.end = each[1];
            compression.period = each[2];
            review.compressions.push_back(compression);
        }
        for (const QVector<int> &each : losses)
            review.losses.push_back({each[0], each[1]});
        const Values values = valuesOf(review);
        QTEST(values.value("longest_pause_s"), "longest");
        QTEST(values.value("compression_fraction"), "fraction");
    }

    void comparison_data()
    {
        // 50 to 60 mm in both, and what differs.
        const auto row = columns<QString, Depths, Depths, Change, QString, Outcome>(
            "key", "depths", "others", "change", "difference", "outcome");
        const Change none = [](SessionReview &) {};
        const Change deeper = [](SessionReview &other) { other.targets.depth = {40, 50}; };
        const Change scored = [](SessionReview &other) { other.figures.overallScore = 68; };
        const Change untrained = [](SessionReview &other) { other.figures.protocol = 1; };
        using O = Outcome;
        // clang-format off
        row("both on target",    "mean_depth_mm",             {52},     {58},     none,   "-6.0 mm",  O::AsGood);
        row("nearer",            "mean_depth_mm",             {48},     {63},     none,   "-15.0 mm", O::Better); // 2 and 3 away
        row("as near",           "mean_depth_mm",             {40.1},   {69.9},   none,   "-29.8 mm", O::AsGood); // 9.9 away
        row("less near",         "mean_depth_mm",             {61},     {55},     none,   "+6.0 mm",  O::Worse);
        row("steadier",          "deviation_depth_mm",        {50, 54}, {50, 60}, none,   "-3.0 mm",  O::Better); // 2 and 5
        row("read as the same",  "deviation_depth_mm",        {50, 54}, {50, 54.08}, none, "0.0 mm",  O::AsGood); // 2.04
        row("steady anywhere",   "deviation_depth_mm",        {50, 60}, {50, 54}, deeper, "+3.0 mm",  O::Worse);
        row("other target",      "mean_depth_mm",             {55},     {45},     deeper, "+10.0 mm", O::OtherStandard);
        row("more right",        "correct_depth_percent",     {55, 55}, {55, 45}, none,   "+50 %",    O::Better);
        row("more wrong",        "too_shallow_percent",       {55, 45}, {55, 55}, none,   "+50 %",    O::Worse);
        row("count",             "compressions",              {55, 55}, {55},     none,   "+1",       O::NotJudged);
        row("nothing recorded",  "mean_depth_mm",             {55},     {},       none,   "",         O::NotJudged);
        row("not received",      "flow_time_percent",         {55},     {55},     none,   "",         O::NotJudged);
        row("score",             "overall_score_percent",     {55},     {55},     scored, "+12 %",    O::Better);
        row("score by others",   "overall_score_percent",     {55},     {55},     deeper, "0 %",      O::OtherStandard);
        row("other protocol",    "compression_fraction",      {55, 55}, {55, 55}, untrained, "0 %",      O::OtherStandard);
        row("no long one",       "pauses_over_10_s",          {55, 55}, {55, 55}, untrained, "0",        O::AsGood);
        // clang-format on
    }

    void comparison()
    {
        QFETCH(QString, key);
        QFETCH(Depths, depths);
        QFETCH(Depths, others);
        QFETCH(Change, change);
        SessionReview other = reviewOfDepths(others);
        change(other);
        const SessionComparison compared = comparisonOf(reviewOfDepths(depths), other);
        const auto figure =
            std::find_if(compared.figures.begin(), compared.figures.end(),
                         [&key](const ComparedFigure &each) { return each.figure->key == key; });
        QVERIFY(figure != compared.figures.end());
        QTEST(figure->differenceText(QLocale::c())
                  .replace(QChar(0x2212), '-')
                  .replace(QChar(0xa0), ' '),
              "difference");
        QTEST(figure->outcome, "outcome");
    }

    void comparedWithItself()
    {
        CPRData session;
        QVERIFY(play(session, "two-rescuers.cprlog"));
        const SessionReview review = reviewOf(session);
        const SessionComparison compared = comparisonOf(review, review);
        for (const ComparedFigure &figure : compared.figures)
            QVERIFY2(figure.difference.value_or(0) == 0 && figure.outcome <= Outcome::AsGood,
                     figure.figure->key);
        // From the tables in data/README.md.
        const QVector<QPair<Fault, int>> expected{
            {Fault::TooShallow, 22}, {Fault::IncompleteRelease, 8}, {Fault::HandPosition, 2},
            {Fault::TooSlow, 29},    {Fault::TooFast, 11},          {Fault::TooLittle, 2},
            {Fault::TooMuch, 2}};
        QVector<QPair<Fault, int>> faults;
        for (const ComparedFault &fault : compared.faults) {
            QCOMPARE(fault.count, fault.other);
            faults.append({fault.fault, fault.count});
        }
        QCOMPARE(faults, expected);
        QCOMPARE(originOf(review, Alignment::FirstCompression).value_or(-1), 2000);
        QVERIFY(!originOf(SessionReview(), Alignment::FirstCompression));
    }

    // Without events nothing but numbers of them is known.
    void nothing()
    {
        QCOMPARE(valuesOf(reviewOf(CPRData())).keys(),
                 QStringList({"compressions", "shocks", "ventilations"}));
    }

private:
    QTemporaryDir m_directory;
};

QTEST_GUILESS_MAIN(TestRecordedFigures)
#include "tst_recordedfigures.moc"
