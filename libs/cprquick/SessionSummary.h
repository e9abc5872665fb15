// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_SESSIONSUMMARY_H
#define CPRQUICK_SESSIONSUMMARY_H

#include "cprquick/SessionWatcher.h"

#include "sessionreview/Figures.h"

#include <QDateTime>
#include <QtQml/qqml.h>

namespace cprquick {

/// Who trained what, and how it went: the figures above the review picture, to bind to. All of them
/// notify by one signal, once for a burst of changes.
class CPRQUICK_EXPORT SessionSummary : public QObject {
    Q_OBJECT
    QML_NAMED_ELEMENT(SessionSummary)

    // clang-format off
    /// The session that is shown; not owned. Null when it is destroyed.
    Q_PROPERTY(CPRData    *session             READ session WRITE setSession   NOTIFY sessionChanged)
    /// Names of the learners, as Words.shown() gives them.
    Q_PROPERTY(QStringList learners            READ learners                   NOTIFY changed)
    /// When it began; invalid when that is not known.
    Q_PROPERTY(QDateTime   start               READ start                      NOTIFY changed)
    /// Length of the session, s; while it runs, so far.
    Q_PROPERTY(int         length              READ length                     NOTIFY changed)
    /// The CPR protocol in words.
    Q_PROPERTY(QString     protocolText        READ protocolText               NOTIFY changed)
    /// Name and type, as far as they are known.
    Q_PROPERTY(QString     manikinText         READ manikinText                NOTIFY changed)
    /// Identifier of the guideline set, as Words.shown() gives it.
    Q_PROPERTY(QString     guidelines          READ guidelines                 NOTIFY changed)
    /// @{
    /// What the CPR protocol trains, and what was done in the session all the same.
    Q_PROPERTY(bool        trainsCompressions  READ trainsCompressions         NOTIFY changed)
    Q_PROPERTY(bool        trainsVentilations  READ trainsVentilations         NOTIFY changed)
    /// @}
    /// The manikin has sent its scores; without them the next ten mean nothing.
    Q_PROPERTY(bool        hasScores           READ hasScores                  NOTIFY changed)
    /// @{
    /// Percent; flowTime is -1 when it is not known.
    Q_PROPERTY(int         overallScore        READ overallScore               NOTIFY changed)
    Q_PROPERTY(int         compressionScore    READ compressionScore           NOTIFY changed)
    Q_PROPERTY(int         ventilationScore    READ ventilationScore           NOTIFY changed)
    Q_PROPERTY(int         flowTime            READ flowTime                   NOTIFY changed)
    /// @}
    /// @{
    /// CPREventBase.Advice, and the same as a sentence; empty for none.
    Q_PROPERTY(int         primaryAdvice       READ primaryAdvice              NOTIFY changed)
    Q_PROPERTY(int         secondaryAdvice     READ secondaryAdvice            NOTIFY changed)
    Q_PROPERTY(QString     primaryAdviceText   READ primaryAdviceText          NOTIFY changed)
    Q_PROPERTY(QString     secondaryAdviceText READ secondaryAdviceText        NOTIFY changed)
    /// @}
    /// @{
    /// Percent that a score needs for the basic and for the advanced level; 0 for none.
    Q_PROPERTY(int         basicThreshold      READ basicThreshold             NOTIFY changed)
    Q_PROPERTY(int         advancedThreshold   READ advancedThreshold          NOTIFY changed)
    /// @}
    /// Flow time, percent, that the guidelines ask for; 0 when the protocol has none.
    Q_PROPERTY(int         leastFlowTime       READ leastFlowTime              NOTIFY changed)
    // clang-format on

public:
    /// Shows nothing until it has a session.
    explicit SessionSummary(QObject *parent = nullptr);
    ~SessionSummary() override;

    // clang-format off
    /// @{
    /// Getters and setters of the properties.
    CPRData    *session() const            { return m_watcher.session(); }
    void        setSession(CPRData *session) { m_watcher.setSession(session); }
    QDateTime   start() const              { return m_figures.start(); }
    int         length() const             { return m_figures.secsSoFar; }
    bool        hasScores() const          { return m_figures.hasScores; }
    int         overallScore() const       { return m_figures.overallScore; }
    int         compressionScore() const   { return m_figures.compressionScore; }
    int         ventilationScore() const   { return m_figures.ventilationScore; }
    int         flowTime() const           { return m_figures.flowTime; }
    int         primaryAdvice() const      { return m_figures.primaryAdvice; }
    int         secondaryAdvice() const    { return m_figures.secondaryAdvice; }
    bool        trainsCompressions() const { return m_figures.training.compressions; }
    bool        trainsVentilations() const { return m_figures.training.ventilations; }
    int         basicThreshold() const     { return m_figures.basicThreshold; }
    int         advancedThreshold() const  { return m_figures.advancedThreshold; }
    int         leastFlowTime() const      { return m_minFlowTime; }
    // clang-format on
    QStringList learners() const;
    QString guidelines() const;
    QString protocolText() const;
    QString manikinText() const;
    QString primaryAdviceText() const;
    QString secondaryAdviceText() const;
    /// @}

    /// Whether a score passes, and why: "\u2713 basic, from 50 %". Empty when nothing is asked for.
    Q_INVOKABLE QString verdictText(int percent, int least, int advanced = 0) const;

Q_SIGNALS:
    /// @{
    /// The properties of that name, or those that notify by it, have changed.
    void sessionChanged();
    void changed();
    /// @}

private:
    void refresh();

    SessionWatcher m_watcher;
    sessionreview::Figures m_figures;
    int m_minFlowTime = 0;
};

} // namespace cprquick

#endif
