// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/WaveItem.h"

#include "cprquick/PlotSource.h"

#include <sessionplot/Lanes.h>

#include <QPainter>

#include <cmath>

namespace cprquick {

using namespace sessionplot;

WaveItem::WaveItem(QQuickItem *parent) : PlotItem(parent)
{
}

WaveItem::~WaveItem() = default;

void WaveItem::setKind(Kind kind)
{
    if (kind == m_kind)
        return;
    m_kind = kind;
    requestPaint();
    Q_EMIT kindChanged();
}

void WaveItem::setHasAxes(bool axes)
{
    if (axes == m_hasAxes)
        return;
    m_hasAxes = axes;
    requestPaint();
    Q_EMIT hasAxesChanged();
}

void WaveItem::paint(QPainter *painter)
{
    const Style style(theme(), usedTextSize(), painter->device());
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setRenderHint(QPainter::TextAntialiasing);
    painter->fillRect(boundingRect(), style.theme.background);

    // A frame of one line stands around the lane.
    QRectF plot(0, 0, std::floor(width()) - 1, std::floor(height()) - 1);
    if (m_hasAxes)
        plot.adjust(narrowLeftMargin(style), 0, -std::ceil(rightMargin(style)),
                    -std::ceil(timeAxisHeight(style)));
    setPlotArea(plot);
    if (!(plot.width() > 0) || !(plot.height() > 0) || shownTo() <= shownFrom())
        return;

    const PlotModel none;
    const PlotModel &model = source() ? source()->model() : none;
    const TimeScale time({shownFrom(), shownTo()}, plot.left(), plot.width(), zero());
    const LaneContext context{painter, &model, &style, time};
    const auto beside = [&](qreal left, qreal right) {
        return QRectF(QPointF(left, plot.top()), QPointF(right, plot.bottom()));
    };
    LaneArea area{plot, beside(0, plot.left()), beside(plot.right(), width())};
    paintGround(context, plot);
    paintPauseShades(context, plot, plot);
    paintTimeGrid(context, plot);
    switch (m_kind) {
    case Depth:
        paintDepth(context, area, m_painter);
        break;
    case Volume:
        paintVolume(context, area, m_painter);
        break;
    case Rate:
        paintRate(context, area);
        break;
    }
    paintLosses(context, plot);
    if (!m_hasAxes)
        return;
    for (QRectF *part : {&area.plot, &area.left, &area.right}) {
        part->setTop(plot.bottom());
        part->setBottom(height());
    }
    paintTimeAxis(context, area);
}

} // namespace cprquick
