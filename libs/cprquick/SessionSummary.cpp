// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "SessionSummary.h"

#include "sessionreview/Words.h"

using bls_2010::CommonDefs;

namespace {

constexpr int msecsPerSecond = 1000;

} // namespace

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
    sessionreview::Summary summary;
    sessionreview::Targets targets;
    if (const CPRData *known = session()) {
        summary = sessionreview::summaryOf(*known);
        // The manikin tells the length at the end.
        if (summary.secs <= 0)
            summary.secs = known->cprEvents()->sessionTime() / msecsPerSecond;
        targets = sessionreview::targetsOf(*known);
    }
    if (summary == m_summary && targets.leastFlowTime == m_targets.leastFlowTime)
        return;
    m_summary = summary;
    m_targets = targets;
    Q_EMIT changed();
}

QString SessionSummary::protocolText() const
{
    return sessionreview::protocolText(m_summary.protocol);
}

QString SessionSummary::manikinText() const
{
    QStringList parts{m_summary.manikinName.simplified(),
                      sessionreview::manikinText(m_summary.manikinType, m_summary.ageLetter)};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(", "));
}

bool SessionSummary::trainsCompressions() const
{
    return m_summary.protocol != CommonDefs::CPR_VENTILATION_ONLY;
}

bool SessionSummary::trainsVentilations() const
{
    return m_summary.protocol != CommonDefs::CPR_COMPRESSION_ONLY;
}

QString SessionSummary::primaryAdviceText() const
{
    return sessionreview::adviceText(m_summary.primaryAdvice);
}

QString SessionSummary::secondaryAdviceText() const
{
    return sessionreview::adviceText(m_summary.secondaryAdvice);
}
