// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/ZipHeader.h"

#include <private/DeviceReading.h>
#include <private/ZipEnd.h>

#include <limits>

namespace sessionfiles::zip {

QByteArray bytesAt(QIODevice &file, qint64 position, qint64 size)
{
    if (position < 0 || !file.seek(position))
        return {};
    QByteArray bytes(static_cast<int>(size), Qt::Uninitialized);
    bool hasFailed = false;
    bytes.resize(static_cast<int>(readFully(file, bytes.data(), size, hasFailed)));
    return bytes;
}

std::optional<Header> headerAt(QIODevice &file, qint64 position, Header::Kind kind)
{
    const bool isLocal = kind == Header::Local;
    const int headerSize = isLocal ? 30 : 46;
    const QByteArray bytes = bytesAt(file, position, headerSize);
    if (bytes.size() < headerSize)
        return std::nullopt;
    // Both kinds have these fields in this order.
    const int begin = isLocal ? 6 : 8;
    Header header;
    header.flags = number<quint16>(bytes, begin);
    header.method = number<quint16>(bytes, begin + 2);
    header.checksum = number<quint32>(bytes, begin + 8);
    header.packedSize = number<quint32>(bytes, begin + 12);
    header.size = number<quint32>(bytes, begin + 16);
    header.nameSize = number<quint16>(bytes, begin + 20);
    header.extraSize = number<quint16>(bytes, begin + 22);
    header.name = bytesAt(file, position + headerSize, qMin(header.nameSize, maxNameBytes));
    header.localPosition = isLocal ? position : number<quint32>(bytes, 42);
    header.nameEnd = position + headerSize + header.nameSize;
    header.end = header.nameEnd + header.extraSize + (isLocal ? 0 : number<quint16>(bytes, 32));
    return header;
}

Directory directoryOf(QIODevice &file, int most)
{
    Directory directory;
    const qint64 end = ZipEnd::position(file);
    if (end < 0)
        return directory;
    directory.isFound = true;
    const QByteArray record = bytesAt(file, end, ZipEnd::recordSize);
    const qint64 size = number<quint32>(record, 12);
    const qint64 offset = number<quint32>(record, 16);
    directory.isLarge = offset == std::numeric_limits<quint32>::max();
    if (directory.isLarge)
        return directory;
    directory.offset = end - size - offset;
    directory.entries = number<quint16>(record, 10);
    qint64 position = end - size;
    for (int i = 0; i < qMin(directory.entries, most); ++i) {
        const std::optional<Header> header = headerAt(file, position, Header::Directory);
        if (!header || bytesAt(file, position, signatureSize) != directorySignature)
            break;
        directory.headers.append(*header);
        position = header->end;
    }
    return directory;
}

} // namespace sessionfiles::zip
