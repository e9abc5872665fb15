// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/Wave.h"

#include <algorithm>
#include <atomic>
#include <cmath>

namespace sessionplot {

namespace {

constexpr int blockSize = 16;

void add(Extremes &extremes, const int *samples, int count)
{
    int low = extremes.low;
    int high = extremes.high;
    for (int i = 0; i < count; ++i) {
        low = std::min(low, samples[i]);
        high = std::max(high, samples[i]);
    }
    extremes = {low, high};
}

void add(Extremes &extremes, const Extremes *blocks, int count)
{
    for (int i = 0; i < count; ++i)
        extremes.add(blocks[i]);
}

/// Computes the full blocks over \a entries that are not there yet.
template <typename Entry>
void extend(std::vector<Extremes> &blocks, const std::vector<Entry> &entries)
{
    std::size_t block = blocks.size();
    blocks.resize(entries.size() / blockSize);
    const Entry *entry = entries.data() + block * blockSize;
    for (; block < blocks.size(); ++block, entry += blockSize)
        add(blocks[block], entry, blockSize);
}

} // namespace

Wave::Wave()
{
    beginGeneration();
}

void Wave::beginGeneration()
{
    static std::atomic<quint64> last{0};
    m_generation = ++last;
}

void Wave::clear()
{
    cut(0);
}

void Wave::cut(int count)
{
    beginGeneration();
    m_samples.resize(static_cast<std::size_t>(count));
    std::size_t full = m_samples.size();
    for (std::vector<Extremes> &level : m_levels) {
        full /= blockSize;
        level.resize(std::min(level.size(), full));
    }
}

void Wave::extendLevels()
{
    std::size_t level = 0;
    for (std::size_t size = m_samples.size() / blockSize; size > 0; size /= blockSize) {
        if (level == m_levels.size())
            m_levels.emplace_back();
        if (level == 0)
            extend(m_levels[0], m_samples);
        else
            extend(m_levels[level], m_levels[level - 1]);
        ++level;
    }
}

Extremes Wave::extremes(int begin, int end) const
{
    begin = std::max(begin, 0);
    end = std::min(end, count());
    Extremes result;
    std::size_t level = 0; // 0 stands for the samples, n for m_levels[n - 1]
    const auto addFrom = [&](int from, int to) {
        if (level == 0)
            add(result, m_samples.data() + from, to - from);
        else
            add(result, m_levels[level - 1].data() + from, to - from);
    };
    while (end - begin > 2 * blockSize && level < m_levels.size()) {
        const int blockBegin = (begin + blockSize - 1) / blockSize;
        const int blockEnd = end / blockSize;
        addFrom(begin, blockBegin * blockSize);
        addFrom(blockEnd * blockSize, end);
        begin = blockBegin;
        end = blockEnd;
        ++level;
    }
    if (begin < end)
        addFrom(begin, end);
    return result;
}

int Wave::indexAt(double msecs) const
{
    const double index = std::ceil((msecs - double(m_start)) / m_period);
    return static_cast<int>(std::clamp(index, 0.0, double(count())));
}

void Wave::describe(double unit, int period, qint64 start)
{
    period = std::max(period, 1);
    if (unit == m_unit && period == m_period && start == m_start)
        return;
    beginGeneration();
    m_unit = unit;
    m_period = period;
    m_start = start;
}

} // namespace sessionplot
