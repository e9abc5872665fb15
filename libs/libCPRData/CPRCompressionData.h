// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRCOMPRESSIONDATA_H
#define CPRCOMPRESSIONDATA_H

#include "CPRWaveData.h"

#include <chestboard/CommonDefs.h>

/// The depth curve of the session's chest compressions, and the depth and rate at the moment.
///
/// Depths are in units of 10 micrometres. Which of the two depths that a manikin sends forms the
/// wave is decided by UseAbsoluteDepth of the session's guideline set; the other is shown only.
class CPRDATA_EXPORT CPRCompressionData : public CPRWaveData {
    Q_OBJECT

    // clang-format off
    /// @{
    /// Last depth received, 10 micrometres; 0 in a new session.
    Q_PROPERTY(int              absoluteDepth   READ absoluteDepth   NOTIFY absoluteCompressionDepthChanged)
    Q_PROPERTY(int              relativeDepth   READ relativeDepth   NOTIFY relativeCompressionDepthChanged)
    /// @}
    /// Compressions per minute as the manikin reports them; 0 in a new session and in a pause.
    Q_PROPERTY(int              compressionRate READ compressionRate NOTIFY compressionRateChanged)
    /// The description of the wave; a child of this object.
    Q_PROPERTY(CPRWaveformInfo *waveformInfo    READ waveformInfo    CONSTANT)
    // clang-format on

public:
    /// An empty wave of the session \a cprData, whose child it becomes.
    explicit CPRCompressionData(CPRData *cprData);
    /// Copies all but the owner; the description is a copy of its own.
    CPRCompressionData(const CPRCompressionData &other, CPRData *cprData);

    /// Empties the wave and gives the description its defaults.
    void initialize() override;
    /// Empties the wave. Depths and rate become 0, but the depth that fill() repeats stays.
    void reset() override;

    /// Takes RPL_COMP_RATE_UPDATE (87), RPL_COMP_PEAK_EV (104) and RPL_WAVEINFO (77) of the wave
    /// type in use; false for any other.
    bool incomingMsg(bls_2010::RMessage *msg) override;
    /// Takes the rate; emits compressionRateChanged() on change. Always true.
    bool rplmsg_RPL_COMP_RATE_UPDATE(bls_2010::RMessage *msg);
    /// Emits compressionPeakDepthChanged() each time; the depth is not kept. Always true.
    bool rplmsg_RPL_COMP_PEAK_EV(bls_2010::RMessage *msg);
    /// Hands the message to the description; false when it is about another wave.
    bool rplmsg_RPL_WAVEINFO(bls_2010::RMessage *msg);

    /// Takes a sample of wave type 9 (relative) or 13 (absolute); others are passed over.
    void waveDataReceived(bls_2010::CommonDefs::WaveType wType, int data, int seqNumber);
    /// @{
    /// Take a depth (10 micrometres) with its wave sequence number, and emit the matching signal
    /// on change.
    void setAbsoluteCompressionData(int value, int index);
    void setRelativeCompressionData(int value, int index);
    /// @}
    /// Appends \a value to the wave, or, when \a index lies inside the wave, overwrites all
    /// samples from there on.
    void compressionWaveAppend(int value, int index);
    /// Emits compressionRateChanged() on change.
    void setCompressionRate(short rate);

    /// Repeats the last depth \a n times, so that the wave stays in step with time.
    void fill(int n);

    /// @{
    /// The properties of the same names.
    int absoluteDepth() const { return m_absoluteDepth; }
    int relativeDepth() const { return m_relativeDepth; }
    short compressionRate() const { return m_compressionRate; }
    /// @}

    /// Time that the samples cover, ms.
    Q_INVOKABLE int sessionTimeFromData() const;

    /// Writes the samples as signed 16-bit little-endian numbers. False when \a device does not
    /// take them all, or is null. Spelt so on purpose, as the next one: the names are part of the
    /// interface.
    bool writeCompresseionWave(QIODevice *device) const;
    /// Appends the samples in \a device, to the last whole one; none when it is null. Returns why
    /// there could be more of them, because the device failed or held more than a wave can; empty
    /// when these are all.
    QString readCompresseionWave(QIODevice *device);

Q_SIGNALS:
    /// A sample with another depth, 10 micrometres.
    void absoluteCompressionDepthChanged(int a_depth10Micrometer);
    /// The depth of the compression that has just reached its peak, 10 micrometres; each time.
    void compressionPeakDepthChanged(int a_depth10Micrometer);
    /// Compressions per minute.
    void compressionRateChanged(int a_Rate);
    /// A sample with another depth, 10 micrometres.
    void relativeCompressionDepthChanged(int a_depth10Micrometer);

private:
    bool usesAbsoluteDepth() const;

    int m_absoluteDepth = -1;
    int m_relativeDepth = 1;
    int m_lastDepth = 0;
    short m_compressionRate = -1;
};

#endif
