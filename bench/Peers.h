// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef BENCH_PEERS_H
#define BENCH_PEERS_H

#include "Documents.h"
#include "Measure.h"

#include <CPREventBase.h>

#include <QVariant>

#include <vector>

namespace bench {

/// An event as any program would hold it that knows nothing of Qt's objects.
struct PlainEvent {
    struct Value {
        CPREventBase::ParameterType type;
        QVariant value; ///< an int, a double or a text
    };
    CPREventBase::EventType type;
    int msecs = 0;
    std::vector<Value> values;
};

/// What an archive holds.
struct PlainSession {
    std::vector<PlainEvent> events;
    std::vector<Member> blobs; ///< the waves, and the two small documents as they are

    /// Whether both hold the same; numbers are compared as numbers.
    bool sameAs(const PlainSession &other) const;
};

PlainSession plainSession(const std::vector<Member> &members);

/// The key texts of an event's kind and of a parameter.
QString kindKey(CPREventBase::EventType type);
CPREventBase::EventType kindOf(const QString &key);
CPREventBase::ParameterType parameterOf(const QString &key);

/// The events of one kind as a table: a column for each parameter that one of them has.
struct KindTable {
    CPREventBase::EventType type;
    std::vector<int> positions; ///< of its events in the list
    std::vector<CPREventBase::ParameterType> columns;
};
std::vector<KindTable> kindTables(const std::vector<PlainEvent> &events);
/// The value of that type; invalid when the event has none.
QVariant valueOf(const PlainEvent &event, CPREventBase::ParameterType type);
/// Puts an event that was read to its place in the list.
void place(PlainEvent &&event, int position, std::vector<PlainEvent> &events);

/// The samples of a wave, and samples or characters as bytes. Both machines of a file are alike.
std::vector<qint16> samplesOf(const QByteArray &bytes);
template <typename Item> QByteArray bytesOf(const std::vector<Item> &items)
{
    return QByteArray(reinterpret_cast<const char *>(items.data()),
                      static_cast<int>(items.size() * sizeof(Item)));
}

/// Another way to keep a session in a file. Each is written as one would write it who cares for
/// speed and size. Both functions are false when that did not work out.
struct Peer {
    const char *name;
    bool (*write)(const PlainSession &session, const QString &file);
    bool (*read)(const QString &file, PlainSession &session);
};

Peer jsonPeer();
Peer jsonWithBase64Peer();
Peer cborPeer();
Peer sqlitePeer();
#ifdef BENCH_WITH_HDF5
Peer hdf5Peer();
#endif

struct Bench;

/// A line of the comparison with the peers: an archive, or a peer.
struct PeerFigures {
    QString name;
    double write = 0; ///< ns
    double read = 0; ///< ns
    double size = 0; ///< bytes
};

/// The library first, on a session of an hour.
std::vector<PeerFigures> comparePeers(Bench &bench);

} // namespace bench

#endif
