// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventCPRD.h"

#include "CPREvents.h"
#include "private/MessageLayouts.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

CPREventCPRD::CPREventCPRD(int msecs, CPREvents *owner) : CPREventBase(CprCprdEvent, msecs, owner)
{
}

CPREventCPRD::CPREventCPRD(const CPREventCPRD &other, CPREvents *owner)
    : CPREventBase(other, owner), m_secondRhythm(other.m_secondRhythm),
      m_previousRhythm(other.m_previousRhythm)
{
}

CPREventCPRD::~CPREventCPRD() = default;

bool CPREventCPRD::setRhytmn(CPREventBase::AEDEcgRhythms rhythm, CPREventBase::AEDEcgRhythms second)
{
    m_secondRhythm = second;
    if (rhythm == AED_NoECGRhythm)
        return false;
    setParameter(aedEventType, AEDECGRhythmStatus);
    setParameter(aedECGRhythm, rhythm);
    setMSecs(sessionTime());
    rememberPreviousRhythm();
    return true;
}

void CPREventCPRD::rememberPreviousRhythm()
{
    if (const CPREventBase *last = events() ? events()->last(TagCprd) : nullptr)
        m_previousRhythm = last->parameterValue(aedECGRhythm, 0).toInt();
}

bool CPREventCPRD::rplmsg_RPL_ECG_STATUS(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    const auto rhythm = MessageLayouts::valueOf(*msg, MessageLayouts::ecgRhythm);
    const auto second = MessageLayouts::valueOf(*msg, MessageLayouts::secondEcgRhythm);
    return rhythm && second
        && setRhytmn(static_cast<AEDEcgRhythms>(*rhythm), static_cast<AEDEcgRhythms>(*second));
}

bool CPREventCPRD::incomingMsg(bls_2010::RMessage *msg)
{
    return MessageLayouts::identifierOf(msg) == CommunicationIDs::RPL_ECG_STATUS
        && rplmsg_RPL_ECG_STATUS(msg);
}

void CPREventCPRD::write(QXmlStreamWriter *writer)
{
    CPREventBase::write(writer);
}

void CPREventCPRD::read(QXmlStreamReader *reader)
{
    CPREventBase::read(reader);
    rememberPreviousRhythm();
}

CPREventCPRD *CPREventCPRD::clone(CPREvents *owner)
{
    return new CPREventCPRD(*this, owner);
}

int CPREventCPRD::tag() const
{
    const EventTags tags = TagCprd | TagExclFlowFraction;
    const bool isRhythm = parameterValue(aedEventType, 0).toInt() == AEDECGRhythmStatus;
    const bool changed = parameterValue(aedECGRhythm, 0).toInt() != m_previousRhythm;
    return isRhythm && changed ? tags | TagCprGui : tags;
}
