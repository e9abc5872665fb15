// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventSessionStatistics.h"

#include "private/MessageFields.h"

#include <chestboard/CommunicationIDs.h>
#include <chestboard/RMessage.h>

#include <array>

namespace {

using MessageFields::Field;
using MessageFields::Width;
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

// RPL_GL_INDEPENDENT_STATS (109); the session duration at byte 5 is announced and stands in the
// code.
constexpr std::array<Field, 25> independentFields = {{
    { 1, Width::U32, E::cprCardTimestamp},
    { 7, Width::S16, E::timeFirstShock},
    { 9, Width::S16, E::timeFirstComp},
    {11, Width::S16, E::timeFirstVent},
    {13, Width::U16, E::compCount},
    {15, Width::U16, E::compCyclesCount},
    {17, Width::U16, E::ventCount},
    {19, Width::U16, E::ventCyclesCount},
    {21, Width::U16, E::compInactivityPeriodCount},
    {23, Width::S16, E::compMeanDepth},
    {25, Width::S16, E::compStdDeviationDepth},
    {27, Width::S16, E::compMeanReleaseDepth},
    {29, Width::S16, E::compStdDeviationReleaseDepth},
    {31, Width::U8,  E::compMeanRate},
    {32, Width::U8,  E::compStdDeviationRate},
    {33, Width::S16, E::ventMeanVolume},
    {35, Width::S16, E::ventStdDeviationVolume},
    {37, Width::U8,  E::ventMeanRate},
    {38, Width::U8,  E::ventStdDeviationRate},
    {39, Width::S8,  E::compHandPosCorrectPercentage},
    {40, Width::S8,  E::compHandPosXiphoidErrorPercentage},
    {41, Width::S16, E::compMeanStrokeLength},
    {43, Width::S16, E::compStdDeviationStrokeLength},
    {45, Width::S16, E::inactivityAverageTime},
    {47, Width::S16, E::inactivityTime},
}};
constexpr unsigned int durationByte = 5;

// The same message from newer manikins goes on, in up to three steps.
constexpr std::array<Field, 2> inflationTimeFields = {{
    {49, Width::S16, E::ventMeanInflationTime},
    {51, Width::S16, E::ventStdDeviationInflationTime},
}};
constexpr std::array<Field, 7> cycleFields = {{
    {53, Width::U8,  E::numberOfPreVents},
    {54, Width::U16, E::averageNumberOfVentilationsPerCycle},
    {56, Width::U16, E::minNumberOfVentilationsPerCycle},
    {58, Width::U16, E::maxNumberOfVentilationsPerCycle},
    {60, Width::U16, E::averageNumberOfCompressionsPerCycle},
    {62, Width::U16, E::minNumberOfCompressionsPerCycle},
    {64, Width::U16, E::maxNumberOfCompressionsPerCycle},
}};
constexpr std::array<Field, 2> flowTimeFields = {{
    {66, Width::U8, E::flowTimePercentage},
    {67, Width::U8, E::ventilationsPerMinute},
}};

// RPL_GL_DEPENDENT_STATS (111)
constexpr std::array<Field, 13> dependentFields = {{
    { 1, Width::S8, E::compCorrectDepthPercentage},
    { 2, Width::S8, E::compCorrectReleasePercentage},
    { 3, Width::S8, E::compCorrectRatePercentage},
    { 4, Width::S8, E::compTooLowRatePercentage},
    { 5, Width::S8, E::ventCorrectVolumePercentage},
    { 6, Width::S8, E::ventNotEnoughVolumePercentage},
    { 7, Width::S8, E::ventCorrectRateCprPercentage},
    { 8, Width::S8, E::ventTooHighRateCprPercentage},
    { 9, Width::S8, E::ventCorrectRateVentOnlyPercentage},
    {10, Width::S8, E::ventTooHighRateVentOnlyPercentage},
    {11, Width::S8, E::ventCorrectInflationTimePercentage},
    {12, Width::S8, E::ventTooFastInflationTimePercentage},
    {13, Width::S8, E::compCorrectStrokeLengthPercentage},
}};
// clang-format on

static_assert(MessageFields::standInOrder(independentFields));
static_assert(MessageFields::standInOrder(inflationTimeFields));
static_assert(MessageFields::standInOrder(cycleFields));
static_assert(MessageFields::standInOrder(flowTimeFields));
static_assert(MessageFields::standInOrder(dependentFields));

// RPL_GL_INDEPENDENT_BIN_STATS (110): six histograms of six bytes each from byte 1 on, in the order
// of their parameters.
constexpr unsigned int firstBinByte = 1;
constexpr int binCount = E::ventHistogramRateBin_5 - E::compHistogramDepthBin_0 + 1;
static_assert(E::compHistogramDepthBin_0 == 120 && binCount == 36);

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
    switch (MessageFields::identifierOf(msg)) {
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
    using MessageFields::isReadable;
    if (!msg)
        return false;
    MessageFields::store(*this, *msg, independentFields);
    if (isReadable(*msg, inflationTimeFields.front()))
        MessageFields::store(*this, *msg, inflationTimeFields);
    if (isReadable(*msg, cycleFields.front())) {
        MessageFields::store(*this, *msg, cycleFields);
        if (isReadable(*msg, cycleFields.back()))
            MessageFields::store(*this, *msg, flowTimeFields);
    }
    setSessionDuration(MessageFields::valueAt<qint16>(*msg, durationByte));
    return true;
}

bool CPREventSessionStatistics::rplmsg_RPL_GL_INDEPENDENT_BIN_STATS(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    for (int i = 0; i < binCount; ++i) {
        MessageFields::store(*this, *msg,
                             {firstBinByte + static_cast<unsigned int>(i), Width::U8,
                              static_cast<ParameterType>(compHistogramDepthBin_0 + i)});
    }
    return true;
}

bool CPREventSessionStatistics::rplmsg_RPL_GL_DEPENDENT_STATS(bls_2010::RMessage *msg)
{
    if (!msg)
        return false;
    setMSecs(sessionTime());
    MessageFields::store(*this, *msg, dependentFields);
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
