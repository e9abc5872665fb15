// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Scale.h"

#include <QFileInfo>
#include <QImage>
#include <QMarginsF>
#include <QPainter>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>

namespace bench {

namespace {

constexpr QSizeF panelSize(420, 380);
constexpr int panelCount = 3;
constexpr QMarginsF margins(62, 56, 104, 48); // on the right stand the lines' names
constexpr qreal markSize = 4.5;
constexpr qreal lineHeight = 14;
constexpr int textPixels = 11;

const QColor ink(22, 26, 31);
const QColor muted(86, 94, 104);
const QColor gridColor(228, 231, 235);

// Told apart by their marks and by the dashes as well as by their colours.
struct Look {
    QColor color;
    Qt::PenStyle pen;
    int corners; ///< of the mark
};
const Look looks[] = {{QColor(0, 82, 147), Qt::SolidLine, 12},
                      {QColor(196, 72, 0), Qt::DashLine, 4},
                      {QColor(0, 110, 80), Qt::DashDotLine, 3},
                      {QColor(130, 60, 120), Qt::DotLine, 5}};

struct Line {
    QString name;
    std::function<double(const ScalePoint &)> value;
};

struct Panel {
    QString title;
    QString unit;
    std::vector<Line> lines;
};

std::vector<Panel> panels()
{
    constexpr double nsPerSecond = 1e9;
    constexpr double nsPerMicrosecond = 1e3;
    constexpr double bytesPerMb = 1e6;
    using P = ScalePoint;
    return {
        {QStringLiteral("CPU time of a whole session"),
         QStringLiteral("seconds"),
         {{QStringLiteral("load"), [](const P &p) { return p.load / nsPerSecond; }},
          {QStringLiteral("save"), [](const P &p) { return p.save / nsPerSecond; }},
          {QStringLiteral("live"), [](const P &p) { return p.live / nsPerSecond; }}}},
        {QStringLiteral("Memory of a loaded session, size of its file"),
         QStringLiteral("MB"),
         {{QStringLiteral("memory"), [](const P &p) { return p.memory / bytesPerMb; }},
          {QStringLiteral("file"), [](const P &p) { return p.file / bytesPerMb; }}}},
        {QStringLiteral("CPU time per event and per sample"),
         QStringLiteral("microseconds"),
         {{QStringLiteral("load, event"),
           [](const P &p) { return p.load / p.events / nsPerMicrosecond; }},
          {QStringLiteral("save, event"),
           [](const P &p) { return p.save / p.events / nsPerMicrosecond; }},
          {QStringLiteral("live, event"),
           [](const P &p) { return p.messages / p.events / nsPerMicrosecond; }},
          {QStringLiteral("live, sample"),
           [](const P &p) { return p.waves / p.samples / nsPerMicrosecond; }}}},
    };
}

/// A logarithmic axis with a line at each power of ten.
struct Axis {
    double low; ///< powers of ten
    double high;
    qreal begin; ///< where they lie
    qreal end;

    qreal at(double value) const
    {
        return begin + (std::log10(value) - low) / (high - low) * (end - begin);
    }
    std::vector<double> ticks() const
    {
        std::vector<double> values;
        for (double power = std::ceil(low); power <= high; ++power)
            values.push_back(std::pow(10, power));
        return values;
    }
};

QPolygonF mark(const QPointF &center, int corners)
{
    const double turn = 2 * std::acos(-1.0) / corners;
    QPolygonF polygon;
    for (int i = 0; i < corners; ++i)
        polygon.append(center + QPointF(std::sin(i * turn), -std::cos(i * turn)) * markSize);
    return polygon;
}

void drawText(QPainter &painter, const QPointF &at, int flags, const QString &text,
              const QColor &color, bool isBold = false)
{
    QFont font = painter.font();
    font.setBold(isBold);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(QRectF(at, QSizeF()), flags | Qt::TextDontClip, text);
}

void drawLine(QPainter &painter, const QPolygonF &path, const Look &look)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(look.color, 1.6, look.pen));
    painter.drawPolyline(path);
    painter.setPen(look.color);
    painter.setBrush(look.color);
    for (const QPointF &place : path)
        painter.drawPolygon(mark(place, look.corners));
}

void drawGrid(QPainter &painter, const QRectF &plot, const Axis &x, const Axis &y)
{
    for (const double value : x.ticks()) {
        painter.setPen(gridColor);
        painter.drawLine(QLineF(x.at(value), plot.top(), x.at(value), plot.bottom()));
        drawText(painter, {x.at(value), plot.bottom() + 14}, Qt::AlignCenter,
                 QString::number(value), muted);
    }
    for (const double value : y.ticks()) {
        painter.setPen(gridColor);
        painter.drawLine(QLineF(plot.left(), y.at(value), plot.right(), y.at(value)));
        drawText(painter, {plot.left() - 8, y.at(value)}, Qt::AlignRight | Qt::AlignVCenter,
                 QString::number(value), muted);
    }
}

void drawPanel(QPainter &painter, const QPointF &corner, const Panel &panel,
               const std::vector<ScalePoint> &points)
{
    const QRectF plot = QRectF(corner, panelSize).marginsRemoved(margins);
    std::vector<double> values;
    for (const Line &line : panel.lines) {
        for (const ScalePoint &point : points)
            values.push_back(line.value(point));
    }
    const auto [lowest, highest] = std::minmax_element(values.begin(), values.end());
    const Axis x{std::log10(points.front().hours), std::log10(points.back().hours), plot.left(),
                 plot.right()};
    const Axis y{std::floor(std::log10(*lowest)), std::ceil(std::log10(*highest)), plot.bottom(),
                 plot.top()};

    drawText(painter, corner + QPointF(12, 12), Qt::AlignLeft, panel.title, ink, true);
    drawText(painter, corner + QPointF(12, 30), Qt::AlignLeft, panel.unit, muted);
    drawText(painter, {plot.center().x(), plot.bottom() + 34}, Qt::AlignCenter,
             QStringLiteral("length of the session, hours"), muted);
    drawGrid(painter, plot, x, y);

    std::map<qreal, std::size_t> ends; // from the top, where the names stand
    for (std::size_t i = 0; i < panel.lines.size(); ++i) {
        QPolygonF path;
        for (const ScalePoint &point : points)
            path.append({x.at(point.hours), y.at(panel.lines[i].value(point))});
        drawLine(painter, path, looks[i]);
        ends[path.last().y()] = i;
    }
    qreal free = plot.top();
    for (const auto &[end, i] : ends) {
        free = std::max(end, free); // never one name over the other
        drawText(painter, {plot.right() + 10, free}, Qt::AlignVCenter, panel.lines[i].name,
                 looks[i].color);
        free += lineHeight;
    }
}

bool paintOn(QPaintDevice &device, const QSize &size, const std::vector<ScalePoint> &points)
{
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRect(QPoint(0, 0), size), Qt::white);
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(textPixels);
    painter.setFont(font);
    QPointF corner;
    for (const Panel &panel : panels()) {
        drawPanel(painter, corner, panel, points);
        corner.rx() += panelSize.width();
    }
    return painter.end();
}

bool isSvg(const QString &file)
{
    return QFileInfo(file).suffix().toLower() == QLatin1String("svg");
}

} // namespace

bool canDraw(const QString &file)
{
    return isSvg(file) || QFileInfo(file).suffix().toLower() == QLatin1String("png");
}

bool drawScale(const QString &file, const std::vector<ScalePoint> &points)
{
    const QSize size(panelCount * int(panelSize.width()), int(panelSize.height()));
    if (isSvg(file)) {
        QSvgGenerator generator;
        generator.setFileName(file);
        generator.setSize(size);
        generator.setViewBox(QRect(QPoint(0, 0), size));
        generator.setTitle(QStringLiteral("Cost of a session over its length"));
        return paintOn(generator, size, points);
    }
    QImage image(size, QImage::Format_RGB32);
    return paintOn(image, size, points) && image.save(file);
}

} // namespace bench
