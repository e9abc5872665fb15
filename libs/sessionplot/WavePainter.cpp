// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/WavePainter.h"

#include "sessionplot/Symbols.h"

#include <QImage>
#include <QPainter>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace sessionplot {

namespace {

// Up to this many samples in a column, a line from one extreme to the next looks like the wave.
// With more, the line would fill the area.
constexpr double maxSamplesInLine = 12;

// The time to paint a polygon grows much faster than its number of corners.
constexpr int pointsInPiece = 32;

void paintPiece(QPainter *painter, const QPointF *points, int count, qreal base,
                const WavePainter::Look &look)
{
    if (look.area.alpha() > 0) {
        QPolygonF area;
        area.reserve(count + 2);
        std::copy(points, points + count, std::back_inserter(area));
        area.append(QPointF(points[count - 1].x(), base));
        area.append(QPointF(points[0].x(), base));
        painter->setPen(Qt::NoPen);
        painter->setBrush(look.area);
        painter->drawPolygon(area);
    }
    QPen pen(look.line, look.lineWidth);
    pen.setJoinStyle(Qt::BevelJoin);
    const bool wasAntialiasing = painter->testRenderHint(QPainter::Antialiasing);
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    painter->drawPolyline(points, count);
    painter->setRenderHint(QPainter::Antialiasing, wasAntialiasing);
}

/// Whether the link lost all that lies from \a from to \a to, ms.
bool isLost(const std::vector<sessionreview::Span> &losses, double from, double to)
{
    const auto after = std::upper_bound(
        losses.begin(), losses.end(), from,
        [](double msecs, const sessionreview::Span &loss) { return msecs < loss.begin; });
    return after != losses.begin() && to < std::prev(after)->end;
}

/// The areas of the pieces meet without a seam because they are painted without antialiasing.
void paintCurve(QPainter *painter, const QPolygonF &curve, qreal base,
                const WavePainter::Look &look)
{
    if (look.isDashed) {
        drawDashed(painter, curve, look.line, look.lineWidth);
        return;
    }
    const bool isOnePiece = !(pixelsPerUnit(painter) > 0);
    for (int begin = 0; begin + 1 < curve.size();) {
        const int end = isOnePiece ? curve.size() : qMin(begin + pointsInPiece, curve.size());
        paintPiece(painter, curve.constData() + begin, end - begin, base, look);
        begin = end == curve.size() ? end : end - 1;
    }
}

} // namespace

bool WavePainter::paint(QPainter *painter, const Wave &wave, const TimeScale &time,
                        const ValueScale &values, const Losses &losses, const Look &look)
{
    if (wave.count() == 0 || !(time.width() > 0) || !(values.bottom() > values.top()))
        return true;

    const qreal columnsPerUnit =
        m_columnsPerUnit > 0 ? m_columnsPerUnit : qMax(pixelsPerUnit(painter), 1.0);
    const double msecsPerColumn = 1 / (time.pixelsPerMsec() * columnsPerUnit);
    const double samplesPerColumn = msecsPerColumn / wave.period();
    const bool hasCurve = samplesPerColumn <= maxSamplesInLine;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing, !(pixelsPerUnit(painter) > 0));
    if (samplesPerColumn <= 1) {
        paintSamples(painter, wave, time, values, losses, look);
    } else {
        if (msecsPerColumn != m_msecsPerColumn) {
            m_columns.clear();
            m_msecsPerColumn = msecsPerColumn;
        }
        prepare(wave, static_cast<qint64>(double(time.range().from) / msecsPerColumn),
                static_cast<qint64>(double(time.range().to) / msecsPerColumn));
        if (hasCurve)
            paintLine(painter, wave, time, values, losses, look);
        else
            paintEnvelope(painter, wave, time, values, losses, look);
    }
    painter->restore();
    return hasCurve;
}

Extremes WavePainter::columnOf(const Wave &wave, qint64 column) const
{
    const int begin = wave.indexAt(double(column) * m_msecsPerColumn);
    const int end = wave.indexAt(double(column + 1) * m_msecsPerColumn);
    if (begin == wave.count() || end == 0)
        return {};
    return wave.extremes(begin, end + 1);
}

void WavePainter::prepare(const Wave &wave, qint64 first, qint64 last)
{
    if (&wave != m_wave || wave.generation() != m_generation) {
        m_wave = &wave;
        m_generation = wave.generation();
        m_columns.clear();
    } else if (wave.count() != m_count) {
        // The last column and those behind it have new samples, and so has the one before it,
        // which holds the first sample beyond its end.
        const double known = wave.msecs(std::max(m_count - 1, 0)) / m_msecsPerColumn;
        const qint64 unchanged = static_cast<qint64>(known) - 1 - m_first;
        const auto size = static_cast<std::size_t>(std::max<qint64>(unchanged, 0));
        if (size < m_columns.size())
            m_columns.resize(size);
    }
    m_count = wave.count();

    std::vector<Extremes> columns;
    columns.reserve(static_cast<std::size_t>(last - first + 1));
    const qint64 knownEnd = m_first + static_cast<qint64>(m_columns.size());
    for (qint64 column = first; column <= last; ++column) {
        if (column >= m_first && column < knownEnd)
            columns.push_back(m_columns[static_cast<std::size_t>(column - m_first)]);
        else
            columns.push_back(columnOf(wave, column));
    }
    m_columns.swap(columns);
    m_first = first;
}

void WavePainter::paintSamples(QPainter *painter, const Wave &wave, const TimeScale &time,
                               const ValueScale &values, const Losses &losses,
                               const Look &look) const
{
    // One sample more on either side, from where the line comes in and where it leaves.
    const int begin = std::max(wave.indexAt(double(time.range().from)) - 1, 0);
    const int end = std::min(wave.indexAt(double(time.range().to)) + 1, wave.count());
    QPolygonF curve;
    curve.reserve(end - begin);
    for (int i = begin; i < end; ++i) {
        if (isLost(losses, wave.msecs(i), wave.msecs(i))) {
            paintCurve(painter, curve, values.y(0), look);
            curve.clear();
            continue;
        }
        qreal x = time.x(wave.msecs(i));
        qreal y = values.y(wave.at(i) * wave.unit());
        const int inner = x < time.left() ? i + 1 : x > time.right() ? i - 1 : i;
        if (inner != i && inner >= begin && inner < end) {
            const qreal innerX = time.x(wave.msecs(inner));
            const qreal innerY = values.y(wave.at(inner) * wave.unit());
            const qreal edge = x < time.left() ? time.left() : time.right();
            if ((edge - x) * (edge - innerX) > 0)
                continue; // both lie outside
            y += (innerY - y) * (edge - x) / (innerX - x);
            x = edge;
        } else if (inner != i) {
            continue;
        }
        curve.append(QPointF(x, y));
    }
    paintCurve(painter, curve, values.y(0), look);
}

void WavePainter::paintLine(QPainter *painter, const Wave &wave, const TimeScale &time,
                            const ValueScale &values, const Losses &losses, const Look &look) const
{
    QPolygonF curve;
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const Extremes &extremes = m_columns[i];
        const double middle = (double(m_first) + double(i) + 0.5) * m_msecsPerColumn;
        if (extremes.isEmpty() || isLost(losses, middle, middle)) {
            paintCurve(painter, curve, values.y(0), look);
            curve.clear();
            continue;
        }
        const qreal x = time.boundedX(middle);
        const QPointF low(x, values.y(extremes.low * wave.unit()));
        const QPointF high(x, values.y(extremes.high * wave.unit()));
        // The one first that is nearer to where the line stands.
        const bool lowFirst = curve.isEmpty()
            || std::abs(curve.last().y() - low.y()) < std::abs(curve.last().y() - high.y());
        curve.append(lowFirst ? low : high);
        curve.append(lowFirst ? high : low);
    }
    paintCurve(painter, curve, values.y(0), look);
}

void WavePainter::paintEnvelope(QPainter *painter, const Wave &wave, const TimeScale &time,
                                const ValueScale &values, const Losses &losses,
                                const Look &look) const
{
    // Upright bars from the lowest to the highest value.
    struct Bar {
        qreal left;
        qreal right;
        qreal top;
        qreal bottom;
    };
    const auto forEachBar = [&](const auto &visit) {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const double begin = (double(m_first) + double(i)) * m_msecsPerColumn;
            const double end = begin + m_msecsPerColumn;
            if (m_columns[i].isEmpty() || isLost(losses, begin, end))
                continue;
            const qreal low = values.y(m_columns[i].low * wave.unit());
            const qreal high = values.y(m_columns[i].high * wave.unit());
            visit(Bar{time.boundedX(begin), time.boundedX(end), qMin(low, high), qMax(low, high)});
        }
    };

    const qreal scale = pixelsPerUnit(painter);
    if (m_columnsPerUnit > 0 || !(scale > 0)) {
        QVector<QRectF> areas;
        forEachBar([&areas](const Bar &bar) {
            areas.append(QRectF(QPointF(bar.left, bar.top), QPointF(bar.right, bar.bottom)));
        });
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(Qt::NoPen);
        painter->setBrush(look.area);
        painter->drawRects(areas);
        return;
    }

    // With a column for each pixel the bars are put into an image: many times as fast.
    const int width = static_cast<int>(std::ceil(time.width() * scale));
    const int height = static_cast<int>(std::ceil((values.bottom() - values.top()) * scale));
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return;
    image.fill(Qt::transparent);
    const auto row = [&](qreal y) {
        return qBound(0, qRound((y - values.top()) * scale), height - 1);
    };
    const QRgb area = qPremultiply(look.area.rgba());
    auto *pixels = reinterpret_cast<QRgb *>(image.bits());
    forEachBar([&](const Bar &bar) {
        const int x = qRound((bar.left - time.left()) * scale);
        if (x >= width || !(bar.right > bar.left))
            return;
        const int bottom = row(bar.bottom);
        for (int y = row(bar.top); y <= bottom; ++y)
            pixels[y * width + x] = area;
    });
    image.setDevicePixelRatio(scale);
    painter->drawImage(QPointF(time.left(), values.top()), image);
}

} // namespace sessionplot
