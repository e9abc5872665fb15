// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_SOUND_H
#define CPRVIEWER_SOUND_H

#include "SoundDevices.h"
#include "SoundTrack.h"

#include <cprquick/LiveFigures.h>

#include <QElapsedTimer>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <QtQml/qqml.h>

class Settings;

/// What a learner hears of the session: a metronome while compressions are due, a tone or a spoken
/// sentence for each advice. All of it is off until it is chosen. The output is open while
/// something is to be heard, and not at any other time; the voice while speech is chosen.
class Sound final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The viewer has it.")

    // clang-format off
    /// The session that is heard; null for none. Not owned.
    Q_PROPERTY(CPRData     *session      READ session      WRITE setSession   NOTIFY sessionChanged)
    Q_PROPERTY(bool         hasMetronome READ hasMetronome WRITE setMetronome NOTIFY chosenChanged)
    Q_PROPERTY(bool         hasTones     READ hasTones     WRITE setTones     NOTIFY chosenChanged)
    Q_PROPERTY(bool         hasSpeech    READ hasSpeech    WRITE setSpeech    NOTIFY chosenChanged)
    /// From 0 to 1.
    Q_PROPERTY(double       volume       READ volume       WRITE setVolume    NOTIFY chosenChanged)
    /// What the tones stand for, for people, in the order that play() counts in.
    Q_PROPERTY(QStringList  tones        READ tones                           NOTIFY languageChanged)
    /// What is chosen but this machine cannot do, for people; empty when there is nothing.
    Q_PROPERTY(QString      lack         READ lack                            NOTIFY lackChanged)
    // clang-format on

public:
    /// Choices are stored in \a settings, which is not owned.
    explicit Sound(Settings *settings, SoundDevices devices, QObject *parent = nullptr);
    ~Sound() override;

    CPRData *session() const { return m_session; }
    bool hasMetronome() const { return m_hasMetronome; }
    bool hasTones() const { return m_hasTones; }
    bool hasSpeech() const { return m_hasSpeech; }
    double volume() const { return m_volume; }
    QStringList tones() const;
    QString lack() const;
    void setSession(CPRData *session);
    void setMetronome(bool isOn);
    void setTones(bool areOn);
    void setSpeech(bool isOn);
    void setVolume(double volume);
    /// The language of the viewer's texts, "en" or "de", in which advice is spoken.
    void setLanguage(const QString &language);

    /// Plays a tone to listen to, whatever is chosen. Nothing when there is none of that number; a
    /// machine without an output is missed().
    Q_INVOKABLE void play(int tone);

Q_SIGNALS:
    void sessionChanged();
    void chosenChanged();
    void languageChanged();
    void lackChanged();
    /// Something that is chosen cannot be heard. Once for each of output and voice.
    void missed(const QString &reason);

private:
    template <typename Device> struct Wanted {
        std::unique_ptr<Device> device; // null while it is not needed or not there
        bool isMissing = false;
        bool isSaid = false; // that it is missing
    };

    void choose(bool &isChosen, bool isOn, const char *key);
    void useDevices();
    template <typename Device>
    void report(Wanted<Device> &wanted, bool isMissing, const QString &reason);
    QString outputLack() const;
    QString voiceLack() const;
    void tick();
    void adviseNow();
    void speakNext();

    Settings *m_settings; // not owned
    SoundDevices m_devices;
    QPointer<CPRData> m_session;
    cprquick::LiveFigures m_figures;
    bool m_hasMetronome;
    bool m_hasTones;
    bool m_hasSpeech;
    double m_volume;
    QString m_language;
    SoundTrack::Stream m_stream; // outlives the output, which reads from it
    Wanted<SoundOutput> m_output;
    Wanted<Voice> m_voice;
    QTimer m_trial; // runs while a tone is listened to
    QElapsedTimer m_sinceTone; // since the last one of an advice began
    QElapsedTimer m_sinceSaid; // since the last sentence began
    QString m_next; // to be said when the voice is silent
};

#endif
