// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Documents.h"
#include "Heap.h"
#include "Peers.h"
#include "Row.h"

#include <QFileInfo>
#include <QMetaEnum>
#include <QXmlStreamReader>

#include <algorithm>

namespace bench {

QString kindKey(CPREventBase::EventType kind)
{
    return QString::fromLatin1(QMetaEnum::fromType<CPREventBase::EventType>().valueToKey(kind));
}

CPREventBase::EventType kindOf(const QString &key)
{
    CPREventBase::EventType kind{};
    CPREventBase::eventTypeFromKey(key, kind);
    return kind;
}

CPREventBase::ParameterType parameterOf(const QString &key)
{
    CPREventBase::ParameterType type{};
    CPREventBase::parameterFromKey(key, type);
    return type;
}

namespace {

constexpr int tenHours = 10 * secondsPerHour;

QVariant variantOf(const QString &text)
{
    bool isNumber = false;
    if (const int integer = text.toInt(&isNumber); isNumber)
        return integer;
    const double number = text.toDouble(&isNumber);
    return isNumber ? QVariant(number) : QVariant(text);
}

PlainSession plainSession(const QString &archive)
{
    PlainSession session;
    for (const QString &name : documents + waves) {
        if (name != eventsDocument)
            session.blobs.insert(name, memberOf(archive, name));
    }
    QXmlStreamReader reader(memberOf(archive, eventsDocument));
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement)
            continue;
        const QXmlStreamAttributes attributes = reader.attributes();
        const QString type = attributes.value(QLatin1String("type")).toString();
        if (reader.name() == QLatin1String("evt")) {
            session.events.append(
                {kindOf(type), attributes.value(QLatin1String("msecs")).toInt(), {}});
        } else if (reader.name() == QLatin1String("param")) {
            session.events.last().values.append(
                {parameterOf(type),
                 variantOf(attributes.value(QLatin1String("value")).toString())});
        }
    }
    for (PlainEvent &event : session.events) {
        std::sort(event.values.begin(), event.values.end(), [](const auto &a, const auto &b) {
            return CPREventBase::parameterKey(a.first) < CPREventBase::parameterKey(b.first);
        });
    }
    return session;
}

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
          plain(plainSession(bench.sessions.archive(seconds))), peer(contestant),
          archive(bench.sessions.file(QStringLiteral("contest.zip"))),
          file(bench.sessions.file(QStringLiteral("contest.peer")))
    {
        saveArchive();
        writePeer();
        archiveSize = sizeOf(archive);
        fileSize = sizeOf(file);
        PlainSession again;
        readPeer(again);
        require(again.events == plain.events && again.blobs == plain.blobs,
                "Reading all that was written", peer.name);
    }

    void saveArchive() const { require(save(archive, session), "Saving", "archive"); }
    void loadArchive(CPRData &to) const { require(load(archive, to), "Loading", "archive"); }
    void writePeer() const { require(peer.write(plain, file), "Writing", peer.name); }
    void readPeer(PlainSession &to) const { require(peer.read(file, to), "Reading", peer.name); }
};

// What both sides of a comparison do. What has been read is thrown away outside of the clock.
using Parts = int;
constexpr Parts write = 1;
constexpr Parts read = 2;

Figure compareParts(int pairs, const Contest &contest, Parts parts)
{
    return compare(
        pairs,
        [&](Clock &clock) {
            CPRData session;
            clock.start();
            if (parts & write)
                contest.saveArchive();
            if (parts & read)
                contest.loadArchive(session);
            clock.stop();
        },
        [&](Clock &clock) {
            PlainSession session;
            clock.start();
            if (parts & write)
                contest.writePeer();
            if (parts & read)
                contest.readPeer(session);
            clock.stop();
        });
}

/// The most memory that writing, or reading, uses for itself: the session that is read does not
/// count.
template <typename Work> double ownPeak(Work work)
{
    const HeapCount heap;
    work();
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
    return {
        withGoal(compareParts(bench.pairs, hour, write | read), 0.9, QStringLiteral("save + load")),
        withGoal(compareBytes(ours, theirs), 0.1, QStringLiteral("ten-hour peak")),
        withGoal(compareBytes(hour.archiveSize, hour.fileSize), 1.1, QStringLiteral("file"))};
}

std::vector<Figure> measureSqlite(Bench &bench)
{
    const Contest contest(bench, tenHours, sqlitePeer());
    return {withGoal(compareBytes(contest.archiveSize, contest.fileSize), 0.5)};
}

} // namespace

std::vector<Row> peerRows()
{
    return {
        {13, "an archive", "the same data as JSON (QJsonDocument) + deflate", measureJson},
        {14, "size of a ten-hour archive", "SQLite, a table per event kind and blobs",
         measureSqlite},
    };
}

QString peerTable(Bench &bench)
{
    QString ours;
    QString theirs;
    for (const Peer &peer : {jsonPeer(), cborPeer(), sqlitePeer()}) {
        showProgress(QString::fromLatin1(peer.name));
        const Contest contest(bench, secondsPerHour, peer);
        const Figure writing = compareParts(bench.pairs, contest, write);
        const Figure reading = compareParts(bench.pairs, contest, read);
        const auto line = [](const char *name, double write, double read, double size) {
            return tableLine({QString::fromLatin1(name), amount(write, Unit::Nanoseconds),
                              amount(read, Unit::Nanoseconds), amount(size, Unit::Bytes)});
        };
        ours = line("libCPRData", writing.subject, reading.subject, contest.archiveSize);
        theirs += line(peer.name, writing.reference, reading.reference, contest.fileSize);
    }
    return QStringLiteral("| an hour as | write | read | size |\n|---|---|---|---|\n") + ours
        + theirs;
}

} // namespace bench
