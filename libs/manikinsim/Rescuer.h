// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINSIM_RESCUER_H
#define MANIKINSIM_RESCUER_H

#include "manikinsim/Random.h"
#include "manikinsim/Scenario.h"

#include <deque>

namespace manikinsim {

/// One push on the chest. Times in ms, depths in hundredths of a millimetre.
struct Push {
    int start = 0;
    int peak = 0;
    int end = 0;
    int depth = 0;
    int releaseDepth = 0;
    quint8 hands = 0; ///< where they lie: bits of CPREventCompression::CompEventStatus
};

/// One breath into the lungs. Times in ms.
struct Breath {
    int start = 0;
    int peak = 0; ///< end of the inflation
    int exhalation = 0; ///< the air has been held until here
    int end = 0;
    int volume = 0; ///< ml
};

/// Plans what the rescuers do, as far ahead as it is asked for.
///
/// With cycles, compressions and breaths take turns by the numbers of the guideline set. High
/// performance CPR compresses without a break, and breaths are given at their own pace meanwhile.
/// While the scenario has hands off, and when the session is about to end, nothing is begun that
/// could not be finished; after hands off a new cycle begins.
class Rescuer {
public:
    Rescuer(const Scenario &scenario, quint64 seed);

    /// A push that begins later than this after the end of the one before begins a new run. Within
    /// a run the rescuer is never as slow.
    static constexpr int maxGapInRun = 500;

    /// Plans everything that begins before \a msecs.
    void planTo(int msecs);

    /// What is planned, in order of time. Whoever has acted it takes it from the front. Pushes do
    /// not overlap one another, nor do breaths.
    std::deque<Push> &pushes() { return m_pushes; }
    std::deque<Breath> &breaths() { return m_breaths; }

private:
    struct HandsOff {
        int begin;
        int end;
    };

    void planNext();
    void planCycle();
    void planBreaths(int count);
    void planStretch();
    bool planRun(int count);
    void planBreathAtPace();
    bool mayAct(int start, int end, int &next) const;
    bool canFinish(int end) const;
    int counted(int count, int miscounts, int off);
    int changeOver();
    int breathInterval(int length);
    Push makePush(int start, int &period);
    Breath makeBreath(int start);
    int reaction();

    const Scenario m_scenario;
    Random m_random;
    Random m_breathing; // has its own numbers: pushes and breaths are planned independently
    std::deque<Push> m_pushes;
    std::deque<Breath> m_breaths;
    std::deque<HandsOff> m_handsOff; // in order of time
    int m_lastMoment; // at which something may end
    int m_now = 0; // when the next thing can begin
    int m_nextBreath = 0; // the same for breaths that keep their own pace
    int m_breathsInRow = 0;
    int m_lastPushEnd = 0;
    int m_inRun = 0; // pushes since the run began
    int m_runDepth = 0; // deviation of the whole run from the rescuer's mean
    int m_runRate = 0;
};

} // namespace manikinsim

#endif
