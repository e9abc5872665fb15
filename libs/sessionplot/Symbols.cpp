// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/Symbols.h"

#include <QLineF>
#include <QPaintEngine>
#include <QPainter>
#include <QPolygonF>
#include <QVector>

#include <cmath>

namespace sessionplot {

namespace {

/// The corners of a symbol, around the origin and 1 wide; none for those that are no polygon.
QVector<QPointF> cornersOf(Symbol symbol)
{
    switch (symbol) {
    case Symbol::TriangleUp:
        return {{0, -0.45}, {0.5, 0.42}, {-0.5, 0.42}};
    case Symbol::TriangleDown:
        return {{0, 0.45}, {0.5, -0.42}, {-0.5, -0.42}};
    case Symbol::Diamond:
        return {{0, -0.55}, {0.5, 0}, {0, 0.55}, {-0.5, 0}};
    case Symbol::Square:
        return {{-0.4, -0.4}, {0.4, -0.4}, {0.4, 0.4}, {-0.4, 0.4}};
    case Symbol::Bolt:
        return {{0.15, -0.6}, {-0.35, 0.1},  {-0.02, 0.1},
                {-0.15, 0.6}, {0.35, -0.12}, {0.02, -0.12}};
    case Symbol::Spike:
        return {{-0.55, 0.1}, {-0.25, 0.1}, {-0.1, -0.5}, {0.12, 0.5}, {0.25, 0.1}, {0.55, 0.1}};
    case Symbol::Cross:
    case Symbol::Disc:
        break;
    }
    return {};
}

} // namespace

void drawSymbol(QPainter *painter, Symbol symbol, const QPointF &centre, qreal size,
                const QColor &color)
{
    const bool wasAntialiasing = painter->testRenderHint(QPainter::Antialiasing);
    painter->setRenderHint(QPainter::Antialiasing);
    const bool isStroke = symbol == Symbol::Cross || symbol == Symbol::Spike;
    QPen stroke(color, qMax(size / 6, 1.0));
    stroke.setJoinStyle(Qt::RoundJoin);
    stroke.setCapStyle(Qt::RoundCap);
    painter->setPen(isStroke ? stroke : QPen(Qt::NoPen));
    painter->setBrush(isStroke ? QBrush(Qt::NoBrush) : QBrush(color));

    QPolygonF corners(cornersOf(symbol));
    for (QPointF &corner : corners)
        corner = centre + corner * size;
    if (symbol == Symbol::Disc) {
        painter->drawEllipse(centre, size * 0.42, size * 0.42);
    } else if (symbol == Symbol::Cross) {
        const qreal arm = size * 0.4;
        painter->drawLine(centre + QPointF(-arm, -arm), centre + QPointF(arm, arm));
        painter->drawLine(centre + QPointF(-arm, arm), centre + QPointF(arm, -arm));
    } else if (symbol == Symbol::Spike) {
        painter->drawPolyline(corners);
    } else {
        painter->drawPolygon(corners);
    }
    painter->setRenderHint(QPainter::Antialiasing, wasAntialiasing);
}

qreal pixelsPerUnit(const QPainter *painter)
{
    const QPaintEngine *engine = painter->paintEngine();
    const QTransform &transform = painter->deviceTransform();
    if (!engine || engine->type() != QPaintEngine::Raster || transform.type() > QTransform::TxScale
        || !(transform.m11() > 0))
        return 0;
    return transform.m11();
}

SymbolStamp::SymbolStamp(QPainter *painter, Symbol symbol, qreal size, const QColor &color)
    : m_painter(painter), m_symbol(symbol), m_size(size), m_color(color)
{
    const qreal scale = pixelsPerUnit(painter);
    if (!(scale > 0))
        return;
    const int side = 2 * static_cast<int>(std::ceil(size * scale * 0.75)) + 1;
    m_image = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
    m_image.setDevicePixelRatio(scale);
    m_image.fill(Qt::transparent);
    m_imageCentre = QPointF(side, side) / (2 * scale);
    QPainter imagePainter(&m_image);
    imagePainter.setRenderHint(QPainter::Antialiasing);
    drawSymbol(&imagePainter, symbol, m_imageCentre, size, color);
}

void SymbolStamp::draw(const QPointF &centre) const
{
    if (m_image.isNull()) {
        drawSymbol(m_painter, m_symbol, centre, m_size, m_color);
        return;
    }
    const QPointF corner = centre - m_imageCentre;
    m_painter->drawImage(QPointF(std::round(corner.x()), std::round(corner.y())), m_image);
}

QRect snapped(const QRectF &area)
{
    const int left = qRound(area.left());
    const int top = qRound(area.top());
    return QRect(left, top, qRound(area.right()) - left, qRound(area.bottom()) - top);
}

void drawRule(QPainter *painter, const QPointF &from, const QPointF &to, qreal width,
              const QColor &color)
{
    const QPointF half = from.y() == to.y() ? QPointF(0, width / 2) : QPointF(width / 2, 0);
    painter->fillRect(snapped(QRectF(from - half, to + half).normalized()), color);
}

void drawHatching(QPainter *painter, const QRectF &area, qreal distance, qreal lineWidth,
                  const QColor &color, Slant slant)
{
    if (!(area.width() > 0) || !(area.height() > 0) || !(distance > 0))
        return;
    // The lines are x + y = sum; falling ones are these upside down.
    const auto height = [&](qreal y) {
        return slant == Slant::Rising ? y : area.top() + area.bottom() - y;
    };
    QVector<QLineF> lines;
    const qreal first = std::ceil((area.left() + area.top()) / distance) * distance;
    for (qreal sum = first; sum < area.right() + area.bottom(); sum += distance) {
        const qreal fromX = qMax(area.left(), sum - area.bottom());
        const qreal toX = qMin(area.right(), sum - area.top());
        lines.append(QLineF(fromX, height(sum - fromX), toX, height(sum - toX)));
    }
    const bool wasAntialiasing = painter->testRenderHint(QPainter::Antialiasing);
    // In a narrow strip sharp lines do as well, and cost much less.
    painter->setRenderHint(QPainter::Antialiasing, area.width() > distance);
    painter->setPen(QPen(color, lineWidth));
    painter->drawLines(lines);
    painter->setRenderHint(QPainter::Antialiasing, wasAntialiasing);
}

void drawDashed(QPainter *painter, const QPolygonF &curve, const QColor &color, qreal lineWidth)
{
    constexpr qreal dash = 5; // in widths of the line
    constexpr qreal gap = 3;
    QVector<QLineF> lines;
    qreal done = 0; // of the curve, so that dashes go on around its corners
    for (int i = 1; i < curve.size(); ++i) {
        const QLineF line(curve.at(i - 1), curve.at(i));
        const qreal length = line.length();
        const qreal period = (dash + gap) * lineWidth;
        for (qreal begin = std::floor(done / period) * period - done; begin < length;
             begin += period) {
            const qreal from = qMax(begin, 0.0);
            const qreal to = qMin(begin + dash * lineWidth, length);
            if (to > from)
                lines.append(QLineF(line.pointAt(from / length), line.pointAt(to / length)));
        }
        done += length;
    }
    painter->save();
    QPen pen(color, lineWidth);
    pen.setCapStyle(Qt::FlatCap);
    painter->setPen(pen);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->drawLines(lines);
    painter->restore();
}

} // namespace sessionplot
