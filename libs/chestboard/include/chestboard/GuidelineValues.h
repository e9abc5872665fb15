// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CHESTBOARD_GUIDELINEVALUES_H
#define CHESTBOARD_GUIDELINEVALUES_H

#include <QtGlobal>

#include <cstddef>
#include <string>

namespace bls_2010 {

/// A guideline set as the manikin stores it. Depths in mm, force in g, volumes in ml, inflation
/// times in ms, inactivity timeouts in s, rates per minute, flow times in percent.
struct GuidelineValues_t {
    // clang-format off
    /// @{
    /// As the property of the same name of CPRGuidelines, but depths in whole millimetres;
    /// useRelativeDepth is the opposite of UseAbsoluteDepth, reserved fields are not used.
    quint16 compressionAcceptableReleaseForce                  = 0;
    quint8  compressionAcceptableReleaseDepth                  = 0;
    quint8  compressionDepthMin                                = 0;
    quint8  compressionDepthMax                                = 0;
    quint8  compressionRateTarget                              = 0;
    quint8  compressionInactivityLevel3Timeout                 = 0;
    quint8  compressionInactivityLevel2Timeout                 = 0;
    quint8  compressionInactivityLevel1Timeout                 = 0;
    quint8  compressionInactivityLevel0TimeoutCPR              = 0;
    quint8  compressionInactivityLevel0TimeoutVentilationsOnly = 0;
    quint8  compressionRateMin                                 = 0;
    quint8  compressionRateMax                                 = 0;
    quint8  compressionDetectDepth                             = 0;
    quint8  compressionsBetweenVentilations                    = 0;
    quint8  compressionsBetweenVentilationsTwoRescuer          = 0;
    quint8  minimumAcceptedFlowtimePercentageCompressionsOnly  = 0;
    quint8  minimumAcceptedFlowtimePercentageSingleRescuerCPR  = 0;
    quint8  minimumAcceptedFlowtimePercentageTwoRescuerCPR     = 0;
    quint32 useRelativeDepth                                   = 0;
    quint32 compressionTooDeepSetting                          = 0;
    quint16 ventilationDetectVolume                            = 0;
    quint16 ventilationVolumeMin                               = 0;
    quint16 ventilationVolumeMax                               = 0;
    quint16 ventilationInflationTimeMin                        = 0;
    quint16 ventilationInflationTimeMax                        = 0;
    quint8  ventilationRateMinDuringCPR                        = 0;
    quint8  ventilationRateMaxDuringCPR                        = 0;
    quint8  ventilationRateMinDuringTwoRescuerCPR              = 0;
    quint8  ventilationRateMaxDuringTwoRescuerCPR              = 0;
    quint8  ventilationRateMinHPCPR                            = 0;
    quint8  ventilationRateMaxHPCPR                            = 0;
    quint8  ventilationRateMinForVentilationsOnly              = 0;
    quint8  ventilationRateMaxForVentilationsOnly              = 0;
    quint8  ventilationInactivityTimeout                       = 0;
    quint8  ventilationsBetweenCompressions                    = 0;
    quint32 preVentilationsUsage                               = 0;
    quint8  preVentilationsMin                                 = 0;
    quint8  preVentilationsMax                                 = 0;
    quint8  reserved54[2]                                      = {};
    quint8  usingDefaultValues                                 = 0;
    quint8  isOfficial                                         = 0;
    quint8  manikinGuidelineFlag                               = 0;
    /// @}
    std::string guidelinesID; ///< UTF-8
    // clang-format on
};

// clang-format off
static_assert(offsetof(GuidelineValues_t, compressionAcceptableReleaseForce)                  ==  0);
static_assert(offsetof(GuidelineValues_t, compressionAcceptableReleaseDepth)                  ==  2);
static_assert(offsetof(GuidelineValues_t, compressionDepthMin)                                ==  3);
static_assert(offsetof(GuidelineValues_t, compressionDepthMax)                                ==  4);
static_assert(offsetof(GuidelineValues_t, compressionRateTarget)                              ==  5);
static_assert(offsetof(GuidelineValues_t, compressionInactivityLevel3Timeout)                 ==  6);
static_assert(offsetof(GuidelineValues_t, compressionInactivityLevel2Timeout)                 ==  7);
static_assert(offsetof(GuidelineValues_t, compressionInactivityLevel1Timeout)                 ==  8);
static_assert(offsetof(GuidelineValues_t, compressionInactivityLevel0TimeoutCPR)              ==  9);
static_assert(offsetof(GuidelineValues_t, compressionInactivityLevel0TimeoutVentilationsOnly) == 10);
static_assert(offsetof(GuidelineValues_t, compressionRateMin)                                 == 11);
static_assert(offsetof(GuidelineValues_t, compressionRateMax)                                 == 12);
static_assert(offsetof(GuidelineValues_t, compressionDetectDepth)                             == 13);
static_assert(offsetof(GuidelineValues_t, compressionsBetweenVentilations)                    == 14);
static_assert(offsetof(GuidelineValues_t, compressionsBetweenVentilationsTwoRescuer)          == 15);
static_assert(offsetof(GuidelineValues_t, minimumAcceptedFlowtimePercentageCompressionsOnly)  == 16);
static_assert(offsetof(GuidelineValues_t, minimumAcceptedFlowtimePercentageSingleRescuerCPR)  == 17);
static_assert(offsetof(GuidelineValues_t, minimumAcceptedFlowtimePercentageTwoRescuerCPR)     == 18);
static_assert(offsetof(GuidelineValues_t, useRelativeDepth)                                   == 20);
static_assert(offsetof(GuidelineValues_t, compressionTooDeepSetting)                          == 24);
static_assert(offsetof(GuidelineValues_t, ventilationDetectVolume)                            == 28);
static_assert(offsetof(GuidelineValues_t, ventilationVolumeMin)                               == 30);
static_assert(offsetof(GuidelineValues_t, ventilationVolumeMax)                               == 32);
static_assert(offsetof(GuidelineValues_t, ventilationInflationTimeMin)                        == 34);
static_assert(offsetof(GuidelineValues_t, ventilationInflationTimeMax)                        == 36);
static_assert(offsetof(GuidelineValues_t, ventilationRateMinDuringCPR)                        == 38);
static_assert(offsetof(GuidelineValues_t, ventilationRateMaxDuringCPR)                        == 39);
static_assert(offsetof(GuidelineValues_t, ventilationRateMinDuringTwoRescuerCPR)              == 40);
static_assert(offsetof(GuidelineValues_t, ventilationRateMaxDuringTwoRescuerCPR)              == 41);
static_assert(offsetof(GuidelineValues_t, ventilationRateMinHPCPR)                            == 42);
static_assert(offsetof(GuidelineValues_t, ventilationRateMaxHPCPR)                            == 43);
static_assert(offsetof(GuidelineValues_t, ventilationRateMinForVentilationsOnly)              == 44);
static_assert(offsetof(GuidelineValues_t, ventilationRateMaxForVentilationsOnly)              == 45);
static_assert(offsetof(GuidelineValues_t, ventilationInactivityTimeout)                       == 46);
static_assert(offsetof(GuidelineValues_t, ventilationsBetweenCompressions)                    == 47);
static_assert(offsetof(GuidelineValues_t, preVentilationsUsage)                               == 48);
static_assert(offsetof(GuidelineValues_t, preVentilationsMin)                                 == 52);
static_assert(offsetof(GuidelineValues_t, preVentilationsMax)                                 == 53);
static_assert(offsetof(GuidelineValues_t, usingDefaultValues)                                 == 56);
static_assert(offsetof(GuidelineValues_t, isOfficial)                                         == 57);
static_assert(offsetof(GuidelineValues_t, manikinGuidelineFlag)                               == 58);
static_assert(offsetof(GuidelineValues_t, guidelinesID)                                       == 64);
// clang-format on

} // namespace bls_2010

#endif
