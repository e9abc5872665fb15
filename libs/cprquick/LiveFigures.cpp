// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "LiveFigures.h"

#include "EventText.h"

#include "sessionreview/Words.h"

#include <Scales.h>

#include <cmath>

namespace {

using E = CPREventBase;
using namespace sessionreview;

constexpr int readingMs = 15; // shorter than a frame
constexpr int msecsPerSecond = 1000;
constexpr int mmPart = 100; // of a wave unit without a description
// A pause that was not reported for this long is over. Reports come every second.
constexpr int longestSilenceMs = 2500;

/// The worst first: what harms the patient, then what makes the compression useless.
E::Advice adviceOf(const Compression &compression)
{
    if (compression.wrongHands)
        return E::Advice_HandPosition;
    if (compression.depthSide == Side::Below)
        return E::Advice_CompressDeepEnough;
    if (compression.depthSide == Side::Above)
        return E::Advice_CompressNotSoDeep;
    if (compression.incompleteRelease)
        return E::Advice_ReleaseCompletely;
    const bool isInPace =
        compression.rateSide == Side::Inside || compression.rateSide == Side::Unknown;
    return isInPace ? E::Advice_None : E::Advice_CorrectRate;
}

E::Advice adviceOf(const Ventilation &ventilation)
{
    const bool isRight =
        ventilation.volumeSide == Side::Inside || ventilation.volumeSide == Side::Unknown;
    return isRight ? E::Advice_None : E::Advice_CorrectVolume;
}

LiveFigures::Side shown(Side side)
{
    return static_cast<LiveFigures::Side>(side);
}
static_assert(int(LiveFigures::Above) == int(Side::Above));

} // namespace

LiveFigures::LiveFigures(QObject *parent) : QObject(parent)
{
    m_reading.setSingleShot(true);
    m_reading.setInterval(readingMs);
    connect(&m_reading, &QTimer::timeout, this, &LiveFigures::read);
    connect(&m_watcher, &SessionWatcher::sessionChanged, this, [this] {
        m_areEventsStale = true;
        read();
        Q_EMIT sessionChanged();
    });
    connect(&m_watcher, &SessionWatcher::waveChanged, this, &LiveFigures::readSoon);
    connect(&m_watcher, &SessionWatcher::timeChanged, this, &LiveFigures::readSoon);
    connect(&m_watcher, &SessionWatcher::eventAnnounced, this, &LiveFigures::noteEvents);
    for (const auto change : {&SessionWatcher::cleared, &SessionWatcher::eventsChanged,
                              &SessionWatcher::summaryChanged, &SessionWatcher::guidelinesChanged})
        connect(&m_watcher, change, this, &LiveFigures::noteEvents);
}

LiveFigures::~LiveFigures() = default;

void LiveFigures::setActive(bool active)
{
    if (active == m_isActive)
        return;
    m_isActive = active;
    if (active)
        read();
    else
        m_reading.stop();
    Q_EMIT isActiveChanged();
}

void LiveFigures::noteEvents()
{
    m_areEventsStale = true;
    readSoon();
}

void LiveFigures::readSoon()
{
    if (m_isActive && !m_reading.isActive())
        m_reading.start();
}

void LiveFigures::read()
{
    m_reading.stop();
    readWaves();
    readPause();
    if (!std::exchange(m_areEventsStale, false))
        return;
    readEvents();
    const Targets targets = session() ? targetsOf(*session()) : Targets();
    if (targets != m_targets) {
        m_targets = targets;
        Q_EMIT targetsChanged();
        Q_EMIT waveChanged(); // the rate is judged anew
    }
}

void LiveFigures::readWaves()
{
    WaveFigures now;
    if (const CPRData *known = session()) {
        const CPRCompressionData *wave = known->compressionData();
        const double mmPerUnit = wave->waveformInfo()->lsbValue() > 0
            ? double(wave->waveformInfo()->lsbValue())
            : 1.0 / mmPart;
        const bool isAbsolute = known->cprGuidelines()->useAbsoluteDepth();
        now.time = known->cprEvents()->sessionTime();
        now.depth =
            std::abs(isAbsolute ? wave->absoluteDepth() : wave->relativeDepth()) * mmPerUnit;
        now.volume = std::max(known->ventilationData()->volume(), 0);
        now.rate = wave->compressionRate();
        now.ventilationRate = known->ventilationData()->rate();
    }
    const WaveFigures before = std::exchange(m_wave, now);
    if (now.time != before.time)
        Q_EMIT timeChanged();
    if (now.depth != before.depth || now.volume != before.volume || now.rate != before.rate
        || now.ventilationRate != before.ventilationRate)
        Q_EMIT waveChanged();
    const QString text =
        sessionplot::timeText(now.time, msecsPerSecond, sessionplot::needsHours({0, now.time}));
    if (text != m_timeText) {
        m_timeText = text;
        Q_EMIT timeTextChanged();
    }
}

void LiveFigures::readPause()
{
    int secs = 0;
    const CPREvents *events = m_watcher.events();
    const E *pause = events ? events->last(E::TagInactivity) : nullptr;
    const E *compression = events ? events->last(E::TagComp) : nullptr;
    if (pause && m_wave.time - pause->eventEndTime() <= longestSilenceMs
        && (!compression || compression->msecs() < pause->eventEndTime()))
        secs = (std::max(m_wave.time, pause->eventEndTime()) - pause->msecs()) / msecsPerSecond;
    if (secs == m_pause)
        return;
    m_pause = secs;
    Q_EMIT pauseChanged();
}

void LiveFigures::readEvents()
{
    m_lastDepth = m_lastReleaseDepth = -1;
    m_lastVolume = -1;
    m_isReleased = true;
    m_depthSide = m_volumeSide = Unknown;
    m_faults.clear();
    m_advice = E::Advice_None;
    m_compressionCount = m_ventilationCount = 0;
    m_compressionsInCycle = m_ventilationsInCycle = 0;
    if (const CPREvents *events = m_watcher.events()) {
        m_compressionCount = events->count(E::TagComp);
        m_ventilationCount = events->count(E::TagVent);
        readLast(*events);
        const Summary summary = summaryOf(*session());
        if (summary.hasScores)
            m_advice = summary.primaryAdvice;
    }
    Q_EMIT eventsChanged();
}

void LiveFigures::readLast(const CPREvents &events)
{
    const Targets targets = targetsOf(*session());
    const auto *compression = qobject_cast<CPREventCompression *>(events.last(E::TagComp));
    if (compression) {
        const Compression last = judged(*compression, targets);
        m_lastDepth = wholeHmm(last.depth);
        m_lastReleaseDepth = wholeHmm(compression->compReleaseDepth());
        m_isReleased = !last.incompleteRelease;
        m_depthSide = shown(last.depthSide);
        m_compressionsInCycle = compression->numberInCycle();
        m_faults = faultTexts(last);
        m_advice = adviceOf(last);
    }

    const auto *ventilation = qobject_cast<CPREventVentilation *>(events.last(E::TagVent));
    if (!ventilation)
        return;
    const Ventilation last = judged(*ventilation, targets);
    m_lastVolume = last.volume;
    m_volumeSide = shown(last.volumeSide);
    if (compression && ventilation->msecs() < compression->msecs())
        return;
    m_faults = faultTexts(last);
    m_advice = adviceOf(last);
    int before = m_ventilationCount - 1;
    while (before >= 0 && compression
           && events.at(E::TagVent, before)->msecs() >= compression->msecs())
        --before;
    m_ventilationsInCycle = compression ? m_ventilationCount - 1 - before : m_ventilationCount;
}

LiveFigures::Side LiveFigures::rateSide() const
{
    return m_wave.rate > 0 ? shown(m_targets.rate.side(m_wave.rate)) : Unknown;
}

QString LiveFigures::advice() const
{
    return adviceText(m_advice);
}
