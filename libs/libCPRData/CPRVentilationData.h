// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVENTILATIONDATA_H
#define CPRVENTILATIONDATA_H

#include "CPRWaveData.h"

#include <chestboard/CommonDefs.h>

/// The lung volume curve of the session, and the volume and ventilation rate at the moment.
class CPRDATA_EXPORT CPRVentilationData : public CPRWaveData {
    Q_OBJECT

    // clang-format off
    /// Last volume received, ml; -1 before the first.
    Q_PROPERTY(int              volume       READ volume       NOTIFY ventilationVolumeChanged)
    /// Ventilations per minute; -1 while it is not known.
    Q_PROPERTY(int              rate         READ rate         NOTIFY ventilationRateChanged)
    /// The description of the wave; a child of this object.
    Q_PROPERTY(CPRWaveformInfo *waveformInfo READ waveformInfo CONSTANT)
    // clang-format on

public:
    /// An empty wave of the session \a cprData, whose child it becomes.
    explicit CPRVentilationData(CPRData *cprData);
    /// Copies all but the owner; the description is a copy of its own.
    CPRVentilationData(const CPRVentilationData &other, CPRData *cprData);

    /// Gives the description its defaults.
    void initialize() override;

    /// Takes RPL_WAVEINFO (77) of the volume wave and RPL_VENT_RATE_UPDATE (88); false for any
    /// other.
    bool incomingMsg(bls_2010::RMessage *msg) override;
    /// Hands the message to the description; false when it is about another wave.
    bool rplmsg_RPL_WAVEINFO(bls_2010::RMessage *msg);
    /// Takes the rate; emits ventilationRateChanged() on change. Always true.
    bool rplmsg_RPL_VENT_RATE_UPDATE(bls_2010::RMessage *msg);

    /// Takes a sample of wave type 12; others are passed over.
    void waveDataReceived(bls_2010::CommonDefs::WaveType wType, int data, int seqNumber);
    /// Takes a volume (ml) with its wave sequence number: appends it, or, when the number lies
    /// inside the wave, overwrites all samples from there on. Emits ventilationVolumeChanged() on
    /// change. The first sample of a wave puts the session time into the description.
    void setVentilationData(int value, int sequence);
    /// Emits ventilationRateChanged() on change.
    void setVentilationRate(int rate);

    /// Appends \a n times the volume 0: a gap in the link is no breath. (The compression wave
    /// repeats its last depth instead.)
    void fill(int n);
    /// As that of the base, which it calls; the log names it.
    void cutOffWavedataAtTime(int msec);

    /// @{
    /// The properties of the same names.
    int volume() const { return m_volume; }
    int rate() const { return m_rate; }
    /// @}

    /// Writes the samples as signed 16-bit little-endian numbers. False when \a device does not
    /// take them all, or is null.
    bool writeVentilationWave(QIODevice *device) const;
    /// Appends the samples in \a device, to the last whole one; none when it is null. Returns why
    /// there could be more of them, because the device failed or held more than a wave can; empty
    /// when these are all.
    QString readVentilationWave(QIODevice *device);

Q_SIGNALS:
    /// A sample with another volume, ml.
    void ventilationVolumeChanged(int a_Volume);
    /// Ventilations per minute.
    void ventilationRateChanged(int a_Rate);

private:
    int m_volume = -1;
    int m_rate = -1;
};

#endif
