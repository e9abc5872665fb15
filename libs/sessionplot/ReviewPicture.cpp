// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/ReviewPicture.h"

#include "sessionplot/LaneParts.h"
#include "sessionplot/Lanes.h"
#include "sessionplot/Legend.h"

#include "sessionreview/Words.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace sessionplot {

using namespace sessionreview;

namespace {

// A text of this size suits a picture of that size. Texts grow a little slower than pictures.
constexpr qreal referenceTextSize = 12;
constexpr QSizeF referenceSize(1280, 800);
constexpr qreal growth = 0.85;
constexpr qreal minTextSize = 10;
// In pictures that are hardly more than an icon.
constexpr QSizeF tinySize(420, 260);
constexpr qreal tinyTextSize = 8;

// What a host can ask for by mistake.
constexpr qreal maxTextSize = 1000;
constexpr qreal maxColumnsPerUnit = 10;
constexpr qreal maxExtent = 100'000;

qreal upTo(qreal limit, qreal value)
{
    return value > 0 ? qMin(value, limit) : 0; // also for what is no number
}

bool canBeDrawn(const QRectF &area)
{
    const QRectF widest(-maxExtent, -maxExtent, 2 * maxExtent, 2 * maxExtent);
    return area.width() > 0 && area.height() > 0 && area.left() >= widest.left()
        && area.top() >= widest.top() && area.right() <= widest.right()
        && area.bottom() <= widest.bottom();
}

// Lanes with a scale share what height is left.
struct LaneShare {
    ReviewPicture::Part part;
    qreal weight;
    qreal minLines;
};
constexpr LaneShare lanes[] = {
    {ReviewPicture::DepthPart, 0.46, 4},
    {ReviewPicture::RatePart, 0.27, 3},
    {ReviewPicture::VolumePart, 0.27, 3},
};

constexpr int maxFlagRows = 4;
constexpr int fewFlagRows = 2;
constexpr qreal gapBetweenLanes = 0.45; // em
constexpr qreal rowHeight = 1.2; // lines of small text
constexpr qreal faultRowHeight = 1.05;

qreal minHeight(const Style &style, ReviewPicture::Parts parts)
{
    qreal height = 0;
    for (const LaneShare &lane : lanes) {
        if (parts.testFlag(lane.part))
            height += lane.minLines * style.small.line();
    }
    return height;
}

} // namespace

void ReviewPicture::setRange(qint64 from, qint64 to)
{
    m_from = from;
    m_to = to;
    m_window.reset();
    m_zero = 0;
}

void ReviewPicture::setWindow(const TimeRange &range, qint64 zero)
{
    m_window = range;
    m_zero = zero;
}

void ReviewPicture::setTextSize(qreal size)
{
    m_textSize = size >= 1 ? qMin(size, maxTextSize) : 0;
}

void ReviewPicture::setColumnsPerUnit(qreal columns)
{
    m_depthPainter.setColumnsPerUnit(upTo(maxColumnsPerUnit, columns));
    m_volumePainter.setColumnsPerUnit(upTo(maxColumnsPerUnit, columns));
}

qreal ReviewPicture::suitableTextSize(const QSizeF &size)
{
    const qreal scale =
        qMin(size.width() / referenceSize.width(), size.height() / referenceSize.height());
    const bool isTiny = size.width() < tinySize.width() || size.height() < tinySize.height();
    return std::floor(qMax(isTiny ? tinyTextSize : minTextSize,
                           referenceTextSize * std::pow(qMax(scale, 0.0), growth)));
}

ReviewPicture::Parts ReviewPicture::usefulParts() const
{
    Parts parts = m_parts;
    const auto without = [&parts](bool isMissing, Parts missing) {
        if (isMissing)
            parts &= ~missing;
    };
    without(!m_model->review().figures.training.compressions,
            {DepthPart | FaultsPart | RatePart | CyclesPart});
    without(!m_model->review().figures.training.ventilations, VolumePart);
    without(m_model->review().cycles.empty(), CyclesPart);
    without(m_model->review().pauses.empty(), PausesPart);
    without(std::none_of(m_model->review().flags.begin(), m_model->review().flags.end(),
                         [](const Flag &flag) { return flagWeight(flag) > 0; }),
            FlagsPart);
    return parts;
}

qreal ReviewPicture::fixedHeight(const Layout &layout, const Style &style, qreal width) const
{
    qreal height = 0;
    const auto add = [&](Part part, qreal partHeight) {
        if (layout.parts.testFlag(part))
            height += partHeight + layout.gap;
    };
    add(HeadPart, headHeight(style, layout.head, width));
    add(FlagsPart, FlagLabels::height(style, layout.flagRows));
    add(PausesPart, rowHeight * style.small.line());
    add(CyclesPart, rowHeight * style.small.line());
    add(FaultsPart, faultRows * faultRowHeight * style.small.line());
    add(TimeAxisPart, timeAxisHeight(style) - layout.gap);
    add(LegendPart, layout.legendHeight);
    for (const LaneShare &lane : lanes)
        add(lane.part, 0);
    return height;
}

ReviewPicture::Layout ReviewPicture::layOut(const Style &style, const QRectF &area)
{
    const QSizeF size = area.size();
    Layout layout;
    layout.parts = usefulParts();
    layout.gap = std::round(gapBetweenLanes * style.em);
    layout.right = rightMargin(style);
    layout.legendHeight = legendHeight(style, *m_model, size.width());
    // The texts beside the lanes may not need more room than the lanes. Names of faults that are
    // too long for that end in dots; titles and numbers do not.
    constexpr qreal minPlotShare = 0.55;
    const qreal room = std::floor((1 - minPlotShare) * size.width() - layout.right);
    layout.left = qMin(leftMargin(style), room);
    if (room < narrowLeftMargin(style)) {
        layout.left = layout.right = 0;
        layout.parts &= ~(Parts(FaultsPart) | PausesPart | CyclesPart);
    }

    const qreal plotLeft = std::round(area.left() + layout.left);
    m_time = TimeScale(m_window.value_or(shownRange(m_from, m_to, m_model->length())), plotLeft,
                       std::round(area.right() - layout.right) - plotLeft, m_zero);
    const auto labelFlags = [&](int maxRows) {
        if (layout.parts.testFlag(FlagsPart))
            layout.flags = FlagLabels(*m_model, style, m_time, area.right(), maxRows);
        layout.flagRows = m_flagRows > 0 ? m_flagRows : layout.flags.rows();
    };
    labelFlags(m_flagRows > 0 ? m_flagRows : maxFlagRows);

    // Where there is not room for all, readable lanes matter more than the texts that explain them.
    constexpr qreal comfort = 1.5;
    const auto fits = [&](qreal factor) {
        return fixedHeight(layout, style, size.width()) + factor * minHeight(style, layout.parts)
            <= size.height();
    };
    if (!fits(comfort) && m_flagRows <= 0)
        labelFlags(fewFlagRows);
    if (!fits(comfort))
        layout.parts &= ~Parts(LegendPart);
    if (!fits(comfort))
        layout.head = HeadForm::Short;
    const Part lessImportant[] = {FaultsPart, CyclesPart, FlagsPart,   PausesPart,
                                  RatePart,   VolumePart, TimeAxisPart};
    for (const Part part : lessImportant) {
        if (fits(1))
            break;
        if (part == RatePart)
            layout.head = HeadForm::Line;
        if (!fits(1))
            layout.parts &= ~Parts(part);
    }
    if (!fits(1))
        layout.parts &= ~Parts(HeadPart);

    for (const LaneShare &lane : lanes) {
        if (layout.parts.testFlag(lane.part))
            layout.weight += lane.weight;
    }
    layout.spare = qMax(0.0, size.height() - fixedHeight(layout, style, size.width()));
    return layout;
}

void ReviewPicture::paint(QPainter *painter, const QRectF &area)
{
    m_areas.clear();
    m_flags.clear();
    if (!painter || !painter->isActive() || !canBeDrawn(area))
        return;
    painter->save();
    // Nearly all lines are straight: without antialiasing they are sharp, and cost less. What needs
    // it turns it on.
    painter->setRenderHint(QPainter::Antialiasing, false);
    painter->setRenderHint(QPainter::TextAntialiasing);
    painter->fillRect(area, m_theme.background);
    if (m_model) {
        const Style style(m_theme, m_textSize > 0 ? m_textSize : suitableTextSize(area.size()),
                          painter->device());
        const qreal margin = std::round(0.8 * style.em);
        const QRectF inner = area.adjusted(margin, margin, -margin, -margin);
        if (inner.width() > 2 * style.em && inner.height() > style.em)
            paintParts(painter, style, layOut(style, inner), inner);
    }
    painter->restore();
}

void ReviewPicture::paintParts(QPainter *painter, const Style &style, const Layout &layout,
                               const QRectF &area)
{
    const qreal plotLeft = m_time.left();
    const qreal plotRight = m_time.right();
    const LaneContext context{painter, m_model, &style, m_time};

    // All areas first: what lies behind or over several lanes has to know where they are.
    qreal y = area.top();
    const auto nextArea = [&](Part part, qreal height, bool isFollowedByGap = true) {
        LaneArea lane;
        if (layout.parts.testFlag(part)) {
            const qreal top = std::round(y);
            const qreal bottom = std::round(y + height);
            lane.plot = QRectF(QPointF(plotLeft, top), QPointF(plotRight, bottom));
            lane.left = QRectF(QPointF(area.left(), top), QPointF(plotLeft, bottom));
            lane.right = QRectF(QPointF(plotRight, top), QPointF(area.right(), bottom));
            y += height + (isFollowedByGap ? layout.gap : 0);
        }
        return lane;
    };
    const auto laneHeight = [&](Part part) {
        for (const LaneShare &lane : lanes) {
            if (lane.part == part)
                return layout.spare * lane.weight / layout.weight;
        }
        return 0.0;
    };
    const LaneArea head = nextArea(HeadPart, headHeight(style, layout.head, area.width()));
    const LaneArea flags = nextArea(FlagsPart, FlagLabels::height(style, layout.flagRows));
    const qreal stackTop = std::round(y);
    const LaneArea pauses = nextArea(PausesPart, rowHeight * style.small.line());
    const LaneArea cycles = nextArea(CyclesPart, rowHeight * style.small.line());
    const qreal lanesTop = std::round(y);
    const LaneArea depth = nextArea(DepthPart, laneHeight(DepthPart));
    const LaneArea faults = nextArea(FaultsPart, faultRows * faultRowHeight * style.small.line());
    const LaneArea rate = nextArea(RatePart, laneHeight(RatePart));
    const LaneArea volume = nextArea(VolumePart, laneHeight(VolumePart), false);
    const qreal stackBottom = std::round(volume.plot.isNull() ? y - layout.gap : y);
    const LaneArea axis = nextArea(TimeAxisPart, timeAxisHeight(style));
    m_stack = QRectF(QPointF(plotLeft, stackTop), QPointF(plotRight, stackBottom));
    m_areas = {{PausesPart, pauses.plot}, {CyclesPart, cycles.plot}, {DepthPart, depth.plot},
               {FaultsPart, faults.plot}, {RatePart, rate.plot},     {VolumePart, volume.plot}};
    m_reach = style.symbol / 2;

    if (layout.parts.testFlag(HeadPart))
        paintHead(painter, style, *m_model, layout.head,
                  QRectF(area.left(), head.plot.top(), area.width(), head.plot.height()));

    for (const LaneArea *lane : {&depth, &rate, &volume}) {
        if (!lane->plot.isNull())
            paintGround(context, lane->plot);
    }
    const QRectF underLanes(QPointF(plotLeft, lanesTop), m_stack.bottomRight());
    paintPauseShades(context, m_stack, underLanes);
    paintTimeGrid(context, underLanes);

    if (layout.parts.testFlag(FlagsPart))
        m_flags = layout.flags.paint(context, flags, lanesTop, stackBottom);
    if (layout.parts.testFlag(PausesPart))
        paintPauseLengths(context, pauses);
    if (layout.parts.testFlag(CyclesPart))
        paintCycles(context, cycles);
    const bool hasDepthSpread =
        layout.parts.testFlag(DepthPart) && paintDepth(context, depth, m_depthPainter);
    if (layout.parts.testFlag(FaultsPart))
        paintFaults(context, faults);
    if (layout.parts.testFlag(RatePart))
        paintRate(context, rate);
    if (layout.parts.testFlag(VolumePart))
        paintVolume(context, volume, m_volumePainter);
    paintLosses(context, underLanes);
    if (layout.parts.testFlag(TimeAxisPart))
        paintTimeAxis(context, axis);
    if (layout.parts.testFlag(LegendPart))
        paintLegend(painter, style, *m_model, hasDepthSpread,
                    QRectF(area.left(), y, area.width(), area.bottom() - y));
}

namespace {

/// The entry whose stretch holds \a msecs or begins or ends at most \a reach ms from it, the one
/// with the nearest peak first. Null when there is none.
template <typename Entry, typename Has>
const Entry *nearest(const std::vector<Entry> &entries, qint64 msecs, qint64 reach, Has has)
{
    const Entry *found = nullptr;
    const auto distance = [msecs](const Entry &entry) { return std::abs(entry.peak - msecs); };
    const auto [first, last] =
        shown(entries, {msecs - reach, msecs + reach}, std::max(maxEntryLength, reach));
    for (const Entry *entry = first; entry != last; ++entry) {
        if (entry->begin <= msecs + reach && entry->end >= msecs - reach && has(*entry)
            && (!found || distance(*entry) < distance(*found)))
            found = entry;
    }
    return found;
}

template <typename Spans> auto spanAt(const Spans &spans, qint64 msecs)
{
    return std::find_if(spans.begin(), spans.end(), [msecs](const auto &span) {
        return span.begin <= msecs && span.end >= msecs;
    });
}

} // namespace

std::optional<ReviewPicture::Mark> ReviewPicture::markAt(const PlotModel &model,
                                                         const QPointF &point) const
{
    using Kind = Mark::Kind;
    for (const FlagLabels::Place &flag : m_flags) {
        if (flag.area.contains(point))
            return Mark{Kind::Flag, flag.msecs, flag.kind};
    }
    const auto area = std::find_if(m_areas.begin(), m_areas.end(), [&point](const auto &each) {
        return each.second.contains(point);
    });
    if (area == m_areas.end())
        return std::nullopt;
    const SessionReview &review = model.review();
    const qint64 msecs = m_time.msecsAt(point.x());
    const auto reach = static_cast<qint64>(m_reach / m_time.pixelsPerMsec());
    const auto mark = [](Kind kind, int begin) { return Mark{kind, begin, Flag::Kind::User}; };
    switch (area->first) {
    case PausesPart: {
        const auto pause = spanAt(review.pauses, msecs);
        return pause == review.pauses.end() ? std::nullopt
                                            : std::optional(mark(Kind::Pause, pause->begin));
    }
    case CyclesPart: {
        const auto cycle = spanAt(review.cycles, msecs);
        if (cycle == review.cycles.end())
            return std::nullopt;
        return mark(cycle->compressions > 0 ? Kind::Compression : Kind::Ventilation, cycle->begin);
    }
    case VolumePart: {
        const auto *ventilation =
            nearest(review.ventilations, msecs, reach, [](const Ventilation &) { return true; });
        return ventilation ? std::optional(mark(Kind::Ventilation, ventilation->begin))
                           : std::nullopt;
    }
    default:
        break;
    }
    const bool isFault = area->first == FaultsPart;
    const QRectF &rows = area->second;
    const int row = qBound(
        0, static_cast<int>((point.y() - rows.top()) * faultRows / rows.height()), faultRows - 1);
    const auto *compression =
        nearest(review.compressions, msecs, isFault ? reach : 0, [&](const Compression &each) {
            return !isFault || each.faults.testFlag(faultOfRow(row));
        });
    return compression ? std::optional(mark(Kind::Compression, compression->begin)) : std::nullopt;
}

} // namespace sessionplot
