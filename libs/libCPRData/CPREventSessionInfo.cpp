// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventSessionInfo.h"

#include "CPRCompressionData.h"
#include "CPREventAED.h"
#include "CPREvents.h"
#include "CPRGuidelines.h"
#include "CPRWaveformInfo.h"
#include "private/MessageLayouts.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <QDateTime>
#include <QVersionNumber>

#include <algorithm>
#include <array>

namespace {

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

// A version as people write it.
QString dotted(std::initializer_list<quint32> numbers)
{
    QStringList texts;
    for (const quint32 number : numbers)
        texts.append(QString::number(number));
    return texts.join(QLatin1Char('.'));
}

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
    switch (MessageLayouts::identifierOf(msg)) {
    case CommunicationIDs::RPL_VERSIONINFO:
        return rplmsg_RPL_VERSIONINFO(msg);
    case CommunicationIDs::RPL_LIFETIMEINFO:
        return rplmsg_RPL_LIFETIMEINFO(msg);
    case CommunicationIDs::RPL_COMP_INACTIVITY_TIME:
        return rplmsg_RPL_COMP_INACTIVITY_TIME(msg);
    case CommunicationIDs::RPL_CPR_PROTOCOL_CTRL:
        setCprProtocol(MessageLayouts::intOf(*msg, MessageLayouts::protocolOfInfo));
        return true;
    case CommunicationIDs::RPL_CPRCARD_STATUS_EV:
        return rplmsg_RPL_CPRCARD_STATUS_EV(msg);
    case CommunicationIDs::RPL_MANIKIN_STIFFNESS_EV:
        return rplmsg_RPL_MANIKIN_STIFFNESS_EV(msg);
    default:
        return false;
    }
}

bool CPREventSessionInfo::rplmsg_RPL_VERSIONINFO(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    MessageLayouts::VersionInfo v;
    MessageLayouts::storeIn(v, *msg, MessageLayouts::versionInfo);
    setVersionInfo(static_cast<int>(v.manikinType),
                   dotted({v.firmwareFirst, v.firmwareSecond, v.firmwareThird, v.firmwareBuild}),
                   dotted({v.rfidFirst, v.rfidSecond, v.rfidThird}),
                   dotted({v.feedpodFirst, v.feedpodSecond}),
                   static_cast<AEDTypes>(v.connectedAed));
    return true;
}

bool CPREventSessionInfo::rplmsg_RPL_LIFETIMEINFO(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    const auto count = MessageLayouts::valueOf(*msg, MessageLayouts::lifetimeCount);
    switch (MessageLayouts::intOf(*msg, MessageLayouts::lifetimeSelector)) {
    case MessageLayouts::LifetimeCompressions:
        if (count)
            setManikinCompressionCount(static_cast<uint>(*count));
        break;
    case MessageLayouts::LifetimeVentilations:
        if (count)
            setManikinVentilationCount(static_cast<uint>(*count));
        break;
    case MessageLayouts::LifetimeBattery:
        MessageLayouts::store(*this, *msg, MessageLayouts::lifetimeBattery);
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
    setCompressionInactivity(MessageLayouts::intOf(*msg, MessageLayouts::inactivityTime));
    return true;
}

// The digits do not become a card number: a whole message empties cprCardId, a cut one leaves it
// alone. Intended: hosts expect the empty text.
bool CPREventSessionInfo::rplmsg_RPL_CPRCARD_STATUS_EV(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    bool ok = false;
    msg->getString(ok, MessageLayouts::cardByte, MessageLayouts::cardLength);
    if (ok)
        setParameter(cprCardId, QString());
    return true;
}

bool CPREventSessionInfo::rplmsg_RPL_MANIKIN_STIFFNESS_EV(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    setParameter(manikinStiffness, MessageLayouts::intOf(*msg, MessageLayouts::manikinStiffness));
    return true;
}

CPREventSessionInfo *CPREventSessionInfo::clone(CPREvents *owner)
{
    return new CPREventSessionInfo(*this, owner);
}
