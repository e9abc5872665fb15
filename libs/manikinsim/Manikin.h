// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_MANIKIN_H
#define MANIKINSIM_MANIKIN_H

#include "manikinsim/Judge.h"
#include "manikinsim/Random.h"
#include "manikinsim/Rescuer.h"
#include "manikinsim/Scenario.h"
#include "manikinsim/SentMessage.h"

#include <deque>
#include <vector>

namespace manikinsim {

/// The manikin under the rescuer's hands: samples chest and lungs every wave period, measures what
/// is done to it, and tells about it.
class Manikin {
public:
    /// ms from one wave sample to the next: 50 samples a second.
    static constexpr int period = 20;

    /// What \a rescuer plans is done to the manikin; both are not owned.
    Manikin(const Scenario &scenario, quint64 seed, Rescuer *rescuer, Judge *judge);

    /// Goes on to the wave period \a sequence; appends what there is to tell to \a messages.
    WavePacket advance(qint32 sequence, std::vector<SentMessage> &messages);

private:
    void measureUntil(int now, std::vector<SentMessage> &messages);
    void endPush(const Push &push, int now, std::vector<SentMessage> &messages);
    void endBreath(const Breath &breath, int now, std::vector<SentMessage> &messages);
    void reportPause(int now, std::vector<SentMessage> &messages);
    void followScript(int now, std::vector<SentMessage> &messages);
    void rateAfter(const Compression &compression, int now, std::vector<SentMessage> &messages);
    bool isDuringCompression(const Breath &breath) const;
    bool isTouched(int now) const;
    int depthAt(int now);
    int volumeAt(int now);

    const Scenario m_scenario;
    Random m_noise;
    Rescuer *m_rescuer; // not owned
    Judge *m_judge; // not owned
    std::vector<ScriptStep> m_script; // in order of time
    std::size_t m_nextStep = 0;
    const int m_firstReport; // seconds after which a pause is reported

    Push m_lastPush;
    bool m_hasPushed = false;
    bool m_peakIsSent = false; // of the push that is being made
    std::deque<Push> m_recentPushes; // as far back as a breath that still lasts may reach
    int m_lastBreathStart = -1;
    std::deque<int> m_periods; // the last ones of this run
    int m_sentRate = 0;
    int m_sentBreathRate = -1;
    int m_lastActivity = 0; // its end
};

} // namespace manikinsim

#endif
