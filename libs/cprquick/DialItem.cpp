// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/DialItem.h"

#include <sessionplot/Style.h>

#include <QPainter>
#include <QtMath>

namespace cprquick {

namespace {

constexpr qreal firstAngle = 225; // half past seven
constexpr qreal lastAngle = -45;
constexpr qreal arcWidth = 0.16; // of the radius
constexpr qreal handWidth = 0.12;
constexpr int stepsInDegree = 16; // of QPainter::drawArc()

} // namespace

DialItem::DialItem(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    connect(this, &DialItem::changed, this, [this] { update(); });
}

DialItem::~DialItem() = default;

bool DialItem::isInBand() const
{
    return m_hasValue && m_bandTo > m_bandFrom && m_value >= m_bandFrom && m_value <= m_bandTo;
}

qreal DialItem::angleAt(qreal value) const
{
    const qreal part = m_to > m_from ? qBound(0.0, (value - m_from) / (m_to - m_from), 1.0) : 0;
    return firstAngle + part * (lastAngle - firstAngle);
}

void DialItem::paint(QPainter *painter)
{
    const auto theme = m_isDark ? sessionplot::Theme::dark() : sessionplot::Theme::light();
    const qreal radius = qMin(width(), height()) / 2;
    const QPointF centre(width() / 2, height() / 2);
    const qreal arcRadius = radius * (1 - arcWidth / 2);
    const QRectF circle(centre - QPointF(arcRadius, arcRadius),
                        QSizeF(2 * arcRadius, 2 * arcRadius));
    const auto drawArc = [&](qreal from, qreal to, const QColor &color) {
        painter->setPen(QPen(color, arcWidth * radius, Qt::SolidLine, Qt::FlatCap));
        painter->drawArc(circle, qRound(from * stepsInDegree), qRound((to - from) * stepsInDegree));
    };
    const auto direction = [](qreal angle) {
        return QPointF(qCos(qDegreesToRadians(angle)), -qSin(qDegreesToRadians(angle)));
    };
    painter->setRenderHint(QPainter::Antialiasing);
    drawArc(firstAngle, lastAngle, theme.grid);
    if (m_bandTo > m_bandFrom) {
        drawArc(angleAt(m_bandFrom), angleAt(m_bandTo), theme.bandEdge);
        // Its ends stand out, so that the band is found without its colour.
        painter->setPen(QPen(theme.text, qMax(1.0, radius / 60)));
        for (const qreal limit : {m_bandFrom, m_bandTo}) {
            const QPointF way = direction(angleAt(limit));
            painter->drawLine(centre + way * radius * (1 - arcWidth * 1.3), centre + way * radius);
        }
    }
    if (!m_hasValue)
        return;

    const QPointF way = direction(angleAt(m_value));
    const QPointF across(-way.y(), way.x());
    const qreal half = handWidth * radius / 2;
    const QPointF hand[] = {centre + way * radius * (1 - arcWidth / 3), centre + across * half,
                            centre - way * half, centre - across * half};
    painter->setPen(Qt::NoPen);
    painter->setBrush(isInBand() || !(m_bandTo > m_bandFrom) ? theme.text : theme.fault);
    painter->drawConvexPolygon(hand, 4);
}

} // namespace cprquick
