// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRWAVEDATA_H
#define CPRWAVEDATA_H

#include "CPRDataBase.h"
#include "CPRWaveformInfo.h"

#include <QVector>

class QIODevice;

/// What the two waves of a session have in common: samples in step with time, and a description of
/// them. A wave holds a bit more than a day; what comes after that is left out with a warning.
class CPRDATA_EXPORT CPRWaveData : public CPRDataBase {
    Q_OBJECT

public:
    /// Empties the wave.
    void reset() override;

    /// The description of the wave; a child of this object.
    CPRWaveformInfo *waveformInfo() const { return m_waveformInfo; }
    /// The sample at \a index, in the unit of the wave; 0 outside the wave.
    Q_INVOKABLE int at(int index) const { return m_samples.value(index, 0); }
    /// Number of samples.
    Q_INVOKABLE int count() const { return m_samples.size(); }

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

    /// Appends \a value, or, when \a index lies inside the wave, overwrites all samples from there
    /// on.
    void record(int value, int index);
    /// Appends \a n times \a value; nothing when \a n is not positive.
    void repeat(int n, int value);
    /// Writes each sample's low 16 bits, little-endian. False when \a device does not take all, or
    /// is null.
    bool writeSamples(QIODevice *device) const;
    /// Appends the samples in \a device, to the last whole one; none when it is null. Returns why
    /// there could be more of them; empty when these are all.
    QString readSamples(QIODevice *device);

private:
    int roomFor(int n);

    QVector<int> m_samples;
    bool m_isFull = false; // and warned of
    CPRWaveformInfo *m_waveformInfo; // child of this object
};

#endif
