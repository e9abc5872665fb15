// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "SessionSummary.h"

#include <CPRData.h>
#include <CPREventSessionInfo.h>
#include <CPREventSessionScore.h>
#include <CPREventSessionStatistics.h>

#include <QJsonArray>
#include <QMetaEnum>

namespace {

using E = CPREventBase;

QString textOf(const E *event, E::ParameterType parameter)
{
    return event->parameterValue(parameter, QVariant()).toString();
}

int intOf(const E *event, E::ParameterType parameter)
{
    return event->parameterValue(parameter, 0).toInt();
}

template <typename Enumeration> QString keyOf(int value)
{
    const char *key = QMetaEnum::fromType<Enumeration>().valueToKey(value);
    return key ? QString::fromLatin1(key) : QString::number(value);
}

QString duration(int secs)
{
    constexpr int secsPerMinute = 60;
    return QStringLiteral("%1 min %2 s").arg(secs / secsPerMinute).arg(secs % secsPerMinute);
}

QString orUnknown(const QString &text)
{
    return text.isEmpty() ? QStringLiteral("not known") : text;
}

} // namespace

SessionSummary::SessionSummary(const CPRData &session)
    : file(session.filename()), learners(session.learners()),
      guidelines(session.cprGuidelines()->guidelinesID())
{
    const CPREvents *events = session.cprEvents();
    const CPREventSessionInfo *info = events->sessionInfo();
    const CPREventSessionStatistics *statistics = events->sessionStatistics();
    const CPREventSessionScore *score = events->sessionScore();

    learners.removeAll(QString()); // a session without learners has one empty name
    manikin = keyOf<E::ManikinType>(info->getManikinType());
    firmware = textOf(info, E::manikinFirmwareVersion);
    protocol = info->cprProtocolToString();
    start = textOf(info, E::startTime);
    lengthSecs = intOf(info, E::totalTime);
    compressions = events->count(E::TagComp);
    ventilations = events->count(E::TagVent);
    pauses = events->count(E::TagInactivity);

    // A fresh statistics event has no mean depth, and a fresh score no reductions.
    constexpr double hmmPerMm = 100;
    QString key;
    hasStatistics = statistics->hasParameterType(E::compMeanDepth, key);
    meanDepthMm = intOf(statistics, E::compMeanDepth) / hmmPerMm;
    meanRate = intOf(statistics, E::compMeanRate);
    meanVolumeMl = intOf(statistics, E::ventMeanVolume);

    hasScores = score->hasParameterType(E::compReleaseScoreReduction, key);
    overallScore = intOf(score, E::overallScore);
    compressionScore = intOf(score, E::compOverallScore);
    ventilationScore = intOf(score, E::ventOverallScore);
    flowTimePercent = intOf(score, E::flowTimePercentage);
    primaryAdvice = keyOf<E::Advice>(intOf(score, E::primaryAdvice));
    secondaryAdvice = keyOf<E::Advice>(intOf(score, E::secondaryAdvice));
}

QString SessionSummary::toText() const
{
    QString text;
    const auto line = [&text](const char *label, const QString &value) {
        text += QString::fromLatin1(label).leftJustified(14) + value + QLatin1Char('\n');
    };

    QString compressionText = QString::number(compressions);
    QString ventilationText = QString::number(ventilations);
    if (hasStatistics) {
        compressionText += QStringLiteral(", mean depth %1 mm, mean rate %2 per minute")
                               .arg(meanDepthMm, 0, 'f', 1)
                               .arg(meanRate);
        ventilationText += QStringLiteral(", mean volume %1 ml").arg(meanVolumeMl);
    }

    line("Session", file);
    line("Learners", orUnknown(learners.join(QLatin1String(", "))));
    line("Manikin", manikin + QStringLiteral(", firmware ") + orUnknown(firmware));
    line("Protocol", protocol);
    line("Start", orUnknown(start));
    line("Length", duration(lengthSecs));
    line("Compressions", compressionText);
    line("Ventilations", ventilationText);
    line("Pauses", QString::number(pauses));
    if (hasScores) {
        line("Scores",
             QStringLiteral("overall %1 %, compressions %2 %, ventilations %3 %")
                 .arg(overallScore)
                 .arg(compressionScore)
                 .arg(ventilationScore));
        line("Flow time", QStringLiteral("%1 %").arg(flowTimePercent));
        line("Advice", primaryAdvice + QStringLiteral(", then ") + secondaryAdvice);
    } else {
        line("Scores", QStringLiteral("not received"));
    }
    line("Guidelines", orUnknown(guidelines));
    if (isComplete)
        line("Members", QStringLiteral("all read"));
    else if (missingMembers.isEmpty())
        line("Members", QStringLiteral("read in part"));
    else
        line("Members", QStringLiteral("NOT READ: ") + missingMembers.join(QLatin1String(", ")));
    return text;
}

QJsonObject SessionSummary::toJson() const
{
    QJsonObject object{
        {QStringLiteral("file"), file},
        {QStringLiteral("learners"), QJsonArray::fromStringList(learners)},
        {QStringLiteral("manikin"), manikin},
        {QStringLiteral("firmware"), firmware},
        {QStringLiteral("protocol"), protocol},
        {QStringLiteral("start"), start},
        {QStringLiteral("length_s"), lengthSecs},
        {QStringLiteral("compressions"), compressions},
        {QStringLiteral("ventilations"), ventilations},
        {QStringLiteral("pauses"), pauses},
        {QStringLiteral("guidelines"), guidelines},
        {QStringLiteral("complete"), isComplete},
        {QStringLiteral("missing_members"), QJsonArray::fromStringList(missingMembers)},
    };
    if (hasStatistics) {
        object.insert(QStringLiteral("mean_depth_mm"), meanDepthMm);
        object.insert(QStringLiteral("mean_rate_per_min"), meanRate);
        object.insert(QStringLiteral("mean_volume_ml"), meanVolumeMl);
    }
    if (hasScores) {
        object.insert(QStringLiteral("overall_score"), overallScore);
        object.insert(QStringLiteral("compression_score"), compressionScore);
        object.insert(QStringLiteral("ventilation_score"), ventilationScore);
        object.insert(QStringLiteral("flow_time_percent"), flowTimePercent);
        object.insert(QStringLiteral("primary_advice"), primaryAdvice);
        object.insert(QStringLiteral("secondary_advice"), secondaryAdvice);
    }
    return object;
}
