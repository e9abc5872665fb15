// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Heap.h"
#include "Peers.h"
#include "Row.h"

#include <QFileInfo>

#include <algorithm>

namespace bench {

namespace {

constexpr int tenHours = 10 * secondsPerHour;

void require(bool isGood, const char *what, const char *of)
{
    if (!isGood)
        qFatal("%s failed: %s", what, of);
}

double sizeOf(const QString &file)
{
    return static_cast<double>(QFileInfo(file).size());
}

/// A session of some length, as the library has it and as the peers get it, and a peer.
struct Contest {
    CPRData &session;
    PlainSession plain;
    Peer peer;
    QString archive; ///< gets the session when it is saved
    QString file; ///< of the peer
    double archiveSize;
    double fileSize;

    Contest(Bench &bench, int seconds, const Peer &contestant)
        : session(bench.sessions.session(seconds)),
          plain(plainSession(membersOf(bench.sessions.archive(seconds)))), peer(contestant),
          archive(bench.sessions.file(QStringLiteral("contest.zip"))),
          file(bench.sessions.file(QStringLiteral("contest.peer")))
    {
        saveArchive();
        writePeer();
        archiveSize = sizeOf(archive);
        fileSize = sizeOf(file);
        PlainSession again;
        readPeer(again);
        require(again.sameAs(plain), "Reading all that was written", peer.name);
    }

    void saveArchive() const { require(save(archive, session), "Saving", "archive"); }
    void loadArchive(CPRData &to) const { require(load(archive, to), "Loading", "archive"); }
    void writePeer() const { require(peer.write(plain, file), "Writing", peer.name); }
    void readPeer(PlainSession &to) const { require(peer.read(file, to), "Reading", peer.name); }
};

// Runs the work with the clock on.
template <typename Work> void timed(Clock &clock, Work work)
{
    clock.start();
    work();
    clock.stop();
}

Figure compareWriting(int pairs, const Contest &contest)
{
    return compare(
        pairs, [&](Clock &clock) { timed(clock, [&] { contest.saveArchive(); }); },
        [&](Clock &clock) { timed(clock, [&] { contest.writePeer(); }); });
}

// What has been read is thrown away outside of the clock.
Figure compareReading(int pairs, const Contest &contest)
{
    return compare(
        pairs,
        [&](Clock &clock) {
            CPRData session;
            timed(clock, [&] { contest.loadArchive(session); });
        },
        [&](Clock &clock) {
            PlainSession session;
            timed(clock, [&] { contest.readPeer(session); });
        });
}

Figure compareBoth(int pairs, const Contest &contest)
{
    return compare(
        pairs,
        [&](Clock &clock) {
            CPRData session;
            timed(clock, [&] {
                contest.saveArchive();
                contest.loadArchive(session);
            });
        },
        [&](Clock &clock) {
            PlainSession session;
            timed(clock, [&] {
                contest.writePeer();
                contest.readPeer(session);
            });
        });
}

/// The most memory that writing, or reading, takes for itself: the session that is read does not
/// count.
template <typename Read> double ownPeak(Read read)
{
    const HeapCount heap;
    read();
    return static_cast<double>(heap.peak() - std::max<qint64>(heap.live(), 0));
}

std::vector<Figure> measureJson(Bench &bench)
{
    const Contest hour(bench, secondsPerHour, jsonPeer());
    const Contest longer(bench, tenHours, jsonPeer());
    CPRData session;
    PlainSession plain;
    const double ours = std::max(ownPeak([&] { longer.saveArchive(); }),
                                 ownPeak([&] { longer.loadArchive(session); }));
    const double theirs =
        std::max(ownPeak([&] { longer.writePeer(); }), ownPeak([&] { longer.readPeer(plain); }));
    return {withGoal(compareBoth(bench.pairs, hour), 0.9, QStringLiteral("save + load")),
            withGoal(compareBytes(ours, theirs), 0.1, QStringLiteral("ten-hour peak")),
            withGoal(compareBytes(hour.archiveSize, hour.fileSize), 1.1, QStringLiteral("file"))};
}

std::vector<Figure> measureSqlite(Bench &bench)
{
    const Contest contest(bench, tenHours, sqlitePeer());
    Figure writing = compareWriting(bench.pairs, contest);
    Figure reading = compareReading(bench.pairs, contest);
    writing.label = QStringLiteral("write");
    reading.label = QStringLiteral("read");
    return {
        withGoal(compareBytes(contest.archiveSize, contest.fileSize), 0.5, QStringLiteral("size")),
        writing, reading};
}

} // namespace

std::vector<Row> peerRows()
{
    return {
        {13, "an archive", "the same data as JSON (QJsonDocument) + deflate", measureJson},
        {14, "a ten-hour archive", "SQLite, a table per event kind and blobs", measureSqlite},
    };
}

std::vector<PeerFigures> comparePeers(Bench &bench)
{
    std::vector<PeerFigures> result(1);
    result.front().name = QStringLiteral("libCPRData");
    for (const Peer &peer : {jsonPeer(), jsonWithBase64Peer(), cborPeer(), sqlitePeer(),
#ifdef BENCH_WITH_HDF5
                             hdf5Peer()
#endif
         }) {
        showProgress(QString::fromLatin1(peer.name));
        const Contest contest(bench, secondsPerHour, peer);
        const Figure writing = compareWriting(bench.pairs, contest);
        const Figure reading = compareReading(bench.pairs, contest);
        result.front() = {result.front().name, writing.subject, reading.subject,
                          contest.archiveSize};
        result.push_back({QString::fromLatin1(peer.name), writing.reference, reading.reference,
                          contest.fileSize});
    }
    return result;
}

} // namespace bench
