// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/Link.h"

#include "manikinsim/Manikin.h"

#include <chestboard/CommunicationIDs.h>

#include <utility>

namespace manikinsim {

namespace {

constexpr int perThousand = 1000;
constexpr int packetsPerSecond = 1000 / Manikin::period;
constexpr int sparedAtBegin = packetsPerSecond;
constexpr int sparedAtEnd = 2 * packetsPerSecond;

bool isPauseReport(const SentMessage &message)
{
    return std::holds_alternative<PauseReport>(message.fact);
}

bool canBeCut(const SentMessage &message)
{
    return std::holds_alternative<Compression>(message.fact)
        || std::holds_alternative<Ventilation>(message.fact)
        || std::holds_alternative<CompressionRate>(message.fact)
        || std::holds_alternative<VentilationRate>(message.fact) || isPauseReport(message);
}

} // namespace

Link::Link(const Scenario &scenario, quint64 seed)
    : m_faults(scenario.link), m_random(seed, 4),
      m_lastSequence(scenario.seconds * packetsPerSecond)
{
}

void Link::endAfter(int seconds)
{
    m_lastSequence = seconds * packetsPerSecond;
}

bool Link::isSpared(const WavePacket &packet) const
{
    return packet.sequence <= sparedAtBegin || packet.sequence > m_lastSequence - sparedAtEnd;
}

Link::Fate Link::fateOf(const WavePacket &packet)
{
    if (isSpared(packet)) {
        m_lossLeft = 0;
        return Fate::Arrives;
    }
    if (m_lossLeft > 0) {
        --m_lossLeft;
        return Fate::IsLost;
    }
    if (m_late)
        return Fate::Arrives;
    int draw = m_random.below(perThousand);
    if (draw < m_faults.losses) {
        m_lossLeft = m_random.below(m_faults.maxLoss);
        return Fate::IsLost;
    }
    draw -= m_faults.losses;
    if (draw < m_faults.latePackets)
        return Fate::ComesLate;
    draw -= m_faults.latePackets;
    return draw < m_faults.repeatedPackets ? Fate::IsRepeated : Fate::Arrives;
}

/// Cuts a message after its first byte at the least. Of a pause report nothing but that byte is
/// left: half a number would be another one.
void Link::cut(SentMessage &message)
{
    const int left = isPauseReport(message) ? 1 : m_random.between(1, message.content.size() - 1);
    message.content.truncate(left);
    message.fate = SentMessage::Fate::Cut;
}

std::vector<Link::Delivery> Link::carry(const WavePacket &packet,
                                        std::vector<SentMessage> &messages)
{
    std::vector<Delivery> deliveries;
    const Fate fate = fateOf(packet);
    const bool arrives = fate == Fate::Arrives || fate == Fate::IsRepeated;
    if (arrives)
        deliveries.emplace_back(packet);
    if (fate == Fate::IsRepeated)
        deliveries.emplace_back(packet);

    for (SentMessage &message : messages) {
        if (!arrives && isPauseReport(message)) {
            message.fate = SentMessage::Fate::Lost;
            deliveries.emplace_back(std::move(message));
            continue;
        }
        if (!isSpared(packet) && canBeCut(message)
            && m_random.below(perThousand) < m_faults.cutMessages) {
            cut(message);
        }
        m_waiting.push_back(std::move(message));
    }
    messages.clear();

    if (arrives) {
        for (SentMessage &message : m_waiting)
            deliveries.emplace_back(std::move(message));
        m_waiting.clear();
        if (m_late) {
            deliveries.emplace_back(*m_late);
            m_late.reset();
        }
    } else if (fate == Fate::ComesLate) {
        m_late = packet;
    }
    return deliveries;
}

} // namespace manikinsim
