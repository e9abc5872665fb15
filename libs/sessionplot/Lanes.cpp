// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/Lanes.h"

#include "sessionplot/LaneParts.h"
#include "sessionplot/Symbols.h"
#include "sessionplot/WavePainter.h"

#include <QCoreApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace sessionplot {

using namespace sessionreview;

namespace {

// What an axis shows of a lane without a band and without values.
constexpr double plainDepth = 100;
constexpr double plainRate = 200;
constexpr double plainVolume = 1000;

/// The area in cells, so that marks of one kind are not drawn over one another.
class OccupiedCells {
public:
    OccupiedCells(const QRectF &area, qreal size)
        : m_area(area), m_size(size), m_columns(static_cast<int>(area.width() / size) + 1),
          m_occupied((static_cast<int>(area.height() / size) + 1) * m_columns)
    {
    }

    /// False when there is a mark already, or \a point lies outside.
    bool occupy(const QPointF &point)
    {
        const int column = static_cast<int>((point.x() - m_area.left()) / m_size);
        const int row = static_cast<int>((point.y() - m_area.top()) / m_size);
        const int cell = row * m_columns + column;
        if (column < 0 || row < 0 || column >= m_columns || cell >= m_occupied.size()
            || m_occupied.at(cell))
            return false;
        m_occupied[cell] = true;
        return true;
    }

private:
    QRectF m_area;
    qreal m_size;
    int m_columns;
    QVector<bool> m_occupied;
};

QString bandText(const Band &band)
{
    return QStringLiteral("%1\u2013%2").arg(numberText(band.min), numberText(band.max));
}

/// A line of text beside a plot, at the height of \a y but not outside the plot.
QRectF lineAt(const QRectF &margin, const QRectF &plot, qreal y, qreal line)
{
    const qreal half = line / 2;
    const qreal centre = plot.height() > line ? qBound(plot.top() + half, y, plot.bottom() - half)
                                              : plot.center().y();
    return QRectF(margin.left(), centre - half, margin.width(), line);
}

void paintTitle(const LaneContext &context, const LaneArea &area, const QString &title,
                const QString &unit)
{
    const Style &style = *context.style;
    const QRectF margin(area.left.left(), area.plot.top(), area.left.width(), area.plot.height());
    const qreal line = style.bold.line();
    style.bold.draw(context.painter, QRectF(margin.left(), margin.top(), margin.width(), line),
                    Qt::AlignLeft, title, style.theme.text);
    if (area.plot.height() >= 2 * line)
        style.small.draw(context.painter,
                         QRectF(margin.left(), margin.top() + line, margin.width(), line),
                         Qt::AlignLeft, unit, style.theme.mutedText);
}

void paintValueAxis(const LaneContext &context, const LaneArea &area, const ValueScale &scale)
{
    const Style &style = *context.style;
    const qreal line = style.small.line();
    const QRectF margin = besidePlot(context, area.left);
    constexpr int maxTicks = 9;
    const qreal distance = qMax(2.2 * line, (scale.bottom() - scale.top()) / maxTicks);
    for (const double tick : valueTicks(scale, distance)) {
        if (tick < 0)
            continue;
        const qreal y = scale.y(tick);
        drawRule(context.painter, QPointF(area.plot.left(), y), QPointF(area.plot.right(), y),
                 style.hair, style.theme.grid);
        style.small.draw(context.painter, lineAt(margin, area.plot, y, line), Qt::AlignRight,
                         numberText(tick), style.theme.mutedText);
    }
}

void paintBand(const LaneContext &context, const LaneArea &area, const ValueScale &scale,
               const Band &band)
{
    if (!band.isValid())
        return;
    const Style &style = *context.style;
    const qreal y1 = scale.y(band.min);
    const qreal y2 = scale.y(band.max);
    const QRectF shown(area.plot.left(), qMin(y1, y2), area.plot.width(), std::abs(y2 - y1));
    context.painter->fillRect(shown, style.theme.band);
}

/// The limits of the band, over the values, so that it is seen behind a dense curve too.
void paintBandEdges(const LaneContext &context, const LaneArea &area, const ValueScale &scale,
                    const Band &band)
{
    if (!band.isValid())
        return;
    const Style &style = *context.style;
    for (const double limit : {band.min, band.max}) {
        const qreal y = scale.y(limit);
        drawRule(context.painter, QPointF(area.plot.left(), y), QPointF(area.plot.right(), y),
                 style.hair, style.theme.bandEdge);
    }

    const qreal line = style.small.line();
    const QRectF margin = besidePlot(context, area.right);
    const qreal middle = (scale.y(band.min) + scale.y(band.max)) / 2;
    const bool hasTwoLines = area.plot.height() >= 4 * line;
    const QRectF text = lineAt(margin, area.plot, hasTwoLines ? middle + line / 2 : middle, line);
    if (hasTwoLines)
        style.small.draw(context.painter, text.translated(0, -line), Qt::AlignLeft,
                         QCoreApplication::translate("sessionplot", "target"),
                         style.theme.mutedText);
    style.smallBold.draw(context.painter, text, Qt::AlignLeft, bandText(band), style.theme.text);
}

void paintFrame(const LaneContext &context, const QRectF &plot)
{
    const Style &style = *context.style;
    const QPointF corners[] = {plot.topLeft(), plot.topRight(), plot.bottomRight(),
                               plot.bottomLeft(), plot.topLeft()};
    for (std::size_t i = 0; i + 1 < std::size(corners); ++i)
        drawRule(context.painter, corners[i], corners[i + 1], style.hair, style.theme.frame);
}

void paintNotice(const LaneContext &context, const QRectF &plot, const QString &text)
{
    const Style &style = *context.style;
    const qreal width = qMin(style.normal.width(text) + style.em, plot.width());
    const qreal height = qMin(1.4 * style.normal.line(), plot.height());
    const QRectF box(plot.center() - QPointF(width, height) / 2, QSizeF(width, height));
    context.painter->fillRect(box, style.theme.lane);
    style.normal.draw(context.painter, box, Qt::AlignCenter, text, style.theme.mutedText);
}

double highest(const Wave &wave)
{
    const Extremes extremes = wave.extremes(0, wave.count());
    return extremes.isEmpty() ? 0 : extremes.high * wave.unit();
}

/// The end of an axis from 0: above the band and the values, but not so far above the band that
/// one stray value makes all others unreadable.
double axisEnd(const Band &band, double value, double plain)
{
    constexpr double aboveBand = 1.2;
    constexpr double aboveValue = 1.05;
    constexpr double farAboveBand = 2;
    if (!band.isValid())
        return value > 0 ? value * aboveValue : plain;
    return qBound(band.max * aboveBand, value * aboveValue, band.max * farAboveBand);
}

/// The depths where a column of the picture holds more than one compression: from the shallowest to
/// the deepest, in another colour what lies outside the band, with the median.
void paintDepthSpread(const LaneContext &context, const QRectF &plot, const ValueScale &scale)
{
    const Style &style = *context.style;
    const Band &band = context.model->review().targets.depth;
    const qreal columnWidth = 2 * style.hair;
    QVector<QRect> ranges;
    QVector<QRect> faulty;
    QVector<QRect> medians;
    const auto columnOf = [&](const Compression &compression) {
        return std::floor((context.time.x(compression.peak) - plot.left()) / columnWidth);
    };
    std::vector<double> depths;
    const auto [first, last] = shown(context.model->review().compressions, context.time.range());
    for (const Compression *compression = first; compression != last;) {
        const qreal column = columnOf(*compression);
        depths.clear();
        for (; compression != last && columnOf(*compression) == column; ++compression)
            depths.push_back(compression->depth);
        const qreal left = plot.left() + column * columnWidth;
        const qreal right = qMin(left + columnWidth, plot.right());
        if (left < plot.left() || right <= left)
            continue;
        const auto rect = [&](double from, double to) {
            return snapped(QRectF(QPointF(left, scale.y(from) - style.hair),
                                  QPointF(right, scale.y(to) + style.hair)));
        };
        const auto [low, high] = std::minmax_element(depths.begin(), depths.end());
        const double shallowest = *low;
        const double deepest = *high;
        ranges.append(rect(shallowest, deepest));
        if (band.side(shallowest) == Side::Below)
            faulty.append(rect(shallowest, qMin(deepest, band.min)));
        if (band.side(deepest) == Side::Above)
            faulty.append(rect(qMax(shallowest, band.max), deepest));
        if (depths.size() > 1) {
            const auto middle = depths.begin() + static_cast<std::ptrdiff_t>(depths.size() / 2);
            std::nth_element(depths.begin(), middle, depths.end());
            medians.append(rect(*middle, *middle));
        }
    }
    context.painter->setPen(Qt::NoPen);
    context.painter->setBrush(style.theme.bars);
    context.painter->drawRects(ranges);
    context.painter->setBrush(style.theme.fault);
    context.painter->drawRects(faulty);
    context.painter->setBrush(style.theme.text);
    context.painter->drawRects(medians);
}

/// Of the marks at values outside their band.
qreal triangleSize(const Style &style)
{
    return 0.6 * style.em;
}

} // namespace

qreal narrowLeftMargin(const Style &style)
{
    qreal widest = 0;
    for (const QString &title : {QCoreApplication::translate("sessionplot", "Depth"),
                                 QCoreApplication::translate("sessionplot", "Rate"),
                                 QCoreApplication::translate("sessionplot", "Volume")})
        widest = qMax(widest, style.bold.width(title));
    return std::ceil(widest + style.small.width(numberText(plainVolume))
                     + 3 * gapBesidePlot * style.em);
}

ValueScale depthScale(const PlotModel &model, const QRectF &plot)
{
    double deepest = highest(model.depth());
    if (model.depth().count() == 0) {
        for (const Compression &compression : model.review().compressions)
            deepest = qMax(deepest, double(compression.depth));
    }
    const double end = axisEnd(model.review().targets.depth, deepest, plainDepth);
    constexpr double aboveZero = 0.05;
    return ValueScale(-aboveZero * end, end, plot.top(), plot.bottom());
}

ValueScale rateScale(const PlotModel &model, const QRectF &plot)
{
    const Band &band = model.review().targets.rate;
    double low = band.isValid() ? band.min : plainRate;
    double high = band.isValid() ? band.max : 0;
    for (const Compression &compression : model.review().compressions) {
        if (compression.rate > 0) {
            low = qMin(low, double(compression.rate));
            high = qMax(high, double(compression.rate));
        }
    }
    if (!band.isValid())
        return low < high ? ValueScale(high, low, plot.top(), plot.bottom())
                          : ValueScale(plainRate, 0, plot.top(), plot.bottom());
    // In widths of the band around it.
    constexpr double minAround = 1.5;
    constexpr double maxAround = 4;
    constexpr double beyondValue = 0.3;
    const double width = band.max - band.min;
    low = qBound(band.min - maxAround * width, low - beyondValue * width,
                 band.min - minAround * width);
    high = qBound(band.max + minAround * width, high + beyondValue * width,
                  band.max + maxAround * width);
    return ValueScale(high, qMax(low, 0.0), plot.top(), plot.bottom());
}

ValueScale volumeScale(const PlotModel &model, const QRectF &plot)
{
    double most = 0;
    for (const Ventilation &ventilation : model.review().ventilations)
        most = qMax(most, double(ventilation.volume));
    if (model.review().ventilations.empty())
        most = highest(model.volume());
    return ValueScale(axisEnd(model.review().targets.volume, most, plainVolume), 0, plot.top(),
                      plot.bottom());
}

void paintGround(const LaneContext &context, const QRectF &plot)
{
    context.painter->fillRect(plot, context.style->theme.lane);
}

bool paintDepth(const LaneContext &context, const LaneArea &area, WavePainter &wave)
{
    const Style &style = *context.style;
    const Targets &targets = context.model->review().targets;
    const ValueScale scale = depthScale(*context.model, area.plot);

    paintTitle(context, area, QCoreApplication::translate("sessionplot", "Depth"),
               QCoreApplication::translate("sessionplot", "mm"));
    paintValueAxis(context, area, scale);
    paintBand(context, area, scale, targets.depth);
    if (targets.releaseDepth > 0) {
        const qreal y = scale.y(targets.releaseDepth);
        QPen pen(style.theme.bandEdge, style.hair);
        pen.setDashPattern({5, 4});
        context.painter->setPen(pen);
        context.painter->drawLine(QPointF(area.plot.left(), y), QPointF(area.plot.right(), y));
        const qreal line = style.small.line();
        if (scale.y(targets.depth.min) - y > 2 * line || !targets.depth.isValid())
            style.small.draw(context.painter,
                             lineAt(besidePlot(context, area.right), area.plot, y, line),
                             Qt::AlignLeft,
                             QCoreApplication::translate("sessionplot", "release %1")
                                 .arg(numberText(targets.releaseDepth)),
                             style.theme.mutedText);
    }

    const Wave &samples = context.model->depth();
    const auto [first, last] = shown(context.model->review().compressions, context.time.range());
    bool showsPeaks = context.time.pixelsPerMsec() * usualMsecsPerCompression > 4 * style.hair;
    if (samples.count() > 0) {
        showsPeaks = wave.paint(context.painter, samples, context.time, scale,
                                context.model->review().losses,
                                {style.theme.curve, style.theme.curveArea, style.hair});
    } else if (showsPeaks) {
        // Without samples the peaks are known still.
        context.painter->setPen(QPen(style.theme.curve, style.hair));
        for (const Compression *compression = first; compression != last; ++compression) {
            const qreal x = context.time.boundedX(compression->peak);
            context.painter->drawLine(QPointF(x, scale.y(0)),
                                      QPointF(x, scale.y(double(compression->depth))));
        }
    }
    if (!showsPeaks)
        paintDepthSpread(context, area.plot, scale);
    paintBandEdges(context, area, scale, targets.depth);
    paintFrame(context, area.plot);
    if (samples.count() == 0 && first == last)
        paintNotice(context, area.plot,
                    QCoreApplication::translate("sessionplot", "no compressions recorded"));
    return !showsPeaks && first != last;
}

void paintRate(const LaneContext &context, const LaneArea &area)
{
    const Style &style = *context.style;
    const ValueScale scale = rateScale(*context.model, area.plot);
    paintTitle(context, area, QCoreApplication::translate("sessionplot", "Rate"),
               QCoreApplication::translate("sessionplot", "per min"));
    paintValueAxis(context, area, scale);
    paintBand(context, area, scale, context.model->review().targets.rate);
    paintBandEdges(context, area, scale, context.model->review().targets.rate);

    // Values in the band are dots; the others point to the side on which they lie.
    const qreal pitch = context.time.pixelsPerMsec() * usualMsecsPerCompression;
    const qreal dot = qBound(2.0, std::round(pitch * 0.6), std::round(0.34 * style.em));
    const qreal triangle = qBound(0.7 * triangleSize(style), pitch, triangleSize(style));
    const SymbolStamp above(context.painter, Symbol::TriangleUp, triangle, style.theme.fault);
    const SymbolStamp below(context.painter, Symbol::TriangleDown, triangle, style.theme.fault);
    OccupiedCells occupied(area.plot, triangle / 2);
    QVector<QRect> dots;
    const auto [first, last] = shown(context.model->review().compressions, context.time.range(), 0);
    bool hasRates = false;
    for (const Compression *compression = first; compression != last; ++compression) {
        if (compression->rate <= 0)
            continue;
        hasRates = true;
        const QPointF point(context.time.boundedX(compression->begin), scale.y(compression->rate));
        const Side side = compression->rateSide;
        if (side == Side::Above || side == Side::Below) {
            if (occupied.occupy(point))
                (side == Side::Above ? above : below).draw(point);
        } else {
            const QPointF corner = point - QPointF(dot, dot) / 2;
            dots.append(QRect(qRound(corner.x()), qRound(corner.y()), qRound(dot), qRound(dot)));
        }
    }
    context.painter->setPen(Qt::NoPen);
    context.painter->setBrush(style.theme.curve);
    context.painter->drawRects(dots);
    paintFrame(context, area.plot);
    if (!hasRates)
        paintNotice(context, area.plot,
                    QCoreApplication::translate("sessionplot", "no rates recorded"));
}

void paintVolume(const LaneContext &context, const LaneArea &area, WavePainter &wave)
{
    const Style &style = *context.style;
    const PlotModel &model = *context.model;
    const TimeScale &time = context.time;
    const ValueScale scale = volumeScale(model, area.plot);
    paintTitle(context, area, QCoreApplication::translate("sessionplot", "Volume"),
               QCoreApplication::translate("sessionplot", "ml"));
    paintValueAxis(context, area, scale);
    paintBand(context, area, scale, model.review().targets.volume);

    // Too little is hollow. Both faults are marked above the bar.
    const auto [first, last] = shown(model.review().ventilations, time.range());
    const qreal minWidth = 2 * style.hair;
    const qreal minHollowWidth = 5 * style.hair;
    const qreal triangle = triangleSize(style);
    const SymbolStamp above(context.painter, Symbol::TriangleUp, triangle, style.theme.fault);
    const SymbolStamp below(context.painter, Symbol::TriangleDown, triangle, style.theme.fault);
    OccupiedCells occupied(area.plot, 0.8 * triangle);
    QVector<QRect> bars;
    QVector<QRect> faultyBars;
    QVector<QRectF> hollowBars;
    for (const Ventilation *ventilation = first; ventilation != last; ++ventilation) {
        const qreal left = time.x(ventilation->begin);
        qreal right = time.x(2.0 * ventilation->peak - ventilation->begin);
        if (ventilation + 1 != last)
            right = qMin(right, time.x((ventilation + 1)->begin) - style.hair);
        right = qMax(right, left + minWidth);
        if (right < time.left() || left > time.right())
            continue;
        const qreal top = scale.y(ventilation->volume);
        const QRect bar = snapped(QRectF(QPointF(qMax(left, time.left()), top),
                                         QPointF(qMin(right, time.right()), scale.y(0))));

        const bool isBelow = ventilation->volumeSide == Side::Below;
        const bool isAbove = ventilation->volumeSide == Side::Above;
        if (isBelow && bar.width() >= minHollowWidth)
            hollowBars.append(QRectF(bar).adjusted(style.hair / 2, style.hair / 2, -style.hair / 2,
                                                   -style.hair / 2));
        else if (isBelow || isAbove)
            faultyBars.append(bar);
        else
            bars.append(bar);
        const QPointF point(bar.left() + 0.5 * bar.width(),
                            qMax(top - 0.7 * triangle, area.plot.top() + triangle / 2));
        if ((isBelow || isAbove) && occupied.occupy(point))
            (isAbove ? above : below).draw(point);
    }

    // Where breaths are broad and their course was recorded, it stands before faint bars.
    constexpr double msecsOfBreath = 1000;
    const bool isBroad = time.pixelsPerMsec() * msecsOfBreath > 2 * style.em;
    const bool hasCourse =
        model.volume().count() > 0 && (isBroad || model.review().ventilations.empty());
    const auto faint = [hasCourse](QColor color) {
        if (hasCourse)
            color.setAlphaF(0.3);
        return color;
    };
    context.painter->setPen(Qt::NoPen);
    context.painter->setBrush(faint(style.theme.bars));
    context.painter->drawRects(bars);
    context.painter->setBrush(faint(style.theme.fault));
    context.painter->drawRects(faultyBars);
    context.painter->setPen(QPen(style.theme.fault, style.hair));
    context.painter->setBrush(style.theme.lane);
    context.painter->drawRects(hollowBars);
    if (hasCourse) {
        const QColor ground =
            model.review().ventilations.empty() ? style.theme.curveArea : QColor(Qt::transparent);
        wave.paint(context.painter, model.volume(), time, scale, model.review().losses,
                   {style.theme.curve, ground, style.hair});
    }
    paintBandEdges(context, area, scale, model.review().targets.volume);
    paintFrame(context, area.plot);
    if (first == last && model.volume().count() == 0)
        paintNotice(context, area.plot,
                    QCoreApplication::translate("sessionplot", "no ventilations recorded"));
}

namespace {

/// A line through the mean depths of the compressions in each column of the picture.
void paintMeanDepths(const LaneContext &context, const ValueScale &scale,
                     const WavePainter::Look &look)
{
    const TimeScale &time = context.time;
    const qreal width = 4 * context.style->hair;
    constexpr qreal maxStep = 2; // columns; with more between them there was a pause
    context.painter->save();
    context.painter->setPen(QPen(look.line, look.lineWidth));
    context.painter->setRenderHint(QPainter::Antialiasing);
    QPolygonF line;
    const auto paintLine = [&] {
        if (line.size() == 1) // no less to be seen than others
            line.append(line.first() + QPointF(width, 0));
        if (look.isDashed)
            drawDashed(context.painter, line, look.line, look.lineWidth);
        else
            context.painter->drawPolyline(line);
        line.clear();
    };
    const auto [first, last] = shown(context.model->review().compressions, time.range(), 0);
    for (const Compression *compression = first; compression != last;) {
        const qreal column = std::floor(time.x(compression->peak) / width);
        double sum = 0;
        int count = 0;
        for (; compression != last && std::floor(time.x(compression->peak) / width) == column;
             ++compression, ++count)
            sum += compression->depth;
        const QPointF point(qBound(time.left(), column * width, time.right()),
                            scale.y(sum / count));
        if (!line.isEmpty() && point.x() - line.last().x() > maxStep * width)
            paintLine();
        line.append(point);
    }
    if (!line.isEmpty())
        paintLine();
    context.painter->restore();
}

/// Below it two curves would be one area.
bool hasRoomForCurves(const LaneContext &context)
{
    constexpr qreal minPitch = 8; // hairs for a compression
    return context.time.pixelsPerMsec() * usualMsecsPerCompression > minPitch * context.style->hair;
}

/// Around the band, so that small differences of mean depths are seen.
ValueScale meanScale(const LaneContext &context, const LaneContext &other, const QRectF &plot)
{
    const Band &band = context.model->review().targets.depth;
    double low = band.min;
    double high = band.max;
    for (const LaneContext *each : {&context, &other}) {
        for (const Compression &compression : each->model->review().compressions) {
            low = qMin(low, compression.depth);
            high = qMax(high, compression.depth);
        }
    }
    constexpr double maxAround = 4; // widths of the band
    const double width = band.max - band.min;
    return ValueScale(qMax(low - width, qMax(band.min - maxAround * width, 0.0)),
                      qMin(high + width, band.max + maxAround * width), plot.top(), plot.bottom());
}

void paintCurveOrMeans(const LaneContext &context, const ValueScale &scale, WavePainter &wave,
                       const WavePainter::Look &look)
{
    if (hasRoomForCurves(context) && context.model->depth().count() > 0) {
        wave.paint(context.painter, context.model->depth(), context.time, scale,
                   context.model->review().losses, look);
        return;
    }
    paintMeanDepths(context, scale, look);
}

} // namespace

void paintTwoDepths(const LaneContext &context, const LaneContext &other, const LaneArea &area,
                    WavePainter &wave, WavePainter &otherWave)
{
    const Style &style = *context.style;
    const Band &band = context.model->review().targets.depth;
    const Band &otherBand = other.model->review().targets.depth;
    const bool hasCurves = hasRoomForCurves(context);
    const ValueScale scales[] = {depthScale(*context.model, area.plot),
                                 depthScale(*other.model, area.plot)};
    const ValueScale scale = !hasCurves && band.isValid()
        ? meanScale(context, other, area.plot)
        : scales[scales[1].high() > scales[0].high() ? 1 : 0];
    paintTitle(context, area, QCoreApplication::translate("sessionplot", "Depth"),
               hasCurves ? QCoreApplication::translate("sessionplot", "mm")
                         : QCoreApplication::translate("sessionplot", "mm, mean"));
    paintValueAxis(context, area, scale);
    paintBand(context, area, scale, band);
    paintCurveOrMeans(other, scale, otherWave,
                      {style.theme.otherCurve, Qt::transparent, 1.5 * style.hair, true});
    paintCurveOrMeans(context, scale, wave,
                      {style.theme.curve, Qt::transparent, style.hair, false});
    paintBandEdges(context, area, scale, band);
    if (otherBand.isValid() && !(otherBand == band)) {
        QPen pen(style.theme.otherCurve, style.hair);
        pen.setDashPattern({5, 4});
        context.painter->setPen(pen);
        for (const double limit : {otherBand.min, otherBand.max})
            context.painter->drawLine(QPointF(area.plot.left(), scale.y(limit)),
                                      QPointF(area.plot.right(), scale.y(limit)));
    }
    paintFrame(context, area.plot);
}

} // namespace sessionplot
