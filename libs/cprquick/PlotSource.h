// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_PLOTSOURCE_H
#define CPRQUICK_PLOTSOURCE_H

#include "cprquick/SessionWatcher.h"

#include <sessionplot/PlotModel.h>

#include <memory>

namespace cprquick {

/// What the items draw of one session. All items that show the same session share one, so its waves
/// are copied once.
class PlotSource final : public QObject {
    Q_OBJECT

public:
    /// The source of \a session (not null). It lives while somebody holds it.
    static std::shared_ptr<PlotSource> of(CPRData *session);
    ~PlotSource() override;

    /// Null once the session is gone.
    CPRData *session() const { return m_watcher.session(); }
    /// As it was at the last refresh().
    const sessionplot::PlotModel &model() const { return m_model; }
    /// Session time of the last packet at the last refresh(), or the end of the session, ms.
    int end() const { return m_end; }
    /// Reads what is new in the session. Costs nothing when nothing is.
    void refresh();

Q_SIGNALS:
    /// There is something new. Not repeated before the next refresh().
    void changed();
    void sessionGone();

private:
    explicit PlotSource(CPRData *session);
    void forget();
    void announce(bool &isStale);

    SessionWatcher m_watcher;
    const CPRData *m_key; // only compared
    sessionplot::PlotModel m_model;
    int m_time = 0;
    int m_end = 0;
    bool m_areWavesStale = true;
    bool m_areEventsStale = true;
    bool m_isAnnounced = true; // changed() was emitted
};

} // namespace cprquick

#endif
