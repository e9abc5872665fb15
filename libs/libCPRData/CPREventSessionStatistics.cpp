// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventSessionStatistics.h"

#include "private/MessageLayouts.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <array>

namespace {

using E = CPREventBase;

struct StartingValue {
    E::ParameterType parameter;
    int value;
};

// clang-format off
constexpr std::array<StartingValue, 19> startingValues = {{
    {E::sessionDuration,                    0},
    {E::ventCount,                          0},
    {E::ventCyclesCount,                    0},
    {E::ventCorrectVolumePercentage,       -1},
    {E::ventCorrectRateCprPercentage,      -1},
    {E::ventMeanVolume,                     0},
    {E::ventNotEnoughVolumePercentage,     -1},
    {E::ventMeanRate,                       0},
    {E::ventilationsPerMinute,              0},
    {E::ventCorrectRateVentOnlyPercentage, -1},
    {E::compCorrectRatePercentage,         -1},
    {E::compCount,                          0},
    {E::compMeanRate,                       0},
    {E::ventTooMuchVolumePercentage,       -1},
    {E::compCorrectReleasePercentage,      -1},
    {E::compHandPosCorrectPercentage,      -1},
    {E::compCorrectDepthPercentage,        -1},
    {E::inactivityAverageTime,              0},
    {E::inactivityTime,                     0},
}};
// clang-format on

// What is neither right nor too little is too much, computed in the manikin's 8 bits.
int tooMuchVolume(qint8 correct, qint8 notEnough)
{
    if (correct < 0)
        return -1;
    return static_cast<qint8>(100 - (correct + notEnough));
}

} // namespace

CPREventSessionStatistics::CPREventSessionStatistics(int msecs, CPREvents *owner)
    : CPREventBase(CprSessionStatistics, msecs, owner)
{
    for (const StartingValue &row : startingValues)
        setParameter(row.parameter, row.value);
}

CPREventSessionStatistics::CPREventSessionStatistics(const CPREventSessionStatistics &other,
                                                     CPREvents *owner)
    : CPREventBase(other, owner), m_independentReceived(other.m_independentReceived),
      m_binsReceived(other.m_binsReceived), m_dependentReceived(other.m_dependentReceived)
{
}

CPREventSessionStatistics::~CPREventSessionStatistics() = default;

bool CPREventSessionStatistics::incomingMsg(bls_2010::RMessage *msg)
{
    switch (MessageLayouts::identifierOf(msg)) {
    case CommunicationIDs::RPL_GL_INDEPENDENT_STATS:
        rplmsg_RPL_GL_INDEPENDENT_STATS(msg);
        m_independentReceived = true;
        break;
    case CommunicationIDs::RPL_GL_INDEPENDENT_BIN_STATS:
        rplmsg_RPL_GL_INDEPENDENT_BIN_STATS(msg);
        m_binsReceived = true;
        break;
    case CommunicationIDs::RPL_GL_DEPENDENT_STATS:
        rplmsg_RPL_GL_DEPENDENT_STATS(msg);
        m_dependentReceived = true;
        break;
    default:
        return false;
    }
    if (m_independentReceived && m_binsReceived && m_dependentReceived)
        Q_EMIT statisticsReady();
    return true;
}

bool CPREventSessionStatistics::rplmsg_RPL_GL_INDEPENDENT_STATS(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    MessageLayouts::store(*this, *msg, MessageLayouts::independentStatistics);
    setSessionDuration(parameterValue(sessionDuration, 0).toInt());
    return true;
}

bool CPREventSessionStatistics::rplmsg_RPL_GL_INDEPENDENT_BIN_STATS(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    MessageLayouts::store(*this, *msg, MessageLayouts::histograms);
    return true;
}

bool CPREventSessionStatistics::rplmsg_RPL_GL_DEPENDENT_STATS(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    setMSecs(sessionTime());
    MessageLayouts::store(*this, *msg, MessageLayouts::dependentStatistics);
    const auto correct = parameterValue(ventCorrectVolumePercentage, 0).toInt();
    const auto notEnough = parameterValue(ventNotEnoughVolumePercentage, 0).toInt();
    setParameter(ventTooMuchVolumePercentage,
                 tooMuchVolume(static_cast<qint8>(correct), static_cast<qint8>(notEnough)));
    return true;
}

void CPREventSessionStatistics::setSessionDuration(int secs)
{
    setParameter(sessionDuration, secs);
    Q_EMIT totalTime(secs);
}

CPREventSessionStatistics *CPREventSessionStatistics::clone(CPREvents *owner)
{
    return new CPREventSessionStatistics(*this, owner);
}
