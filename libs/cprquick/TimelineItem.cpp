// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/TimelineItem.h"

#include "cprquick/PlotSource.h"

namespace cprquick {

using sessionplot::ReviewPicture;

TimelineItem::TimelineItem(QQuickItem *parent) : PlotItem(parent)
{
    connect(this, &TimelineItem::partsChanged, this, &TimelineItem::requestPaint);
}

TimelineItem::~TimelineItem() = default;

void TimelineItem::setParts(Parts parts)
{
    if (parts == m_parts)
        return;
    m_parts = parts;
    Q_EMIT partsChanged();
}

void TimelineItem::setFlagRows(int rows)
{
    if (rows == m_flagRows)
        return;
    m_flagRows = rows;
    Q_EMIT partsChanged();
}

void TimelineItem::paint(QPainter *painter)
{
    const sessionplot::PlotModel none;
    m_picture.setModel(source() ? &source()->model() : &none);
    m_picture.setTheme(theme());
    m_picture.setTextSize(usedTextSize());
    m_picture.setParts(ReviewPicture::Parts(static_cast<int>(m_parts)));
    m_picture.setFlagRows(m_flagRows);
    m_picture.setWindow({shownFrom(), qMax(shownTo(), shownFrom() + 1)}, zero());
    m_picture.paint(painter, boundingRect());
    const QRectF &stack = m_picture.stack();
    setPlotArea(
        {m_picture.timeScale().left(), stack.top(), m_picture.timeScale().width(), stack.height()});
    m_picture.setModel(nullptr);
}

} // namespace cprquick
