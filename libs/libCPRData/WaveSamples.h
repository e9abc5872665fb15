// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef WAVESAMPLES_H
#define WAVESAMPLES_H

#include <QVector>

class QIODevice;

/// The samples of one wave: what the compression and the ventilation wave have in common.
class WaveSamples {
public:
    int count() const { return m_samples.size(); }
    /// The sample at \a index; 0 outside the wave, the place after the last sample included.
    int at(int index) const { return m_samples.value(index, 0); }
    const QVector<int> &values() const { return m_samples; }

    /// Empties the wave and makes room for \a reserved samples.
    void clear(int reserved = 0);
    /// Appends \a value, or, when \a index lies inside the wave, overwrites all from there on.
    void record(int value, int index);
    /// Appends \a n times \a value; nothing when \a n is not positive.
    void fill(int n, int value);
    /// Keeps the samples up to and including the one at \a msec: the first one at 0, none a period
    /// before it, all when it lies behind the wave.
    void cutOff(int msec, int samplePeriod);

    /// Writes each sample's low 16 bits, little-endian. False when the device does not take all.
    bool write(QIODevice *device) const;
    /// Appends the samples that \a device (may be null) holds, to the last whole one.
    void read(QIODevice *device);

private:
    QVector<int> m_samples;
};

#endif
