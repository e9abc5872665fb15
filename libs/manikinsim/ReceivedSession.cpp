// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/ReceivedSession.h"

#include "manikinsim/Judge.h"
#include "manikinsim/Manikin.h"
#include "manikinsim/MessageContents.h"

#include <algorithm>

namespace manikinsim {

namespace {

using E = CPREventBase;

constexpr int msecsPerSecond = 1000;

// A compression that begins later than this after the one before opens a new cycle, ms.
constexpr int cycleGap = 500;

/// Manikins of this size need finer samples.
bool isSmall(E::ManikinType type)
{
    constexpr std::array small{E::KDX_INFANT,  E::ORM_NEW_B,   E::ORM_NEW_B_ADV,
                               E::VIVARO_BABY, E::CAN_ORMBABY, E::CAN_ORMNEWB};
    return std::find(small.begin(), small.end(), type) != small.end();
}

template <std::size_t N> QString versionText(const std::array<quint8, N> &numbers)
{
    QStringList texts;
    for (const quint8 number : numbers)
        texts.append(QString::number(number));
    return texts.join(QLatin1Char('.'));
}

bool isWhole(const SentMessage &message)
{
    return message.fate == SentMessage::Fate::Whole;
}

/// A rate out of a message that was cut: the bytes that are missing count as 0.
int arrivedRate(const SentMessage &message, int rate)
{
    return message.content.size() > 1 ? rate : 0;
}

} // namespace

ReceivedSession::ReceivedSession(const Scenario &scenario) : m_scenario(scenario)
{
    const Device &device = scenario.device;
    Truth::Manikin &manikin = m_truth.manikin;
    manikin.type = device.type;
    manikin.firmwareVersion =
        versionText(device.firmware) + QLatin1Char('.') + QString::number(device.firmwareBuild);
    manikin.rfidVersion = versionText(device.rfid);
    manikin.feedpodVersion = versionText(device.feedpod);
    manikin.connectedAed = scenario.link.shortMessages ? E::AEDNotPossible : device.connectedAed;
    manikin.compressions = device.compressions;
    manikin.ventilations = device.ventilations;
    manikin.battery = contents::batteryParameters(device);
    manikin.waveDataStep = isSmall(device.type) ? 1 : 10;

    for (const QString &learner : scenario.learners) {
        if (!m_truth.learners.contains(learner))
            m_truth.learners.append(learner);
    }
    m_truth.protocol = scenario.protocol;
    m_truth.guidelineIds =
        QStringList{QString::fromStdString(scenario.guidelines.guidelinesID),
                    QString::fromStdString(scenario.otherGuidelines.guidelinesID)};
    m_truth.waveDelay = device.waveDelay;
    if (scenario.link.cutGuidelines)
        ++m_truth.refusedMessages;

    list(E::CprSessionInfo, 0, 0);
    if (manikin.connectedAed != E::AEDNotDetected && manikin.connectedAed != E::AEDNotPossible) {
        m_truth.aedEvents.push_back(
            {0, {{E::aedEventType, E::AEDType}, {E::aedType, manikin.connectedAed}}});
        list(E::CprAedEvent, 0, 0);
    }
}

/// Enters an event behind the last one that has ended when this one begins.
Truth::ListedEvent &ReceivedSession::list(E::EventType type, int msecs, int endTime)
{
    auto position = m_truth.events.end();
    while (position != m_truth.events.begin() && (position - 1)->endTime > msecs)
        --position;
    return *m_truth.events.insert(position, {type, msecs, endTime});
}

int ReceivedSession::reduced(int value) const
{
    const int step = m_truth.manikin.waveDataStep;
    return value / step * step;
}

bool ReceivedSession::isWithAed() const
{
    return !m_truth.aedEvents.empty() || !m_truth.shocks.empty() || !m_truth.rhythms.empty()
        || !m_truth.userEvents.empty();
}

void ReceivedSession::header(qint32 sequence)
{
    // A number that was expected later is no loss. The numbering goes on from it all the same.
    if (const qint64 missing = sequence - m_expectedSequence; missing > 0) {
        const auto start = static_cast<int>(m_expectedSequence * Manikin::period);
        const int end = (sequence - 1) * Manikin::period;
        const auto samples = static_cast<int>(missing);
        m_truth.packetLosses.push_back({start, end, samples});
        list(E::CprPacketLossStart, start, start);
        list(E::CprPacketLossEnd, end, end);
        m_depths.fill(samples, m_lastDepth);
        m_volumes.fill(samples, 0);
    }
    m_sessionTime = sequence * Manikin::period;
    m_expectedSequence = qint64(sequence) + 1;
}

void ReceivedSession::take(const WavePacket &packet)
{
    header(packet.sequence);
    m_lastDepth = reduced(packet.depth);
    m_depths.record(m_lastDepth, packet.sequence);
    if (m_volumes.count() == 0)
        m_truth.volumeWaveStart = m_sessionTime;
    m_volumes.record(reduced(packet.volume), packet.sequence);
}

void ReceivedSession::take(const SentMessage &message)
{
    std::visit([&](const auto &fact) { take(message, fact); }, message.fact);
}

void ReceivedSession::take(const SentMessage &message, const Truth::Compression &compression)
{
    m_truth.compressions.push_back(compression);
    if (!isWhole(message)) {
        ++m_truth.refusedMessages;
        return;
    }
    Truth::Compression &c = m_truth.compressions.back();
    c.isListed = true;
    c.meanRate = m_rate;
    c.leaningDepth = m_leaningDepth;
    c.leaningForce = m_leaningForce;
    m_leaningDepth = c.releaseDepth;
    m_leaningForce = c.releaseForce;
    number(c);
    list(E::CprCompEvent, c.start, c.end);
}

void ReceivedSession::number(Truth::Compression &c)
{
    // A breath takes longer than a compression, so that none is ever told about before a
    // compression that had begun earlier.
    const bool opensCycle = m_lastEnd != 0 && c.start - m_lastEnd > cycleGap;
    m_numbered = opensCycle ? 1 : m_numbered + 1;
    c.numberInCycle = m_numbered;
    m_lastEnd = c.end;
}

void ReceivedSession::take(const SentMessage &message, const Truth::Ventilation &ventilation)
{
    m_truth.ventilations.push_back(ventilation);
    if (!isWhole(message)) {
        ++m_truth.refusedMessages;
        return;
    }
    Truth::Ventilation &v = m_truth.ventilations.back();
    v.isListed = true;
    v.rate = m_breathRate;
    m_numbered = 0;
    list(E::CprVentEvent, v.start, v.end);
}

void ReceivedSession::take(const SentMessage &message, const PauseReport &report)
{
    auto &pauses = m_truth.pauses;
    if (pauses.empty() || pauses.back().start != report.start) {
        Truth::Pause pause;
        pause.start = report.start;
        pauses.push_back(pause);
    }
    Truth::Pause &pause = pauses.back();
    pause.lasted = report.seconds;
    if (!isWhole(message)) {
        m_truth.refusedMessages += message.fate == SentMessage::Fate::Cut;
        return;
    }

    const int end = m_sessionTime;
    m_truth.inactivitySum = static_cast<qint16>(m_truth.inactivitySum + report.seconds);
    m_numbered = 0;
    if (pause.isListed) {
        const auto listed =
            std::find_if(m_truth.events.rbegin(), m_truth.events.rend(),
                         [](const auto &e) { return e.type == E::CprInactivityCPR; });
        listed->endTime = end;
    } else {
        list(E::CprInactivityCPR, pause.start, end);
    }
    pause.isListed = true;
    pause.seconds = report.seconds;
    pause.end = end;
}

void ReceivedSession::take(const SentMessage &message, const CompressionRate &rate)
{
    m_rate = arrivedRate(message, rate.rate);
}

void ReceivedSession::take(const SentMessage &message, const VentilationRate &rate)
{
    m_breathRate = arrivedRate(message, rate.rate);
}

void ReceivedSession::take(const SentMessage &, const Truth::Shock &shock)
{
    m_truth.shocks.push_back({m_sessionTime, shock.energy});
    list(E::ShockDelivered, m_sessionTime, m_sessionTime);
}

void ReceivedSession::take(const SentMessage &, const Truth::AedEvent &event)
{
    m_truth.aedEvents.push_back({m_sessionTime, event.parameters});
    list(E::CprAedEvent, m_sessionTime, m_sessionTime);
}

void ReceivedSession::take(const SentMessage &, const Truth::Rhythm &rhythm)
{
    m_truth.rhythms.push_back({m_sessionTime, rhythm.rhythm, rhythm.rhythm != m_rhythm});
    m_rhythm = rhythm.rhythm;
    list(E::CprCprdEvent, m_sessionTime, m_sessionTime);
}

void ReceivedSession::take(const SentMessage &, const Truth::UserEvent &event)
{
    m_truth.userEvents.push_back({m_sessionTime, event.eventId});
    list(E::Event, m_sessionTime, m_sessionTime);
}

void ReceivedSession::take(const SentMessage &, const NoEvent &)
{
    ++m_truth.refusedMessages;
}

void ReceivedSession::take(const SentMessage &, std::monostate)
{
}

void ReceivedSession::finish(const Parameters &statistics, const Parameters &scores)
{
    m_truth.depthWave = m_depths.summary();
    m_truth.volumeWave = m_volumes.summary();
    m_truth.finalSessionTime = m_sessionTime;
    m_truth.totalTime = statistics.value(E::sessionDuration);
    const int recorded = m_truth.depthWave.count * Manikin::period;
    m_truth.loadedTotalTime = (recorded + msecsPerSecond - 1) / msecsPerSecond;

    m_truth.statistics = statistics;
    m_truth.scores = scores;
    if (m_scenario.link.shortMessages) {
        for (const E::ParameterType missing : contents::newerStatistics())
            m_truth.statistics.remove(missing);
        // Has a value from the beginning, unlike the others.
        m_truth.statistics.insert(E::ventilationsPerMinute, 0);
        for (const E::ParameterType missing : contents::newerReductions())
            m_truth.scores.insert(missing, 0);
    }
    const Judge::Advices advices = Judge::advices(m_truth.scores, m_scenario.protocol);
    m_truth.primaryAdvice = advices.primary;
    m_truth.secondaryAdvice = advices.secondary;

    // The statistics are entered before they know their time.
    Truth::ListedEvent &listed = list(E::CprSessionStatistics, 0, 0);
    listed.msecs = listed.endTime = m_sessionTime;
    list(E::CprSessionScore, m_sessionTime, m_sessionTime);
}

} // namespace manikinsim
