// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_SOUNDTRACK_H
#define CPRVIEWER_SOUNDTRACK_H

#include <sessionreview/LiveAdvice.h>

#include <QIODevice>
#include <QMutex>

#include <array>
#include <limits>

/// What is heard during a session, as samples: 16 bits, signed, the machine's byte order, one
/// channel. Ticks and tones lie on samples, so that nothing that the machine does moves them.
namespace SoundTrack {

constexpr int samplesPerSecond = 48000;

/// What tells an advice apart without a word: pitch, and number and length of beeps.
struct Tone {
    sessionreview::Prompt prompt;
    const char *name; ///< for people, not translated
    int hertz;
    int beeps;
    int beepMs;
    int gapMs; ///< between two beeps
};

/// All tones. They live as long as the program.
const std::array<Tone, 4> &tones();
/// Null for what is not told by a tone.
const Tone *toneOf(sessionreview::Prompt prompt);

/// What is heard, by the numbers of samples.
struct State {
    double ticksPerMinute = 0; ///< 0 for none yet
    qint64 firstTick = 0; ///< the sample with which it begins
    qint64 endOfTicks = std::numeric_limits<qint64>::max(); ///< no tick begins from this sample on
    const Tone *tone = nullptr; ///< the last one; not owned
    qint64 toneBegin = 0; ///< its first sample
};

/// Writes the \a count samples from number \a from on to \a samples.
void render(const State &state, qint64 from, qint16 *samples, int count);

/// The samples, as an endless device that a sound output reads from, on whichever thread.
class Stream final : public QIODevice {
    Q_OBJECT

public:
    Stream();
    ~Stream() override;

    /// Ticks from the sample on that is read next; 0 for none. Another rate begins anew.
    void setTicks(double perMinute);
    /// Plays \a tone, one of tones(), from there on, in place of one that is heard.
    void play(const Tone &tone);

    bool isSequential() const override { return true; }
    qint64 bytesAvailable() const override;

protected:
    qint64 readData(char *data, qint64 maxBytes) override;
    qint64 writeData(const char *data, qint64 maxBytes) override;

private:
    QMutex m_mutex; // of all that follows
    State m_state;
    bool m_isTicking = false;
    qint64 m_position = 0; // the sample that is read next
};

} // namespace SoundTrack

#endif
