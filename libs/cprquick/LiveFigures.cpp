// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/LiveFigures.h"

#include "cprquick/PlotSource.h"

#include "sessionreview/LiveClass.h"
#include "sessionreview/StandClear.h"
#include "sessionreview/Words.h"

#include <private/Units.h>
#include <sessionplot/PlotModel.h>
#include <sessionplot/Scales.h>

#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

namespace cprquick {

namespace {

using E = CPREventBase;
using namespace sessionreview;

using Units::msecsPerSecond;

LiveFigures::Side shown(Side side)
{
    return static_cast<LiveFigures::Side>(side);
}
static_assert(int(LiveFigures::Above) == int(Side::Above));
static_assert(int(LiveFigures::ChangeNow) == int(RescuerChange::Now));

} // namespace

LiveFigures::LiveFigures(QObject *parent) : QObject(parent)
{
    m_reading.setSingleShot(true);
    connect(&m_reading, &QTimer::timeout, this, &LiveFigures::read);
    connect(&m_watcher, &SessionWatcher::sessionChanged, this, [this] {
        m_areEventsStale = true;
        m_liveAdvice = LiveAdvice();
        m_scoredAt = notScored;
        usePlot();
        read();
        Q_EMIT sessionChanged();
    });
    connect(&m_watcher, &SessionWatcher::waveChanged, this, [this] { readSoon(m_paceMs); });
    connect(&m_watcher, &SessionWatcher::timeChanged, this, [this] { readSoon(m_paceMs); });
    connect(&m_watcher, &SessionWatcher::eventAnnounced, this, &LiveFigures::readEventsSoon);
    for (const auto change : {&SessionWatcher::cleared, &SessionWatcher::eventsChanged,
                              &SessionWatcher::summaryChanged, &SessionWatcher::guidelinesChanged})
        connect(&m_watcher, change, this, &LiveFigures::readEventsSoon);
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

void LiveFigures::setPace(int msecs)
{
    if (msecs == m_paceMs)
        return;
    m_paceMs = msecs;
    Q_EMIT paceChanged();
}

void LiveFigures::setAt(int msecs)
{
    if (msecs == m_at)
        return;
    m_at = msecs;
    usePlot();
    readEventsSoon();
    Q_EMIT atChanged();
}

void LiveFigures::usePlot()
{
    if (m_at < 0 || !session())
        m_plot.reset();
    else if (!m_plot || m_plot->session() != session())
        m_plot = PlotSource::of(session());
}

int LiveFigures::shownTime() const
{
    return m_at >= 0 ? m_at : std::numeric_limits<int>::max();
}

void LiveFigures::readEventsSoon()
{
    m_areEventsStale = true;
    readSoon(readingMs);
}

void LiveFigures::readSoon(int msecs)
{
    if (m_isActive && (!m_reading.isActive() || m_reading.remainingTime() > msecs))
        m_reading.start(msecs);
}

void LiveFigures::read()
{
    m_reading.stop();
    if (m_plot)
        m_plot->refresh();
    else
        readWaves();
    if (std::exchange(m_areEventsStale, false)) {
        const Targets targets = session() ? targetsOf(*session()) : Targets();
        readEvents(targets);
        if (targets != m_targets) {
            m_targets = targets;
            Q_EMIT targetsChanged();
            Q_EMIT waveChanged(); // the rates are judged anew
        }
    }
    if (m_plot)
        readWaves(); // goes by the events of that time
    readPause();
    readAdvice();
    readScoreSoFar();
}

LiveFigures::WaveFigures LiveFigures::wavesNow() const
{
    WaveFigures now;
    if (const CPRData *known = session()) {
        const CPRCompressionData *wave = known->compressionData();
        const bool isAbsolute = known->cprGuidelines()->useAbsoluteDepth();
        now.time = known->cprEvents()->sessionTime();
        now.depth = std::abs(isAbsolute ? wave->absoluteDepth() : wave->relativeDepth())
            * sessionplot::mmPerSample(*wave->waveformInfo());
        now.volume = std::max(known->ventilationData()->volume(), 0);
        now.rate = wave->compressionRate();
        now.ventilationRate = known->ventilationData()->rate();
    }
    return now;
}

LiveFigures::WaveFigures LiveFigures::wavesThen() const
{
    const auto valueOf = [this](const sessionplot::Wave &wave) {
        const int index = wave.indexAt(m_at);
        return index < wave.count() ? wave.at(index) * wave.unit() : 0;
    };
    WaveFigures then;
    then.time = m_at;
    then.depth = std::abs(valueOf(m_plot->model().depth()));
    then.volume = std::max(static_cast<int>(valueOf(m_plot->model().volume())), 0);
    then.rate = m_latest.rate;
    then.ventilationRate = m_latest.ventilationRate;
    return then;
}

void LiveFigures::readWaves()
{
    const WaveFigures now = m_plot ? wavesThen() : wavesNow();
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
    Pause now;
    if (const CPREvents *events = m_watcher.events()) {
        const int msecs = m_wave.time;
        const RunningPause pause = runningPause(*events, m_latest, m_targets, msecs);
        now = {pause.msecs / msecsPerSecond,
               pause.isTooLong,
               pause.isAskedFor,
               m_latest.compression && isOutdated(*m_latest.compression, msecs),
               m_latest.ventilation && isOutdated(*m_latest.ventilation, msecs),
               sessionreview::isStandClear(m_latest.standClear, msecs),
               m_score < 0 && sessionreview::areCompressionsDue(m_latest, pause, m_targets, msecs),
               static_cast<Change>(rescuerChangeAt(m_latest.protocol, msecs))};
    }
    const auto values = [](const Pause &p) {
        return std::tie(p.secs, p.isTooLong, p.isAskedFor, p.isCompressionOutdated,
                        p.isVentilationOutdated, p.isStandClear, p.areCompressionsDue, p.change);
    };
    if (values(now) == values(m_pause))
        return;
    m_pause = now;
    Q_EMIT pauseChanged();
}

void LiveFigures::readScoreSoFar()
{
    const int secs = m_at < 0 && session() ? m_wave.time / msecsPerSecond : -1;
    if (std::exchange(m_scoredAt, secs) == secs)
        return;
    const SessionReview review = secs < 0 ? SessionReview() : reviewOf(*session());
    const std::optional<double> score = sessionreview::scoreSoFar(review);
    const int percent = score ? static_cast<int>(std::lround(*score)) : -1;
    const int lost = sessionreview::lostMsecs(review);
    if (percent == m_scoreSoFar && lost == m_lostMs)
        return;
    m_scoreSoFar = percent;
    m_lostMs = lost;
    Q_EMIT scoreSoFarChanged();
}

void LiveFigures::readAdvice()
{
    QString advice;
    Tone tone = Silence;
    std::pair<Prompt, int> heard(Prompt::None, 0);
    if (!session()) {
        // nothing to say
    } else if (m_score >= 0) {
        const Figures figures = figuresOf(*session());
        advice = adviceText(figures.primaryAdvice, figures.primarySide);
        tone = Result;
    } else {
        m_liveAdvice.follow(*session(), m_targets, m_wave.time);
        const Prompt prompt = m_liveAdvice.prompt();
        heard = {prompt, m_liveAdvice.heardAt()};
        advice = promptText(prompt);
        if (isFault(prompt))
            tone = Fault;
        else if (prompt == Prompt::Right)
            tone = Praise;
        else if (prompt != Prompt::None)
            tone = Instruction;
    }
    const bool isDue = heard != std::exchange(m_heard, heard);
    if (advice != m_advice || tone != m_adviceTone) {
        m_advice = advice;
        m_adviceTone = tone;
        Q_EMIT adviceChanged();
    }
    if (isDue)
        Q_EMIT adviceDue();
}

void LiveFigures::readEvents(const Targets &targets)
{
    const CPREvents *events = m_watcher.events();
    m_latest = events ? latestEventsOf(*session(), targets, shownTime()) : LatestEvents();
    m_compressionCount = events ? begunUntil(*events, E::TagComp, shownTime()) : 0;
    m_ventilationCount = events ? begunUntil(*events, E::TagVent, shownTime()) : 0;
    const Figures figures = events ? figuresOf(*session()) : Figures();
    m_score = figures.hasScores ? figures.overallScore : -1;
    Q_EMIT eventsChanged();
}

QString LiveFigures::lastDepthText() const
{
    if (!m_latest.compression)
        return QStringLiteral("–");
    const double depth = m_latest.compression->depth;
    const Side side = depthSide();
    return QString::number(std::lround(side == Below       ? std::floor(depth)
                                           : side == Above ? std::ceil(depth)
                                                           : depth));
}

LiveFigures::Side LiveFigures::depthSide() const
{
    return m_latest.compression ? shown(m_latest.compression->depthSide) : Unknown;
}

LiveFigures::Side LiveFigures::volumeSide() const
{
    return m_latest.ventilation ? shown(m_latest.ventilation->volumeSide) : Unknown;
}

QStringList LiveFigures::faults() const
{
    return faultTexts(m_latest.faults);
}

LiveFigures::Side LiveFigures::rateSide() const
{
    return m_wave.rate > 0 ? shown(m_targets.rate.side(m_wave.rate)) : Unknown;
}

LiveFigures::Side LiveFigures::ventilationRateSide() const
{
    return m_wave.ventilationRate > 0
        ? shown(m_targets.ventilationRate.side(m_wave.ventilationRate))
        : Unknown;
}

QString LiveFigures::aed() const
{
    QString text = m_latest.aed ? aedStepText(*m_latest.aed) : QString();
    return text.replace(0, 1, text.left(1).toUpper());
}

QString LiveFigures::shock() const
{
    return m_latest.shock ? flagText(*m_latest.shock) : QString();
}

QString LiveFigures::rhythm() const
{
    return m_latest.rhythm == E::AED_NoECGRhythm ? QString() : rhythmText(m_latest.rhythm);
}

} // namespace cprquick
