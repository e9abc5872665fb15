// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/HistogramItem.h"

#include <sessionplot/Style.h>

#include <QFontInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QPainter>

namespace cprquick {

HistogramItem::HistogramItem(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    connect(this, &HistogramItem::changed, this, [this] { update(); });
}

HistogramItem::~HistogramItem() = default;

int HistogramItem::barAt(qreal x) const
{
    return x >= 0 && x < width() ? static_cast<int>(x * m_values.size() / width()) : -1;
}

void HistogramItem::paint(QPainter *painter)
{
    using namespace sessionplot;
    if (m_values.isEmpty())
        return;
    Theme theme = m_isDark ? Theme::dark() : Theme::light();
    theme.font = QGuiApplication::font();
    const qreal step = width() / m_values.size();
    constexpr qreal minStep = 1.5; // em; three digits have room in it
    const qreal wanted =
        m_textSize > 0 ? m_textSize : QFontInfo(QGuiApplication::font()).pixelSize();
    const Style style(theme, qMin(wanted, step / minStep), painter->device());
    double highest = 1;
    for (const QVariant &value : qAsConst(m_values))
        highest = qMax(highest, value.toDouble());

    constexpr qreal barShare = 0.8;
    const qreal bottom = height() - style.hair - (m_edges.isEmpty() ? 0 : style.small.line());
    const qreal tallest = qMax(0.0, bottom - style.small.line());
    for (int i = 0; i < m_targets.size(); ++i) {
        if (!m_targets.at(i).toBool())
            continue;
        painter->fillRect(QRectF(i * step, 0, step, bottom), theme.band);
        for (const int side : {i, i + 1}) {
            const int beside = side == i ? i - 1 : i + 1;
            if (!m_targets.value(beside).toBool())
                painter->fillRect(QRectF(side * step - style.hair / 2, 0, style.hair, bottom),
                                  theme.bandEdge);
        }
    }
    for (int i = 0; i < m_edges.size(); ++i)
        style.small.draw(painter, QRectF((i + 0.5) * step, bottom, step, height() - bottom),
                         Qt::AlignHCenter, m_edges.at(i).toString(), theme.mutedText);
    for (int i = 0; i < m_values.size(); ++i) {
        const double value = qMax(0.0, m_values.at(i).toDouble());
        const qreal barHeight = tallest * value / highest;
        const QRectF bar((i + (1 - barShare) / 2) * step, bottom - barHeight, barShare * step,
                         barHeight);
        painter->fillRect(bar, theme.bars);
        if (i == m_chosen) {
            painter->setPen(QPen(theme.text, 2 * style.hair));
            painter->drawRect(bar);
        }
        style.small.draw(painter,
                         QRectF(i * step, bar.top() - style.small.line(), step, style.small.line()),
                         Qt::AlignHCenter, QLocale().toString(value, 'f', 0), theme.text);
    }
    painter->fillRect(QRectF(0, bottom, width(), style.hair), theme.frame);
}

} // namespace cprquick
