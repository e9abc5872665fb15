// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/ParameterText.h"

#include "sessionreview/Targets.h"
#include "sessionreview/Words.h"

#include <sessionplot/Scales.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QLocale>

#include <array>
#include <cstddef>

namespace cprquick {

namespace {

using E = CPREventBase;

/// How a value is shown.
enum class Form {
    Stored, ///< as it stands, in the unit that it is stored in
    Percent, ///< -1 was not measured
    Force, ///< g; -1 was not measured
    Seconds, ///< -1 did not happen
    PerMinute,
    YesNo,
    Names, ///< joined by commas
    Clock, ///< session time
    Date,
    Advice,
    Protocol,
    Manikin,
    Stiffness,
    AedEvent,
    AedType,
    Rhythm,
    Pulse,
    Shockable
};

struct ParameterRow {
    E::ParameterType type;
    Form form;
    const char *text;
};

struct UnitRow {
    E::ParameterUnit unit;
    const char *text;
};

// clang-format off

// By CPREventBase::EventType.
constexpr const char *kinds[] = {
    QT_TRANSLATE_NOOP("cprquick", "Shock"),                              // ShockDelivered
    QT_TRANSLATE_NOOP("cprquick", "Hint: a little more volume"),         // CprVentLittleMoreVolume
    QT_TRANSLATE_NOOP("cprquick", "Hint: more volume"),                  // CprVentMoreVolume
    QT_TRANSLATE_NOOP("cprquick", "Hint: ventilate more often"),         // CprVentMoreOftenRate
    QT_TRANSLATE_NOOP("cprquick", "Hint: ventilate less often"),         // CprVentLessOftenRate
    QT_TRANSLATE_NOOP("cprquick", "Hint: blow more slowly"),             // CprVentSlowerFlowrate
    QT_TRANSLATE_NOOP("cprquick", "Hint: blow a little more slowly"),    // CprVentLittleSlowerFlowrate
    QT_TRANSLATE_NOOP("cprquick", "Hint: blow faster"),                  // CprVentFasterFlowrate
    QT_TRANSLATE_NOOP("cprquick", "Hint: press a little deeper"),        // CprPressLittleDeeper
    QT_TRANSLATE_NOOP("cprquick", "Hint: press deeper"),                 // CprPressDeeper
    QT_TRANSLATE_NOOP("cprquick", "Hint: press not quite so deep"),      // CprPressNotQuiteSoDeep
    QT_TRANSLATE_NOOP("cprquick", "Hint: press not so deep"),            // CprPressNotSoDeep
    QT_TRANSLATE_NOOP("cprquick", "Hint: press a little faster"),        // CprPressLittleFasterRate
    QT_TRANSLATE_NOOP("cprquick", "Hint: press faster"),                 // CprPressFasterRate
    QT_TRANSLATE_NOOP("cprquick", "Hint: press a little more slowly"),   // CprPressLittleSlowerRate
    QT_TRANSLATE_NOOP("cprquick", "Hint: press more slowly"),            // CprPressSlowerRate
    QT_TRANSLATE_NOOP("cprquick", "Hint: duty cycle"),                   // CprDutyCycleFeedback
    QT_TRANSLATE_NOOP("cprquick", "Hint: release the chest"),            // CprLeaningFeedback
    QT_TRANSLATE_NOOP("cprquick", "Pause in compressions"),              // CprInactivityComp
    QT_TRANSLATE_NOOP("cprquick", "Pause in CPR"),                       // CprInactivityCPR
    QT_TRANSLATE_NOOP("cprquick", "Pause in ventilations"),              // CprInactivityVent
    QT_TRANSLATE_NOOP("cprquick", "Compression rate"),                   // CprCompRate
    QT_TRANSLATE_NOOP("cprquick", "Ventilation rate"),                   // CprVentRate
    QT_TRANSLATE_NOOP("cprquick", "Compression"),                        // CprCompEvent
    QT_TRANSLATE_NOOP("cprquick", "Ventilation"),                        // CprVentEvent
    QT_TRANSLATE_NOOP("cprquick", "Session"),                            // CprSessionInfo
    QT_TRANSLATE_NOOP("cprquick", "Statistics"),                         // CprSessionStatistics
    QT_TRANSLATE_NOOP("cprquick", "Scores"),                             // CprSessionScore
    QT_TRANSLATE_NOOP("cprquick", "AED"),                                // CprAedEvent
    QT_TRANSLATE_NOOP("cprquick", "ECG rhythm"),                         // CprCprdEvent
    QT_TRANSLATE_NOOP("cprquick", "User event"),                         // Event
    QT_TRANSLATE_NOOP("cprquick", "Link lost"),                          // CprPacketLossStart
    QT_TRANSLATE_NOOP("cprquick", "Link back"),                          // CprPacketLossEnd
};
static_assert(std::size(kinds) == E::CprPacketLossEnd + 1);

constexpr std::array<ParameterRow, E::manikinBatteryDisconnectCounter + 1> parameters = {{
    {E::compRate,                                                      Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compression rate")},
    {E::compDepth,                                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Depth")},
    {E::compUndershootDepth,                                           Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Undershoot depth")},
    {E::compPeakForce,                                                 Form::Force,     QT_TRANSLATE_NOOP("cprquick", "Peak force")},
    {E::compReleaseForce,                                              Form::Force,     QT_TRANSLATE_NOOP("cprquick", "Release force")},
    {E::compDutyCycle,                                                 Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Duty cycle")},
    {E::compDutyCycleValid,                                            Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Duty cycle valid")},
    {E::compLeaning,                                                   Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Leaning")},
    {E::compLeadingSlopeTime,                                          Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Leading slope time")},
    {E::compTrailingSlopeTime,                                         Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Trailing slope time")},
    {E::compTime,                                                      Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compression time")},
    {E::compForceUnits,                                                Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Force units")},
    {E::compDepthUnits,                                                Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Depth units")},
    {E::compIncompleteRelease,                                         Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Incomplete release")},
    {E::compPeakTime,                                                  Form::Clock,     QT_TRANSLATE_NOOP("cprquick", "Time of depth peak")},
    {E::compInstantaneousPeriod,                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Time since last compression")},
    {E::compHandposXiphoid,                                            Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Hands too low")},
    {E::compReleaseDepth,                                              Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Release depth")},
    {E::compAbsolutePeakDepth,                                         Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Absolute peak depth")},
    {E::compLeaningDepth,                                              Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Leaning depth")},
    {E::compLeaningForce,                                              Form::Force,     QT_TRANSLATE_NOOP("cprquick", "Leaning force")},
    {E::compHandposError,                                              Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Hands in the wrong place")},
    {E::compInactivity,                                                Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Length of pause")},
    {E::compCount,                                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compressions")},
    {E::compCyclesCount,                                               Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compression cycles")},
    {E::compCorrectReleaseCount,                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compressions with complete release")},
    {E::compWithRateInfo,                                              Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compressions with a rate")},
    {E::compCorrectReleasePercentage,                                  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Complete release")},
    {E::compCorrectRatePercentage,                                     Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct compression rate")},
    {E::compTooLowRatePercentage,                                      Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Compression rate too low")},
    {E::compCorrectDepthPercentage,                                    Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct depth")},
    {E::compCorrectStrokeLengthPercentage,                             Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct stroke length")},
    {E::compAdequateDepthPercentage,                                   Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Deep enough")},
    {E::compMeanDepth,                                                 Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Mean depth")},
    {E::compMeanRate,                                                  Form::PerMinute, QT_TRANSLATE_NOOP("cprquick", "Mean compression rate")},
    {E::compMeanStrokeLength,                                          Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Mean stroke length")},
    {E::compScore,                                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compression score")},
    {E::compInactivityPeriodCount,                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Pauses in compressions")},
    {E::compStdDeviationDepth,                                         Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Deviation of depth")},
    {E::compMeanReleaseDepth,                                          Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Mean release depth")},
    {E::compStdDeviationReleaseDepth,                                  Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Deviation of release depth")},
    {E::compStdDeviationRate,                                          Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Deviation of compression rate")},
    {E::compHandPosCorrectPercentage,                                  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct hand position")},
    {E::compHandPosXiphoidErrorPercentage,                             Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Hands too low")},
    {E::compStdDeviationStrokeLength,                                  Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Deviation of stroke length")},
    {E::compReleaseScoreReduction,                                     Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for incomplete release")},
    {E::compDepthScoreReduction,                                       Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for shallow compressions")},
    {E::compDeepDepthScoreReduction,                                   Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for deep compressions")},
    {E::compRateLowScoreReduction,                                     Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for slow compressions")},
    {E::compRateHighScoreReduction,                                    Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for fast compressions")},
    {E::compHandposScoreReduction,                                     Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for hand position")},
    {E::compDepthStrokeLengthScoreReduction,                           Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for stroke length")},
    {E::compCyclesScoreReduction,                                      Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for compressions per cycle")},
    {E::compFlowtimeScoreReduction,                                    Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for flow time")},
    {E::compOverallScore,                                              Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Compression score")},
    {E::ventRate,                                                      Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Ventilation rate")},
    {E::ventInflationTime,                                             Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Inflation time")},
    {E::ventNoFlowTime,                                                Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Time without flow")},
    {E::ventRawVolumeZ,                                                Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Raw volume")},
    {E::ventVolumeZ,                                                   Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Uncorrected volume")},
    {E::ventVolume,                                                    Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Volume")},
    {E::ventVolumeUnits,                                               Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Volume units")},
    {E::ventPeakTime,                                                  Form::Clock,     QT_TRANSLATE_NOOP("cprquick", "Time of volume peak")},
    {E::ventDuringCompression,                                         Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "During a compression")},
    {E::ventInstantaneousPeriod,                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Time since last ventilation")},
    {E::ventCount,                                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Ventilations")},
    {E::ventCorrectVolumePercentage,                                   Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct volume")},
    {E::ventTooMuchVolumePercentage,                                   Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Too much volume")},
    {E::ventNotEnoughVolumePercentage,                                 Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Not enough volume")},
    {E::ventMeanRate,                                                  Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Mean ventilation rate")},
    {E::ventMeanVolume,                                                Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Mean volume")},
    {E::ventScore,                                                     Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Ventilation score")},
    {E::ventCyclesCount,                                               Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Ventilation cycles")},
    {E::ventStdDeviationVolume,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Deviation of volume")},
    {E::ventStdDeviationRate,                                          Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Deviation of ventilation rate")},
    {E::ventCorrectRateCprPercentage,                                  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct ventilation rate in CPR")},
    {E::ventTooHighRateCprPercentage,                                  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Ventilation rate too high in CPR")},
    {E::ventCorrectRateVentOnlyPercentage,                             Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct rate, ventilations only")},
    {E::ventTooHighRateVentOnlyPercentage,                             Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Rate too high, ventilations only")},
    {E::ventCorrectInflationTimePercentage,                            Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Correct inflation time")},
    {E::ventTooFastInflationTimePercentage,                            Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Inflation too fast")},
    {E::ventShallowScoreReduction,                                     Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for too little volume")},
    {E::ventExcessiveScoreReduction,                                   Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for too much volume")},
    {E::ventRateLowScoreReduction,                                     Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for slow ventilations")},
    {E::ventRateHighScoreReduction,                                    Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for fast ventilations")},
    {E::ventPauseScoreReduction,                                       Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for long pauses to ventilate")},
    {E::ventCyclesScoreReduction,                                      Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for ventilations per cycle")},
    {E::ventOverallScore,                                              Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Ventilation score")},
    {E::inactivityTime,                                                Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Time without compressions")},
    {E::inactivityAverageTime,                                         Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Mean length of pauses")},
    {E::shockEnergy,                                                   Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Shock energy")},
    {E::cprProtocol,                                                   Form::Protocol,  QT_TRANSLATE_NOOP("cprquick", "Protocol")},
    {E::instructor,                                                    Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Instructor")},
    {E::students,                                                      Form::Names,     QT_TRANSLATE_NOOP("cprquick", "Learners")},
    {E::manikinType,                                                   Form::Manikin,   QT_TRANSLATE_NOOP("cprquick", "Manikin type")},
    {E::manikinFirmwareVersion,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Firmware version")},
    {E::manikinStiffness,                                              Form::Stiffness, QT_TRANSLATE_NOOP("cprquick", "Chest stiffness")},
    {E::manikinName,                                                   Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Manikin name")},
    {E::manikinCompressionCount,                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compressions in the manikin's life")},
    {E::manikinRfidVersion,                                            Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Identification reader version")},
    {E::manikinFeedpodVersion,                                         Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Airway sensor version")},
    {E::remoteControl,                                                 Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Remote control")},
    {E::remoteControlVersion,                                          Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Remote control version")},
    {E::startTime,                                                     Form::Date,      QT_TRANSLATE_NOOP("cprquick", "Start")},
    {E::endTime,                                                       Form::Date,      QT_TRANSLATE_NOOP("cprquick", "End")},
    {E::primaryAdvice,                                                 Form::Advice,    QT_TRANSLATE_NOOP("cprquick", "First advice")},
    {E::secondaryAdvice,                                               Form::Advice,    QT_TRANSLATE_NOOP("cprquick", "Second advice")},
    {E::overallScore,                                                  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Overall score")},
    {E::categoryThresholdBasic,                                        Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Threshold of the basic level")},
    {E::categoryThresholdAdvanced,                                     Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Threshold of the advanced level")},
    {E::waveDelay,                                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Wave delay")},
    {E::softSurface,                                                   Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Soft surface")},
    {E::totalTime,                                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Length of the session")},
    {E::cprCardId,                                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "CPR card")},
    {E::cprCardTimestamp,                                              Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "CPR card time")},
    {E::sessionDuration,                                               Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Duration")},
    {E::timeFirstShock,                                                Form::Seconds,   QT_TRANSLATE_NOOP("cprquick", "Time to first shock")},
    {E::timeFirstComp,                                                 Form::Seconds,   QT_TRANSLATE_NOOP("cprquick", "Time to first compression")},
    {E::timeFirstVent,                                                 Form::Seconds,   QT_TRANSLATE_NOOP("cprquick", "Time to first ventilation")},
    {E::flowTimePercentage,                                            Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Flow time")},
    {E::compHistogramDepthBin_0,                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Depth histogram, bar 1")},
    {E::compHistogramDepthBin_1,                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Depth histogram, bar 2")},
    {E::compHistogramDepthBin_2,                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Depth histogram, bar 3")},
    {E::compHistogramDepthBin_3,                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Depth histogram, bar 4")},
    {E::compHistogramDepthBin_4,                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Depth histogram, bar 5")},
    {E::compHistogramDepthBin_5,                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Depth histogram, bar 6")},
    {E::compHistogramReleaseBin_0,                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Release histogram, bar 1")},
    {E::compHistogramReleaseBin_1,                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Release histogram, bar 2")},
    {E::compHistogramReleaseBin_2,                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Release histogram, bar 3")},
    {E::compHistogramReleaseBin_3,                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Release histogram, bar 4")},
    {E::compHistogramReleaseBin_4,                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Release histogram, bar 5")},
    {E::compHistogramReleaseBin_5,                                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Release histogram, bar 6")},
    {E::compHistogramRateBin_0,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compression rate histogram, bar 1")},
    {E::compHistogramRateBin_1,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compression rate histogram, bar 2")},
    {E::compHistogramRateBin_2,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compression rate histogram, bar 3")},
    {E::compHistogramRateBin_3,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compression rate histogram, bar 4")},
    {E::compHistogramRateBin_4,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compression rate histogram, bar 5")},
    {E::compHistogramRateBin_5,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compression rate histogram, bar 6")},
    {E::compHistogramInactivityBin_0,                                  Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Pause histogram, bar 1")},
    {E::compHistogramInactivityBin_1,                                  Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Pause histogram, bar 2")},
    {E::compHistogramInactivityBin_2,                                  Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Pause histogram, bar 3")},
    {E::compHistogramInactivityBin_3,                                  Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Pause histogram, bar 4")},
    {E::compHistogramInactivityBin_4,                                  Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Pause histogram, bar 5")},
    {E::compHistogramInactivityBin_5,                                  Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Pause histogram, bar 6")},
    {E::ventHistogramVolumeBin_0,                                      Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Volume histogram, bar 1")},
    {E::ventHistogramVolumeBin_1,                                      Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Volume histogram, bar 2")},
    {E::ventHistogramVolumeBin_2,                                      Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Volume histogram, bar 3")},
    {E::ventHistogramVolumeBin_3,                                      Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Volume histogram, bar 4")},
    {E::ventHistogramVolumeBin_4,                                      Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Volume histogram, bar 5")},
    {E::ventHistogramVolumeBin_5,                                      Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Volume histogram, bar 6")},
    {E::ventHistogramRateBin_0,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Ventilation rate histogram, bar 1")},
    {E::ventHistogramRateBin_1,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Ventilation rate histogram, bar 2")},
    {E::ventHistogramRateBin_2,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Ventilation rate histogram, bar 3")},
    {E::ventHistogramRateBin_3,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Ventilation rate histogram, bar 4")},
    {E::ventHistogramRateBin_4,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Ventilation rate histogram, bar 5")},
    {E::ventHistogramRateBin_5,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Ventilation rate histogram, bar 6")},
    {E::aedEventType,                                                  Form::AedEvent,  QT_TRANSLATE_NOOP("cprquick", "AED event")},
    {E::aedDelayedOnTime,                                              Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Delayed switching on")},
    {E::aedScenarioNumber,                                             Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "AED scenario")},
    {E::aedScenarioFrameNumber,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Step of the AED scenario")},
    {E::aedRemoteScenarioNumber,                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Scenario on the remote control")},
    {E::aedRemoteOtherButtonId,                                        Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Button on the remote control")},
    {E::aedRemoteApplyToAll,                                           Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "For all manikins")},
    {E::aedECGRhythm,                                                  Form::Rhythm,    QT_TRANSLATE_NOOP("cprquick", "ECG rhythm")},
    {E::aedECGPulseStatus,                                             Form::Pulse,     QT_TRANSLATE_NOOP("cprquick", "Pulse")},
    {E::aedECGShockableStatus,                                         Form::Shockable, QT_TRANSLATE_NOOP("cprquick", "Shockable")},
    {E::aedType,                                                       Form::AedType,   QT_TRANSLATE_NOOP("cprquick", "AED")},
    {E::eventId,                                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Name")},
    {E::userEventType,                                                 Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Kind of user event")},
    {E::simulationType,                                                Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Kind of simulation")},
    {E::isScoringModeAED,                                              Form::YesNo,     QT_TRANSLATE_NOOP("cprquick", "Scored with an AED")},
    {E::cprScore,                                                      Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "CPR score")},
    {E::aedScore,                                                      Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "AED score")},
    {E::preVentsTooFewScoreReduction,                                  Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for too few ventilations at the start")},
    {E::preVentsTooManyScoreReduction,                                 Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for too many ventilations at the start")},
    {E::numberOfPreVents,                                              Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Ventilations at the start")},
    {E::manikinVentilationCount,                                       Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Ventilations in the manikin's life")},
    {E::minNumberOfCompressionsPerCycle,                               Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Fewest compressions in a cycle")},
    {E::maxNumberOfCompressionsPerCycle,                               Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Most compressions in a cycle")},
    {E::averageNumberOfCompressionsPerCycle,                           Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Mean number of compressions in a cycle")},
    {E::compCountNoErrors,                                             Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Compressions without a fault")},
    {E::ventMeanInflationTime,                                         Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Mean inflation time")},
    {E::ventStdDeviationInflationTime,                                 Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Deviation of inflation time")},
    {E::minNumberOfVentilationsPerCycle,                               Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Fewest ventilations in a cycle")},
    {E::maxNumberOfVentilationsPerCycle,                               Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Most ventilations in a cycle")},
    {E::averageNumberOfVentilationsPerCycle,                           Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Mean number of ventilations in a cycle")},
    {E::averageInflationTime,                                          Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Mean inflation time")},
    {E::ventilationsPerMinute,                                         Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Ventilations per minute")},
    {E::inflationTimeSlowScoreReduction,                               Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for slow inflation")},
    {E::inflationTimeFastScoreReduction,                               Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for fast inflation")},
    {E::ventsPerMinuteSlowScoreReduction,                              Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for too few ventilations per minute")},
    {E::ventsPerMinuteFastScoreReduction,                              Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Reduction for too many ventilations per minute")},
    {E::manikinBatteryCycleCounter,                                    Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Battery: cycles")},
    {E::manikinBatterySlowChargeCounter,                               Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Battery: slow charges")},
    {E::manikinBatteryFastChargeCounter,                               Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Battery: fast charges")},
    {E::manikinBatteryAccumulatedSlowChargeTimeHours,                  Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Battery: time of slow charging")},
    {E::manikinBatteryAccumulatedFastChargeTimeHours,                  Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Battery: time of fast charging")},
    {E::manikinBatteryAccumulatedChargeTimeDuringLowTemperatureHours,  Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Battery: time of charging in the cold")},
    {E::manikinBatteryAccumulatedChargeTimeDuringHighTemperatureHours, Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Battery: time of charging in the heat")},
    {E::manikinBatteryAvgMinLevelPercent,                              Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Battery: mean lowest level")},
    {E::manikinBatteryAvgMaxLevelPercent,                              Form::Percent,   QT_TRANSLATE_NOOP("cprquick", "Battery: mean highest level")},
    {E::manikinBatteryCriticalBatteryLevelCounter,                     Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Battery: times nearly empty")},
    {E::manikinBatteryAccumulatedDischargeCurrentAh,                   Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Battery: charge taken")},
    {E::manikinBatteryDesignCapacityMah,                               Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Battery: design capacity")},
    {E::manikinBatteryFullChargeCapacityMah,                           Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Battery: full capacity")},
    {E::manikinBatteryDisconnectCounter,                               Form::Stored,    QT_TRANSLATE_NOOP("cprquick", "Battery: disconnections")},
}};

// Units whose key is not what people read.
constexpr UnitRow units[] = {
    {E::none,    ""},
    {E::percent, "%"},
    {E::sec,     QT_TRANSLATE_NOOP("cprquick", "s")},
    {E::hmm,     "mm"},
    {E::vpm,     QT_TRANSLATE_NOOP("cprquick", "per min")},
    {E::cpm,     QT_TRANSLATE_NOOP("cprquick", "per min")},
    {E::hours,   "h"},
    {E::ah,      "Ah"},
    {E::mah,     "mAh"},
};

constexpr const char *stiffnesses[] = {
    QT_TRANSLATE_NOOP("cprquick", "not known"),
    QT_TRANSLATE_NOOP("cprquick", "soft"),
    QT_TRANSLATE_NOOP("cprquick", "medium"),
    QT_TRANSLATE_NOOP("cprquick", "hard"),
};

constexpr const char *aedTypes[] = {
    QT_TRANSLATE_NOOP("cprquick", "none"),
    QT_TRANSLATE_NOOP("cprquick", "of an unknown kind"),
    "Volterm",
    "AED Practa 3",
    QT_TRANSLATE_NOOP("cprquick", "not possible"),
};

constexpr const char *pulses[]     = {QT_TRANSLATE_NOOP("cprquick", "present"), QT_TRANSLATE_NOOP("cprquick", "absent")};
constexpr const char *shockables[] = {QT_TRANSLATE_NOOP("cprquick", "no"), QT_TRANSLATE_NOOP("cprquick", "yes")};

// clang-format on

constexpr bool standInOrder()
{
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (parameters[i].type != static_cast<E::ParameterType>(i))
            return false;
    }
    return true;
}
static_assert(standInOrder());

QString translated(const char *text)
{
    return *text ? QCoreApplication::translate("cprquick", text) : QString();
}

const ParameterRow *rowOf(E::ParameterType type)
{
    const auto place = static_cast<std::size_t>(type);
    return place < parameters.size() ? &parameters[place] : nullptr;
}

template <std::size_t size> QString textOf(const char *const (&texts)[size], const QVariant &value)
{
    const auto place = static_cast<std::size_t>(value.toUInt());
    return place < size ? translated(texts[place]) : value.toString();
}

QString orNumber(const QString &text, const QVariant &value)
{
    return text.isEmpty() ? value.toString() : text;
}

E::ParameterUnit storedUnit(E::ParameterType type)
{
    return E::parameterUnit.value(type, E::none);
}

QString numberText(E::ParameterType type, const QVariant &value)
{
    constexpr double hmmPerMm = 100;
    const QLocale locale;
    const auto kind = value.userType();
    if (storedUnit(type) == E::hmm)
        return locale.toString(value.toDouble() / hmmPerMm, 'f', 1);
    if (kind == QMetaType::Float) // as wherever else depths are told
        return locale.toString(sessionreview::roundedToHmm(value.toFloat()), 'f', 1);
    if (kind == QMetaType::Double)
        return locale.toString(value.toDouble(), 'f', 1);
    if (kind == QMetaType::Int && storedUnit(type) != E::none)
        return locale.toString(value.toInt());
    return value.toString();
}

QString withUnit(const QString &number, E::ParameterType type)
{
    const QString unit = parameterUnitText(type);
    return unit.isEmpty() || number.isEmpty() ? number
                                              : QStringLiteral("%1\u00a0%2").arg(number, unit);
}

QString dateText(const QVariant &value)
{
    const QDateTime date = QDateTime::fromString(value.toString(), Qt::ISODate);
    return date.isValid() ? QLocale().toString(date, QLocale::ShortFormat) : value.toString();
}

QString clockText(const QVariant &value)
{
    constexpr qint64 tenthsMs = 100;
    return sessionplot::timeText(value.toInt(), tenthsMs, false);
}

} // namespace

QString eventTypeText(E::EventType type)
{
    const auto place = static_cast<std::size_t>(type);
    return place < std::size(kinds) ? translated(kinds[place]) : QString::number(type);
}

QString parameterText(E::ParameterType type)
{
    const ParameterRow *row = rowOf(type);
    return row ? translated(row->text) : QString();
}

QString parameterUnitText(E::ParameterType type)
{
    const ParameterRow *row = rowOf(type);
    if (!row)
        return QString();
    E::ParameterUnit unit = storedUnit(type);
    if (row->form == Form::Percent)
        unit = E::percent;
    else if (row->form == Form::PerMinute)
        unit = E::cpm;
    else if (row->form == Form::Clock)
        unit = E::none;
    for (const UnitRow &known : units) {
        if (known.unit == unit)
            return translated(known.text);
    }
    return E::unitText(type);
}

QString parameterValueText(E::ParameterType type, const QVariant &value)
{
    const ParameterRow *row = rowOf(type);
    if (!row || !value.isValid())
        return QString();
    // clang-format off
    switch (row->form) {
    case Form::Percent:
    case Form::Force:     return value.toDouble() < 0 ? QCoreApplication::translate("cprquick", "not measured") : withUnit(numberText(type, value), type);
    case Form::Seconds:   return value.toDouble() < 0 ? QCoreApplication::translate("cprquick", "none") : withUnit(numberText(type, value), type);
    case Form::YesNo:     return textOf(shockables, value.toBool() ? 1 : 0);
    case Form::Names:     return value.toString().split(QLatin1Char(','), Qt::SkipEmptyParts).join(QLatin1String(", "));
    case Form::Clock:     return clockText(value);
    case Form::Date:      return dateText(value);
    case Form::Advice:    return value.toInt() == E::Advice_None ? QCoreApplication::translate("cprquick", "none") : orNumber(sessionreview::adviceText(value.toInt()), value);
    case Form::Protocol:  return sessionreview::protocolText(value.toInt());
    case Form::Manikin:   return orNumber(sessionreview::manikinText(value.toInt(), QString()), value);
    case Form::Stiffness: return textOf(stiffnesses, value);
    case Form::AedEvent:  return orNumber(sessionreview::aedEventText(value.toInt()), value);
    case Form::AedType:   return textOf(aedTypes, value);
    case Form::Rhythm:    return orNumber(sessionreview::rhythmText(value.toInt()), value);
    case Form::Pulse:     return textOf(pulses, value);
    case Form::Shockable: return textOf(shockables, value);
    case Form::Stored:
    case Form::PerMinute: break;
    }
    // clang-format on
    return withUnit(numberText(type, value), type);
}

} // namespace cprquick
