// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "FiguresObject.h"

#include "sessionreview/Words.h"

#include <CPRData.h>
#include <CPREventSessionInfo.h>

#include <QHash>
#include <QJsonArray>

namespace {

using E = CPREventBase;

// A protocol as the library's interface calls it.
QString protocolName(int protocol)
{
    static QHash<int, QString> names;
    QString &name = names[protocol];
    if (name.isEmpty()) {
        const CPRData session;
        CPREventSessionInfo *info = session.cprEvents()->sessionInfo();
        info->setParameter(E::cprProtocol, protocol);
        name = info->cprProtocolToString();
    }
    return name;
}

} // namespace

QJsonObject figuresObject(const sessionreview::Figures &figures)
{
    const auto statistics = [&figures](const QJsonValue &value) {
        return figures.hasStatistics ? value : QJsonValue();
    };
    const auto scores = [&figures](const QJsonValue &value) {
        return figures.hasScores ? value : QJsonValue();
    };
    return {
        {QStringLiteral("learners"), QJsonArray::fromStringList(figures.learners)},
        {QStringLiteral("manikin_name"), figures.manikinName},
        {QStringLiteral("manikin"), keyOf<E::ManikinType>(figures.manikinType)},
        {QStringLiteral("firmware"), figures.firmware},
        {QStringLiteral("protocol"), protocolName(figures.protocol)},
        {QStringLiteral("start"), figures.startTime},
        {QStringLiteral("length_s"), figures.secs},
        {QStringLiteral("compressions"), figures.compressions},
        {QStringLiteral("ventilations"), figures.ventilations},
        {QStringLiteral("pauses"), figures.pauses},
        {QStringLiteral("guidelines"), figures.guidelines},
        {QStringLiteral("mean_depth_mm"), statistics(figures.meanDepth)},
        {QStringLiteral("mean_rate_per_min"), statistics(figures.meanRate)},
        {QStringLiteral("mean_volume_ml"), statistics(figures.meanVolume)},
        {QStringLiteral("overall_score"), scores(figures.overallScore)},
        {QStringLiteral("compression_score"), scores(figures.compressionScore)},
        {QStringLiteral("ventilation_score"), scores(figures.ventilationScore)},
        {QStringLiteral("flow_time_percent"), scores(figures.flowTime)},
        {QStringLiteral("primary_advice"), scores(keyOf<E::Advice>(figures.primaryAdvice))},
        {QStringLiteral("secondary_advice"), scores(keyOf<E::Advice>(figures.secondaryAdvice))},
        {QStringLiteral("primary_advice_text"),
         scores(sessionreview::adviceText(figures.primaryAdvice, figures.primarySide))},
        {QStringLiteral("secondary_advice_text"),
         scores(sessionreview::adviceText(figures.secondaryAdvice, figures.secondarySide))},
    };
}

QJsonObject withoutNulls(const QJsonObject &object)
{
    QJsonObject left;
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (!member->isNull())
            left.insert(member.key(), *member);
    }
    return left;
}
