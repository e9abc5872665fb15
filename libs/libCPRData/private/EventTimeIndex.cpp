// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "private/EventTimeIndex.h"

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
    earliestLast = qMin(earliestLast, other.earliestLast);
    latestLast = qMax(latestLast, other.latestLast);
}

EventTimeIndex::Extremes EventTimeIndex::extremesOf(const CPREventBase &event)
{
    const int end = event.eventEndTime();
    const int last = qMax(event.msecs(), end);
    return {event.msecs(), end, last, last};
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

// Passes over the spans and blocks from there on that meet the condition as a whole.
template <typename Condition> int EventTimeIndex::skip(int position, Condition isMet) const
{
    const auto isPassed = [&](const std::vector<Extremes> &extremes, int size) {
        const auto at = static_cast<std::size_t>(position / size);
        return position % size == 0 && at < extremes.size() && isMet(extremes[at]);
    };
    while (position % eventsPerBlock == 0) {
        if (isPassed(m_spans, eventsPerSpan))
            position += eventsPerSpan;
        else if (isPassed(m_blocks, eventsPerBlock))
            position += eventsPerBlock;
        else
            break;
    }
    return position;
}

CPREventBase *EventTimeIndex::firstAt(const EventList &events, int time)
{
    update(events);
    const auto hasNone = [time](const Extremes &extremes) { return !extremes.mayLastOver(time); };
    for (int i = skip(0, hasNone); i < events.size(); i = skip(i + 1, hasNone)) {
        if (!hasNone(extremesOf(*events.at(i))))
            return events.at(i);
    }
    return nullptr;
}

EventTimeIndex::EventList EventTimeIndex::from(const EventList &events, int time)
{
    update(events);
    const auto hasNone = [time](const Extremes &extremes) { return !extremes.mayReach(time); };
    const auto hasAll = [time](const Extremes &extremes) { return extremes.allReach(time); };
    // The position behind the run of events that do, or do not, match.
    const auto endOfRun = [&](int position, auto belongs) {
        do {
            position = skip(position, belongs);
        } while (position < events.size() && belongs(extremesOf(*events.at(position)))
                 && ++position);
        return position;
    };
    EventList result;
    for (int i = endOfRun(0, hasNone); i < events.size(); i = endOfRun(i, hasNone)) {
        const int begin = i;
        i = endOfRun(begin, hasAll);
        result += events.mid(begin, i - begin);
    }
    return result;
}
