// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/Manikin.h"

#include "CPREventCompression.h"
#include "manikinsim/MessageContents.h"
#include "private/MessageLayouts.h"

#include <private/Units.h>

#include <chestboard/CommunicationIDs.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace manikinsim {

namespace {

using MessageLayouts::encode;
using C = CPREventCompression;
using E = CPREventBase;
using Kind = ScriptStep::Kind;

using Units::hmmPerMm;
using Units::msecsPerMinute;
using Units::msecsPerSecond;
constexpr int maxPeriod = std::numeric_limits<quint16>::max(); // ms that its field holds
constexpr int maxPause = std::numeric_limits<qint16>::max(); // s
constexpr int maxBreathRate = std::numeric_limits<qint8>::max(); // per minute

// The spring in the chest: g for each hundredth of a millimetre.
constexpr int stiffness = 5;

// Pushes over which the rate is taken.
constexpr std::size_t periodsOfRate = 4;

// A hand that leaves the chest rests on it for a moment and then lets it come up.
constexpr int restTime = 100; // ms
constexpr int riseTime = 300;

constexpr int one = 65536;

/// The way from 0 to \a one in the course of \a length, slow at both ends.
qint64 eased(int elapsed, int length)
{
    const qint64 u = qint64(qBound(0, elapsed, length)) * one / length;
    return (u * u / one) * (3 * one - 2 * u) / one;
}

/// What is left of \a one in the course of \a length when the air escapes by itself: fast at first.
qint64 escaped(int elapsed, int length)
{
    const qint64 u = one - qint64(qBound(0, elapsed, length)) * one / length;
    return (u * u / one) * u / one;
}

int between(int from, int to, qint64 share)
{
    return static_cast<int>(from + (to - from) * share / one);
}

/// The begin of the wave period that is the first at or after \a msecs.
int nextPeriod(int msecs)
{
    return (msecs + Manikin::period - 1) / Manikin::period * Manikin::period;
}

void send(std::vector<SentMessage> &messages, int now, quint32 identifier,
          const QByteArray &content, const Fact &fact = {})
{
    SentMessage message;
    message.identifier = identifier;
    message.sequence = now / Manikin::period;
    message.content = content;
    message.fact = fact;
    messages.push_back(message);
}

std::vector<ScriptStep> inOrder(std::vector<ScriptStep> script)
{
    std::stable_sort(script.begin(), script.end(),
                     [](const ScriptStep &a, const ScriptStep &b) { return a.msecs < b.msecs; });
    return script;
}

int firstReport(const Scenario &scenario)
{
    const auto &g = scenario.guidelines;
    const int seconds = hasCompressions(scenario.protocol)
        ? g.compressionInactivityLevel0TimeoutCPR
        : g.compressionInactivityLevel0TimeoutVentilationsOnly;
    return qMax(1, seconds);
}

} // namespace

Manikin::Manikin(const Scenario &scenario, quint64 seed, Rescuer *rescuer, Judge *judge)
    : m_scenario(scenario), m_noise(seed, 3), m_rescuer(rescuer), m_judge(judge),
      m_script(inOrder(scenario.script)), m_firstReport(firstReport(scenario))
{
}

WavePacket Manikin::advance(qint32 sequence, std::vector<SentMessage> &messages)
{
    // The curve has to know whether the hands stay on the chest, and a breath whether a push
    // overlaps it. That is why the plan is ahead of the curve.
    constexpr int lookAhead = 2000;
    const int now = sequence * period;
    m_rescuer->planTo(now + lookAhead);
    measureUntil(now, messages);
    reportPause(now, messages);
    followScript(now, messages);
    return {sequence, depthAt(now), volumeAt(now)};
}

/// Measures everything that has come to its peak or its end, in order of time.
void Manikin::measureUntil(int now, std::vector<SentMessage> &messages)
{
    auto &pushes = m_rescuer->pushes();
    auto &breaths = m_rescuer->breaths();
    for (;;) {
        const bool hasPush = !pushes.empty();
        const int pushTime = !hasPush ? now + 1
            : m_peakIsSent            ? pushes.front().end
                                      : pushes.front().peak;
        const int breathTime = breaths.empty() ? now + 1 : breaths.front().end;
        if (qMin(pushTime, breathTime) > now)
            return;
        if (breathTime < pushTime) {
            endBreath(breaths.front(), now, messages);
            breaths.pop_front();
        } else if (!m_peakIsSent) {
            send(messages, now, CommunicationIDs::RPL_COMP_PEAK_EV,
                 encode({{MessageLayouts::peakDepth, pushes.front().depth}}));
            m_peakIsSent = true;
        } else {
            endPush(pushes.front(), now, messages);
            pushes.pop_front();
            m_peakIsSent = false;
        }
    }
}

void Manikin::endPush(const Push &push, int now, std::vector<SentMessage> &messages)
{
    Compression c;
    c.start = push.start;
    c.peak = push.peak;
    c.end = push.end;
    c.period = m_hasPushed ? qMin(maxPeriod, push.start - m_lastPush.start) : 0;
    c.depth = push.depth;
    c.releaseDepth = push.releaseDepth;
    c.peakForce = push.depth * stiffness;
    c.releaseForce = push.releaseDepth * stiffness;
    c.status = push.hands;
    if (c.releaseDepth > m_scenario.guidelines.compressionAcceptableReleaseDepth * hmmPerMm)
        c.status |= C::CompStatusIncompleteRelease;

    rateAfter(c, now, messages);
    send(messages, now, CommunicationIDs::RPL_COMP_EVENT, contents::compression(c, now - c.start),
         c);
    m_judge->add(c);

    m_lastPush = push;
    m_hasPushed = true;
    m_lastActivity = qMax(m_lastActivity, c.end);
    m_recentPushes.push_back(push);
    constexpr std::size_t enough = 64; // pushes, more than the longest breath overlaps
    if (m_recentPushes.size() > enough)
        m_recentPushes.pop_front();
}

/// Tells the rate of the last pushes in this run when it has changed.
void Manikin::rateAfter(const Compression &c, int now, std::vector<SentMessage> &messages)
{
    if (!m_hasPushed || c.start - m_lastPush.end > Rescuer::maxGapInRun) {
        m_periods.clear();
        return;
    }
    m_periods.push_back(c.period);
    if (m_periods.size() > periodsOfRate)
        m_periods.pop_front();
    int sum = 0;
    for (const int each : m_periods)
        sum += each;
    const int pushes = static_cast<int>(m_periods.size());
    const int rate = (2 * msecsPerMinute * pushes + sum) / (2 * sum);
    if (rate == m_sentRate)
        return;
    m_sentRate = rate;
    send(messages, now, CommunicationIDs::RPL_COMP_RATE_UPDATE,
         encode({{MessageLayouts::compressionRate, rate}}), CompressionRate{rate});
}

void Manikin::endBreath(const Breath &breath, int now, std::vector<SentMessage> &messages)
{
    Ventilation v;
    v.start = breath.start;
    v.peak = breath.peak;
    v.end = breath.end;
    v.period = m_lastBreathStart < 0 ? 0 : qMin(maxPeriod, breath.start - m_lastBreathStart);
    v.volume = breath.volume;
    v.duringCompression = isDuringCompression(breath);
    m_judge->add(v);

    const int rate = qMin(maxBreathRate, m_judge->breathRate());
    if (rate >= 0 && rate != m_sentBreathRate) {
        m_sentBreathRate = rate;
        send(messages, now, CommunicationIDs::RPL_VENT_RATE_UPDATE,
             encode({{MessageLayouts::ventilationRate, rate}}), VentilationRate{rate});
    }
    send(messages, now, CommunicationIDs::RPL_VENT_EVENT, contents::ventilation(v, now - v.start),
         v);

    m_lastBreathStart = breath.start;
    m_lastActivity = qMax(m_lastActivity, v.end);
}

bool Manikin::isDuringCompression(const Breath &breath) const
{
    const auto overlaps = [&breath](const Push &push) {
        return push.start < breath.end && push.end > breath.start;
    };
    const auto &planned = m_rescuer->pushes();
    return std::any_of(m_recentPushes.begin(), m_recentPushes.end(), overlaps)
        || std::any_of(planned.begin(), planned.end(), overlaps);
}

bool Manikin::isTouched(int now) const
{
    const auto &pushes = m_rescuer->pushes();
    const auto &breaths = m_rescuer->breaths();
    return (!pushes.empty() && pushes.front().start <= now)
        || (!breaths.empty() && breaths.front().start <= now);
}

/// A pause is counted from the first wave period without activity, so that every report of it has
/// the same start.
void Manikin::reportPause(int now, std::vector<SentMessage> &messages)
{
    const int start = nextPeriod(m_lastActivity);
    const int lasted = now - start;
    const int seconds = lasted / msecsPerSecond;
    if (lasted <= 0 || lasted % msecsPerSecond != 0 || seconds < m_firstReport || seconds > maxPause
        || isTouched(now)) {
        return;
    }
    m_judge->addPause(start, seconds);
    send(messages, now, CommunicationIDs::RPL_COMP_INACTIVITY_TIME,
         encode({{MessageLayouts::inactivityTime, seconds}}), PauseReport{start, seconds});
    if (m_sentRate != 0) {
        m_sentRate = 0;
        send(messages, now, CommunicationIDs::RPL_COMP_RATE_UPDATE,
             encode({{MessageLayouts::compressionRate, 0}}), CompressionRate{0});
    }
}

void Manikin::followScript(int now, std::vector<SentMessage> &messages)
{
    for (; m_nextStep < m_script.size() && m_script[m_nextStep].msecs <= now; ++m_nextStep) {
        const ScriptStep &step = m_script[m_nextStep];
        switch (step.kind) {
        case Kind::HandsOff:
            break; // the rescuer knows
        case Kind::Shock:
            m_judge->addShock(now);
            send(messages, now, CommunicationIDs::RPL_DEFIB_SHOCK_EVENT,
                 encode({{MessageLayouts::shockEnergy, step.value}}), Shock{step.value});
            break;
        case Kind::Aed:
            send(messages, now, CommunicationIDs::RPL_GENERIC_EVENT,
                 contents::aedEvent(step.value, step.details), AedEvent{step.value, step.details});
            break;
        case Kind::RemoteButton: {
            // Only these two are more than a press.
            const bool isEvent = step.value == E::RemoteBtnShowPadPlacementLEDS
                || step.value == E::RemoteBtnCPRfirst;
            send(messages, now, CommunicationIDs::RPL_AED_REMOTE_CTRL,
                 encode({{MessageLayouts::remoteButton, step.value}}),
                 isEvent ? Fact(AedEvent{E::AEDRemoteControlOtherButtonPressed,
                                         {step.value, E::ApplyToSingleManikin}})
                         : Fact(NoEvent{}));
            break;
        }
        case Kind::Rhythm:
            send(messages, now, CommunicationIDs::RPL_ECG_STATUS, contents::rhythm(step.value),
                 step.value == E::AED_NoECGRhythm ? Fact(NoEvent{}) : Fact(Rhythm{step.value}));
            break;
        case Kind::User:
            send(messages, now, CommunicationIDs::RPL_USER_EVENT, contents::userEvent(step.text),
                 UserEvent{step.text});
            break;
        }
    }
}

/// Depth of the chest in hundredths of a millimetre, with the tremor of the hands and the noise of
/// the sensor.
int Manikin::depthAt(int now)
{
    const auto &pushes = m_rescuer->pushes();
    const bool isPushed = !pushes.empty() && pushes.front().start <= now;
    const int sinceLast = now - m_lastPush.end;
    if (isPushed) {
        const Push &push = pushes.front();
        const bool stayedOn = m_hasPushed && push.start - m_lastPush.end <= Rescuer::maxGapInRun;
        const int floor = stayedOn ? m_lastPush.releaseDepth : 0;
        const int depth = now <= push.peak
            ? between(floor, push.depth, eased(now - push.start, push.peak - push.start))
            : between(push.depth, push.releaseDepth, eased(now - push.peak, push.end - push.peak));
        return qBound(0, depth + m_noise.between(-12, 12), push.depth);
    }
    if (m_hasPushed && m_lastPush.releaseDepth > 0) {
        const bool staysOn =
            !pushes.empty() && pushes.front().start - m_lastPush.end <= Rescuer::maxGapInRun;
        if (staysOn || sinceLast < restTime)
            return qMax(0, m_lastPush.releaseDepth + m_noise.between(-12, 12));
        if (sinceLast < restTime + riseTime) {
            const qint64 risen = eased(sinceLast - restTime, riseTime);
            return qMax(0, between(m_lastPush.releaseDepth, 0, risen) + m_noise.between(-8, 8));
        }
    }
    return m_noise.between(0, 6);
}

/// Volume in the lungs in ml, with the noise of the sensor.
int Manikin::volumeAt(int now)
{
    const auto &breaths = m_rescuer->breaths();
    if (breaths.empty() || breaths.front().start > now)
        return m_noise.between(0, 2);
    const Breath &breath = breaths.front();
    int volume = breath.volume;
    if (now < breath.peak)
        volume = between(0, volume, eased(now - breath.start, breath.peak - breath.start));
    else if (now > breath.exhalation)
        volume =
            between(0, volume, escaped(now - breath.exhalation, breath.end - breath.exhalation));
    return qBound(0, volume + m_noise.between(-2, 2), breath.volume);
}

} // namespace manikinsim
