// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/Overview.h"

#include "sessionplot/WavePainter.h"

#include "sessionreview/Words.h"

#include <QPainter>

#include <cmath>
#include <vector>

namespace sessionplot {

using namespace sessionreview;

namespace {

constexpr qreal tickShare = 0.2; // of the height, for faults and for flags each

/// Columns of two hairs: there are at most as many ticks as fit beside each other, however long the
/// session is.
class Ticks {
public:
    Ticks(const LaneContext &context, const QRectF &area)
        : m_context(context), m_area(area), m_width(2 * context.style->hair),
          m_isSet(static_cast<std::size_t>(std::ceil(area.width() / m_width)) + 1)
    {
    }

    void add(int msecs)
    {
        const qreal x = m_context.time.boundedX(msecs) - m_area.left();
        m_isSet[static_cast<std::size_t>(qMax(0.0, x / m_width))] = true;
    }

    void paint(const QColor &color) const
    {
        for (std::size_t i = 0; i < m_isSet.size(); ++i) {
            if (m_isSet[i])
                m_context.painter->fillRect(QRectF(m_area.left() + qreal(i) * m_width, m_area.top(),
                                                   m_width, m_area.height()),
                                            color);
        }
    }

private:
    const LaneContext &m_context;
    QRectF m_area;
    qreal m_width;
    std::vector<bool> m_isSet;
};

template <typename Entries> void addFaults(Ticks &ticks, const Entries &entries)
{
    for (const auto &entry : entries) {
        if (entry.faults)
            ticks.add(entry.peak);
    }
}

} // namespace

void paintOverview(const LaneContext &context, const QRectF &area, WavePainter &wave)
{
    const Theme &theme = context.style->theme;
    const SessionReview &review = context.model->review();
    context.painter->fillRect(area, theme.lane);
    paintPauseShades(context, area, area);

    const qreal tick = std::round(tickShare * area.height());
    const QRectF plot = area.adjusted(0, tick, 0, -tick);
    const bool isOfDepth =
        context.model->depth().count() > 0 && review.figures.training.compressions;
    const Wave &samples = isOfDepth ? context.model->depth() : context.model->volume();
    const ValueScale scale =
        isOfDepth ? depthScale(*context.model, plot) : volumeScale(*context.model, plot);
    if (samples.count() > 0)
        wave.paint(context.painter, samples, context.time, scale, review.losses,
                   {theme.curve, theme.curveArea, context.style->hair});

    Ticks faults(context, QRectF(area.left(), plot.bottom(), area.width(), tick));
    addFaults(faults, review.compressions);
    addFaults(faults, review.ventilations);
    faults.paint(theme.fault);
    Ticks flags(context, QRectF(area.left(), area.top(), area.width(), tick));
    for (const Flag &flag : review.flags) {
        if (flagWeight(flag) > 0)
            flags.add(flag.msecs);
    }
    flags.paint(theme.flag);
}

} // namespace sessionplot
