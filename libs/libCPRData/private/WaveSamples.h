// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef WAVESAMPLES_H
#define WAVESAMPLES_H

#include <QString>
#include <QVector>

class QIODevice;

/// The samples of one wave: what the compression and the ventilation wave have in common. A wave
/// holds the first Limits::maxSamples that come; what comes after them is left out.
class WaveSamples {
public:
    int count() const { return m_samples.size(); }
    /// The sample at \a index; 0 outside the wave, the place after the last sample included.
    int at(int index) const { return m_samples.value(index, 0); }
    const QVector<int> &values() const { return m_samples; }

    /// Empties the wave and makes room for \a reserved samples.
    void clear(int reserved = 0);
    /// Appends \a value, or, when \a index lies inside the wave, overwrites all from there on.
    void record(int value, int index)
    {
        if (index >= 0 && index < m_samples.size())
            overwrite(index, value);
        else if (roomFor(1) == 1)
            m_samples.append(value);
    }
    /// Appends \a n times \a value; nothing when \a n is not positive.
    void fill(int n, int value);
    /// Keeps the first msec / samplePeriod + 1 samples: one at 0, none a period before it, all when
    /// \a msec lies behind the wave.
    void cutOff(int msec, int samplePeriod);

    /// Writes each sample's low 16 bits, little-endian. False when the device does not take all.
    bool write(QIODevice *device) const;
    /// Appends the samples that \a device (may be null) holds, to the last whole one. Returns why
    /// there could be more of them; empty when these are all.
    QString read(QIODevice *device);

private:
    void overwrite(int index, int value);
    /// How many of \a n further samples the wave has room for. The first that it has none for is
    /// warned of.
    int roomFor(int n);

    QVector<int> m_samples;
    bool m_isFull = false; // and warned of
};

#endif
