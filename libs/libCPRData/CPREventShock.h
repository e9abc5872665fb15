// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTSHOCK_H
#define CPREVENTSHOCK_H

#include "CPREventBase.h"

/// A delivered shock; its energy in J is the parameter shockEnergy.
class CPRDATA_EXPORT CPREventShock : public CPREventBase {
    Q_OBJECT

public:
    /// A shock of unknown energy (0) at \a msecs of session time for the list \a owner (may be
    /// null), whose child it becomes.
    CPREventShock(int msecs, CPREvents *owner);
    /// A copy for the list \a owner (may be null), whose child it becomes.
    CPREventShock(const CPREventShock &other, CPREvents *owner);
    ~CPREventShock() override;

    /// Places the shock at the session time and takes its energy, 0 from a message without one.
    bool rplmsg_RPL_DEFIB_SHOCK_EVENT(bls_2010::RMessage *msg);
    /// Takes RPL_DEFIB_SHOCK_EVENT (47) only.
    bool incomingMsg(bls_2010::RMessage *msg) override;

    CPREventShock *clone(CPREvents *owner) override;
    int tag() const override;
};

#endif
