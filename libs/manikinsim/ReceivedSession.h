// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_RECEIVEDSESSION_H
#define MANIKINSIM_RECEIVEDSESSION_H

#include "manikinsim/KeptWave.h"
#include "manikinsim/Scenario.h"
#include "manikinsim/SentMessage.h"
#include "manikinsim/Truth.h"

namespace manikinsim {

/// Keeps the truth about a session: what happened, and what a receiver that works as it should
/// makes of the packets and messages that reach it.
///
/// The receiver is one that has just been created. Messages come with what they mean; their bytes
/// are not looked at.
class ReceivedSession {
public:
    explicit ReceivedSession(const Scenario &scenario);

    void take(const WavePacket &packet);
    void take(const SentMessage &message);
    /// The session has ended, and these figures are sent.
    void finish(const Parameters &statistics, const Parameters &scores);

    /// Whether an AED, a shock, a rhythm or a user event is listed, so that time without flow is
    /// not the rescuer's fault.
    bool isWithAed() const;

    const Truth &truth() const { return m_truth; }

private:
    void header(qint32 sequence);
    void take(const SentMessage &message, const Truth::Compression &compression);
    void take(const SentMessage &message, const Truth::Ventilation &ventilation);
    void take(const SentMessage &message, const PauseReport &report);
    void take(const SentMessage &message, const CompressionRate &rate);
    void take(const SentMessage &message, const VentilationRate &rate);
    void take(const SentMessage &message, const Truth::Shock &shock);
    void take(const SentMessage &message, const Truth::AedEvent &event);
    void take(const SentMessage &message, const Truth::Rhythm &rhythm);
    void take(const SentMessage &message, const Truth::UserEvent &event);
    void take(const SentMessage &message, const NoEvent &);
    void take(const SentMessage &message, std::monostate);
    void number(Truth::Compression &compression);
    Truth::ListedEvent &list(CPREventBase::EventType type, int msecs, int endTime);
    int reduced(int value) const;

    const Scenario m_scenario;
    Truth m_truth;
    KeptWave m_depths;
    KeptWave m_volumes;
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

} // namespace manikinsim

#endif
