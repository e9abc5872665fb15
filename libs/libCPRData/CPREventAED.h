// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTAED_H
#define CPREVENTAED_H

#include "CPREventBase.h"

/// An AED trainer event, a press on the remote control, or the kind of AED that is connected;
/// which one is the parameter aedEventType (AEDEventType).
class CPRDATA_EXPORT CPREventAED : public CPREventBase {
    Q_OBJECT

public:
    /// @{
    /// At \a msecs of session time, or a copy of \a other, for the list \a owner (may be null),
    /// whose child it becomes.
    CPREventAED(int msecs, CPREvents *owner);
    CPREventAED(const CPREventAED &other, CPREvents *owner);
    /// @}
    ~CPREventAED() override;

    /// An event at \a msecs that says that an AED of \a type is connected; a type that is not
    /// valid becomes AEDDetectedButNotIdentified. The session info of \a list takes the type over
    /// and announces it. The caller adds the event to the list, which may be null.
    static CPREventAED *createAEDTypeEvent(AEDTypes type, int msecs, CPREvents *list);
    /// True for the values 0 to 4.
    static bool isValidAEDType(AEDTypes type);

    /// Takes an AED trainer event at the session time; false, and nothing changed, for an unknown
    /// kind, and when a byte that the kind needs is missing. The kind of AED that an event of the
    /// kind AEDType reports goes to the list's session info, which announces another one.
    bool rplmsg_RPL_GENERIC_EVENT(bls_2010::RMessage *msg);
    /// Takes a press of the buttons for pad placement and for CPR first, at the session time, as
    /// one that concerns this manikin; false for any other button.
    bool rplmsg_RPL_AED_REMOTE_CTRL(bls_2010::RMessage *msg);
    /// Takes RPL_GENERIC_EVENT (48) and RPL_AED_REMOTE_CTRL (50) only.
    bool incomingMsg(bls_2010::RMessage *msg) override;

    /// True for the remote-control buttons that become events.
    static bool isRecordedButton(int button);

    CPREventAED *clone(CPREvents *owner) override;
    /// Carries TagCprGui for the kinds that the interface shows.
    int tag() const override;
};

#endif
