// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Documents.h"
#include "Row.h"

#include <CPRFileHandlerZip.h>

#include <QVector>

namespace bench {

namespace {

using bls_2010::CommonDefs;

// The hour's depths through a member of an archive in memory, against the same bytes through zlib.
std::vector<Figure> measureWaveFile(Bench &bench)
{
    const QString memberName = QStringLiteral("COMP.WV");
    const QString source = bench.sessions.archive(secondsPerHour);
    const std::vector<Member> members = membersOf(source);
    Member wave = memberNamed(members, "COMP.WV");
    const CPRCompressionData &data = *bench.sessions.session(secondsPerHour).compressionData();

    const auto write = [&](Clock &clock) {
        CPRFileHandlerZip archive;
        archive.open(bench.sessions.file(QStringLiteral("wave.zip")), CPRFileHandlerZip::Create);
        clock.start();
        QIODevice *device = archive.openFileForWriting(memberName);
        const bool written = data.writeCompresseionWave(device);
        archive.releaseFile(device);
        clock.stop();
        if (!written || !archive.close())
            qFatal("A wave cannot be written");
    };
    const auto deflateBytes = [&wave](Clock &clock) {
        clock.start();
        keep(deflate(wave.bytes));
        clock.stop();
    };
    const auto read = [&](Clock &clock) {
        CPRData session;
        CPRFileHandlerZip archive;
        archive.open(source, CPRFileHandlerZip::Read);
        clock.start();
        QIODevice *device = archive.openFileForReading(memberName);
        session.compressionData()->readCompresseionWave(device);
        archive.releaseFile(device);
        clock.stop();
        if (session.compressionData()->count() != data.count())
            qFatal("A wave cannot be read whole");
    };
    const auto inflateBytes = [&wave](Clock &clock) {
        clock.start();
        inflate(wave.packed, wave.bytes);
        clock.stop();
        keep(wave.bytes);
    };
    return {withGoal(compare(bench.pairs, write, deflateBytes), 1.1, QStringLiteral("write")),
            withGoal(compare(bench.pairs, read, inflateBytes), 1.5, QStringLiteral("read"))};
}

// The samples of an hour in the order in which they come: of each wave period a depth and a volume.
std::vector<Figure> measureSamples(Bench &bench)
{
    std::vector<manikinlog::WaveSample> samples;
    for (const manikinlog::Record &record : bench.sessions.hour()) {
        if (const auto *sample = std::get_if<manikinlog::WaveSample>(&record.entry))
            samples.push_back(*sample);
    }
    const auto subject = [&samples](Clock &clock) {
        const std::unique_ptr<CPRData> session = startedSession();
        clock.start();
        for (const manikinlog::WaveSample &sample : samples) {
            session->waveDataReceived(static_cast<CommonDefs::WaveType>(sample.waveType),
                                      sample.value, sample.sequence);
        }
        clock.stop();
        keep(session->compressionData()->count());
    };
    const auto reference = [&samples](Clock &clock) {
        QVector<int> depths;
        QVector<int> volumes;
        clock.start();
        for (const manikinlog::WaveSample &sample : samples) {
            (sample.waveType == CommonDefs::WAVE_VENT_VOLUME ? volumes : depths)
                .append(sample.value);
        }
        clock.stop();
        keep(depths);
        keep(volumes);
    };
    return {
        withGoal(compare(bench.pairs, subject, reference, static_cast<int>(samples.size())), 6)};
}

} // namespace

std::vector<Row> waveRows()
{
    return {
        {4, "a wave of an archive", "zlib deflate, inflate of the same bytes", measureWaveFile},
        {11, "a wave sample through the session", "QVector append", measureSamples},
    };
}

} // namespace bench
