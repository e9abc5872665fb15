// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTUSER_H
#define CPREVENTUSER_H

#include "CPREventBase.h"

/// An event that the host or the manikin names; the name is the parameter eventId.
class CPRDATA_EXPORT CPREventUser : public CPREventBase {
    Q_OBJECT

public:
    /// @{
    /// An event named \a a_EventId at \a msecs of session time, or a copy of \a other, for the list
    /// \a owner (may be null), whose child it becomes.
    CPREventUser(int msecs, CPREvents *owner, const QString &a_EventId);
    CPREventUser(const CPREventUser &other, CPREvents *owner);
    /// @}
    ~CPREventUser() override;

    /// The flag that came with the manikin's message.
    bool flag() const { return m_flag; }

    /// Places the event at the session time and takes flag and name; false when one is missing.
    bool rpl_RPL_USER_EVENT(bls_2010::RMessage *msg);
    /// Takes RPL_USER_EVENT (68) only.
    bool incomingMsg(bls_2010::RMessage *msg) override;

    CPREventUser *clone(CPREvents *owner) override;
    int tag() const override;

private:
    bool m_flag = false;
};

#endif
