// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/ArchiveScan.h"

#include "sessionfiles/ZipHeader.h"

#include <private/Limits.h>

#include <QCoreApplication>
#include <QFile>
#include <QVector>

#include <algorithm>
#include <iterator>
#include <map>
#include <numeric>
#include <optional>
#include <zlib.h>

namespace sessionfiles::ArchiveScan {

namespace {

using namespace zip;

constexpr quint16 encryptedFlag = 1 << 0;
constexpr quint16 descriptorFlag = 1 << 3; // sizes and checksum stand behind the content

// What a file can make this program do, whatever it claims.
constexpr int maxHeaders = 100'000;
constexpr int maxLocations = 8;
constexpr int maxPackings = 4;
constexpr qint64 maxContent = Limits::maxMemberBytes; // bytes
constexpr qint64 maxUnpacked = 4 * maxContent; // bytes, all attempts together

// Where a member's content lies and how it is packed, by one header.
struct Packing {
    quint16 flags = 0;
    int method = 0;
    quint32 checksum = 0;
    qint64 packedSize = 0;
    qint64 begin = 0;

    bool hasSizes() const { return packedSize > 0 || (flags & descriptorFlag) == 0; }
};

// Which member a name in a header means.
struct Name {
    MemberIndex index{};
    bool isExact = false; // else one of its characters is another
};

// A place where a member stands, by its own header and by the directory.
struct Location {
    Name name;
    QVector<Packing> packings;
};

struct Unpacked {
    enum End { Complete, WrongChecksum, NoChecksum, Cut, Broken, TooLong };

    End end = Broken;
    QByteArray content;
};

class Scanner {
public:
    explicit Scanner(const QString &name) : m_file(name) { }

    Members run(const std::function<void(qint64, qint64)> &advance)
    {
        Members result;
        if (!m_file.open(QIODevice::ReadOnly))
            return result;
        findLocations(advance);
        for (const bool isExact : {true, false})
            unpackLocations(isExact, result);
        return result;
    }

private:
    // Unpacks the members that are not whole yet. Of two with one name readers take the first.
    void unpackLocations(bool isExact, Members &result)
    {
        std::array<int, readingOrder.size()> tried{};
        for (auto location = m_locations.cbegin(); location != m_locations.cend(); ++location) {
            const Name name = location->second.name;
            Member &best = result[name.index];
            if (name.isExact != isExact || best.isComplete || tried[name.index]++ == maxLocations)
                continue;
            const auto next = std::next(location);
            keepBetter(
                best,
                unpack(location->second, next == m_locations.cend() ? m_file.size() : next->first));
        }
    }

    static void keepBetter(Member &best, Member &&member)
    {
        if (!best.isFound || member.isComplete || member.content.size() > best.content.size())
            best = std::move(member);
    }

    // Recognises a name with one wrong character, too: the members' names differ in more.
    static std::optional<Name> memberOf(const QByteArray &name)
    {
        for (const MemberIndex index : readingOrder) {
            const QByteArray known = memberName(index).toLatin1();
            if (name.size() != known.size())
                continue;
            const int wrong = std::inner_product(name.begin(), name.end(), known.begin(), 0,
                                                 std::plus<>(), std::not_equal_to<>());
            if (wrong <= 1)
                return Name{index, wrong == 0};
        }
        return std::nullopt;
    }

    void findLocations(const std::function<void(qint64, qint64)> &advance)
    {
        constexpr int blockSize = 256 * 1024;
        int headers = 0;
        for (qint64 begin = 0; headers < maxHeaders; begin += blockSize - signatureSize + 1) {
            const QByteArray block = bytesAt(m_file, begin, blockSize);
            for (int i = block.indexOf("PK"); i >= 0 && headers < maxHeaders;
                 i = block.indexOf("PK", i + 1)) {
                const QByteArray signature = block.mid(i, signatureSize);
                const bool isLocal = signature == localSignature;
                if (!isLocal && signature != directorySignature)
                    continue;
                ++headers;
                if (isLocal)
                    addLocal(begin + i);
                else
                    addFromDirectory(begin + i);
            }
            if (advance)
                advance(qMin(begin + blockSize, m_file.size()), m_file.size());
            if (block.size() < blockSize)
                break;
        }
    }

    void addLocal(qint64 position)
    {
        const std::optional<Header> header = headerAt(m_file, position, Header::Local);
        const auto name = header ? memberOf(header->name) : std::nullopt;
        if (name)
            add(position, *name, packingOf(*header, header->end));
    }

    void addFromDirectory(qint64 position)
    {
        const std::optional<Header> header = headerAt(m_file, position, Header::Directory);
        const auto name = header ? memberOf(header->name) : std::nullopt;
        if (!name)
            return;
        const std::optional<Header> local = headerAt(m_file, header->localPosition, Header::Local);
        if (!local)
            return;
        // The name in front of the content is the directory's, or else its length cannot be
        // believed, and no more can the length of what follows it.
        const qint64 nameEnd = local->nameEnd - local->nameSize + header->nameSize;
        if (local->nameSize == header->nameSize)
            add(header->localPosition, *name, packingOf(*header, local->end));
        // Only the zip library's large archives have an extra field.
        if (local->nameSize != header->nameSize || local->extraSize != 0)
            add(header->localPosition, *name, packingOf(*header, nameEnd));
    }

    static Packing packingOf(const Header &header, qint64 begin)
    {
        return {header.flags, header.method, header.checksum, header.packedSize, begin};
    }

    void add(qint64 position, Name name, const Packing &packing)
    {
        Location &location = m_locations[position];
        if (location.packings.isEmpty() || name.isExact)
            location.name = name;
        if (location.packings.size() < maxPackings)
            location.packings.append(packing);
    }

    // What the location gives: whole by one of its headers, or else by the first that gives
    // anything.
    Member unpack(const Location &location, qint64 next)
    {
        Member best;
        for (const Packing &packing : location.packings) {
            Member member = describe(unpack(packing, location, next));
            // What is encrypted unpacks to noise.
            if (!member.isComplete && (packing.flags & encryptedFlag) != 0) {
                member.content.clear();
                member.damage = QCoreApplication::translate("sessionfiles", "it is encrypted");
            }
            if (!best.isFound || member.isComplete || best.content.isEmpty())
                best = std::move(member);
            if (best.isComplete)
                break;
        }
        return best;
    }

    static Member describe(Unpacked &&unpacked)
    {
        Member member;
        member.isFound = true;
        member.isComplete = unpacked.end == Unpacked::Complete;
        member.isCut = unpacked.end == Unpacked::Cut;
        member.isCertain = member.isComplete || member.isCut;
        member.content = std::move(unpacked.content);
        switch (unpacked.end) {
        case Unpacked::Complete:
            break;
        case Unpacked::WrongChecksum:
            member.damage = QCoreApplication::translate("sessionfiles", "its checksum is another");
            break;
        case Unpacked::NoChecksum:
            member.damage = QCoreApplication::translate("sessionfiles", "its checksum is gone");
            break;
        case Unpacked::Cut:
            member.damage =
                QCoreApplication::translate("sessionfiles", "the archive ends inside it");
            break;
        case Unpacked::Broken:
            member.damage =
                QCoreApplication::translate("sessionfiles", "it unpacks only to byte %1")
                    .arg(member.content.size());
            break;
        case Unpacked::TooLong:
            member.damage =
                QCoreApplication::translate("sessionfiles", "it holds more than %1 bytes")
                    .arg(maxContent);
            break;
        }
        return member;
    }

    Unpacked unpack(const Packing &packing, const Location &location, qint64 next)
    {
        const qint64 limit = qMin(maxContent, maxUnpacked - m_unpacked);
        const qint64 end = packing.hasSizes() ? packing.begin + packing.packedSize : next;
        Unpacked result;
        if (packing.method == Z_DEFLATED)
            result = inflated(packing, end, limit);
        else if (packing.method == 0)
            result = stored(packing, end, limit);
        m_unpacked += result.content.size();
        const auto sum = checksum(result.content);
        const auto agrees = [sum](const Packing &each) { return each.checksum == sum; };
        if ((result.end == Unpacked::WrongChecksum || result.end == Unpacked::NoChecksum)
            && std::any_of(location.packings.begin(), location.packings.end(), agrees)) {
            result.end = Unpacked::Complete;
        }
        return result;
    }

    static quint32 checksum(const QByteArray &content)
    {
        return static_cast<quint32>(crc32_z(0, reinterpret_cast<const Bytef *>(content.constData()),
                                            static_cast<z_size_t>(content.size())));
    }

    // Unpacks from the packing's begin; what is packed should end before \a end.
    Unpacked inflated(const Packing &packing, qint64 end, qint64 limit)
    {
        Unpacked result;
        z_stream stream{};
        if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
            return result;
        constexpr int blockSize = 64 * 1024;
        QByteArray packed;
        QByteArray block(blockSize, Qt::Uninitialized);
        qint64 position = packing.begin;
        int status = Z_OK;
        while (status == Z_OK && result.content.size() <= limit) {
            if (stream.avail_in == 0) {
                packed =
                    bytesAt(m_file, position, std::clamp<qint64>(end - position, 0, blockSize));
                position += packed.size();
                stream.next_in = reinterpret_cast<Bytef *>(packed.data());
                stream.avail_in = static_cast<uInt>(packed.size());
            }
            stream.next_out = reinterpret_cast<Bytef *>(block.data());
            stream.avail_out = blockSize;
            status = inflate(&stream, Z_NO_FLUSH);
            result.content.append(block.constData(),
                                  blockSize - static_cast<int>(stream.avail_out));
        }
        position -= stream.avail_in;
        inflateEnd(&stream);
        if (result.content.size() > limit) {
            result.content.truncate(static_cast<int>(limit));
            result.end = Unpacked::TooLong;
        } else if (status == Z_STREAM_END) {
            result.end = (packing.flags & descriptorFlag) == 0 || packing.checksum != 0
                ? Unpacked::WrongChecksum
                : endByDescriptor(position, result.content);
        } else if (status == Z_BUF_ERROR && position == m_file.size()
                   && (end > position || !packing.hasSizes())) {
            result.end = Unpacked::Cut;
        }
        return result;
    }

    // The checksum behind the content, with or without a signature.
    Unpacked::End endByDescriptor(qint64 position, const QByteArray &content)
    {
        const QByteArray descriptor = bytesAt(m_file, position, 2 * signatureSize);
        const int index = descriptor.startsWith(descriptorSignature) ? signatureSize : 0;
        if (descriptor.size() < index + signatureSize)
            return Unpacked::NoChecksum;
        return number<quint32>(descriptor, index) == checksum(content) ? Unpacked::Complete
                                                                       : Unpacked::WrongChecksum;
    }

    // A content that is not packed, from the packing's begin to \a end.
    Unpacked stored(const Packing &packing, qint64 end, qint64 limit)
    {
        Unpacked result;
        result.content =
            bytesAt(m_file, packing.begin, qBound<qint64>(0, end - packing.begin, limit));
        if (end - packing.begin > limit)
            result.end = Unpacked::TooLong;
        else if (packing.hasSizes())
            result.end = end > m_file.size() ? Unpacked::Cut : Unpacked::WrongChecksum;
        else
            result.end = cutAtDescriptor(result.content, end);
        return result;
    }

    // Only the descriptor behind the content tells where it ends: it counts the bytes before it.
    Unpacked::End cutAtDescriptor(QByteArray &content, qint64 end)
    {
        constexpr int sizeIndex = 8;
        for (int i = content.indexOf(descriptorSignature); i >= 0;
             i = content.indexOf(descriptorSignature, i + 1)) {
            if (i + sizeIndex + signatureSize > content.size()
                || number<quint32>(content, i + sizeIndex) != static_cast<quint32>(i)) {
                continue;
            }
            const auto expected = number<quint32>(content, i + signatureSize);
            content.truncate(i);
            return checksum(content) == expected ? Unpacked::Complete : Unpacked::WrongChecksum;
        }
        return end == m_file.size() ? Unpacked::Cut : Unpacked::Broken;
    }

    QFile m_file;
    std::map<qint64, Location> m_locations; // by the position of the member's header
    qint64 m_unpacked = 0;
};

} // namespace

Members run(const QString &name, const std::function<void(qint64, qint64)> &advance)
{
    return Scanner(name).run(advance);
}

} // namespace sessionfiles::ArchiveScan
