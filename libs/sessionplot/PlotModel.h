// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_PLOTMODEL_H
#define SESSIONPLOT_PLOTMODEL_H

#include "sessionplot/Wave.h"

#include "sessionreview/SessionReview.h"

class CPRData;
class CPRWaveformInfo;

namespace sessionplot {

/// What is drawn of a session: a copy of its waves, and what was found in it.
///
/// A model has no ties to the session and may be drawn on another thread, or after the session is
/// gone. While a session grows, updateWaves() copies only the new samples; updateEvents() walks
/// over all events and is for when they have changed.
class PlotModel {
public:
    PlotModel() = default;
    explicit PlotModel(const CPRData &session) { update(session); }

    void update(const CPRData &session);
    void updateWaves(const CPRData &session);
    void updateEvents(const CPRData &session);
    void clear();

    /// Compression depth; unit() is in mm. Depths count downwards from 0, whatever their sign was.
    const Wave &depth() const { return m_depth; }
    /// Ventilation volume; unit() is in ml.
    const Wave &volume() const { return m_volume; }
    /// As of the last updateEvents().
    const sessionreview::SessionReview &review() const { return m_review; }

    /// Length of the session, ms: to the end of the waves, or of the last event behind them.
    qint64 length() const;

private:
    Wave m_depth;
    Wave m_volume;
    sessionreview::SessionReview m_review;
};

/// What a unit of a depth sample stands for, mm; a hundredth where the description does not say.
double mmPerSample(const CPRWaveformInfo &description);

} // namespace sessionplot

#endif
