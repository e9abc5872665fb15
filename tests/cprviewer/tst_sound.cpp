// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Settings.h"
#include "Sound.h"
#include "support/Rows.h"

#include <CPRData.h>
#include <manikinlog/ManikinLogPlayer.h>
#include <manikinsim/Simulator.h>

#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <cmath>
#include <memory>
#include <utility>

using sessionreview::Prompt;
using testsupport::columns;

using Samples = QVector<qint16>;

Q_DECLARE_METATYPE(sessionreview::Prompt)

namespace {

constexpr int second = SoundTrack::samplesPerSecond;
constexpr int shortestSilence = 2000; // samples; a tone is 0 for a few, at its zero crossings

Samples read(QIODevice &stream, int count)
{
    Samples samples(count);
    qint64 left = count * qint64(sizeof(qint16));
    char *to = reinterpret_cast<char *>(samples.data());
    for (qint64 piece = 2 * 777; left > 0; to += piece, left -= piece) { // as devices read
        piece = std::min(piece, left);
        if (stream.read(to, piece) != piece)
            return {};
    }
    return samples;
}

// The first sample of each sound, and the one behind its last.
QVector<QPair<int, int>> soundsIn(const Samples &samples)
{
    QVector<QPair<int, int>> sounds;
    for (int i = 0; i < samples.size(); ++i) {
        if (samples.at(i) == 0)
            continue;
        if (sounds.isEmpty() || i - sounds.last().second > shortestSilence)
            sounds.append({i, i});
        sounds.last().second = i + 1;
    }
    return sounds;
}

// A machine whose devices the test hears.
struct Room {
    struct Output final : SoundOutput {
        void setVolume(double volume) override { loudness = volume; }
        double loudness = -1;
    };
    struct Speaker final : Voice {
        explicit Speaker(QStringList *list) : said(list) { }
        bool isSpeaking() const override { return isBusy; }
        void say(const QString &text) override
        {
            said->append(text);
            isBusy = true;
        }
        void setVolume(double /*volume*/) override { }
        void finish()
        {
            isBusy = false;
            Q_EMIT finished();
        }
        QStringList *said;
        bool isBusy = false;
    };

    SoundDevices devices()
    {
        return {[this](QIODevice *samples) {
                    stream = samples;
                    auto opened = std::make_unique<Output>();
                    output = opened.get();
                    return opened;
                },
                [this](const QString & /*language*/) {
                    auto opened = std::make_unique<Speaker>(&said);
                    voice = opened.get();
                    return opened;
                }};
    }
    QIODevice *stream = nullptr;
    QPointer<Output> output;
    QPointer<Speaker> voice;
    QStringList said;
};

// A simulated session that goes as far as the test wants.
struct Lesson {
    explicit Lesson(const QString &scenario)
        : simulator(*manikinsim::Scenario::find(scenario), 1), player(&session)
    {
    }
    void advance(double secs)
    {
        for (manikinlog::Record record;
             session.cprEvents()->sessionTime() < secs * 1000 && simulator.next(record);)
            player.play(record);
    }
    CPRData session;
    manikinsim::Simulator simulator;
    manikinlog::ManikinLogPlayer player;
};

} // namespace

class SoundTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // 110 a minute for ten minutes: none drifts by a sample.
    void ticks()
    {
        SoundTrack::Stream stream;
        QCOMPARE(soundsIn(read(stream, second)).size(), 0);
        stream.setTicks(110);
        const auto ticks = soundsIn(read(stream, 600 * second));
        QCOMPARE(ticks.size(), 1100);
        const int first = ticks.first().first;
        QVERIFY(first <= 1);
        QCOMPARE(ticks.at(1).first - first, 26182);
        QCOMPARE(ticks.at(2).first - first, 52364);
        QCOMPARE(ticks.at(11).first - first, 6 * second);
        QCOMPARE(ticks.at(1099).first - first, 28773818);
        QVERIFY(ticks.first().second <= second * 30 / 1000);
        // The next one has just begun: it is heard to its end.
        read(stream, 100);
        stream.setTicks(0);
        QCOMPARE(soundsIn(read(stream, 10 * second)).size(), 1);
        stream.setTicks(110);
        QVERIFY(soundsIn(read(stream, second)).first().first <= 1);
    }

    void tones_data()
    {
        // Crossings of zero are two in a period; the first is where the beep begins.
        const auto row =
            columns<Prompt, int, double, int>("prompt", "beeps", "crossings", "length");
        row("too shallow", Prompt::PressDeeper, 2, 118.8, 8640);
        row("too slow", Prompt::PressFaster, 3, 123.2, 3360);
        row("leaning", Prompt::ReleaseCompletely, 1, 550, 24000);
        row("pause", Prompt::EndPause, 5, 237.6, 4320);
    }
    void tones()
    {
        QFETCH(Prompt, prompt);
        QFETCH(double, crossings);
        QFETCH(int, length);
        SoundTrack::Stream stream;
        read(stream, 12345);
        stream.play(*SoundTrack::toneOf(prompt));
        const Samples samples = read(stream, 2 * second);
        const auto beeps = soundsIn(samples);
        QTEST(int(beeps.size()), "beeps");
        for (const auto &[begin, end] : beeps) {
            QVERIFY(std::abs(end - begin - length) < 20);
            int found = 0;
            for (int i = begin + 1; i < end; ++i)
                found += (samples.at(i - 1) < 0) != (samples.at(i) < 0) ? 1 : 0;
            QVERIFY2(std::abs(found - crossings) <= 2, qPrintable(QString::number(found)));
        }
        QVERIFY(!SoundTrack::toneOf(Prompt::Right));
    }

    void followsTheSession()
    {
        const QTemporaryDir folder;
        Settings settings(folder.filePath("settings"));
        Room room;
        Lesson lesson("aed");
        Sound sound(&settings, room.devices());
        sound.setSession(&lesson.session);
        lesson.advance(5);
        QVERIFY(!room.stream && !room.voice);

        sound.setMetronome(true);
        sound.setVolume(0.3);
        QCOMPARE(room.output->loudness, 0.3);
        const auto ticks = [&] { return soundsIn(read(*room.stream, 10 * second)).size(); };
        QTRY_VERIFY(ticks() >= 18);
        lesson.advance(30);
        QTRY_COMPARE(ticks(), 0);
        lesson.advance(37);
        QTRY_VERIFY(ticks() >= 18);
        sound.setMetronome(false);
        QTRY_VERIFY(!room.output);

        const Settings stored(folder.filePath("settings"));
        QCOMPARE(stored.value("sound/metronome").toBool(), false);
        QCOMPARE(stored.value("sound/volume").toDouble(), 0.3);
    }

    void speaksOfNow()
    {
        Settings settings{QString()};
        Room room;
        Lesson lesson("aed");
        Sound sound(&settings, room.devices());
        sound.setSpeech(true);
        sound.setSession(&lesson.session);
        lesson.advance(20);
        QStringList said{"Well done, keep going."};
        QTRY_COMPARE(room.said, said);
        lesson.advance(27);
        said.append("Stand clear."); // at once, into what is being said
        QTRY_COMPARE(room.said, said);
        lesson.advance(38);
        QTest::qWait(50);
        lesson.advance(60);
        QTest::qWait(50);
        QCOMPARE(room.said, said);
        room.voice->finish(); // the last advice alone is said
        said.append("Well done, keep going.");
        QCOMPARE(room.said, said);
        room.voice->finish();
        QCOMPARE(room.said, said);
    }

    // A fault that stays is told again. Tones keep their distance: the second second has none. What
    // is being said is not interrupted.
    void repeatsFaults()
    {
        Settings settings{QString()};
        Room room;
        Lesson lesson("shallow");
        Sound sound(&settings, room.devices());
        sound.setTones(true);
        sound.setSpeech(true);
        sound.setSession(&lesson.session);
        for (const auto &[secs, count] :
             std::array<std::pair<int, int>, 4>{{{10, 1}, {11, 1}, {13, 2}, {17, 2}}}) {
            lesson.advance(secs);
            QTRY_COMPARE(room.said.count("Press deeper."), count);
            QTest::qWait(50);
            QCOMPARE(room.said.size(), count);
            room.voice->finish();
            if (secs <= 11)
                QCOMPARE(soundsIn(read(*room.stream, second)).size(), secs == 10 ? 2 : 0);
        }
    }

    void missesADeviceOnce()
    {
        Settings settings{QString()};
        Sound sound(&settings,
                    {[](QIODevice *) { return nullptr; }, [](const QString &) { return nullptr; }});
        QSignalSpy missed(&sound, &Sound::missed);
        for (int i = 0; i < 2; ++i) {
            for (const bool isOn : {true, false}) {
                sound.setMetronome(isOn);
                sound.setTones(isOn);
                sound.setSpeech(isOn);
                sound.play(0);
                QVERIFY(sound.lack().contains("no sound output"));
                QCOMPARE(sound.lack().contains("no voice"), isOn);
            }
        }
        QCOMPARE(missed.count(), 2);
    }
};

QTEST_GUILESS_MAIN(SoundTest)
#include "tst_sound.moc"
