// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "support/Rows.h"

#include "sessionreview/ClassFigures.h"

#include <QLocale>
#include <QtTest>

using namespace sessionreview;
using namespace testsupport;

namespace {

/// How many compressions or ventilations have a fault.
using Counts = QMap<Fault, int>;

constexpr Fault upperFaults[] = {Fault::TooDeep, Fault::TooFast, Fault::TooMuch};

/// The first ones have the fault; of the faults on the upper side of a band the last ones.
template <typename Entries> void giveFaults(Entries &entries, const Counts &counts)
{
    for (auto count = counts.begin(); count != counts.end(); ++count) {
        const bool isUpper = std::find(std::begin(upperFaults), std::end(upperFaults), count.key())
            != std::end(upperFaults);
        for (int i = 0; i < count.value(); ++i)
            (isUpper ? *(entries.rbegin() + i) : entries[std::size_t(i)]).faults |= count.key();
    }
}

/// Compressions every half second with a gap of \a gapMs behind the fifth, and ventilations.
SessionReview reviewOf(int protocol, int compressions, const Counts &compressionFaults, int gapMs,
                       int ventilations, const Counts &ventilationFaults)
{
    SessionReview review;
    review.figures.protocol = protocol;
    review.targets.depth = {50, 60};
    review.targets.rate = {100, 120};
    review.targets.releaseDepth = 5;
    review.targets.volume = {400, 700};
    for (int i = 0; i < compressions; ++i) {
        Compression each;
        each.begin = i * 500 + (i >= 5 ? gapMs : 0);
        each.end = each.begin + 400;
        each.depthSide = Side::Inside;
        each.rateSide = i == 0 ? Side::Unknown : Side::Inside;
        review.compressions.push_back(each);
    }
    for (int i = 0; i < ventilations; ++i) {
        Ventilation each;
        each.rate = 20;
        each.volumeSide = Side::Inside;
        review.ventilations.push_back(each);
    }
    giveFaults(review.compressions, compressionFaults);
    giveFaults(review.ventilations, ventilationFaults);
    return review;
}

QStringList textsOf(const std::vector<Finding> &findings, const Targets &targets)
{
    QStringList texts;
    for (const Finding &each : findings) {
        const QString figure = each.figureText(QLocale::c()).replace(QChar(0xa0), ' ');
        const QString target =
            targetText(*each.figure, targets, QLocale::c()).replace(QChar(0xa0), ' ');
        texts.append(QString("%1 %2 (%3)").arg(each.text(), figure, target));
    }
    return texts;
}

std::vector<std::optional<double>> withDepth(std::optional<double> mm)
{
    std::vector<std::optional<double>> figures(classFigures().size());
    figures[0] = mm;
    return figures;
}

SessionResult resultOf(const QStringList &learners, const QString &start, std::optional<int> score,
                       std::optional<double> depth, const std::vector<Prompt> &toWorkOn,
                       const std::vector<Skill> &judged)
{
    SessionResult result;
    result.learners = learners;
    result.start = QDateTime::fromString(start, Qt::ISODate);
    result.score = score;
    result.basicThreshold = 75;
    result.figures = withDepth(depth);
    result.toWorkOn = toWorkOn;
    result.judged = judged;
    return result;
}

} // namespace

Q_DECLARE_METATYPE(Counts)

class TestFeedback : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findings_data()
    {
        const auto row = columns<int, int, Counts, int, int, Counts, int, QStringList, QStringList>(
            "protocol", "compressions", "faults", "gap", "ventilations", "volumes", "minFlow",
            "toWorkOn", "good");
        const QString pauses =
            "The pauses in compressions were short. Pauses of more than 10 s: 0 (none)";
        const QString depth = "Pressed to the right depth. Correct depth: 100 % (50–60 mm)";
        const QString rate = "Pressed at the right rate. Correct rate: 100 % (100–120 per min)";
        const QString release =
            "Released the chest completely. Complete release: 100 % (at most 5 mm)";
        const QString hands =
            "Hands in the right place. Correct hand position: 100 % (at least 80 %)";
        row("what is not trained is not judged", 1, 10, {}, 0, 4, {{Fault::TooMuch, 4}}, 0, {},
            {pauses, depth, rate, release, hands});
        row("the more harmful first", 1, 10,
            {{Fault::IncompleteRelease, 4}, {Fault::TooShallow, 3}, {Fault::HandPosition, 9}}, 0, 0,
            {}, 0,
            {"Press deeper. Too shallow: 30 % (50–60 mm)",
             "Release the chest completely after each compression. Incomplete release (leaning): "
             "40 % (at most 5 mm)",
             "Put the hands in the right place on the chest. Wrong hand position: 90 % (at most "
             "20 %)"},
            {pauses, rate});
        row("eight of ten are good", 1, 10, {{Fault::TooShallow, 2}, {Fault::IncompleteRelease, 4}},
            0, 0, {}, 0,
            {"Release the chest completely after each compression. Incomplete release (leaning): "
             "40 % (at most 5 mm)"},
            {pauses, "Pressed to the right depth. Correct depth: 80 % (50–60 mm)", rate, hands});
        row("what is left of a good session", 1, 20,
            {{Fault::TooShallow, 2}, {Fault::IncompleteRelease, 1}}, 0, 0, {}, 0,
            {"Press deeper. Too shallow: 10 % (50–60 mm)"},
            {pauses, rate, "Released the chest completely. Complete release: 95 % (at most 5 mm)",
             hands});
        row("the more frequent side", 1, 10, {{Fault::TooShallow, 1}, {Fault::TooDeep, 3}}, 0, 0,
            {}, 0, {"Do not press so deep. Too deep: 30 % (50–60 mm)"},
            {pauses, rate, release, hands});
        row("the more harmful of equal sides", 1, 11, {{Fault::TooSlow, 3}, {Fault::TooFast, 2}}, 0,
            0, {}, 0, {"Press faster. Too slow: 20 % (100–120 per min)"},
            {pauses, depth, release, hands});
        row("a pause", 1, 10, {}, 10000, 0, {}, 0,
            {"Keep the pauses in compressions short. Longest compression pause: 10.1 s (at "
             "most 10 s)"},
            {depth, rate, release, hands});
        // 9.9 s, 5.1 s of them without compressions.
        row("fraction", 1, 10, {}, 5000, 0, {}, 60,
            {"Keep the pauses in compressions short. Chest compression fraction: 48 % (at least 60 "
             "%)"},
            {depth, rate, release, hands});
        row("fraction, good", 1, 10, {}, 5000, 0, {}, 40, {},
            {"The pauses in compressions were short. Chest compression fraction: 48 % (at least 40 "
             "%)",
             depth, rate, release, hands});
        row("too little was done", 0, 4, {{Fault::TooShallow, 4}}, 0, 1, {{Fault::TooMuch, 1}}, 0,
            {}, {});
        row("ventilations", 2, 10, {{Fault::TooShallow, 9}}, 0, 4,
            {{Fault::TooLittle, 1}, {Fault::TooMuch, 1}}, 0,
            {"Ventilate slower. Ventilated too fast: 100 % (8–12 per min)",
             "Give less air in each ventilation. Too much volume: 25 % (400–700 ml)"},
            {});
    }

    void findings()
    {
        QFETCH(int, protocol);
        QFETCH(int, compressions);
        QFETCH(Counts, faults);
        QFETCH(int, gap);
        QFETCH(int, ventilations);
        QFETCH(Counts, volumes);
        QFETCH(int, minFlow);
        SessionReview review = reviewOf(protocol, compressions, faults, gap, ventilations, volumes);
        review.targets.minFlowTime = minFlow;
        if (protocol == 2)
            review.targets.ventilationRate = {8, 12};
        // The first compression of a run has no rate to be judged.
        if (!review.compressions.empty())
            review.compressions.front().faults &= ~(Faults(Fault::TooSlow) | Fault::TooFast);
        const Feedback feedback = feedbackOn(review);
        QTEST(textsOf(feedback.toWorkOn, review.targets), "toWorkOn");
        QTEST(textsOf(feedback.good, review.targets), "good");
    }

    // The AED had everybody stand clear: its time lowers the fraction, and is nobody's fault.
    void theAedsPauseIsNoFault()
    {
        SessionReview review = reviewOf(1, 10, {}, 12000, 0, {});
        review.targets.minFlowTime = 60;
        review.standClear.push_back({3000, 13000});
        const Finding pauses = feedbackOn(review).good.front();
        QCOMPARE(pauses.figure->key, "longest_pause_s");
        QCOMPARE(pauses.value, 1.5); // from 13 s to 14.5 s; 0.6 s before the AED spoke
    }

    void cyclesAreCounted()
    {
        SessionReview review = reviewOf(0, 10, {}, 0, 0, {});
        review.targets.compressionsPerCycle = 30;
        review.targets.ventilationsPerCycle = 2;
        for (int i = 0; i < 5; ++i)
            review.cycles.push_back({0, 0, 30, i < 2 ? 3 : 2, true, i < 2});
        QCOMPARE(textsOf(feedbackOn(review).toWorkOn, review.targets),
                 QStringList("Give the right numbers of compressions and ventilations in each "
                             "cycle. Cycles counted correctly: 60 % (30:2)"));
    }

    void classFigures()
    {
        const SessionResult team =
            resultOf({"Bo", "Ann"}, "2026-03-02T10:00:00Z", 80, 60, {Prompt::PressFaster},
                     {Skill::Depth, Skill::Rate, Skill::Volume});
        const std::vector<SessionResult> results{
            resultOf({"Cem"}, "2026-03-02T11:00:00Z", 60, 50,
                     {Prompt::PressDeeper, Prompt::PressFaster}, {Skill::Depth, Skill::Rate}),
            resultOf({"Cem"}, "2026-03-01T11:00:00Z", 90, 40, {Prompt::MoveHands}, {Skill::Hands}),
            resultOf({}, "", {}, {}, {Prompt::BlowMore}, {Skill::Volume}), team,
            resultOf({"Ann", "Bo"}, "2026-03-01T10:00:00Z", 10, 20, {}, {})};
        const ClassFigures figures = classFiguresOf(results);

        QStringList rows;
        for (const ClassRow &row : figures.rows)
            rows.append(QString("%1 %2 %3")
                            .arg(learnerText(row.learner))
                            .arg(row.sessions)
                            .arg(row.last.score.value_or(-1)));
        QCOMPARE(rows, QStringList({"Ann 2 80", "Bo 2 80", "Cem 2 60", "(no name) 1 -1"}));
        QCOMPARE(figures.sessions, 5);
        QCOMPARE(figures.meanScore.value_or(0), 220.0 / 3);
        QCOMPARE(countText(figures.passed, figures.withThreshold), QString("2 of 3"));
        QVERIFY(figures.means == withDepth(56.67)); // 170 / 3; nobody has another figure
        QStringList faults;
        for (const SharedFault &fault : figures.faults)
            faults.append(countText(fault.learners, fault.judged) + ' ' + keyOf(fault.fault));
        QCOMPARE(
            faults,
            QStringList({"3 of 3 too_slow", "1 of 3 too_shallow", "1 of 3 not_enough_volume"}));

        const std::vector<SessionResult> earlier = earlierOf(team, results);
        QCOMPARE(earlier.size(), std::size_t(1));
        QCOMPARE(earlier.front().score.value_or(0), 10);
        QVERIFY(earlierOf(results[2], results).empty());
    }
};

QTEST_GUILESS_MAIN(TestFeedback)
#include "tst_feedback.moc"
