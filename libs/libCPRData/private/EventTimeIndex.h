// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef EVENTTIMEINDEX_H
#define EVENTTIMEINDEX_H

#include <QList>

#include <vector>

class CPREventBase;

/// Finds the events of a list by time without a walk of the list, with the result of that walk.
///
/// Events that overlap do not stand in the order of their starts, so that a binary search would be
/// wrong. Instead the extremes of the times are kept for every 64 events and for every 64 of these
/// blocks, and a walk passes over those that cannot hold a match. They are worked out when they
/// are first needed; whoever changes the list or the times of an event in it says so by cutAt().
class EventTimeIndex {
public:
    using EventList = QList<CPREventBase *>;

    /// The events from \a position on have changed.
    void cutAt(int position);

    /// The first event that lasts over \a time (ms); null when none does.
    CPREventBase *firstAt(const EventList &events, int time);
    /// The events that start at \a time (ms) or later or last over it, in the list's order.
    EventList from(const EventList &events, int time);

private:
    struct Extremes {
        int earliestStart;
        int latestEnd;
        // Of the later one of start and end, since an event can end before it starts.
        int earliestLast;
        int latestLast;

        bool mayLastOver(int time) const { return earliestStart <= time && latestEnd >= time; }
        bool mayReach(int time) const { return latestLast >= time; }
        bool allReach(int time) const { return earliestLast >= time; }
        void widen(const Extremes &other);
    };

    static Extremes extremesOf(const CPREventBase &event);
    void update(const EventList &events);
    template <typename Condition> int skip(int position, Condition isMet) const;

    std::vector<Extremes> m_blocks;
    std::vector<Extremes> m_spans; // of blocks
};

#endif
