// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_SOUNDDEVICES_H
#define CPRVIEWER_SOUNDDEVICES_H

#include <QObject>

#include <functional>
#include <memory>

class QIODevice;

/// Plays samples as SoundTrack makes them, from when it is opened until it is deleted.
class SoundOutput : public QObject {
    Q_OBJECT

public:
    ~SoundOutput() override;

    /// From 0 to 1, as loud as it sounds.
    virtual void setVolume(double volume) = 0;

Q_SIGNALS:
    /// It plays no more: the device is gone, say. It must not be deleted before the signal returns.
    void failed();
};

/// Speaks one language.
class Voice : public QObject {
    Q_OBJECT

public:
    ~Voice() override;

    virtual bool isSpeaking() const = 0;
    /// Says \a text at once; what is being said ends. finished() comes behind it.
    virtual void say(const QString &text) = 0;
    virtual void setVolume(double volume) = 0; ///< from 0 to 1

Q_SIGNALS:
    /// It is silent again.
    void finished();
};

/// How sound comes out of this machine. A test has devices of its own.
struct SoundDevices {
    /// An output that plays what it reads from \a samples, which have to outlive it. Null when the
    /// machine has none.
    std::function<std::unique_ptr<SoundOutput>(QIODevice *samples)> openOutput;
    /// A voice for a language, "de" or "en". Null when the machine has none that speaks it, or
    /// nothing that speaks.
    std::function<std::unique_ptr<Voice>(const QString &language)> openVoice;

    /// Those that the system has chosen. A device that comes later is found the next time that one
    /// is opened.
    static SoundDevices ofMachine();
};

#endif
