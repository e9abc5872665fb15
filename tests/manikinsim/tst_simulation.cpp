// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventCompression.h"
#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "CPREventVentilation.h"
#include "CPRFileHandlerZip.h"
#include "ReceivedSession.h"
#include "manikinlog/ManikinLogPlayer.h"
#include "manikinlog/ManikinLogWriter.h"
#include "manikinsim/Scenario.h"
#include "manikinsim/Simulator.h"
#include "support/EventValues.h"
#include "support/Messages.h"
#include "support/Program.h"

#include <QBuffer>
#include <QMetaEnum>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>
#include <numeric>

using manikinsim::Scenario;
using manikinsim::Simulator;
using oracle::Parameters;
using oracle::ReceivedSession;
using oracle::Truth;
using E = CPREventBase;

namespace {

constexpr int usualSeeds = 3;

// A line per fact, so that a difference names itself.
template <typename... Numbers> QString line(const char *what, Numbers... numbers)
{
    QString text = QLatin1String(what);
    ((text += QLatin1Char(' ') + QString::number(numbers)), ...);
    return text;
}

// mm or whole g, as hundredths or as it was sent.
int hundredths(float value)
{
    return static_cast<int>(std::lround(value * 100));
}

QStringList parametersText(const char *of, const Parameters &expected, const E *event)
{
    QStringList lines;
    for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
        const QByteArray what = of + (' ' + E::parameterKey(it.key()).toLatin1());
        lines += event ? line(what, event->parameterValue(it.key(), -99).toInt())
                       : line(what, it.value());
    }
    return lines;
}

template <typename Wave> QString waveText(const char *what, const Wave &wave)
{
    int least = wave.at(0);
    int most = wave.at(0);
    uint samples = 0; // all of them in a number
    for (int i = 0; i < wave.count(); ++i) {
        least = qMin(least, wave.at(i));
        most = qMax(most, wave.at(i));
        samples = samples * 31 + uint(wave.at(i));
    }
    return line(what, int(wave.count()), least, most, samples);
}

QStringList told(const Truth &truth, const Scenario &scenario)
{
    QStringList lines;
    for (const auto &c : truth.compressions) {
        if (c.isListed)
            lines += line("compression", c.start, c.peak, c.end, c.period, c.depth, c.releaseDepth,
                          c.peakForce, c.releaseForce, c.meanRate, c.leaningDepth, c.leaningForce,
                          c.status & 1, c.status >> 3 & 1, c.status >> 4 & 1);
    }
    for (const auto &v : truth.ventilations) {
        if (v.isListed)
            lines += line("ventilation", v.start, v.peak, v.period, v.volume, v.rate,
                          int(v.duringCompression));
    }
    for (const auto &p : truth.pauses) {
        if (p.isListed)
            lines += line("pause", p.start, p.end, p.seconds);
    }
    for (const auto &loss : truth.packetLosses)
        lines += {line("loss begins", loss.start), line("loss ends", loss.end)};
    for (const auto &shock : truth.shocks)
        lines += line("shock", shock.msecs, shock.energy);
    for (const auto &aed : truth.aedEvents)
        lines +=
            line("aed", aed.msecs) + parametersText("", aed.parameters, nullptr).join(QString());
    for (const auto &rhythm : truth.rhythms)
        lines += line("rhythm", rhythm.msecs, rhythm.rhythm, int(rhythm.isChange));
    for (const auto &user : truth.userEvents)
        lines += line("user", user.msecs) + user.eventId;
    lines += waveText("depth wave", truth.depths);
    lines += waveText("volume wave", truth.volumes);
    QStringList learners = scenario.learners;
    learners.removeDuplicates();
    lines += learners.join(QLatin1Char('|'));
    lines += QString::fromStdString(scenario.guidelines.guidelinesID);
    lines += line("manikin", scenario.device.type, scenario.protocol, truth.inactivitySum);
    lines += parametersText("statistics", truth.statistics, nullptr);
    lines += parametersText("scores", truth.scores, nullptr);
    lines += line("advice", truth.primaryAdvice, truth.secondaryAdvice);
    return lines;
}

QStringList shown(const CPRData &session, const Truth &truth)
{
    const CPREvents &events = *session.cprEvents();
    QMap<E::EventType, QStringList> byType;
    int aedIndex = 0;
    for (const E *event : events.events()) {
        QStringList &lines = byType[event->type()];
        const auto value = [event](E::ParameterType type) {
            return testsupport::intOf(event, type);
        };
        if (const auto *c = qobject_cast<const CPREventCompression *>(event)) {
            lines += line("compression", c->msecs(), c->compPeakTime(), c->eventEndTime(),
                          c->compInstantaneousPeriod(), hundredths(c->compDepth()),
                          hundredths(c->compReleaseDepth()), c->compPeakForce(),
                          int(c->compReleaseForce()), c->compMeanRate(),
                          hundredths(c->compLeaningDepth()), int(c->compLeaningForce()),
                          int(c->compIncompleteRelease()), int(c->compHandposXiphoid()),
                          int(c->compHandposError()));
        } else if (const auto *v = qobject_cast<const CPREventVentilation *>(event)) {
            lines +=
                line("ventilation", v->msecs(), v->ventPeakTime(), v->ventInstantaneousPeriod(),
                     v->ventVolume(), v->ventRate(), int(v->ventDuringCompression()));
        } else if (event->type() == E::CprInactivityCPR) {
            lines += line("pause", event->msecs(), event->eventEndTime(), value(E::compInactivity));
        } else if (event->type() == E::CprPacketLossStart) {
            lines += line("loss begins", event->msecs());
        } else if (event->type() == E::CprPacketLossEnd) {
            lines += line("loss ends", event->msecs());
        } else if (event->type() == E::ShockDelivered) {
            lines += line("shock", event->msecs(), value(E::shockEnergy));
        } else if (event->type() == E::CprAedEvent) {
            const auto &expected = truth.aedEvents.at(std::size_t(aedIndex++)).parameters;
            lines +=
                line("aed", event->msecs()) + parametersText("", expected, event).join(QString());
        } else if (event->type() == E::CprCprdEvent) {
            lines += line("rhythm", event->msecs(), value(E::aedECGRhythm),
                          int((event->tag() & E::TagCprGui) != 0));
        } else if (event->type() == E::Event) {
            lines += line("user", event->msecs())
                + event->parameterValue(E::eventId, QVariant()).toString();
        }
    }
    QStringList lines =
        byType[E::CprCompEvent] + byType[E::CprVentEvent] + byType[E::CprInactivityCPR];
    const QStringList &starts = byType[E::CprPacketLossStart];
    for (int i = 0; i < starts.size(); ++i)
        lines += {starts.at(i), byType[E::CprPacketLossEnd].value(i)};
    lines += byType[E::ShockDelivered] + byType[E::CprAedEvent] + byType[E::CprCprdEvent]
        + byType[E::Event];
    lines += waveText("depth wave", *session.compressionData());
    lines += waveText("volume wave", *session.ventilationData());
    lines += session.learners().join(QLatin1Char('|'));
    lines += session.cprGuidelines()->guidelinesID();
    lines += line("manikin", events.sessionInfo()->getManikinType(),
                  testsupport::intOf(events.sessionInfo(), E::cprProtocol),
                  events.sessionInfo()->parameterValue(E::compInactivity, 0).toInt());
    lines += parametersText("statistics", truth.statistics, events.sessionStatistics());
    lines += parametersText("scores", truth.scores, events.sessionScore());
    lines += line("advice", testsupport::intOf(events.sessionScore(), E::primaryAdvice),
                  testsupport::intOf(events.sessionScore(), E::secondaryAdvice));
    return lines;
}

// Gives the time of the last record. The instructor ends the session at \a stopAt, if that comes.
qint64 play(Simulator &simulator, CPRData &session, qint64 stopAt = -1)
{
    manikinlog::ManikinLogPlayer player(&session);
    manikinlog::Record record;
    while (simulator.next(record)) {
        player.play(record);
        if (record.msecs == stopAt)
            simulator.stop();
    }
    return record.msecs;
}

// The first line that differs.
QString difference(const QStringList &expected, const QStringList &actual)
{
    for (int i = 0; i < qMax(expected.size(), actual.size()); ++i) {
        if (expected.value(i) != actual.value(i))
            return QStringLiteral("expected \"%1\", shown \"%2\"")
                .arg(expected.value(i), actual.value(i));
    }
    return QString();
}

} // namespace

/// The simulated manikin knows what happened: a session has to show it, live and from an archive.
class TestSimulation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void sessionShowsTheTruth_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<int>("seed");
        for (const Scenario &scenario : Scenario::all()) {
            for (int seed = 1; seed <= testsupport::seeds(usualSeeds); ++seed)
                QTest::addRow("%s %d", qPrintable(scenario.name), seed) << scenario.name << seed;
        }
    }

    void sessionShowsTheTruth()
    {
        QFETCH(QString, scenario);
        QFETCH(int, seed);
        ReceivedSession received(*Scenario::find(scenario));
        Simulator simulator(*Scenario::find(scenario), quint64(seed), &received);
        if (simulator.scenario().link.cutGuidelines)
            QTest::ignoreMessage(QtWarningMsg, "Invalid guideline received");

        CPRData session;
        play(simulator, session);
        const Truth &truth = received.truth();
        const QStringList expected = told(truth, simulator.scenario());
        QCOMPARE(difference(expected, shown(session, truth)), QString());
        QStringList numbers;
        QStringList shownNumbers;
        for (const auto &compression : truth.compressions) {
            if (compression.isListed)
                numbers += QString::number(compression.numberInCycle);
        }
        const auto listed = session.cprEvents()->events(E::TagComp, -1);
        for (const E *event : listed)
            shownNumbers += event->property("numberInCycle").toString();
        QCOMPARE(shownNumbers, numbers);
        static const QMap<QString, E::Advice> deserved{
            {"perfect", E::Advice_None},
            {"shallow", E::Advice_CompressDeepEnough},
            {"too-fast", E::Advice_CorrectRate},
            {"leaning", E::Advice_ReleaseCompletely},
            {"long-pauses", E::Advice_MinimizeNoFlow},
        };
        if (deserved.contains(scenario))
            QCOMPARE(truth.primaryAdvice, deserved.value(scenario));

        QTemporaryDir directory;
        CPRFileHandlerZip zip;
        QVERIFY(zip.open(directory.filePath("session.zip"), CPRFileHandlerZip::Create));
        QVERIFY(session.writeData(&zip) && zip.close());
        CPRData loaded;
        QVERIFY(zip.open(directory.filePath("session.zip"), CPRFileHandlerZip::Read));
        QVERIFY(loaded.readData(&zip) && zip.close());
        QCOMPARE(difference(expected, shown(loaded, truth)), QString());
        QCOMPARE(testsupport::intOf(loaded.cprEvents()->sessionInfo(), E::totalTime),
                 truth.loadedTotalTime);
    }

    void variantsShowTheTruth_data()
    {
        QTest::addColumn<QString>("scenario");
        QTest::addColumn<int>("protocol");
        QTest::addColumn<int>("manikin");
        QTest::addColumn<bool>("absoluteDepth");
        for (const Scenario &scenario : Scenario::all()) {
            for (int protocol = 0; protocol <= 5; ++protocol) {
                const bool isInfant = protocol % 2 == 1;
                QTest::addRow("%s, protocol %d", qPrintable(scenario.name), protocol)
                    << scenario.name << protocol
                    << int(isInfant ? E::KDX_INFANT : E::VIVARO_ZENNA_PLUS) << (protocol > 2);
            }
        }
    }

    // Every scenario under every protocol, on manikins with coarse and fine waves of both kinds.
    void variantsShowTheTruth()
    {
        QFETCH(QString, scenario);
        QFETCH(int, protocol);
        QFETCH(int, manikin);
        QFETCH(bool, absoluteDepth);
        Scenario variant = *Scenario::find(scenario);
        variant.protocol = Scenario::Protocol(protocol);
        variant.device.type = E::ManikinType(manikin);
        variant.guidelines.useRelativeDepth = absoluteDepth ? 0 : 1;
        if (variant.link.cutGuidelines)
            QTest::ignoreMessage(QtWarningMsg, "Invalid guideline received");

        ReceivedSession received(variant);
        Simulator simulator(variant, 11, &received);
        CPRData session;
        play(simulator, session);
        const Truth &truth = received.truth();
        QCOMPARE(difference(told(truth, variant), shown(session, truth)), QString());
    }

    // The instructor ends it within its 48th second, which comes to its end; the scores come 200 ms
    // behind that.
    void stoppedSessionShowsTheTruth()
    {
        for (const Scenario &scenario : Scenario::all()) {
            if (scenario.link.cutGuidelines)
                QTest::ignoreMessage(QtWarningMsg, "Invalid guideline received");
            ReceivedSession received(scenario);
            Simulator simulator(scenario, 3, &received);
            CPRData session;
            QCOMPARE(play(simulator, session, Simulator::sessionStart + 47300),
                     Simulator::sessionStart + 48200);
            QCOMPARE(difference(told(received.truth(), scenario), shown(session, received.truth())),
                     QString());
            QCOMPARE(
                testsupport::intOf(session.cprEvents()->sessionStatistics(), E::sessionDuration),
                48);
        }
    }

    void statisticsByPlainDefinitions_data()
    {
        QTest::addColumn<QString>("scenario");
        for (const Scenario &scenario : Scenario::all())
            QTest::newRow(qPrintable(scenario.name)) << scenario.name;
    }

    // Counts, means, deviations and shares once more, from what happened. The guideline set asks
    // for 50 to 60 mm, a release to 5 mm, 100 to 120 per minute, and 400 to below 700 ml.
    void statisticsByPlainDefinitions()
    {
        QFETCH(QString, scenario);
        ReceivedSession received(*Scenario::find(scenario));
        Simulator simulator(*Scenario::find(scenario), 21, &received);
        manikinlog::Record record;
        while (simulator.next(record)) { }
        const Truth &truth = received.truth();

        QVector<double> depths;
        QVector<double> releases;
        QVector<double> strokes;
        QVector<double> rates;
        int shallow = 0;
        int unreleased = 0;
        int slow = 0;
        int fast = 0;
        int wrongHands = 0;
        for (std::size_t i = 0; i < truth.compressions.size(); ++i) {
            const auto &c = truth.compressions.at(i);
            depths.append(c.depth);
            releases.append(c.releaseDepth);
            strokes.append(c.depth - c.releaseDepth);
            shallow += c.depth < 5000 ? 1 : 0;
            unreleased += c.releaseDepth > 500 ? 1 : 0;
            wrongHands += (c.status & 4) == 0 ? 1 : 0;
            if (i > 0 && c.start - truth.compressions.at(i - 1).end <= 500) {
                const double rate = std::floor(60000.0 / c.period + 0.5);
                rates.append(rate);
                slow += rate < 100 ? 1 : 0;
                fast += rate > 120 ? 1 : 0;
            }
        }
        QVector<double> volumes;
        QVector<double> inflations;
        int little = 0;
        int much = 0;
        for (const auto &v : truth.ventilations) {
            volumes.append(v.volume);
            inflations.append(v.peak - v.start);
            little += v.volume < 400 ? 1 : 0;
            much += v.volume >= 700 ? 1 : 0;
        }
        int pauseSeconds = 0;
        for (const auto &pause : truth.pauses)
            pauseSeconds += pause.lasted;

        const auto mean = [](const QVector<double> &values) {
            return std::accumulate(values.begin(), values.end(), 0.0) / qMax(1, values.size());
        };
        const auto deviation = [&mean](const QVector<double> &values) {
            double squares = 0;
            for (double value : values)
                squares += (value - mean(values)) * (value - mean(values));
            return std::sqrt(squares / qMax(1, values.size()));
        };
        const auto percent = [](int part, int whole) {
            return std::floor(100.0 * part / whole + 0.5);
        };
        const QMap<E::ParameterType, double> statistics{
            {E::compCount, depths.size()},
            {E::compMeanDepth, mean(depths)},
            {E::compStdDeviationDepth, deviation(depths)},
            {E::compMeanReleaseDepth, mean(releases)},
            {E::compStdDeviationReleaseDepth, deviation(releases)},
            {E::compMeanStrokeLength, mean(strokes)},
            {E::compMeanRate, mean(rates)},
            {E::compStdDeviationRate, deviation(rates)},
            {E::ventCount, volumes.size()},
            {E::ventMeanVolume, mean(volumes)},
            {E::ventStdDeviationVolume, deviation(volumes)},
            {E::compCorrectReleasePercentage, percent(depths.size() - unreleased, depths.size())},
            {E::compCorrectRatePercentage, percent(rates.size() - slow - fast, rates.size())},
            {E::compTooLowRatePercentage, percent(slow, rates.size())},
            {E::compHandPosCorrectPercentage, percent(depths.size() - wrongHands, depths.size())},
            {E::ventCorrectVolumePercentage,
             percent(volumes.size() - little - much, volumes.size())},
            {E::ventNotEnoughVolumePercentage, percent(little, volumes.size())},
            {E::inactivityTime, pauseSeconds},
            {E::compInactivityPeriodCount, double(truth.pauses.size())},
            {E::timeFirstComp, std::floor(truth.compressions.front().start / 1000.0)},
            {E::timeFirstVent, std::floor(truth.ventilations.front().start / 1000.0)},
            {E::sessionDuration, simulator.scenario().seconds},
        };
        for (auto it = statistics.cbegin(); it != statistics.cend(); ++it) {
            const double sent = truth.statistics.value(it.key(), -99);
            QVERIFY2(std::abs(sent - it.value()) <= 0.5,
                     qPrintable(E::parameterKey(it.key())
                                + QString::asprintf(" %f, not %f", sent, it.value())));
        }
        // The rule: a point for each percent of those that have the fault.
        QCOMPARE(truth.scores.value(E::compDepthScoreReduction),
                 int(percent(shallow, depths.size())));
        QCOMPARE(truth.scores.value(E::compReleaseScoreReduction),
                 int(percent(unreleased, depths.size())));
        QCOMPARE(truth.scores.value(E::compRateHighScoreReduction),
                 int(percent(fast, rates.size())));
        QCOMPARE(truth.scores.value(E::compHandposScoreReduction),
                 int(percent(wrongHands, depths.size())));
        QCOMPARE(truth.scores.value(E::ventShallowScoreReduction),
                 int(percent(little, volumes.size())));
    }

    // What cannot be simulated is said, and gives no records.
    void unsoundScenarios()
    {
        using Change = void (*)(Scenario &);
        const Change changes[] = {
            [](Scenario &each) { each.seconds = 0; },
            [](Scenario &each) { each.seconds = Scenario::maxSeconds + 1; },
            [](Scenario &each) { each.protocol = Scenario::Protocol(6); },
            [](Scenario &each) { each.learners = QStringList{QString()}; },
            [](Scenario &each) { each.learners = QStringList{"two\nlines"}; },
            [](Scenario &each) { each.otherGuidelines = each.guidelines; },
            [](Scenario &each) { each.skill.rate.mean = 0; },
            [](Scenario &each) { each.skill.incompleteReleases = 101; },
            [](Scenario &each) { each.link.maxLoss = 0; },
        };
        for (const Change change : changes) {
            Scenario scenario = *Scenario::find("good");
            QVERIFY(scenario.problem().isEmpty());
            change(scenario);
            QVERIFY(!scenario.problem().isEmpty());
            manikinlog::Record record;
            QVERIFY(!Simulator(scenario, 1).next(record));
        }
    }

    void perfectIsPerfect()
    {
        for (int protocol : {0, 1, 4, 5}) {
            Scenario scenario = *Scenario::find("perfect");
            scenario.protocol = Scenario::Protocol(protocol);
            ReceivedSession received(scenario);
            Simulator simulator(scenario, 5, &received);
            manikinlog::Record record;
            while (simulator.next(record)) { }
            QCOMPARE(received.truth().scores.value(E::overallScore), 100);
            QCOMPARE(received.truth().primaryAdvice, E::Advice_None);
        }
    }

    // The log of a seed must not change from one machine, locale or time zone to another.
    void sameSeedSameLog()
    {
        const auto logOf = [](quint64 seed) {
            QBuffer buffer;
            buffer.open(QIODevice::WriteOnly);
            manikinlog::ManikinLogWriter writer(&buffer);
            Simulator(*Scenario::find("beginner"), seed).write(writer);
            return QCryptographicHash::hash(buffer.data(), QCryptographicHash::Sha1).toHex();
        };
        const QByteArray log = logOf(7);
        QVERIFY(log != logOf(8));
        QLocale::setDefault(QLocale(QLocale::German));
        qputenv("TZ", "Asia/Kolkata");
        QCOMPARE(logOf(7), log);
    }
};

QTEST_GUILESS_MAIN(TestSimulation)
#include "tst_simulation.moc"
