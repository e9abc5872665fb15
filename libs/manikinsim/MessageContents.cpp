// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/MessageContents.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace manikinsim::contents {

namespace {

using E = CPREventBase;
using G = bls_2010::GuidelineValues_t;

enum class Width : quint8 { U8, S8, U16, S16, U32 };

constexpr int bytesOf(Width width)
{
    switch (width) {
    case Width::U8:
    case Width::S8:
        return 1;
    case Width::U16:
    case Width::S16:
        return 2;
    case Width::U32:
        return 4;
    }
    return 0;
}

template <typename T> qint64 fit(qint64 value)
{
    return std::clamp<qint64>(value, std::numeric_limits<T>::min(), std::numeric_limits<T>::max());
}

qint64 fitted(Width width, qint64 value)
{
    switch (width) {
    case Width::U8:
        return fit<quint8>(value);
    case Width::S8:
        return fit<qint8>(value);
    case Width::U16:
        return fit<quint16>(value);
    case Width::S16:
        return fit<qint16>(value);
    case Width::U32:
        return fit<quint32>(value);
    }
    return 0;
}

void put(QByteArray &content, int byte, Width width, qint64 value)
{
    const qint64 raw = fitted(width, value);
    char *to = content.data() + byte;
    switch (bytesOf(width)) {
    case 1:
        *to = static_cast<char>(raw);
        break;
    case 2:
        qToLittleEndian(static_cast<quint16>(raw), to);
        break;
    default:
        qToLittleEndian(static_cast<quint32>(raw), to);
        break;
    }
}

/// A content with one field after the other from byte 1 on.
QByteArray inOrder(std::initializer_list<std::pair<Width, qint64>> fields)
{
    int size = 1;
    for (const auto &[width, value] : fields)
        size += bytesOf(width);
    QByteArray content(size, 0);
    int byte = 1;
    for (const auto &[width, value] : fields) {
        put(content, byte, width, value);
        byte += bytesOf(width);
    }
    return content;
}

struct Field {
    int byte;
    Width width;
    E::ParameterType parameter;
};

template <std::size_t N> constexpr bool adjoin(const std::array<Field, N> &fields)
{
    for (std::size_t i = 1; i < N; ++i) {
        if (fields[i].byte != fields[i - 1].byte + bytesOf(fields[i - 1].width))
            return false;
    }
    return true;
}

template <typename Rows> constexpr bool ascend(const Rows &rows)
{
    for (std::size_t i = 1; i < rows.size(); ++i) {
        if (rows[i].byte <= rows[i - 1].byte)
            return false;
    }
    return true;
}

template <std::size_t N> constexpr int endOf(const std::array<Field, N> &fields)
{
    return fields[N - 1].byte + bytesOf(fields[N - 1].width);
}

// clang-format off

// RPL_GL_INDEPENDENT_STATS (109)
constexpr std::array<Field, 37> independentFields = {{
    { 1, Width::U32, E::cprCardTimestamp},
    { 5, Width::S16, E::sessionDuration},
    { 7, Width::S16, E::timeFirstShock},
    { 9, Width::S16, E::timeFirstComp},
    {11, Width::S16, E::timeFirstVent},
    {13, Width::U16, E::compCount},
    {15, Width::U16, E::compCyclesCount},
    {17, Width::U16, E::ventCount},
    {19, Width::U16, E::ventCyclesCount},
    {21, Width::U16, E::compInactivityPeriodCount},
    {23, Width::S16, E::compMeanDepth},
    {25, Width::S16, E::compStdDeviationDepth},
    {27, Width::S16, E::compMeanReleaseDepth},
    {29, Width::S16, E::compStdDeviationReleaseDepth},
    {31, Width::U8,  E::compMeanRate},
    {32, Width::U8,  E::compStdDeviationRate},
    {33, Width::S16, E::ventMeanVolume},
    {35, Width::S16, E::ventStdDeviationVolume},
    {37, Width::U8,  E::ventMeanRate},
    {38, Width::U8,  E::ventStdDeviationRate},
    {39, Width::S8,  E::compHandPosCorrectPercentage},
    {40, Width::S8,  E::compHandPosXiphoidErrorPercentage},
    {41, Width::S16, E::compMeanStrokeLength},
    {43, Width::S16, E::compStdDeviationStrokeLength},
    {45, Width::S16, E::inactivityAverageTime},
    {47, Width::S16, E::inactivityTime},
    {49, Width::S16, E::ventMeanInflationTime},
    {51, Width::S16, E::ventStdDeviationInflationTime},
    {53, Width::U8,  E::numberOfPreVents},
    {54, Width::U16, E::averageNumberOfVentilationsPerCycle},
    {56, Width::U16, E::minNumberOfVentilationsPerCycle},
    {58, Width::U16, E::maxNumberOfVentilationsPerCycle},
    {60, Width::U16, E::averageNumberOfCompressionsPerCycle},
    {62, Width::U16, E::minNumberOfCompressionsPerCycle},
    {64, Width::U16, E::maxNumberOfCompressionsPerCycle},
    {66, Width::U8,  E::flowTimePercentage},
    {67, Width::U8,  E::ventilationsPerMinute},
}};
constexpr int firstNewerStatistic = 49;

// RPL_GL_DEPENDENT_STATS (111)
constexpr std::array<Field, 13> dependentFields = {{
    { 1, Width::S8, E::compCorrectDepthPercentage},
    { 2, Width::S8, E::compCorrectReleasePercentage},
    { 3, Width::S8, E::compCorrectRatePercentage},
    { 4, Width::S8, E::compTooLowRatePercentage},
    { 5, Width::S8, E::ventCorrectVolumePercentage},
    { 6, Width::S8, E::ventNotEnoughVolumePercentage},
    { 7, Width::S8, E::ventCorrectRateCprPercentage},
    { 8, Width::S8, E::ventTooHighRateCprPercentage},
    { 9, Width::S8, E::ventCorrectRateVentOnlyPercentage},
    {10, Width::S8, E::ventTooHighRateVentOnlyPercentage},
    {11, Width::S8, E::ventCorrectInflationTimePercentage},
    {12, Width::S8, E::ventTooFastInflationTimePercentage},
    {13, Width::S8, E::compCorrectStrokeLengthPercentage},
}};

// RPL_CPR_SCORES (108)
constexpr std::array<Field, 26> scoreFields = {{
    { 1, Width::U8, E::compReleaseScoreReduction},
    { 2, Width::U8, E::compDepthScoreReduction},
    { 3, Width::U8, E::compRateLowScoreReduction},
    { 4, Width::U8, E::compRateHighScoreReduction},
    { 5, Width::U8, E::compHandposScoreReduction},
    { 6, Width::U8, E::compOverallScore},
    { 7, Width::U8, E::ventShallowScoreReduction},
    { 8, Width::U8, E::ventExcessiveScoreReduction},
    { 9, Width::U8, E::ventRateLowScoreReduction},
    {10, Width::U8, E::ventRateHighScoreReduction},
    {11, Width::U8, E::ventPauseScoreReduction},
    {12, Width::U8, E::ventCyclesScoreReduction},
    {13, Width::U8, E::ventOverallScore},
    {14, Width::U8, E::flowTimePercentage},
    {15, Width::U8, E::compDepthStrokeLengthScoreReduction},
    {16, Width::U8, E::compDeepDepthScoreReduction},
    {17, Width::U8, E::compCyclesScoreReduction},
    {18, Width::U8, E::compFlowtimeScoreReduction},
    {19, Width::U8, E::overallScore},
    {20, Width::U8, E::isScoringModeAED},
    {21, Width::U8, E::preVentsTooFewScoreReduction},
    {22, Width::U8, E::preVentsTooManyScoreReduction},
    {23, Width::U8, E::inflationTimeFastScoreReduction},
    {24, Width::U8, E::inflationTimeSlowScoreReduction},
    {25, Width::U8, E::ventsPerMinuteSlowScoreReduction},
    {26, Width::U8, E::ventsPerMinuteFastScoreReduction},
}};
constexpr int firstNewerScore     = 19;
constexpr int firstNewerReduction = 21;

// RPL_LIFETIMEINFO (70), selector 32
constexpr std::array<Field, 14> batteryFields = {{
    { 2, Width::U16, E::manikinBatteryCycleCounter},
    { 4, Width::U16, E::manikinBatterySlowChargeCounter},
    { 6, Width::U16, E::manikinBatteryFastChargeCounter},
    { 8, Width::U16, E::manikinBatteryAccumulatedSlowChargeTimeHours},
    {10, Width::U16, E::manikinBatteryAccumulatedFastChargeTimeHours},
    {12, Width::U16, E::manikinBatteryAccumulatedChargeTimeDuringLowTemperatureHours},
    {14, Width::U16, E::manikinBatteryAccumulatedChargeTimeDuringHighTemperatureHours},
    {16, Width::U8,  E::manikinBatteryAvgMinLevelPercent},
    {17, Width::U8,  E::manikinBatteryAvgMaxLevelPercent},
    {18, Width::U16, E::manikinBatteryCriticalBatteryLevelCounter},
    {20, Width::U16, E::manikinBatteryAccumulatedDischargeCurrentAh},
    {22, Width::U16, E::manikinBatteryDesignCapacityMah},
    {24, Width::U16, E::manikinBatteryFullChargeCapacityMah},
    {26, Width::U16, E::manikinBatteryDisconnectCounter},
}};
constexpr quint8 batterySelector = 32;

static_assert(adjoin(independentFields) && endOf(independentFields) == 68);
static_assert(adjoin(dependentFields) && endOf(dependentFields) == 14);
static_assert(adjoin(scoreFields) && endOf(scoreFields) == 27);
static_assert(adjoin(batteryFields) && endOf(batteryFields) == 28);

// RPL_GL_INDEPENDENT_BIN_STATS (110): a byte for each of these, from byte 1 on.
constexpr int firstBin = E::compHistogramDepthBin_0;
constexpr int lastBin  = E::ventHistogramRateBin_5;
static_assert(lastBin - firstBin + 1 == 36);

// RPL_GUIDELINES (75). The flags of a set that is in use and of relative depth stand in the code,
// and the identifier, which follows from byte 52 on.
struct GuidelineByte {
    int byte;
    quint8 G::*field;
};
struct GuidelineWord {
    int byte;
    quint16 G::*field;
};
constexpr std::array<GuidelineByte, 31> guidelineBytes = {{
    { 2, &G::compressionDepthMin},
    { 3, &G::compressionDepthMax},
    { 4, &G::compressionRateTarget},
    { 7, &G::compressionAcceptableReleaseDepth},
    { 8, &G::ventilationRateMinHPCPR},
    { 9, &G::ventilationRateMaxHPCPR},
    {12, &G::compressionInactivityLevel3Timeout},
    {14, &G::ventilationRateMaxDuringCPR},
    {15, &G::ventilationRateMaxForVentilationsOnly},
    {16, &G::ventilationInactivityTimeout},
    {17, &G::compressionInactivityLevel2Timeout},
    {18, &G::compressionInactivityLevel1Timeout},
    {19, &G::compressionInactivityLevel0TimeoutCPR},
    {20, &G::compressionInactivityLevel0TimeoutVentilationsOnly},
    {21, &G::compressionRateMin},
    {22, &G::compressionRateMax},
    {23, &G::compressionDetectDepth},
    {34, &G::ventilationRateMinDuringCPR},
    {35, &G::ventilationRateMinForVentilationsOnly},
    {37, &G::compressionsBetweenVentilations},
    {38, &G::ventilationsBetweenCompressions},
    {39, &G::compressionsBetweenVentilationsTwoRescuer},
    {40, &G::minimumAcceptedFlowtimePercentageCompressionsOnly},
    {41, &G::minimumAcceptedFlowtimePercentageSingleRescuerCPR},
    {42, &G::minimumAcceptedFlowtimePercentageTwoRescuerCPR},
    {43, &G::ventilationRateMinDuringTwoRescuerCPR},
    {44, &G::ventilationRateMaxDuringTwoRescuerCPR},
    {45, &G::isOfficial},
    {48, &G::preVentilationsMin},
    {49, &G::preVentilationsMax},
    {51, &G::usingDefaultValues},
}};
constexpr std::array<GuidelineWord, 6> guidelineWords = {{
    { 5, &G::compressionAcceptableReleaseForce},
    {24, &G::ventilationDetectVolume},
    {26, &G::ventilationVolumeMin},
    {28, &G::ventilationVolumeMax},
    {30, &G::ventilationInflationTimeMin},
    {32, &G::ventilationInflationTimeMax},
}};
static_assert(ascend(guidelineBytes) && ascend(guidelineWords));
constexpr int relativeDepthByte   = 36;
constexpr int tooDeepByte         = 46;
constexpr int preVentilationsByte = 47;
constexpr int inUseByte           = 50;
constexpr int identifierByte      = 52;

// RPL_GENERIC_EVENT (48): what follows the kind in byte 1.
struct AedField {
    E::AEDEventType kind;
    Width width;
    E::ParameterType parameter;
};
constexpr std::array<AedField, 11> aedFields = {{
    {E::AEDDelayedONTime,                      Width::U16, E::aedDelayedOnTime},
    {E::AEDScenarioNumber,                     Width::U8,  E::aedScenarioNumber},
    {E::AEDScenarioFrameNumber,                Width::U16, E::aedScenarioFrameNumber},
    {E::AEDECGRhythmStatus,                    Width::U8,  E::aedECGRhythm},
    {E::AEDECGRhythmStatus,                    Width::U8,  E::aedECGPulseStatus},
    {E::AEDECGRhythmStatus,                    Width::U8,  E::aedECGShockableStatus},
    {E::AEDRemoteControlScenarioButtonPressed, Width::U8,  E::aedRemoteScenarioNumber},
    {E::AEDRemoteControlScenarioButtonPressed, Width::U8,  E::aedRemoteApplyToAll},
    {E::AEDRemoteControlOtherButtonPressed,    Width::U8,  E::aedRemoteOtherButtonId},
    {E::AEDRemoteControlOtherButtonPressed,    Width::U8,  E::aedRemoteApplyToAll},
    {E::AEDType,                               Width::U8,  E::aedType},
}};

// clang-format on

template <std::size_t N>
QByteArray filled(const std::array<Field, N> &fields, const Parameters &values, int end)
{
    QByteArray content(end, 0);
    for (const Field &field : fields) {
        if (field.byte < end)
            put(content, field.byte, field.width, values.value(field.parameter));
    }
    return content;
}

template <std::size_t N>
std::vector<E::ParameterType> parametersFrom(const std::array<Field, N> &fields, int byte)
{
    std::vector<E::ParameterType> parameters;
    for (const Field &field : fields) {
        if (field.byte >= byte)
            parameters.push_back(field.parameter);
    }
    return parameters;
}

/// Calls take(field, value) for each detail that \a kind has.
template <typename Take> void forDetails(int kind, const std::vector<int> &details, Take take)
{
    std::size_t next = 0;
    for (const AedField &field : aedFields) {
        if (field.kind == kind && next < details.size())
            take(field, fitted(field.width, details[next++]));
    }
}

} // namespace

QByteArray versionInfo(const Device &device, bool isOld)
{
    QByteArray content(isOld ? 22 : 23, 0);
    const auto put8 = [&content](int byte, int value) { put(content, byte, Width::U8, value); };
    put8(6, device.firmware[1]);
    put8(7, device.firmware[0]);
    put8(10, device.type);
    put8(12, device.firmware[2]);
    put(content, 13, Width::U32, device.firmwareBuild);
    put8(17, device.rfid[0]);
    put8(18, device.rfid[1]);
    put8(19, device.rfid[2]);
    put8(20, device.feedpod[0]);
    put8(21, device.feedpod[1]);
    if (!isOld)
        put8(22, device.connectedAed);
    return content;
}

QByteArray lifetimeCompressions(quint32 count)
{
    return inOrder({{Width::U8, 0}, {Width::U32, count}});
}

QByteArray lifetimeVentilations(quint32 count)
{
    return inOrder({{Width::U8, 1}, {Width::U32, count}});
}

Parameters batteryParameters(const Device &device)
{
    Parameters values;
    for (std::size_t i = 0; i < batteryFields.size(); ++i) {
        const Field &field = batteryFields[i];
        values.insert(field.parameter, static_cast<int>(fitted(field.width, device.battery[i])));
    }
    return values;
}

QByteArray lifetimeBattery(const Device &device)
{
    QByteArray content = filled(batteryFields, batteryParameters(device), endOf(batteryFields));
    put(content, 1, Width::U8, batterySelector);
    return content;
}

QByteArray guidelines(const G &values, bool isInUse)
{
    QByteArray content(identifierByte, 0);
    for (const GuidelineByte &row : guidelineBytes)
        put(content, row.byte, Width::U8, values.*row.field);
    for (const GuidelineWord &row : guidelineWords)
        put(content, row.byte, Width::U16, values.*row.field);
    put(content, relativeDepthByte, Width::U8, values.useRelativeDepth);
    put(content, tooDeepByte, Width::U8, values.compressionTooDeepSetting);
    put(content, preVentilationsByte, Width::U8, values.preVentilationsUsage);
    put(content, inUseByte, Width::U8, isInUse ? 1 : 0);
    return content + QByteArray::fromStdString(values.guidelinesID);
}

QByteArray waveInfo(quint8 waveType, int period, int waveDelay)
{
    QByteArray content(9, 0);
    put(content, 1, Width::U8, waveType);
    put(content, 2, Width::U8, period);
    put(content, 7, Width::U16, waveDelay);
    return content;
}

QByteArray compression(const Truth::Compression &c, int age)
{
    return inOrder({{Width::S16, age},
                    {Width::S16, c.peakForce},
                    {Width::S16, c.releaseForce},
                    {Width::U8, c.status},
                    {Width::S16, c.depth},
                    {Width::S16, c.releaseDepth},
                    {Width::S16, c.peak - c.start},
                    {Width::S16, c.end - c.peak},
                    {Width::U16, c.period}});
}

QByteArray ventilation(const Truth::Ventilation &v, int age)
{
    return inOrder({{Width::S16, age},
                    {Width::U8, v.duringCompression ? 1 : 0},
                    {Width::U16, v.peak - v.start},
                    {Width::U16, v.end - v.peak},
                    {Width::U16, v.period},
                    {Width::U16, v.volume}});
}

QByteArray protocol(Scenario::Protocol protocol)
{
    // The event list reads the first byte, the session info the second.
    const auto byte = static_cast<char>(protocol);
    return QByteArray(2, byte);
}

QByteArray number16(int value)
{
    return inOrder({{Width::S16, value}});
}

QByteArray number8(int value)
{
    return inOrder({{Width::U8, value}});
}

QByteArray signed8(int value)
{
    return inOrder({{Width::S8, value}});
}

QByteArray rhythm(int rhythm, int second)
{
    return inOrder({{Width::U8, rhythm}, {Width::U8, second}});
}

QByteArray userEvent(const QString &name)
{
    QByteArray content(2, 0);
    content += name.toUtf8().left(longestUserEvent).leftJustified(longestUserEvent, '\0');
    return content;
}

QByteArray aedEvent(int kind, const std::vector<int> &details)
{
    QByteArray content = number8(kind);
    forDetails(kind, details, [&content](const AedField &field, qint64 value) {
        const int byte = content.size();
        content.append(bytesOf(field.width), '\0');
        put(content, byte, field.width, value);
    });
    return content;
}

Parameters aedParameters(int kind, const std::vector<int> &details)
{
    Parameters values;
    values.insert(E::aedEventType, kind);
    forDetails(kind, details, [&values](const AedField &field, qint64 value) {
        values.insert(field.parameter, static_cast<int>(value));
    });
    return values;
}

bool hasDetails(int kind)
{
    return std::any_of(aedFields.begin(), aedFields.end(),
                       [kind](const AedField &field) { return field.kind == kind; });
}

Parameters fitted(const Parameters &values)
{
    Parameters result = values;
    const auto fitAll = [&result](const auto &fields) {
        for (const Field &field : fields) {
            const auto value = result.find(field.parameter);
            if (value != result.end())
                *value = static_cast<int>(fitted(field.width, *value));
        }
    };
    fitAll(independentFields);
    fitAll(dependentFields);
    fitAll(scoreFields);
    return result;
}

QByteArray independentStatistics(const Parameters &values, bool isOld)
{
    return filled(independentFields, values,
                  isOld ? firstNewerStatistic : endOf(independentFields));
}

QByteArray histograms(const Parameters &values)
{
    QByteArray content(1, 0);
    for (int bin = firstBin; bin <= lastBin; ++bin) {
        const auto parameter = static_cast<E::ParameterType>(bin);
        content.append(static_cast<char>(fitted(Width::U8, values.value(parameter))));
    }
    return content;
}

QByteArray dependentStatistics(const Parameters &values)
{
    return filled(dependentFields, values, endOf(dependentFields));
}

QByteArray scores(const Parameters &values, bool isOld)
{
    return filled(scoreFields, values, isOld ? firstNewerScore : endOf(scoreFields));
}

const std::vector<E::ParameterType> &newerStatistics()
{
    static const auto parameters = parametersFrom(independentFields, firstNewerStatistic);
    return parameters;
}

const std::vector<E::ParameterType> &newerReductions()
{
    static const auto parameters = parametersFrom(scoreFields, firstNewerReduction);
    return parameters;
}

} // namespace manikinsim::contents
