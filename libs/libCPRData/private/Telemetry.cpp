// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPREventSessionInfo.h"
#include "CPREventSessionScore.h"
#include "CPREventSessionStatistics.h"
#include "CPREvents.h"
#include "CPRGuidelines.h"

#include "private/Units.h"

#include <chestboard/CommonDefs.h>

// The maps that hosts send to their servers.

using bls_2010::CommonDefs;

namespace {

struct TelemetryItem {
    const char *key;
    const CPREventBase *event;
    CPREventBase::ParameterType parameter;
};

} // namespace

void CPREvents::telemetryTrainingSessionScoreData(QMap<QString, QVariant> &map) const
{
    const CPREventBase *score = m_sessionScore;
    const CPREventBase *statistics = m_sessionStatistics;
    using E = CPREventBase;
    // clang-format off
    const TelemetryItem items[] = {
        {"training_total_score_percentage",                        score,      E::overallScore},
        {"training_compression_score_percentage",                  score,      E::compOverallScore},
        {"training_ventilation_score_percentage",                  score,      E::ventOverallScore},
        {"training_flow_fraction_percentage",                      score,      E::flowTimePercentage},
        {"training_average_compression_rate",                      statistics, E::compMeanRate},
        {"training_average_compression_depth_mm",                  statistics, E::compMeanDepth},
        {"training_average_ventilation_volume_ml",                 statistics, E::ventMeanVolume},
        {"training_compressions_complete_release_percentage",      statistics, E::compCorrectReleasePercentage},
        {"training_compressions_correct_depth_percentage",         statistics, E::compCorrectDepthPercentage},
        {"training_compressions_correct_hand_position_percentage", statistics, E::compHandPosCorrectPercentage},
        {"training_number_of_compressions",                        statistics, E::compCount},
        {"training_number_of_ventilations",                        statistics, E::ventCount},
    };
    // clang-format on
    QVariantMap data;
    for (const TelemetryItem &item : items)
        data.insert(QLatin1String(item.key), item.event->parameterValue(item.parameter, 0));
    data.insert(QStringLiteral("training_session_id"), m_sessionInfo->getSessionID());
    // Spelt so and always 0: the receiving side expects it.
    data.insert(QStringLiteral("training_compression_descompression_ratio"), 0);
    map.insert(QStringLiteral("training_session_score_data"), data);
}

void CPREvents::telemetryTrainingSessionGuidelineData(QMap<QString, QVariant> &map) const
{
    if (!m_guidelines)
        return;
    const CPRGuidelines &limits = *m_guidelines;
    const bool twoRescuers = m_sessionInfo->parameterValue(CPREventBase::cprProtocol, 0).toInt()
        == CommonDefs::CPR_TWO_RESCUER;
    // clang-format off
    const QVariantMap compression {
        {QStringLiteral("compression_guideline_max_depth_mm"),             limits.compressionDepthMax() / Units::hmmPerMm},
        {QStringLiteral("compression_guideline_min_depth_mm"),             limits.compressionDepthMin() / Units::hmmPerMm},
        {QStringLiteral("compression_guideline_max_rate_comp_per_minute"), limits.compressionRateMax()},
        {QStringLiteral("compression_guideline_min_rate_comp_per_minute"), limits.compressionRateMin()},
    };
    // The single-rescuer rates, whatever the protocol.
    const QVariantMap ventilation {
        {QStringLiteral("ventilation_guideline_max_volume_ml"),            limits.ventilationVolumeMax()},
        {QStringLiteral("ventilation_guideline_min_volume_ml"),            limits.ventilationVolumeMin()},
        {QStringLiteral("ventilation_guideline_max_rate_vent_per_minute"), limits.ventilationRateMaxDuringCPR()},
        {QStringLiteral("ventilation_guideline_min_rate_vent_per_minute"), limits.ventilationRateMinDuringCPR()},
    };
    map.insert(QStringLiteral("training_session_guidelines"), QVariantMap {
        {QStringLiteral("training_session_id"),              m_sessionInfo->getSessionID()},
        {QStringLiteral("training_base_guideline"),          limits.guidelinesID()},
        {QStringLiteral("training_protocol"),                m_sessionInfo->cprProtocolToString()},
        {QStringLiteral("training_number_of_rescuers"),      twoRescuers ? 2 : 1},
        {QStringLiteral("is_tevo_5_initial_breaths_active"),
         limits.preVentilationsUsage() == CPRGuidelines::PREVENTILATION_USAGE_ALLOWPREVENTS},
        {QStringLiteral("is_score_reduction_on_to_deep_compression_active"),
         limits.compressionTooDeepSetting() == CPRGuidelines::COMP_TOO_DEEP_SCORE_REDUCTION},
        {QStringLiteral("training_compression_guideline"),   compression},
        {QStringLiteral("training_ventilation_guideline"),   ventilation},
    });
    // clang-format on
}
