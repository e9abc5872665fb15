// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventInactivityCPR.h"

#include "private/MessageLayouts.h"
#include "private/Units.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <QLoggingCategory>

using Units::msecsPerSecond;
using Units::sessionMsecs;

Q_LOGGING_CATEGORY(lcInactivity, "Kelmar.CPRData.Event.InactivityCPR", QtWarningMsg)

namespace {

constexpr int noStart = -1;
// Reports come in whole seconds, so two of the same pause can differ by one.
constexpr qint64 startToleranceMs = 1000;

} // namespace

CPREventInactivityCPR::CPREventInactivityCPR(int msecs, CPREvents *owner)
    : CPREventBase(CprInactivityCPR, msecs, owner)
{
}

CPREventInactivityCPR::CPREventInactivityCPR(const CPREventInactivityCPR &other, CPREvents *owner)
    : CPREventBase(other, owner)
{
}

CPREventInactivityCPR::~CPREventInactivityCPR() = default;

bool CPREventInactivityCPR::setInactivityTime(qint32 a_InactivityTimeSecs, bool fromMessage)
{
    const int now = sessionTime();
    qCDebug(lcInactivity) << "sessionTime" << now << "a_InactivityTimeSecs" << a_InactivityTimeSecs;
    if (a_InactivityTimeSecs <= 0 || now <= 0)
        return false;

    const qint64 lengthMs = qint64(a_InactivityTimeSecs) * msecsPerSecond;
    const qint64 reportedStart = now - lengthMs;

    if (msecs() == noStart) {
        if (reportedStart < 0)
            qCInfo(lcInactivity) << "out of sync, msec" << reportedStart;
        setMSecs(sessionMsecs(qMax<qint64>(reportedStart, 0)));
        setEventEndTime(now);
    } else if (qAbs(reportedStart - msecs()) <= startToleranceMs) {
        setEventEndTime(sessionMsecs(msecs() + lengthMs));
    } else {
        if (!fromMessage) {
            qCInfo(lcInactivity) << "out of sync, msec" << reportedStart << "should have been"
                                 << msecs();
        }
        return false;
    }
    setParameter(compInactivity, a_InactivityTimeSecs);
    return true;
}

bool CPREventInactivityCPR::rplmsg_RPL_COMP_INACTIVITY_TIME(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    const int secs = MessageLayouts::intOf(*msg, MessageLayouts::inactivityTime);
    return secs >= 0 && setInactivityTime(secs, true);
}

bool CPREventInactivityCPR::incomingMsg(bls_2010::RMessage *msg)
{
    return MessageLayouts::identifierOf(msg) == CommunicationIDs::RPL_COMP_INACTIVITY_TIME
        && rplmsg_RPL_COMP_INACTIVITY_TIME(msg);
}

bool CPREventInactivityCPR::filterEvent(CPREventBase *previous)
{
    return previous && previous->type() == CprInactivityCPR && previous->eventEndTime() > msecs();
}

void CPREventInactivityCPR::read(QXmlStreamReader *reader)
{
    CPREventBase::read(reader);
    const qint64 secs = parameterValue(compInactivity, 0).toInt();
    setEventEndTime(sessionMsecs(msecs() + secs * msecsPerSecond));
}

CPREventInactivityCPR *CPREventInactivityCPR::clone(CPREvents *owner)
{
    return new CPREventInactivityCPR(*this, owner);
}

int CPREventInactivityCPR::tag() const
{
    return TagInactivity;
}
