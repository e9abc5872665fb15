// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "support/Damage.h"

#include <QtEndian>

#include <cstring>

namespace testsupport {

bool change(Members &members, const QString &member, const QByteArray &from, const QByteArray &to)
{
    if (from.isEmpty())
        return members.remove(member) == 1;
    QByteArray &content = members[member];
    const int at = content.indexOf(from);
    if (at >= 0)
        content.replace(at, from.size(), to);
    return at >= 0;
}

QByteArray withFlippedBit(QByteArray bytes, int at, int bit)
{
    bytes[at] = static_cast<char>(bytes.at(at) ^ 1 << bit);
    return bytes;
}

QVector<ZipEntry> directoryOf(const QByteArray &zip)
{
    QVector<ZipEntry> entries;
    for (int at = zip.indexOf("PK\1\2"); at >= 0; at = zip.indexOf("PK\1\2", at + 1)) {
        const int nameSize = numberAt(zip, at + nameSizeField + 2, 2);
        const int header = numberAt(zip, at + headerField);
        const int payload =
            header + headerSize + nameSize + numberAt(zip, header + nameSizeField + 2, 2);
        entries.append({zip.mid(at + entrySize + 4, nameSize - 4), at, header, payload,
                        payload + numberAt(zip, at + packedSizeField + 2)});
    }
    return entries;
}

int numberAt(const QByteArray &zip, int at, int width)
{
    quint32 number = 0;
    std::memcpy(&number, zip.constData() + at, size_t(width));
    return int(qFromLittleEndian(number));
}

void patch(QByteArray &zip, int at, int width, quint32 value)
{
    const quint32 number = qToLittleEndian(value);
    std::memcpy(zip.data() + at, &number, size_t(width));
}

} // namespace testsupport
