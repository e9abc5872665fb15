// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "SoundTrack.h"

#include <private/Units.h>

#include <QMutexLocker>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

namespace {

using SoundTrack::samplesPerSecond;
using SoundTrack::State;
using SoundTrack::Tone;

constexpr double tickPeak = 0.45; // together they stay below 1
constexpr double tonePeak = 0.45;
constexpr int tickHertz = 1760; // above all tones
constexpr int tickSamples = samplesPerSecond * 30 / 1000;
constexpr int tickDecaySamples = samplesPerSecond * 6 / 1000;
constexpr int edgeSamples = samplesPerSecond * 5 / 1000; // a tone that begins at once would click

// They differ in number and length of beeps as well as in pitch, for those who do not hear pitch.
// clang-format off
constexpr std::array<Tone, 4> toneTable{{
    {sessionreview::Prompt::PressDeeper,       QT_TRANSLATE_NOOP("SoundTrack", "Too shallow"),     330, 2, 180,  90},
    {sessionreview::Prompt::PressFaster,       QT_TRANSLATE_NOOP("SoundTrack", "Too slow"),        880, 3,  70,  60},
    {sessionreview::Prompt::ReleaseCompletely, QT_TRANSLATE_NOOP("SoundTrack", "Not released"),    550, 1, 500,   0},
    {sessionreview::Prompt::EndPause,          QT_TRANSLATE_NOOP("SoundTrack", "Pause too long"), 1320, 5,  90, 110}}};
// clang-format on

int samplesOf(int msecs)
{
    return (samplesPerSecond / Units::msecsPerSecond) * msecs;
}

double wave(int hertz, qint64 sample)
{
    return std::sin(2 * M_PI * hertz * sample / samplesPerSecond);
}

double tickAt(qint64 sample)
{
    return tickPeak * std::exp(-static_cast<double>(sample) / tickDecaySamples)
        * wave(tickHertz, sample);
}

double toneAt(const Tone &tone, qint64 sample)
{
    const int beep = samplesOf(tone.beepMs);
    const int period = beep + samplesOf(tone.gapMs);
    const qint64 inBeep = sample % period;
    if (sample < 0 || sample / period >= tone.beeps || inBeep >= beep)
        return 0;
    const auto edge = static_cast<double>(std::min(inBeep, beep - inBeep)) / edgeSamples;
    return tonePeak * std::min(1.0, edge) * wave(tone.hertz, inBeep);
}

// The number of the sample in the tick that began last; tickSamples when none did.
qint64 sampleInTick(const State &state, qint64 position)
{
    if (state.ticksPerMinute <= 0 || position < state.firstTick)
        return tickSamples;
    const double period = samplesPerSecond * 60.0 / state.ticksPerMinute;
    const auto beginOf = [&state, period](double tick) { // each rounded by itself: none drifts
        return state.firstTick + std::llround(tick * period);
    };
    double tick = std::floor((position - state.firstTick) / period);
    if (beginOf(tick + 1) <= position)
        tick += 1;
    else if (beginOf(tick) > position)
        tick -= 1;
    const qint64 begin = beginOf(tick);
    return begin < state.endOfTicks ? position - begin : tickSamples;
}

} // namespace

const std::array<Tone, 4> &SoundTrack::tones()
{
    return toneTable;
}

const Tone *SoundTrack::toneOf(sessionreview::Prompt prompt)
{
    const auto found = std::find_if(toneTable.begin(), toneTable.end(),
                                    [prompt](const Tone &tone) { return tone.prompt == prompt; });
    return found == toneTable.end() ? nullptr : &*found;
}

void SoundTrack::render(const State &state, qint64 from, qint16 *samples, int count)
{
    for (int i = 0; i < count; ++i) {
        const qint64 inTick = sampleInTick(state, from + i);
        const double tick = inTick < tickSamples ? tickAt(inTick) : 0;
        const double tone = state.tone ? toneAt(*state.tone, from + i - state.toneBegin) : 0;
        samples[i] =
            static_cast<qint16>(std::lround((tick + tone) * std::numeric_limits<qint16>::max()));
    }
}

SoundTrack::Stream::Stream()
{
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

SoundTrack::Stream::~Stream() = default;

void SoundTrack::Stream::setTicks(double perMinute)
{
    const QMutexLocker locker(&m_mutex);
    const bool isTicking = perMinute > 0;
    if (isTicking == m_isTicking
        && (!isTicking || qFuzzyCompare(perMinute, m_state.ticksPerMinute)))
        return;
    m_isTicking = isTicking;
    if (!isTicking) {
        m_state.endOfTicks = m_position; // one that has begun fades away
        return;
    }
    m_state.ticksPerMinute = perMinute;
    m_state.firstTick = m_position;
    m_state.endOfTicks = std::numeric_limits<qint64>::max();
}

void SoundTrack::Stream::play(const Tone &tone)
{
    const QMutexLocker locker(&m_mutex);
    m_state.tone = &tone;
    m_state.toneBegin = m_position;
}

qint64 SoundTrack::Stream::bytesAvailable() const
{
    return std::numeric_limits<int>::max() + QIODevice::bytesAvailable();
}

qint64 SoundTrack::Stream::readData(char *data, qint64 maxBytes)
{
    std::array<qint16, 512> samples{};
    const QMutexLocker locker(&m_mutex);
    qint64 written = 0;
    while (maxBytes - written >= qint64(sizeof(qint16))) {
        const qint64 room = (maxBytes - written) / qint64(sizeof(qint16));
        const int count = static_cast<int>(std::min<qint64>(room, samples.size()));
        render(m_state, m_position, samples.data(), count);
        std::memcpy(data + written, samples.data(), count * sizeof(qint16));
        m_position += count;
        written += count * qint64(sizeof(qint16));
    }
    return written;
}

qint64 SoundTrack::Stream::writeData(const char * /*data*/, qint64 /*maxBytes*/)
{
    return -1; // it is only read
}
