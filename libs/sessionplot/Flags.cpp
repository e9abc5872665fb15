// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/Flags.h"

#include "sessionreview/Words.h"

#include <QCoreApplication>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace sessionplot {

using namespace sessionreview;

namespace {

// In em.
constexpr qreal stripHeight = 1.1; // where the symbols are
constexpr qreal symbolSize = 0.85;
constexpr qreal gapToPole = 0.3;
constexpr qreal gapToNext = 0.4;
constexpr qreal maxLabelWidth = 16;

} // namespace

Symbol symbolOf(Flag::Kind kind)
{
    switch (kind) {
    case Flag::Kind::Shock:
        return Symbol::Bolt;
    case Flag::Kind::Aed:
        return Symbol::Square;
    case Flag::Kind::Rhythm:
        return Symbol::Spike;
    case Flag::Kind::User:
        break;
    }
    return Symbol::Disc;
}

FlagLabels::FlagLabels(const PlotModel &model, const Style &style, const TimeScale &time,
                       qreal right, int maxRows)
{
    for (const Flag &flag : model.review().flags) {
        const int weight = flagWeight(flag);
        if (weight <= 0 || !time.range().overlaps(flag.msecs, flag.msecs))
            continue;
        Label label;
        label.flag = &flag;
        label.weight = weight;
        label.pole = time.boundedX(flag.msecs);
        m_labels.push_back(label);
    }
    std::stable_sort(m_labels.begin(), m_labels.end(),
                     [](const Label &a, const Label &b) { return a.weight > b.weight; });

    // There is never room for more labels than this.
    const auto maxLabels =
        static_cast<std::size_t>(qMax(0.0, maxRows * time.width() / (2 * gapToNext * style.em)));
    std::vector<Label *> placed;
    for (Label &label : m_labels) {
        if (placed.size() >= maxLabels)
            break;
        label.text =
            style.small.elided(flagText(*label.flag), qMin(maxLabelWidth * style.em, time.width()));
        const qreal width = gapToPole * style.em + style.small.width(label.text);
        label.left = qMin(label.pole, right - width);
        label.right = label.left + width;

        std::vector<Label *> wanted = placed;
        wanted.insert(
            std::upper_bound(wanted.begin(), wanted.end(), &label,
                             [](const Label *a, const Label *b) { return a->pole < b->pole; }),
            &label);
        if (findRows(wanted, maxRows, gapToNext * style.em))
            placed = std::move(wanted);
        else
            label.text.clear();
    }
    if (findRows(placed, maxRows, gapToNext * style.em)) {
        for (const Label *label : placed)
            m_rows = qMax(m_rows, label->row + 1);
    }
}

// Labels at the right edge are pushed to the left, over the poles of others. Either they stand in
// the lowest row, or, if that fails, in the highest.
bool FlagLabels::findRows(std::vector<Label *> &labels, int maxRows, qreal gap)
{
    return findRows(labels, maxRows, 0, gap) || findRows(labels, maxRows, maxRows - 1, gap);
}

// From the last label to the first: each goes above the poles that its text would cross. Only a
// label that was pushed back stands over the poles of labels before it.
bool FlagLabels::findRows(std::vector<Label *> &labels, int maxRows, int rowAtEdge, qreal gap)
{
    for (auto label = labels.rbegin(); label != labels.rend(); ++label) {
        const bool isPushedBack = (*label)->left < (*label)->pole;
        (*label)->row = isPushedBack ? rowAtEdge : 0;
        for (auto next = label.base(); next != labels.end(); ++next) {
            const bool crossesPole = (*next)->pole < (*label)->right + gap;
            const bool crossesText = (*next)->left < (*label)->right + gap;
            if (isPushedBack ? crossesText && (*next)->row >= (*label)->row : crossesPole)
                (*label)->row = qMax((*label)->row, (*next)->row + 1);
            else if (crossesText && (*next)->row == (*label)->row)
                return false;
            // Its own pole must not cross a text that was pushed back over it.
            if ((*next)->left < (*label)->pole + gap && (*next)->row <= (*label)->row
                && (*next)->left < (*next)->pole)
                return false;
        }
        if ((*label)->row >= maxRows)
            return false;
    }
    return true;
}

qreal FlagLabels::height(const Style &style, int rows)
{
    return std::ceil(rows * style.small.line() + stripHeight * style.em);
}

std::vector<FlagLabels::Place> FlagLabels::paint(const LaneContext &context, const LaneArea &area,
                                                 qreal top, qreal bottom) const
{
    std::vector<Place> places;
    const Style &style = *context.style;
    QPainter *painter = context.painter;
    const qreal stripTop = area.plot.bottom() - stripHeight * style.em;
    const QRectF strip(area.left.left(), stripTop, area.left.width(), stripHeight * style.em);
    style.small.draw(painter, strip, Qt::AlignLeft,
                     QCoreApplication::translate("sessionplot", "Events"), style.theme.mutedText);

    QPen line(style.theme.frame, style.hair);
    line.setDashPattern({1, 2});
    painter->setPen(line);
    for (const Label &label : m_labels) {
        if (!label.text.isEmpty())
            painter->drawLine(QPointF(label.pole, top), QPointF(label.pole, bottom));
    }

    const qreal lineHeight = style.small.line();
    const qreal size = symbolSize * style.em;
    std::vector<qreal> occupied;
    for (const Label &label : m_labels) {
        const bool isOccupied = std::any_of(occupied.begin(), occupied.end(), [&](qreal other) {
            return std::abs(other - label.pole) < 0.9 * size;
        });
        if (!isOccupied) {
            occupied.push_back(label.pole);
            places.push_back({QRectF(label.pole - size / 2, stripTop, size, strip.height()),
                              label.flag->msecs, label.flag->kind});
            drawSymbol(painter, symbolOf(label.flag->kind), QPointF(label.pole, strip.center().y()),
                       size, style.theme.flag);
        }
        if (label.text.isEmpty())
            continue;
        const QRectF box(label.left, stripTop - (label.row + 1) * lineHeight,
                         label.right - label.left, lineHeight);
        places.push_back({box, label.flag->msecs, label.flag->kind});
        painter->setPen(QPen(style.theme.mutedText, style.hair));
        // The pole of a label that was pushed back ends below its text.
        const qreal poleTop =
            label.left < label.pole ? box.bottom() : box.top() + 0.15 * lineHeight;
        painter->drawLine(QPointF(label.pole, poleTop), QPointF(label.pole, stripTop));
        style.small.draw(painter, box.adjusted(gapToPole * style.em, 0, 1, 0), Qt::AlignLeft,
                         label.text, style.theme.text);
    }
    return places;
}

} // namespace sessionplot
