// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_TWOSESSIONS_H
#define SESSIONPLOT_TWOSESSIONS_H

#include "sessionplot/Scales.h"

class QPainter;
class QRectF;

namespace sessionplot {

class PlotModel;
class WavePainter;
struct Style;

/// Two sessions over one time axis.
struct TwoSessions {
    /// One below the other, or the depths of both in one lane.
    enum class Form { Stacked, Overlaid };
    /// @{
    /// Not owned, never null.
    const PlotModel *model;
    const PlotModel *other;
    /// @}
    /// @{
    /// The session times, ms, that lie at 0 of the common axis.
    qint64 zero;
    qint64 otherZero;
    /// @}

    /// All of both, in session times of the first, ms.
    TimeRange range() const;
};

/// Paints the depths of both in one lane with its time axis into \a area. \a shown is in session
/// times of the first, ms. \a wave and \a otherWave draw the curves; the same ones for the next
/// picture make that quick. Returns where the curves are; empty when there is no room for them.
QRectF paintOverlay(QPainter *painter, const Style &style, const TwoSessions &sessions,
                    const TimeRange &shown, const QRectF &area, WavePainter &wave,
                    WavePainter &otherWave);
/// Paints all of both into \a area in the light theme, with a line on who trained what above each;
/// \a columnsPerUnit as in WavePainter::setColumnsPerUnit().
void paintTwoSessions(QPainter *painter, const TwoSessions &sessions, TwoSessions::Form form,
                      const QRectF &area, qreal columnsPerUnit);

} // namespace sessionplot

#endif
