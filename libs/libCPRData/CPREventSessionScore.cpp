// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventSessionScore.h"

#include "CPREventSessionInfo.h"
#include "CPREvents.h"
#include "private/MessageLayouts.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <algorithm>
#include <cmath>

namespace {

using bls_2010::CommonDefs;

constexpr int fullScore = 100;

// The ventilation weights that follow from the two published ones.
static_assert(1.0 - CPREventSessionScore::OVERALL_SCORE_COMP_WEIGHTING_ADULT == 0.25);
static_assert(1.0 - CPREventSessionScore::OVERALL_SCORE_COMP_WEIGHTING_INFANT == 0.35);

bool trainsCompressions(CommonDefs::CprProtocolType protocol)
{
    return protocol == CommonDefs::CPR_SINGLE_RESCUER
        || protocol == CommonDefs::CPR_COMPRESSION_ONLY || protocol == CommonDefs::CPR_TWO_RESCUER
        || protocol == CommonDefs::CPR_HIGH_PERFORMANCE;
}

bool trainsVentilations(CommonDefs::CprProtocolType protocol)
{
    return protocol == CommonDefs::CPR_SINGLE_RESCUER
        || protocol == CommonDefs::CPR_VENTILATION_ONLY || protocol == CommonDefs::CPR_TWO_RESCUER
        || protocol == CommonDefs::CPR_HIGH_PERFORMANCE;
}

} // namespace

CPREventSessionScore::CPREventSessionScore(int msecs, CPREvents *owner)
    : CPREventBase(CprSessionScore, msecs, owner)
{
    setParameter(overallScore, 0);
    setParameter(categoryThresholdBasic, 50);
    setParameter(categoryThresholdAdvanced, 75);
    setParameter(primaryAdvice, Advice_None);
    setParameter(secondaryAdvice, Advice_None);
    setParameter(flowTimePercentage, -1);
    setParameter(compOverallScore, 0);
    setParameter(ventOverallScore, 0);
}

CPREventSessionScore::CPREventSessionScore(const CPREventSessionScore &other, CPREvents *owner)
    : CPREventBase(other, owner), m_ranking(other.m_ranking)
{
}

CPREventSessionScore::~CPREventSessionScore() = default;

bool CPREventSessionScore::incomingMsg(bls_2010::RMessage *msg)
{
    return MessageLayouts::identifierOf(msg) == CommunicationIDs::RPL_CPR_SCORES
        && rplmsg_RPL_CPR_SCORES(msg);
}

bool CPREventSessionScore::rplmsg_RPL_CPR_SCORES(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    setMSecs(sessionTime());
    const auto accept = [this](const MessageLayouts::Parameter &row,
                               const std::optional<qint64> &sent) {
        // Older manikins leave these two to the receiver.
        if (!sent && row.key == overallScore)
            setParameter(overallScore, computedOverallScore());
        else if (!sent && row.key == isScoringModeAED)
            setParameter(isScoringModeAED, int(isScoredAsAED()));
        return MessageLayouts::store(*this, row, sent);
    };
    MessageLayouts::decode(*msg, MessageLayouts::scores, accept);

    calculateAdvice();
    return true;
}

bool CPREventSessionScore::isScoredAsAED() const
{
    return events() && events()->count(TagExclFlowFraction) > 0;
}

int CPREventSessionScore::intValue(ParameterType type) const
{
    return parameterValue(type, 0).toInt();
}

int CPREventSessionScore::computedOverallScore() const
{
    int compressions = intValue(compOverallScore);
    const int ventilations = intValue(ventOverallScore);
    // With an AED the time for its analyses is not the rescuer's hands-off time.
    if (!isScoredAsAED())
        compressions = static_cast<int>(std::clamp<qint64>(
            remaining(compFlowtimeScoreReduction) * compressions / fullScore, 0, fullScore));

    const auto protocol = events() ? mode() : CommonDefs::CPR_SINGLE_RESCUER;
    if (protocol == CommonDefs::CPR_COMPRESSION_ONLY)
        return compressions;
    if (protocol != CommonDefs::CPR_SINGLE_RESCUER && protocol != CommonDefs::CPR_TWO_RESCUER)
        return ventilations;

    const CPREventSessionInfo *info = events() ? events()->sessionInfo() : nullptr;
    const double weight = info && info->isInfant() ? OVERALL_SCORE_COMP_WEIGHTING_INFANT
                                                   : OVERALL_SCORE_COMP_WEIGHTING_ADULT;
    double score = ventilations * (1.0 - weight) + compressions * weight;
    // A nearly perfect session must not be rounded up to 100: only two perfect scores give it.
    const bool bothPerfect = ventilations == fullScore && compressions == fullScore;
    if (score <= 99.0 || bothPerfect)
        score += 0.5;
    return qMax(0, static_cast<int>(std::floor(score)));
}

qint64 CPREventSessionScore::remaining(ParameterType reduction) const
{
    return fullScore - qint64(intValue(reduction));
}

qint64 CPREventSessionScore::remaining(ParameterType reduction, ParameterType other) const
{
    return remaining(reduction) * remaining(other) / fullScore;
}

void CPREventSessionScore::advise(qint64 score, Advice advice)
{
    // Equals are entered in front: the order of the calls below breaks ties.
    if (score < fullScore)
        m_ranking.emplace_hint(m_ranking.lower_bound(score), score, advice);
}

void CPREventSessionScore::calculateAdvice()
{
    const auto protocol = events() ? mode() : CommonDefs::CPR_SINGLE_RESCUER;
    const bool isHighPerformance = protocol == CommonDefs::CPR_HIGH_PERFORMANCE;

    m_ranking.clear();
    if (trainsVentilations(protocol)) {
        advise(remaining(ventShallowScoreReduction, ventExcessiveScoreReduction),
               Advice_CorrectVolume);
        advise(isHighPerformance
                   ? remaining(ventsPerMinuteSlowScoreReduction, ventsPerMinuteFastScoreReduction)
                   : remaining(ventRateLowScoreReduction, ventRateHighScoreReduction),
               Advice_CorrectVentRate);
        advise(remaining(preVentsTooManyScoreReduction), Advice_TooManyPreVents);
        advise(remaining(preVentsTooFewScoreReduction), Advice_TooFewPreVents);
    }
    if (trainsCompressions(protocol)) {
        advise(remaining(compRateLowScoreReduction, compRateHighScoreReduction),
               Advice_CorrectRate);
        advise(remaining(compReleaseScoreReduction), Advice_ReleaseCompletely);
        advise(remaining(compDepthScoreReduction), Advice_CompressDeepEnough);
        advise(remaining(compDeepDepthScoreReduction), Advice_CompressNotSoDeep);
        advise(remaining(compHandposScoreReduction), Advice_HandPosition);
        advise(remaining(compFlowtimeScoreReduction), Advice_MinimizeNoFlow);
    }
    if (trainsCompressions(protocol) && trainsVentilations(protocol)) {
        advise(remaining(ventCyclesScoreReduction), Advice_CorrectCycleVents);
        advise(remaining(compCyclesScoreReduction), Advice_CorrectCycleComps);
    }

    setParameter(primaryAdvice, getPrimaryAdvice());
    setParameter(secondaryAdvice, getSecondaryAdvice());
    Q_EMIT scoresReady();
}

CPREventBase::Advice CPREventSessionScore::getPrimaryAdvice() const
{
    return m_ranking.empty() ? Advice_None : m_ranking.begin()->second;
}

CPREventBase::Advice CPREventSessionScore::getSecondaryAdvice() const
{
    return m_ranking.size() < 2 ? Advice_None : std::next(m_ranking.begin())->second;
}

CPREventSessionScore *CPREventSessionScore::clone(CPREvents *owner)
{
    return new CPREventSessionScore(*this, owner);
}
