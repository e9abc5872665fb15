// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventUser.h"

#include "private/MessageLayouts.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

CPREventUser::CPREventUser(int msecs, CPREvents *owner, const QString &a_EventId)
    : CPREventBase(Event, msecs, owner)
{
    setParameter(eventId, a_EventId);
}

CPREventUser::CPREventUser(const CPREventUser &other, CPREvents *owner)
    : CPREventBase(other, owner), m_flag(other.m_flag)
{
}

CPREventUser::~CPREventUser() = default;

bool CPREventUser::rpl_RPL_USER_EVENT(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    const auto flag = MessageLayouts::valueOf(*msg, MessageLayouts::userEventFlag);
    if (!flag)
        return false;
    setMSecs(sessionTime());
    m_flag = *flag != 0;
    bool ok = false;
    const QByteArray name =
        msg->getString(ok, MessageLayouts::userNameByte, MessageLayouts::userNameLength);
    if (ok)
        setParameter(eventId, QString::fromUtf8(name.constData())); // to the first NUL byte
    return ok;
}

bool CPREventUser::incomingMsg(bls_2010::RMessage *msg)
{
    return MessageLayouts::identifierOf(msg) == CommunicationIDs::RPL_USER_EVENT
        && rpl_RPL_USER_EVENT(msg);
}

CPREventUser *CPREventUser::clone(CPREvents *owner)
{
    return new CPREventUser(*this, owner);
}

int CPREventUser::tag() const
{
    return TagCprGui | TagExclFlowFraction;
}
