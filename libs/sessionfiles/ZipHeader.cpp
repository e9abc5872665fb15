// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/ZipHeader.h"

#include <limits>

namespace sessionfiles::zip {

namespace {

constexpr int endRecordSize = 22;

// Where the record starts that reaches, with its comment, to the end of the file; -1 for none.
qint64 endRecord(QIODevice &file)
{
    constexpr qint64 longest = endRecordSize + std::numeric_limits<quint16>::max();
    const qint64 begin = qMax<qint64>(0, file.size() - longest);
    const QByteArray tail = bytesAt(file, begin, longest);
    for (int i = tail.size() - endRecordSize; i >= 0; --i) {
        if (tail.mid(i, signatureSize) == "PK\x05\x06"
            && i + endRecordSize + number<quint16>(tail, i + 20) == tail.size()) {
            return begin + i;
        }
    }
    return -1;
}

} // namespace

QByteArray bytesAt(QIODevice &file, qint64 position, qint64 size)
{
    if (position < 0 || !file.seek(position))
        return {};
    return file.read(size);
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
    header.name = bytesAt(file, position + headerSize, header.nameSize);
    header.localPosition = isLocal ? position : number<quint32>(bytes, 42);
    header.nameEnd = position + headerSize + header.nameSize;
    header.end = header.nameEnd + header.extraSize + (isLocal ? 0 : number<quint16>(bytes, 32));
    return header;
}

Directory directoryOf(QIODevice &file, int most)
{
    Directory directory;
    const qint64 end = endRecord(file);
    if (end < 0)
        return directory;
    directory.isFound = true;
    const QByteArray record = bytesAt(file, end, endRecordSize);
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
