// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Vocabulary.h"

#include "CPREventAED.h"
#include "CPREventCPRD.h"
#include "CPREventCompression.h"
#include "CPREventInactivityCPR.h"
#include "CPREventShock.h"
#include "CPREventUser.h"
#include "CPREventVentilation.h"

#include <QCoreApplication>
#include <QMetaEnum>

#include <iterator>
#include <string_view>
#include <type_traits>

namespace Vocabulary {

namespace {

using E = CPREventBase;

template <typename Enum> bool isKey(int value)
{
    return QMetaEnum::fromType<Enum>().valueToKey(value) != nullptr;
}

bool isProtocol(int value)
{
    return value >= 0 && value <= bls_2010::CommonDefs::CPR_HIGH_PERFORMANCE;
}

template <typename Event> E *make(E::EventType type, int msecs, CPREvents *owner)
{
    if constexpr (std::is_same_v<Event, CPREventBase>)
        return new Event(type, msecs, owner);
    else if constexpr (std::is_same_v<Event, CPREventCompression>)
        return new Event(msecs, owner, nullptr);
    else if constexpr (std::is_same_v<Event, CPREventUser>)
        return new Event(msecs, owner, QString());
    else
        return new Event(msecs, owner);
}

// CPREventBase::parameterUnit has no entry for these.
constexpr std::nullopt_t unlisted = std::nullopt;

// clang-format off
constexpr Enumeration protocols     {isProtocol,                          true};
constexpr Enumeration manikinTypes  {isKey<E::ManikinType>,               true};
constexpr Enumeration stiffnesses   {isKey<E::ManikinStiffness>,          true};
constexpr Enumeration advices       {isKey<E::Advice>,                    false};
constexpr Enumeration aedEvents     {isKey<E::AEDEventType>,              false};
constexpr Enumeration remoteButtons {isKey<E::AEDRemoteOtherButtons>,     true};
constexpr Enumeration remoteScopes  {isKey<E::AEDRemoteApplyToAllStatus>, true};
constexpr Enumeration rhythms       {isKey<E::AEDEcgRhythms>,             true};
constexpr Enumeration pulses        {isKey<E::AEDEcgPulseStatus>,         true};
constexpr Enumeration shockables    {isKey<E::AEDEcgShockableStatus>,     true};
constexpr Enumeration aedTypes      {isKey<E::AEDTypes>,                  false};

constexpr Parameter parameters[] = {
    {E::compRate,                                                     E::cpm,     Kind::Number,   Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compression rate")},
    {E::compDepth,                                                    E::mm,      Kind::Number,   Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Depth")},
    {E::compUndershootDepth,                                          E::mm,      Kind::Number,   Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Undershoot depth")},
    {E::compPeakForce,                                                E::g,       Kind::Number,   Form::Force,     QT_TRANSLATE_NOOP("cprquick", "Peak force")},
    {E::compReleaseForce,                                             E::g,       Kind::Number,   Form::Force,     QT_TRANSLATE_NOOP("cprquick", "Release force")},
    {E::compDutyCycle,                                                E::none,    Kind::Number,   Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Duty cycle")},
    {E::compDutyCycleValid,                                           E::none,    Kind::Integer,  Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Duty cycle valid")},
    {E::compLeaning,                                                  E::none,    Kind::Number,   Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Leaning")},
    {E::compLeadingSlopeTime,                                         E::ms,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Leading slope time")},
    {E::compTrailingSlopeTime,                                        E::ms,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Trailing slope time")},
    {E::compTime,                                                     E::ms,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compression time")},
    {E::compForceUnits,                                               E::none,    Kind::Text,     Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Force units")},
    {E::compDepthUnits,                                               E::none,    Kind::Text,     Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Depth units")},
    {E::compIncompleteRelease,                                        E::none,    Kind::Flag,     Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Incomplete release")},
    {E::compPeakTime,                                                 E::ms,      Kind::Integer,  Form::Clock,     QT_TRANSLATE_NOOP("cprquick", "Time of depth peak")},
    {E::compInstantaneousPeriod,                                      E::ms,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Time since last compression")},
    {E::compHandposXiphoid,                                           E::none,    Kind::Flag,     Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Hands too low")},
    {E::compReleaseDepth,                                             E::mm,      Kind::Number,   Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Release depth")},
    {E::compAbsolutePeakDepth,                                        E::mm,      Kind::Number,   Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Absolute peak depth")},
    {E::compLeaningDepth,                                             E::mm,      Kind::Number,   Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Leaning depth")},
    {E::compLeaningForce,                                             E::g,       Kind::Number,   Form::Force,     QT_TRANSLATE_NOOP("cprquick", "Leaning force")},
    {E::compHandposError,                                             E::none,    Kind::Flag,     Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Hands in the wrong place")},
    {E::compInactivity,                                               E::sec,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Length of pause")},
    {E::compCount,                                                    E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compressions")},
    {E::compCyclesCount,                                              unlisted,   Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compression cycles")},
    {E::compCorrectReleaseCount,                                      E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compressions with complete release")},
    {E::compWithRateInfo,                                             E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compressions with a rate")},
    {E::compCorrectReleasePercentage,                                 E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Complete release")},
    {E::compCorrectRatePercentage,                                    E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct compression rate")},
    {E::compTooLowRatePercentage,                                     E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Compression rate too low")},
    {E::compCorrectDepthPercentage,                                   unlisted,   Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct depth")},
    {E::compCorrectStrokeLengthPercentage,                            unlisted,   Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct stroke length")},
    {E::compAdequateDepthPercentage,                                  E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Deep enough")},
    {E::compMeanDepth,                                                E::hmm,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Mean depth")},
    {E::compMeanRate,                                                 E::none,    Kind::Integer,  Form::PerMinute, QT_TRANSLATE_NOOP("cprquick", "Mean compression rate")},
    {E::compMeanStrokeLength,                                         E::hmm,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Mean stroke length")},
    {E::compScore,                                                    E::none,    Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Score of the compressions")},
    {E::compInactivityPeriodCount,                                    E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Pauses in compressions")},
    {E::compStdDeviationDepth,                                        E::hmm,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Deviation of depth")},
    {E::compMeanReleaseDepth,                                         E::hmm,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Mean release depth")},
    {E::compStdDeviationReleaseDepth,                                 E::hmm,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Deviation of release depth")},
    {E::compStdDeviationRate,                                         E::cpm,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Deviation of compression rate")},
    {E::compHandPosCorrectPercentage,                                 E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct hand position")},
    {E::compHandPosXiphoidErrorPercentage,                            E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Compressions with hands too low")},
    {E::compStdDeviationStrokeLength,                                 E::hmm,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Deviation of stroke length")},
    {E::compReleaseScoreReduction,                                    E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for incomplete release")},
    {E::compDepthScoreReduction,                                      E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for shallow compressions")},
    {E::compDeepDepthScoreReduction,                                  E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for deep compressions")},
    {E::compRateLowScoreReduction,                                    E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for slow compressions")},
    {E::compRateHighScoreReduction,                                   E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for fast compressions")},
    {E::compHandposScoreReduction,                                    E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for hand position")},
    {E::compDepthStrokeLengthScoreReduction,                          E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for stroke length")},
    {E::compCyclesScoreReduction,                                     E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for compressions per cycle")},
    {E::compFlowtimeScoreReduction,                                   E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for flow time")},
    {E::compOverallScore,                                             E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Compression score")},
    {E::ventRate,                                                     E::vpm,     Kind::Integer,  Form::PerMinute, QT_TRANSLATE_NOOP("cprquick", "Ventilation rate")},
    {E::ventInflationTime,                                            E::ms,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Inflation time")},
    {E::ventNoFlowTime,                                               E::ms,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Time without flow")},
    {E::ventRawVolumeZ,                                               E::ml,      Kind::Number,   Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Raw volume")},
    {E::ventVolumeZ,                                                  E::ml,      Kind::Number,   Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Uncorrected volume")},
    {E::ventVolume,                                                   E::ml,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Volume")},
    {E::ventVolumeUnits,                                              E::none,    Kind::Text,     Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Volume units")},
    {E::ventPeakTime,                                                 E::ms,      Kind::Integer,  Form::Clock,     QT_TRANSLATE_NOOP("cprquick", "Time of volume peak")},
    {E::ventDuringCompression,                                        E::none,    Kind::Flag,     Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "During a compression")},
    {E::ventInstantaneousPeriod,                                      E::ms,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Time since last ventilation")},
    {E::ventCount,                                                    E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Ventilations")},
    {E::ventCorrectVolumePercentage,                                  E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct volume")},
    {E::ventTooMuchVolumePercentage,                                  E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Too much volume")},
    {E::ventNotEnoughVolumePercentage,                                E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Not enough volume")},
    {E::ventMeanRate,                                                 E::vpm,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Mean ventilation rate")},
    {E::ventMeanVolume,                                               E::ml,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Mean volume")},
    {E::ventScore,                                                    E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Score of the ventilations")},
    {E::ventCyclesCount,                                              E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Ventilation cycles")},
    {E::ventStdDeviationVolume,                                       E::ml,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Deviation of volume")},
    {E::ventStdDeviationRate,                                         E::vpm,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Deviation of ventilation rate")},
    {E::ventCorrectRateCprPercentage,                                 E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct ventilation rate in CPR")},
    {E::ventTooHighRateCprPercentage,                                 E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Ventilation rate too high in CPR")},
    {E::ventCorrectRateVentOnlyPercentage,                            E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct rate, ventilations only")},
    {E::ventTooHighRateVentOnlyPercentage,                            E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Rate too high, ventilations only")},
    {E::ventCorrectInflationTimePercentage,                           E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct inflation time")},
    {E::ventTooFastInflationTimePercentage,                           E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Inflation too fast")},
    {E::ventShallowScoreReduction,                                    E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for too little volume")},
    {E::ventExcessiveScoreReduction,                                  E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for too much volume")},
    {E::ventRateLowScoreReduction,                                    E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for slow ventilations")},
    {E::ventRateHighScoreReduction,                                   E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for fast ventilations")},
    {E::ventPauseScoreReduction,                                      E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for long pauses to ventilate")},
    {E::ventCyclesScoreReduction,                                     E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for ventilations per cycle")},
    {E::ventOverallScore,                                             E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Ventilation score")},
    {E::inactivityTime,                                               E::sec,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Length of all pauses")},
    {E::inactivityAverageTime,                                        E::sec,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Mean length of pauses")},
    {E::shockEnergy,                                                  E::J,       Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Shock energy")},
    {E::cprProtocol,                                                  unlisted,   Kind::Integer,  Form::Protocol,  QT_TRANSLATE_NOOP("cprquick", "Protocol"), &protocols},
    {E::instructor,                                                   E::none,    Kind::Text,     Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Instructor")},
    {E::students,                                                     E::none,    Kind::Text,     Form::Names,     QT_TRANSLATE_NOOP("cprquick", "Learners")},
    {E::manikinType,                                                  E::none,    Kind::Integer,  Form::Manikin,   QT_TRANSLATE_NOOP("cprquick", "Manikin type"), &manikinTypes},
    {E::manikinFirmwareVersion,                                       E::none,    Kind::Text,     Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Firmware version")},
    {E::manikinStiffness,                                             E::none,    Kind::Integer,  Form::Stiffness, QT_TRANSLATE_NOOP("cprquick", "Chest stiffness"), &stiffnesses},
    {E::manikinName,                                                  E::none,    Kind::Text,     Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Manikin name")},
    {E::manikinCompressionCount,                                      E::none,    Kind::Unsigned, Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compressions in the manikin's life")},
    {E::manikinRfidVersion,                                           unlisted,   Kind::Text,     Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Identification reader version")},
    {E::manikinFeedpodVersion,                                        unlisted,   Kind::Text,     Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Airway sensor version")},
    {E::remoteControl,                                                unlisted,   Kind::Text,     Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Remote control")},
    {E::remoteControlVersion,                                         unlisted,   Kind::Text,     Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Remote control version")},
    {E::startTime,                                                    E::none,    Kind::Time,     Form::Date,      QT_TRANSLATE_NOOP("cprquick", "Start")},
    {E::endTime,                                                      E::none,    Kind::Time,     Form::Date,      QT_TRANSLATE_NOOP("cprquick", "End")},
    {E::primaryAdvice,                                                E::none,    Kind::Integer,  Form::Advice,    QT_TRANSLATE_NOOP("cprquick", "First advice"), &advices},
    {E::secondaryAdvice,                                              E::none,    Kind::Integer,  Form::Advice,    QT_TRANSLATE_NOOP("cprquick", "Second advice"), &advices},
    {E::overallScore,                                                 E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Overall score")},
    {E::categoryThresholdBasic,                                       E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Threshold of the basic level")},
    {E::categoryThresholdAdvanced,                                    E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Threshold of the advanced level")},
    {E::waveDelay,                                                    E::ms,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Wave delay")},
    {E::softSurface,                                                  E::none,    Kind::Integer,  Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Soft surface")},
    {E::totalTime,                                                    E::sec,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Length of the session")},
    {E::cprCardId,                                                    E::none,    Kind::Text,     Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "CPR card")},
    {E::cprCardTimestamp,                                             E::sec,     Kind::Unsigned, Form::Timestamp, QT_TRANSLATE_NOOP("cprquick", "CPR card time")},
    {E::sessionDuration,                                              E::sec,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Duration")},
    {E::timeFirstShock,                                               E::sec,     Kind::Integer,  Form::Seconds,   QT_TRANSLATE_NOOP("cprquick", "Time to first shock")},
    {E::timeFirstComp,                                                E::sec,     Kind::Integer,  Form::Seconds,   QT_TRANSLATE_NOOP("cprquick", "Time to first compression")},
    {E::timeFirstVent,                                                E::sec,     Kind::Integer,  Form::Seconds,   QT_TRANSLATE_NOOP("cprquick", "Time to first ventilation")},
    {E::flowTimePercentage,                                           E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Flow time")},
    {E::compHistogramDepthBin_0,                                      E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Depth histogram, bar 1")},
    {E::compHistogramDepthBin_1,                                      E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Depth histogram, bar 2")},
    {E::compHistogramDepthBin_2,                                      E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Depth histogram, bar 3")},
    {E::compHistogramDepthBin_3,                                      E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Depth histogram, bar 4")},
    {E::compHistogramDepthBin_4,                                      E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Depth histogram, bar 5")},
    {E::compHistogramDepthBin_5,                                      E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Depth histogram, bar 6")},
    {E::compHistogramReleaseBin_0,                                    E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Release histogram, bar 1")},
    {E::compHistogramReleaseBin_1,                                    E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Release histogram, bar 2")},
    {E::compHistogramReleaseBin_2,                                    E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Release histogram, bar 3")},
    {E::compHistogramReleaseBin_3,                                    E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Release histogram, bar 4")},
    {E::compHistogramReleaseBin_4,                                    E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Release histogram, bar 5")},
    {E::compHistogramReleaseBin_5,                                    E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Release histogram, bar 6")},
    {E::compHistogramRateBin_0,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compression rate histogram, bar 1")},
    {E::compHistogramRateBin_1,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compression rate histogram, bar 2")},
    {E::compHistogramRateBin_2,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compression rate histogram, bar 3")},
    {E::compHistogramRateBin_3,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compression rate histogram, bar 4")},
    {E::compHistogramRateBin_4,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compression rate histogram, bar 5")},
    {E::compHistogramRateBin_5,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compression rate histogram, bar 6")},
    {E::compHistogramInactivityBin_0,                                 E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Pause histogram, bar 1")},
    {E::compHistogramInactivityBin_1,                                 E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Pause histogram, bar 2")},
    {E::compHistogramInactivityBin_2,                                 E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Pause histogram, bar 3")},
    {E::compHistogramInactivityBin_3,                                 E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Pause histogram, bar 4")},
    {E::compHistogramInactivityBin_4,                                 E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Pause histogram, bar 5")},
    {E::compHistogramInactivityBin_5,                                 E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Pause histogram, bar 6")},
    {E::ventHistogramVolumeBin_0,                                     E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Volume histogram, bar 1")},
    {E::ventHistogramVolumeBin_1,                                     E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Volume histogram, bar 2")},
    {E::ventHistogramVolumeBin_2,                                     E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Volume histogram, bar 3")},
    {E::ventHistogramVolumeBin_3,                                     E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Volume histogram, bar 4")},
    {E::ventHistogramVolumeBin_4,                                     E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Volume histogram, bar 5")},
    {E::ventHistogramVolumeBin_5,                                     E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Volume histogram, bar 6")},
    {E::ventHistogramRateBin_0,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Ventilation rate histogram, bar 1")},
    {E::ventHistogramRateBin_1,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Ventilation rate histogram, bar 2")},
    {E::ventHistogramRateBin_2,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Ventilation rate histogram, bar 3")},
    {E::ventHistogramRateBin_3,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Ventilation rate histogram, bar 4")},
    {E::ventHistogramRateBin_4,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Ventilation rate histogram, bar 5")},
    {E::ventHistogramRateBin_5,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Ventilation rate histogram, bar 6")},
    {E::aedEventType,                                                 E::none,    Kind::Integer,  Form::AedEvent,  QT_TRANSLATE_NOOP("cprquick", "AED event"), &aedEvents},
    {E::aedDelayedOnTime,                                             E::sec,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Delayed switching on")},
    {E::aedScenarioNumber,                                            E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "AED scenario")},
    {E::aedScenarioFrameNumber,                                       E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Step of the AED scenario")},
    {E::aedRemoteScenarioNumber,                                      E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Scenario on the remote control")},
    {E::aedRemoteOtherButtonId,                                       E::none,    Kind::Integer,  Form::Button,    QT_TRANSLATE_NOOP("cprquick", "Button on the remote control"), &remoteButtons},
    {E::aedRemoteApplyToAll,                                          E::none,    Kind::Integer,  Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "For all manikins"), &remoteScopes},
    {E::aedECGRhythm,                                                 E::none,    Kind::Integer,  Form::Rhythm,    QT_TRANSLATE_NOOP("cprquick", "ECG rhythm"), &rhythms},
    {E::aedECGPulseStatus,                                            E::none,    Kind::Integer,  Form::Pulse,     QT_TRANSLATE_NOOP("cprquick", "Pulse"), &pulses},
    {E::aedECGShockableStatus,                                        E::none,    Kind::Integer,  Form::Shockable, QT_TRANSLATE_NOOP("cprquick", "Shockable"), &shockables},
    {E::aedType,                                                      unlisted,   Kind::Integer,  Form::AedType,   QT_TRANSLATE_NOOP("cprquick", "AED"), &aedTypes},
    {E::eventId,                                                      unlisted,   Kind::Text,     Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Name")},
    {E::userEventType,                                                unlisted,   Kind::Integer,  Form::Internal,  QT_TRANSLATE_NOOP("cprquick", "Kind of user event")},
    {E::simulationType,                                               unlisted,   Kind::Integer,  Form::Internal,  QT_TRANSLATE_NOOP("cprquick", "Kind of simulation")},
    {E::isScoringModeAED,                                             unlisted,   Kind::Integer,  Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Scored with an AED")},
    {E::cprScore,                                                     unlisted,   Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "CPR score")},
    {E::aedScore,                                                     unlisted,   Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "AED score")},
    {E::preVentsTooFewScoreReduction,                                 E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for too few ventilations at the start")},
    {E::preVentsTooManyScoreReduction,                                E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for too many ventilations at the start")},
    {E::numberOfPreVents,                                             E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Ventilations at the start")},
    {E::manikinVentilationCount,                                      E::none,    Kind::Unsigned, Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Ventilations in the manikin's life")},
    {E::minNumberOfCompressionsPerCycle,                              unlisted,   Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Fewest compressions in a cycle")},
    {E::maxNumberOfCompressionsPerCycle,                              unlisted,   Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Most compressions in a cycle")},
    {E::averageNumberOfCompressionsPerCycle,                          unlisted,   Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Mean number of compressions in a cycle")},
    {E::compCountNoErrors,                                            unlisted,   Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Compressions without a fault")},
    {E::ventMeanInflationTime,                                        E::ms,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Mean inflation time")},
    {E::ventStdDeviationInflationTime,                                E::ms,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Deviation of inflation time")},
    {E::minNumberOfVentilationsPerCycle,                              E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Fewest ventilations in a cycle")},
    {E::maxNumberOfVentilationsPerCycle,                              unlisted,   Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Most ventilations in a cycle")},
    {E::averageNumberOfVentilationsPerCycle,                          E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Mean number of ventilations in a cycle")},
    {E::averageInflationTime,                                         E::ms,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Average inflation time")},
    {E::ventilationsPerMinute,                                        E::vpm,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Ventilations per minute of the session")},
    {E::inflationTimeSlowScoreReduction,                              E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for slow inflation")},
    {E::inflationTimeFastScoreReduction,                              E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for fast inflation")},
    {E::ventsPerMinuteSlowScoreReduction,                             E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for too few ventilations per minute")},
    {E::ventsPerMinuteFastScoreReduction,                             E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for too many ventilations per minute")},
    {E::manikinBatteryCycleCounter,                                   unlisted,   Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Battery: cycles"), nullptr, false},
    {E::manikinBatterySlowChargeCounter,                              E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Battery: slow charges"), nullptr, false},
    {E::manikinBatteryFastChargeCounter,                              E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Battery: fast charges"), nullptr, false},
    {E::manikinBatteryAccumulatedSlowChargeTimeHours,                 E::hours,   Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Battery: time of slow charging"), nullptr, false},
    {E::manikinBatteryAccumulatedFastChargeTimeHours,                 E::hours,   Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Battery: time of fast charging"), nullptr, false},
    {E::manikinBatteryAccumulatedChargeTimeDuringLowTemperatureHours, E::hours,   Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Battery: time of charging in the cold"), nullptr, false},
    {E::manikinBatteryAccumulatedChargeTimeDuringHighTemperatureHours, E::hours,   Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Battery: time of charging in the heat"), nullptr, false},
    {E::manikinBatteryAvgMinLevelPercent,                             E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Battery: mean lowest level"), nullptr, false},
    {E::manikinBatteryAvgMaxLevelPercent,                             E::percent, Kind::Integer,  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Battery: mean highest level"), nullptr, false},
    {E::manikinBatteryCriticalBatteryLevelCounter,                    E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Battery: times nearly empty"), nullptr, false},
    {E::manikinBatteryAccumulatedDischargeCurrentAh,                  E::ah,      Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Battery: charge taken"), nullptr, false},
    {E::manikinBatteryDesignCapacityMah,                              E::mah,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Battery: design capacity"), nullptr, false},
    {E::manikinBatteryFullChargeCapacityMah,                          E::mah,     Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Battery: full capacity"), nullptr, false},
    {E::manikinBatteryDisconnectCounter,                              E::none,    Kind::Integer,  Form::Plain,     QT_TRANSLATE_NOOP("cprquick", "Battery: disconnections"), nullptr, false},
};

constexpr std::initializer_list<E::ParameterType> compressionMeasurements {
    E::compDepth, E::compPeakForce, E::compPeakTime, E::compInstantaneousPeriod,
    E::compAbsolutePeakDepth, E::compLeaningDepth, E::compLeaningForce, E::compReleaseForce,
    E::compReleaseDepth, E::compHandposXiphoid, E::compHandposError, E::compIncompleteRelease,
    E::compMeanRate
};
constexpr std::initializer_list<E::ParameterType> ventilationMeasurements {
    E::ventVolume, E::ventRate, E::ventInstantaneousPeriod, E::ventPeakTime, E::ventDuringCompression
};

/// What a parameter is called in events of a kind where it stands for something else.
struct OtherLabel {
    E::ParameterType type;
    E::EventType kind;
    const char *label;
};

constexpr OtherLabel otherLabels[] = {
    {E::compMeanRate,   E::CprCompEvent,   QT_TRANSLATE_NOOP("cprquick", "Compression rate, running mean")},
    {E::compInactivity, E::CprSessionInfo, QT_TRANSLATE_NOOP("cprquick", "Sum of all reports of pauses")},
};

constexpr EventKind eventKinds[] = {
    {E::ShockDelivered,              make<CPREventShock>,         QT_TRANSLATE_NOOP("cprquick", "Shock")},
    {E::CprVentLittleMoreVolume,     make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: a little more volume")},
    {E::CprVentMoreVolume,           make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: more volume")},
    {E::CprVentMoreOftenRate,        make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: ventilate more often")},
    {E::CprVentLessOftenRate,        make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: ventilate less often")},
    {E::CprVentSlowerFlowrate,       make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: blow more slowly")},
    {E::CprVentLittleSlowerFlowrate, make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: blow a little more slowly")},
    {E::CprVentFasterFlowrate,       make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: blow faster")},
    {E::CprPressLittleDeeper,        make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: press a little deeper")},
    {E::CprPressDeeper,              make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: press deeper")},
    {E::CprPressNotQuiteSoDeep,      make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: press not quite so deep")},
    {E::CprPressNotSoDeep,           make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: press not so deep")},
    {E::CprPressLittleFasterRate,    make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: press a little faster")},
    {E::CprPressFasterRate,          make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: press faster")},
    {E::CprPressLittleSlowerRate,    make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: press a little more slowly")},
    {E::CprPressSlowerRate,          make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: press more slowly")},
    {E::CprDutyCycleFeedback,        make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: duty cycle")},
    {E::CprLeaningFeedback,          make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Hint: release the chest")},
    {E::CprInactivityComp,           make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Pause in compressions")},
    {E::CprInactivityCPR,            make<CPREventInactivityCPR>, QT_TRANSLATE_NOOP("cprquick", "Pause in CPR")},
    {E::CprInactivityVent,           make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Pause in ventilations")},
    {E::CprCompRate,                 make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Compression rate")},
    {E::CprVentRate,                 make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Ventilation rate")},
    {E::CprCompEvent,                make<CPREventCompression>,   QT_TRANSLATE_NOOP("cprquick", "Compression"), &CPREventCompression::staticMetaObject, compressionMeasurements, true},
    {E::CprVentEvent,                make<CPREventVentilation>,   QT_TRANSLATE_NOOP("cprquick", "Ventilation"), &CPREventVentilation::staticMetaObject, ventilationMeasurements},
    {E::CprSessionInfo,              nullptr,                     QT_TRANSLATE_NOOP("cprquick", "Session")},
    {E::CprSessionStatistics,        nullptr,                     QT_TRANSLATE_NOOP("cprquick", "Statistics")},
    {E::CprSessionScore,             nullptr,                     QT_TRANSLATE_NOOP("cprquick", "Scores")},
    {E::CprAedEvent,                 make<CPREventAED>,           QT_TRANSLATE_NOOP("cprquick", "AED")},
    {E::CprCprdEvent,                make<CPREventCPRD>,          QT_TRANSLATE_NOOP("cprquick", "ECG rhythm")},
    {E::Event,                       make<CPREventUser>,          QT_TRANSLATE_NOOP("cprquick", "User event")},
    {E::CprPacketLossStart,          make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Link lost")},
    {E::CprPacketLossEnd,            make<CPREventBase>,          QT_TRANSLATE_NOOP("cprquick", "Link back")},
};
// clang-format on

// Whether the value has a name; the compiler shows one that has none as a number.
template <auto value> constexpr bool isEnumerator()
{
    constexpr std::string_view text = Q_FUNC_INFO; // "... [with auto value = CPREventBase::mm]"
    constexpr std::size_t begin = text.find_last_of(":) =", text.size() - 2) + 1;
    return text[begin] < '0' || text[begin] > '9';
}

// The rows are indexed by the enumerator, and there is one for each.
template <typename Row, std::size_t count> constexpr bool areInOrder(const Row (&rows)[count])
{
    for (std::size_t i = 0; i < count; ++i) {
        if (static_cast<std::size_t>(rows[i].type) != i)
            return false;
    }
    return true;
}
static_assert(areInOrder(parameters) && areInOrder(eventKinds));
static_assert(isEnumerator<E::compRate>() && isEnumerator<E::ShockDelivered>());
static_assert(!isEnumerator<static_cast<E::ParameterType>(std::size(parameters))>(),
              "a parameter has no row");
static_assert(!isEnumerator<static_cast<E::EventType>(std::size(eventKinds))>(),
              "a kind of event has no row");

template <typename Row, std::size_t count>
constexpr const Row *rowAt(const Row (&rows)[count], int number)
{
    const auto index = static_cast<std::size_t>(number);
    return index < count ? &rows[index] : nullptr;
}

} // namespace

int parameterCount()
{
    return static_cast<int>(std::size(parameters));
}

const Parameter *parameter(CPREventBase::ParameterType type)
{
    return rowAt(parameters, type);
}

CPREventBase::ParameterUnit shownUnit(CPREventBase::ParameterType type)
{
    const Parameter *row = parameter(type);
    if (!row || row->form == Form::Timestamp)
        return E::none;
    if (row->form == Form::Percent)
        return E::percent;
    const E::ParameterUnit unit = row->unit.value_or(E::none);
    if (row->form == Form::PerMinute && unit == E::none)
        return E::cpm;
    return unit == E::hmm ? E::mm : unit;
}

const char *label(CPREventBase::ParameterType type, CPREventBase::EventType kind)
{
    for (const OtherLabel &other : otherLabels) {
        if (other.type == type && other.kind == kind)
            return other.label;
    }
    const Parameter *row = parameter(type);
    return row ? row->label : "";
}

const EventKind *eventKind(CPREventBase::EventType type)
{
    return rowAt(eventKinds, type);
}

} // namespace Vocabulary
