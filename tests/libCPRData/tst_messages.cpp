// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventAED.h"
#include "CPREventCompression.h"
#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "CPREventUser.h"
#include "CPREventVentilation.h"
#include "support/EventValues.h"
#include "support/Messages.h"
#include "support/Rows.h"

#include <QLoggingCategory>
#include <QSignalSpy>

#include <limits>

using namespace testsupport;
using E = CPREventBase;
using bls_2010::CommonDefs;
using bls_2010::RMessage;
using Numbers = QVector<double>;

namespace {

constexpr int sequence = 100; // 2000 ms of session time at the 20 ms of a new wave
constexpr int high = 0x81; // sets the sign bit of every byte
constexpr int never = 99;

struct Field {
    QByteArray name;
    int wholeFrom; // smallest content that holds all of it, below which it is 0
    double value; // after content bytes 00 01 02 ...
    double highValue; // after 81 82 83 ...
    int storedFrom = 0; // smallest content that touches it, below which its earlier value stays
};

struct Layout {
    const char *name;
    quint32 id;
    int selector; // byte 1, or -1 for a numbered one
    int acceptedFrom; // smallest content that is not refused
    int size;
    QVector<Field> fields;
    QByteArrayList singles = {}; // names of fields of one byte each, beginning at byte 1
    bool isSigned = false;
};

// clang-format off
const QVector<Layout> layouts = {
    {"shock", 47, -1, 0, 3, {{"msec", 0, 5000, 5000}, {"shockEnergy", 3, 513, 33666}}},
    {"AED power on", 48, 1, 2, 2, {
        {"msec", 0, 5000, 5000}, {"aedEventType", 2, 1, 1}, {"aedType", never, 0, 0, never}}},
    {"AED delay", 48, 14, 4, 4, {{"aedEventType", 2, 14, 14}, {"aedDelayedOnTime", 4, 770, 33923}}},
    {"AED scenario", 48, 15, 3, 3, {{"aedEventType", 2, 15, 15}, {"aedScenarioNumber", 3, 2, 131}}},
    {"AED frame", 48, 16, 4, 4, {
        {"aedEventType", 2, 16, 16}, {"aedScenarioFrameNumber", 4, 770, 33923}}},
    {"AED rhythm", 48, 19, 3, 5, {
        {"aedEventType", 2, 19, 19}, {"aedECGRhythm", 3, 2, 131},
        {"aedECGPulseStatus", 4, 3, 132, 4}, {"aedECGShockableStatus", 5, 4, 133, 5}}},
    {"AED scenario button", 48, 27, 3, 4, {
        {"aedEventType", 2, 27, 27}, {"aedRemoteScenarioNumber", 3, 2, 131},
        {"aedRemoteApplyToAll", 4, 3, 132, 4}}},
    {"AED other button", 48, 28, 3, 4, {
        {"aedEventType", 2, 28, 28}, {"aedRemoteOtherButtonId", 3, 2, 131},
        {"aedRemoteApplyToAll", 4, 3, 132, 4}}},
    {"AED type", 48, 29, 3, 3, {{"aedEventType", 2, 29, 29}, {"aedType", 3, 2, 1}}},
    {"remote control", 50, 14, 2, 2, {
        {"msec", 0, 5000, 5000}, {"aedEventType", 0, 28, 28},
        {"aedRemoteOtherButtonId", 2, 14, 14}, {"aedRemoteApplyToAll", 0, 0, 0}}},
    {"ECG rhythm", 52, -1, 3, 3, {
        {"msec", 0, 5000, 5000}, {"aedEventType", 0, 19, 19}, {"aedECGRhythm", 2, 1, 130}}},
    {"compressions of the manikin", 70, 0, 0, 6, {
        {"manikinCompressionCount", 6, 84148994, 2256897155, 6},
        {"manikinVentilationCount", never, 0, 0, never}}},
    {"ventilations of the manikin", 70, 1, 0, 6, {
        {"manikinVentilationCount", 6, 84148994, 2256897155, 6},
        {"manikinCompressionCount", never, 0, 0, never}}},
    {"battery", 70, 32, 0, 28, {
        {"manikinBatteryCycleCounter", 4, 770, 33923, 2},
        {"manikinBatterySlowChargeCounter", 6, 1284, 34437, 2},
        {"manikinBatteryFastChargeCounter", 8, 1798, 34951, 2},
        {"manikinBatteryAccumulatedSlowChargeTimeHours", 10, 2312, 35465, 2},
        {"manikinBatteryAccumulatedFastChargeTimeHours", 12, 2826, 35979, 2},
        {"manikinBatteryAccumulatedChargeTimeDuringLowTemperatureHours", 14, 3340, 36493, 2},
        {"manikinBatteryAccumulatedChargeTimeDuringHighTemperatureHours", 16, 3854, 37007, 2},
        {"manikinBatteryAvgMinLevelPercent", 17, 16, 145, 2},
        {"manikinBatteryAvgMaxLevelPercent", 18, 17, 146, 2},
        {"manikinBatteryCriticalBatteryLevelCounter", 20, 4882, 38035, 2},
        {"manikinBatteryAccumulatedDischargeCurrentAh", 22, 5396, 38549, 2},
        {"manikinBatteryDesignCapacityMah", 24, 5910, 39063, 2},
        {"manikinBatteryFullChargeCapacityMah", 26, 6424, 39577, 2},
        {"manikinBatteryDisconnectCounter", 28, 6938, 40091, 2}}},
    {"compression", 79, -1, 18, 18, {
        {"msec", 0, 1487, 33870}, {"compPeakForce", 0, 1027, -31356},
        {"compReleaseForce", 0, 1541, -30842}, {"compLeaningForce", 0, -1, -1},
        {"compStatus", 0, 7, 136}, {"compIncompleteRelease", 0, 1, 0},
        {"compHandposXiphoid", 0, 0, 1}, {"compHandposError", 0, 0, 0},
        {"compDepth", 0, 23.12, -300.71}, {"compAbsolutePeakDepth", 0, 23.12, -300.71},
        {"compReleaseDepth", 0, 28.26, -295.57}, {"compLeaningDepth", 0, 0, 0},
        {"compPeakTime", 0, 4827, 37595}, {"endTime", 0, 8681, 41834},
        {"compInstantaneousPeriod", 0, 4368, 37521}, {"compMeanRate", 0, 112, 112}}},
    {"ventilation", 80, -1, 12, 12, {
        {"msec", 0, 1487, 33870}, {"ventDuringCompression", 0, 1, 0},
        {"ventPeakTime", 0, 2771, 68307}, {"endTime", 0, 4569, 103258},
        {"ventInstantaneousPeriod", 0, 2312, 35465}, {"ventVolume", 0, 2826, 35979},
        {"ventRate", 0, 17, 17}}},
    {"protocol", 101, -1, 0, 2, {{"cprProtocol", 2, 1, -126}}},
    {"stiffness", 107, -1, 0, 2, {{"manikinStiffness", 2, 1, 130}}},
    {"scores", 108, -1, 0, 27, {{"msec", 0, 5000, 5000}}, {
        "compReleaseScoreReduction", "compDepthScoreReduction", "compRateLowScoreReduction",
        "compRateHighScoreReduction", "compHandposScoreReduction", "compOverallScore",
        "ventShallowScoreReduction", "ventExcessiveScoreReduction", "ventRateLowScoreReduction",
        "ventRateHighScoreReduction", "ventPauseScoreReduction", "ventCyclesScoreReduction",
        "ventOverallScore", "flowTimePercentage", "compDepthStrokeLengthScoreReduction",
        "compDeepDepthScoreReduction", "compCyclesScoreReduction", "compFlowtimeScoreReduction",
        "overallScore", "isScoringModeAED", "preVentsTooFewScoreReduction",
        "preVentsTooManyScoreReduction", "inflationTimeFastScoreReduction",
        "inflationTimeSlowScoreReduction", "ventsPerMinuteSlowScoreReduction",
        "ventsPerMinuteFastScoreReduction"}},
    {"independent statistics", 109, -1, 0, 68, {
        {"msec", 0, 0, 0}, {"cprCardTimestamp", 5, 67305985, 2240054146},
        {"sessionDuration", 7, 1541, -30842}, {"timeFirstShock", 9, 2055, -30328},
        {"timeFirstComp", 11, 2569, -29814}, {"timeFirstVent", 13, 3083, -29300},
        {"compCount", 15, 3597, 36750}, {"compCyclesCount", 17, 4111, 37264},
        {"ventCount", 19, 4625, 37778}, {"ventCyclesCount", 21, 5139, 38292},
        {"compInactivityPeriodCount", 23, 5653, 38806}, {"compMeanDepth", 25, 6167, -26216},
        {"compStdDeviationDepth", 27, 6681, -25702}, {"compMeanReleaseDepth", 29, 7195, -25188},
        {"compStdDeviationReleaseDepth", 31, 7709, -24674}, {"compMeanRate", 32, 31, 160},
        {"compStdDeviationRate", 33, 32, 161}, {"ventMeanVolume", 35, 8737, -23646},
        {"ventStdDeviationVolume", 37, 9251, -23132}, {"ventMeanRate", 38, 37, 166},
        {"ventStdDeviationRate", 39, 38, 167}, {"compHandPosCorrectPercentage", 40, 39, -88},
        {"compHandPosXiphoidErrorPercentage", 41, 40, -87},
        {"compMeanStrokeLength", 43, 10793, -21590},
        {"compStdDeviationStrokeLength", 45, 11307, -21076},
        {"inactivityAverageTime", 47, 11821, -20562}, {"inactivityTime", 49, 12335, -20048},
        {"ventMeanInflationTime", 51, 12849, -19534, 51},
        {"ventStdDeviationInflationTime", 53, 13363, -19020, 51},
        {"numberOfPreVents", 54, 53, 182, 54},
        {"averageNumberOfVentilationsPerCycle", 56, 14134, 47287, 54},
        {"minNumberOfVentilationsPerCycle", 58, 14648, 47801, 54},
        {"maxNumberOfVentilationsPerCycle", 60, 15162, 48315, 54},
        {"averageNumberOfCompressionsPerCycle", 62, 15676, 48829, 54},
        {"minNumberOfCompressionsPerCycle", 64, 16190, 49343, 54},
        {"maxNumberOfCompressionsPerCycle", 66, 16704, 49857, 54},
        {"flowTimePercentage", 67, 66, 195, 66}, {"ventilationsPerMinute", 68, 67, 196, 66}}},
    {"histograms", 110, -1, 0, 37, {{"msec", 0, 0, 0}}, {
        "compHistogramDepthBin", "compHistogramReleaseBin", "compHistogramRateBin",
        "compHistogramInactivityBin", "ventHistogramVolumeBin", "ventHistogramRateBin"}},
    {"dependent statistics", 111, -1, 0, 14, {{"msec", 0, 5000, 5000}}, {
        "compCorrectDepthPercentage", "compCorrectReleasePercentage", "compCorrectRatePercentage",
        "compTooLowRatePercentage", "ventCorrectVolumePercentage", "ventNotEnoughVolumePercentage",
        "ventCorrectRateCprPercentage", "ventTooHighRateCprPercentage",
        "ventCorrectRateVentOnlyPercentage", "ventTooHighRateVentOnlyPercentage",
        "ventCorrectInflationTimePercentage", "ventTooFastInflationTimePercentage",
        "compCorrectStrokeLengthPercentage"}, true},
};
// clang-format on

QVector<Field> fieldsOf(const Layout &layout)
{
    QVector<Field> fields = layout.fields;
    for (int i = 0; i < layout.size - 1 && !layout.singles.isEmpty(); ++i) {
        const QByteArray name = layout.id == 110 // six fields to a name
            ? layout.singles.at(i / 6) + '_' + QByteArray::number(i % 6)
            : layout.singles.at(i);
        fields.append({name, i + 2, i + 1., i + (layout.isSigned ? -126. : 130.)});
    }
    return fields;
}

QByteArray contentOf(const Layout &layout, int size, int offset)
{
    QByteArray content = numberedBytes(size, offset);
    if (layout.selector >= 0 && size > 1)
        content[1] = static_cast<char>(layout.selector);
    for (int i : {13, 15}) { // the times of a compression; a negative one has its own test
        if (layout.id == 79 && size > i)
            content[i] = content.at(i) & 0x7F;
    }
    return content;
}

// The session info takes 106 and 107 only from the host.
bool deliver(CPRData &session, quint32 id, const QByteArray &content)
{
    RMessage message(id, content, bls_2010::HeaderElement(sequence));
    return id == 106 || id == 107 ? session.cprEvents()->sessionInfo()->incomingMsg(&message)
                                  : session.incomingMsg(&message);
}

bool isStanding(quint32 id)
{
    return id == 70 || id > 100;
}

// The event that a message went to, or the one that it made.
CPREventBase *eventOf(CPRData &session, quint32 id)
{
    CPREvents *events = session.cprEvents();
    if (id >= 108)
        return id == 108 ? events->cprSessionScore() : events->cprSessionStatistics();
    return isStanding(id) ? events->cprSessionInfo() : events->at(1);
}

// Says which fields do not hold what expected(field) gives.
template <typename Expected>
QByteArray differences(const Layout &layout, const CPREventBase *event, Expected expected)
{
    QString text;
    for (const Field &field : fieldsOf(layout)) {
        const double actual = numberOf(event, field.name);
        if (actual != expected(field))
            text += QString::asprintf(" %s %f", field.name.constData(), actual);
    }
    return text.toLatin1();
}

CPREventCompression *lastCompression(CPRData &session)
{
    return qobject_cast<CPREventCompression *>(session.cprEvents()->last(E::TagComp));
}

// A compression that only has a release force, a status, a release depth and times to its peak and
// to its end.
QByteArray compression(int force, int status, int depth, int startToPeak, int peakToEnd)
{
    const auto low = [](int value) { return value & 0xFF; };
    const auto top = [](int value) { return value >> 8 & 0xFF; };
    return bytes({0, 0, 0, 0, 0, low(force), top(force), status, 0, 0, low(depth), top(depth),
                  low(startToPeak), top(startToPeak), low(peakToEnd), top(peakToEnd), 0, 0});
}

QString versions(const CPREventSessionInfo *info)
{
    QStringList texts(QString::number(info->connectedAEDType()));
    for (auto type : {E::manikinFirmwareVersion, E::manikinRfidVersion, E::manikinFeedpodVersion,
                      E::manikinType})
        texts.append(textOf(info, type));
    return texts.join(QLatin1Char('/'));
}

// What action() logs.
template <typename Action> QString logOf(Action action)
{
    static QStringList lines;
    lines.clear();
    const auto before = qInstallMessageHandler(
        [](QtMsgType, const QMessageLogContext &, const QString &line) { lines.append(line); });
    action();
    qInstallMessageHandler(before);
    return lines.join(QLatin1Char('|'));
}

} // namespace

class TestMessages : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void accessors()
    {
        const RMessage message(300, bytes({0x01, 0x02, 0x83, 0x84, 0x85}));
        QCOMPARE(message.getIdentifier(), 300U);
        QCOMPARE(message.getDataLength(), 4U);
        QCOMPARE(RMessage(1, bytes({9})).getDataLength(), 0U);
        QCOMPARE(RMessage(1, QByteArray()).getDataLength(), 0U);
        constexpr unsigned int far = std::numeric_limits<unsigned int>::max();
        bool ok = false;
        const auto inside = [&ok](qint64 value) {
            const bool was = ok;
            ok = !ok;
            return was ? value : value == 0 ? -1 : -2;
        };
        QCOMPARE(inside(message.getContentByte(4, ok)), 0x85);
        QCOMPARE(inside(message.getContentByte(5, ok)), -1);
        QCOMPARE(inside(message.getContentByte(far, ok)), -1);
        QCOMPARE(inside(message.getContentS8(4, ok)), -123);
        QCOMPARE(inside(message.getContentU16(3, ok)), 0x8584);
        QCOMPARE(inside(message.getContentU16(4, ok)), -1);
        QCOMPARE(inside(message.getContentS16(3, ok)), -31356);
        QCOMPARE(inside(message.getContentS16(far, ok)), -1);
        QCOMPARE(inside(message.getContentU32(1, ok)), 0x85848302);
        QCOMPARE(inside(message.getContentU32(2, ok)), -1);
        QCOMPARE(inside(message.getContentU32(far - 2, ok)), -1);
        QVERIFY(message.getString(ok, 2, 3) == bytes({0x83, 0x84, 0x85}) && ok);
        QVERIFY(message.getString(ok, 2, 4).isEmpty() && !ok);
        QVERIFY(message.getString(ok, 1, far).isEmpty() && !ok);
    }

    void layout_data()
    {
        QTest::addColumn<int>("index");
        for (int i = 0; i < layouts.size(); ++i)
            QTest::newRow(layouts.at(i).name) << i;
    }

    // The whole message with sign bits, and then every size without up to one byte too many.
    void layout()
    {
        QFETCH(int, index);
        const Layout &layout = layouts.at(index);
        const bool standing = isStanding(layout.id);
        for (int size = 0; size <= layout.size + 1; ++size) {
            CPRData session;
            session.setSessionTime(5000);
            send(session, 87, bytes({0, 112, 0}));
            send(session, 88, bytes({0, 17}));
            const CPREvents *events = session.cprEvents();
            QVERIFY(deliver(session, layout.id, contentOf(layout, layout.size, high)));
            CPREventBase *event = eventOf(session, layout.id);
            QCOMPARE(differences(layout, event,
                                 [](const Field &field) {
                                     return field.storedFrom == never ? missing : field.highValue;
                                 }),
                     QByteArray());
            if (!standing)
                delete event;
            const int children = events->children().size();
            const bool accepted = deliver(session, layout.id, contentOf(layout, size, 0));
            QVERIFY2(accepted == (size >= layout.acceptedFrom), qPrintable(QString::number(size)));
            if (!standing) {
                QCOMPARE(events->events().size(), accepted ? 2 : 1);
                QCOMPARE(events->children().size(), children + (accepted ? 1 : 0));
            }
            const auto expected = [&](const Field &field) {
                if (field.storedFrom == never || (size < field.storedFrom && !standing))
                    return missing;
                if (field.name == "overallScore" && size < field.wholeFrom) // it is computed
                    return size < 7 ? 0.0 : size < 14 ? 5.0 : size < 19 ? 8.0 : 6.0;
                if (size < field.storedFrom)
                    return field.highValue;
                return size < field.wholeFrom ? 0 : field.value;
            };
            const QByteArray wrong = accepted
                ? differences(layout, eventOf(session, layout.id), expected)
                : QByteArray();
            QVERIFY2(wrong.isEmpty(), "size " + QByteArray::number(size) + wrong);
        }
    }

    void versionTexts()
    {
        QString steps; // the smallest content for each change; then AED, versions, type
        QString last;
        for (int size = 0; size <= 24; ++size) {
            CPRData session;
            CPREvents *events = session.cprEvents();
            QSignalSpy changed(events, &CPREvents::cprSessionInfoChanged);
            QVERIFY(send(session, 64, numberedBytes(size)));
            QCOMPARE(changed.count(), 2); // by the info itself and by the list
            QCOMPARE(events->sessionInfo()->hasFeedpod(), size > 20);
            QCOMPARE(events->count(E::TagAed), size > 22 ? 1 : 0);
            const QString text = versions(events->sessionInfo());
            if (text != last)
                steps += QStringLiteral("%1 %2|").arg(size).arg(text);
            last = text;
        }
        QCOMPARE(steps,
                 "0 4/0.0.0.0/0.0.0/0.0/0|7 4/0.6.0.0/0.0.0/0.0/0|8 4/7.6.0.0/0.0.0/0.0/0|"
                 "11 4/7.6.0.0/0.0.0/0.0/10|13 4/7.6.12.0/0.0.0/0.0/10|"
                 "17 4/7.6.12.269422093/0.0.0/0.0/10|18 4/7.6.12.269422093/17.0.0/0.0/10|"
                 "19 4/7.6.12.269422093/17.18.0/0.0/10|20 4/7.6.12.269422093/17.18.19/0.0/10|"
                 "21 4/7.6.12.269422093/17.18.19/20.0/10|22 4/7.6.12.269422093/17.18.19/20.21/10|"
                 "23 1/7.6.12.269422093/17.18.19/20.21/10|"_l1);
        CPRData session;
        CPREventSessionInfo *info = session.cprEvents()->sessionInfo();
        QVERIFY(info->hasFeedpod()); // none is known yet
        info->setVersionInfo(4, "beta"_l1, "?"_l1, QString(), E::AEDNotPossible);
        QCOMPARE(versions(info), "4/0.0.0.0///4"_l1);
        info->setVersionInfo(4, "01.2rc"_l1, "3.4b"_l1, "x"_l1, E::AEDNotPossible);
        QCOMPARE(versions(info), "4/1.2/3.4/x/4"_l1);
    }

    void lifetimeCounters()
    {
        CPRData session;
        CPREventSessionInfo *info = session.cprEvents()->sessionInfo();
        QSignalSpy compressions(info, &CPREventSessionInfo::manikinCompressionCountChanged);
        QSignalSpy ventilations(info, &CPREventSessionInfo::manikinVentilationCountChanged);
        for (const char *content : {"0000563412F2", "0000010000", "000121436587", "0001010000",
                                    "000201020304", "001F01020304", "002101020304", "00FF01020304"})
            QVERIFY(send(session, 70, QByteArray::fromHex(content)));
        QCOMPARE(compressions, QList<QVariantList>({{0xF2123456U}}));
        QCOMPARE(ventilations, QList<QVariantList>({{0x87654321U}}));
    }

    void kindsAndButtons()
    {
        CPRData session;
        CPREvents *events = session.cprEvents();
        for (int value = 0; value < 256; ++value) {
            QCOMPARE(send(session, 48, bytes({0, value, 1, 1})), value >= 1 && value <= 29);
            QCOMPARE(send(session, 50, bytes({0, value})), value == 9 || value == 14);
        }
        QCOMPARE(events->count(E::TagAed), 31);
        QCOMPARE(intOf(events->at(E::TagAed, 9), E::aedRemoteOtherButtonId), 9);
    }

    void userEvent()
    {
        CPRData session;
        session.setSessionTime(700);
        const QByteArray name = QByteArray("S\xC3\xB8k hjelp").leftJustified(64, '\0') + 'x';
        for (int size = 0; size <= 67; ++size)
            QCOMPARE(send(session, 68, (bytes({0x55, 2}) + name).left(size)), size >= 66);
        QVERIFY(send(session, 68, bytes({0x55, 0}) + QByteArray(64, 'z') + "beyond"));
        const CPREvents *events = session.cprEvents();
        QCOMPARE(events->events().size(), 4);
        QCOMPARE(textOf(events->at(1), E::eventId), QStringLiteral("S\u00F8k hjelp"));
        QCOMPARE(textOf(events->at(3), E::eventId), QString(64, QLatin1Char('z')));
        QCOMPARE(events->at(1)->msecs(), 700);
        QVERIFY(qobject_cast<CPREventUser *>(events->at(1))->flag());
        QVERIFY(!qobject_cast<CPREventUser *>(events->at(3))->flag());
    }

    // What is refused leaves no trace.
    void refusedGenericEvents()
    {
        CPRData session;
        session.setSessionTime(700);
        for (const char *content : {"", "00", "0000", "001E", "000E05", "000F", "0010FF", "0013",
                                    "001B", "001C", "001D"}) {
            CPREventAED event(33, session.cprEvents());
            RMessage message(48, QByteArray::fromHex(content));
            QVERIFY2(!event.incomingMsg(&message), content);
            QVERIFY2(event.msecs() == 33 && !event.hasParameters(), content);
        }
        QCOMPARE(int(session.cprEvents()->sessionInfo()->connectedAEDType()),
                 int(E::AEDNotPossible));
    }

    void protocols()
    {
        // The list reads the leading byte, the session info the one after it.
        CPRData session;
        CPREvents *events = session.cprEvents();
        for (int protocol : {4, 0}) {
            QVERIFY(send(session, 101, bytes({protocol, 1}).left(protocol)));
            QCOMPARE(int(events->mode()), protocol);
            QCOMPARE(intOf(events->sessionInfo(), E::cprProtocol), protocol == 4 ? 1 : 0);
        }
        QString texts;
        for (int protocol : {0xFF, 0, 1, 2, 3, 4, 5, 6}) {
            events->setCprProtocol(CommonDefs::CprProtocolType(protocol));
            texts += events->sessionInfo()->cprProtocolToString() + QLatin1Char('|');
        }
        QCOMPARE(texts,
                 "Unknown protocol|Compression and ventilation - Single rescuer|Compression only|"
                 "Ventilation only|Automatic|Compression and ventilation - Two rescuer|"
                 "High Performance CPR|Unknown protocol|"_l1);
    }

    void cardNumberIsNeverKept()
    {
        CPRData session;
        const QByteArray card = bytes({0}) + "12345678";
        CPREventSessionInfo *info = session.cprEvents()->sessionInfo();
        info->setParameter(E::cprCardId, "bc614e"_l1);
        QVERIFY(!send(session, 106, card)); // the list has no use for it, nor for the stiffness
        QVERIFY(!send(session, 107, bytes({0, 3})));
        QCOMPARE(info->getManikinStiffness(), 2);
        QCOMPARE(info->getCPRCardID(), "bc614e"_l1);
        QCOMPARE(logOf([&] { deliver(session, 106, card); }), QString());
        QCOMPARE(info->getCPRCardID(), QString());
    }

    void compressionStatusAndTimes()
    {
        CPRData session;
        const auto sent = [&](const QByteArray &content) {
            return logOf([&] { send(session, 79, content, sequence); });
        };
        const auto last = [&](std::initializer_list<const char *> names) {
            return numbersOf(lastCompression(session), names);
        };
        for (int bit : {1, 2, 4, 8, 16, 32, 64, 128}) {
            sent(compression(0, bit, 0, 0, 0));
            QCOMPARE(last({"compStatus", "compIncompleteRelease", "compHandposXiphoid",
                           "compHandposError"}),
                     Numbers({1. * bit, 1. * (bit == 1), 1. * (bit == 8), 1. * (bit == 16)}));
        }
        QCOMPARE(sent(compression(0, 0, 0, 0xFFFF, 1)),
                 "compPeakTime not valid, start2Peak = 65535"_l1);
        QCOMPARE(sent(compression(0, 0, 0, 0x8000, 1)),
                 "compPeakTime not valid, start2Peak = 32768"_l1);
        QCOMPARE(session.cprEvents()->events().size(), 9);
        QCOMPARE(sent(compression(150, 0, 321, 10, 0xFFFF)),
                 "endTime not valid, peak2End = 65535"_l1);
        QCOMPARE(last({"msec", "compPeakTime", "endTime"}), Numbers({2000, 2010, 67545}));
    }

    void leaning()
    {
        CPRData session;
        const auto last = [&session] {
            return numbersOf(
                lastCompression(session),
                {"compLeaningForce", "compLeaningDepth", "compReleaseForce", "compReleaseDepth"});
        };
        send(session, 79, compression(150, 0, 321, 10, 10), 100);
        send(session, 79, compression(250, 0, 654, 10, 10), 200);
        QCOMPARE(last(), Numbers({150, 3.21, 250, 6.54}));
        session.cprEvents()->incomingCompressionEvent(6000, 100, {0, 0, 0, 0, 0, 111, {}, 0, 0, 0});
        QCOMPARE(last(), Numbers({-1, 6.54, -1, 1.11}));
        send(session, 79, compression(350, 0, 987, 10, 10), 400);
        QCOMPARE(last(), Numbers({-1, 1.11, 350, 9.87}));
        RMessage again(79, compression(360, 0, 990, 10, 10));
        QVERIFY(lastCompression(session)->incomingMsg(&again));
        QCOMPARE(last(), Numbers({350, 9.87, 360, 9.9}));
        // A file can hold a force that no manikin measures.
        int header = 500;
        for (const auto &[force, leaning] :
             {QPair<double, int>{1e9, 32767}, {-1e9, -32768}, {qQNaN(), -1}, {12.9, 12}}) {
            lastCompression(session)->setProperty("compReleaseForce", float(force));
            send(session, 79, compression(7, 0, 0, 10, 10), ++header);
            QCOMPARE(last().first(), double(leaning));
        }
    }

    void rates_data()
    {
        // What the message announces when it is sent twice.
        const auto row = columns<quint32, QByteArray, QString>("id", "content", "announced");
        row("rate", 87, bytes({0x09, 0x34, 0x12, 0x07}), "r4660");
        row("negative rate", 87, bytes({0x09, 0x34, 0xFE}), "r-460");
        row("low byte", 87, bytes({0x09, 0xF4}), "r244");
        row("no rate, 0 as after a reset", 87, bytes({0x09}), "");
        row("peak", 104, bytes({0x09, 0x34, 0x12}), "p4660 p4660");
        row("negative peak", 104, bytes({0x09, 0x34, 0xFE}), "p-460 p-460");
        row("low byte of peak", 104, bytes({0x09, 0xF4}), "p244 p244");
        row("no peak", 104, bytes({}), "p0 p0");
        row("ventilation rate", 88, bytes({0x09, 0x0C, 0x01}), "v12");
        row("already -1", 88, bytes({0x09, 0xFF}), "");
        row("negative ventilation rate", 88, bytes({0x09, 0x80}), "v-128");
        row("no ventilation rate", 88, bytes({0x09}), "v0");
    }

    void rates()
    {
        QFETCH(quint32, id);
        QFETCH(QByteArray, content);
        CPRData session;
        QStringList heard;
        const auto hear = [&heard](const char *kind) {
            return [=, &heard](int value) {
                heard.append(QLatin1String(kind) + QString::number(value));
            };
        };
        CPRCompressionData *wave = session.compressionData();
        CPRVentilationData *volumes = session.ventilationData();
        connect(wave, &CPRCompressionData::compressionRateChanged, this, hear("r"));
        connect(wave, &CPRCompressionData::compressionPeakDepthChanged, this, hear("p"));
        connect(volumes, &CPRVentilationData::ventilationRateChanged, this, hear("v"));
        for (int i = 0; i < 2; ++i)
            QVERIFY(send(session, id, content));
        QTEST(heard.join(QLatin1Char(' ')), "announced");
    }

    void inactivitySum()
    {
        CPRData session;
        CPREventSessionInfo *info = session.cprEvents()->sessionInfo();
        const auto sumAfter = [info](const char *content) {
            RMessage message(81, QByteArray::fromHex(content));
            return info->incomingMsg(&message) ? intOf(info, E::compInactivity) : -1;
        };
        QCOMPARE(sumAfter("000501"), 261);
        QCOMPARE(sumAfter("0007"), 268); // the low byte of a cut message counts
        QCOMPARE(sumAfter("00FFFF"), 268);
        QCOMPARE(sumAfter("00"), 268);
        QCOMPARE(sumAfter("00FF7F"), -32501); // 33035 in 16 bits
        info->setCprProtocol(1);
        QCOMPARE(sumAfter("000300"), 3);
    }

    void decodedStructures()
    {
        CPRData session;
        CPREvents *events = session.cprEvents();
        const auto flags = {"compIncompleteRelease", "compHandposXiphoid", "compHandposError"};
        const auto values = {"msec",
                             "compPeakTime",
                             "endTime",
                             "compInstantaneousPeriod",
                             "compDepth",
                             "compAbsolutePeakDepth",
                             "compReleaseDepth",
                             "compLeaningDepth",
                             "compLeaningForce",
                             "compPeakForce",
                             "compReleaseForce",
                             "compMeanRate"};
        events->incomingCompressionEvent(1000, 108,
                                         {0, 0xF001, 0xF002, 0xF003, -4321, -1234, {}, 2, 0, 0});
        QCOMPARE(numbersOf(lastCompression(session), flags), Numbers({1, 0, 0}));
        QCOMPARE(numbersOf(lastCompression(session), values),
                 Numbers({1000, 62441, 123883, 61443, -43.21, -43.21, -12.34, 0, -1, -1, -1, 108}));
        QCOMPARE(int(session.compressionData()->compressionRate()), 108);
        events->incomingCompressionEvent(200000, 108, {0, 0, 0, 0, 0, 0, {}, 0, 0, 1});
        QCOMPARE(numbersOf(lastCompression(session), flags), Numbers({0, 1, 1}));
        events->incomingVentilationEvent(2000, -3, {0, 0xF001, 0xF002, 0xF003, 0xF004, 2});
        QCOMPARE(numbersOf(events->last(E::TagVent),
                           {"msec", "ventPeakTime", "endTime", "ventInstantaneousPeriod",
                            "ventVolume", "ventRate", "ventDuringCompression"}),
                 Numbers({2000, 63441, 124883, 61443, 61444, -3, 1}));
        QCOMPARE(session.ventilationData()->rate(), -3);
    }

    void correctness()
    {
        CPRData session;
        CPRGuidelines *limits = session.cprGuidelines(); // 100 to 120 per minute, 400 to 700 ml
        limits->setCompressionDepthMin(50);
        const auto comp = [&](int rate, qint16 depth, quint8 badRelease = 0, quint8 badHands = 0) {
            session.cprEvents()->incomingCompressionEvent(
                0, rate, {0, 0, 0, 0, depth, 0, {}, badRelease, 0, badHands});
            return lastCompression(session)->isCorrect(limits);
        };
        QVERIFY(comp(100, 5000) && comp(120, 9000));
        QVERIFY(!comp(99, 5000) && !comp(121, 5000) && !comp(110, 4999));
        QVERIFY(!comp(110, 5000, 1, 0) && !comp(110, 5000, 0, 1));
        for (int rate : {99, 100, 110, 120, 121}) {
            comp(rate, 5000);
            QVERIFY(!lastCompression(session)->isCompMeanRateOk());
        }
        limits->setCompressionRateMin(120); // the comparison is the reverse of isCorrect()'s
        limits->setCompressionRateMax(100);
        QVERIFY(!comp(100, 5000) && lastCompression(session)->isCompMeanRateOk());
        const auto vent = [&](quint16 volume, quint16 period, bool ventilationsOnly) {
            CPREventVentilation event(0, session.cprEvents());
            event.incomingVitilationEvent({0, 0, 0, period, volume, 0});
            return event.isCorrect(limits, ventilationsOnly);
        };
        QVERIFY(vent(400, 1, false) && vent(699, 1, false));
        QVERIFY(!vent(399, 5000, false) && !vent(700, 5000, false) && !vent(300, 5000, true));
        QVERIFY(vent(500, 7500, true) && !vent(500, 7501, true)); // 8 per minute
        QVERIFY(vent(500, 4001, true) && !vent(500, 4000, true)); // 14 per minute
        QVERIFY(vent(500, 0, true) && !vent(700, 0, true));
        QVERIFY(vent(500, 60001, true)); // 0 per minute says nothing
    }

    void unknownIdentifiers()
    {
        const QVector<quint32> known{47, 48, 50, 52, 64,  68,  70,  75,  77,  79,
                                     80, 81, 87, 88, 101, 104, 108, 109, 110, 111};
        QVector<quint32> ids{303, 65583, 0x80000000U + 47, 0xFFFFFFFFU};
        for (quint32 id = 0; id < 256; ++id)
            ids.append(id);
        CPRData session;
        QSignalSpy info(session.cprEvents(), &CPREvents::cprSessionInfoChanged);
        for (quint32 id : qAsConst(ids)) {
            if (!known.contains(id))
                QVERIFY2(!send(session, id, numberedBytes(80)), QByteArray::number(id));
        }
        QCOMPARE(session.cprEvents()->findChildren<CPREventBase *>().size(), 3);
        QCOMPARE(info.count(), 0);
        QVERIFY(!session.incomingMsg(nullptr));

        QLoggingCategory::setFilterRules("Kelmar.CPRData.CPRData.info=true"_l1);
        const QString log = logOf([&session] {
            for (quint32 id : {38U, 39U, 87U})
                send(session, id, numberedBytes(80));
        });
        QLoggingCategory::setFilterRules(QString());
        QCOMPARE(log, "ResponseID 39|ResponseID RPL_COMP_RATE_UPDATE"_l1);
    }
};

QTEST_GUILESS_MAIN(TestMessages)

#include "tst_messages.moc"
