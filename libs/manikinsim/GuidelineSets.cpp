// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinsim/GuidelineSets.h"

namespace manikinsim {

bls_2010::GuidelineValues_t adultGuidelines()
{
    bls_2010::GuidelineValues_t g;
    // clang-format off
    g.compressionAcceptableReleaseForce                  = 2500;
    g.compressionAcceptableReleaseDepth                  = 5;
    g.compressionDepthMin                                = 50;
    g.compressionDepthMax                                = 60;
    g.compressionRateTarget                              = 110;
    g.compressionInactivityLevel3Timeout                 = 15;
    g.compressionInactivityLevel2Timeout                 = 20;
    g.compressionInactivityLevel1Timeout                 = 10;
    g.compressionInactivityLevel0TimeoutCPR              = 3;
    g.compressionInactivityLevel0TimeoutVentilationsOnly = 8;
    g.compressionRateMin                                 = 100;
    g.compressionRateMax                                 = 120;
    g.compressionDetectDepth                             = 10;
    g.compressionsBetweenVentilations                    = 30;
    g.compressionsBetweenVentilationsTwoRescuer          = 30;
    g.minimumAcceptedFlowtimePercentageCompressionsOnly  = 95;
    g.minimumAcceptedFlowtimePercentageSingleRescuerCPR  = 70;
    g.minimumAcceptedFlowtimePercentageTwoRescuerCPR     = 75;
    g.useRelativeDepth                                   = 1;
    g.compressionTooDeepSetting                          = 2; // the score is reduced
    g.ventilationDetectVolume                            = 100;
    g.ventilationVolumeMin                               = 400;
    g.ventilationVolumeMax                               = 700;
    g.ventilationInflationTimeMin                        = 700;
    g.ventilationInflationTimeMax                        = 1500;
    g.ventilationRateMinDuringCPR                        = 4;
    g.ventilationRateMaxDuringCPR                        = 12;
    g.ventilationRateMinDuringTwoRescuerCPR              = 4;
    g.ventilationRateMaxDuringTwoRescuerCPR              = 12;
    g.ventilationRateMinHPCPR                            = 8;
    g.ventilationRateMaxHPCPR                            = 12;
    g.ventilationRateMinForVentilationsOnly              = 8;
    g.ventilationRateMaxForVentilationsOnly              = 14;
    g.ventilationInactivityTimeout                       = 30;
    g.ventilationsBetweenCompressions                    = 2;
    g.preVentilationsUsage                               = 0; // none before the first compression
    g.preVentilationsMin                                 = 5;
    g.preVentilationsMax                                 = 5;
    g.usingDefaultValues                                 = 1;
    g.isOfficial                                         = 1;
    g.manikinGuidelineFlag                               = 0;
    g.guidelinesID                                       = "2025-EU-STD-A-01-20250901";
    // clang-format on
    return g;
}

bls_2010::GuidelineValues_t childGuidelines()
{
    bls_2010::GuidelineValues_t g = adultGuidelines();
    // clang-format off
    g.compressionDepthMin                       = 45;
    g.compressionDepthMax                       = 55;
    g.compressionsBetweenVentilationsTwoRescuer = 15;
    g.ventilationVolumeMin                      = 200;
    g.ventilationVolumeMax                      = 400;
    g.preVentilationsUsage                      = 1; // allowed
    g.guidelinesID                              = "2025-EU-STD-C-01-20250901";
    // clang-format on
    return g;
}

bls_2010::GuidelineValues_t infantGuidelines()
{
    bls_2010::GuidelineValues_t g = childGuidelines();
    // clang-format off
    g.compressionDepthMin     = 36;
    g.compressionDepthMax     = 45;
    g.ventilationDetectVolume = 5;
    g.ventilationVolumeMin    = 20;
    g.ventilationVolumeMax    = 50;
    g.guidelinesID            = "2025-EU-STD-I-01-20250901";
    // clang-format on
    return g;
}

} // namespace manikinsim
