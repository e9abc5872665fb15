// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTCOMPRESSION_H
#define CPREVENTCOMPRESSION_H

#include "CPREventBase.h"

/// One chest compression with its measurements.
///
/// The measurements are properties, not parameters: sessions hold thousands of compressions, and
/// an observable map for each would cost more than all the rest of the session. They are stored
/// in files as parameters of the same names. Forces of -1 were not measured.
class CPRDATA_EXPORT CPREventCompression : public CPREventBase {
    Q_OBJECT

    // clang-format off
    /// Peak depth, mm.
    Q_PROPERTY(float                compDepth               MEMBER m_compDepth)
    /// Peak force, g; -1 when not measured.
    Q_PROPERTY(int                  compPeakForce           MEMBER m_compPeakForce)
    /// Session time of the depth peak, ms.
    Q_PROPERTY(int                  compPeakTime            MEMBER m_compPeakTime)
    /// Time since the previous compression, ms.
    Q_PROPERTY(int                  compInstantaneousPeriod MEMBER m_compInstantaneousPeriod)
    /// Peak depth, mm; the same value as compDepth.
    Q_PROPERTY(float                compAbsolutePeakDepth   MEMBER m_compAbsolutePeakDepth)
    /// Depth at which the rescuer was leaning when this compression began, mm: the release depth
    /// of the compression before.
    Q_PROPERTY(float                compLeaningDepth        MEMBER m_compLeaningDepth)
    /// Release force of the compression before, g; -1 when there is none.
    Q_PROPERTY(float                compLeaningForce        MEMBER m_compLeaningForce)
    /// Release force, g; -1 when not measured.
    Q_PROPERTY(float                compReleaseForce        MEMBER m_compReleaseForce)
    /// Depth to which the chest came back, mm.
    Q_PROPERTY(float                compReleaseDepth        MEMBER m_compReleaseDepth)
    /// Hands too low, on the xiphoid.
    Q_PROPERTY(bool                 compHandposXiphoid      MEMBER m_compHandposXiphoid)
    /// Hands in a wrong place; compStatus says which, when the manikin does.
    Q_PROPERTY(bool                 compHandposError        MEMBER m_compHandposError)
    /// The chest was not released completely.
    Q_PROPERTY(bool                 compIncompleteRelease   MEMBER m_compIncompleteRelease)
    /// Rate of the waveform when the compression came, per minute.
    Q_PROPERTY(int                  compMeanRate            READ compMeanRate WRITE setCompMeanRate NOTIFY compMeanRateChanged)
    /// Position in the current cycle, from 1; 0 until the event list has numbered it. Not stored.
    Q_PROPERTY(int                  numberInCycle           READ numberInCycle)
    /// Status flags of the manikin's message. Not stored.
    Q_PROPERTY(CompEventStatusFlags compStatus              READ compStatus)
    // clang-format on

public:
    // clang-format off
    /// Flags of the manikin's message.
    enum CompEventStatus : int {
        CompStatusIncompleteRelease            =   1,
        CompStatusHandposCorrectActivated      =   4,
        CompStatusHandposXiphoidErrorDetected  =   8,
        CompStatusHandposErrorDetected         =  16,
        CompStatusHandposErrorLeftHandSide     =  32,
        CompStatusHandposErrorRightHandSide    =  64,
        CompStatushandposErrorTooHighUpOnChest = 128 // spelt so on purpose: hosts use the key
    };
    // clang-format on
    /// Flags of CompEventStatus, combined.
    Q_DECLARE_FLAGS(CompEventStatusFlags, CompEventStatus)
    Q_FLAG(CompEventStatusFlags)

    /// A compression that starts at \a msecs. From \a previous (may be null) it takes what this
    /// compression will report as leaning.
    CPREventCompression(int msecs, CPREvents *owner, const CPREventCompression *previous);
    /// A copy for the list \a owner (may be null), whose child it becomes.
    CPREventCompression(const CPREventCompression &other, CPREvents *owner);
    ~CPREventCompression() override;

    /// @{
    /// The properties of the same names.
    float compDepth() const { return m_compDepth; }
    int compPeakForce() const { return m_compPeakForce; }
    int compPeakTime() const { return m_compPeakTime; }
    int compInstantaneousPeriod() const { return m_compInstantaneousPeriod; }
    float compAbsolutePeakDepth() const { return m_compAbsolutePeakDepth; }
    float compLeaningDepth() const { return m_compLeaningDepth; }
    float compLeaningForce() const { return m_compLeaningForce; }
    float compReleaseForce() const { return m_compReleaseForce; }
    float compReleaseDepth() const { return m_compReleaseDepth; }
    bool compHandposXiphoid() const { return m_compHandposXiphoid; }
    bool compHandposError() const { return m_compHandposError; }
    bool compIncompleteRelease() const { return m_compIncompleteRelease; }
    int compMeanRate() const { return m_compMeanRate; }
    CompEventStatusFlags compStatus() const { return m_compStatus; }
    int numberInCycle() const { return m_numberInCycle; }
    /// @}

    /// Emits compMeanRateChanged() on change.
    void setCompMeanRate(int rate);
    /// The event list numbers a compression when it takes it in.
    void setNumberInCycle(int number) { m_numberInCycle = number; }

    /// Takes over a compression that the link library has decoded. Force and status stay unknown.
    void incomingCompressionEvent(const bls_2010::CommonDefs::CompressionEvent_t &compression);
    /// Takes the compression message (79); false for any other, for one that is cut, and for one
    /// whose time to the peak is negative.
    bool incomingMsg(bls_2010::RMessage *msg) override;

    /// True when released completely, with the hands in place, at a rate within the limits and
    /// deep enough for \a guidelines (null: false). The depth in mm is compared with the number
    /// that CompressionDepthMin holds, so that a set in hundredths of a millimetre never lets it be
    /// deep enough; hosts rely on it as it is.
    bool isCorrect(CPRGuidelines *guidelines) const;
    /// Compares the rate with the list's guidelines the other way round than isCorrect() does:
    /// at most the minimum and at least the maximum. Hosts rely on it as it is.
    Q_INVOKABLE bool isCompMeanRateOk() const;

    CPREventCompression *clone(CPREvents *owner) override;
    int tag() const override;

Q_SIGNALS:
    /// By setCompMeanRate(), when the rate is another.
    void compMeanRateChanged();

private:
    void setPeak(int msecsToPeak);
    void takeRateOfWaveform();

    float m_compDepth = 0;
    int m_compPeakForce = -1;
    int m_compPeakTime = 0;
    int m_compInstantaneousPeriod = 0;
    float m_compAbsolutePeakDepth = 0;
    float m_compLeaningDepth = 0;
    float m_compLeaningForce = -1;
    float m_compReleaseForce = -1;
    float m_compReleaseDepth = 0;
    bool m_compHandposXiphoid = false;
    bool m_compHandposError = false;
    bool m_compIncompleteRelease = false;
    int m_compMeanRate = 0;
    int m_numberInCycle = 0;
    float m_previousReleaseDepth = 0;
    qint16 m_previousReleaseForce = -1;
    CompEventStatusFlags m_compStatus;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(CPREventCompression::CompEventStatusFlags)

#endif
