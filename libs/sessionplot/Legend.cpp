// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/Legend.h"

#include "sessionplot/Flags.h"
#include "sessionplot/PlotModel.h"
#include "sessionplot/Style.h"
#include "sessionplot/Symbols.h"

#include "sessionreview/Words.h"

#include <QCoreApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

namespace sessionplot {

using namespace sessionreview;

namespace {

constexpr qreal swatchWidth = 2; // em

struct LegendItem {
    QString text;
    std::function<void(QPainter *, const Style &, const QRectF &)> paintSwatch;
};

void paintSymbols(QPainter *painter, const Style &style, const QRectF &swatch,
                  std::initializer_list<Symbol> symbols, const QColor &color)
{
    const qreal size = style.symbol;
    qreal x = swatch.right() - size / 2 - size * 1.2 * qreal(symbols.size() - 1);
    for (const Symbol symbol : symbols) {
        drawSymbol(painter, symbol, QPointF(x, swatch.center().y()), size, color);
        x += 1.2 * size;
    }
}

std::vector<LegendItem> legendItems(const PlotModel &model, bool hasDepthSpread)
{
    std::vector<LegendItem> items;
    items.push_back({QCoreApplication::translate("sessionplot", "target band"),
                     [](QPainter *painter, const Style &style, const QRectF &swatch) {
                         painter->fillRect(swatch, style.theme.band);
                         painter->setPen(QPen(style.theme.bandEdge, style.hair));
                         painter->drawLine(swatch.topLeft(), swatch.topRight());
                         painter->drawLine(swatch.bottomLeft(), swatch.bottomRight());
                     }});
    items.push_back({QCoreApplication::translate("sessionplot", "value outside the band"),
                     [](QPainter *painter, const Style &style, const QRectF &swatch) {
                         paintSymbols(painter, style, swatch,
                                      {Symbol::TriangleUp, Symbol::TriangleDown},
                                      style.theme.fault);
                     }});
    if (hasDepthSpread)
        items.push_back(
            {QCoreApplication::translate("sessionplot", "depths, with the median of several"),
             [](QPainter *painter, const Style &style, const QRectF &swatch) {
                 painter->fillRect(swatch, style.theme.bars);
                 const qreal line = 2 * style.hair;
                 painter->fillRect(
                     QRectF(swatch.left(), swatch.center().y() - line / 2, swatch.width(), line),
                     style.theme.text);
             }});
    if (model.review().figures.training.compressions)
        items.push_back({QCoreApplication::translate("sessionplot", "release line"),
                         [](QPainter *painter, const Style &style, const QRectF &swatch) {
                             QPen pen(style.theme.bandEdge, style.hair);
                             pen.setDashPattern({5, 4});
                             painter->setPen(pen);
                             painter->drawLine(QPointF(swatch.left(), swatch.center().y()),
                                               QPointF(swatch.right(), swatch.center().y()));
                         }});
    if (!model.review().pauses.empty())
        items.push_back({QCoreApplication::translate("sessionplot", "pause"),
                         [](QPainter *painter, const Style &style, const QRectF &swatch) {
                             painter->fillRect(swatch, style.theme.pause);
                             drawHatching(painter, swatch, 0.5 * style.em, style.hair,
                                          style.theme.pauseLines, Slant::Falling);
                         }});
    if (std::any_of(model.review().cycles.begin(), model.review().cycles.end(),
                    [](const Cycle &cycle) { return cycle.isMiscounted; }))
        items.push_back({QCoreApplication::translate("sessionplot", "cycle off target"),
                         [](QPainter *painter, const Style &style, const QRectF &swatch) {
                             painter->setPen(QPen(style.theme.fault, 2 * style.hair));
                             painter->setBrush(style.theme.background);
                             painter->drawRect(swatch);
                         }});
    if (!model.review().losses.empty())
        items.push_back({QCoreApplication::translate("sessionplot", "not received"),
                         [](QPainter *painter, const Style &style, const QRectF &swatch) {
                             drawHatching(painter, swatch, 0.5 * style.em, style.hair,
                                          style.theme.loss);
                         }});
    const auto hasFlag = [&model](Flag::Kind kind) {
        return std::any_of(
            model.review().flags.begin(), model.review().flags.end(),
            [kind](const Flag &flag) { return flag.kind == kind && flagWeight(flag) > 0; });
    };
    const auto addFlag = [&](Flag::Kind kind, const QString &text) {
        if (hasFlag(kind))
            items.push_back(
                {text, [kind](QPainter *painter, const Style &style, const QRectF &swatch) {
                     paintSymbols(painter, style, swatch, {symbolOf(kind)}, style.theme.flag);
                 }});
    };
    addFlag(Flag::Kind::Shock, QCoreApplication::translate("sessionplot", "shock"));
    addFlag(Flag::Kind::Aed, QCoreApplication::translate("sessionplot", "AED"));
    addFlag(Flag::Kind::Rhythm, QCoreApplication::translate("sessionplot", "ECG rhythm"));
    addFlag(Flag::Kind::User, QCoreApplication::translate("sessionplot", "event"));
    return items;
}

/// Calls \a visit with each item and its box, and returns the number of lines.
template <typename Visit>
int layOutLegend(const Style &style, const std::vector<LegendItem> &items, const QRectF &area,
                 Visit visit)
{
    const qreal line = style.small.line();
    int lines = 1;
    qreal x = area.left();
    for (const LegendItem &item : items) {
        const qreal width = (swatchWidth + 0.5) * style.em + style.small.width(item.text);
        if (x > area.left() && x + width > area.right()) {
            x = area.left();
            ++lines;
        }
        visit(item, QRectF(x, area.top() + (lines - 1) * line, width, line));
        x += width + 1.2 * style.em;
    }
    return lines;
}

} // namespace

qreal legendHeight(const Style &style, const PlotModel &model, qreal width)
{
    const bool canHaveSpread = model.review().figures.training.compressions;
    const int lines = layOutLegend(style, legendItems(model, canHaveSpread), QRectF(0, 0, width, 0),
                                   [](const LegendItem &, const QRectF &) {});
    return std::ceil(lines * style.small.line());
}

void paintLegend(QPainter *painter, const Style &style, const PlotModel &model, bool hasDepthSpread,
                 const QRectF &area)
{
    layOutLegend(style, legendItems(model, hasDepthSpread), area,
                 [&](const LegendItem &item, const QRectF &box) {
                     const qreal inset = 0.18 * box.height();
                     const QRectF swatch(box.left(), box.top() + inset, swatchWidth * style.em,
                                         box.height() - 2 * inset);
                     item.paintSwatch(painter, style, swatch);
                     style.small.draw(painter,
                                      box.adjusted((swatchWidth + 0.5) * style.em, 0, 1, 0),
                                      Qt::AlignLeft, item.text, style.theme.text);
                 });
}

} // namespace sessionplot
