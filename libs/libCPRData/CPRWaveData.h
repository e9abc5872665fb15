// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRWAVEDATA_H
#define CPRWAVEDATA_H

#include "CPRDataBase.h"
#include "CPRWaveformInfo.h"

#include <memory>

class QIODevice;
class WaveSamples;

/// What the two waves of a session have in common: samples in step with time, and a description of
/// them.
class CPRDATA_EXPORT CPRWaveData : public CPRDataBase {
    Q_OBJECT

public:
    ~CPRWaveData() override;

    /// Empties the wave.
    void reset() override;

    /// The description of the wave; a child of this object.
    CPRWaveformInfo *waveformInfo() const { return m_waveformInfo; }
    /// The sample at \a index, in the unit of the wave; 0 outside the wave.
    Q_INVOKABLE int at(int index) const;
    /// Number of samples.
    Q_INVOKABLE int count() const;

    /// Keeps the first \a msec (ms of session time) / sample period + 1 samples, all when there are
    /// fewer.
    void cutOffWavedataAtTime(int msec);

    /// Writes the description with the current number of samples.
    void writeWaveformInfo(QXmlStreamWriter *writer);
    /// Reads the next "waveForm" into the description.
    void readWaveformInfo(QXmlStreamReader *reader);

protected:
    /// @{
    /// An empty wave, or a copy of all but the owner, of the session \a cprData, whose child it
    /// becomes.
    explicit CPRWaveData(CPRData *cprData);
    CPRWaveData(const CPRWaveData &other, CPRData *cprData);
    /// @}

    /// @{
    /// The samples, which belong to the wave.
    WaveSamples &samples() { return *m_samples; }
    const WaveSamples &samples() const { return *m_samples; }
    /// @}

private:
    std::unique_ptr<WaveSamples> m_samples;
    CPRWaveformInfo *m_waveformInfo; // child of this object
};

#endif
