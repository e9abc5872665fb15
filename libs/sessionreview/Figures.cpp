// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionreview/Figures.h"

#include "sessionreview/Scores.h"

#include <CPRData.h>
#include <CPREventSessionInfo.h>
#include <CPREventSessionScore.h>
#include <CPREventSessionStatistics.h>
#include <private/Units.h>

#include <algorithm>
#include <tuple>

namespace sessionreview {

namespace {

using E = CPREventBase;

int intOf(const E *event, E::ParameterType parameter)
{
    return event->parameterValue(parameter, 0).toInt();
}

QString textOf(const E *event, E::ParameterType parameter)
{
    return event->parameterValue(parameter, QVariant()).toString();
}

/// A parameter of a score that comes in the same message as \a parameter and that a fresh event
/// does not have. For a setting, which the manikin does not send, \a parameter itself.
E::ParameterType companionInScore(E::ParameterType parameter)
{
    const bool isSetting =
        parameter == E::categoryThresholdBasic || parameter == E::categoryThresholdAdvanced;
    return isSetting ? parameter : E::compReleaseScoreReduction;
}

/// The same for statistics.
E::ParameterType companionInStatistics(E::ParameterType parameter)
{
    switch (parameter) {
    // Counts, means and times.
    case E::sessionDuration:
    case E::compCount:
    case E::compMeanRate:
    case E::compHandPosCorrectPercentage:
    case E::ventCount:
    case E::ventCyclesCount:
    case E::ventMeanVolume:
    case E::ventMeanRate:
    case E::inactivityAverageTime:
    case E::inactivityTime:
        return E::compMeanDepth;
    // The end of that message, which older manikins do not send.
    case E::ventilationsPerMinute:
        return E::flowTimePercentage;
    // What depends on the guideline set.
    case E::compCorrectDepthPercentage:
    case E::compCorrectReleasePercentage:
    case E::compCorrectRatePercentage:
    case E::ventCorrectVolumePercentage:
    case E::ventTooMuchVolumePercentage:
    case E::ventNotEnoughVolumePercentage:
    case E::ventCorrectRateCprPercentage:
    case E::ventCorrectRateVentOnlyPercentage:
        return E::compTooLowRatePercentage;
    default:
        return parameter;
    }
}

} // namespace

bool hasArrived(const CPREventBase *event, CPREventBase::ParameterType parameter)
{
    QString key;
    if (!event)
        return false;
    if (event->type() == E::CprSessionScore)
        return event->hasParameterType(companionInScore(parameter), key);
    if (event->type() == E::CprSessionStatistics)
        return event->hasParameterType(companionInStatistics(parameter), key);
    // Until the statistics come, the length is 0.
    if (event->type() == E::CprSessionInfo && parameter == E::totalTime)
        return intOf(event, parameter) > 0;
    return true;
}

bool Figures::operator==(const Figures &other) const
{
    const auto values = [](const Figures &f) {
        return std::tie(f.learners, f.startTime, f.protocol, f.training, f.secs, f.secsSoFar,
                        f.manikinName, f.manikinType, f.ageLetter, f.firmware, f.guidelines,
                        f.compressions, f.ventilations, f.pauses, f.hasStatistics, f.meanDepth,
                        f.meanRate, f.meanVolume, f.hasScores, f.overallScore, f.compressionScore,
                        f.ventilationScore, f.flowTime, f.primaryAdvice, f.primarySide,
                        f.secondaryAdvice, f.secondarySide, f.basicThreshold, f.advancedThreshold);
    };
    return values(*this) == values(other);
}

QDateTime Figures::start() const
{
    return QDateTime::fromString(startTime, Qt::ISODate);
}

Figures figuresOf(const CPRData &session)
{
    Figures figures;
    figures.learners = session.learners();
    figures.learners.removeAll(QString()); // a session without learners has one empty name
    if (session.cprGuidelines())
        figures.guidelines = session.cprGuidelines()->guidelinesID();
    const CPREvents *events = session.cprEvents();
    if (!events)
        return figures;

    figures.compressions = events->count(E::TagComp);
    figures.ventilations = events->count(E::TagVent);
    figures.pauses = events->count(E::TagInactivity);

    if (const CPREventSessionInfo *info = events->sessionInfo()) {
        figures.startTime = textOf(info, E::startTime);
        figures.protocol = intOf(info, E::cprProtocol);
        figures.secs = intOf(info, E::totalTime);
        figures.manikinName = textOf(info, E::manikinName);
        figures.manikinType = info->getManikinType();
        figures.ageLetter = info->patientAgeType();
        figures.firmware = textOf(info, E::manikinFirmwareVersion);
    }
    // A session of which the wave, or a part of it, is lost is loaded with the length of the rest.
    int lastSecs = 0;
    for (const E::EventTag tag : {E::TagComp, E::TagVent}) {
        if (const E *last = events->at(tag, events->count(tag) - 1))
            lastSecs = std::max(lastSecs, last->eventEndTime() / Units::msecsPerSecond);
    }
    if (figures.secs > 0)
        figures.secs = std::max(figures.secs, lastSecs);
    figures.secsSoFar = figures.secs > 0
        ? figures.secs
        : std::max(events->sessionTime() / Units::msecsPerSecond, lastSecs);
    figures.training = trainingOf(figures.protocol);
    figures.training.compressions |= figures.compressions > 0;
    figures.training.ventilations |= figures.ventilations > 0;

    const CPREventSessionStatistics *statistics = events->sessionStatistics();
    figures.hasStatistics = hasArrived(statistics, E::compMeanDepth);
    if (figures.hasStatistics) {
        figures.meanDepth = Units::mmOf(intOf(statistics, E::compMeanDepth));
        figures.meanRate = intOf(statistics, E::compMeanRate);
        figures.meanVolume = intOf(statistics, E::ventMeanVolume);
    }

    const CPREventSessionScore *score = events->sessionScore();
    figures.hasScores = hasArrived(score, E::overallScore);
    if (figures.hasScores) {
        figures.overallScore = intOf(score, E::overallScore);
        figures.compressionScore = intOf(score, E::compOverallScore);
        figures.ventilationScore = intOf(score, E::ventOverallScore);
        figures.flowTime = intOf(score, E::flowTimePercentage);
        figures.primaryAdvice = intOf(score, E::primaryAdvice);
        figures.primarySide = adviceSide(*score, figures.primaryAdvice);
        figures.secondaryAdvice = intOf(score, E::secondaryAdvice);
        figures.secondarySide = adviceSide(*score, figures.secondaryAdvice);
        figures.basicThreshold = intOf(score, E::categoryThresholdBasic);
        figures.advancedThreshold = intOf(score, E::categoryThresholdAdvanced);
    }
    return figures;
}

} // namespace sessionreview
