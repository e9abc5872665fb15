// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/PlotItem.h"

#include "cprquick/PlotSource.h"

#include <QFontInfo>
#include <QGuiApplication>

#include <algorithm>
#include <limits>

namespace cprquick {

namespace {

constexpr qint64 minRangeMs = 1000;

} // namespace

PlotItem::PlotItem(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    setOpaquePainting(true);
    connect(this, &PlotItem::windowChanged, this, &PlotItem::requestPaint);
    connect(this, &PlotItem::lookChanged, this, &PlotItem::requestPaint);
    for (const auto change :
         {&PlotItem::cursorChanged, &PlotItem::shownChanged, &PlotItem::plotAreaChanged})
        connect(this, change, this, &PlotItem::cursorXChanged);
}

PlotItem::~PlotItem() = default;

CPRData *PlotItem::session() const
{
    return m_source ? m_source->session() : nullptr;
}

void PlotItem::setSession(CPRData *session)
{
    if (session == this->session())
        return;
    if (m_source)
        m_source->disconnect(this);
    m_source = session ? PlotSource::of(session) : nullptr;
    if (m_source) {
        connect(m_source.get(), &PlotSource::changed, this, &PlotItem::requestPaint);
        connect(m_source.get(), &PlotSource::sessionGone, this, [this] {
            requestPaint();
            Q_EMIT sessionChanged();
        });
    }
    requestPaint();
    Q_EMIT sessionChanged();
}

void PlotItem::setWindow(int from, int to, int span)
{
    if (from == m_from && to == m_to && span == m_span)
        return;
    m_from = from;
    m_to = to;
    m_span = span;
    Q_EMIT windowChanged();
}

void PlotItem::setFrom(int msecs)
{
    setWindow(msecs, m_to, m_span);
}

void PlotItem::setTo(int msecs)
{
    setWindow(m_from, msecs, m_span);
}

void PlotItem::setSpan(int msecs)
{
    setWindow(m_from, m_to, std::max(msecs, 0));
}

void PlotItem::setBounds(int earliest, int latest, int zero)
{
    if (earliest == m_earliest && latest == m_latest && zero == m_zero)
        return;
    m_earliest = earliest;
    m_latest = latest;
    m_zero = zero;
    findShown(); // others follow this item, also while it is not visible
    Q_EMIT windowChanged();
}

void PlotItem::setEarliest(int msecs)
{
    setBounds(msecs, m_latest, m_zero);
}

void PlotItem::setLatest(int msecs)
{
    setBounds(m_earliest, msecs, m_zero);
}

void PlotItem::setZero(int msecs)
{
    setBounds(m_earliest, m_latest, msecs);
}

sessionplot::TimeRange PlotItem::bounds() const
{
    return m_latest > m_earliest ? sessionplot::TimeRange{m_earliest, m_latest}
                                 : sessionplot::TimeRange{0, m_length};
}

void PlotItem::setDark(bool dark)
{
    if (dark == m_isDark)
        return;
    m_isDark = dark;
    Q_EMIT lookChanged();
}

void PlotItem::setTextSize(qreal size)
{
    if (qFuzzyCompare(1 + size, 1 + m_textSize))
        return;
    m_textSize = size;
    Q_EMIT lookChanged();
}

void PlotItem::setCursor(int msecs)
{
    if (msecs == m_cursor)
        return;
    m_cursor = msecs;
    Q_EMIT cursorChanged();
}

sessionplot::Theme PlotItem::theme() const
{
    sessionplot::Theme theme = m_isDark ? sessionplot::Theme::dark() : sessionplot::Theme::light();
    theme.font = QGuiApplication::font();
    return theme;
}

qreal PlotItem::usedTextSize() const
{
    return m_textSize > 0 ? m_textSize : QFontInfo(QGuiApplication::font()).pixelSize();
}

void PlotItem::setPlotArea(const QRectF &area)
{
    if (area == m_plotArea)
        return;
    m_plotArea = area;
    QMetaObject::invokeMethod(this, &PlotItem::plotAreaChanged, Qt::QueuedConnection);
}

void PlotItem::requestPaint()
{
    if (!isComponentComplete() || !isVisible())
        return; // componentComplete() and itemChange() ask again
    polish();
    update();
}

void PlotItem::componentComplete()
{
    QQuickPaintedItem::componentComplete();
    requestPaint();
}

void PlotItem::itemChange(ItemChange change, const ItemChangeData &value)
{
    QQuickPaintedItem::itemChange(change, value);
    if (change == ItemVisibleHasChanged)
        requestPaint();
}

void PlotItem::updatePolish()
{
    if (m_source)
        m_source->refresh();
    findShown();
    const int lost = m_source ? sessionreview::lostMsecs(m_source->model().review()) : 0;
    if (lost != m_lost) {
        m_lost = lost;
        Q_EMIT lostChanged();
    }
}

void PlotItem::findShown()
{
    const int length = m_source ? m_source->end() : 0;
    qint64 from = m_from;
    qint64 to = m_to;
    if (m_span > 0) {
        from = std::max(length - m_span, 0);
        to = from + m_span;
    }
    sessionplot::TimeRange range = sessionplot::shownRange(from, to, length);
    if (m_latest > m_earliest && m_span <= 0) {
        range = {from, std::max(to, from + minRangeMs)};
        if (to < 0 && to <= from) // not a time, but the end
            range = bounds();
    }
    const int shownFrom = static_cast<int>(range.from);
    const int shownTo = static_cast<int>(range.to);
    if (length != m_length) {
        m_length = length;
        Q_EMIT lengthChanged();
    }
    if (shownFrom != m_shownFrom || shownTo != m_shownTo) {
        m_shownFrom = shownFrom;
        m_shownTo = shownTo;
        Q_EMIT shownChanged();
    }
}

sessionplot::TimeScale PlotItem::timeScale() const
{
    const sessionplot::TimeRange range{m_shownFrom, std::max(m_shownTo, m_shownFrom + 1)};
    return sessionplot::TimeScale(range, m_plotArea.left(), m_plotArea.width());
}

qreal PlotItem::xAt(int msecs) const
{
    return timeScale().x(msecs);
}

int PlotItem::timeAt(qreal x) const
{
    const qint64 msecs = timeScale().msecsAt(x);
    return static_cast<int>(std::clamp<qint64>(msecs, std::numeric_limits<int>::min(),
                                               std::numeric_limits<int>::max()));
}

// The shown time is computed at once, not with the next frame: a second step before that frame has
// to begin where the first one ended.
void PlotItem::showRange(qint64 from, qint64 length)
{
    const sessionplot::TimeRange all = bounds();
    const qint64 total = std::max(all.length(), minRangeMs);
    length = qBound(minRangeMs, length, total);
    from = qBound(all.from, from, all.from + total - length);
    setWindow(static_cast<int>(from), static_cast<int>(from + length), 0);
    findShown();
}

void PlotItem::zoom(qreal factor, qreal x)
{
    zoomAt(factor, timeAt(x));
}

void PlotItem::zoomAt(qreal factor, int msecs)
{
    if (!(factor > 0))
        return;
    const qint64 fixed = qBound(m_shownFrom, msecs, m_shownTo);
    const qint64 all = std::max<qint64>(bounds().length(), 1);
    const qint64 length = qRound64(qMin(qreal(m_shownTo - m_shownFrom) / factor, qreal(all)));
    const qint64 shown = std::max(length, minRangeMs);
    const qint64 before = (fixed - m_shownFrom) * shown / std::max(m_shownTo - m_shownFrom, 1);
    showRange(fixed - before, shown);
}

void PlotItem::pan(int msecs)
{
    showRange(qint64(m_shownFrom) + msecs, qint64(m_shownTo) - m_shownFrom);
}

void PlotItem::showTime(int from, int to)
{
    showRange(from, qint64(to) - from);
}

void PlotItem::fit()
{
    setWindow(0, -1, 0);
    findShown();
}

void PlotItem::reveal(int msecs)
{
    if (msecs < m_shownFrom)
        pan(msecs - m_shownFrom);
    else if (msecs > m_shownTo)
        pan(msecs - m_shownTo);
}

} // namespace cprquick
