// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef ORACLE_RECEIVEDSESSION_H
#define ORACLE_RECEIVEDSESSION_H

#include "Truth.h"
#include "manikinsim/Scenario.h"

namespace oracle {

/// Keeps the truth about a simulated session: what happened, and what a receiver that works as it
/// should makes of the packets and messages that reach it.
///
/// The receiver is one that has just been created. Messages come with what they mean; their bytes
/// are not looked at.
class ReceivedSession final : public manikinsim::Listener {
public:
    explicit ReceivedSession(const manikinsim::Scenario &scenario);

    void arrived(const manikinsim::WavePacket &packet) override;
    void arrived(const manikinsim::SentMessage &message) override;
    void finished(const Parameters &statistics, const Parameters &scores) override;

    /// The truth so far; whole when the session is finished.
    const Truth &truth() const { return m_truth; }

private:
    using Message = manikinsim::SentMessage;

    void header(qint32 sequence);
    void enter(const Message &message, const manikinsim::Compression &compression);
    void enter(const Message &message, const manikinsim::Ventilation &ventilation);
    void enter(const Message &message, const manikinsim::PauseReport &report);
    void enter(const Message &message, const manikinsim::CompressionRate &rate);
    void enter(const Message &message, const manikinsim::VentilationRate &rate);
    void enter(const Message &, const manikinsim::Shock &shock);
    void enter(const Message &, const manikinsim::AedEvent &event);
    void enter(const Message &, const manikinsim::Rhythm &rhythm);
    void enter(const Message &, const manikinsim::UserEvent &event);
    void enter(const Message &, const manikinsim::NoEvent &) { }
    void enter(const Message &, std::monostate) { }
    void number(Truth::Compression &compression);
    int reduced(int value) const;

    const manikinsim::Scenario m_scenario;
    Truth m_truth;
    int m_sessionTime = 0;
    qint64 m_expectedSequence = 1;
    int m_lastDepth = 0;
    int m_rate = 0;
    int m_breathRate = -1;
    int m_numbered = 0; // compressions in the current cycle
    int m_lastEnd = 0; // of the last listed compression; 0: none yet
    int m_leaningDepth = 0; // that the next compression shows
    int m_leaningForce = -1;
    int m_rhythm = 0;
};

} // namespace oracle

#endif
