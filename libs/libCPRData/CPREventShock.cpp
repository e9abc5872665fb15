// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventShock.h"

#include "private/MessageLayouts.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

CPREventShock::CPREventShock(int msecs, CPREvents *owner)
    : CPREventBase(ShockDelivered, msecs, owner)
{
    setParameter(shockEnergy, 0);
}

CPREventShock::CPREventShock(const CPREventShock &other, CPREvents *owner)
    : CPREventBase(other, owner)
{
}

CPREventShock::~CPREventShock() = default;

bool CPREventShock::rplmsg_RPL_DEFIB_SHOCK_EVENT(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    setMSecs(sessionTime());
    setParameter(shockEnergy, MessageLayouts::intOf(*msg, MessageLayouts::shockEnergy));
    return true;
}

bool CPREventShock::incomingMsg(bls_2010::RMessage *msg)
{
    return MessageLayouts::identifierOf(msg) == CommunicationIDs::RPL_DEFIB_SHOCK_EVENT
        && rplmsg_RPL_DEFIB_SHOCK_EVENT(msg);
}

CPREventShock *CPREventShock::clone(CPREvents *owner)
{
    return new CPREventShock(*this, owner);
}

int CPREventShock::tag() const
{
    return TagCprGui | TagOther | TagExclFlowFraction;
}
