// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventSessionInfo.h"

#include "CPRCompressionData.h"
#include "CPREventAED.h"
#include "CPREvents.h"
#include "CPRGuidelines.h"
#include "CPRWaveformInfo.h"
#include "private/MessageFields.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <QDateTime>
#include <QVersionNumber>

#include <algorithm>
#include <array>

namespace {

using MessageFields::Field;
using MessageFields::Width;

constexpr int simulationTypeOfThisManikin = 6;

constexpr int fineWaveDataStep = 1;
constexpr int coarseWaveDataStep = 10;

constexpr std::array fineWaveTypes{CPREventBase::KDX_INFANT,    CPREventBase::ORM_NEW_B,
                                   CPREventBase::ORM_NEW_B_ADV, CPREventBase::VIVARO_BABY,
                                   CPREventBase::CAN_ORMBABY,   CPREventBase::CAN_ORMNEWB};

constexpr std::array infantTypes{CPREventBase::KDX_INFANT,    CPREventBase::ORM_NEW_B,
                                 CPREventBase::ORM_NEW_B_ADV, CPREventBase::VIVARO_BABY_MK_II,
                                 CPREventBase::VIVARO_BABY,   CPREventBase::CAN_ORMBABY};

constexpr std::array childTypes{CPREventBase::KDX_CHILD, CPREventBase::ORM_JUNIOR,
                                CPREventBase::VIVARO_JUNIOR};

template <std::size_t N>
bool contains(const std::array<CPREventBase::ManikinType, N> &types, int type)
{
    return std::find(types.begin(), types.end(), type) != types.end();
}

constexpr std::array protocolTexts{"Compression and ventilation - Single rescuer",
                                   "Compression only",
                                   "Ventilation only",
                                   "Automatic",
                                   "Compression and ventilation - Two rescuer",
                                   "High Performance CPR"};

// RPL_LIFETIMEINFO (70): byte 1 selects the content.
enum LifetimeSelector : quint8 {
    LifetimeCompressions = 0,
    LifetimeVentilations = 1,
    LifetimeBattery = 32
};
constexpr unsigned int lifetimeSelectorByte = 1;
constexpr unsigned int lifetimeCounterByte = 2;

// clang-format off

// RPL_LIFETIMEINFO (70), selector 32
constexpr std::array<Field, 14> batteryFields = {{
    { 2, Width::U16, CPREventBase::manikinBatteryCycleCounter},
    { 4, Width::U16, CPREventBase::manikinBatterySlowChargeCounter},
    { 6, Width::U16, CPREventBase::manikinBatteryFastChargeCounter},
    { 8, Width::U16, CPREventBase::manikinBatteryAccumulatedSlowChargeTimeHours},
    {10, Width::U16, CPREventBase::manikinBatteryAccumulatedFastChargeTimeHours},
    {12, Width::U16, CPREventBase::manikinBatteryAccumulatedChargeTimeDuringLowTemperatureHours},
    {14, Width::U16, CPREventBase::manikinBatteryAccumulatedChargeTimeDuringHighTemperatureHours},
    {16, Width::U8,  CPREventBase::manikinBatteryAvgMinLevelPercent},
    {17, Width::U8,  CPREventBase::manikinBatteryAvgMaxLevelPercent},
    {18, Width::U16, CPREventBase::manikinBatteryCriticalBatteryLevelCounter},
    {20, Width::U16, CPREventBase::manikinBatteryAccumulatedDischargeCurrentAh},
    {22, Width::U16, CPREventBase::manikinBatteryDesignCapacityMah},
    {24, Width::U16, CPREventBase::manikinBatteryFullChargeCapacityMah},
    {26, Width::U16, CPREventBase::manikinBatteryDisconnectCounter},
}};
static_assert(MessageFields::standInOrder(batteryFields));

// RPL_MANIKIN_STIFFNESS_EV (107)
constexpr Field stiffnessField {1, Width::U8, CPREventBase::manikinStiffness};

// clang-format on

// RPL_CPRCARD_STATUS_EV (106): eight decimal digits from byte 1 on.
constexpr unsigned int cardByte = 1;
constexpr unsigned int cardLength = 8;

} // namespace

CPREventSessionInfo::CPREventSessionInfo(int msecs, CPREvents *owner)
    : CPREventBase(CprSessionInfo, msecs, owner)
{
    CPREventSessionInfo::initialize();
}

CPREventSessionInfo::CPREventSessionInfo(const CPREventSessionInfo &other, CPREvents *owner)
    : CPREventBase(other, owner), m_waveDataStep(other.m_waveDataStep),
      m_compressionInactivity(other.m_compressionInactivity),
      m_connectedAEDType(other.m_connectedAEDType), m_totalTimeLatch(other.m_totalTimeLatch),
      m_sessionID(other.m_sessionID)
{
}

CPREventSessionInfo::~CPREventSessionInfo() = default;

void CPREventSessionInfo::initialize()
{
    setParameter(cprProtocol, 0);
    setParameter(manikinType, NOT_DEFINED);
    setParameter(manikinStiffness, Manikin_Stiffness_Medium);
    setParameter(cprCardId, QString());
    setParameter(simulationType, simulationTypeOfThisManikin);
    CPREventBase::initialize();
}

void CPREventSessionInfo::reset()
{
    m_compressionInactivity = 0;
    m_waveDataStep = coarseWaveDataStep;
    setParameter(totalTime, 0);
    m_sessionID = QUuid::createUuid();
    if (m_connectedAEDType != AEDNotDetected && m_connectedAEDType != AEDNotPossible && events()) {
        events()->addEvent(CPREventAED::createAEDTypeEvent(m_connectedAEDType, msecs(), events()),
                           true);
    }
}

void CPREventSessionInfo::setVersionInfo(int type, const QString &firmware, const QString &rfid,
                                         const QString &feedpod, CPREventBase::AEDTypes aed)
{
    m_waveDataStep = contains(fineWaveTypes, type) ? fineWaveDataStep : coarseWaveDataStep;

    // Replaced before it is compared, so that an unknown type that is reported again is not new.
    if (!CPREventAED::isValidAEDType(aed))
        aed = AEDDetectedButNotIdentified;
    if (aed != m_connectedAEDType) {
        if (aed != AEDNotDetected && aed != AEDNotPossible && events()) {
            // The factory stores the type and announces it. The AED is known from now on, so the
            // event stands at the session time.
            events()->addEvent(CPREventAED::createAEDTypeEvent(aed, sessionTime(), events()), true);
        }
        // Also by an info that is not the list's standing one, which the factory does not know.
        if (aed != m_connectedAEDType)
            setConnectedAEDType(aed);
    }

    const auto version = QVersionNumber::fromString(firmware);
    setParameter(manikinFirmwareVersion,
                 version.isNull() ? QStringLiteral("0.0.0.0") : version.toString());
    setParameter(manikinType, type);
    setParameter(manikinRfidVersion, QVersionNumber::fromString(rfid).toString());
    setParameter(manikinFeedpodVersion, feedpod);
    Q_EMIT sessionInfoChanged(this);
}

void CPREventSessionInfo::setManikinCompressionCount(uint value)
{
    setParameter(manikinCompressionCount, value);
    Q_EMIT manikinCompressionCountChanged(value);
}

void CPREventSessionInfo::setManikinVentilationCount(uint value)
{
    setParameter(manikinVentilationCount, value);
    Q_EMIT manikinVentilationCountChanged(value);
}

void CPREventSessionInfo::setCompressionInactivity(short secs)
{
    setParameter(compInactivity, int(m_compressionInactivity)); // begun anew by another protocol
    if (secs < 0)
        return;
    // The manikin counts in 16 bits, so the sum wraps as its own does.
    m_compressionInactivity = static_cast<qint16>(m_compressionInactivity + secs);
    setParameter(compInactivity, int(m_compressionInactivity));
}

void CPREventSessionInfo::setCprProtocol(signed char protocol)
{
    setParameter(cprProtocol, int(protocol));
    m_compressionInactivity = 0;
}

void CPREventSessionInfo::setConnectedAEDType(CPREventBase::AEDTypes type)
{
    m_connectedAEDType = type;
    Q_EMIT connectedAEDTypeChanged();
}

QString CPREventSessionInfo::cprProtocolToString() const
{
    const int protocol = parameterValue(cprProtocol, 0).toInt();
    if (protocol < 0 || protocol >= static_cast<int>(protocolTexts.size()))
        return QStringLiteral("Unknown protocol");
    return QString::fromLatin1(protocolTexts[static_cast<std::size_t>(protocol)]);
}

QString CPREventSessionInfo::getCurrentTimeAsString() const
{
    const QDateTime now = QDateTime::currentDateTime();
    return now.toOffsetFromUtc(now.offsetFromUtc()).toString(Qt::ISODate);
}

int CPREventSessionInfo::getManikinType() const
{
    return parameterValue(manikinType, QVariant()).toInt();
}

int CPREventSessionInfo::getManikinStiffness() const
{
    return parameterValue(manikinStiffness, QVariant()).toInt();
}

QString CPREventSessionInfo::getCPRCardID() const
{
    return parameterValue(cprCardId, QVariant()).toString();
}

QString CPREventSessionInfo::getSessionID() const
{
    return m_sessionID.toString();
}

bool CPREventSessionInfo::isInfant() const
{
    return contains(infantTypes, getManikinType());
}

bool CPREventSessionInfo::isInfant9Months() const
{
    return getManikinType() == CAN_ORMBABY;
}

bool CPREventSessionInfo::isNewborn() const
{
    return getManikinType() == CAN_ORMNEWB;
}

bool CPREventSessionInfo::isChild() const
{
    return contains(childTypes, getManikinType());
}

QString CPREventSessionInfo::patientAgeType() const
{
    QString letter = QStringLiteral("A");
    if (isNewborn())
        letter = QStringLiteral("N");
    else if (isInfant())
        letter = isInfant9Months() ? QStringLiteral("T") : QStringLiteral("I");
    else if (isChild())
        letter = QStringLiteral("C");
    const CPRGuidelines *guidelines = cprGuidelines();
    return guidelines ? guidelines->patientAgeType(letter) : letter;
}

bool CPREventSessionInfo::hasFeedpod() const
{
    return parameterValue(manikinFeedpodVersion, QVariant()).toString() != QLatin1String("0.0");
}

void CPREventSessionInfo::onScoresReady()
{
    const CPRCompressionData *wave = compressionData();
    setParameter(waveDelay, wave ? wave->waveformInfo()->msecs() : 0);
    setParameter(CPREventBase::endTime, getCurrentTimeAsString());
}

void CPREventSessionInfo::setTotalTime(int a_Time)
{
    if (m_totalTimeLatch != 0)
        return;
    m_totalTimeLatch = a_Time;
    setParameter(totalTime, a_Time);
}

void CPREventSessionInfo::setTotalTime()
{
    setTotalTime(0);
}

void CPREventSessionInfo::setStartTime()
{
    setParameter(startTime, getCurrentTimeAsString());
}

bool CPREventSessionInfo::incomingMsg(bls_2010::RMessage *msg)
{
    switch (MessageFields::identifierOf(msg)) {
    case CommunicationIDs::RPL_VERSIONINFO:
        return rplmsg_RPL_VERSIONINFO(msg);
    case CommunicationIDs::RPL_LIFETIMEINFO:
        return rplmsg_RPL_LIFETIMEINFO(msg);
    case CommunicationIDs::RPL_COMP_INACTIVITY_TIME:
        return rplmsg_RPL_COMP_INACTIVITY_TIME(msg);
    case CommunicationIDs::RPL_CPR_PROTOCOL_CTRL:
        setCprProtocol(MessageFields::valueAt<qint8>(*msg, 1));
        return true;
    case CommunicationIDs::RPL_CPRCARD_STATUS_EV:
        return rplmsg_RPL_CPRCARD_STATUS_EV(msg);
    case CommunicationIDs::RPL_MANIKIN_STIFFNESS_EV:
        return rplmsg_RPL_MANIKIN_STIFFNESS_EV(msg);
    default:
        return false;
    }
}

// RPL_VERSIONINFO (64)
//   6, 7, 12      u8   firmware version: second, first and third number
//  10             u8   manikin type
//  13             u32  firmware build number
//  17, 18, 19     u8   RFID module version
//  20, 21         u8   Feedpod version
//  22             u8   connected AED type; older manikins do not send it
bool CPREventSessionInfo::rplmsg_RPL_VERSIONINFO(bls_2010::RMessage *msg)
{
    using MessageFields::valueAt;
    if (!msg)
        return false;
    const auto byte = [msg](unsigned int index) {
        return QString::number(valueAt<quint8>(*msg, index));
    };
    const QChar dot = QLatin1Char('.');

    const QString build = QString::number(valueAt<quint32>(*msg, 13));
    const QString firmware = byte(7) + dot + byte(6) + dot + byte(12) + dot + build;
    const QString rfid = byte(17) + dot + byte(18) + dot + byte(19);
    const QString feedpod = byte(20) + dot + byte(21);
    const int type = valueAt<quint8>(*msg, 10);
    bool ok = false;
    const auto reportedAed = valueAt<quint8>(*msg, 22, ok);
    const auto aed = ok ? static_cast<AEDTypes>(reportedAed) : AEDNotPossible;
    setVersionInfo(type, firmware, rfid, feedpod, aed);
    return true;
}

bool CPREventSessionInfo::rplmsg_RPL_LIFETIMEINFO(bls_2010::RMessage *msg)
{
    using MessageFields::valueAt;
    if (!msg)
        return false;
    bool ok = false;
    switch (valueAt<quint8>(*msg, lifetimeSelectorByte)) {
    case LifetimeCompressions:
        if (const auto count = valueAt<quint32>(*msg, lifetimeCounterByte, ok); ok)
            setManikinCompressionCount(count);
        break;
    case LifetimeVentilations:
        if (const auto count = valueAt<quint32>(*msg, lifetimeCounterByte, ok); ok)
            setManikinVentilationCount(count);
        break;
    case LifetimeBattery:
        MessageFields::store(*this, *msg, batteryFields);
        break;
    default:
        break;
    }
    return true;
}

bool CPREventSessionInfo::rplmsg_RPL_COMP_INACTIVITY_TIME(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    setCompressionInactivity(static_cast<qint16>(MessageFields::assembledU16(*msg, 1)));
    return true;
}

// The digits do not become a card number: a whole message empties cprCardId, a cut one leaves it
// alone. Intended: hosts expect the empty text.
bool CPREventSessionInfo::rplmsg_RPL_CPRCARD_STATUS_EV(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    bool ok = false;
    msg->getString(ok, cardByte, cardLength);
    if (ok)
        setParameter(cprCardId, QString());
    return true;
}

bool CPREventSessionInfo::rplmsg_RPL_MANIKIN_STIFFNESS_EV(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    MessageFields::store(*this, *msg, stiffnessField);
    return true;
}

CPREventSessionInfo *CPREventSessionInfo::clone(CPREvents *owner)
{
    return new CPREventSessionInfo(*this, owner);
}
