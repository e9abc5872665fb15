// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef RESPONSEID_H
#define RESPONSEID_H

#include <QDebug>

/// A message identifier in a log line: its key, or its number when it has none.
struct ResponseId {
    quint32 identifier;
};

QDebug operator<<(QDebug debug, ResponseId id);

#endif
