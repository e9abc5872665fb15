// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventBase.h"

#include "CPRDataBase.h"
#include "CPREvents.h"
#include "CPRGuidelines.h"
#include "private/NumberText.h"
#include "private/XmlReading.h"

#include <QHash>
#include <QIODevice>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QXmlStreamWriter>

#include <algorithm>
#include <array>
#include <map>

namespace {

using Parameter = CPREventBase::ParameterType;

constexpr int parameterCount = CPREventBase::manikinBatteryDisconnectCounter + 1;
static_assert(parameterCount == 206);

// A parameter that the table of units does not list; its unit is none all the same.
constexpr int noEntry = -1;

struct ParameterRow {
    Parameter type;
    int unit; // a CPREventBase::ParameterUnit, or noEntry
};

// clang-format off
constexpr std::array<ParameterRow, parameterCount> parameterTable = {{
    {CPREventBase::compRate,                                                      CPREventBase::cpm},
    {CPREventBase::compDepth,                                                     CPREventBase::mm},
    {CPREventBase::compUndershootDepth,                                           CPREventBase::mm},
    {CPREventBase::compPeakForce,                                                 CPREventBase::g},
    {CPREventBase::compReleaseForce,                                              CPREventBase::g},
    {CPREventBase::compDutyCycle,                                                 CPREventBase::none},
    {CPREventBase::compDutyCycleValid,                                            CPREventBase::none},
    {CPREventBase::compLeaning,                                                   CPREventBase::none},
    {CPREventBase::compLeadingSlopeTime,                                          CPREventBase::ms},
    {CPREventBase::compTrailingSlopeTime,                                         CPREventBase::ms},
    {CPREventBase::compTime,                                                      CPREventBase::ms},
    {CPREventBase::compForceUnits,                                                CPREventBase::none},
    {CPREventBase::compDepthUnits,                                                CPREventBase::none},
    {CPREventBase::compIncompleteRelease,                                         CPREventBase::none},
    {CPREventBase::compPeakTime,                                                  CPREventBase::ms},
    {CPREventBase::compInstantaneousPeriod,                                       CPREventBase::ms},
    {CPREventBase::compHandposXiphoid,                                            CPREventBase::none},
    {CPREventBase::compReleaseDepth,                                              CPREventBase::mm},
    {CPREventBase::compAbsolutePeakDepth,                                         CPREventBase::mm},
    {CPREventBase::compLeaningDepth,                                              CPREventBase::mm},
    {CPREventBase::compLeaningForce,                                              CPREventBase::g},
    {CPREventBase::compHandposError,                                              CPREventBase::none},
    {CPREventBase::compInactivity,                                                CPREventBase::sec},
    {CPREventBase::compCount,                                                     CPREventBase::none},
    {CPREventBase::compCyclesCount,                                               noEntry},
    {CPREventBase::compCorrectReleaseCount,                                       CPREventBase::none},
    {CPREventBase::compWithRateInfo,                                              CPREventBase::none},
    {CPREventBase::compCorrectReleasePercentage,                                  CPREventBase::percent},
    {CPREventBase::compCorrectRatePercentage,                                     CPREventBase::percent},
    {CPREventBase::compTooLowRatePercentage,                                      CPREventBase::percent},
    {CPREventBase::compCorrectDepthPercentage,                                    noEntry},
    {CPREventBase::compCorrectStrokeLengthPercentage,                             noEntry},
    {CPREventBase::compAdequateDepthPercentage,                                   CPREventBase::percent},
    {CPREventBase::compMeanDepth,                                                 CPREventBase::hmm},
    {CPREventBase::compMeanRate,                                                  CPREventBase::none},
    {CPREventBase::compMeanStrokeLength,                                          CPREventBase::hmm},
    {CPREventBase::compScore,                                                     CPREventBase::none},
    {CPREventBase::compInactivityPeriodCount,                                     CPREventBase::none},
    {CPREventBase::compStdDeviationDepth,                                         CPREventBase::hmm},
    {CPREventBase::compMeanReleaseDepth,                                          CPREventBase::hmm},
    {CPREventBase::compStdDeviationReleaseDepth,                                  CPREventBase::hmm},
    {CPREventBase::compStdDeviationRate,                                          CPREventBase::cpm},
    {CPREventBase::compHandPosCorrectPercentage,                                  CPREventBase::percent},
    {CPREventBase::compHandPosXiphoidErrorPercentage,                             CPREventBase::percent},
    {CPREventBase::compStdDeviationStrokeLength,                                  CPREventBase::hmm},
    {CPREventBase::compReleaseScoreReduction,                                     CPREventBase::percent},
    {CPREventBase::compDepthScoreReduction,                                       CPREventBase::percent},
    {CPREventBase::compDeepDepthScoreReduction,                                   CPREventBase::percent},
    {CPREventBase::compRateLowScoreReduction,                                     CPREventBase::percent},
    {CPREventBase::compRateHighScoreReduction,                                    CPREventBase::percent},
    {CPREventBase::compHandposScoreReduction,                                     CPREventBase::percent},
    {CPREventBase::compDepthStrokeLengthScoreReduction,                           CPREventBase::percent},
    {CPREventBase::compCyclesScoreReduction,                                      CPREventBase::percent},
    {CPREventBase::compFlowtimeScoreReduction,                                    CPREventBase::percent},
    {CPREventBase::compOverallScore,                                              CPREventBase::percent},
    {CPREventBase::ventRate,                                                      CPREventBase::vpm},
    {CPREventBase::ventInflationTime,                                             CPREventBase::ms},
    {CPREventBase::ventNoFlowTime,                                                CPREventBase::ms},
    {CPREventBase::ventRawVolumeZ,                                                CPREventBase::ml},
    {CPREventBase::ventVolumeZ,                                                   CPREventBase::ml},
    {CPREventBase::ventVolume,                                                    CPREventBase::ml},
    {CPREventBase::ventVolumeUnits,                                               CPREventBase::none},
    {CPREventBase::ventPeakTime,                                                  CPREventBase::ms},
    {CPREventBase::ventDuringCompression,                                         CPREventBase::none},
    {CPREventBase::ventInstantaneousPeriod,                                       CPREventBase::ms},
    {CPREventBase::ventCount,                                                     CPREventBase::none},
    {CPREventBase::ventCorrectVolumePercentage,                                   CPREventBase::percent},
    {CPREventBase::ventTooMuchVolumePercentage,                                   CPREventBase::percent},
    {CPREventBase::ventNotEnoughVolumePercentage,                                 CPREventBase::percent},
    {CPREventBase::ventMeanRate,                                                  CPREventBase::vpm},
    {CPREventBase::ventMeanVolume,                                                CPREventBase::ml},
    {CPREventBase::ventScore,                                                     CPREventBase::percent},
    {CPREventBase::ventCyclesCount,                                               CPREventBase::none},
    {CPREventBase::ventStdDeviationVolume,                                        CPREventBase::ml},
    {CPREventBase::ventStdDeviationRate,                                          CPREventBase::vpm},
    {CPREventBase::ventCorrectRateCprPercentage,                                  CPREventBase::percent},
    {CPREventBase::ventTooHighRateCprPercentage,                                  CPREventBase::percent},
    {CPREventBase::ventCorrectRateVentOnlyPercentage,                             CPREventBase::percent},
    {CPREventBase::ventTooHighRateVentOnlyPercentage,                             CPREventBase::percent},
    {CPREventBase::ventCorrectInflationTimePercentage,                            CPREventBase::percent},
    {CPREventBase::ventTooFastInflationTimePercentage,                            CPREventBase::percent},
    {CPREventBase::ventShallowScoreReduction,                                     CPREventBase::percent},
    {CPREventBase::ventExcessiveScoreReduction,                                   CPREventBase::percent},
    {CPREventBase::ventRateLowScoreReduction,                                     CPREventBase::percent},
    {CPREventBase::ventRateHighScoreReduction,                                    CPREventBase::percent},
    {CPREventBase::ventPauseScoreReduction,                                       CPREventBase::percent},
    {CPREventBase::ventCyclesScoreReduction,                                      CPREventBase::percent},
    {CPREventBase::ventOverallScore,                                              CPREventBase::percent},
    {CPREventBase::inactivityTime,                                                CPREventBase::sec},
    {CPREventBase::inactivityAverageTime,                                         CPREventBase::sec},
    {CPREventBase::shockEnergy,                                                   CPREventBase::J},
    {CPREventBase::cprProtocol,                                                   noEntry},
    {CPREventBase::instructor,                                                    CPREventBase::none},
    {CPREventBase::students,                                                      CPREventBase::none},
    {CPREventBase::manikinType,                                                   CPREventBase::none},
    {CPREventBase::manikinFirmwareVersion,                                        CPREventBase::none},
    {CPREventBase::manikinStiffness,                                              CPREventBase::none},
    {CPREventBase::manikinName,                                                   CPREventBase::none},
    {CPREventBase::manikinCompressionCount,                                       CPREventBase::none},
    {CPREventBase::manikinRfidVersion,                                            noEntry},
    {CPREventBase::manikinFeedpodVersion,                                         noEntry},
    {CPREventBase::remoteControl,                                                 noEntry},
    {CPREventBase::remoteControlVersion,                                          noEntry},
    {CPREventBase::startTime,                                                     CPREventBase::none},
    {CPREventBase::endTime,                                                       CPREventBase::none},
    {CPREventBase::primaryAdvice,                                                 CPREventBase::none},
    {CPREventBase::secondaryAdvice,                                               CPREventBase::none},
    {CPREventBase::overallScore,                                                  CPREventBase::percent},
    {CPREventBase::categoryThresholdBasic,                                        CPREventBase::percent},
    {CPREventBase::categoryThresholdAdvanced,                                     CPREventBase::percent},
    {CPREventBase::waveDelay,                                                     CPREventBase::ms},
    {CPREventBase::softSurface,                                                   CPREventBase::none},
    {CPREventBase::totalTime,                                                     CPREventBase::sec},
    {CPREventBase::cprCardId,                                                     CPREventBase::none},
    {CPREventBase::cprCardTimestamp,                                              CPREventBase::sec},
    {CPREventBase::sessionDuration,                                               CPREventBase::sec},
    {CPREventBase::timeFirstShock,                                                CPREventBase::sec},
    {CPREventBase::timeFirstComp,                                                 CPREventBase::sec},
    {CPREventBase::timeFirstVent,                                                 CPREventBase::sec},
    {CPREventBase::flowTimePercentage,                                            CPREventBase::percent},
    {CPREventBase::compHistogramDepthBin_0,                                       CPREventBase::none},
    {CPREventBase::compHistogramDepthBin_1,                                       CPREventBase::none},
    {CPREventBase::compHistogramDepthBin_2,                                       CPREventBase::none},
    {CPREventBase::compHistogramDepthBin_3,                                       CPREventBase::none},
    {CPREventBase::compHistogramDepthBin_4,                                       CPREventBase::none},
    {CPREventBase::compHistogramDepthBin_5,                                       CPREventBase::none},
    {CPREventBase::compHistogramReleaseBin_0,                                     CPREventBase::none},
    {CPREventBase::compHistogramReleaseBin_1,                                     CPREventBase::none},
    {CPREventBase::compHistogramReleaseBin_2,                                     CPREventBase::none},
    {CPREventBase::compHistogramReleaseBin_3,                                     CPREventBase::none},
    {CPREventBase::compHistogramReleaseBin_4,                                     CPREventBase::none},
    {CPREventBase::compHistogramReleaseBin_5,                                     CPREventBase::none},
    {CPREventBase::compHistogramRateBin_0,                                        CPREventBase::none},
    {CPREventBase::compHistogramRateBin_1,                                        CPREventBase::none},
    {CPREventBase::compHistogramRateBin_2,                                        CPREventBase::none},
    {CPREventBase::compHistogramRateBin_3,                                        CPREventBase::none},
    {CPREventBase::compHistogramRateBin_4,                                        CPREventBase::none},
    {CPREventBase::compHistogramRateBin_5,                                        CPREventBase::none},
    {CPREventBase::compHistogramInactivityBin_0,                                  CPREventBase::none},
    {CPREventBase::compHistogramInactivityBin_1,                                  CPREventBase::none},
    {CPREventBase::compHistogramInactivityBin_2,                                  CPREventBase::none},
    {CPREventBase::compHistogramInactivityBin_3,                                  CPREventBase::none},
    {CPREventBase::compHistogramInactivityBin_4,                                  CPREventBase::none},
    {CPREventBase::compHistogramInactivityBin_5,                                  CPREventBase::none},
    {CPREventBase::ventHistogramVolumeBin_0,                                      CPREventBase::none},
    {CPREventBase::ventHistogramVolumeBin_1,                                      CPREventBase::none},
    {CPREventBase::ventHistogramVolumeBin_2,                                      CPREventBase::none},
    {CPREventBase::ventHistogramVolumeBin_3,                                      CPREventBase::none},
    {CPREventBase::ventHistogramVolumeBin_4,                                      CPREventBase::none},
    {CPREventBase::ventHistogramVolumeBin_5,                                      CPREventBase::none},
    {CPREventBase::ventHistogramRateBin_0,                                        CPREventBase::none},
    {CPREventBase::ventHistogramRateBin_1,                                        CPREventBase::none},
    {CPREventBase::ventHistogramRateBin_2,                                        CPREventBase::none},
    {CPREventBase::ventHistogramRateBin_3,                                        CPREventBase::none},
    {CPREventBase::ventHistogramRateBin_4,                                        CPREventBase::none},
    {CPREventBase::ventHistogramRateBin_5,                                        CPREventBase::none},
    {CPREventBase::aedEventType,                                                  CPREventBase::none},
    {CPREventBase::aedDelayedOnTime,                                              CPREventBase::sec},
    {CPREventBase::aedScenarioNumber,                                             CPREventBase::none},
    {CPREventBase::aedScenarioFrameNumber,                                        CPREventBase::none},
    {CPREventBase::aedRemoteScenarioNumber,                                       CPREventBase::none},
    {CPREventBase::aedRemoteOtherButtonId,                                        CPREventBase::none},
    {CPREventBase::aedRemoteApplyToAll,                                           CPREventBase::none},
    {CPREventBase::aedECGRhythm,                                                  CPREventBase::none},
    {CPREventBase::aedECGPulseStatus,                                             CPREventBase::none},
    {CPREventBase::aedECGShockableStatus,                                         CPREventBase::none},
    {CPREventBase::aedType,                                                       noEntry},
    {CPREventBase::eventId,                                                       noEntry},
    {CPREventBase::userEventType,                                                 noEntry},
    {CPREventBase::simulationType,                                                noEntry},
    {CPREventBase::isScoringModeAED,                                              noEntry},
    {CPREventBase::cprScore,                                                      noEntry},
    {CPREventBase::aedScore,                                                      noEntry},
    {CPREventBase::preVentsTooFewScoreReduction,                                  CPREventBase::percent},
    {CPREventBase::preVentsTooManyScoreReduction,                                 CPREventBase::percent},
    {CPREventBase::numberOfPreVents,                                              CPREventBase::none},
    {CPREventBase::manikinVentilationCount,                                       CPREventBase::none},
    {CPREventBase::minNumberOfCompressionsPerCycle,                               noEntry},
    {CPREventBase::maxNumberOfCompressionsPerCycle,                               noEntry},
    {CPREventBase::averageNumberOfCompressionsPerCycle,                           noEntry},
    {CPREventBase::compCountNoErrors,                                             noEntry},
    {CPREventBase::ventMeanInflationTime,                                         CPREventBase::ms},
    {CPREventBase::ventStdDeviationInflationTime,                                 CPREventBase::ms},
    {CPREventBase::minNumberOfVentilationsPerCycle,                               CPREventBase::none},
    {CPREventBase::maxNumberOfVentilationsPerCycle,                               noEntry},
    {CPREventBase::averageNumberOfVentilationsPerCycle,                           CPREventBase::none},
    {CPREventBase::averageInflationTime,                                          CPREventBase::ms},
    {CPREventBase::ventilationsPerMinute,                                         CPREventBase::vpm},
    {CPREventBase::inflationTimeSlowScoreReduction,                               CPREventBase::percent},
    {CPREventBase::inflationTimeFastScoreReduction,                               CPREventBase::percent},
    {CPREventBase::ventsPerMinuteSlowScoreReduction,                              CPREventBase::percent},
    {CPREventBase::ventsPerMinuteFastScoreReduction,                              CPREventBase::percent},
    {CPREventBase::manikinBatteryCycleCounter,                                    noEntry},
    {CPREventBase::manikinBatterySlowChargeCounter,                               CPREventBase::none},
    {CPREventBase::manikinBatteryFastChargeCounter,                               CPREventBase::none},
    {CPREventBase::manikinBatteryAccumulatedSlowChargeTimeHours,                  CPREventBase::hours},
    {CPREventBase::manikinBatteryAccumulatedFastChargeTimeHours,                  CPREventBase::hours},
    {CPREventBase::manikinBatteryAccumulatedChargeTimeDuringLowTemperatureHours,  CPREventBase::hours},
    {CPREventBase::manikinBatteryAccumulatedChargeTimeDuringHighTemperatureHours, CPREventBase::hours},
    {CPREventBase::manikinBatteryAvgMinLevelPercent,                              CPREventBase::percent},
    {CPREventBase::manikinBatteryAvgMaxLevelPercent,                              CPREventBase::percent},
    {CPREventBase::manikinBatteryCriticalBatteryLevelCounter,                     CPREventBase::none},
    {CPREventBase::manikinBatteryAccumulatedDischargeCurrentAh,                   CPREventBase::ah},
    {CPREventBase::manikinBatteryDesignCapacityMah,                               CPREventBase::mah},
    {CPREventBase::manikinBatteryFullChargeCapacityMah,                           CPREventBase::mah},
    {CPREventBase::manikinBatteryDisconnectCounter,                               CPREventBase::none},
}};
// clang-format on

constexpr bool rowsStandInOrder()
{
    for (int i = 0; i < parameterCount; ++i) {
        if (parameterTable[static_cast<std::size_t>(i)].type != i)
            return false;
    }
    return true;
}
static_assert(rowsStandInOrder(), "the rows are indexed by the enumerator");

// Key texts of an enumeration with consecutive values from 0, both ways, without a walk of the
// meta-object.
class KeyTable {
public:
    explicit KeyTable(const QMetaEnum &metaEnum)
    {
        m_keys.reserve(metaEnum.keyCount());
        for (int i = 0; i < metaEnum.keyCount(); ++i) {
            Q_ASSERT(metaEnum.value(i) == i);
            m_keys.append(QString::fromLatin1(metaEnum.key(i)));
        }
        for (int i = 0; i < m_keys.size(); ++i)
            m_values.insert(m_keys.at(i), i);
    }

    QString key(int value) const { return m_keys.value(value); }
    int value(QStringView key) const { return m_values.value(key, -1); }

private:
    QVector<QString> m_keys;
    QHash<QStringView, int> m_values; // views of m_keys
};

const KeyTable &parameterKeys()
{
    static const KeyTable table(QMetaEnum::fromType<Parameter>());
    return table;
}

const KeyTable &eventTypeKeys()
{
    static const KeyTable table(QMetaEnum::fromType<CPREventBase::EventType>());
    return table;
}

CPREventBase::ParameterUnit unitOf(Parameter type)
{
    if (type < 0 || type >= parameterCount)
        return CPREventBase::none;
    const int unit = parameterTable[static_cast<std::size_t>(type)].unit;
    return unit == noEntry ? CPREventBase::none : static_cast<CPREventBase::ParameterUnit>(unit);
}

// Calls store(type, text) when the attributes name a known parameter and have a value.
template <typename Store> void takeParam(const QXmlStreamAttributes &attributes, Store &store)
{
    const QXmlStreamAttribute *key = nullptr;
    const QXmlStreamAttribute *value = nullptr;
    for (const QXmlStreamAttribute &attribute : attributes) {
        const auto name = attribute.qualifiedName();
        if (name == QLatin1String("type"))
            key = &attribute;
        else if (name == QLatin1String("value"))
            value = &attribute;
    }
    Parameter type{};
    if (key && value && CPREventBase::parameterFromKey(key->value(), type))
        store(type, QStringView(value->value()));
}

// Calls store(type, text) for each known parameter among the "param" elements that follow.
template <typename Store> void readParamElements(QXmlStreamReader &reader, Store store)
{
    while (readNextChild(reader) && reader.name() == QLatin1String("param")) {
        // The reader fills its list of attributes anew; it would have to copy it if one were kept.
        takeParam(reader.attributes(), store);
        reader.skipCurrentElement();
    }
}

// The declared properties of a class of events that are named after parameters.
class PropertyTable {
public:
    explicit PropertyTable(const QMetaObject &metaObject)
    {
        for (int i = 0; i < parameterCount; ++i) {
            const QString key = CPREventBase::parameterKey(static_cast<Parameter>(i));
            Entry &entry = m_entries[static_cast<std::size_t>(i)];
            entry.index = metaObject.indexOfProperty(key.toLatin1().constData());
            if (entry.index >= 0)
                entry.type = metaObject.property(entry.index).userType();
        }
    }

    // Sets the property from a number as it stands in files; false leaves it to Qt to convert.
    bool write(QObject *object, Parameter type, QStringView text) const
    {
        const Entry &entry = m_entries[static_cast<std::size_t>(type)];
        int integer = 0;
        float number = 0;
        switch (entry.type) {
        case QMetaType::Int:
            return NumberText::toInt(text, integer) && set(object, entry.index, integer);
        case QMetaType::Bool:
            return NumberText::toInt(text, integer) && set(object, entry.index, integer != 0);
        case QMetaType::Float:
            return NumberText::toFloat(text, number) && set(object, entry.index, number);
        default:
            return false;
        }
    }

private:
    struct Entry {
        int index = -1;
        int type = QMetaType::UnknownType;
    };

    // What QMetaProperty::write() does when nothing is to be converted.
    template <typename Value> static bool set(QObject *object, int index, Value value)
    {
        int status = -1;
        int flags = 0;
        void *arguments[] = {&value, nullptr, &status, &flags};
        QMetaObject::metacall(object, QMetaObject::WriteProperty, index, arguments);
        return true;
    }

    std::array<Entry, parameterCount> m_entries;
};

// Of the thread, so that sessions can be loaded in several.
const PropertyTable &propertiesOf(const QMetaObject *metaObject)
{
    thread_local std::map<const QMetaObject *, PropertyTable> tables;
    return tables.try_emplace(metaObject, *metaObject).first->second;
}

} // namespace

const QMap<CPREventBase::ParameterType, CPREventBase::ParameterUnit> CPREventBase::parameterUnit =
    CPREventBase::initParameterUnit();

QMap<CPREventBase::ParameterType, CPREventBase::ParameterUnit> CPREventBase::initParameterUnit()
{
    QMap<ParameterType, ParameterUnit> units;
    for (const ParameterRow &row : parameterTable) {
        if (row.unit != noEntry)
            units.insert(row.type, static_cast<ParameterUnit>(row.unit));
    }
    return units;
}

QString CPREventBase::unitText(ParameterType type)
{
    static const KeyTable units(QMetaEnum::fromType<ParameterUnit>());
    const ParameterUnit unit = unitOf(type);
    return unit == none ? QString() : units.key(unit);
}

QString CPREventBase::parameterKey(ParameterType type)
{
    return parameterKeys().key(type);
}

bool CPREventBase::parameterFromKey(QStringView key, ParameterType &type)
{
    const int value = parameterKeys().value(key);
    if (value >= 0)
        type = static_cast<ParameterType>(value);
    return value >= 0;
}

bool CPREventBase::eventTypeFromKey(QStringView key, EventType &type)
{
    const int value = eventTypeKeys().value(key);
    if (value >= 0)
        type = static_cast<EventType>(value);
    return value >= 0;
}

CPREventBase::CPREventBase(EventType type, int msecs, CPREvents *owner)
    : QObject(owner), m_owner(owner), m_type(type), m_msecs(msecs), m_endTime(msecs)
{
}

CPREventBase::CPREventBase(const CPREventBase &other, CPREvents *owner)
    : QObject(owner), m_owner(owner), m_type(other.m_type), m_msecs(other.m_msecs),
      m_endTime(other.m_endTime)
{
    copyParametersFrom(other);
}

CPREventBase::~CPREventBase()
{
    if (m_listed || m_standing)
        m_owner->forgetEvent(this);
}

const char *CPREventBase::typeAsString() const
{
    return QMetaEnum::fromType<EventType>().valueToKey(m_type);
}

void CPREventBase::setMSecs(int msecs)
{
    const bool isOther = msecs != m_msecs;
    m_msecs = msecs;
    setEventEndTime(msecs);
    if (isOther)
        noteChange();
}

void CPREventBase::setEventEndTime(int msecs)
{
    if (msecs == m_endTime)
        return;
    m_endTime = msecs;
    noteChange();
}

void CPREventBase::noteChange()
{
    if (m_listed || m_standing)
        m_owner->noteChange(this);
}

QQmlPropertyMap *CPREventBase::params() const
{
    if (m_stored) {
        const std::unique_ptr<std::vector<StoredParameter>> stored = std::move(m_stored);
        m_params = new QQmlPropertyMap(const_cast<CPREventBase *>(this));
        for (const StoredParameter &parameter : *stored)
            m_params->insert(parameterKey(parameter.type), parameter.value);
    }
    return m_params;
}

// Null when there is none, or when the parameters are in the map.
QVariant *CPREventBase::storedValue(ParameterType type) const
{
    if (!m_stored)
        return nullptr;
    const auto found =
        std::find_if(m_stored->begin(), m_stored->end(),
                     [type](const StoredParameter &parameter) { return parameter.type == type; });
    return found == m_stored->end() ? nullptr : &found->value;
}

int CPREventBase::storedParameterCount() const
{
    return m_stored ? static_cast<int>(m_stored->size()) : 0;
}

// Calls take(key, value) for each parameter in the order in which they came.
template <typename Take> void CPREventBase::forEachParameter(Take take) const
{
    if (m_stored) {
        for (const StoredParameter &parameter : *m_stored)
            take(parameterKey(parameter.type), parameter.value);
    } else if (m_params) {
        const QStringList keys = m_params->keys();
        for (const QString &key : keys)
            take(key, m_params->value(key));
    }
}

void CPREventBase::setParameter(ParameterType type, const QVariant &value)
{
    const QString key = parameterKey(type);
    if (key.isEmpty())
        return;
    if (m_params) {
        m_params->insert(key, value);
    } else if (QVariant *stored = storedValue(type)) {
        *stored = value;
    } else {
        if (!m_stored)
            m_stored = std::make_unique<std::vector<StoredParameter>>();
        m_stored->push_back({type, value});
    }
    noteChange();
}

QVariant CPREventBase::parameterValue(ParameterType type, const QVariant &defaultValue) const
{
    if (const QVariant *stored = storedValue(type))
        return *stored;
    if (!m_params)
        return m_stored ? defaultValue : QVariant();
    QString key;
    return hasParameterType(type, key) ? m_params->value(key) : defaultValue;
}

bool CPREventBase::hasParameterType(ParameterType type, QString &key) const
{
    key = parameterKey(type);
    return m_params ? m_params->contains(key) : storedValue(type) != nullptr;
}

CPREventBase::ParameterUnit CPREventBase::unit(ParameterType type) const
{
    return unitOf(type);
}

void CPREventBase::copyParametersFrom(const CPREventBase &other)
{
    other.forEachParameter([this](const QString &key, const QVariant &value) {
        ParameterType type{};
        if (parameterFromKey(key, type)) {
            setParameter(type, value);
        } else {
            // A key of the host's own, which only the map can hold.
            if (!params())
                m_params = new QQmlPropertyMap(this);
            m_params->insert(key, value);
        }
    });
}

int CPREventBase::sessionTime() const
{
    return m_owner ? m_owner->sessionTime() : 0;
}

bls_2010::CommonDefs::CprProtocolType CPREventBase::mode() const
{
    return m_owner ? m_owner->mode() : bls_2010::CommonDefs::CPR_SINGLE_RESCUER;
}

CPRCompressionData *CPREventBase::compressionData() const
{
    return m_owner ? m_owner->compressionData() : nullptr;
}

CPRVentilationData *CPREventBase::ventilationData() const
{
    return m_owner ? m_owner->ventilationData() : nullptr;
}

CPRGuidelines *CPREventBase::cprGuidelines() const
{
    return m_owner ? m_owner->cprGuidelines() : nullptr;
}

bool CPREventBase::hasParameters() const
{
    return m_stored || (m_params && !m_params->isEmpty());
}

void CPREventBase::write(QXmlStreamWriter *writer)
{
    if (!writer)
        return;
    writer->writeStartElement(QStringLiteral("evt"));
    writer->writeAttribute(QStringLiteral("type"), QString::fromLatin1(typeAsString()));
    writer->writeAttribute(QStringLiteral("msecs"), QString::number(m_msecs));
    writeParameters(writer);
    writer->writeEndElement();
}

void CPREventBase::writeParameters(QXmlStreamWriter *writer)
{
    if (!writer)
        return;
    forEachParameter([writer](const QString &key, const QVariant &value) {
        ParameterType type{};
        if (!key.startsWith(QLatin1String("manikinBattery")) && parameterFromKey(key, type))
            writeParamElement(*writer, key, CPRDataBase::variantToString(value), type);
    });
}

void CPREventBase::writeParam(QXmlStreamWriter &writer, const char *name, const QVariant &value,
                              ParameterType type) const
{
    writeParamElement(writer, QString::fromLatin1(name), CPRDataBase::variantToString(value), type);
}

void CPREventBase::writeParam(QXmlStreamWriter &writer, ParameterType type, int value) const
{
    writeParamElement(writer, parameterKey(type), QString::number(value), type);
}

void CPREventBase::writeParam(QXmlStreamWriter &writer, ParameterType type, float value) const
{
    writeParamElement(writer, parameterKey(type), NumberText::fromReal(value), type);
}

void CPREventBase::writeParam(QXmlStreamWriter &writer, ParameterType type, bool value) const
{
    writeParamElement(writer, parameterKey(type), value ? QStringLiteral("1") : QStringLiteral("0"),
                      type);
}

void CPREventBase::writeParamElement(QXmlStreamWriter &writer, const QString &name,
                                     const QString &text, ParameterType type)
{
    writer.writeStartElement(QStringLiteral("param"));
    writer.writeAttribute(QStringLiteral("type"), name);
    writer.writeAttribute(QStringLiteral("value"), text);
    if (const QString units = unitText(type); !units.isEmpty())
        writer.writeAttribute(QStringLiteral("units"), units);
    writer.writeEndElement();
}

void CPREventBase::read(QXmlStreamReader *reader)
{
    readParameters(reader);
}

void CPREventBase::readParameters(QXmlStreamReader *reader)
{
    if (!reader)
        return;
    readParamElements(*reader, [this](ParameterType type, QStringView text) {
        setParameter(type, CPRDataBase::variantFromString(text.toString()));
    });
}

void CPREventBase::readParametersToProperties(QXmlStreamReader *reader)
{
    if (!reader)
        return;
    const PropertyTable &properties = propertiesOf(metaObject());
    readParamElements(*reader, [this, &properties](ParameterType type, QStringView text) {
        if (!properties.write(this, type, text)) {
            setProperty(parameterKey(type).toLatin1().constData(),
                        CPRDataBase::variantFromString(text.toString()));
        }
    });
}

void CPREventBase::writeHeader(QIODevice *device, const QPair<ParameterType, QString> &column,
                               const QString &separator)
{
    if (!device)
        return;
    device->write(column.second.toUtf8());
    if (const QString units = unitText(column.first); !units.isEmpty())
        device->write(QStringLiteral(" (%1) ").arg(units).toUtf8());
    if (!separator.isEmpty())
        device->write(separator.toUtf8());
}

bool CPREventBase::write(QIODevice *device, const QPair<ParameterType, QString> &column,
                         const QString &separator)
{
    QString key;
    if (!device || !hasParameters() || !hasParameterType(column.first, key))
        return false;
    device->write(NumberText::fromVariant(parameterValue(column.first, QVariant())).toUtf8());
    if (!separator.isEmpty())
        device->write(separator.toUtf8());
    return true;
}

bool CPREventBase::incomingMsg(bls_2010::RMessage * /*msg*/)
{
    return false;
}

void CPREventBase::reset()
{
}

void CPREventBase::initialize()
{
    reset();
}

CPREventBase *CPREventBase::clone(CPREvents *owner)
{
    return new CPREventBase(*this, owner);
}

bool CPREventBase::filterEvent(CPREventBase * /*previous*/)
{
    return false;
}

CPREventBase::operator QString() const
{
    int count = 0;
    QString parameters;
    forEachParameter([&](const QString &key, const QVariant &value) {
        ++count;
        parameters +=
            QStringLiteral("\n\t") + key + QStringLiteral(" = ") + NumberText::fromVariant(value);
    });
    return QString::asprintf(
               "%p, type: %s, msecs: %d, endTime: %d, paramCount: %d, propertyCount: %d",
               static_cast<const void *>(this), typeAsString(), m_msecs, m_endTime, count,
               metaObject()->propertyCount())
        + parameters;
}

int CPREventBase::tag() const
{
    return TagOther;
}
