// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_LINK_H
#define MANIKINSIM_LINK_H

#include "manikinsim/Random.h"
#include "manikinsim/Scenario.h"
#include "manikinsim/SentMessage.h"

#include <optional>
#include <variant>
#include <vector>

namespace manikinsim {

/// Carries wave packets and messages from the manikin to the host, with the faults of the scenario.
///
/// Wave packets can be lost, messages cannot: those of a lost packet wait for the next packet that
/// arrives and keep their own sequence numbers. Only the report of a pause is dropped, since it is
/// worthless when it is late.
class Link {
public:
    using Delivery = std::variant<WavePacket, SentMessage>;

    Link(const Scenario &scenario, quint64 seed);

    /// The session lasts for \a seconds, not for as long as the scenario says. A wave packet is
    /// still to come.
    void endAfter(int seconds);

    /// What arrives in the wave period of \a packet, in this order.
    std::vector<Delivery> carry(const WavePacket &packet, std::vector<SentMessage> &messages);

private:
    enum class Fate { Arrives, IsLost, ComesLate, IsRepeated };

    Fate fateOf(const WavePacket &packet);
    bool isSpared(const WavePacket &packet) const;
    void cut(SentMessage &message);

    const LinkFaults m_faults;
    Random m_random;
    qint32 m_lastSequence;
    int m_lossLeft = 0; // wave packets that are still to be lost
    std::optional<WavePacket> m_late;
    std::vector<SentMessage> m_waiting;
};

} // namespace manikinsim

#endif
