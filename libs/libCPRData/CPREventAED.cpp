// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventAED.h"

#include "CPREventSessionInfo.h"
#include "CPREvents.h"
#include "MessageFields.h"

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
    const AEDTypes connected = isValidAEDType(type) ? type : AEDDetectedButNotIdentified;
    auto *event = new CPREventAED(msecs, list);
    event->setParameter(aedEventType, AEDType);
    event->setParameter(aedType, connected);
    if (CPREventSessionInfo *info = list ? list->sessionInfo() : nullptr)
        info->setConnectedAEDType(connected);
    return event;
}

bool CPREventAED::rplmsg_RPL_GENERIC_EVENT(bls_2010::RMessage *msg)
{
    bool ok = false;
    const quint8 kind = msg->getContentByte(kindByte, ok);
    if (!ok || kind < AEDPowerOn || kind > AEDType)
        return false;

    setMSecs(sessionTime());
    setParameter(aedEventType, int(kind));
    for (const GenericField &row : genericFields) {
        if (row.kind != kind)
            continue;
        QVariant value = MessageFields::read(*msg, row.field, ok);
        if (!ok) {
            if (row.needed)
                return false;
            continue;
        }
        if (row.kind == AEDType && !isValidAEDType(static_cast<AEDTypes>(value.toInt())))
            value = AEDDetectedButNotIdentified;
        setParameter(row.field.parameter, value);
    }
    return true;
}

bool CPREventAED::isRecordedButton(int button)
{
    return button == RemoteBtnShowPadPlacementLEDS || button == RemoteBtnCPRfirst;
}

bool CPREventAED::rplmsg_RPL_AED_REMOTE_CTRL(bls_2010::RMessage *msg)
{
    bool ok = false;
    const quint8 button = msg->getContentByte(buttonByte, ok);
    if (!isRecordedButton(button))
        return false;
    setMSecs(sessionTime());
    setParameter(aedEventType, AEDRemoteControlOtherButtonPressed);
    setParameter(aedRemoteOtherButtonId, int(button));
    setParameter(aedRemoteApplyToAll, ApplyToSingleManikin);
    return true;
}

bool CPREventAED::incomingMsg(bls_2010::RMessage *msg)
{
    switch (msg->getIdentifier()) {
    case CommunicationIDs::RPL_GENERIC_EVENT:
        return rplmsg_RPL_GENERIC_EVENT(msg);
    case CommunicationIDs::RPL_AED_REMOTE_CTRL:
        return rplmsg_RPL_AED_REMOTE_CTRL(msg);
    default:
        return false;
    }
}

CPREventAED *CPREventAED::clone(CPREvents *owner) const
{
    return new CPREventAED(*this, owner);
}

int CPREventAED::tag() const
{
    const EventTags tags = TagAed | TagExclFlowFraction;
    return isShown(parameterValue(aedEventType, 0).toInt()) ? tags | TagCprGui : tags;
}
