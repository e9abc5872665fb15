// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_LEGEND_H
#define SESSIONPLOT_LEGEND_H

#include <QtGlobal>

class QPainter;
class QRectF;

namespace sessionplot {

class PlotModel;
struct Style;

/// The most height that the legend takes in a picture of that width.
qreal legendHeight(const Style &style, const PlotModel &model, qreal width);
/// What the marks mean that occur in the session.
void paintLegend(QPainter *painter, const Style &style, const PlotModel &model, bool hasDepthSpread,
                 const QRectF &area);

} // namespace sessionplot

#endif
