// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTCPRD_H
#define CPREVENTCPRD_H

#include "CPREventBase.h"

/// An ECG rhythm that the manikin shows; the rhythm is the parameter aedECGRhythm.
class CPRDATA_EXPORT CPREventCPRD : public CPREventBase {
    Q_OBJECT

public:
    /// @{
    /// At \a msecs of session time, or a copy of \a other, for the list \a owner (may be null),
    /// whose child it becomes.
    CPREventCPRD(int msecs, CPREvents *owner);
    CPREventCPRD(const CPREventCPRD &other, CPREvents *owner);
    /// @}
    ~CPREventCPRD() override;

    /// The second rhythm value of the last setRhytmn().
    int secondRhythm() const { return m_secondRhythm; }
    /// The rhythm of the latest rhythm event before this one; 0 when there is none.
    int previousRhythm() const { return m_previousRhythm; }

    /// Places the event at the session time with \a rhythm; false for AED_NoECGRhythm. Spelt so
    /// on purpose: the name is part of the interface.
    bool setRhytmn(CPREventBase::AEDEcgRhythms rhythm, CPREventBase::AEDEcgRhythms second);
    /// Takes both rhythms of the message; false when one is missing or the first is none.
    bool rplmsg_RPL_ECG_STATUS(bls_2010::RMessage *msg);
    /// Takes RPL_ECG_STATUS (52) only.
    bool incomingMsg(bls_2010::RMessage *msg) override;

    using CPREventBase::write;
    void write(QXmlStreamWriter *writer) override;
    /// Reads the parameters; the rhythm before this one is that of the list read so far.
    void read(QXmlStreamReader *reader) override;

    CPREventCPRD *clone(CPREvents *owner) override;
    /// Carries TagCprGui only when the rhythm changed, so that only changes reach the interface.
    int tag() const override;

private:
    void rememberPreviousRhythm();

    int m_secondRhythm = 0;
    int m_previousRhythm = 0;
};

#endif
