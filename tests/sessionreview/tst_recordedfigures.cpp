// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/ManikinLogPlayer.h"
#include "manikinsim/Simulator.h"
#include "support/Rows.h"
#include "support/StoredSession.h"

#include "sessionreview/RecordedFigures.h"

#include <CPREventCompression.h>
#include <CPREventVentilation.h>

#include <QtTest>

#include <algorithm>
#include <cmath>

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

} // namespace

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
