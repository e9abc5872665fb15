// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_ARCHIVEMEMBER_H
#define CPRSESSION_ARCHIVEMEMBER_H

#include "ArchiveCheck.h"
#include "Utf8Decoder.h"

#include <QXmlStreamReader>

#include <quazip.h>
#include <quazipfile.h>
#include <quazipfileinfo.h>

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace ArchiveCheck {

constexpr int msecsPerSecond = 1000;
constexpr int bytesPerSample = 2;

// The text on one line and in quotes, without anything that a terminal would act on.
inline QString quoted(const QString &text)
{
    constexpr int longest = 60;
    QString result = QStringLiteral("\"");
    for (const QChar c : text.left(longest)) {
        if (c.isPrint() || c.isSurrogate())
            result += c;
        else
            result += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
    }
    return result + (text.size() > longest ? QStringLiteral("\"...") : QStringLiteral("\""));
}

enum MemberIndex : std::size_t { Waves, Compressions, Ventilations, Events, Guidelines };

struct MemberRow {
    MemberIndex index;
    const char *name;
    qint64 limit; // bytes
};

// In the order in which they are checked: each needs those before it.
// clang-format off
constexpr std::array<MemberRow, 5> members = {{
    {Waves,        "CPR/CPRWaves.xml",      maxXmlBytes},
    {Compressions, "CPR/COMP.WV",           maxWaveBytes},
    {Ventilations, "CPR/VENT.WV",           maxWaveBytes},
    {Events,       "CPR/CPREvents.xml",     maxXmlBytes},
    {Guidelines,   "CPR/CPRGuidelines.xml", maxXmlBytes},
}};
// clang-format on

inline QString memberName(MemberIndex index)
{
    return QString::fromLatin1(members[index].name);
}

// The findings about one member.
class MemberReport {
public:
    MemberReport(FindingList &list, const QString &member) : m_list(list), m_member(member) { }

    // A finding about the member as a whole.
    void add(Finding::Severity severity, const QString &expected, const QString &found)
    {
        m_list.add(severity, [&] { return finding(severity, expected, found); });
    }
    void error(const QString &expected, const QString &found)
    {
        add(Finding::Error, expected, found);
    }
    void errorAtByte(qint64 byte, const QString &expected, const QString &found)
    {
        m_list.add(Finding::Error, [&] {
            Finding result = finding(Finding::Error, expected, found);
            result.byte = byte;
            return result;
        });
    }
    // element() is called only when the finding is kept.
    template <typename Element>
    void addAtLine(Finding::Severity severity, qint64 line, qint64 column, Element element,
                   const QString &expected, const QString &found)
    {
        m_list.add(severity, [&] {
            Finding result = finding(severity, expected, found);
            result.line = line;
            result.column = column;
            result.element = element();
            return result;
        });
    }

private:
    Finding finding(Finding::Severity severity, const QString &expected, const QString &found) const
    {
        Finding result;
        result.severity = severity;
        result.member = m_member;
        result.expected = expected;
        result.found = found;
        return result;
    }

    FindingList &m_list;
    QString m_member;
};

// A member's content in blocks.
class BlockSource {
public:
    // The next block. Empty at the end, whether or not that is the true one.
    virtual QByteArray read() = 0;
    // The end was not the true one, which has been reported.
    virtual bool isDamaged() const = 0;

protected:
    static constexpr int blockSize = 64 * 1024;

    ~BlockSource() = default;
};

// A content that lies in memory.
class BytesReader final : public BlockSource {
public:
    explicit BytesReader(const QByteArray &bytes) : m_bytes(bytes) { }

    QByteArray read() override
    {
        const QByteArray block = m_bytes.mid(m_position, blockSize);
        m_position += block.size();
        return block;
    }
    bool isDamaged() const override { return false; }

private:
    QByteArray m_bytes;
    int m_position = 0;
};

// One member, read in blocks to the size that the archive's directory gives.
class MemberReader final : public BlockSource {
public:
    // The archive stands at the member.
    MemberReader(QuaZip &zip, MemberReport &report, std::function<void(qint64)> advance)
        : m_file(&zip), m_report(report), m_advance(std::move(advance))
    {
        zip.getCurrentFileInfo(&m_info);
    }

    bool open(qint64 limit)
    {
        // Encrypted, a patch, strongly encrypted.
        constexpr quint16 unreadableFlags = 1 << 0 | 1 << 5 | 1 << 6;
        constexpr int newestVersion = 63; // of the zip format, 6.3
        const auto size = m_info.uncompressedSize;
        const int version = m_info.versionNeeded & 0xFF;
        if ((m_info.flags & unreadableFlags) != 0) {
            m_report.error(
                QStringLiteral("neither encryption nor a patch"),
                QStringLiteral("the flags %1").arg(m_info.flags, 4, 16, QLatin1Char('0')));
        } else if (version > newestVersion) {
            m_report.error(
                QStringLiteral("a member for zip version %1 or older").arg(newestVersion),
                QString::number(version));
        } else if (size > static_cast<quint64>(limit)) {
            m_report.error(QStringLiteral("at most %1 bytes").arg(limit),
                           QStringLiteral("%1 bytes; not read").arg(size));
        } else if (!m_file.open(QIODevice::ReadOnly)) {
            m_report.error(QStringLiteral("a header that agrees with the archive's directory"),
                           QStringLiteral("zip error %1").arg(m_file.getZipError()));
        } else {
            m_size = static_cast<qint64>(size);
            return true;
        }
        return false;
    }

    QByteArray read() override
    {
        if (m_isDamaged || !m_file.isOpen())
            return {};
        QByteArray block(blockSize, Qt::Uninitialized);
        const qint64 length = m_file.read(block.data(), block.size());
        if (length <= 0 && m_position < m_size) {
            // The error of unpacking; closing puts that of the CRC in its place.
            const int error = m_file.getZipError();
            m_isDamaged = true;
            m_report.errorAtByte(
                m_position, QStringLiteral("%1 bytes").arg(m_size),
                error == 0 ? QStringLiteral("the end of what is packed")
                           : QStringLiteral("data that does not unpack, zip error %1").arg(error));
        }
        if (length <= 0)
            return {};
        block.truncate(static_cast<int>(length));
        m_position += length;
        m_advance(length);
        return block;
    }

    // Reads the rest; only then the CRC can be compared.
    void finish()
    {
        while (!read().isEmpty()) { }
        if (!m_file.isOpen())
            return;
        m_file.close();
        if (!m_isDamaged && m_file.getZipError() != 0) {
            m_isDamaged = true;
            m_report.error(
                QStringLiteral("content with the CRC %1").arg(m_info.crc, 8, 16, QLatin1Char('0')),
                QStringLiteral("another, zip error %1").arg(m_file.getZipError()));
        }
    }

    bool isDamaged() const override { return m_isDamaged; }
    qint64 position() const { return m_position; }

private:
    QuaZipFile m_file;
    QuaZipFileInfo64 m_info;
    MemberReport &m_report;
    std::function<void(qint64)> m_advance;
    qint64 m_size = 0;
    qint64 m_position = 0;
    bool m_isDamaged = false;
};

// Looks through the text before the parser gets it, for what would cost the parser time or memory
// without bound: it compares each attribute with every other of its element, holds a tag or a text
// in one piece, and replaces the entities that a document type declares.
class XmlGuard {
public:
    // How many characters of the text the parser may have. All, unless expected tells why not.
    int accepted(const QString &text)
    {
        for (int i = 0; i < text.size(); ++i) {
            if (!accepts(text.at(i).unicode()))
                return i;
            if (text.at(i) == QLatin1Char('\n')) {
                ++line;
                column = 0;
            } else {
                ++column;
            }
        }
        return text.size();
    }

    qint64 line = 1;
    qint64 column = 0;
    QString expected;
    QString found;

private:
    enum class State { Text, Opened, Tag, Quotes, Comment, CharacterData, Instruction };

    bool refuse(const QString &limit, const QString &what)
    {
        expected = limit;
        found = what;
        return false;
    }

    void enter(State state)
    {
        m_state = state;
        m_length = 0;
        m_attributes = 0;
    }

    // Whether the markup ends with these characters.
    template <std::size_t N> bool closedBy(const char (&end)[N])
    {
        quint64 characters = 0;
        for (std::size_t i = 0; i + 1 < N; ++i)
            characters = characters << 16 | static_cast<quint64>(end[i]);
        const quint64 mask = (quint64(1) << 16 * (N - 1)) - 1;
        if ((m_window & mask) != characters)
            return false;
        enter(State::Text);
        return true;
    }

    bool accepts(ushort c)
    {
        if (++m_length > maxMarkupLength) {
            return refuse(QStringLiteral("at most %1 characters in one piece").arg(maxMarkupLength),
                          QStringLiteral("more"));
        }
        m_window = m_window << 16 | c;
        switch (m_state) {
        case State::Text:
            if (c == '<') {
                enter(State::Opened);
                m_opening.clear();
            }
            break;
        case State::Opened:
            m_opening += QChar(c);
            return acceptsOpening(c);
        case State::Tag:
            if (c == '>') {
                enter(State::Text);
            } else if (c == '"' || c == '\'') {
                m_quote = c;
                m_state = State::Quotes;
            } else if (c == '=' && ++m_attributes > maxAttributes) {
                return refuse(QStringLiteral("at most %1 attributes").arg(maxAttributes),
                              QStringLiteral("more"));
            }
            break;
        case State::Quotes:
            if (c == m_quote)
                m_state = State::Tag;
            break;
        case State::Comment:
            closedBy("-->");
            break;
        case State::CharacterData:
            closedBy("]]>");
            break;
        case State::Instruction:
            closedBy("?>");
            break;
        }
        return true;
    }

    // Behind '<': what the markup is, as soon as that is clear.
    bool acceptsOpening(ushort c)
    {
        const QLatin1String characterData("![CDATA[");
        if (m_opening == QLatin1String("?")) {
            enter(State::Instruction);
        } else if (m_opening == QLatin1String("!--")) {
            enter(State::Comment);
        } else if (m_opening == characterData) {
            enter(State::CharacterData);
        } else if (m_opening == QLatin1String("!D")) {
            return refuse(QStringLiteral("no document type"),
                          QStringLiteral("a declaration of one"));
        } else if (c == '>') {
            enter(State::Text);
        } else if (!m_opening.startsWith(QLatin1Char('!'))
                   || m_opening.size() == characterData.size()) {
            m_state = State::Tag;
        }
        // None of the characters that open a comment may close it too.
        m_window = 0;
        return true;
    }

    State m_state = State::Text;
    int m_length = 0; // of the markup or text so far
    int m_attributes = 0;
    ushort m_quote = 0;
    QString m_opening; // what stands behind '<' so far
    quint64 m_window = 0; // the last four characters
};

// An XML member, read element by element and block by block. What keeps the rest from being read
// is reported here, once; after that there are no more elements.
class XmlMember {
public:
    XmlMember(BlockSource &reader, MemberReport &report) : m_reader(reader), m_report(report) { }

    // Goes to the next element inside the current one; false at its end. There should be no text.
    bool nextChild() { return advance(true); }

    // Goes to the end of the current element, whatever it holds.
    void skip()
    {
        const int outside = m_depth - 1;
        while (m_depth > outside && !m_isOver)
            advance(false);
    }

    // The same for an element that should hold no others.
    void skipEmpty()
    {
        while (nextChild()) {
            add(Finding::Warning, {}, QStringLiteral("no element here"), quoted(name().toString()));
            skip();
        }
    }

    // Goes to the end of the document.
    void finish()
    {
        while (!m_isOver)
            advance(false);
    }

    // There is nothing more to read: the document has ended, or is not believed any further.
    bool isOver() const { return m_isOver; }

    QStringView name() const { return m_xml.name(); }
    QXmlStreamAttributes attributes() const { return m_xml.attributes(); }
    // The text of an attribute; none when there is no such attribute.
    std::optional<QString> attribute(const char *key) const
    {
        const QXmlStreamAttributes all = m_xml.attributes();
        if (!all.hasAttribute(QLatin1String(key)))
            return std::nullopt;
        return all.value(QLatin1String(key)).toString();
    }

    // A finding at the current place. element() names it.
    template <typename Element>
    void addIn(Finding::Severity severity, Element element, const QString &expected,
               const QString &found)
    {
        m_report.addAtLine(severity, m_xml.lineNumber(), m_xml.columnNumber(), element, expected,
                           found);
    }
    void add(Finding::Severity severity, const QString &element, const QString &expected,
             const QString &found)
    {
        addIn(
            severity, [&] { return element; }, expected, found);
    }

    // Every attribute of the current element has to be among the known.
    template <typename Element, std::size_t N>
    void checkAttributes(Element element, const std::array<const char *, N> &known)
    {
        for (const QXmlStreamAttribute &attribute : m_xml.attributes()) {
            const auto is = [&](const char *key) { return attribute.name() == QLatin1String(key); };
            if (std::none_of(known.begin(), known.end(), is)) {
                addIn(Finding::Warning, element, QStringLiteral("known attributes only"),
                      quoted(attribute.name().toString()));
            }
        }
    }

private:
    bool advance(bool tellsOfText)
    {
        for (;;) {
            switch (next()) {
            case QXmlStreamReader::StartElement:
                if (m_depth == maxDepth || m_elements == maxElements) {
                    refuse(m_depth == maxDepth
                               ? QStringLiteral("elements nested at most %1 deep").arg(maxDepth)
                               : QStringLiteral("at most %1 elements").arg(maxElements));
                    return false;
                }
                ++m_depth;
                ++m_elements;
                return true;
            case QXmlStreamReader::EndElement:
                --m_depth;
                return false;
            case QXmlStreamReader::Characters:
                if (tellsOfText && !m_xml.isWhitespace())
                    add(Finding::Warning, {}, QStringLiteral("no text"),
                        quoted(m_xml.text().toString()));
                break;
            case QXmlStreamReader::NoToken:
            case QXmlStreamReader::EndDocument:
                return false;
            default:
                break;
            }
        }
    }

    QXmlStreamReader::TokenType next()
    {
        while (!m_isOver) {
            const QXmlStreamReader::TokenType token = m_xml.readNext();
            const bool wantsMore = token == QXmlStreamReader::EndDocument
                || m_xml.error() == QXmlStreamReader::PrematureEndOfDocumentError;
            if (token == QXmlStreamReader::StartDocument)
                checkEncoding();
            if (!wantsMore && token != QXmlStreamReader::Invalid)
                return token;
            if (wantsMore && feed())
                continue;
            if (!m_isOver && token == QXmlStreamReader::Invalid && !m_reader.isDamaged()) {
                add(Finding::Error, {}, QStringLiteral("well-formed XML"),
                    quoted(m_xml.errorString()));
            }
            m_isOver = true;
        }
        return QXmlStreamReader::NoToken;
    }

    void checkEncoding()
    {
        const auto encoding = m_xml.documentEncoding();
        if (!encoding.isEmpty() && encoding.compare(QLatin1String("UTF-8"), Qt::CaseInsensitive)) {
            add(Finding::Error, {}, QStringLiteral("the encoding UTF-8"),
                quoted(encoding.toString()));
        }
    }

    // Gives the parser another block, or what it may have of it; false when there is none.
    bool feed()
    {
        if (m_isLast) {
            m_isOver = true;
            return false;
        }
        QString text;
        while (text.isEmpty()) {
            const QByteArray block = m_reader.read();
            // The line feed shows whether the last character is whole.
            text = m_decoder.toText(block.isEmpty() ? QByteArray("\n") : block);
            if (block.isEmpty() && !m_decoder.hasFailed())
                return false;
        }
        if (m_decoder.hasFailed()) {
            text.truncate(qMax(0, text.indexOf(QChar(QChar::ReplacementCharacter))));
            m_isLast = true;
        }
        text.truncate(m_guard.accepted(text));
        if (!m_guard.expected.isEmpty())
            reportEnd(m_guard.expected, m_guard.found);
        else if (m_isLast)
            reportEnd(QStringLiteral("UTF-8"), QStringLiteral("other bytes"));
        m_xml.addData(text);
        return true;
    }

    void reportEnd(const QString &expected, const QString &found)
    {
        m_report.addAtLine(
            Finding::Error, m_guard.line, m_guard.column + 1, [] { return QString(); }, expected,
            found + QStringLiteral("; not read further"));
        m_isLast = true;
    }

    void refuse(const QString &limit)
    {
        add(Finding::Error, {}, limit, QStringLiteral("more; not read further"));
        m_isOver = true;
    }

    BlockSource &m_reader;
    MemberReport &m_report;
    Utf8Decoder m_decoder;
    XmlGuard m_guard;
    QXmlStreamReader m_xml;
    int m_depth = 0;
    int m_elements = 0;
    bool m_isLast = false; // the parser gets no more than it has
    bool m_isOver = false;
};

} // namespace ArchiveCheck

#endif
