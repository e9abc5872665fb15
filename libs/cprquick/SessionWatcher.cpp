// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/SessionWatcher.h"

namespace cprquick {

namespace {

constexpr int whileRunningMs = 250;

} // namespace

SessionWatcher::SessionWatcher(QObject *parent) : QObject(parent)
{
    m_settling.setSingleShot(true);
    connect(&m_settling, &QTimer::timeout, this, &SessionWatcher::settled);
    for (const auto change :
         {&SessionWatcher::sessionChanged, &SessionWatcher::cleared, &SessionWatcher::eventsChanged,
          &SessionWatcher::summaryChanged, &SessionWatcher::guidelinesChanged})
        connect(this, change, this, [this] { settleSoon(0); });
    for (const auto change : {&SessionWatcher::eventRemoved, &SessionWatcher::eventChanged})
        connect(this, change, this, [this] { settleSoon(0); });
    connect(this, &SessionWatcher::timeChanged, this, [this] { settleSoon(whileRunningMs); });
}

SessionWatcher::~SessionWatcher() = default;

void SessionWatcher::setSession(CPRData *session)
{
    if (session == m_session)
        return;
    release();
    m_session = session;
    m_events = session ? session->cprEvents() : nullptr;
    if (session) {
        connect(session, &QObject::destroyed, this, [this] {
            release();
            Q_EMIT sessionChanged();
        });
        connect(session, &CPRData::learnersChanged, this, &SessionWatcher::summaryChanged);

        connect(m_events, &CPREvents::eventsCleared, this, &SessionWatcher::cleared);
        connect(m_events, &CPREvents::eventRemoved, this, &SessionWatcher::eventRemoved);
        connect(m_events, &CPREvents::eventChanged, this, &SessionWatcher::eventChanged);
        connect(m_events, &CPREvents::eventsChanged, this, &SessionWatcher::eventsChanged);
        connect(m_events, &CPREvents::guidelinesChanged, this, &SessionWatcher::guidelinesChanged);
        connect(m_events, &CPREvents::compressionEvent, this, &SessionWatcher::eventAnnounced);
        connect(m_events, &CPREvents::ventilationEvent, this, &SessionWatcher::eventAnnounced);
        connect(m_events, &CPREvents::inactivityCPREvent, this, &SessionWatcher::eventAnnounced);
        connect(m_events, &CPREvents::cprGuiEventAdded, this, &SessionWatcher::eventAnnounced);
        connect(m_events, &CPREvents::otherEventAdded, this, &SessionWatcher::eventAnnounced);
        for (const auto change :
             {&CPREvents::cprSessionInfoChanged, &CPREvents::cprSessionStatisticsChanged,
              &CPREvents::cprSessionScoreChanged, &CPREvents::scoresReady})
            connect(m_events, change, this, &SessionWatcher::summaryChanged);

        // The event list is the last to hear of the time.
        connect(m_events, &CPREvents::sessionTimeChanged, this, &SessionWatcher::timeChanged);
        for (const auto change : {&CPRCompressionData::relativeCompressionDepthChanged,
                                  &CPRCompressionData::absoluteCompressionDepthChanged,
                                  &CPRCompressionData::compressionRateChanged})
            connect(session->compressionData(), change, this, &SessionWatcher::waveChanged);
        for (const auto change : {&CPRVentilationData::ventilationVolumeChanged,
                                  &CPRVentilationData::ventilationRateChanged})
            connect(session->ventilationData(), change, this, &SessionWatcher::waveChanged);
    }
    Q_EMIT sessionChanged();
}

void SessionWatcher::release()
{
    if (m_events)
        m_events->disconnect(this);
    if (m_session) {
        m_session->compressionData()->disconnect(this);
        m_session->ventilationData()->disconnect(this);
        m_session->disconnect(this);
    }
    m_events.clear();
    m_session.clear();
}

void SessionWatcher::settleSoon(int msecs)
{
    if (!m_settling.isActive() || m_settling.interval() > msecs)
        m_settling.start(msecs);
}

} // namespace cprquick
