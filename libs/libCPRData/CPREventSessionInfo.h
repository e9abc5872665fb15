// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTSESSIONINFO_H
#define CPREVENTSESSIONINFO_H

#include "CPREventBase.h"

#include <QUuid>

/// The standing event that holds the session's setting: the manikin with its versions, life-time
/// counters and battery, the connected AED, the CPR protocol, the learners, start, end and length.
class CPRDATA_EXPORT CPREventSessionInfo : public CPREventBase {
    Q_OBJECT

public:
    /// @{
    /// At \a msecs of session time, or a copy of \a other, for the list \a owner (may be null),
    /// whose child it becomes.
    CPREventSessionInfo(int msecs, CPREvents *owner);
    CPREventSessionInfo(const CPREventSessionInfo &other, CPREvents *owner);
    /// @}
    ~CPREventSessionInfo() override;

    /// Sets the starting values of the parameters and runs reset().
    void initialize() override;
    /// Begins a new session on the same manikin: a new session identifier, no total time, no
    /// inactivity. An identified AED that is connected is entered into the event list again. That
    /// setTotalTime() has taken a length stays known.
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
    /// The AED that the manikin reported last; AEDNotPossible before the first.
    CPREventBase::AEDTypes connectedAEDType() const { return m_connectedAEDType; }
    /// Stores the type and emits connectedAEDTypeChanged().
    void setConnectedAEDType(CPREventBase::AEDTypes type);

    /// Local date and time to the second with the offset from UTC, ISO 8601.
    QString getCurrentTimeAsString() const;
    /// The manikin's kind (ManikinType); NOT_DEFINED before the manikin has told.
    int getManikinType() const;
    /// The chest's stiffness (ManikinStiffness); medium before the manikin has told.
    int getManikinStiffness() const;
    /// Empty after a report of the manikin, whatever card it names; hosts expect the empty text.
    QString getCPRCardID() const;
    /// The session's identifier, a UUID in braces: new with each reset(), and not stored in files.
    QString getSessionID() const;

    /// @{
    /// Whom the manikin stands for, by its kind. The infants here are not those that get the fine
    /// wave data step; both sets are intended. A newborn is no infant.
    Q_INVOKABLE bool isInfant() const;
    Q_INVOKABLE bool isInfant9Months() const;
    Q_INVOKABLE bool isNewborn() const;
    Q_INVOKABLE bool isChild() const;
    /// @}
    /// The age letter: the one in the guideline set's identifier, else N newborn, T infant of nine
    /// months, I infant, C child, A adult.
    Q_INVOKABLE QString patientAgeType() const;
    /// False when the manikin reports the Feedpod version "0.0"; true also before it reports one.
    Q_INVOKABLE bool hasFeedpod() const;
    /// The CPR protocol in English words; "Unknown protocol" for a value outside 0 to 5.
    Q_INVOKABLE QString cprProtocolToString() const;

    /// Takes RPL_VERSIONINFO (64), RPL_LIFETIMEINFO (70), RPL_COMP_INACTIVITY_TIME (81),
    /// RPL_CPR_PROTOCOL_CTRL (101), RPL_CPRCARD_STATUS_EV (106) and RPL_MANIKIN_STIFFNESS_EV
    /// (107); false for any other.
    bool incomingMsg(bls_2010::RMessage *msg) override;
    /// @{
    /// The handlers of incomingMsg(), for messages of their own identifier only. Always true.
    bool rplmsg_RPL_VERSIONINFO(bls_2010::RMessage *msg);
    bool rplmsg_RPL_LIFETIMEINFO(bls_2010::RMessage *msg);
    bool rplmsg_RPL_COMP_INACTIVITY_TIME(bls_2010::RMessage *msg);
    bool rplmsg_RPL_CPRCARD_STATUS_EV(bls_2010::RMessage *msg);
    bool rplmsg_RPL_MANIKIN_STIFFNESS_EV(bls_2010::RMessage *msg);
    /// @}

    CPREventSessionInfo *clone(CPREvents *owner) override;

Q_SIGNALS:
    /// By setVersionInfo(), with this event.
    void sessionInfoChanged(CPREventBase *event);
    /// By setConnectedAEDType(), and by setVersionInfo() on change.
    void connectedAEDTypeChanged();
    /// @{
    /// The manikin has told how many it has taken in its life.
    void manikinCompressionCountChanged(uint value);
    void manikinVentilationCountChanged(uint value);
    /// @}

public Q_SLOTS:
    /// Stores the wave delay of the session's compression wave and the end time.
    void onScoresReady();
    /// Stores the session's length in s. Takes the first one that is not 0 in the life of the event
    /// and passes over all later ones, also after reset(), which makes the stored length 0.
    void setTotalTime(int a_Time);
    /// setTotalTime(0), which stores 0 unless a length has been stored.
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
