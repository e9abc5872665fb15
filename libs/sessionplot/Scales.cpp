// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/Scales.h"

#include <private/Units.h>

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>

namespace sessionplot {

namespace {

using Units::msecsPerMinute;
using Units::msecsPerSecond;
constexpr qint64 msecsPerHour = 60 * msecsPerMinute;
constexpr qint64 msecsPerTenth = 100;

// A picture of no time at all shows this much.
constexpr qint64 minRange = msecsPerSecond;

// clang-format off
constexpr qint64 timeSteps[] = {
    1 * msecsPerTenth,  2 * msecsPerTenth,  5 * msecsPerTenth,
    1 * msecsPerSecond, 2 * msecsPerSecond, 5 * msecsPerSecond,
    10 * msecsPerSecond, 15 * msecsPerSecond, 30 * msecsPerSecond,
    1 * msecsPerMinute, 2 * msecsPerMinute, 5 * msecsPerMinute,
    10 * msecsPerMinute, 15 * msecsPerMinute, 30 * msecsPerMinute,
    1 * msecsPerHour, 2 * msecsPerHour, 4 * msecsPerHour, 6 * msecsPerHour, 12 * msecsPerHour,
};
// clang-format on

} // namespace

TimeRange shownRange(qint64 from, qint64 to, qint64 length)
{
    // Far beyond any session, and small enough that sums and differences of times do not overflow.
    constexpr qint64 maxMsecs = std::numeric_limits<int>::max();
    TimeRange range;
    range.from = qBound<qint64>(0, from, maxMsecs);
    range.to = to < 0 ? qBound<qint64>(0, length, maxMsecs) : qMin(to, maxMsecs);
    if (to >= 0 && range.from > range.to)
        std::swap(range.from, range.to);
    if (range.length() < minRange)
        range.to = range.from + minRange;
    return range;
}

TimeScale::TimeScale(const TimeRange &range, qreal left, qreal width, qint64 zero)
    : m_range(range), m_left(left), m_width(width), m_zero(zero)
{
}

qint64 TimeScale::msecsAt(qreal x) const
{
    if (m_width <= 0)
        return m_range.from;
    return m_range.from + qRound64((x - m_left) / m_width * qreal(m_range.length()));
}

ValueScale::ValueScale(double atTop, double atBottom, qreal top, qreal bottom)
    : m_atTop(atTop), m_atBottom(atBottom), m_top(top), m_bottom(bottom)
{
}

qreal ValueScale::y(double value) const
{
    const double part = (value - m_atTop) / (m_atBottom - m_atTop);
    return m_top + qBound(0.0, part, 1.0) * (m_bottom - m_top);
}

QVector<double> valueTicks(const ValueScale &scale, qreal minPixels)
{
    QVector<double> ticks;
    const double span = scale.high() - scale.low();
    const qreal pixels = scale.bottom() - scale.top();
    if (!(span > 0) || !(pixels > 0))
        return ticks;

    const double minStep = span * minPixels / pixels;
    double step = std::pow(10.0, std::floor(std::log10(minStep)));
    for (const double factor : {1.0, 2.0, 5.0, 10.0}) {
        if (factor * step >= minStep) {
            step *= factor;
            break;
        }
    }
    for (double tick = std::ceil(scale.low() / step) * step; tick <= scale.high(); tick += step)
        ticks.append(tick);
    return ticks;
}

TimeTicks timeTicks(const TimeScale &scale, qreal minPixels)
{
    TimeTicks ticks;
    if (!(scale.width() > 0) || !(minPixels > 0))
        return ticks;
    const double minStep = minPixels / scale.pixelsPerMsec();
    const auto step =
        std::find_if(std::begin(timeSteps), std::end(timeSteps),
                     [minStep](qint64 candidate) { return double(candidate) >= minStep; });
    ticks.step = step != std::end(timeSteps)
        ? *step
        : static_cast<qint64>(std::ceil(minStep / double(24 * msecsPerHour))) * 24 * msecsPerHour;

    const qint64 from = scale.range().from - scale.zero();
    const qint64 to = scale.range().to - scale.zero();
    // Rounded up, on either side of 0.
    const qint64 first = from > 0 ? (from + ticks.step - 1) / ticks.step : -(-from / ticks.step);
    for (qint64 tick = first * ticks.step; tick <= to; tick += ticks.step)
        ticks.msecs.append(tick);
    return ticks;
}

bool needsHours(const TimeRange &range)
{
    return range.to > 2 * msecsPerHour;
}

QString timeText(qint64 msecs, qint64 step, bool withHours)
{
    if (msecs < 0)
        return QChar(0x2212) + timeText(-msecs, step, withHours);
    const QLatin1Char zero('0');
    QString seconds =
        QStringLiteral("%1").arg(msecs % msecsPerMinute / msecsPerSecond, 2, 10, zero);
    if (step % msecsPerSecond != 0)
        seconds +=
            QLocale().decimalPoint() + QString::number(msecs % msecsPerSecond / msecsPerTenth);
    const qint64 minutes = msecs / msecsPerMinute;
    if (!withHours)
        return QStringLiteral("%1:%2").arg(minutes).arg(seconds);
    return QStringLiteral("%1:%2:%3").arg(minutes / 60).arg(minutes % 60, 2, 10, zero).arg(seconds);
}

} // namespace sessionplot
