// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/PlotModel.h"

#include <CPRData.h>

#include <algorithm>
#include <limits>

namespace sessionplot {

namespace {

/// The value of a unit; \a usual where the description does not say.
double unitOf(const CPRWaveformInfo &description, double usual)
{
    return description.lsbValue() > 0 ? double(description.lsbValue()) : usual;
}

} // namespace

double mmPerSample(const CPRWaveformInfo &description)
{
    return unitOf(description, 0.01);
}

void PlotModel::clear()
{
    *this = PlotModel();
}

void PlotModel::update(const CPRData &session)
{
    updateWaves(session);
    updateEvents(session);
}

void PlotModel::updateWaves(const CPRData &session)
{
    const CPRCompressionData *depth = session.compressionData();
    const CPRVentilationData *volume = session.ventilationData();
    if (!depth || !volume)
        return;

    // The first sample belongs to the first header, one period after the start.
    const CPRWaveformInfo *info = depth->waveformInfo();
    m_depth.describe(mmPerSample(*info), info->samplePeriod(), info->samplePeriod());
    m_depth.follow(depth->count(), [depth](int i) {
        const int sample = depth->at(i);
        return sample < 0 ? -std::max(sample, -std::numeric_limits<int>::max()) : sample;
    });

    info = volume->waveformInfo();
    const bool inStep = volume->count() == depth->count();
    m_volume.describe(unitOf(*info, 1), info->samplePeriod(),
                      inStep ? info->samplePeriod()
                             : std::max(info->samplePeriod(), info->msecs()));
    m_volume.follow(volume->count(), [volume](int i) { return volume->at(i); });
}

void PlotModel::updateEvents(const CPRData &session)
{
    m_review = sessionreview::reviewOf(session);
}

qint64 PlotModel::length() const
{
    const auto endOf = [](const Wave &wave) {
        return wave.count() > 0 ? wave.start() + qint64(wave.count() - 1) * wave.period() : 0;
    };
    return std::max({endOf(m_depth), endOf(m_volume), qint64(m_review.end)});
}

} // namespace sessionplot
