// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_ZIPHEADER_H
#define SESSIONFILES_ZIPHEADER_H

#include <QByteArray>
#include <QIODevice>
#include <QVector>
#include <QtEndian>

#include <optional>

/// The structures of a zip archive, for what the zip library does not tell: where each lies in the
/// file, and what is left of them in a damaged one.
namespace sessionfiles::zip {

constexpr int signatureSize = 4;
constexpr int maxNameBytes = 1024; // that are read; no member of a session has a longer name
constexpr char localSignature[] = "PK\x03\x04";
constexpr char directorySignature[] = "PK\x01\x02";
constexpr char descriptorSignature[] = "PK\x07\x08";

/// The bytes at \a position; fewer where the file ends or fails, none where it has no such place.
QByteArray bytesAt(QIODevice &file, qint64 position, qint64 size);

/// The little-endian number at \a index, which lies inside the bytes.
template <typename T> T number(const QByteArray &bytes, int index)
{
    if (bytes.isNull()) // never; with Qt 6 the compiler warns of it otherwise
        return 0;
    return qFromLittleEndian<T>(bytes.constData() + index);
}

/// What a header says of a member.
struct Header {
    /// Local headers stand before their member's content, the others in the archive's directory.
    enum Kind { Local, Directory };

    quint16 flags = 0;
    quint16 method = 0;
    quint32 checksum = 0;
    qint64 packedSize = 0; ///< bytes
    qint64 size = 0; ///< bytes, unpacked
    int nameSize = 0;
    int extraSize = 0;
    QByteArray name; ///< its first maxNameBytes; shorter where the file ends
    qint64 localPosition = 0; ///< of the local header, in the archive; of a Directory header only
    qint64 nameEnd = 0; ///< position in the file
    qint64 end = 0; ///< position in the file
};

/// The header at \a position, whatever its signature is; none where the file ends inside it.
std::optional<Header> headerAt(QIODevice &file, qint64 position, Header::Kind kind);

/// The directory at the end of an archive.
struct Directory {
    bool isFound = false; ///< its end reaches to the end of the file
    bool isLarge = false; ///< in the form for more than 4 GB, which is not read
    qint64 offset = 0; ///< bytes before the archive's begin
    int entries = 0; ///< as the directory's end tells
    QVector<Header> headers; ///< fewer than entries when one is damaged, or there are too many
};

/// At most \a most headers are read.
Directory directoryOf(QIODevice &file, int most);

} // namespace sessionfiles::zip

#endif
