// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/OverlayItem.h"

#include "cprquick/PlotSource.h"

#include <sessionplot/Lanes.h>

#include <QPainter>

#include <cmath>
#include <utility>

namespace cprquick {

using namespace sessionplot;

OverlayItem::OverlayItem(QQuickItem *parent) : PlotItem(parent)
{
    connect(this, &OverlayItem::otherChanged, this, &OverlayItem::requestPaint);
}

OverlayItem::~OverlayItem() = default;

CPRData *OverlayItem::other() const
{
    return m_other ? m_other->session() : nullptr;
}

void OverlayItem::setOther(CPRData *session)
{
    if (session == other())
        return;
    if (m_other)
        m_other->disconnect(this);
    m_other = session ? PlotSource::of(session) : nullptr;
    if (m_other) {
        connect(m_other.get(), &PlotSource::changed, this, &OverlayItem::requestPaint);
        connect(m_other.get(), &PlotSource::sessionGone, this, &OverlayItem::otherChanged);
    }
    Q_EMIT otherChanged();
}

void OverlayItem::setOtherZero(int msecs)
{
    if (std::exchange(m_otherZero, msecs) != msecs)
        Q_EMIT otherChanged();
}

void OverlayItem::updatePolish()
{
    PlotItem::updatePolish();
    if (m_other)
        m_other->refresh();
}

void OverlayItem::paint(QPainter *painter)
{
    const Style style(theme(), usedTextSize(), painter->device());
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setRenderHint(QPainter::TextAntialiasing);
    painter->fillRect(boundingRect(), style.theme.background);

    // A frame of one line stands around the lane.
    const qreal bottom = std::floor(height()) - 1 - std::ceil(timeAxisHeight(style));
    const QRectF plot(QPointF(std::ceil(leftMargin(style)), 0),
                      QPointF(std::floor(width() - rightMargin(style)), bottom));
    setPlotArea(plot);
    if (!(plot.width() > 0) || !(plot.height() > 0) || shownTo() <= shownFrom())
        return;

    const PlotModel none;
    const int shift = m_otherZero - zero();
    const LaneContext context{
        painter, source() ? &source()->model() : &none, &style,
        TimeScale({shownFrom(), shownTo()}, plot.left(), plot.width(), zero())};
    const LaneContext otherContext{painter, m_other ? &m_other->model() : &none, &style,
                                   TimeScale({shownFrom() + shift, shownTo() + shift}, plot.left(),
                                             plot.width(), m_otherZero)};
    const auto beside = [](const QRectF &part, qreal left, qreal right) {
        return QRectF(QPointF(left, part.top()), QPointF(right, part.bottom()));
    };
    const QRectF axis(plot.left(), plot.bottom(), plot.width(), height() - plot.bottom());
    paintGround(context, plot);
    paintTimeGrid(context, plot);
    paintTwoDepths(context, otherContext,
                   {plot, beside(plot, 0, plot.left()), beside(plot, plot.right(), width())},
                   m_painter, m_otherPainter);
    paintTimeAxis(context,
                  {axis, beside(axis, 0, plot.left()), beside(axis, plot.right(), width())});
}

} // namespace cprquick
