// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/Rescuer.h"

#include "CPREventCompression.h"

#include <private/Units.h>

#include <algorithm>

using bls_2010::CommonDefs;

namespace manikinsim {

namespace {

using Units::hmmPerMm;
using Units::msecsPerMinute;
using Units::msecsPerSecond;

// The chest's stop.
constexpr int deepest = 6500;
constexpr int minStroke = 700;

constexpr int minPush = 240;
constexpr int maxPush = 480;
constexpr int minPeriod = 300;
constexpr int maxPeriod = maxPush + Rescuer::maxGapInRun - 20;

constexpr int pushesInStretch = 30;
constexpr int breathsInStretch = 6;

// The shares of a rescuer's spread between runs, and within a run. Their squares add up to 1.
constexpr int runPercent = 60;
constexpr int pushPercent = 80;

int withinSpread(int deviation, const Measure &measure)
{
    return measure.mean + qBound(-3 * measure.spread, deviation, 3 * measure.spread);
}

} // namespace

Rescuer::Rescuer(const Scenario &scenario, quint64 seed)
    : m_scenario(scenario), m_random(seed, 1), m_breathing(seed, 2)
{
    // Time enough for the last message.
    m_lastMoment = scenario.seconds * msecsPerSecond - 100;
    for (const ScriptStep &step : scenario.script) {
        if (step.kind == ScriptStep::Kind::HandsOff)
            m_handsOff.push_back({step.msecs, step.msecs + step.value});
    }
    std::stable_sort(m_handsOff.begin(), m_handsOff.end(),
                     [](const HandsOff &a, const HandsOff &b) { return a.begin < b.begin; });

    m_now = m_random.around(1200, 150);
    m_nextBreath = m_now + m_breathing.around(3500, 300);
    if (hasCompressions(scenario.protocol) && hasBreaths(scenario.protocol)
        && scenario.preVentilations > 0) {
        planBreaths(scenario.preVentilations);
        m_nextBreath = m_now + m_breathing.around(3500, 300);
    }
}

void Rescuer::planTo(int msecs)
{
    while (m_now < msecs && m_now < m_lastMoment)
        planNext();
    int planned = m_now;
    if (m_scenario.protocol == CommonDefs::CPR_HIGH_PERFORMANCE) {
        while (m_nextBreath < msecs && m_nextBreath < m_lastMoment)
            planBreathAtPace();
        planned = qMin(planned, m_nextBreath);
    }
    while (!m_handsOff.empty() && m_handsOff.front().end <= planned)
        m_handsOff.pop_front();
}

void Rescuer::planNext()
{
    if (m_scenario.protocol == CommonDefs::CPR_VENTILATION_ONLY)
        planBreathAtPace();
    else if (hasCycles(m_scenario.protocol))
        planCycle();
    else
        planStretch();
}

/// Whether something can be done from \a start to \a end; if not, \a next is when to try again.
bool Rescuer::mayAct(int start, int end, int &next) const
{
    if (!canFinish(end)) {
        next = m_lastMoment;
        return false;
    }
    for (const HandsOff &handsOff : m_handsOff) {
        if (start < handsOff.end && end > handsOff.begin) {
            next = handsOff.end;
            return false;
        }
    }
    return true;
}

bool Rescuer::canFinish(int end) const
{
    return end <= m_lastMoment;
}

int Rescuer::reaction()
{
    return m_random.between(300, 700);
}

int Rescuer::changeOver()
{
    const Measure &usual = m_scenario.skill.changeOver;
    const int pause = m_random.around(usual.mean, usual.spread);
    return qMax(50, m_scenario.protocol == CommonDefs::CPR_TWO_RESCUER ? pause / 3 : pause);
}

/// How many a rescuer does who means to do \a count and miscounts by at most \a off.
int Rescuer::counted(int count, int miscounts, int off)
{
    if (!m_random.percent(miscounts))
        return count;
    const int by = m_random.between(1, off);
    return m_random.percent(50) && count > by ? count - by : count + by;
}

void Rescuer::planCycle()
{
    const bls_2010::GuidelineValues_t &g = m_scenario.guidelines;
    const int pushes = m_scenario.protocol == CommonDefs::CPR_TWO_RESCUER
        ? g.compressionsBetweenVentilationsTwoRescuer
        : g.compressionsBetweenVentilations;
    const int breaths = g.ventilationsBetweenCompressions;
    const Skill &skill = m_scenario.skill;

    m_inRun = 0;
    if (!planRun(counted(qMax(1, pushes), skill.compressionMiscounts, 4)))
        return;
    m_now = m_lastPushEnd + changeOver();
    planBreaths(counted(qMax(1, breaths), skill.breathMiscounts, 1));
    if (m_random.percent(skill.pauses))
        m_now += qMax(0, m_random.around(skill.pauseLength.mean, skill.pauseLength.spread));
}

/// Breaths one after the other, and the way back to the chest.
void Rescuer::planBreaths(int count)
{
    for (int i = 0; i < count; ++i) {
        const Breath breath = makeBreath(m_now);
        if (!mayAct(breath.start, breath.end, m_now)) {
            m_now += reaction();
            return;
        }
        m_breaths.push_back(breath);
        m_now = breath.end + m_breathing.between(80, 160);
    }
    m_now += changeOver();
}

/// Compressions without breaths, or without regard to them.
void Rescuer::planStretch()
{
    if (!planRun(pushesInStretch)) {
        m_inRun = 0;
        return;
    }
    const Skill &skill = m_scenario.skill;
    if (!m_random.percent(skill.pauses))
        return;
    m_now =
        m_lastPushEnd + qMax(0, m_random.around(skill.pauseLength.mean, skill.pauseLength.spread));
    m_inRun = 0;
    const HandsOff pause{m_lastPushEnd, m_now};
    m_handsOff.insert(
        std::upper_bound(m_handsOff.begin(), m_handsOff.end(), pause,
                         [](const HandsOff &a, const HandsOff &b) { return a.begin < b.begin; }),
        pause);
}

/// False when the run was broken off.
bool Rescuer::planRun(int count)
{
    const Skill &skill = m_scenario.skill;
    m_runDepth = m_random.around(0, skill.depth.spread * runPercent / 100);
    m_runRate = m_random.around(0, skill.rate.spread * 10 * runPercent / 100);
    for (int i = 0; i < count; ++i) {
        int period = 0;
        const Push push = makePush(m_now, period);
        if (!mayAct(push.start, push.end, m_now)) {
            m_now += reaction();
            return false;
        }
        m_pushes.push_back(push);
        ++m_inRun;
        m_lastPushEnd = push.end;
        m_now = push.start + period;
    }
    return true;
}

/// A push at \a start, and the \a period after which the next one begins.
Push Rescuer::makePush(int start, int &period)
{
    const Skill &skill = m_scenario.skill;

    // Tenths of a push per minute, so that the rounding of a slow rate leaves no steps.
    const Measure rate{skill.rate.mean * 10, skill.rate.spread * 10};
    const int tenths =
        withinSpread(m_runRate + m_random.around(0, rate.spread * pushPercent / 100), rate);
    period = qBound(minPeriod, 10 * msecsPerMinute / qMax(1, tenths), maxPeriod);

    Push push;
    const int length =
        qMin(qBound(minPush, period * m_random.between(72, 78) / 100, maxPush), period - 20);
    push.start = start;
    push.peak = start + length * m_random.between(44, 50) / 100;
    push.end = start + length;

    const int tired = skill.fatigue * qMin(m_inRun, pushesInStretch) / pushesInStretch;
    const int meant = withinSpread(
        m_runDepth + m_random.around(0, skill.depth.spread * pushPercent / 100), skill.depth);
    const int detected = m_scenario.guidelines.compressionDetectDepth * hmmPerMm;
    push.depth = qBound(qMin(deepest, detected + minStroke), meant - tired, deepest);

    const int acceptable = m_scenario.guidelines.compressionAcceptableReleaseDepth * hmmPerMm;
    const bool leans = m_random.percent(skill.incompleteReleases);
    const Measure &release = leans ? skill.leaningDepth : skill.releaseDepth;
    const int wanted = m_random.around(release.mean, release.spread);
    push.releaseDepth = leans ? qMax(acceptable + 50, wanted) : qBound(0, wanted, acceptable);
    push.releaseDepth = qMin(push.releaseDepth, push.depth - minStroke);

    using C = CPREventCompression;
    constexpr quint8 faults[] = {
        C::CompStatusHandposXiphoidErrorDetected,
        C::CompStatusHandposErrorDetected | C::CompStatusHandposErrorLeftHandSide,
        C::CompStatusHandposErrorDetected | C::CompStatusHandposErrorRightHandSide,
        C::CompStatusHandposErrorDetected | C::CompStatushandposErrorTooHighUpOnChest,
    };
    push.hands = m_random.percent(skill.handFaults) ? faults[m_random.below(4)]
                                                    : quint8(C::CompStatusHandposCorrectActivated);
    return push;
}

/// The time from one breath to the next, where breaths keep a pace of their own.
int Rescuer::breathInterval(int length)
{
    const bls_2010::GuidelineValues_t &g = m_scenario.guidelines;
    const bool alone = m_scenario.protocol == CommonDefs::CPR_VENTILATION_ONLY;
    const int slowest = alone ? g.ventilationRateMinForVentilationsOnly : g.ventilationRateMinHPCPR;
    const int fastest = alone ? g.ventilationRateMaxForVentilationsOnly : g.ventilationRateMaxHPCPR;
    const int aim = qMax(1, slowest + (fastest - slowest) / 2);
    const Measure &pace = m_scenario.skill.breathPace;
    const int percent = qMax(10, m_breathing.around(pace.mean, pace.spread));
    return qMax(length + 200, msecsPerMinute * 100 / (aim * percent));
}

void Rescuer::planBreathAtPace()
{
    const bool alone = m_scenario.protocol == CommonDefs::CPR_VENTILATION_ONLY;
    int &next = alone ? m_now : m_nextBreath;
    const Breath breath = makeBreath(next);
    if (!mayAct(breath.start, breath.end, next)) {
        next += reaction();
        return;
    }
    m_breaths.push_back(breath);
    next = breath.start + breathInterval(breath.end - breath.start);

    const Skill &skill = m_scenario.skill;
    if (alone && ++m_breathsInRow % breathsInStretch == 0 && m_breathing.percent(skill.pauses))
        next += qMax(0, m_breathing.around(skill.pauseLength.mean, skill.pauseLength.spread));
}

Breath Rescuer::makeBreath(int start)
{
    const Skill &skill = m_scenario.skill;
    Breath breath;
    breath.start = start;
    breath.peak =
        start + qMax(300, m_breathing.around(skill.inflationTime.mean, skill.inflationTime.spread));
    breath.exhalation = breath.peak + m_breathing.between(60, 120);
    breath.end = breath.exhalation + m_breathing.between(340, 440);
    breath.volume = qMax(m_scenario.guidelines.ventilationDetectVolume + 1,
                         m_breathing.around(skill.volume.mean, skill.volume.spread));
    return breath;
}

} // namespace manikinsim
