// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/TimelineItem.h"

#include "cprquick/PlotSource.h"

#include "sessionreview/Words.h"

#include <QQmlEngine>

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

CPREventBase *TimelineItem::eventAt(qreal x, qreal y) const
{
    using Kind = ReviewPicture::Mark::Kind;
    const std::optional<ReviewPicture::Mark> mark =
        source() && session() ? m_picture.markAt(source()->model(), {x, y}) : std::nullopt;
    if (!mark)
        return nullptr;
    const auto isMeant = [&mark](const CPREventBase &event) {
        if (event.msecs() != mark->msecs)
            return false;
        switch (mark->kind) {
        case Kind::Compression:
            return event.type() == CPREventBase::CprCompEvent;
        case Kind::Ventilation:
            return event.type() == CPREventBase::CprVentEvent;
        case Kind::Pause:
            return event.type() == CPREventBase::CprInactivityCPR;
        case Kind::Flag:
            break;
        }
        const std::optional<sessionreview::Flag> flag = sessionreview::flagOf(event);
        return flag && flag->kind == mark->flag && sessionreview::flagWeight(*flag) > 0;
    };
    for (CPREventBase *event : session()->cprEvents()->events()) {
        if (!isMeant(*event))
            continue;
        QQmlEngine::setObjectOwnership(event, QQmlEngine::CppOwnership);
        return event;
    }
    return nullptr;
}

} // namespace cprquick
