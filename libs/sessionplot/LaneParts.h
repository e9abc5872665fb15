// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_LANEPARTS_H
#define SESSIONPLOT_LANEPARTS_H

#include "sessionplot/Lanes.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

/// What the lanes share; for their sources alone.
namespace sessionplot {

constexpr qreal gapBesidePlot = 0.5; // em, between a plot and the texts beside it

/// At the usual rate; decides how much room there is for each compression.
constexpr double usualMsecsPerCompression = 500;

inline QString numberText(double value)
{
    return QLocale().toString(value, 'f', value == std::round(value) ? 0 : 1);
}

/// The part of a margin that is for texts.
inline QRectF besidePlot(const LaneContext &context, const QRectF &margin)
{
    const qreal gap = gapBesidePlot * context.style->em;
    return margin.adjusted(gap, 0, -gap, 0);
}

/// Longer than a compression or a ventilation lasts, ms.
constexpr qint64 maxEntryLength = 5000;

/// The entries, ordered by their begin, that may reach into the time that is shown; with a margin
/// of 0 those that begin in it.
template <typename Entry>
std::pair<const Entry *, const Entry *> shown(const std::vector<Entry> &entries,
                                              const TimeRange &range,
                                              qint64 margin = maxEntryLength)
{
    const auto first =
        std::lower_bound(entries.begin(), entries.end(), range.from - margin,
                         [](const Entry &entry, qint64 msecs) { return entry.begin < msecs; });
    const auto last =
        std::upper_bound(first, entries.end(), range.to,
                         [](qint64 msecs, const Entry &entry) { return msecs < entry.begin; });
    return {entries.data() + (first - entries.begin()), entries.data() + (last - entries.begin())};
}

} // namespace sessionplot

#endif
