// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/ArchiveScan.h"

#include "sessionfiles/ArchiveFile.h"
#include "sessionfiles/ZipHeader.h"

#include <private/Limits.h>

#include <QCoreApplication>
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
constexpr int maxLocations = 100'000; // of all members
constexpr int maxPackings = 4; // of one location
constexpr qint64 maxContent = Limits::maxMemberBytes; // bytes
constexpr qint64 maxUnpacked = 4 * maxContent; // bytes, all attempts together

bool hasSizes(const Packing &packing)
{
    return packing.packedSize > 0 || (packing.flags & descriptorFlag) == 0;
}

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

// How unpacking a content ended.
enum class End { Complete, WrongChecksum, NoChecksum, Cut, Broken, TooLong, Unreadable };

quint32 sumOf(quint32 before, const char *data, qint64 size)
{
    return static_cast<quint32>(
        crc32_z(before, reinterpret_cast<const Bytef *>(data), static_cast<z_size_t>(size)));
}

// Unpacks a content while it is read.
class Content final : public QIODevice {
public:
    // What is packed lies before \a end; at most \a size bytes are given. When their sum is known,
    // no other bytes will do, and no fewer.
    Content(const QString &archive, const Packing &packing, qint64 end, qint64 size,
            std::optional<quint32> sum = std::nullopt)
        : m_file(archive), m_isDeflated(packing.method == Z_DEFLATED), m_position(packing.begin),
          m_end(end), m_left(size), m_expected(sum)
    {
        if (m_isDeflated)
            m_status = inflateInit2(&m_stream, -MAX_WBITS);
        QIODevice::open(QIODevice::ReadOnly | QIODevice::Unbuffered);
        m_file.open(QIODevice::ReadOnly); // where that fails, reading says why
    }
    ~Content() override
    {
        if (m_isDeflated)
            inflateEnd(&m_stream);
    }
    Content(const Content &) = delete;
    Content &operator=(const Content &) = delete;

    int status() const { return m_status; } // of the last call of zlib
    const std::optional<QString> &failure() const { return m_file.failure(); }
    qint64 position() const { return m_position - m_stream.avail_in; } // behind what was unpacked

    bool isSequential() const override { return true; }
    bool atEnd() const override { return m_left == 0; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 size = qMin(maxSize, m_left);
        qint64 count = 0;
        if (m_file.isOpen())
            count = m_isDeflated ? inflated(data, size) : stored(data, size);
        m_left = count < size ? 0 : m_left - count;
        m_sum = sumOf(m_sum, data, count);
        if (!m_expected || (count == size && (m_left > 0 || m_sum == *m_expected)))
            return count;
        m_left = 0;
        setErrorString(QCoreApplication::translate("sessionfiles", "%1 cannot be read: %2")
                           .arg(m_file.fileName(),
                                failure().value_or(QCoreApplication::translate(
                                    "sessionfiles", "it is not what it was before"))));
        return -1;
    }
    qint64 writeData(const char * /*data*/, qint64 /*size*/) override { return -1; }

private:
    qint64 stored(char *data, qint64 size)
    {
        const QByteArray bytes =
            bytesAt(m_file, m_position, qBound<qint64>(0, m_end - m_position, size));
        std::copy(bytes.begin(), bytes.end(), data);
        m_position += bytes.size();
        return bytes.size();
    }
    qint64 inflated(char *data, qint64 size)
    {
        constexpr qint64 blockSize = 64 * 1024;
        m_stream.next_out = reinterpret_cast<Bytef *>(data);
        m_stream.avail_out = static_cast<uInt>(size);
        while (m_status == Z_OK && m_stream.avail_out > 0) {
            if (m_stream.avail_in == 0) {
                m_packed =
                    bytesAt(m_file, m_position, qBound<qint64>(0, m_end - m_position, blockSize));
                m_position += m_packed.size();
                m_stream.next_in = reinterpret_cast<Bytef *>(m_packed.data());
                m_stream.avail_in = static_cast<uInt>(m_packed.size());
            }
            m_status = inflate(&m_stream, Z_NO_FLUSH);
        }
        return size - m_stream.avail_out;
    }

    ArchiveFile m_file;
    bool m_isDeflated;
    int m_status = Z_OK;
    qint64 m_position;
    qint64 m_end;
    qint64 m_left; // bytes to give
    std::optional<quint32> m_expected;
    quint32 m_sum = 0; // of the bytes that were given
    QByteArray m_packed;
    z_stream m_stream{};
};

// Reads the content to its end, or to where it fails. Returns the bytes and the sum of those before
// \a limit.
qint64 read(QIODevice &content, qint64 limit, quint32 &sum)
{
    QByteArray block(256 * 1024, Qt::Uninitialized);
    qint64 size = 0;
    for (qint64 count = 0; (count = content.read(block.data(), block.size())) > 0; size += count)
        sum = sumOf(sum, block.constData(), qBound<qint64>(0, limit - size, count));
    return size;
}

class Scanner {
public:
    explicit Scanner(const QString &name) : m_file(name) { }

    Found run(const std::function<void(qint64, qint64)> &advance)
    {
        Found result;
        // Headers are short and far from each other, so that a buffer would be read in vain.
        if (m_file.open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
            findLocations(advance);
            for (const bool isExact : {true, false})
                unpackLocations(isExact, result.members);
        }
        result.failure = m_failure ? m_failure : m_file.failure();
        return result;
    }

private:
    // Unpacks the members that are not whole yet. Of two with one name readers take the first.
    void unpackLocations(bool isExact, Members &result)
    {
        for (auto location = m_locations.cbegin(); location != m_locations.cend(); ++location) {
            const Name name = location->second.name;
            Member &best = result[name.index];
            if (name.isExact != isExact || best.isComplete)
                continue;
            const auto next = std::next(location);
            keepBetter(
                best,
                unpack(location->second, next == m_locations.cend() ? m_file.size() : next->first));
        }
    }

    static void keepBetter(Member &best, Member &&member)
    {
        if (!best.isFound || member.isComplete || member.size > best.size)
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
        for (qint64 begin = 0;; begin += blockSize - signatureSize + 1) {
            const QByteArray block = bytesAt(m_file, begin, blockSize);
            for (int i = block.indexOf("PK"); i >= 0; i = block.indexOf("PK", i + 1)) {
                const QByteArray signature = block.mid(i, signatureSize);
                const bool isLocal = signature == localSignature;
                if (!isLocal && signature != directorySignature)
                    continue;
                if (isLocal)
                    addLocal(begin + i);
                else
                    addFromDirectory(begin + i);
            }
            if (advance)
                advance(qMin(begin + blockSize, m_file.size()), m_file.size());
            if (begin + blockSize >= m_file.size())
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
        if (m_locations.size() >= maxLocations && m_locations.count(position) == 0)
            return;
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
            Member member = unpack(packing, location, next);
            // What is encrypted unpacks to noise.
            if (!member.isComplete && (packing.flags & encryptedFlag) != 0) {
                member.size = member.sum = 0;
                member.damage = QCoreApplication::translate("sessionfiles", "it is encrypted");
            }
            if (!best.isFound || member.isComplete || best.size == 0)
                best = std::move(member);
            if (best.isComplete)
                break;
        }
        return best;
    }

    Member unpack(const Packing &packing, const Location &location, qint64 next)
    {
        const qint64 limit = qMin(maxContent, maxUnpacked - m_unpacked);
        Member member;
        member.archive = m_file.fileName();
        member.packing = packing;
        member.packedEnd = hasSizes(packing) ? packing.begin + packing.packedSize : next;
        std::optional<quint32> expected = packing.checksum;
        End end = End::Broken;
        if (packing.method == 0 && !hasSizes(packing))
            end = endAtDescriptor(packing.begin, member.packedEnd, expected);
        Content content(member.archive, packing, member.packedEnd, limit + 1);
        member.size = read(content, limit, member.sum);
        m_failure = m_failure ? m_failure : content.failure();
        if (member.size > limit) {
            member.size = limit;
            end = End::TooLong;
        } else if (packing.method != 0 && packing.method != Z_DEFLATED) {
            member.size = member.sum = 0;
        } else if (content.failure()) {
            end = End::Unreadable;
        } else if (packing.method == Z_DEFLATED) {
            end = endOfDeflated(content, packing, member.packedEnd, expected);
        } else if (hasSizes(packing)) {
            end = member.packedEnd > m_file.size() ? End::Cut : End::WrongChecksum;
        }
        m_unpacked += member.size;
        const auto agrees = [&](const Packing &each) { return each.checksum == member.sum; };
        if ((end == End::WrongChecksum || end == End::NoChecksum)
            && (expected == member.sum
                || std::any_of(location.packings.begin(), location.packings.end(), agrees))) {
            end = End::Complete;
        }
        describe(member, end, content.failure());
        return member;
    }

    static void describe(Member &member, End end, const std::optional<QString> &failure)
    {
        member.isFound = true;
        member.isComplete = end == End::Complete;
        member.isCut = end == End::Cut;
        member.isCertain = member.isComplete || member.isCut || end == End::Unreadable;
        switch (end) {
        case End::Complete:
            break;
        case End::WrongChecksum:
            member.damage = QCoreApplication::translate("sessionfiles", "its checksum is another");
            break;
        case End::NoChecksum:
            member.damage = QCoreApplication::translate("sessionfiles", "its checksum is gone");
            break;
        case End::Cut:
            member.damage =
                QCoreApplication::translate("sessionfiles", "the archive ends inside it");
            break;
        case End::Broken:
            member.damage =
                QCoreApplication::translate("sessionfiles", "it unpacks only to byte %1")
                    .arg(member.size);
            break;
        case End::TooLong:
            member.damage =
                QCoreApplication::translate("sessionfiles", "it holds more than %1 bytes")
                    .arg(maxContent);
            break;
        case End::Unreadable:
            member.damage =
                QCoreApplication::translate("sessionfiles", "it can be read only to byte %1: %2")
                    .arg(QString::number(member.size), *failure);
            break;
        }
    }

    // Once it has been read to its end. What is packed should end before \a packedEnd.
    End endOfDeflated(const Content &content, const Packing &packing, qint64 packedEnd,
                      std::optional<quint32> &expected)
    {
        if (content.status() == Z_STREAM_END) {
            if ((packing.flags & descriptorFlag) == 0 || packing.checksum != 0)
                return End::WrongChecksum;
            expected = checksumBehind(content.position());
            return expected ? End::WrongChecksum : End::NoChecksum;
        }
        const bool isCut = content.status() == Z_BUF_ERROR && content.position() == m_file.size()
            && (packedEnd > content.position() || !hasSizes(packing));
        return isCut ? End::Cut : End::Broken;
    }

    // The checksum behind the content, with or without a signature.
    std::optional<quint32> checksumBehind(qint64 position)
    {
        const QByteArray descriptor = bytesAt(m_file, position, 2 * signatureSize);
        const int index = descriptor.startsWith(descriptorSignature) ? signatureSize : 0;
        if (descriptor.size() < index + signatureSize)
            return std::nullopt;
        return number<quint32>(descriptor, index);
    }

    // Where a content ends that is not packed, only the descriptor behind it tells: it counts the
    // bytes before it. Sets \a end to that place.
    End endAtDescriptor(qint64 begin, qint64 &end, std::optional<quint32> &expected)
    {
        constexpr int descriptorSize = 16;
        constexpr int sizeIndex = 8;
        constexpr qint64 blockSize = 256 * 1024;
        for (qint64 from = begin; from < end; from += blockSize) {
            const QByteArray block =
                bytesAt(m_file, from, qMin(end - from, blockSize + descriptorSize - 1));
            for (int i = block.indexOf(descriptorSignature); i >= 0;
                 i = block.indexOf(descriptorSignature, i + 1)) {
                if (i + sizeIndex + signatureSize > block.size()
                    || number<quint32>(block, i + sizeIndex) != from + i - begin) {
                    continue;
                }
                expected = number<quint32>(block, i + signatureSize);
                end = from + i;
                return End::WrongChecksum;
            }
        }
        return end == m_file.size() ? End::Cut : End::Broken;
    }

    ArchiveFile m_file;
    std::optional<QString> m_failure; // to unpack a member
    std::map<qint64, Location> m_locations; // by the position of the member's header
    qint64 m_unpacked = 0;
};

} // namespace

std::unique_ptr<QIODevice> Member::open() const
{
    return std::make_unique<Content>(archive, packing, packedEnd, size, sum);
}

bool Member::shorten(qint64 bytes)
{
    const std::unique_ptr<QIODevice> content = open();
    quint32 shortSum = 0;
    const qint64 count = read(*content, bytes, shortSum);
    if (count != size)
        return false;
    size = bytes;
    sum = shortSum;
    return true;
}

Found run(const QString &name, const std::function<void(qint64, qint64)> &advance)
{
    return Scanner(name).run(advance);
}

} // namespace sessionfiles::ArchiveScan
