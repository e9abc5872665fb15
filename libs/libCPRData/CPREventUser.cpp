// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventUser.h"

#include "private/MessageFields.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

namespace {

// RPL_USER_EVENT (68)
constexpr unsigned int flagByte = 1;
constexpr unsigned int nameByte = 2;
constexpr unsigned int nameLength = 64; // padded with NUL bytes

} // namespace

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
    bool ok = false;
    const quint8 flag = msg->getContentByte(flagByte, ok);
    if (!ok)
        return false;
    setMSecs(sessionTime());
    m_flag = flag != 0;
    const QByteArray name = msg->getString(ok, nameByte, nameLength);
    if (ok)
        setParameter(eventId, QString::fromUtf8(name.constData())); // to the first NUL byte
    return ok;
}

bool CPREventUser::incomingMsg(bls_2010::RMessage *msg)
{
    return MessageFields::identifierOf(msg) == CommunicationIDs::RPL_USER_EVENT
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
