// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ReceivedSession.h"

#include "manikinsim/Manikin.h"
#include "private/MessageLayouts.h"

#include <algorithm>
#include <array>

using bls_2010::CommonDefs;
using manikinsim::Manikin;
using manikinsim::SentMessage;

namespace oracle {

namespace {

using E = CPREventBase;

constexpr int msecsPerSecond = 1000;
constexpr int fullScore = 100;

// A compression that begins later than this after the one before opens a new cycle, ms.
constexpr int cycleGap = 500;

/// Manikins of this size need finer samples.
bool isSmall(E::ManikinType type)
{
    constexpr std::array small{E::KDX_INFANT,  E::ORM_NEW_B,   E::ORM_NEW_B_ADV,
                               E::VIVARO_BABY, E::CAN_ORMBABY, E::CAN_ORMNEWB};
    return std::find(small.begin(), small.end(), type) != small.end();
}

bool isComplete(const SentMessage &message)
{
    return message.fate == SentMessage::Fate::Complete;
}

/// Appends \a value or, when \a index lies inside the wave, overwrites all from there on.
void record(QVector<int> &wave, int value, int index)
{
    if (index >= wave.size())
        wave.append(value);
    else
        std::fill(wave.begin() + index, wave.end(), value);
}

/// A rate out of a message that was cut: the bytes that are missing count as 0.
int arrivedRate(const SentMessage &message, int rate)
{
    return message.content.size() > 1 ? rate : 0;
}

/// The parameters under which an AED event is shown.
Parameters parametersOf(const manikinsim::AedEvent &event)
{
    Parameters values{{E::aedEventType, event.kind}};
    auto next = event.details.begin();
    for (const MessageLayouts::AedDetail &detail : MessageLayouts::aedDetails) {
        if (detail.kind == event.kind && next != event.details.end())
            values.insert(detail.field.key, *next++);
    }
    return values;
}

/// What the scores advise: the worst first.
std::vector<E::Advice> advices(const Parameters &scores, manikinsim::Scenario::Protocol protocol)
{
    struct Candidate {
        int left; // of the score, were this the only fault
        E::Advice advice;
    };
    std::vector<Candidate> candidates;
    const auto left = [&scores](E::ParameterType reduction) {
        return fullScore - scores.value(reduction);
    };
    const auto one = [&](E::ParameterType reduction, E::Advice advice) {
        candidates.push_back({left(reduction), advice});
    };
    const auto two = [&](E::ParameterType low, E::ParameterType high, E::Advice advice) {
        candidates.push_back({left(low) * left(high) / fullScore, advice});
    };

    const bool isAutomatic = protocol == CommonDefs::CPR_AUTOMATIC; // gives no advice
    const bool compressions = manikinsim::hasCompressions(protocol) && !isAutomatic;
    const bool breaths = manikinsim::hasBreaths(protocol) && !isAutomatic;
    if (breaths) {
        two(E::ventShallowScoreReduction, E::ventExcessiveScoreReduction, E::Advice_CorrectVolume);
        if (protocol == CommonDefs::CPR_HIGH_PERFORMANCE) {
            two(E::ventsPerMinuteSlowScoreReduction, E::ventsPerMinuteFastScoreReduction,
                E::Advice_CorrectVentRate);
        } else {
            two(E::ventRateLowScoreReduction, E::ventRateHighScoreReduction,
                E::Advice_CorrectVentRate);
        }
        one(E::preVentsTooManyScoreReduction, E::Advice_TooManyPreVents);
        one(E::preVentsTooFewScoreReduction, E::Advice_TooFewPreVents);
    }
    if (compressions) {
        two(E::compRateLowScoreReduction, E::compRateHighScoreReduction, E::Advice_CorrectRate);
        one(E::compReleaseScoreReduction, E::Advice_ReleaseCompletely);
        one(E::compDepthScoreReduction, E::Advice_CompressDeepEnough);
        one(E::compDeepDepthScoreReduction, E::Advice_CompressNotSoDeep);
        one(E::compHandposScoreReduction, E::Advice_HandPosition);
        one(E::compFlowtimeScoreReduction, E::Advice_MinimizeNoFlow);
    }
    if (compressions && breaths) {
        one(E::ventCyclesScoreReduction, E::Advice_CorrectCycleVents);
        one(E::compCyclesScoreReduction, E::Advice_CorrectCycleComps);
    }

    // The worst comes first; of equals the one that was entered later.
    candidates.erase(std::remove_if(candidates.begin(), candidates.end(),
                                    [](const Candidate &c) { return c.left >= fullScore; }),
                     candidates.end());
    std::reverse(candidates.begin(), candidates.end());
    std::stable_sort(candidates.begin(), candidates.end(),
                     [](const Candidate &a, const Candidate &b) { return a.left < b.left; });
    std::vector<E::Advice> result;
    for (const Candidate &candidate : candidates)
        result.push_back(candidate.advice);
    result.resize(2, E::Advice_None);
    return result;
}

} // namespace

ReceivedSession::ReceivedSession(const manikinsim::Scenario &scenario) : m_scenario(scenario)
{
    const int aed = scenario.link.shortMessages ? E::AEDNotPossible : scenario.device.connectedAed;
    if (aed != E::AEDNotDetected && aed != E::AEDNotPossible)
        m_truth.aedEvents.push_back({0, parametersOf({E::AEDType, {aed}})});
}

int ReceivedSession::reduced(int value) const
{
    const int step = isSmall(m_scenario.device.type) ? 1 : 10;
    return value / step * step;
}

void ReceivedSession::header(qint32 sequence)
{
    // A number that was expected later is no loss. The numbering goes on from it all the same.
    if (const qint64 missing = sequence - m_expectedSequence; missing > 0) {
        const auto start = static_cast<int>(m_expectedSequence * Manikin::period);
        const int end = (sequence - 1) * Manikin::period;
        const auto samples = static_cast<int>(missing);
        m_truth.packetLosses.push_back({start, end});
        m_truth.depths.insert(m_truth.depths.size(), samples, m_lastDepth);
        m_truth.volumes.insert(m_truth.volumes.size(), samples, 0);
    }
    m_sessionTime = sequence * Manikin::period;
    m_expectedSequence = qint64(sequence) + 1;
}

void ReceivedSession::arrived(const manikinsim::WavePacket &packet)
{
    header(packet.sequence);
    m_lastDepth = reduced(packet.depth);
    record(m_truth.depths, m_lastDepth, packet.sequence);
    record(m_truth.volumes, reduced(packet.volume), packet.sequence);
}

void ReceivedSession::arrived(const SentMessage &message)
{
    std::visit([&](const auto &fact) { enter(message, fact); }, message.fact);
}

void ReceivedSession::enter(const Message &message, const manikinsim::Compression &compression)
{
    m_truth.compressions.push_back({compression});
    if (!isComplete(message))
        return;
    Truth::Compression &c = m_truth.compressions.back();
    c.isListed = true;
    c.meanRate = m_rate;
    c.leaningDepth = m_leaningDepth;
    c.leaningForce = m_leaningForce;
    m_leaningDepth = c.releaseDepth;
    m_leaningForce = c.releaseForce;
    number(c);
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

void ReceivedSession::enter(const Message &message, const manikinsim::Ventilation &ventilation)
{
    m_truth.ventilations.push_back({ventilation});
    if (!isComplete(message))
        return;
    Truth::Ventilation &v = m_truth.ventilations.back();
    v.isListed = true;
    v.rate = m_breathRate;
    m_numbered = 0;
}

void ReceivedSession::enter(const Message &message, const manikinsim::PauseReport &report)
{
    auto &pauses = m_truth.pauses;
    if (pauses.empty() || pauses.back().start != report.start) {
        Truth::Pause pause;
        pause.start = report.start;
        pauses.push_back(pause);
    }
    Truth::Pause &pause = pauses.back();
    pause.lasted = report.seconds;
    if (!isComplete(message))
        return;

    m_truth.inactivitySum = static_cast<qint16>(m_truth.inactivitySum + report.seconds);
    m_numbered = 0;
    pause.isListed = true;
    pause.seconds = report.seconds;
    pause.end = m_sessionTime;
}

void ReceivedSession::enter(const Message &message, const manikinsim::CompressionRate &rate)
{
    m_rate = arrivedRate(message, rate.rate);
}

void ReceivedSession::enter(const Message &message, const manikinsim::VentilationRate &rate)
{
    m_breathRate = arrivedRate(message, rate.rate);
}

void ReceivedSession::enter(const Message &, const manikinsim::Shock &shock)
{
    m_truth.shocks.push_back({shock, m_sessionTime});
}

void ReceivedSession::enter(const Message &, const manikinsim::AedEvent &event)
{
    m_truth.aedEvents.push_back({m_sessionTime, parametersOf(event)});
}

void ReceivedSession::enter(const Message &, const manikinsim::Rhythm &rhythm)
{
    m_truth.rhythms.push_back({rhythm, m_sessionTime, rhythm.rhythm != m_rhythm});
    m_rhythm = rhythm.rhythm;
}

void ReceivedSession::enter(const Message &, const manikinsim::UserEvent &event)
{
    m_truth.userEvents.push_back({event, m_sessionTime});
}

void ReceivedSession::finished(const Parameters &statistics, const Parameters &scores)
{
    const int recorded = static_cast<int>(m_truth.depths.size()) * Manikin::period;
    m_truth.loadedTotalTime = (recorded + msecsPerSecond - 1) / msecsPerSecond;

    m_truth.statistics = statistics;
    m_truth.scores = scores;
    if (m_scenario.link.shortMessages) {
        for (const auto &row : MessageLayouts::independentStatistics) {
            if (row.byte >= MessageLayouts::oldStatisticsEnd)
                m_truth.statistics.remove(row.key);
        }
        // Has a value from the beginning, unlike the others.
        m_truth.statistics.insert(E::ventilationsPerMinute, 0);
        for (const auto &row : MessageLayouts::scores) {
            if (row.byte >= MessageLayouts::oldScoresEnd && row.key != E::overallScore
                && row.key != E::isScoringModeAED) {
                m_truth.scores.insert(row.key, 0);
            }
        }
    }
    const std::vector<E::Advice> sorted = advices(m_truth.scores, m_scenario.protocol);
    m_truth.primaryAdvice = sorted[0];
    m_truth.secondaryAdvice = sorted[1];
}

} // namespace oracle
