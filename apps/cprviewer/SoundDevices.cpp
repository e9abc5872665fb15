// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "SoundDevices.h"

#include "SoundTrack.h"

#include <QAudioFormat>
#include <QLocale>
#include <QTextToSpeech>
#include <QVector>
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
#include <QAudioDeviceInfo>
#include <QAudioOutput>
#else
#include <QAudioDevice>
#include <QAudioSink>
#include <QMediaDevices>
#endif

#include <algorithm>

namespace {

// Qt 6 has the same under other names.
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
using AudioOutput = QAudioOutput;

QAudioDeviceInfo usualDevice()
{
    return QAudioDeviceInfo::defaultOutputDevice();
}

QAudioFormat trackFormat()
{
    QAudioFormat format;
    format.setCodec(QStringLiteral("audio/pcm"));
    format.setSampleType(QAudioFormat::SignedInt);
    format.setSampleSize(16);
    format.setByteOrder(QAudioFormat::Endian(QSysInfo::ByteOrder));
    format.setSampleRate(SoundTrack::samplesPerSecond);
    format.setChannelCount(1);
    return format;
}
#else
using AudioOutput = QAudioSink;

QAudioDevice usualDevice()
{
    return QMediaDevices::defaultAudioOutput();
}

QAudioFormat trackFormat()
{
    QAudioFormat format;
    format.setSampleFormat(QAudioFormat::Int16);
    format.setSampleRate(SoundTrack::samplesPerSecond);
    format.setChannelCount(1);
    return format;
}
#endif

class MachineOutput final : public SoundOutput {
public:
    template <typename Device>
    MachineOutput(const Device &device, const QAudioFormat &format) : m_output(device, format)
    {
        constexpr qint64 bufferUs = 200'000; // a window that is busy for less is not heard
        m_output.setBufferSize(static_cast<int>(format.bytesForDuration(bufferUs)));
    }

    // False when the device does not begin to play.
    bool start(QIODevice *samples)
    {
        m_output.start(samples);
        connect(&m_output, &AudioOutput::stateChanged, this, [this](QAudio::State state) {
            if (state == QAudio::StoppedState && m_output.error() != QAudio::NoError)
                Q_EMIT failed();
        });
        return m_output.error() == QAudio::NoError;
    }
    void setVolume(double volume) override
    {
        m_output.setVolume(QAudio::convertVolume(volume, QAudio::LogarithmicVolumeScale,
                                                 QAudio::LinearVolumeScale));
    }

private:
    AudioOutput m_output;
};

std::unique_ptr<SoundOutput> outputOfMachine(QIODevice *samples)
{
    const auto device = usualDevice();
    const QAudioFormat format = trackFormat();
    if (device.isNull() || !device.isFormatSupported(format))
        return nullptr;
    auto output = std::make_unique<MachineOutput>(device, format);
    if (!output->start(samples))
        return nullptr;
    return output;
}

class MachineVoice final : public Voice {
public:
    explicit MachineVoice(const QString &engine)
        : m_speech(engine), m_isFlite(engine == QLatin1String("flite"))
    {
        connect(&m_speech, &QTextToSpeech::stateChanged, this, [this] {
            if (!isSpeaking())
                Q_EMIT finished();
        });
    }

    // False when the engine does not speak it.
    bool useLanguage(const QString &language)
    {
        const QVector<QLocale> locales = m_speech.availableLocales();
        const QLocale::Language wanted = QLocale(language).language();
        const auto found =
            std::find_if(locales.begin(), locales.end(),
                         [wanted](const QLocale &locale) { return locale.language() == wanted; });
        if (found == locales.end())
            return false;
        m_speech.setLocale(*found);
        return true;
    }
    bool isSpeaking() const override { return m_speech.state() == QTextToSpeech::Speaking; }
    void say(const QString &text) override { m_speech.say(text); }
    void setVolume(double volume) override
    {
        // The flite engine of Qt 5 is left at the volume that it has; with Qt 6 each engine takes
        // any.
        if (!m_isFlite || QT_VERSION >= QT_VERSION_CHECK(6, 0, 0))
            m_speech.setVolume(volume);
    }

private:
    QTextToSpeech m_speech;
    bool m_isFlite;
};

std::unique_ptr<Voice> voiceOfMachine(const QString &language)
{
    // The usual engine first; another one may speak what that does not.
    const QStringList engines = QTextToSpeech::availableEngines();
    for (const QString &engine : engines) {
        auto voice = std::make_unique<MachineVoice>(engine);
        if (voice->useLanguage(language))
            return voice;
    }
    return nullptr;
}

} // namespace

SoundOutput::~SoundOutput() = default;

Voice::~Voice() = default;

SoundDevices SoundDevices::ofMachine()
{
    return {outputOfMachine, voiceOfMachine};
}
