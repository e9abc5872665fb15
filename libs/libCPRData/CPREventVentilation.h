// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPREVENTVENTILATION_H
#define CPREVENTVENTILATION_H

#include "CPREventBase.h"

/// One ventilation with its measurements, which are properties as those of a compression are.
class CPRDATA_EXPORT CPREventVentilation : public CPREventBase {
    Q_OBJECT

    // clang-format off
    /// Inflated volume, ml.
    Q_PROPERTY(int  ventVolume              MEMBER m_ventVolume)
    /// Rate of the waveform when the ventilation came, per minute.
    Q_PROPERTY(int  ventRate                MEMBER m_ventRate)
    /// Time since the previous ventilation, ms.
    Q_PROPERTY(int  ventInstantaneousPeriod MEMBER m_ventInstantaneousPeriod)
    /// Session time of the volume peak, ms.
    Q_PROPERTY(int  ventPeakTime            MEMBER m_ventPeakTime)
    /// Given while the chest was compressed.
    Q_PROPERTY(bool ventDuringCompression   MEMBER m_ventDuringCompression)
    // clang-format on

public:
    /// @{
    /// At \a msecs of session time, or a copy of \a other, for the list \a owner (may be null),
    /// whose child it becomes.
    CPREventVentilation(int msecs, CPREvents *owner);
    CPREventVentilation(const CPREventVentilation &other, CPREvents *owner);
    /// @}
    ~CPREventVentilation() override;

    /// @{
    /// The properties of the same names.
    int ventVolume() const { return m_ventVolume; }
    int ventRate() const { return m_ventRate; }
    int ventInstantaneousPeriod() const { return m_ventInstantaneousPeriod; }
    int ventPeakTime() const { return m_ventPeakTime; }
    bool ventDuringCompression() const { return m_ventDuringCompression; }
    /// @}

    /// Takes over a ventilation that the link library has decoded. Spelt so on purpose: the name
    /// is part of the interface.
    void incomingVitilationEvent(bls_2010::CommonDefs::VentilationEvent_t ventilation);
    /// Takes the ventilation message (80); false for any other and for one that is cut.
    bool incomingMsg(bls_2010::RMessage *msg) override;

    /// True when the volume is at least the minimum and below the maximum of \a guidelines (null:
    /// false) and, for \a ventilationsOnly, the rate is within the limits for ventilations alone or
    /// not known: the period is not positive, or longer than a minute.
    bool isCorrect(CPRGuidelines *guidelines, bool ventilationsOnly) const;

    CPREventVentilation *clone(CPREvents *owner) override;
    int tag() const override;

private:
    void takeRateOfWaveform();

    int m_ventVolume = 0;
    int m_ventRate = 0;
    int m_ventInstantaneousPeriod = 0;
    int m_ventPeakTime = 0;
    bool m_ventDuringCompression = false;
};

#endif
