// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/PlotSource.h"

#include <QHash>

#include <algorithm>

namespace cprquick {

namespace {

// Items live on one thread, and so does this.
QHash<const CPRData *, std::weak_ptr<PlotSource>> &sources()
{
    static QHash<const CPRData *, std::weak_ptr<PlotSource>> all;
    return all;
}

} // namespace

std::shared_ptr<PlotSource> PlotSource::of(CPRData *session)
{
    std::shared_ptr<PlotSource> source = sources().value(session).lock();
    if (!source) {
        source.reset(new PlotSource(session));
        sources().insert(session, source);
    }
    return source;
}

PlotSource::PlotSource(CPRData *session) : m_key(session)
{
    m_watcher.setSession(session);
    m_time = m_watcher.events()->sessionTime();

    connect(&m_watcher, &SessionWatcher::sessionChanged, this, [this] {
        forget();
        m_model.clear();
        m_time = m_end = 0;
        Q_EMIT sessionGone();
    });
    connect(&m_watcher, &SessionWatcher::timeChanged, this, [this](int msecs) {
        m_time = msecs;
        announce(m_areWavesStale);
    });
    connect(&m_watcher, &SessionWatcher::waveChanged, this, [this] { announce(m_areWavesStale); });
    for (const auto change : {&SessionWatcher::cleared, &SessionWatcher::eventsChanged,
                              &SessionWatcher::summaryChanged, &SessionWatcher::guidelinesChanged})
        connect(&m_watcher, change, this, [this] { announce(m_areEventsStale); });
    for (const auto change : {&SessionWatcher::eventRemoved, &SessionWatcher::eventChanged})
        connect(&m_watcher, change, this, [this] { announce(m_areEventsStale); });
}

PlotSource::~PlotSource()
{
    forget();
}

void PlotSource::forget()
{
    // A new session may have the address of one that is gone.
    const auto known = sources().constFind(m_key);
    if (known != sources().constEnd() && (known->expired() || known->lock().get() == this))
        sources().erase(known);
}

void PlotSource::announce(bool &isStale)
{
    isStale = true;
    if (!m_isAnnounced) {
        m_isAnnounced = true;
        Q_EMIT changed();
    }
}

void PlotSource::refresh()
{
    m_isAnnounced = false;
    const CPRData *session = m_watcher.session();
    if (!session)
        return;
    if (m_areWavesStale)
        m_model.updateWaves(*session);
    if (m_areEventsStale)
        m_model.updateEvents(*session);
    m_areWavesStale = m_areEventsStale = false;
    m_end = std::max(m_time, static_cast<int>(m_model.length()));
}

} // namespace cprquick
