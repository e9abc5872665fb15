// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRREADREPORT_H
#define CPRREADREPORT_H

#include <QString>
#include <QVector>

#include <functional>

/// What CPRData::readData() reports of the members that it reads.
struct CPRReadReport {
    /// What became of one member.
    struct Member {
        /// How much of it is in the session.
        enum State {
            Complete, ///< all of it is in the session
            Damaged, ///< only what stands before the damage is in the session, or nothing
            Missing ///< it could not be opened
        };

        QString name; ///< without its folder, such as "CPREvents.xml"
        State state = Complete; ///< how much of it is in the session
        QString reason; ///< why it is damaged; empty in the other states
        qint64 bytesRead = 0; ///< how far it was read
    };

    /// Is called with the bytes of each read, if it is not null; false makes this and all further
    /// reads fail.
    std::function<bool(qint64 bytes)> advance;
    /// What was asked for, in the order in which it was read. Nothing is asked for behind a list of
    /// waves that is missing.
    QVector<Member> members;
};

#endif
