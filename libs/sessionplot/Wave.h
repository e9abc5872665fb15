// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_WAVE_H
#define SESSIONPLOT_WAVE_H

#include <QtGlobal>

#include <limits>
#include <vector>

namespace sessionplot {

/// The lowest and the highest of some samples; none of them when low is above high.
struct Extremes {
    int low = std::numeric_limits<int>::max();
    int high = std::numeric_limits<int>::min();

    bool isEmpty() const { return low > high; }
    void add(int value) { add(Extremes{value, value}); }
    void add(const Extremes &other)
    {
        low = other.low < low ? other.low : low;
        high = other.high > high ? other.high : high;
    }
};

/// A copy of a sampled wave that knows the extremes of any stretch without walking over it.
///
/// Above the samples stand levels of extremes, each over 16 entries of the one below, so that a
/// stretch of any length costs some dozens of comparisons.
class Wave {
public:
    Wave();

    int count() const { return static_cast<int>(m_samples.size()); }
    int at(int index) const { return m_samples[static_cast<std::size_t>(index)]; }
    /// The extremes of the samples from \a begin to before \a end, both brought into the wave.
    Extremes extremes(int begin, int end) const;

    /// Physical value of one sample unit.
    double unit() const { return m_unit; }
    /// Time between two samples, ms; always positive.
    int period() const { return m_period; }
    /// Session time of the first sample, ms.
    qint64 start() const { return m_start; }
    double msecs(int index) const { return double(m_start) + double(index) * m_period; }
    /// The index of the first sample at or after \a msecs, from 0 to count().
    int indexAt(double msecs) const;
    void describe(double unit, int period, qint64 start);

    /// Changes whenever samples that were there have changed or gone, but not while samples are
    /// only appended.
    quint64 generation() const { return m_generation; }
    void clear();
    /// Makes this a copy of a wave of \a newCount samples, of which \a sample(i) gives the i-th.
    /// Copies what is new. Since the last call the wave may also have been cut, or overwritten from
    /// some sample to its end.
    template <typename Sample> void follow(int newCount, Sample sample);

private:
    void beginGeneration();
    void cut(int count);
    void extendLevels();

    std::vector<int> m_samples;
    std::vector<std::vector<Extremes>> m_levels; // full blocks only
    quint64 m_generation = 0;
    double m_unit = 1;
    int m_period = 1;
    qint64 m_start = 0;
};

template <typename Sample> void Wave::follow(int newCount, Sample sample)
{
    if (newCount < count())
        cut(newCount);

    // Overwriting leaves one value from there to the end that we know. So the search for a
    // difference may end where enough samples are the same and have more than one value.
    constexpr int enough = 50;
    int firstChanged = count();
    int same = 0;
    bool varied = false;
    for (int i = count() - 1; i >= 0 && (same < enough || !varied); --i) {
        const int value = at(i);
        if (sample(i) != value) {
            firstChanged = i;
            same = 0;
            varied = false;
        } else {
            varied = varied || (same > 0 && value != at(i + 1));
            ++same;
        }
    }
    if (firstChanged < count())
        cut(firstChanged);

    const int oldCount = count();
    m_samples.resize(static_cast<std::size_t>(newCount));
    for (int i = oldCount; i < newCount; ++i)
        m_samples[static_cast<std::size_t>(i)] = sample(i);
    extendLevels();
}

} // namespace sessionplot

#endif
