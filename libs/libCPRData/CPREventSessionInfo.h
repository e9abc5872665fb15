// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTSESSIONINFO_H
#define CPREVENTSESSIONINFO_H

#include "CPREventBase.h"

#include <QUuid>

/// The standing event that holds the session's setting: the manikin with its versions, life-time
/// counters and battery, the connected AED, the CPR protocol, the learners, start, end and length.
class CPRDATA_EXPORT CPREventSessionInfo final : public CPREventBase {
    Q_OBJECT

public:
    CPREventSessionInfo(int msecs, CPREvents *owner);
    CPREventSessionInfo(const CPREventSessionInfo &other, CPREvents *owner);
    ~CPREventSessionInfo() override;

    /// Sets the starting values of the parameters and runs reset().
    void initialize() override;
    /// Begins a new session on the same manikin: a new session identifier, no total time, no
    /// inactivity. An identified AED that is connected is entered into the event list again.
    /// What setTotalTime() has latched stays.
    void reset() override;

    /// Takes over what RPL_VERSIONINFO reports. Enters an AED of a new kind into the event list,
    /// announces a changed kind, and emits sessionInfoChanged().
    void setVersionInfo(int type, const QString &firmware, const QString &rfid,
                        const QString &feedpod, CPREventBase::AEDTypes aed);
    /// Emits manikinCompressionCountChanged().
    void setManikinCompressionCount(uint value);
    /// Emits manikinVentilationCountChanged().
    void setManikinVentilationCount(uint value);
    /// Adds \a secs to the time without compressions, in 16 bits; a negative one adds nothing.
    void setCompressionInactivity(short secs);
    /// Takes the CPR protocol; the time without compressions begins anew.
    void setCprProtocol(signed char protocol);

    /// Step in ml or hundredths of a mm to which wave samples are reduced.
    int waveDataStep() const { return m_waveDataStep; }
    CPREventBase::AEDTypes connectedAEDType() const { return m_connectedAEDType; }
    /// Stores the type and emits connectedAEDTypeChanged().
    void setConnectedAEDType(CPREventBase::AEDTypes type);

    /// Local date and time to the second with the offset from UTC, ISO 8601.
    QString getCurrentTimeAsString() const;
    int getManikinType() const;
    int getManikinStiffness() const;
    QString getCPRCardID() const;
    /// The session's identifier in braces.
    QString getSessionID() const;

    /// The infants here are not those that get the fine wave data step; both sets are intended.
    Q_INVOKABLE bool isInfant() const;
    Q_INVOKABLE bool isInfant9Months() const;
    Q_INVOKABLE bool isNewborn() const;
    Q_INVOKABLE bool isChild() const;
    /// The age letter: the one in the guideline set's identifier, else N newborn, T infant of nine
    /// months, I infant, C child, A adult.
    Q_INVOKABLE QString patientAgeType() const;
    Q_INVOKABLE bool hasFeedpod() const;
    Q_INVOKABLE QString cprProtocolToString() const;

    /// Takes RPL_VERSIONINFO (64), RPL_LIFETIMEINFO (70), RPL_COMP_INACTIVITY_TIME (81),
    /// RPL_CPR_PROTOCOL_CTRL (101), RPL_CPRCARD_STATUS_EV (106) and RPL_MANIKIN_STIFFNESS_EV
    /// (107); false for any other.
    bool incomingMsg(bls_2010::RMessage *msg) override;
    bool rplmsg_RPL_VERSIONINFO(bls_2010::RMessage *msg);
    bool rplmsg_RPL_LIFETIMEINFO(bls_2010::RMessage *msg);
    bool rplmsg_RPL_COMP_INACTIVITY_TIME(bls_2010::RMessage *msg);
    bool rplmsg_RPL_CPRCARD_STATUS_EV(bls_2010::RMessage *msg);
    bool rplmsg_RPL_MANIKIN_STIFFNESS_EV(bls_2010::RMessage *msg);

    CPREventSessionInfo *clone(CPREvents *owner) const override;

Q_SIGNALS:
    void sessionInfoChanged(CPREventBase *event);
    void connectedAEDTypeChanged();
    void manikinCompressionCountChanged(uint value);
    void manikinVentilationCountChanged(uint value);

public Q_SLOTS:
    /// Stores the wave delay of the session's compression wave and the end time.
    void onScoresReady();
    /// Stores the session's length in s. The first length that is not 0 stays for the life of the
    /// event; later ones are passed over.
    void setTotalTime(int a_Time);
    void setTotalTime();
    /// Stores the current time as the session's start.
    void setStartTime();

private:
    int m_waveDataStep = 0;
    qint16 m_compressionInactivity = 0;
    CPREventBase::AEDTypes m_connectedAEDType = CPREventBase::AEDNotPossible;
    int m_totalTimeLatch = 0;
    QUuid m_sessionID;
};

#endif
