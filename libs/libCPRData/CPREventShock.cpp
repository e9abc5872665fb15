// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventShock.h"

#include "private/MessageFields.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

namespace {

// RPL_DEFIB_SHOCK_EVENT (47)
constexpr MessageFields::Field energyField{1, MessageFields::Width::U16, CPREventBase::shockEnergy};

} // namespace

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
    MessageFields::store(*this, *msg, energyField);
    return true;
}

bool CPREventShock::incomingMsg(bls_2010::RMessage *msg)
{
    return MessageFields::identifierOf(msg) == CommunicationIDs::RPL_DEFIB_SHOCK_EVENT
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
