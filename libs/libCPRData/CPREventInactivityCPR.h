// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTINACTIVITYCPR_H
#define CPREVENTINACTIVITYCPR_H

#include "CPREventBase.h"

/// A pause in compressions, from the last activity to the moment the pause was last reported.
///
/// The manikin reports the running length in whole seconds, again and again while the pause lasts.
/// The same event is stretched while the reports agree on its start. The length in s is the
/// parameter compInactivity; a start of -1 marks an event that has no place yet.
class CPRDATA_EXPORT CPREventInactivityCPR : public CPREventBase {
    Q_OBJECT

public:
    /// @{
    /// At \a msecs of session time, or a copy of \a other, for the list \a owner (may be null),
    /// whose child it becomes.
    CPREventInactivityCPR(int msecs, CPREvents *owner);
    CPREventInactivityCPR(const CPREventInactivityCPR &other, CPREvents *owner);
    /// @}
    ~CPREventInactivityCPR() override;

    /// Places the event, which then began \a a_InactivityTimeSecs (s) before the session time, or
    /// stretches it to that length.
    /// False, and nothing changed, when the length or the session time is not positive or the
    /// report's start is more than a second away from the event's; the latter is logged unless
    /// the report is \a fromMessage.
    bool setInactivityTime(qint32 a_InactivityTimeSecs, bool fromMessage);
    /// Takes the pause length of the message; false for a negative one.
    bool rplmsg_RPL_COMP_INACTIVITY_TIME(bls_2010::RMessage *msg);
    /// Takes RPL_COMP_INACTIVITY_TIME (81) only.
    bool incomingMsg(bls_2010::RMessage *msg) override;

    /// True when \a previous is a pause that reaches past this one's start.
    bool filterEvent(CPREventBase *previous) override;
    /// Reads the parameters; the end follows from start and length.
    void read(QXmlStreamReader *reader) override;

    CPREventInactivityCPR *clone(CPREvents *owner) override;
    int tag() const override;
};

#endif
