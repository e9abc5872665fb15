// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef TESTSUPPORT_DAMAGE_H
#define TESTSUPPORT_DAMAGE_H

#include "support/StoredSession.h"

#include <QVector>

/// Archives and members that are not as they were written.
namespace testsupport {

/// Makes the first \a from in a member \a to; false when it does not stand there. An empty \a from
/// removes the member.
bool change(Members &members, const QString &member, const QByteArray &from, const QByteArray &to);

QByteArray withFlippedBit(QByteArray bytes, int at, int bit);

// Offsets in a local header; in the directory these fields lie two bytes further behind.
constexpr int flagsField = 6;
constexpr int methodField = 8;
constexpr int checksumField = 14;
constexpr int packedSizeField = 18;
constexpr int sizeField = 22;
constexpr int nameSizeField = 26;
constexpr int headerSize = 30;
// Offsets in the directory.
constexpr int attributesField = 38;
constexpr int headerField = 42;
constexpr int entrySize = 46;

/// A member of a zip archive; read without the zip library.
struct ZipEntry {
    QString name; // without the folder
    int entry; // these are offsets
    int header;
    int payload;
    int payloadEnd;
};

QVector<ZipEntry> directoryOf(const QByteArray &zip);

/// Little-endian numbers.
int numberAt(const QByteArray &zip, int at, int width = 4);
void patch(QByteArray &zip, int at, int width, quint32 value);

} // namespace testsupport

#endif
