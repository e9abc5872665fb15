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
        {QStringLiteral("manikin_name"), orNull(figures.manikinName)},
        {QStringLiteral("manikin"), keyOf<E::ManikinType>(figures.manikinType)},
        {QStringLiteral("manikin_text"),
         orNull(sessionreview::manikinText(figures.manikinType, figures.ageLetter))},
        {QStringLiteral("firmware"), orNull(figures.firmware)},
        {QStringLiteral("protocol"), protocolName(figures.protocol)},
        {QStringLiteral("protocol_text"), sessionreview::protocolText(figures.protocol)},
        {QStringLiteral("start"), orNull(figures.startTime)},
        {QStringLiteral("length_s"), figures.secs > 0 ? QJsonValue(figures.secs) : QJsonValue()},
        {QStringLiteral("compressions"), figures.compressions},
        {QStringLiteral("ventilations"), figures.ventilations},
        {QStringLiteral("pauses"), figures.pauses},
        {QStringLiteral("guidelines"), orNull(figures.guidelines)},
        {QStringLiteral("mean_depth_mm"), statistics(figures.meanDepth)},
        {QStringLiteral("mean_rate_per_min"), statistics(figures.meanRate)},
        {QStringLiteral("mean_volume_ml"), statistics(figures.meanVolume)},
        {QStringLiteral("overall_score"), scores(figures.overallScore)},
        {QStringLiteral("compression_score"), scores(figures.compressionScore)},
        {QStringLiteral("ventilation_score"), scores(figures.ventilationScore)},
        {QStringLiteral("flow_time_percent"),
         scores(figures.flowTime < 0 ? QJsonValue() : figures.flowTime)},
        {QStringLiteral("primary_advice"), scores(keyOf<E::Advice>(figures.primaryAdvice))},
        {QStringLiteral("secondary_advice"), scores(keyOf<E::Advice>(figures.secondaryAdvice))},
        {QStringLiteral("primary_advice_text"),
         scores(orNull(sessionreview::adviceText(figures.primaryAdvice, figures.primarySide)))},
        {QStringLiteral("secondary_advice_text"),
         scores(orNull(sessionreview::adviceText(figures.secondaryAdvice, figures.secondarySide)))},
    };
}

QJsonValue orNull(const QString &text)
{
    return text.isEmpty() ? QJsonValue() : QJsonValue(text);
}

QJsonValue orNull(std::optional<double> number)
{
    return number ? QJsonValue(*number) : QJsonValue();
}
