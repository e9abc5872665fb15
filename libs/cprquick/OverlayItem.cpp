// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/OverlayItem.h"

#include "cprquick/PlotSource.h"

#include <sessionplot/TwoSessions.h>

#include <QPainter>

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

    const PlotModel none;
    const TwoSessions sessions{source() ? &source()->model() : &none,
                               m_other ? &m_other->model() : &none, zero(), m_otherZero};
    setPlotArea(paintOverlay(painter, style, sessions, {shownFrom(), shownTo()}, boundingRect(),
                             m_painter, m_otherPainter));
}

} // namespace cprquick
