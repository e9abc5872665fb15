// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventAED.h"

#include "CPREventSessionInfo.h"
#include "CPREvents.h"
#include "private/MessageLayouts.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

namespace {

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
    if (!msg)
        return false;
    const int kind = MessageLayouts::intOf(*msg, MessageLayouts::aedEventKind);
    if (kind < AEDPowerOn || kind > AEDType)
        return false;
    for (const MessageLayouts::AedDetail &detail : MessageLayouts::aedDetails) {
        if (detail.kind == kind && detail.field.missing.kind == MessageLayouts::Missing::Refused
            && !MessageLayouts::valueOf(*msg, detail.field)) {
            return false;
        }
    }

    setMSecs(sessionTime());
    setParameter(aedEventType, kind);
    for (const MessageLayouts::AedDetail &detail : MessageLayouts::aedDetails) {
        if (detail.kind == kind)
            MessageLayouts::store(*this, detail.field, MessageLayouts::valueOf(*msg, detail.field));
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
    if (!msg)
        return false;
    const int button = MessageLayouts::intOf(*msg, MessageLayouts::remoteButton);
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
    switch (MessageLayouts::identifierOf(msg)) {
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
