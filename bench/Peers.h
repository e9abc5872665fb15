// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef BENCH_PEERS_H
#define BENCH_PEERS_H

#include <CPREventBase.h>

#include <QMap>
#include <QPair>
#include <QVariant>
#include <QVector>

namespace bench {

/// An event as any program would hold it that knows nothing of Qt's objects.
struct PlainEvent {
    CPREventBase::EventType kind;
    int msecs = 0;
    /// Ints, doubles and texts, in the order of the keys.
    QVector<QPair<CPREventBase::ParameterType, QVariant>> values;

    bool operator==(const PlainEvent &other) const
    {
        return kind == other.kind && msecs == other.msecs && values == other.values;
    }
};

/// What an archive holds.
struct PlainSession {
    QVector<PlainEvent> events;
    QMap<QString, QByteArray> blobs; ///< the waves, and the two small documents as they are
};

/// Another form of a session in a file, written for speed and size. Both functions are false when
/// that did not work out.
struct Peer {
    const char *name;
    bool (*write)(const PlainSession &session, const QString &file);
    bool (*read)(const QString &file, PlainSession &session);
};

/// Kinds of events and parameters as texts, and back.
QString kindKey(CPREventBase::EventType kind);
CPREventBase::EventType kindOf(const QString &key);
CPREventBase::ParameterType parameterOf(const QString &key);

Peer jsonPeer();
Peer cborPeer();
Peer sqlitePeer();

} // namespace bench

#endif
