// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_SYMBOLS_H
#define SESSIONPLOT_SYMBOLS_H

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QRectF>

class QPainter;
class QPolygonF;

namespace sessionplot {

/// Shapes for what colour alone must not distinguish.
enum class Symbol {
    TriangleUp, ///< above the band, as it is drawn
    TriangleDown, ///< below the band, as it is drawn
    Diamond, ///< incomplete release
    Cross, ///< wrong hand position
    Bolt, ///< shock
    Square, ///< AED
    Spike, ///< rhythm
    Disc ///< user event
};

/// Draws \a symbol around \a centre, \a size pixels wide.
void drawSymbol(QPainter *painter, Symbol symbol, const QPointF &centre, qreal size,
                const QColor &color);

/// Device pixels in a unit of \a painter; 0 where it draws on a device that is not made of pixels,
/// or at an angle.
qreal pixelsPerUnit(const QPainter *painter);

/// A symbol to be drawn many times: where the device has pixels, it is drawn once and copied.
class SymbolStamp {
public:
    SymbolStamp(QPainter *painter, Symbol symbol, qreal size, const QColor &color);
    void draw(const QPointF &centre) const;

private:
    QPainter *m_painter; // not owned
    Symbol m_symbol;
    qreal m_size;
    QColor m_color;
    QImage m_image; // null where the device has no pixels
    QPointF m_imageCentre;
};

/// \a area with its edges on whole units, where lines and areas are sharp without antialiasing.
QRect snapped(const QRectF &area);

/// A line along an axis. As an area it costs a twelfth of what it costs as a line with a pen.
void drawRule(QPainter *painter, const QPointF &from, const QPointF &to, qreal width,
              const QColor &color);

enum class Slant { Rising, Falling };

/// Draws slanting lines \a distance apart. They are cut at the edges by computation, because not
/// every paint device can clip, and go on from one area to the next.
void drawHatching(QPainter *painter, const QRectF &area, qreal distance, qreal lineWidth,
                  const QColor &color, Slant slant = Slant::Rising);

/// A dashed curve. Of straight lines it costs a fraction of what it costs as a polyline with a pen.
void drawDashed(QPainter *painter, const QPolygonF &curve, const QColor &color, qreal lineWidth);

} // namespace sessionplot

#endif
