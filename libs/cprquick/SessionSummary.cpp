// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/SessionSummary.h"

#include "sessionreview/ClassFigures.h"
#include "sessionreview/Scores.h"
#include "sessionreview/Words.h"

#include <private/PrintableText.h>

namespace cprquick {

SessionSummary::SessionSummary(QObject *parent) : QObject(parent)
{
    connect(&m_watcher, &SessionWatcher::settled, this, &SessionSummary::refresh);
    connect(&m_watcher, &SessionWatcher::sessionChanged, this, [this] {
        refresh();
        Q_EMIT sessionChanged();
    });
}

SessionSummary::~SessionSummary() = default;

void SessionSummary::refresh()
{
    const CPRData *known = session();
    const auto figures = known ? sessionreview::figuresOf(*known) : sessionreview::Figures();
    const int minFlowTime = known ? sessionreview::targetsOf(*known).minFlowTime : 0;
    if (figures == m_figures && minFlowTime == m_minFlowTime)
        return;
    m_figures = figures;
    m_minFlowTime = minFlowTime;
    Q_EMIT changed();
}

QStringList SessionSummary::learners() const
{
    QStringList names;
    for (const QString &learner : m_figures.learners)
        names.append(PrintableText::shown(sessionreview::learnerText(learner)));
    return names;
}

QString SessionSummary::guidelines() const
{
    return PrintableText::shown(m_figures.guidelines);
}

QString SessionSummary::protocolText() const
{
    return sessionreview::protocolText(m_figures.protocol);
}

QString SessionSummary::manikinText() const
{
    QStringList parts{PrintableText::shown(m_figures.manikinName.simplified()),
                      sessionreview::manikinText(m_figures.manikinType, m_figures.ageLetter)};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

QString SessionSummary::primaryAdviceText() const
{
    return sessionreview::adviceText(m_figures.primaryAdvice, m_figures.primarySide);
}

QString SessionSummary::secondaryAdviceText() const
{
    return sessionreview::adviceText(m_figures.secondaryAdvice, m_figures.secondarySide);
}

QString SessionSummary::verdictText(int percent, int least, int advanced) const
{
    const sessionreview::Verdict verdict = sessionreview::verdictOn(percent, least, advanced);
    if (verdict.text.isEmpty())
        return QString();
    return (verdict.isPassed ? QStringLiteral("\u2713 ") : QStringLiteral("\u2717 "))
        + verdict.text;
}

} // namespace cprquick
