// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_LANES_H
#define SESSIONPLOT_LANES_H

#include "sessionplot/PlotModel.h"
#include "sessionplot/Scales.h"
#include "sessionplot/Style.h"

#include <QRectF>

class QPainter;

namespace sessionplot {

class WavePainter;

/// What all lanes of a picture share.
struct LaneContext {
    QPainter *painter; // not owned, as the next two
    const PlotModel *model;
    const Style *style;
    TimeScale time;
};

/// The area of one lane: what is drawn over time, and the margins for titles and values beside it,
/// which may be empty.
struct LaneArea {
    QRectF plot;
    QRectF left;
    QRectF right;
};

/// Widths of the margins that the texts need.
qreal leftMargin(const Style &style);
qreal rightMargin(const Style &style);
/// The left margin that a lane with a scale needs when it stands alone.
qreal narrowLeftMargin(const Style &style);
/// Height of the time axis.
qreal timeAxisHeight(const Style &style);

/// The scales of the lanes, from the session's targets and its values.
ValueScale depthScale(const PlotModel &model, const QRectF &plot);
ValueScale rateScale(const PlotModel &model, const QRectF &plot);
ValueScale volumeScale(const PlotModel &model, const QRectF &plot);

/// Lanes with a scale: the ground first, then what lies behind all lanes, then the values.
void paintGround(const LaneContext &context, const QRectF &plot);
/// True when it shows the depths by columns, as a curve would fill the area.
bool paintDepth(const LaneContext &context, const LaneArea &area, WavePainter &wave);
void paintRate(const LaneContext &context, const LaneArea &area);
void paintVolume(const LaneContext &context, const LaneArea &area, WavePainter &wave);
/// The depths of two sessions, over one another: the other's lighter and dashed. Curves where there
/// is room for them, else the mean depths. The time scales have the same place and length.
void paintTwoDepths(const LaneContext &context, const LaneContext &other, const LaneArea &area,
                    WavePainter &wave, WavePainter &otherWave);

/// Pauses and packet losses, over \a stack, the area of all lanes that they concern.
void paintPauseShades(const LaneContext &context, const QRectF &stack, const QRectF &hatched);
void paintLosses(const LaneContext &context, const QRectF &stack);

/// The lengths of the pauses.
void paintPauseLengths(const LaneContext &context, const LaneArea &area);
/// The numbers of compressions and ventilations in each cycle.
void paintCycles(const LaneContext &context, const LaneArea &area);
/// One row for each kind of fault of compressions.
constexpr int faultRows = 4;
/// What is in a row, from the top.
sessionreview::Fault faultOfRow(int row);
void paintFaults(const LaneContext &context, const LaneArea &area);

/// Faint lines at the ticks of the time axis.
void paintTimeGrid(const LaneContext &context, const QRectF &stack);
void paintTimeAxis(const LaneContext &context, const LaneArea &area);

} // namespace sessionplot

#endif
