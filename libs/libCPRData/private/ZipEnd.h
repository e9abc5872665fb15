// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef ZIPEND_H
#define ZIPEND_H

#include "private/DeviceReading.h"

#include <QIODevice>
#include <QtEndian>

#include <limits>

/// The record that ends a zip archive. Only the archive's comment stands behind it.
namespace ZipEnd {

constexpr int recordSize = 22;

/// Where the record starts that reaches, with the comment, to the end of \a file; -1 for none.
inline qint64 position(QIODevice &file)
{
    constexpr qint64 longest = recordSize + std::numeric_limits<quint16>::max();
    const qint64 begin = qMax<qint64>(0, file.size() - longest);
    if (!file.seek(begin))
        return -1;
    QByteArray tail(int(longest), Qt::Uninitialized);
    bool hasFailed = false;
    tail.resize(int(readFully(file, tail.data(), longest, hasFailed)));
    for (int i = tail.size() - recordSize; i >= 0; --i) {
        const char *const record = tail.constData() + i;
        if (qFromLittleEndian<quint32>(record) == 0x06054b50
            && i + recordSize + qFromLittleEndian<quint16>(record + 20) == tail.size()) {
            return begin + i;
        }
    }
    return -1;
}

} // namespace ZipEnd

#endif
