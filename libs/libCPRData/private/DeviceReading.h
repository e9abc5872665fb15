// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef DEVICEREADING_H
#define DEVICEREADING_H

#include <QIODevice>

/// Reads until \a data has \a maxSize bytes, the device ends or fails; the XML reader takes a
/// document to end where it gets only a few bytes. Returns the bytes. A device can give -1 at its
/// end, too: \a hasFailed is set only where it was not at its end before the read.
inline qint64 readFully(QIODevice &device, char *data, qint64 maxSize, bool &hasFailed)
{
    qint64 size = 0;
    qint64 taken = 0;
    bool wasAtEnd = device.atEnd();
    while (size < maxSize && (taken = device.read(data + size, maxSize - size)) > 0) {
        size += taken;
        wasAtEnd = device.atEnd();
    }
    hasFailed = taken < 0 && !wasAtEnd;
    return size;
}

#endif
