// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_SCALES_H
#define SESSIONPLOT_SCALES_H

#include <QString>
#include <QVector>

namespace sessionplot {

/// A stretch of session time, ms.
struct TimeRange {
    qint64 from = 0;
    qint64 to = 0;

    qint64 length() const { return to - from; }
    bool overlaps(qint64 begin, qint64 end) const { return end >= from && begin <= to; }
};

/// What a picture from \a from to \a to shows of a session of \a length ms. A negative end means
/// the end of the session, limits in the wrong order are exchanged, and the range is never empty.
TimeRange shownRange(qint64 from, qint64 to, qint64 length);

/// Where times lie on the horizontal axis.
class TimeScale {
public:
    TimeScale() = default;
    /// \a range must not be empty; \a zero is the time that the axis calls 0:00, ms.
    TimeScale(const TimeRange &range, qreal left, qreal width, qint64 zero = 0);

    const TimeRange &range() const { return m_range; }
    qint64 zero() const { return m_zero; }
    qreal left() const { return m_left; }
    qreal right() const { return m_left + m_width; }
    qreal width() const { return m_width; }
    qreal pixelsPerMsec() const { return m_width / qreal(m_range.length()); }
    qreal x(double msecs) const
    {
        return m_left + (msecs - double(m_range.from)) * pixelsPerMsec();
    }
    /// The same, but never outside the scale.
    qreal boundedX(double msecs) const { return qBound(left(), x(msecs), right()); }
    /// The time at \a x, which may lie outside.
    qint64 msecsAt(qreal x) const;

private:
    TimeRange m_range{0, 1};
    qreal m_left = 0;
    qreal m_width = 1;
    qint64 m_zero = 0;
};

/// Where values lie on a vertical axis. The value at the top may be the greater or the smaller one.
class ValueScale {
public:
    ValueScale(double atTop, double atBottom, qreal top, qreal bottom);

    /// Where \a value lies; never outside the scale.
    qreal y(double value) const;
    double low() const { return qMin(m_atTop, m_atBottom); }
    double high() const { return qMax(m_atTop, m_atBottom); }
    qreal top() const { return m_top; }
    qreal bottom() const { return m_bottom; }

private:
    double m_atTop;
    double m_atBottom;
    qreal m_top;
    qreal m_bottom;
};

/// Round values with a distance of at least \a minPixels.
QVector<double> valueTicks(const ValueScale &scale, qreal minPixels);

/// Times, ms from the scale's zero, that are round, with a distance of at least \a minPixels.
struct TimeTicks {
    qint64 step = 1;
    QVector<qint64> msecs;
};
TimeTicks timeTicks(const TimeScale &scale, qreal minPixels);

/// m:ss, negative times with a sign, with tenths of a second when \a step needs them, and h:mm:ss
/// when \a withHours.
QString timeText(qint64 msecs, qint64 step, bool withHours);
/// Whether times in \a range are easier to read with hours.
bool needsHours(const TimeRange &range);

} // namespace sessionplot

#endif
