// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventCompression.h"
#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "CPREventVentilation.h"
#include "CPRFileHandlerZip.h"
#include "ManikinLogPlayer.h"
#include "ManikinLogWriter.h"
#include "Scenario.h"
#include "Simulator.h"
#include "TestSupport.h"

#include <QBuffer>
#include <QMetaEnum>
#include <QTemporaryDir>
#include <QtTest>

#include <cmath>

using manikinsim::Parameters;
using manikinsim::Scenario;
using manikinsim::Simulator;
using manikinsim::Truth;
using E = CPREventBase;

namespace {

constexpr int usualSeeds = 3; // CPRDATA_SEEDS=20 runs more

int seeds()
{
    const int wanted = qEnvironmentVariableIntValue("CPRDATA_SEEDS");
    return wanted > 0 ? wanted : usualSeeds;
}

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

QStringList told(const Truth &truth)
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
    lines +=
        line("depth wave", truth.depthWave.count, truth.depthWave.minimum, truth.depthWave.maximum);
    lines += line("volume wave", truth.volumeWave.count, truth.volumeWave.minimum,
                  truth.volumeWave.maximum);
    lines += truth.learners.join(QLatin1Char('|'));
    lines += truth.guidelineIds.first();
    lines += line("manikin", truth.manikin.type, truth.protocol, truth.inactivitySum);
    lines += parametersText("statistics", truth.statistics, nullptr);
    lines += parametersText("scores", truth.scores, nullptr);
    lines += line("advice", truth.primaryAdvice, truth.secondaryAdvice);
    return lines;
}

template <typename Wave> QString waveText(const char *what, const Wave &wave)
{
    int least = wave.at(0);
    int most = wave.at(0);
    for (int i = 0; i < wave.count(); ++i) {
        least = qMin(least, wave.at(i));
        most = qMax(most, wave.at(i));
    }
    return line(what, wave.count(), least, most);
}

QStringList shown(const CPRData &session, const Truth &truth)
{
    const CPREvents &events = *session.cprEvents();
    QMap<E::EventType, QStringList> byType;
    int aedIndex = 0;
    for (const E *event : events.events()) {
        QStringList &lines = byType[event->type()];
        const auto value = [event](E::ParameterType type) {
            return TestSupport::intOf(event, type);
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
                  TestSupport::intOf(events.sessionInfo(), E::cprProtocol),
                  events.sessionInfo()->parameterValue(E::compInactivity, 0).toInt());
    lines += parametersText("statistics", truth.statistics, events.sessionStatistics());
    lines += parametersText("scores", truth.scores, events.sessionScore());
    lines += line("advice", TestSupport::intOf(events.sessionScore(), E::primaryAdvice),
                  TestSupport::intOf(events.sessionScore(), E::secondaryAdvice));
    return lines;
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
            for (int seed = 1; seed <= seeds(); ++seed)
                QTest::addRow("%s %d", qPrintable(scenario.name), seed) << scenario.name << seed;
        }
    }

    void sessionShowsTheTruth()
    {
        QFETCH(QString, scenario);
        QFETCH(int, seed);
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QStringLiteral(".*")));
        Simulator simulator(*Scenario::find(scenario), quint64(seed));
        if (simulator.scenario().link.cutGuidelines)
            QTest::ignoreMessage(QtWarningMsg, "Invalid guideline received");
        qDebug("playing");

        CPRData session;
        manikinlog::ManikinLogPlayer player(&session);
        manikinlog::Record record;
        while (simulator.next(record))
            player.play(record);
        const Truth &truth = simulator.truth();
        const QStringList expected = told(truth);
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
        if (const auto &advice = simulator.scenario().deservedAdvice)
            QCOMPARE(truth.primaryAdvice, *advice);

        QTemporaryDir directory;
        CPRFileHandlerZip zip;
        QVERIFY(zip.open(directory.filePath("session.zip"), CPRFileHandlerZip::Create));
        QVERIFY(session.writeData(&zip) && zip.close());
        CPRData loaded;
        QVERIFY(zip.open(directory.filePath("session.zip"), CPRFileHandlerZip::Read));
        QVERIFY(loaded.readData(&zip) && zip.close());
        QCOMPARE(difference(expected, shown(loaded, truth)), QString());
        QCOMPARE(TestSupport::intOf(loaded.cprEvents()->sessionInfo(), E::totalTime),
                 truth.loadedTotalTime);
    }

    void perfectIsPerfect()
    {
        for (int protocol : {0, 1, 4, 5}) {
            Scenario scenario = *Scenario::find("perfect");
            scenario.protocol = Scenario::Protocol(protocol);
            Simulator simulator(scenario, 5);
            manikinlog::Record record;
            while (simulator.next(record)) { }
            QCOMPARE(simulator.truth().scores.value(E::overallScore), 100);
            QCOMPARE(simulator.truth().primaryAdvice, E::Advice_None);
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
