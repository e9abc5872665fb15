// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/LaneParts.h"
#include "sessionplot/Symbols.h"

#include "sessionreview/StandClear.h"
#include "sessionreview/Words.h"

#include <private/Units.h>

#include <QCoreApplication>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace sessionplot {

using namespace sessionreview;

namespace {

struct FaultRow {
    Symbol symbol;
    Fault fault;
};

constexpr FaultRow faults[faultRows] = {
    {Symbol::TriangleUp, Fault::TooShallow},
    {Symbol::TriangleDown, Fault::TooDeep},
    {Symbol::Diamond, Fault::IncompleteRelease},
    {Symbol::Cross, Fault::HandPosition},
};

} // namespace

Fault faultOfRow(int row)
{
    return faults[row].fault;
}

qreal leftMargin(const Style &style)
{
    qreal widest = 0;
    for (const FaultRow &row : faults)
        widest = qMax(widest, style.small.width(faultTexts(row.fault).first()));
    return std::ceil(style.symbol + (1 + gapBesidePlot) * style.em + widest);
}

qreal rightMargin(const Style &style)
{
    const QString longest =
        QCoreApplication::translate("sessionplot", "%1 of %2").arg(9999).arg(9999);
    return std::ceil(2 * gapBesidePlot * style.em + style.small.width(longest));
}

qreal timeAxisHeight(const Style &style)
{
    return std::ceil(style.small.line() + 0.5 * style.em);
}

void paintPauseShades(const LaneContext &context, const QRectF &stack, const QRectF &hatched)
{
    const Style &style = *context.style;
    // In a picture of many hours all pauses together would cover everything.
    constexpr qreal minWidth = 0.5;
    for (const Span &pause : context.model->review().pauses) {
        if (!context.time.range().overlaps(pause.begin, pause.end))
            continue;
        const qreal left = context.time.boundedX(pause.begin);
        const qreal right = context.time.boundedX(pause.end);
        if (right - left < minWidth)
            continue;
        const qreal width = qMax(right - left, style.hair);
        context.painter->fillRect(snapped(QRectF(left, stack.top(), width, stack.height())),
                                  style.theme.pause);
        drawHatching(context.painter, QRectF(left, hatched.top(), width, hatched.height()),
                     0.5 * style.em, style.hair, style.theme.pauseLines, Slant::Falling);
    }
}

void paintLosses(const LaneContext &context, const QRectF &stack)
{
    const Style &style = *context.style;
    const qreal minWidth = 3 * style.hair; // however short a loss is, it is seen
    qreal end = stack.left() - style.em; // of the last one that was drawn
    for (const Span &loss : context.model->review().losses) {
        if (!context.time.range().overlaps(loss.begin, loss.end))
            continue;
        const qreal left = context.time.boundedX(loss.begin);
        const qreal right = qMax(context.time.boundedX(loss.end), left + minWidth);
        if (right - left <= minWidth && left - end < 0.5 * style.em)
            continue;
        end = right;
        drawHatching(context.painter, QRectF(left, stack.top(), right - left, stack.height()),
                     0.5 * style.em, style.hair, style.theme.loss);
    }
}

void paintPauseLengths(const LaneContext &context, const LaneArea &area)
{
    const Style &style = *context.style;
    style.small.draw(context.painter, area.left, Qt::AlignLeft,
                     QCoreApplication::translate("sessionplot", "Pauses"), style.theme.mutedText);

    std::vector<const Span *> pauses;
    for (const Span &pause : context.model->review().pauses) {
        if (context.time.range().overlaps(pause.begin, pause.end))
            pauses.push_back(&pause);
    }
    // Where there is not room for all lengths, the longer pauses show theirs.
    std::stable_sort(pauses.begin(), pauses.end(), [](const Span *a, const Span *b) {
        return qint64(a->end) - a->begin > qint64(b->end) - b->begin;
    });
    std::vector<QRectF> texts;
    const auto roomFor = static_cast<std::size_t>(area.plot.width() / (2 * style.em));
    for (const Span *pause : pauses) {
        if (texts.size() >= roomFor)
            break;
        const double secs = std::round((double(pause->end) - pause->begin) / Units::msecsPerSecond);
        const bool isAsked = isAskedFor(*pause, context.model->review().standClear);
        const QString text = (isAsked ? QCoreApplication::translate("sessionplot", "%1 s, AED")
                                      : QCoreApplication::translate("sessionplot", "%1 s"))
                                 .arg(numberText(secs));
        const qreal width = style.small.width(text);
        const qreal centre =
            (context.time.boundedX(pause->begin) + context.time.boundedX(pause->end)) / 2;
        const qreal left = qBound(area.plot.left(), centre - width / 2,
                                  qMax(area.plot.left(), area.plot.right() - width));
        const QRectF box(left, area.plot.top(), width, area.plot.height());
        const QRectF wanted = box.adjusted(-0.3 * style.em, 0, 0.3 * style.em, 0);
        if (std::any_of(texts.begin(), texts.end(),
                        [&wanted](const QRectF &other) { return other.intersects(wanted); }))
            continue;
        texts.push_back(box);
        style.small.draw(context.painter, box.adjusted(0, 0, 1, 0), Qt::AlignLeft, text,
                         style.theme.text);
    }
}

void paintCycles(const LaneContext &context, const LaneArea &area)
{
    const Style &style = *context.style;
    const PlotModel &model = *context.model;
    style.small.draw(context.painter, area.left, Qt::AlignLeft,
                     model.review().figures.training.cycles
                         ? QCoreApplication::translate("sessionplot", "Cycles")
                         : QCoreApplication::translate("sessionplot", "Compressions"),
                     style.theme.mutedText);
    const Targets &targets = model.review().targets;
    if (targets.compressionsPerCycle > 0 && targets.ventilationsPerCycle > 0)
        style.small.draw(context.painter, besidePlot(context, area.right), Qt::AlignLeft,
                         QCoreApplication::translate("sessionplot", "target %1:%2")
                             .arg(targets.compressionsPerCycle)
                             .arg(targets.ventilationsPerCycle),
                         style.theme.mutedText);

    const qreal inset = std::round(0.1 * area.plot.height());
    for (const Cycle &cycle : model.review().cycles) {
        if (!context.time.range().overlaps(cycle.begin, cycle.end))
            continue;
        const qreal left = context.time.boundedX(cycle.begin);
        const qreal right = qMax(context.time.boundedX(cycle.end), left + style.hair);
        const QRectF box(left, area.plot.top() + inset, right - left,
                         area.plot.height() - 2 * inset);
        const QColor &color = cycle.isMiscounted ? style.theme.fault : style.theme.frame;

        // "30:2" in a frame; where it has no room, a low mark, or a high one for a wrong number.
        const QString text = model.review().figures.training.cycles
            ? QStringLiteral("%1:%2").arg(cycle.compressions).arg(cycle.ventilations)
            : QString::number(cycle.compressions);
        const TextStyle &font = cycle.isMiscounted ? style.smallBold : style.small;
        if (box.width() >= 1.5 * style.em && box.width() >= font.width(text) + 0.3 * style.em) {
            context.painter->setPen(QPen(color, cycle.isMiscounted ? 2 * style.hair : style.hair));
            context.painter->setBrush(style.theme.background);
            context.painter->drawRect(box);
            font.draw(context.painter, box, Qt::AlignCenter, text, style.theme.text);
        } else {
            const qreal height = cycle.isMiscounted ? box.height() : 0.35 * box.height();
            const qreal width = qMax(box.width() - style.hair, style.hair);
            context.painter->fillRect(QRectF(box.left(), box.bottom() - height, width, height),
                                      color);
        }
    }
}

namespace {

/// Faults of compressions, counted in bins of the time that is shown, and in the session.
class FaultCounts {
public:
    FaultCounts(const LaneContext &context, int bins)
        : m_all(static_cast<std::size_t>(bins)), m_faulty(m_all.size())
    {
        const qreal binsPerPixel = bins / context.time.width();
        const auto [first, last] =
            shown(context.model->review().compressions, context.time.range(), 0);
        for (const Compression *compression = first; compression != last; ++compression) {
            const qreal x = context.time.boundedX(compression->peak) - context.time.left();
            const auto bin =
                static_cast<std::size_t>(qBound(0, static_cast<int>(x * binsPerPixel), bins - 1));
            ++m_all[bin];
            for (std::size_t row = 0; row < faultRows; ++row)
                m_faulty[bin][row] += compression->faults.testFlag(faults[row].fault) ? 1 : 0;
        }
        for (const Compression &compression : context.model->review().compressions) {
            for (std::size_t row = 0; row < faultRows; ++row)
                totals[row] += compression.faults.testFlag(faults[row].fault) ? 1 : 0;
        }
    }

    qreal share(int bin, int row) const
    {
        const auto index = static_cast<std::size_t>(bin);
        const int all = m_all[index];
        return all > 0 ? qreal(m_faulty[index][static_cast<std::size_t>(row)]) / all : 0;
    }

    std::array<int, faultRows> totals{}; ///< whatever time is shown

private:
    std::vector<int> m_all;
    std::vector<std::array<int, faultRows>> m_faulty;
};

void paintFaultSymbols(const LaneContext &context, const QRectF &area, const FaultRow &row,
                       qreal size)
{
    const SymbolStamp stamp(context.painter, row.symbol, size, context.style->theme.fault);
    const auto [first, last] = shown(context.model->review().compressions, context.time.range(), 0);
    for (const Compression *compression = first; compression != last; ++compression) {
        if (compression->faults.testFlag(row.fault))
            stamp.draw(QPointF(context.time.boundedX(compression->peak), area.center().y()));
    }
}

/// The height of a mark is the share of the compressions in its bin that have the fault.
void paintFaultMarks(const LaneContext &context, const QRectF &area, const FaultCounts &counts,
                     int row, int bins)
{
    const qreal binWidth = area.width() / bins;
    const qreal highest = 0.8 * area.height();
    const qreal bottom = area.bottom() - 0.1 * area.height();
    QVector<QRect> marks;
    for (int bin = 0; bin < bins; ++bin) {
        const qreal share = counts.share(bin, row);
        if (share <= 0)
            continue;
        const qreal height = qMax(share * highest, 2 * context.style->hair);
        marks.append(
            snapped(QRectF(area.left() + bin * binWidth, bottom - height, binWidth, height)));
    }
    context.painter->setPen(Qt::NoPen);
    context.painter->setBrush(context.style->theme.fault);
    context.painter->drawRects(marks);
}

} // namespace

void paintFaults(const LaneContext &context, const LaneArea &area)
{
    const Style &style = *context.style;
    const qreal height = area.plot.height() / faultRows;
    const qreal size = qMin(style.symbol, 0.8 * height);
    const qreal pitch = context.time.pixelsPerMsec() * usualMsecsPerCompression;
    const qreal binWidth = qBound(2 * style.hair, std::floor(0.7 * pitch), 0.4 * style.em);
    const int bins = qMax(1, static_cast<int>(area.plot.width() / binWidth));
    const FaultCounts counts(context, bins);

    for (int row = 0; row < faultRows; ++row) {
        const FaultRow &fault = faults[row];
        const qreal top = area.plot.top() + row * height;
        const QRectF lane(area.plot.left(), top, area.plot.width(), height);
        drawRule(context.painter, lane.bottomLeft(), lane.bottomRight(), style.hair,
                 style.theme.grid);
        if (pitch >= size)
            paintFaultSymbols(context, lane, fault, size);
        else
            paintFaultMarks(context, lane, counts, row, bins);

        const int faulty = counts.totals[static_cast<std::size_t>(row)];
        const QColor &color = faulty > 0 ? style.theme.text : style.theme.mutedText;
        const QRectF left(area.left.left(), top, area.left.width(), height);
        drawSymbol(context.painter, fault.symbol,
                   QPointF(left.left() + size / 2, left.center().y()), size,
                   faulty > 0 ? style.theme.fault : style.theme.mutedText);
        style.small.draw(context.painter, left.adjusted(size + 0.5 * style.em, 0, 0, 0),
                         Qt::AlignLeft, faultTexts(fault.fault).first(), color);
        const auto compressions = static_cast<int>(context.model->review().compressions.size());
        if (compressions > 0) {
            const QRectF right =
                besidePlot(context, {area.right.left(), top, area.right.width(), height});
            QString text = QCoreApplication::translate("sessionplot", "%1 of %2")
                               .arg(faulty)
                               .arg(compressions);
            if (style.small.width(text) > right.width())
                text = QString::number(faulty);
            style.small.draw(context.painter, right, Qt::AlignLeft, text, color);
        }
    }
}

namespace {

bool showsHours(const LaneContext &context)
{
    const TimeScale &time = context.time;
    return needsHours({time.range().from - time.zero(), time.range().to - time.zero()});
}

TimeTicks axisTicks(const LaneContext &context)
{
    const Style &style = *context.style;
    const QString widest =
        showsHours(context) ? QStringLiteral("00:00:00") : QStringLiteral("000:00");
    return timeTicks(context.time, style.small.width(widest) + 1.5 * style.em);
}

} // namespace

void paintTimeGrid(const LaneContext &context, const QRectF &stack)
{
    for (const qint64 tick : axisTicks(context).msecs) {
        const qreal x = context.time.x(double(tick + context.time.zero()));
        drawRule(context.painter, QPointF(x, stack.top()), QPointF(x, stack.bottom()),
                 context.style->hair, context.style->theme.grid);
    }
}

void paintTimeAxis(const LaneContext &context, const LaneArea &area)
{
    const Style &style = *context.style;
    const bool withHours = showsHours(context);
    const TimeTicks ticks = axisTicks(context);
    style.small.draw(context.painter, area.left, Qt::AlignLeft,
                     withHours ? QCoreApplication::translate("sessionplot", "Time, h:mm:ss")
                               : QCoreApplication::translate("sessionplot", "Time, m:ss"),
                     style.theme.mutedText);

    const qreal mark = 0.35 * style.em;
    const qreal outerLeft = area.left.width() > 0 ? area.left.right() - style.em : area.plot.left();
    const qreal outerRight = area.right.width() > 0 ? area.right.right() : area.plot.right();
    for (const qint64 tick : ticks.msecs) {
        const qreal x = context.time.x(double(tick + context.time.zero()));
        drawRule(context.painter, QPointF(x, area.plot.top()), QPointF(x, area.plot.top() + mark),
                 style.hair, style.theme.frame);
        const QString text = timeText(tick, ticks.step, withHours);
        const qreal width = style.small.width(text);
        const qreal left = qBound(outerLeft, x - width / 2, qMax(outerLeft, outerRight - width));
        style.small.draw(context.painter,
                         QRectF(left, area.plot.top() + mark, width + 1, area.plot.height() - mark),
                         Qt::AlignLeft, text, style.theme.text);
    }
}

} // namespace sessionplot
