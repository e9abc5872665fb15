// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/OverviewItem.h"

#include "cprquick/PlotSource.h"

#include <sessionplot/Overview.h>

#include <QPainter>

namespace cprquick {

using namespace sessionplot;

OverviewItem::OverviewItem(QQuickItem *parent) : PlotItem(parent)
{
}

OverviewItem::~OverviewItem() = default;

void OverviewItem::paint(QPainter *painter)
{
    const QRectF area = boundingRect();
    setPlotArea(area);
    const Style style(theme(), usedTextSize(), painter->device());
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->fillRect(area, style.theme.background);
    if (!source() || area.isEmpty() || shownTo() <= shownFrom())
        return;
    const TimeScale time({shownFrom(), shownTo()}, area.left(), area.width());
    paintOverview({painter, &source()->model(), &style, time}, area, m_wavePainter);
}

} // namespace cprquick
