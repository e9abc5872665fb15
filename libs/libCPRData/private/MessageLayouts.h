// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MESSAGELAYOUTS_H
#define MESSAGELAYOUTS_H

#include "CPREventBase.h"

#include <chestboard/GuidelineValues.h>
#include <chestboard/RMessage.h>

#include <QByteArray>

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <utility>
#include <variant>

/// The bytes of the manikin's messages: a table for each message, one decoder and one encoder.
/// Byte 0 is the message's leading byte; numbers are little-endian.
namespace MessageLayouts {

enum class Width : quint8 { Flag, U8, S8, U16, S16, U32 }; // a flag is set when its byte is 1

/// What it means that a message ends before or within a field.
struct Missing {
    enum Kind : quint8 { Zero, LowByte, Absent, Refused } kind;
    unsigned int byte;
};
/// The value is 0.
constexpr Missing isZero{Missing::Zero, 0};
/// Each byte that is missing is 0, so the low byte of a cut number counts.
constexpr Missing lowByteCounts{Missing::LowByte, 0};
/// The message is not accepted. What stands before the field is read all the same.
constexpr Missing refuses{Missing::Refused, 0};
/// The manikin has not sent the field when \a byte is missing; otherwise the value is 0.
constexpr Missing absentWithout(unsigned int byte)
{
    return {Missing::Absent, byte};
}

/// A row of a table, \a key says what the field holds.
template <typename Key> struct Field {
    unsigned int byte;
    Width width;
    Key key;
    Missing missing = isZero;
};

/// A field that its own name describes.
struct Number {
    unsigned int byte;
    Width width;
    Missing missing = isZero;
};

/// A field that is stored unchanged as an event's parameter.
using Parameter = Field<CPREventBase::ParameterType>;

constexpr unsigned int bytesOf(Width width)
{
    switch (width) {
    case Width::Flag:
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

/// The index after the field's last byte.
template <typename Row> constexpr unsigned int endOf(const Row &row)
{
    return row.byte + bytesOf(row.width);
}
template <typename Row, std::size_t N> constexpr unsigned int endOf(const std::array<Row, N> &table)
{
    return endOf(table[N - 1]);
}

/// True when every row begins at or after the end of the row before it.
template <typename Row, std::size_t N> constexpr bool standInOrder(const std::array<Row, N> &table)
{
    for (std::size_t i = 1; i < N; ++i) {
        if (table[i].byte < endOf(table[i - 1]))
            return false;
    }
    return true;
}

/// True when the rows stand in order and have every byte from \a first to before \a end.
template <typename Row, std::size_t N>
constexpr bool covers(const std::array<Row, N> &table, unsigned int first, unsigned int end)
{
    unsigned int bytes = 0;
    for (const Row &row : table)
        bytes += bytesOf(row.width);
    return standInOrder(table) && table[0].byte == first && endOf(table) == end
        && bytes == end - first;
}

// Decoding

/// The message's identifier, and one that no message has for null.
inline quint32 identifierOf(const bls_2010::RMessage *msg)
{
    return msg ? msg->getIdentifier() : std::numeric_limits<quint32>::max();
}

/// The number at \a byte; 0 when the read fails, whatever the link library's accessor then gives.
inline qint64 numberAt(const bls_2010::RMessage &msg, unsigned int byte, Width width, bool &ok)
{
    qint64 value = 0;
    switch (width) {
    case Width::Flag:
        value = msg.getContentByte(byte, ok) == 1 ? 1 : 0;
        break;
    case Width::U8:
        value = msg.getContentByte(byte, ok);
        break;
    case Width::S8:
        value = msg.getContentS8(byte, ok);
        break;
    case Width::U16:
        value = msg.getContentU16(byte, ok);
        break;
    case Width::S16:
        value = msg.getContentS16(byte, ok);
        break;
    case Width::U32:
        value = msg.getContentU32(byte, ok);
        break;
    }
    return ok ? value : 0;
}

/// The field's value; nothing when the message does not have it.
template <typename Row> std::optional<qint64> valueOf(const bls_2010::RMessage &msg, const Row &row)
{
    bool ok = false;
    const qint64 value = numberAt(msg, row.byte, row.width, ok);
    if (ok || row.missing.kind == Missing::Zero)
        return value;
    if (row.missing.kind == Missing::LowByte)
        return numberAt(msg, row.byte, Width::U8, ok);
    if (row.missing.kind == Missing::Absent)
        numberAt(msg, row.missing.byte, Width::U8, ok);
    return ok ? std::optional<qint64>(value) : std::nullopt;
}

/// The value of a field that is never absent and fits an int.
inline int intOf(const bls_2010::RMessage &msg, const Number &row)
{
    return static_cast<int>(valueOf(msg, row).value_or(0));
}

/// Calls accept(row, value) for each row in turn. Ends with false at a field without which the
/// message is refused, or when accept() returns false.
template <typename Row, std::size_t N, typename Accept>
bool decode(const bls_2010::RMessage &msg, const std::array<Row, N> &table, Accept accept)
{
    for (const Row &row : table) {
        const std::optional<qint64> value = valueOf(msg, row);
        if ((!value && row.missing.kind == Missing::Refused) || !accept(row, value))
            return false;
    }
    return true;
}

/// Stores a value, an int or (for U32) an unsigned int. One that is absent leaves what was there.
inline bool store(CPREventBase &event, const Parameter &row, std::optional<qint64> value)
{
    if (value && row.width == Width::U32)
        event.setParameter(row.key, static_cast<uint>(*value));
    else if (value)
        event.setParameter(row.key, static_cast<int>(*value));
    return true;
}

template <std::size_t N>
void store(CPREventBase &event, const bls_2010::RMessage &msg,
           const std::array<Parameter, N> &table)
{
    decode(msg, table, [&event](const Parameter &row, std::optional<qint64> value) {
        return store(event, row, value);
    });
}

/// A member of a structure of the manikin's link, whose members differ in size.
template <typename T> using Member = std::variant<quint8 T::*, quint16 T::*, quint32 T::*>;

template <typename T, typename Visit> auto visitMember(quint32 T::*member, Visit visit)
{
    return visit(member);
}
template <typename T, typename Visit> auto visitMember(const Member<T> &member, Visit visit)
{
    return std::visit(visit, member);
}

/// Stores all fields in the structure of which they are members. One that is absent leaves what was
/// there.
template <typename T, typename Row, std::size_t N>
void storeIn(T &values, const bls_2010::RMessage &msg, const std::array<Row, N> &table)
{
    decode(msg, table, [&values](const Row &row, std::optional<qint64> sent) {
        const auto set = [&values, &sent](auto member) {
            values.*member = static_cast<std::decay_t<decltype(values.*member)>>(*sent);
        };
        if (sent)
            visitMember<T>(row.key, set);
        return true;
    });
}

// Encoding

/// The nearest value that a field of this width can hold.
inline qint64 fitted(Width width, qint64 value)
{
    const auto fit = [value](auto ofType) -> qint64 {
        using Limits = std::numeric_limits<decltype(ofType)>;
        return std::clamp<qint64>(value, Limits::min(), Limits::max());
    };
    switch (width) {
    case Width::Flag:
        return value == 0 ? 0 : 1;
    case Width::U8:
        return fit(quint8());
    case Width::S8:
        return fit(qint8());
    case Width::U16:
        return fit(quint16());
    case Width::S16:
        return fit(qint16());
    case Width::U32:
        return fit(quint32());
    }
    return 0;
}

/// Writes a value into a content, which becomes long enough for it.
template <typename Row> void put(QByteArray &content, const Row &row, qint64 value)
{
    const int end = static_cast<int>(endOf(row));
    if (content.size() < end)
        content.append(end - content.size(), '\0');
    auto raw = static_cast<quint32>(fitted(row.width, value));
    for (int i = static_cast<int>(row.byte); i < end; ++i, raw >>= 8)
        content[i] = static_cast<char>(raw);
}

/// A content of the fields that begin before \a end, with the values that valueOf(row) gives.
template <typename Row, std::size_t N, typename ValueOf>
QByteArray encode(const std::array<Row, N> &table, ValueOf valueOf, unsigned int end)
{
    QByteArray content;
    for (const Row &row : table) {
        if (row.byte < end)
            put(content, row, valueOf(row));
    }
    return content;
}

/// The same with the values of a structure.
template <typename T, typename Row, std::size_t N>
QByteArray encodeFrom(const T &values, const std::array<Row, N> &table, unsigned int end)
{
    const auto valueOf = [&values](const Row &row) {
        return visitMember<T>(row.key, [&values](auto member) { return qint64(values.*member); });
    };
    return encode(table, valueOf, end);
}

/// A content of all fields, with a value for each in the order of the rows.
template <typename Row, std::size_t N>
QByteArray encode(const std::array<Row, N> &table, const qint64 (&values)[N])
{
    const qint64 *next = values;
    return encode(
        table, [&next](const Row &) { return *next++; }, endOf(table));
}

/// A content of some fields.
inline QByteArray encode(std::initializer_list<std::pair<Number, qint64>> fields)
{
    QByteArray content;
    for (const auto &[row, value] : fields)
        put(content, row, value);
    return content;
}

// The messages

using E = CPREventBase;
using G = bls_2010::GuidelineValues_t;

// clang-format off

// RPL_DEFIB_SHOCK_EVENT (47)
constexpr Number shockEnergy          {1, Width::U16}; // J

// RPL_GENERIC_EVENT (48): an AEDEventType, and what follows it. An event whose first detail is
// missing is refused.
struct AedDetail {
    E::AEDEventType kind;
    Parameter field;
};
constexpr Number aedEventKind         {1, Width::U8};
constexpr std::array<AedDetail, 11> aedDetails = {{
    {E::AEDDelayedONTime,                      {2, Width::U16, E::aedDelayedOnTime,        refuses}},
    {E::AEDScenarioNumber,                     {2, Width::U8,  E::aedScenarioNumber,       refuses}},
    {E::AEDScenarioFrameNumber,                {2, Width::U16, E::aedScenarioFrameNumber,  refuses}},
    {E::AEDECGRhythmStatus,                    {2, Width::U8,  E::aedECGRhythm,            refuses}},
    {E::AEDECGRhythmStatus,                    {3, Width::U8,  E::aedECGPulseStatus,       absentWithout(3)}},
    {E::AEDECGRhythmStatus,                    {4, Width::U8,  E::aedECGShockableStatus,   absentWithout(4)}},
    {E::AEDRemoteControlScenarioButtonPressed, {2, Width::U8,  E::aedRemoteScenarioNumber, refuses}},
    {E::AEDRemoteControlScenarioButtonPressed, {3, Width::U8,  E::aedRemoteApplyToAll,     absentWithout(3)}},
    {E::AEDRemoteControlOtherButtonPressed,    {2, Width::U8,  E::aedRemoteOtherButtonId,  refuses}},
    {E::AEDRemoteControlOtherButtonPressed,    {3, Width::U8,  E::aedRemoteApplyToAll,     absentWithout(3)}},
    {E::AEDType,                               {2, Width::U8,  E::aedType,                 refuses}},
}};

// RPL_AED_REMOTE_CTRL (50): an AEDRemoteOtherButtons
constexpr Number remoteButton         {1, Width::U8};

// RPL_ECG_STATUS (52): AEDEcgRhythms
constexpr Number ecgRhythm            {1, Width::U8, refuses};
constexpr Number secondEcgRhythm      {2, Width::U8, refuses};

// RPL_VERSIONINFO (64). Versions are first.second.third, that of the firmware ends with its build.
struct VersionInfo {
    quint32 firmwareFirst = 0, firmwareSecond = 0, firmwareThird = 0, firmwareBuild = 0;
    quint32 manikinType   = 0; // a ManikinType
    quint32 rfidFirst     = 0, rfidSecond     = 0, rfidThird     = 0;
    quint32 feedpodFirst  = 0, feedpodSecond  = 0;
    quint32 connectedAed  = E::AEDNotPossible; // an AEDTypes; older manikins do not send it
};
constexpr std::array<Field<quint32 VersionInfo::*>, 11> versionInfo = {{
    { 6, Width::U8,  &VersionInfo::firmwareSecond},
    { 7, Width::U8,  &VersionInfo::firmwareFirst},
    {10, Width::U8,  &VersionInfo::manikinType},
    {12, Width::U8,  &VersionInfo::firmwareThird},
    {13, Width::U32, &VersionInfo::firmwareBuild},
    {17, Width::U8,  &VersionInfo::rfidFirst},
    {18, Width::U8,  &VersionInfo::rfidSecond},
    {19, Width::U8,  &VersionInfo::rfidThird},
    {20, Width::U8,  &VersionInfo::feedpodFirst},
    {21, Width::U8,  &VersionInfo::feedpodSecond},
    {22, Width::U8,  &VersionInfo::connectedAed, absentWithout(22)},
}};
constexpr unsigned int oldVersionEnd  = 22;
static_assert(standInOrder(versionInfo) && endOf(versionInfo) == 23);

// RPL_USER_EVENT (68)
constexpr Number userEventFlag        {1, Width::U8, refuses};
constexpr unsigned int userNameByte   = 2;
constexpr unsigned int userNameLength = 64; // bytes of UTF-8, padded with NUL

// RPL_LIFETIMEINFO (70): the selector says what follows.
enum LifetimeSelector : quint8 { LifetimeCompressions = 0, LifetimeVentilations = 1, LifetimeBattery = 32 };
constexpr Number lifetimeSelector     {1, Width::U8};
constexpr Number lifetimeCount        {2, Width::U32, absentWithout(5)};
constexpr std::array<Parameter, 14> lifetimeBattery = {{
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
static_assert(covers(lifetimeBattery, endOf(lifetimeSelector), 28));

// RPL_GUIDELINES (75). The identifier follows from byte 52 on, to the end of the message.
constexpr std::array<Field<Member<G>>, 41> guidelines = {{
    { 2, Width::U8,   &G::compressionDepthMin},
    { 3, Width::U8,   &G::compressionDepthMax},
    { 4, Width::U8,   &G::compressionRateTarget},
    { 5, Width::U16,  &G::compressionAcceptableReleaseForce},
    { 7, Width::U8,   &G::compressionAcceptableReleaseDepth},
    { 8, Width::U8,   &G::ventilationRateMinHPCPR},
    { 9, Width::U8,   &G::ventilationRateMaxHPCPR},
    {12, Width::U8,   &G::compressionInactivityLevel3Timeout},
    {14, Width::U8,   &G::ventilationRateMaxDuringCPR},
    {15, Width::U8,   &G::ventilationRateMaxForVentilationsOnly},
    {16, Width::U8,   &G::ventilationInactivityTimeout},
    {17, Width::U8,   &G::compressionInactivityLevel2Timeout},
    {18, Width::U8,   &G::compressionInactivityLevel1Timeout},
    {19, Width::U8,   &G::compressionInactivityLevel0TimeoutCPR},
    {20, Width::U8,   &G::compressionInactivityLevel0TimeoutVentilationsOnly},
    {21, Width::U8,   &G::compressionRateMin},
    {22, Width::U8,   &G::compressionRateMax},
    {23, Width::U8,   &G::compressionDetectDepth},
    {24, Width::U16,  &G::ventilationDetectVolume},
    {26, Width::U16,  &G::ventilationVolumeMin},
    {28, Width::U16,  &G::ventilationVolumeMax},
    {30, Width::U16,  &G::ventilationInflationTimeMin},
    {32, Width::U16,  &G::ventilationInflationTimeMax},
    {34, Width::U8,   &G::ventilationRateMinDuringCPR},
    {35, Width::U8,   &G::ventilationRateMinForVentilationsOnly},
    {36, Width::U8,   &G::useRelativeDepth},
    {37, Width::U8,   &G::compressionsBetweenVentilations},
    {38, Width::U8,   &G::ventilationsBetweenCompressions},
    {39, Width::U8,   &G::compressionsBetweenVentilationsTwoRescuer},
    {40, Width::U8,   &G::minimumAcceptedFlowtimePercentageCompressionsOnly},
    {41, Width::U8,   &G::minimumAcceptedFlowtimePercentageSingleRescuerCPR},
    {42, Width::U8,   &G::minimumAcceptedFlowtimePercentageTwoRescuerCPR},
    {43, Width::U8,   &G::ventilationRateMinDuringTwoRescuerCPR},
    {44, Width::U8,   &G::ventilationRateMaxDuringTwoRescuerCPR},
    {45, Width::Flag, &G::isOfficial},
    {46, Width::U8,   &G::compressionTooDeepSetting},
    {47, Width::U8,   &G::preVentilationsUsage},
    {48, Width::U8,   &G::preVentilationsMin},
    {49, Width::U8,   &G::preVentilationsMax},
    {50, Width::Flag, &G::manikinGuidelineFlag},
    {51, Width::Flag, &G::usingDefaultValues},
}};
constexpr unsigned int guidelineIdByte = endOf(guidelines);
static_assert(standInOrder(guidelines) && guidelineIdByte == 52);

// RPL_WAVEINFO (77): a WaveType
constexpr Number waveType             {1, Width::U8};
constexpr Number waveSamplePeriod     {2, Width::U8};                 // ms
constexpr Number waveTime             {7, Width::U16, lowByteCounts}; // ms

// RPL_COMP_EVENT (79)
enum class Compression {
    Age,          // of its start, ms
    PeakForce,    // g
    ReleaseForce, // g
    Status,       // CompEventStatus
    Depth,        // hundredths of a mm
    ReleaseDepth, // hundredths of a mm
    StartToPeak,  // ms; refused when its sign bit is set
    PeakToEnd,    // ms; reported when its sign bit is set
    Period        // since the previous compression, ms
};
constexpr std::array<Field<Compression>, 9> compressionEvent = {{
    { 1, Width::S16, Compression::Age,          refuses},
    { 3, Width::S16, Compression::PeakForce,    refuses},
    { 5, Width::S16, Compression::ReleaseForce, refuses},
    { 7, Width::U8,  Compression::Status,       refuses},
    { 8, Width::S16, Compression::Depth,        refuses},
    {10, Width::S16, Compression::ReleaseDepth, refuses},
    {12, Width::U16, Compression::StartToPeak,  refuses},
    {14, Width::U16, Compression::PeakToEnd,    refuses},
    {16, Width::U16, Compression::Period,       refuses},
}};
static_assert(covers(compressionEvent, 1, 18));

// RPL_VENT_EVENT (80)
enum class Ventilation {
    Age,               // of its start, ms
    DuringCompression, // bit 0
    StartToPeak,       // ms
    PeakToEnd,         // ms
    Period,            // since the previous ventilation, ms
    Volume             // ml
};
constexpr std::array<Field<Ventilation>, 6> ventilationEvent = {{
    { 1, Width::S16, Ventilation::Age,               refuses},
    { 3, Width::U8,  Ventilation::DuringCompression, refuses},
    { 4, Width::U16, Ventilation::StartToPeak,       refuses},
    { 6, Width::U16, Ventilation::PeakToEnd,         refuses},
    { 8, Width::U16, Ventilation::Period,            refuses},
    {10, Width::U16, Ventilation::Volume,            refuses},
}};
static_assert(covers(ventilationEvent, 1, 12));

// RPL_COMP_INACTIVITY_TIME (81)
constexpr Number inactivityTime       {1, Width::S16, lowByteCounts}; // s

// RPL_COMP_RATE_UPDATE (87)
constexpr Number compressionRate      {1, Width::S16, lowByteCounts}; // per minute

// RPL_VENT_RATE_UPDATE (88)
constexpr Number ventilationRate      {1, Width::S8}; // per minute

// RPL_CPR_PROTOCOL_CTRL (101): the event list reads the first byte, the session info the second.
constexpr Number protocolOfList       {0, Width::U8};
constexpr Number protocolOfInfo       {1, Width::S8};

// RPL_COMP_PEAK_EV (104)
constexpr Number peakDepth            {1, Width::S16, lowByteCounts}; // hundredths of a mm

// RPL_CPRCARD_STATUS_EV (106): decimal digits
constexpr unsigned int cardByte       = 1;
constexpr unsigned int cardLength     = 8;

// RPL_MANIKIN_STIFFNESS_EV (107)
constexpr Number manikinStiffness     {1, Width::U8};

// RPL_CPR_SCORES (108). An older manikin ends before the overall score; for the reductions after it
// the others send, inflation time comes fast before slow, ventilations per minute slow before fast.
constexpr std::array<Parameter, 26> scores = {{
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
    {19, Width::U8, E::overallScore,     absentWithout(19)},
    {20, Width::U8, E::isScoringModeAED, absentWithout(20)},
    {21, Width::U8, E::preVentsTooFewScoreReduction},
    {22, Width::U8, E::preVentsTooManyScoreReduction},
    {23, Width::U8, E::inflationTimeFastScoreReduction},
    {24, Width::U8, E::inflationTimeSlowScoreReduction},
    {25, Width::U8, E::ventsPerMinuteSlowScoreReduction},
    {26, Width::U8, E::ventsPerMinuteFastScoreReduction},
}};
constexpr unsigned int oldScoresEnd = 19;
static_assert(covers(scores, 1, 27));

// RPL_GL_INDEPENDENT_STATS (109). An older manikin ends before the inflation times; newer ones go
// on in up to three steps.
constexpr std::array<Parameter, 37> independentStatistics = {{
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
    {49, Width::S16, E::ventMeanInflationTime,               absentWithout(50)},
    {51, Width::S16, E::ventStdDeviationInflationTime,       absentWithout(50)},
    {53, Width::U8,  E::numberOfPreVents,                    absentWithout(53)},
    {54, Width::U16, E::averageNumberOfVentilationsPerCycle, absentWithout(53)},
    {56, Width::U16, E::minNumberOfVentilationsPerCycle,     absentWithout(53)},
    {58, Width::U16, E::maxNumberOfVentilationsPerCycle,     absentWithout(53)},
    {60, Width::U16, E::averageNumberOfCompressionsPerCycle, absentWithout(53)},
    {62, Width::U16, E::minNumberOfCompressionsPerCycle,     absentWithout(53)},
    {64, Width::U16, E::maxNumberOfCompressionsPerCycle,     absentWithout(53)},
    {66, Width::U8,  E::flowTimePercentage,                  absentWithout(65)},
    {67, Width::U8,  E::ventilationsPerMinute,               absentWithout(65)},
}};
constexpr unsigned int oldStatisticsEnd = 49;
static_assert(covers(independentStatistics, 1, 68));

// RPL_GL_INDEPENDENT_BIN_STATS (110): six histograms of six bytes each, in the order of their
// parameters.
constexpr std::array<Parameter, 36> histograms = [] {
    std::array<Parameter, 36> table{};
    for (unsigned int i = 0; i < table.size(); ++i)
        table[i] = {1 + i, Width::U8, static_cast<E::ParameterType>(E::compHistogramDepthBin_0 + i)};
    return table;
}();
static_assert(histograms[0].key == 120 && histograms[35].key == E::ventHistogramRateBin_5);

// RPL_GL_DEPENDENT_STATS (111)
constexpr std::array<Parameter, 13> dependentStatistics = {{
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
static_assert(covers(dependentStatistics, 1, 14));

// clang-format on

} // namespace MessageLayouts

#endif
