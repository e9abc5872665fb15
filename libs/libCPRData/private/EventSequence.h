// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef EVENTSEQUENCE_H
#define EVENTSEQUENCE_H

#include "CPREventBase.h"

#include <QList>
#include <QtAlgorithms>

#include <algorithm>
#include <cstddef>
#include <vector>

/// A list of events in the order of insertion by time: the main list, or that of a tag.
///
/// Where an event goes depends on the ends of all events behind its place, and a file or a manikin
/// can send any times. So the events stand in blocks. A block has the ends of its events beside
/// them, and the list has the earliest end of each block: two short searches find the place.
///
/// A stored end is never later than the event's own. One that is earlier costs time alone: the
/// search asks the event and stores what it says.
class EventSequence {
public:
    /// Of the tag with the number \a bit; the main list for allTags.
    explicit EventSequence(int bit) : m_bit(bit) { }

    static constexpr int allTags = -1;

    /// Of its tag, or allTags.
    int bit() const { return m_bit; }

    int size() const { return m_size; }

    /// All events in order. It is good until the list changes.
    const QList<CPREventBase *> &events() const
    {
        if (!m_isFlat) {
            m_flat.clear();
            m_flat.reserve(m_size);
            for (const quint32 id : m_order) {
                for (CPREventBase *event : m_blocks[id].events)
                    m_flat.append(event);
            }
            m_isFlat = true;
        }
        return m_flat;
    }

    /// Null outside.
    CPREventBase *at(int index) const
    {
        if (index < 0 || index >= m_size)
            return nullptr;
        if (m_isFlat)
            return m_flat.at(index);
        // Those who ask after each new event want one of the last, or the first.
        int firstOfBlock = m_size;
        for (std::size_t block = m_order.size(); block > 0 && block + 2 > m_order.size(); --block) {
            const auto &events = m_blocks[m_order[block - 1]].events;
            firstOfBlock -= static_cast<int>(events.size());
            if (index >= firstOfBlock)
                return events[static_cast<std::size_t>(index - firstOfBlock)];
        }
        if (index == 0)
            return m_blocks[m_order.front()].events.front();
        return events().at(index);
    }

    /// Inserts behind the last event that ends at or before the start of \a event; events that
    /// overlap that start stay after it.
    void insert(CPREventBase *event)
    {
        const int start = event->msecs();
        // As a session goes, each event starts when the last one has ended.
        if (m_order.empty() || m_blocks[m_order.back()].events.back()->eventEndTime() <= start) {
            append(event);
            return;
        }
        std::size_t block = m_order.size();
        while ((block = behindLastAtMost(m_earliestEnds, block, start)) > 0) {
            --block;
            Block &candidate = blockAt(block);
            std::size_t place = candidate.ends.size();
            while ((place = behindLastAtMost(candidate.ends, place, start)) > 0) {
                const int end = candidate.events[place - 1]->eventEndTime();
                if (end <= start) {
                    insertAt(block, place, event);
                    return;
                }
                candidate.ends[--place] = end;
            }
            m_earliestEnds[block] = *std::min_element(candidate.ends.begin(), candidate.ends.end());
        }
        insertAt(0, 0, event);
    }

    /// Appends without a look at the times.
    void append(CPREventBase *event)
    {
        const int end = event->eventEndTime();
        if (m_order.empty() || m_blocks[m_order.back()].events.size() == blockSize)
            addBlock(m_order.size(), end);
        Block &last = m_blocks[m_order.back()];
        last.events.push_back(event);
        last.ends.push_back(end);
        m_earliestEnds.back() = std::min(m_earliestEnds.back(), end);
        if (quint32 *id = blockOf(event))
            *id = m_order.back();
        ++m_size;
        if (m_isFlat)
            m_flat.append(event);
    }

    /// Does nothing when \a event is not there.
    void remove(const CPREventBase *event)
    {
        std::size_t block = 0;
        std::size_t place = 0;
        if (!find(event, block, place))
            return;
        Block &found = blockAt(block);
        found.events.erase(found.events.begin() + static_cast<std::ptrdiff_t>(place));
        found.ends.erase(found.ends.begin() + static_cast<std::ptrdiff_t>(place));
        if (found.events.empty()) {
            m_unused.push_back(m_order[block]);
            m_order.erase(m_order.begin() + static_cast<std::ptrdiff_t>(block));
            m_earliestEnds.erase(m_earliestEnds.begin() + static_cast<std::ptrdiff_t>(block));
        }
        --m_size;
        m_isFlat = false;
    }

    /// Has to be called when \a event, which is listed, ends earlier than before.
    void storeEarlierEnd(const CPREventBase *event)
    {
        std::size_t block = 0;
        std::size_t place = 0;
        if (!find(event, block, place))
            return;
        const int end = event->eventEndTime();
        blockAt(block).ends[place] = end;
        m_earliestEnds[block] = std::min(m_earliestEnds[block], end);
    }

    void clear() { *this = EventSequence(m_bit); }

private:
    struct Block {
        std::vector<CPREventBase *> events;
        std::vector<int> ends; // of the events, or earlier; ms of session time
    };

    static constexpr std::size_t blockSize = 512;

    // The number of values up to the last of the first count ones that is at most limit; 0 when
    // none is.
    static std::size_t behindLastAtMost(const std::vector<int> &values, std::size_t count,
                                        int limit)
    {
        constexpr std::size_t step = 16; // at once, without a branch
        while (count >= step) {
            const int *const from = values.data() + count - step;
            int found = 0;
            for (std::size_t i = 0; i < step; ++i)
                found |= from[i] <= limit ? 1 : 0;
            if (found != 0)
                break;
            count -= step;
        }
        while (count > 0 && values[count - 1] > limit)
            --count;
        return count;
    }

    Block &blockAt(std::size_t block) { return m_blocks[m_order[block]]; }

    // Where an event keeps the number of its block; null for the lists of all its tags but the
    // first, where it has to be searched for.
    quint32 *blockOf(CPREventBase *event) const
    {
        if (m_bit == allTags)
            return &event->m_block;
        const auto firstTag = static_cast<int>(qCountTrailingZeroBits(event->m_listedTags));
        return firstTag == m_bit ? &event->m_blockOfTag : nullptr;
    }

    bool find(const CPREventBase *event, std::size_t &block, std::size_t &place)
    {
        const quint32 *id = blockOf(const_cast<CPREventBase *>(event));
        for (block = m_order.size(); block-- > 0;) {
            if (id && m_order[block] != *id)
                continue;
            const auto &events = blockAt(block).events;
            const auto found = std::find(events.begin(), events.end(), event);
            place = static_cast<std::size_t>(found - events.begin());
            if (found != events.end())
                return true;
        }
        return false;
    }

    void addBlock(std::size_t block, int earliestEnd)
    {
        quint32 id = static_cast<quint32>(m_blocks.size());
        if (m_unused.empty()) {
            m_blocks.emplace_back();
        } else {
            id = m_unused.back();
            m_unused.pop_back();
        }
        m_order.insert(m_order.begin() + static_cast<std::ptrdiff_t>(block), id);
        m_earliestEnds.insert(m_earliestEnds.begin() + static_cast<std::ptrdiff_t>(block),
                              earliestEnd);
    }

    // The upper half goes to a new block behind it.
    void split(std::size_t block)
    {
        addBlock(block + 1, m_earliestEnds[block]);
        Block &lower = blockAt(block);
        Block &upper = blockAt(block + 1);
        constexpr auto half = static_cast<std::ptrdiff_t>(blockSize / 2);
        upper.events.assign(lower.events.begin() + half, lower.events.end());
        upper.ends.assign(lower.ends.begin() + half, lower.ends.end());
        lower.events.resize(blockSize / 2);
        lower.ends.resize(blockSize / 2);
        for (CPREventBase *event : upper.events) {
            if (quint32 *id = blockOf(event))
                *id = m_order[block + 1];
        }
    }

    void insertAt(std::size_t block, std::size_t place, CPREventBase *event)
    {
        if (blockAt(block).events.size() == blockSize) {
            split(block);
            if (place > blockSize / 2) {
                ++block;
                place -= blockSize / 2;
            }
        }
        const int end = event->eventEndTime();
        Block &changed = blockAt(block);
        changed.events.insert(changed.events.begin() + static_cast<std::ptrdiff_t>(place), event);
        changed.ends.insert(changed.ends.begin() + static_cast<std::ptrdiff_t>(place), end);
        m_earliestEnds[block] = std::min(m_earliestEnds[block], end);
        if (quint32 *id = blockOf(event))
            *id = m_order[block];
        ++m_size;
        m_isFlat = false;
    }

    int m_bit;
    int m_size = 0;
    std::vector<Block> m_blocks; // by number; none that is in use is empty
    std::vector<quint32> m_order; // the numbers of the blocks, in the order of the list
    std::vector<int> m_earliestEnds; // of each block in that order, or earlier
    std::vector<quint32> m_unused; // numbers of blocks
    mutable QList<CPREventBase *> m_flat; // what events() gives, while m_isFlat
    mutable bool m_isFlat = false;
};

#endif
