// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Sound.h"

#include "Settings.h"

#include <CPRData.h>
#include <sessionreview/LiveAdvice.h>
#include <sessionreview/Words.h>

#include <QCoreApplication>

#include <utility>

namespace {

using cprquick::LiveFigures;
using sessionreview::Prompt;

constexpr char metronomeKey[] = "sound/metronome";
constexpr char tonesKey[] = "sound/tones";
constexpr char speechKey[] = "sound/speech";
constexpr char volumeKey[] = "sound/volume";
constexpr double usualVolume = 0.7;
constexpr int trialMs = 2000; // longer than any tone
constexpr int minToneGapMs = 3000; // from the begin of one to that of the next
constexpr int maxSpokenMs = 10000; // a voice that has not ended by then never says so

// Also when it has never begun.
bool isPassed(const QElapsedTimer &since, int msecs)
{
    return !since.isValid() || since.hasExpired(msecs);
}

} // namespace

Sound::Sound(Settings *settings, SoundDevices devices, QObject *parent)
    : QObject(parent), m_settings(settings), m_devices(std::move(devices)),
      m_hasMetronome(settings->value(QLatin1String(metronomeKey)).toBool()),
      m_hasTones(settings->value(QLatin1String(tonesKey)).toBool()),
      m_hasSpeech(settings->value(QLatin1String(speechKey)).toBool()),
      m_volume(qBound(0.0, settings->value(QLatin1String(volumeKey), usualVolume).toDouble(), 1.0))
{
    m_figures.setActive(false);
    connect(&m_figures, &LiveFigures::pauseChanged, this, &Sound::tick);
    connect(&m_figures, &LiveFigures::targetsChanged, this, &Sound::tick);
    connect(&m_figures, &LiveFigures::adviceDue, this, &Sound::adviseNow);
    m_trial.setSingleShot(true);
    m_trial.setInterval(trialMs);
    connect(&m_trial, &QTimer::timeout, this, &Sound::useDevices);
}

Sound::~Sound() = default;

QStringList Sound::tones() const
{
    QStringList names;
    for (const SoundTrack::Tone &tone : SoundTrack::tones())
        names.append(QCoreApplication::translate("SoundTrack", tone.name));
    return names;
}

QString Sound::outputLack() const
{
    return tr("This machine has no sound output: metronome and tones are silent.");
}

QString Sound::voiceLack() const
{
    return tr("This machine has no voice that speaks the viewer's language: advice is not spoken.");
}

QString Sound::lack() const
{
    QStringList lacks;
    if (m_output.isMissing)
        lacks.append(outputLack());
    if (m_voice.isMissing)
        lacks.append(voiceLack());
    return lacks.join(QLatin1Char(' '));
}

void Sound::setSession(CPRData *session)
{
    if (m_session == session)
        return;
    m_session = session;
    m_next.clear();
    useDevices();
    Q_EMIT sessionChanged();
}

void Sound::setMetronome(bool isOn)
{
    choose(m_hasMetronome, isOn, metronomeKey);
}

void Sound::setTones(bool areOn)
{
    choose(m_hasTones, areOn, tonesKey);
}

void Sound::setSpeech(bool isOn)
{
    choose(m_hasSpeech, isOn, speechKey);
}

void Sound::choose(bool &isChosen, bool isOn, const char *key)
{
    if (isChosen == isOn)
        return;
    isChosen = isOn;
    m_settings->setValue(QLatin1String(key), isOn);
    // What makes no sound by itself yet is opened for a moment, to find out whether it can.
    if (isOn && &isChosen != &m_hasSpeech)
        m_trial.start();
    useDevices();
    Q_EMIT chosenChanged();
}

void Sound::setVolume(double volume)
{
    volume = qBound(0.0, volume, 1.0);
    if (qFuzzyCompare(1 + volume, 1 + m_volume))
        return;
    m_volume = volume;
    m_settings->setValue(QLatin1String(volumeKey), volume);
    if (m_output.device)
        m_output.device->setVolume(volume);
    if (m_voice.device)
        m_voice.device->setVolume(volume);
    Q_EMIT chosenChanged();
}

void Sound::setLanguage(const QString &language)
{
    if (language == m_language)
        return;
    m_language = language;
    m_voice.device.reset();
    m_voice.isMissing = false;
    m_next.clear();
    useDevices();
    Q_EMIT languageChanged();
    Q_EMIT lackChanged();
}

void Sound::play(int tone)
{
    if (tone < 0 || tone >= static_cast<int>(SoundTrack::tones().size()))
        return;
    m_trial.start();
    useDevices();
    m_stream.play(SoundTrack::tones().at(tone));
}

void Sound::useDevices()
{
    const bool isHeard = m_hasMetronome || m_hasTones;
    const bool needsOutput = m_trial.isActive() || (m_session && isHeard);
    if (!needsOutput)
        m_output.device.reset();
    else if (!m_output.device && (m_output.device = m_devices.openOutput(&m_stream))) {
        m_output.device->setVolume(m_volume);
        // Not while it tells: it would delete itself.
        connect(
            m_output.device.get(), &SoundOutput::failed, this,
            [this] {
                m_output.device.reset();
                report(m_output, true, outputLack());
            },
            Qt::QueuedConnection);
    }
    if (needsOutput || !isHeard) // else it is not known; the last answer stays
        report(m_output, needsOutput && !m_output.device, outputLack());

    if (!m_hasSpeech)
        m_voice.device.reset();
    else if (!m_voice.device && !m_voice.isMissing
             && (m_voice.device = m_devices.openVoice(m_language))) {
        m_voice.device->setVolume(m_volume);
        connect(m_voice.device.get(), &Voice::finished, this, &Sound::speakNext);
    }
    report(m_voice, m_hasSpeech && !m_voice.device, voiceLack());

    const bool isFollowing = m_session && (isHeard || m_hasSpeech);
    m_figures.setSession(isFollowing ? m_session.data() : nullptr);
    m_figures.setActive(isFollowing);
    tick();
}

template <typename Device>
void Sound::report(Wanted<Device> &wanted, bool isMissing, const QString &reason)
{
    if (wanted.isMissing == isMissing)
        return;
    wanted.isMissing = isMissing;
    Q_EMIT lackChanged();
    if (isMissing && !std::exchange(wanted.isSaid, true))
        Q_EMIT missed(reason);
}

void Sound::tick()
{
    const bool isDue = m_hasMetronome && m_figures.areCompressionsDue();
    m_stream.setTicks(isDue ? m_figures.rateMiddle() : 0);
}

void Sound::adviseNow()
{
    const Prompt prompt = m_figures.prompt();
    const SoundTrack::Tone *tone = SoundTrack::toneOf(prompt);
    if (tone && m_hasTones && m_output.device && isPassed(m_sinceTone, minToneGapMs)) {
        m_sinceTone.start();
        m_stream.play(*tone);
    }
    if (!m_voice.device)
        return;
    m_next = sessionreview::promptText(prompt);
    const bool isFree = !m_voice.device->isSpeaking() || isPassed(m_sinceSaid, maxSpokenMs);
    if (isFree || prompt == Prompt::StandClear) // a warning of a shock waits for nothing
        speakNext();
}

void Sound::speakNext()
{
    if (m_next.isEmpty() || !m_voice.device)
        return;
    m_sinceSaid.start();
    m_voice.device->say(std::exchange(m_next, QString()));
}
