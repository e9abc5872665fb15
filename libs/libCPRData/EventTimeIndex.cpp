// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "EventTimeIndex.h"

#include "CPREventBase.h"

namespace {

constexpr int eventsPerBlock = 64;
constexpr int blocksPerSpan = 64;
constexpr int eventsPerSpan = eventsPerBlock * blocksPerSpan;

} // namespace

void EventTimeIndex::Extremes::widen(const Extremes &other)
{
    earliestStart = qMin(earliestStart, other.earliestStart);
    latestEnd = qMax(latestEnd, other.latestEnd);
    latestTime = qMax(latestTime, other.latestTime);
}

EventTimeIndex::Extremes EventTimeIndex::extremesOf(const CPREventBase &event)
{
    const int end = event.eventEndTime();
    return {event.msecs(), end, qMax(event.msecs(), end)};
}

void EventTimeIndex::cutAt(int position)
{
    const auto keep = [](std::vector<Extremes> &extremes, int count) {
        if (static_cast<std::size_t>(count) < extremes.size())
            extremes.resize(static_cast<std::size_t>(count));
    };
    keep(m_blocks, position / eventsPerBlock);
    keep(m_spans, position / eventsPerSpan);
}

// Only full blocks and spans are entered, so that an event at the end changes none.
void EventTimeIndex::update(const EventList &events)
{
    const int blocks = events.size() / eventsPerBlock;
    for (int block = static_cast<int>(m_blocks.size()); block < blocks; ++block) {
        const int first = block * eventsPerBlock;
        Extremes extremes = extremesOf(*events.at(first));
        for (int i = first + 1; i < first + eventsPerBlock; ++i)
            extremes.widen(extremesOf(*events.at(i)));
        m_blocks.push_back(extremes);
    }
    const std::size_t spans = m_blocks.size() / blocksPerSpan;
    for (std::size_t span = m_spans.size(); span < spans; ++span) {
        Extremes extremes = m_blocks[span * blocksPerSpan];
        for (std::size_t i = 1; i < blocksPerSpan; ++i)
            extremes.widen(m_blocks[span * blocksPerSpan + i]);
        m_spans.push_back(extremes);
    }
}

// The first position from there on that neither its span nor its block rules out.
template <typename MayMatch> int EventTimeIndex::next(int position, MayMatch mayMatch) const
{
    const auto isRuledOut = [&](const std::vector<Extremes> &extremes, int size) {
        const auto at = static_cast<std::size_t>(position / size);
        return position % size == 0 && at < extremes.size() && !mayMatch(extremes[at]);
    };
    while (position % eventsPerBlock == 0) {
        if (isRuledOut(m_spans, eventsPerSpan))
            position += eventsPerSpan;
        else if (isRuledOut(m_blocks, eventsPerBlock))
            position += eventsPerBlock;
        else
            break;
    }
    return position;
}

CPREventBase *EventTimeIndex::firstAt(const EventList &events, int time)
{
    update(events);
    const auto mayMatch = [time](const Extremes &extremes) { return extremes.mayLastOver(time); };
    for (int i = next(0, mayMatch); i < events.size(); i = next(i + 1, mayMatch)) {
        if (mayMatch(extremesOf(*events.at(i))))
            return events.at(i);
    }
    return nullptr;
}

EventTimeIndex::EventList EventTimeIndex::from(const EventList &events, int time)
{
    update(events);
    EventList result;
    const auto mayMatch = [time](const Extremes &extremes) { return extremes.mayReach(time); };
    for (int i = next(0, mayMatch); i < events.size(); i = next(i + 1, mayMatch)) {
        if (mayMatch(extremesOf(*events.at(i))))
            result.append(events.at(i));
    }
    return result;
}
