// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventAED.h"

#include "CPREventSessionInfo.h"
#include "CPREvents.h"
#include "private/MessageFields.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <array>

namespace {

using MessageFields::Width;

constexpr unsigned int kindByte = 1;
constexpr unsigned int buttonByte = 1;

// RPL_GENERIC_EVENT (48): what follows the kind in byte 1. An event whose needed field is missing
// is refused; the others are stored when they are there.
struct GenericField {
    CPREventBase::AEDEventType kind;
    MessageFields::Field field;
    bool needed;
};

// clang-format off
constexpr std::array<GenericField, 11> genericFields = {{
    {CPREventBase::AEDDelayedONTime,                      {2, Width::U16, CPREventBase::aedDelayedOnTime},        true},
    {CPREventBase::AEDScenarioNumber,                     {2, Width::U8,  CPREventBase::aedScenarioNumber},       true},
    {CPREventBase::AEDScenarioFrameNumber,                {2, Width::U16, CPREventBase::aedScenarioFrameNumber},  true},
    {CPREventBase::AEDECGRhythmStatus,                    {2, Width::U8,  CPREventBase::aedECGRhythm},            true},
    {CPREventBase::AEDECGRhythmStatus,                    {3, Width::U8,  CPREventBase::aedECGPulseStatus},       false},
    {CPREventBase::AEDECGRhythmStatus,                    {4, Width::U8,  CPREventBase::aedECGShockableStatus},   false},
    {CPREventBase::AEDType,                               {2, Width::U8,  CPREventBase::aedType},                 true},
    {CPREventBase::AEDRemoteControlScenarioButtonPressed, {2, Width::U8,  CPREventBase::aedRemoteScenarioNumber}, true},
    {CPREventBase::AEDRemoteControlScenarioButtonPressed, {3, Width::U8,  CPREventBase::aedRemoteApplyToAll},     false},
    {CPREventBase::AEDRemoteControlOtherButtonPressed,    {2, Width::U8,  CPREventBase::aedRemoteOtherButtonId},  true},
    {CPREventBase::AEDRemoteControlOtherButtonPressed,    {3, Width::U8,  CPREventBase::aedRemoteApplyToAll},     false},
}};
// clang-format on

CPREventBase::AEDTypes validAEDType(CPREventBase::AEDTypes type)
{
    return CPREventAED::isValidAEDType(type) ? type : CPREventBase::AEDDetectedButNotIdentified;
}

bool isShown(int kind)
{
    switch (kind) {
    case CPREventBase::AEDPowerOn:
    case CPREventBase::AEDPowerOff:
    case CPREventBase::AEDShockDelivered:
    case CPREventBase::AEDBatteryLow:
    case CPREventBase::AEDPatientMovementStarted:
    case CPREventBase::AEDECGRhythmStatus:
    case CPREventBase::AEDFailure:
    case CPREventBase::AEDPadsOK:
    case CPREventBase::AEDPadsLoose:
    case CPREventBase::AEDRemoteControlOtherButtonPressed:
        return true;
    default:
        return false;
    }
}

} // namespace

CPREventAED::CPREventAED(int msecs, CPREvents *owner) : CPREventBase(CprAedEvent, msecs, owner)
{
}

CPREventAED::CPREventAED(const CPREventAED &other, CPREvents *owner) : CPREventBase(other, owner)
{
}

CPREventAED::~CPREventAED() = default;

bool CPREventAED::isValidAEDType(AEDTypes type)
{
    return type >= AEDNotDetected && type <= AEDNotPossible;
}

CPREventAED *CPREventAED::createAEDTypeEvent(AEDTypes type, int msecs, CPREvents *list)
{
    const AEDTypes connected = validAEDType(type);
    auto *event = new CPREventAED(msecs, list);
    event->setParameter(aedEventType, AEDType);
    event->setParameter(aedType, connected);
    if (CPREventSessionInfo *info = list ? list->sessionInfo() : nullptr)
        info->setConnectedAEDType(connected);
    return event;
}

bool CPREventAED::rplmsg_RPL_GENERIC_EVENT(bls_2010::RMessage *msg)
{
    const int kind =
        msg ? MessageFields::valueAt<quint8>(*msg, kindByte) : int(AEDUnknownEventType);
    if (kind < AEDPowerOn || kind > AEDType)
        return false;
    for (const GenericField &row : genericFields) {
        if (row.kind == kind && row.needed && !MessageFields::isReadable(*msg, row.field))
            return false;
    }

    setMSecs(sessionTime());
    setParameter(aedEventType, kind);
    for (const GenericField &row : genericFields) {
        if (row.kind == kind && MessageFields::isReadable(*msg, row.field))
            MessageFields::store(*this, *msg, row.field);
    }
    if (kind == AEDType) {
        const AEDTypes connected =
            validAEDType(static_cast<AEDTypes>(parameterValue(aedType, 0).toInt()));
        setParameter(aedType, connected);
        CPREventSessionInfo *info = events() ? events()->sessionInfo() : nullptr;
        if (info && info->connectedAEDType() != connected)
            info->setConnectedAEDType(connected);
    }
    return true;
}

bool CPREventAED::isRecordedButton(int button)
{
    return button == RemoteBtnShowPadPlacementLEDS || button == RemoteBtnCPRfirst;
}

bool CPREventAED::rplmsg_RPL_AED_REMOTE_CTRL(bls_2010::RMessage *msg)
{
    const int button =
        msg ? MessageFields::valueAt<quint8>(*msg, buttonByte) : int(RemoteBtnUndefined);
    if (!isRecordedButton(button))
        return false;
    setMSecs(sessionTime());
    setParameter(aedEventType, AEDRemoteControlOtherButtonPressed);
    setParameter(aedRemoteOtherButtonId, button);
    setParameter(aedRemoteApplyToAll, ApplyToSingleManikin);
    return true;
}

bool CPREventAED::incomingMsg(bls_2010::RMessage *msg)
{
    switch (MessageFields::identifierOf(msg)) {
    case CommunicationIDs::RPL_GENERIC_EVENT:
        return rplmsg_RPL_GENERIC_EVENT(msg);
    case CommunicationIDs::RPL_AED_REMOTE_CTRL:
        return rplmsg_RPL_AED_REMOTE_CTRL(msg);
    default:
        return false;
    }
}

CPREventAED *CPREventAED::clone(CPREvents *owner)
{
    return new CPREventAED(*this, owner);
}

int CPREventAED::tag() const
{
    const EventTags tags = TagAed | TagExclFlowFraction;
    return isShown(parameterValue(aedEventType, 0).toInt()) ? tags | TagCprGui : tags;
}
