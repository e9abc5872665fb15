// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/Judge.h"

#include "CPREventCompression.h"
#include "manikinsim/Rescuer.h"

#include <private/Units.h>

#include <algorithm>
#include <cmath>
#include <limits>

using bls_2010::CommonDefs;

namespace manikinsim {

namespace {

using E = CPREventBase;
using G = bls_2010::GuidelineValues_t;

constexpr int fullScore = 100;
using Units::hmmPerMm;
using Units::msecsPerMinute;
using Units::msecsPerSecond;
constexpr int notMeasured = -1;

constexpr quint32 tooDeepReducesScore = 2;
constexpr quint32 preVentilationsAllowed = 1;
constexpr quint32 preVentilationsScoredByNumber = 2;
constexpr int pointsPerPreVentilation = 10;

/// What the manikin's clock was set to: 2026-01-01, 0:00 UTC, in seconds since 1970. The real time
/// would make every log another one.
constexpr int cardTimestamp = 1767225600;

/// Rounded to nearest, halves up; \a divisor is positive, \a dividend not negative.
qint64 rounded(qint64 dividend, qint64 divisor)
{
    return (2 * dividend + divisor) / (2 * divisor);
}

/// The square root, rounded down.
quint64 integerRoot(quint64 square)
{
    quint64 root = 0;
    quint64 bit = quint64(1) << 62;
    while (bit > square)
        bit >>= 2;
    for (; bit != 0; bit >>= 2) {
        if (square >= root + bit) {
            square -= root + bit;
            root = (root >> 1) + bit;
        } else {
            root >>= 1;
        }
    }
    return root;
}

int share(qint64 part, qint64 total)
{
    return total == 0 ? 0 : static_cast<int>(rounded(100 * part, total));
}

int percentage(qint64 part, qint64 total)
{
    return total == 0 ? notMeasured : share(part, total);
}

int secondsOf(int msecs)
{
    return msecs < 0 ? notMeasured : msecs / msecsPerSecond;
}

bool isInfant(E::ManikinType type)
{
    constexpr std::array infants{E::KDX_INFANT,  E::ORM_NEW_B,   E::ORM_NEW_B_ADV,
                                 E::VIVARO_BABY, E::CAN_ORMBABY, E::VIVARO_BABY_MK_II};
    return std::find(infants.begin(), infants.end(), type) != infants.end();
}

struct RateLimits {
    int minimum;
    int maximum;
};

RateLimits breathRateLimits(const Scenario &scenario)
{
    const G &g = scenario.guidelines;
    switch (scenario.protocol) {
    case CommonDefs::CPR_VENTILATION_ONLY:
        return {g.ventilationRateMinForVentilationsOnly, g.ventilationRateMaxForVentilationsOnly};
    case CommonDefs::CPR_HIGH_PERFORMANCE:
        return {g.ventilationRateMinHPCPR, g.ventilationRateMaxHPCPR};
    case CommonDefs::CPR_TWO_RESCUER:
        return {g.ventilationRateMinDuringTwoRescuerCPR, g.ventilationRateMaxDuringTwoRescuerCPR};
    default:
        return {g.ventilationRateMinDuringCPR, g.ventilationRateMaxDuringCPR};
    }
}

int minFlowTime(const Scenario &scenario)
{
    const G &g = scenario.guidelines;
    switch (scenario.protocol) {
    case CommonDefs::CPR_VENTILATION_ONLY:
        return 0;
    case CommonDefs::CPR_COMPRESSION_ONLY:
    case CommonDefs::CPR_HIGH_PERFORMANCE:
        return g.minimumAcceptedFlowtimePercentageCompressionsOnly;
    case CommonDefs::CPR_TWO_RESCUER:
        return g.minimumAcceptedFlowtimePercentageTwoRescuerCPR;
    default:
        return g.minimumAcceptedFlowtimePercentageSingleRescuerCPR;
    }
}

} // namespace

void Judge::Series::add(qint64 value)
{
    ++m_count;
    m_sum += value;
    m_squares += value * value;
}

int Judge::Series::mean() const
{
    if (m_count == 0)
        return 0;
    // Stroke lengths and rates are never negative, nor is any other quantity here.
    return static_cast<int>(rounded(m_sum, m_count));
}

int Judge::Series::deviation() const
{
    if (m_count == 0)
        return 0;
    // The deviation is the root of this, divided by the count. Doubled, it tells halves.
    const qint64 scatter = m_count * m_squares - m_sum * m_sum;
    const auto doubled = static_cast<qint64>(integerRoot(4 * static_cast<quint64>(scatter)));
    return static_cast<int>((doubled / m_count + 1) / 2);
}

void Judge::Histogram::add(int value)
{
    const auto after = std::upper_bound(beginnings.begin(), beginnings.end(), value);
    ++counts[static_cast<std::size_t>(after - beginnings.begin())];
}

void Judge::Histogram::store(Parameters &values, E::ParameterType first) const
{
    qint64 total = 0;
    for (const qint64 count : counts)
        total += count;
    for (std::size_t i = 0; i < counts.size(); ++i)
        values.insert(static_cast<E::ParameterType>(first + int(i)), share(counts[i], total));
}

void Judge::Cycles::add(int number, int wanted)
{
    minimum = numbers.count() == 0 ? number : qMin(minimum, number);
    maximum = qMax(maximum, number);
    numbers.add(number);
    if (number != wanted)
        ++wrong;
}

Judge::Judge(const Scenario &scenario) : m_scenario(scenario), m_seconds(scenario.seconds)
{
}

int Judge::wantedCompressions() const
{
    const G &g = m_scenario.guidelines;
    return qMax<int>(1,
                     m_scenario.protocol == CommonDefs::CPR_TWO_RESCUER
                         ? g.compressionsBetweenVentilationsTwoRescuer
                         : g.compressionsBetweenVentilations);
}

/// Something of \a kind follows; it may end a series of the other kind.
void Judge::followSeries(InSeries kind)
{
    if (kind != m_series) {
        if (m_series == InSeries::Compressions)
            m_compressionCycles.add(m_inSeries, wantedCompressions());
        else if (m_series == InSeries::Breaths && m_depths.count() > 0)
            m_breathCycles.add(m_inSeries,
                               qMax<int>(1, m_scenario.guidelines.ventilationsBetweenCompressions));
        m_series = kind;
        m_inSeries = 0;
    }
    ++m_inSeries;
}

void Judge::add(const Compression &c)
{
    const G &g = m_scenario.guidelines;

    if (isCycleProtocol())
        followSeries(InSeries::Compressions);
    if (m_depths.count() == 0) {
        m_firstCompression = c.start;
        m_preVentilations = static_cast<int>(m_volumes.count());
    }

    const int stroke = c.depth - c.releaseDepth;
    m_depths.add(c.depth);
    m_releases.add(c.releaseDepth);
    m_strokes.add(stroke);
    m_depthBins.add(c.depth);
    m_releaseBins.add(c.releaseDepth);

    const int minDepth = g.compressionDepthMin * hmmPerMm;
    const int maxDepth = g.compressionDepthMax * hmmPerMm;
    m_shallow += c.depth < minDepth;
    m_deep += c.depth > maxDepth;
    m_wrongStrokes += stroke < minDepth || stroke > maxDepth;
    m_unreleased += c.releaseDepth > g.compressionAcceptableReleaseDepth * hmmPerMm;
    m_wrongHands += (c.status & CPREventCompression::CompStatusHandposCorrectActivated) == 0;
    m_xiphoid += (c.status & CPREventCompression::CompStatusHandposXiphoidErrorDetected) != 0;

    const bool isFirstOfRun = m_lastEnd < 0 || c.start - m_lastEnd > Rescuer::maxGapInRun;
    if (!isFirstOfRun) {
        const auto rate = static_cast<int>(rounded(msecsPerMinute, c.period));
        m_rates.add(rate);
        m_rateBins.add(rate);
        m_slow += rate < g.compressionRateMin;
        m_fast += rate > g.compressionRateMax;
    }
    m_flow += c.end - (isFirstOfRun ? c.start : m_lastEnd);
    m_lastEnd = c.end;
    extend(c.start, c.end);
}

void Judge::add(const Ventilation &v)
{
    const G &g = m_scenario.guidelines;

    if (isCycleProtocol())
        followSeries(InSeries::Breaths);
    if (m_volumes.count() == 0)
        m_firstBreath = v.start;

    const int inflation = v.peak - v.start;
    m_volumes.add(v.volume);
    m_volumeBins.add(v.volume);
    m_inflations.add(inflation);
    m_smallVolumes += v.volume < g.ventilationVolumeMin;
    m_largeVolumes += v.volume >= g.ventilationVolumeMax;
    m_fastInflations += inflation < g.ventilationInflationTimeMin;
    m_slowInflations += inflation > g.ventilationInflationTimeMax;

    const int before = isCycleProtocol() ? 2 : 1;
    m_breathRate = notMeasured;
    if (m_volumes.count() > before) {
        const int since = v.start - m_breathStarts[static_cast<std::size_t>(before - 1)];
        m_breathRate = static_cast<int>(rounded(before * msecsPerMinute, since));
        if (!hasCompressions(m_scenario.protocol) || m_breathsSincePause >= before) {
            const RateLimits limits = breathRateLimits(m_scenario);
            m_breathRates.add(m_breathRate);
            m_breathRateBins.add(m_breathRate);
            m_slowBreaths += m_breathRate < limits.minimum;
            m_fastBreaths += m_breathRate > limits.maximum;
        }
    }
    m_breathStarts = {v.start, m_breathStarts[0]};
    ++m_breathsSincePause;
    extend(v.start, v.end);
}

void Judge::addPause(int start, int seconds)
{
    if (start != m_pauseStart) {
        m_series = InSeries::Nothing;
        m_inSeries = 0;
        m_breathsSincePause = 0;
        if (m_pauses > 0) {
            m_pauseSeconds += m_pause;
            m_pauseBins.add(m_pause);
        }
        ++m_pauses;
        m_pauseStart = start;
    }
    m_pause = seconds;
    extend(start, start + seconds * msecsPerSecond);
}

/// The rescuer is judged from \a start to \a end at least.
void Judge::extend(int start, int end)
{
    m_begin = m_begin < 0 ? start : qMin(m_begin, start);
    m_end = qMax(m_end, end);
}

void Judge::addShock(int msecs)
{
    if (m_firstShock < 0)
        m_firstShock = msecs;
}

int Judge::flowTimePercentage() const
{
    return share(m_flow, m_end - qMax(0, m_begin));
}

int Judge::flowTimeReduction(bool isAed) const
{
    // Where nothing was done there is no flow to be judged.
    if (isAed || (m_depths.count() == 0 && m_volumes.count() == 0))
        return 0;
    return qMax(0, minFlowTime(m_scenario) - flowTimePercentage());
}

Parameters Judge::statistics() const
{
    const qint64 compressions = m_depths.count();
    const qint64 breaths = m_volumes.count();
    const qint64 rates = m_rates.count();
    const qint64 breathRates = m_breathRates.count();
    const bool alone = m_scenario.protocol == CommonDefs::CPR_VENTILATION_ONLY;
    const qint64 pauseSeconds = m_pauseSeconds + m_pause;
    const auto number = [](qint64 count) {
        return static_cast<int>(qMin<qint64>(count, std::numeric_limits<int>::max()));
    };

    Parameters s;
    // clang-format off
    s[E::cprCardTimestamp]                    = cardTimestamp;
    s[E::sessionDuration]                     = m_seconds;
    s[E::timeFirstShock]                      = secondsOf(m_firstShock);
    s[E::timeFirstComp]                       = secondsOf(m_firstCompression);
    s[E::timeFirstVent]                       = secondsOf(m_firstBreath);
    s[E::compCount]                           = number(compressions);
    s[E::compCyclesCount]                     = number(m_compressionCycles.numbers.count());
    s[E::ventCount]                           = number(breaths);
    s[E::ventCyclesCount]                     = number(m_breathCycles.numbers.count());
    s[E::compInactivityPeriodCount]           = number(m_pauses);
    s[E::compMeanDepth]                       = m_depths.mean();
    s[E::compStdDeviationDepth]               = m_depths.deviation();
    s[E::compMeanReleaseDepth]                = m_releases.mean();
    s[E::compStdDeviationReleaseDepth]        = m_releases.deviation();
    s[E::compMeanRate]                        = m_rates.mean();
    s[E::compStdDeviationRate]                = m_rates.deviation();
    s[E::ventMeanVolume]                      = m_volumes.mean();
    s[E::ventStdDeviationVolume]              = m_volumes.deviation();
    s[E::ventMeanRate]                        = m_breathRates.mean();
    s[E::ventStdDeviationRate]                = m_breathRates.deviation();
    s[E::compHandPosCorrectPercentage]        = percentage(compressions - m_wrongHands, compressions);
    s[E::compHandPosXiphoidErrorPercentage]   = percentage(m_xiphoid, compressions);
    s[E::compMeanStrokeLength]                = m_strokes.mean();
    s[E::compStdDeviationStrokeLength]        = m_strokes.deviation();
    s[E::inactivityAverageTime]               = m_pauses == 0 ? 0 : number(rounded(pauseSeconds, m_pauses));
    s[E::inactivityTime]                      = number(pauseSeconds);
    s[E::ventMeanInflationTime]               = m_inflations.mean();
    s[E::ventStdDeviationInflationTime]       = m_inflations.deviation();
    s[E::numberOfPreVents]                    = m_preVentilations;
    s[E::averageNumberOfVentilationsPerCycle] = m_breathCycles.numbers.mean();
    s[E::minNumberOfVentilationsPerCycle]     = m_breathCycles.minimum;
    s[E::maxNumberOfVentilationsPerCycle]     = m_breathCycles.maximum;
    s[E::averageNumberOfCompressionsPerCycle] = m_compressionCycles.numbers.mean();
    s[E::minNumberOfCompressionsPerCycle]     = m_compressionCycles.minimum;
    s[E::maxNumberOfCompressionsPerCycle]     = m_compressionCycles.maximum;
    s[E::flowTimePercentage]                  = flowTimePercentage();
    s[E::ventilationsPerMinute]               = number(rounded(60 * breaths, m_seconds));

    const qint64 goodRates = breathRates - m_slowBreaths - m_fastBreaths;
    s[E::compCorrectDepthPercentage]          = percentage(compressions - m_shallow - m_deep, compressions);
    s[E::compCorrectReleasePercentage]        = percentage(compressions - m_unreleased, compressions);
    s[E::compCorrectRatePercentage]           = percentage(rates - m_slow - m_fast, rates);
    s[E::compTooLowRatePercentage]            = percentage(m_slow, rates);
    s[E::ventCorrectVolumePercentage]         = percentage(breaths - m_smallVolumes - m_largeVolumes, breaths);
    s[E::ventNotEnoughVolumePercentage]       = percentage(m_smallVolumes, breaths);
    s[E::ventCorrectRateCprPercentage]        = alone ? notMeasured : percentage(goodRates, breathRates);
    s[E::ventTooHighRateCprPercentage]        = alone ? notMeasured : percentage(m_fastBreaths, breathRates);
    s[E::ventCorrectRateVentOnlyPercentage]   = alone ? percentage(goodRates, breathRates) : notMeasured;
    s[E::ventTooHighRateVentOnlyPercentage]   = alone ? percentage(m_fastBreaths, breathRates) : notMeasured;
    s[E::ventCorrectInflationTimePercentage]  = percentage(breaths - m_fastInflations - m_slowInflations, breaths);
    s[E::ventTooFastInflationTimePercentage]  = percentage(m_fastInflations, breaths);
    s[E::compCorrectStrokeLengthPercentage]   = percentage(compressions - m_wrongStrokes, compressions);
    // clang-format on

    // What is neither right nor too little is too much; the receiver works it out in this way.
    s[E::ventTooMuchVolumePercentage] = breaths == 0
        ? notMeasured
        : 100 - s[E::ventCorrectVolumePercentage] - s[E::ventNotEnoughVolumePercentage];

    Histogram pauseBins = m_pauseBins;
    if (m_pauses > 0)
        pauseBins.add(m_pause);
    m_depthBins.store(s, E::compHistogramDepthBin_0);
    m_releaseBins.store(s, E::compHistogramReleaseBin_0);
    m_rateBins.store(s, E::compHistogramRateBin_0);
    pauseBins.store(s, E::compHistogramInactivityBin_0);
    m_volumeBins.store(s, E::ventHistogramVolumeBin_0);
    m_breathRateBins.store(s, E::ventHistogramRateBin_0);
    return s;
}

Parameters Judge::scores(bool isAed) const
{
    const G &g = m_scenario.guidelines;
    const qint64 compressions = m_depths.count();
    const qint64 breaths = m_volumes.count();
    const int slowBreaths = share(m_slowBreaths, m_breathRates.count());
    const int fastBreaths = share(m_fastBreaths, m_breathRates.count());
    const bool isPerMinute = m_scenario.protocol == CommonDefs::CPR_HIGH_PERFORMANCE;
    const bool deepCounts = g.compressionTooDeepSetting == tooDeepReducesScore;
    const bool preVentilationsCount = hasCompressions(m_scenario.protocol)
        && hasBreaths(m_scenario.protocol) && compressions > 0
        && (g.preVentilationsUsage == preVentilationsAllowed
            || g.preVentilationsUsage == preVentilationsScoredByNumber);
    const int missing =
        preVentilationsCount ? qMax(0, g.preVentilationsMin - m_preVentilations) : 0;
    const int beyond = preVentilationsCount ? qMax(0, m_preVentilations - g.preVentilationsMax) : 0;

    Parameters s;
    // clang-format off
    s[E::compReleaseScoreReduction]           = share(m_unreleased, compressions);
    s[E::compDepthScoreReduction]             = share(m_shallow, compressions);
    s[E::compDeepDepthScoreReduction]         = deepCounts ? share(m_deep, compressions) : 0;
    s[E::compRateLowScoreReduction]           = share(m_slow, m_rates.count());
    s[E::compRateHighScoreReduction]          = share(m_fast, m_rates.count());
    s[E::compHandposScoreReduction]           = share(m_wrongHands, compressions);
    s[E::compCyclesScoreReduction]            = share(m_compressionCycles.wrong, m_compressionCycles.numbers.count());
    s[E::compDepthStrokeLengthScoreReduction] = 0;
    s[E::compFlowtimeScoreReduction]          = flowTimeReduction(isAed);

    s[E::ventShallowScoreReduction]           = share(m_smallVolumes, breaths);
    s[E::ventExcessiveScoreReduction]         = share(m_largeVolumes, breaths);
    s[E::ventRateLowScoreReduction]           = isPerMinute ? 0 : slowBreaths;
    s[E::ventRateHighScoreReduction]          = isPerMinute ? 0 : fastBreaths;
    s[E::ventsPerMinuteSlowScoreReduction]    = isPerMinute ? slowBreaths : 0;
    s[E::ventsPerMinuteFastScoreReduction]    = isPerMinute ? fastBreaths : 0;
    s[E::ventPauseScoreReduction]             = 0;
    s[E::ventCyclesScoreReduction]            = share(m_breathCycles.wrong, m_breathCycles.numbers.count());
    s[E::inflationTimeFastScoreReduction]     = share(m_fastInflations, breaths);
    s[E::inflationTimeSlowScoreReduction]     = share(m_slowInflations, breaths);
    s[E::preVentsTooFewScoreReduction]        = qMin(fullScore, missing * pointsPerPreVentilation);
    s[E::preVentsTooManyScoreReduction]       = qMin(fullScore, beyond * pointsPerPreVentilation);

    const int offCompressions = s[E::compReleaseScoreReduction] + s[E::compDepthScoreReduction]
        + s[E::compDeepDepthScoreReduction] + s[E::compRateLowScoreReduction]
        + s[E::compRateHighScoreReduction] + s[E::compHandposScoreReduction]
        + s[E::compCyclesScoreReduction];
    const int offBreaths = s[E::ventShallowScoreReduction] + s[E::ventExcessiveScoreReduction]
        + slowBreaths + fastBreaths + s[E::ventCyclesScoreReduction]
        + s[E::inflationTimeFastScoreReduction] + s[E::inflationTimeSlowScoreReduction]
        + s[E::preVentsTooFewScoreReduction] + s[E::preVentsTooManyScoreReduction];
    s[E::compOverallScore]                    = compressions == 0 ? 0 : qMax(0, fullScore - offCompressions);
    s[E::ventOverallScore]                    = breaths == 0 ? 0 : qMax(0, fullScore - offBreaths);
    s[E::flowTimePercentage]                  = flowTimePercentage();
    s[E::isScoringModeAED]                    = isAed ? 1 : 0;
    // clang-format on
    s[E::overallScore] = overallScore(s, isAed);
    return s;
}

int Judge::overallScore(const Parameters &scores, bool isAed) const
{
    int compressions = scores[E::compOverallScore];
    const int breaths = scores[E::ventOverallScore];
    if (!isAed) {
        const int left = fullScore - scores[E::compFlowtimeScoreReduction];
        compressions = qBound(0, left * compressions / fullScore, fullScore);
    }
    if (m_scenario.protocol == CommonDefs::CPR_COMPRESSION_ONLY)
        return compressions;
    if (m_scenario.protocol != CommonDefs::CPR_SINGLE_RESCUER
        && m_scenario.protocol != CommonDefs::CPR_TWO_RESCUER) {
        return breaths;
    }
    const double score = isInfant(m_scenario.device.type) ? breaths * 0.35 + compressions * 0.65
                                                          : breaths * 0.25 + compressions * 0.75;
    const bool isPerfect = breaths == fullScore && compressions == fullScore;
    return static_cast<int>(std::floor(score > 99.0 && !isPerfect ? score : score + 0.5));
}

} // namespace manikinsim
