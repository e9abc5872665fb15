// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_SESSIONSUMMARY_H
#define CPRSESSION_SESSIONSUMMARY_H

#include <QJsonObject>
#include <QString>
#include <QStringList>

class CPRData;

/// What a person wants to know first about a session. Counts come from the events; means, scores
/// and advices from the manikin, and are absent (negative, empty) when it did not send them.
struct SessionSummary {
    explicit SessionSummary(const CPRData &session);

    QString toText() const;
    QJsonObject toJson() const;

    QString file;
    QStringList learners;
    QString manikin; ///< the key of its type
    QString firmware;
    QString protocol;
    QString start; ///< ISO 8601
    int lengthSecs = 0;
    int compressions = 0;
    int ventilations = 0;
    int pauses = 0;
    bool hasStatistics = false;
    double meanDepthMm = 0;
    int meanRate = 0; ///< per minute
    int meanVolumeMl = 0;
    bool hasScores = false;
    int overallScore = 0;
    int compressionScore = 0;
    int ventilationScore = 0;
    int flowTimePercent = 0;
    QString primaryAdvice; ///< the key
    QString secondaryAdvice; ///< the key
    QString guidelines;
    bool isComplete = true;
    QStringList missingMembers;
};

#endif
