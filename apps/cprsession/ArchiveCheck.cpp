// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ArchiveCheck.h"

#include <CPREventCompression.h>
#include <CPREventVentilation.h>
#include <CPRGuidelines.h>
#include <CPRWaveformInfo.h>

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QMap>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QTextCodec>
#include <QXmlStreamReader>
#include <QtEndian>

#include <quazip.h>
#include <quazipfile.h>
#include <quazipfileinfo.h>

#include <algorithm>
#include <array>
#include <bitset>
#include <limits>
#include <memory>
#include <optional>
#include <utility>

namespace {

using E = CPREventBase;
using namespace ArchiveCheck;

constexpr int msecsPerSecond = 1000;
constexpr int bytesPerSample = 2;
constexpr int maxEntries = 1000; // of the archive's directory

// The text on one line and in quotes, without anything that a terminal would act on.
QString quoted(const QString &text)
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

// One member, read in blocks to the size that the archive's directory gives.
class MemberReader {
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

    // The next block. Empty at the end, whether or not that is the true one.
    QByteArray read()
    {
        constexpr int blockSize = 64 * 1024;
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

    bool isDamaged() const { return m_isDamaged; }
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
    XmlMember(MemberReader &reader, MemberReport &report)
        : m_reader(reader), m_report(report),
          m_decoder(QTextCodec::codecForName("UTF-8")->makeDecoder())
    {
    }

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

    QStringRef name() const { return m_xml.name(); }
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
        const QStringRef encoding = m_xml.documentEncoding();
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
            text = m_decoder->toUnicode(block.isEmpty() ? QByteArray("\n") : block);
            if (block.isEmpty() && !m_decoder->hasFailure())
                return false;
        }
        if (m_decoder->hasFailure()) {
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

    MemberReader &m_reader;
    MemberReport &m_report;
    std::unique_ptr<QTextDecoder> m_decoder;
    XmlGuard m_guard;
    QXmlStreamReader m_xml;
    int m_depth = 0;
    int m_elements = 0;
    bool m_isLast = false; // the parser gets no more than it has
    bool m_isOver = false;
};

// What a text has to be.
enum class Kind : quint8 {
    Unknown, // nothing is expected
    Text,
    Integer,
    Unsigned,
    Number,
    Flag,
    Time, // ISO 8601
    Enumeration // an integer; its values are in the table of enumerations
};

bool fits(const QString &text, Kind kind)
{
    bool ok = false;
    switch (kind) {
    case Kind::Unknown:
    case Kind::Text:
        return true;
    case Kind::Integer:
    case Kind::Enumeration:
        text.toInt(&ok);
        return ok;
    case Kind::Unsigned:
        text.toUInt(&ok);
        return ok;
    case Kind::Number:
        return qIsFinite(text.toFloat(&ok)) && ok;
    case Kind::Flag:
        return text == QLatin1String("0") || text == QLatin1String("1");
    case Kind::Time:
        return QDateTime::fromString(text, Qt::ISODate).isValid();
    }
    return false;
}

QString kindText(Kind kind)
{
    switch (kind) {
    case Kind::Integer:
    case Kind::Enumeration:
        return QStringLiteral("an integer of 32 bits");
    case Kind::Unsigned:
        return QStringLiteral("an integer of 32 bits, not negative");
    case Kind::Number:
        return QStringLiteral("a number");
    case Kind::Flag:
        return QStringLiteral("0 or 1");
    case Kind::Time:
        return QStringLiteral("a date and time of ISO 8601");
    case Kind::Unknown:
    case Kind::Text:
        break;
    }
    return QStringLiteral("a text");
}

constexpr std::size_t parameterCount = E::manikinBatteryDisconnectCounter + 1;
using Parameters = std::bitset<parameterCount>;

struct ParameterKind {
    E::ParameterType parameter;
    Kind kind;
};

// The parameters that are no integers, of every event but compressions and ventilations, which
// have properties. One that no manikin sends gets the widest kind that makes sense.
// clang-format off
constexpr std::array<ParameterKind, 35> parameterKinds = {{
    {E::compForceUnits,          Kind::Text},
    {E::compDepthUnits,          Kind::Text},
    {E::ventVolumeUnits,         Kind::Text},
    {E::instructor,              Kind::Text},
    {E::students,                Kind::Text},
    {E::manikinFirmwareVersion,  Kind::Text},
    {E::manikinName,             Kind::Text},
    {E::manikinRfidVersion,      Kind::Text},
    {E::manikinFeedpodVersion,   Kind::Text},
    {E::remoteControl,           Kind::Text},
    {E::remoteControlVersion,    Kind::Text},
    {E::cprCardId,               Kind::Text},
    {E::eventId,                 Kind::Text},
    {E::startTime,               Kind::Time},
    {E::endTime,                 Kind::Time},
    {E::compRate,                Kind::Number},
    {E::compDepth,               Kind::Number},
    {E::compUndershootDepth,     Kind::Number},
    {E::compPeakForce,           Kind::Number},
    {E::compReleaseForce,        Kind::Number},
    {E::compDutyCycle,           Kind::Number},
    {E::compLeaning,             Kind::Number},
    {E::compReleaseDepth,        Kind::Number},
    {E::compAbsolutePeakDepth,   Kind::Number},
    {E::compLeaningDepth,        Kind::Number},
    {E::compLeaningForce,        Kind::Number},
    {E::ventRawVolumeZ,          Kind::Number},
    {E::ventVolumeZ,             Kind::Number},
    {E::manikinCompressionCount, Kind::Unsigned},
    {E::cprCardTimestamp,        Kind::Unsigned},
    {E::manikinVentilationCount, Kind::Unsigned},
    {E::compIncompleteRelease,   Kind::Flag},
    {E::compHandposXiphoid,      Kind::Flag},
    {E::compHandposError,        Kind::Flag},
    {E::ventDuringCompression,   Kind::Flag},
}};
// clang-format on

template <typename Enumeration> bool isKey(int value)
{
    return QMetaEnum::fromType<Enumeration>().valueToKey(value) != nullptr;
}

bool isProtocol(int value)
{
    return value >= 0 && value <= bls_2010::CommonDefs::CPR_HIGH_PERFORMANCE;
}

struct EnumerationRow {
    E::ParameterType parameter;
    bool (*has)(int);
    // The manikin's own value is stored as it came, and a newer manikin may know more.
    bool isManikins;
};

// clang-format off
constexpr std::array<EnumerationRow, 12> enumerations = {{
    {E::cprProtocol,            isProtocol,                          true},
    {E::manikinType,            isKey<E::ManikinType>,               true},
    {E::manikinStiffness,       isKey<E::ManikinStiffness>,          true},
    {E::primaryAdvice,          isKey<E::Advice>,                    false},
    {E::secondaryAdvice,        isKey<E::Advice>,                    false},
    {E::aedEventType,           isKey<E::AEDEventType>,              false},
    {E::aedRemoteOtherButtonId, isKey<E::AEDRemoteOtherButtons>,     true},
    {E::aedRemoteApplyToAll,    isKey<E::AEDRemoteApplyToAllStatus>, true},
    {E::aedECGRhythm,           isKey<E::AEDEcgRhythms>,             true},
    {E::aedECGPulseStatus,      isKey<E::AEDEcgPulseStatus>,         true},
    {E::aedECGShockableStatus,  isKey<E::AEDEcgShockableStatus>,     true},
    {E::aedType,                isKey<E::AEDTypes>,                  false},
}};

// What is always written of a compression and of a ventilation. Forces are not when they were not
// measured.
constexpr std::array compressionMeasurements {
    E::endTime, E::compDepth, E::compPeakTime, E::compInstantaneousPeriod, E::compAbsolutePeakDepth,
    E::compLeaningDepth, E::compReleaseDepth, E::compHandposXiphoid, E::compHandposError,
    E::compIncompleteRelease, E::compMeanRate
};
constexpr std::array ventilationMeasurements {
    E::ventVolume, E::ventRate, E::ventInstantaneousPeriod, E::ventPeakTime, E::ventDuringCompression
};
// clang-format on

Kind kindOf(const QMetaProperty &property)
{
    switch (property.userType()) {
    case QMetaType::Bool:
        return Kind::Flag;
    case QMetaType::Int:
        return Kind::Integer;
    case QMetaType::UInt:
        return Kind::Unsigned;
    case QMetaType::Float:
        return Kind::Number;
    case QMetaType::QString:
        return Kind::Text;
    default:
        return Kind::Unknown;
    }
}

// The kinds of one sort of event.
struct EventSchema {
    // Of an event that keeps its parameters by name.
    EventSchema()
    {
        kinds.fill(Kind::Integer);
        for (const ParameterKind &row : parameterKinds)
            kinds[static_cast<std::size_t>(row.parameter)] = row.kind;
        for (const EnumerationRow &row : enumerations)
            kinds[static_cast<std::size_t>(row.parameter)] = Kind::Enumeration;
    }
    // Of an event that keeps them as properties.
    template <std::size_t N>
    EventSchema(const QMetaObject &object, const std::array<E::ParameterType, N> &written)
    {
        kinds.fill(Kind::Unknown);
        for (int i = 0; i < object.propertyCount(); ++i) {
            E::ParameterType parameter{};
            if (E::parameterFromKey(QString::fromLatin1(object.property(i).name()), parameter))
                kinds[static_cast<std::size_t>(parameter)] = kindOf(object.property(i));
        }
        for (const E::ParameterType parameter : written)
            expected.set(static_cast<std::size_t>(parameter));
    }

    std::array<Kind, parameterCount> kinds{};
    Parameters expected;
};

const EventSchema &schemaOf(E::EventType type)
{
    static const EventSchema named;
    static const EventSchema compression(CPREventCompression::staticMetaObject,
                                         compressionMeasurements);
    static const EventSchema ventilation(CPREventVentilation::staticMetaObject,
                                         ventilationMeasurements);
    switch (type) {
    case E::CprCompEvent:
        return compression;
    case E::CprVentEvent:
        return ventilation;
    default:
        return named;
    }
}

// What one event says of time; ms of session time.
struct EventTimes {
    qint64 start = 0;
    std::optional<int> end; // where one is stored
    std::optional<int> peak;
    int pauseSecs = 0;
};

class EventListCheck {
public:
    // The compression wave covers coveredMs, when that is known.
    EventListCheck(XmlMember &xml, MemberReport &report, std::optional<qint64> coveredMs)
        : m_xml(xml), m_report(report),
          m_coveredMs(coveredMs.value_or(std::numeric_limits<qint64>::max()))
    {
    }

    void run()
    {
        if (!m_xml.nextChild())
            return;
        if (m_xml.name() != QLatin1String("eventList")) {
            m_xml.add(Finding::Error, {}, QStringLiteral("the root element eventList"),
                      quoted(m_xml.name().toString()));
            m_xml.finish();
            return;
        }
        m_xml.checkAttributes([] { return QStringLiteral("eventList"); }, noAttributes);
        while (m_xml.nextChild())
            checkEvent();
        if (!m_xml.isOver())
            checkStanding();
        m_xml.finish();
    }

    // Of the session, in s; 0 when it is not known.
    int totalTime() const { return m_totalTime; }

private:
    static constexpr std::array<const char *, 0> noAttributes{};
    static constexpr std::array eventAttributes{"type", "msecs"};
    static constexpr std::array parameterAttributes{"type", "value", "units"};

    // An event that stands in the order, as far as the next ones need it.
    struct Listed {
        E::EventType type;
        qint64 start;
        qint64 end;
    };

    // Once the whole list has been read.
    void checkStanding()
    {
        if (m_infos != 1)
            m_report.error(QStringLiteral("one CprSessionInfo"), QString::number(m_infos));
        if (m_statistics > 1) {
            m_report.error(QStringLiteral("at most one CprSessionStatistics"),
                           QString::number(m_statistics));
        }
        if (m_scores > 1) {
            m_report.error(QStringLiteral("at most one CprSessionScore"),
                           QString::number(m_scores));
        }
    }

    QString where() const
    {
        QString text = QStringLiteral("evt %1").arg(m_number);
        if (!m_typeText.isEmpty())
            text += QLatin1Char(' ') + m_typeText;
        if (m_hasTime)
            text += QStringLiteral(" %1 ms").arg(m_times.start);
        return text;
    }
    QString whereParameter(const QString &key) const
    {
        return where() + QStringLiteral(", param ") + key;
    }
    void add(Finding::Severity severity, const QString &expected, const QString &found)
    {
        m_xml.addIn(
            severity, [this] { return where(); }, expected, found);
    }

    void checkEvent()
    {
        ++m_number;
        m_typeText.clear();
        m_hasTime = false;
        m_times = {};
        if (m_xml.name() != QLatin1String("evt")) {
            add(Finding::Error, QStringLiteral("the element evt; readers end the list here"),
                quoted(m_xml.name().toString()));
            m_xml.skip();
            return;
        }
        const std::optional<QString> typeText = m_xml.attribute("type");
        const std::optional<QString> msecsText = m_xml.attribute("msecs");
        if (!typeText || !msecsText) {
            add(Finding::Error, QStringLiteral("the attributes type and msecs"),
                typeText ? QStringLiteral("no msecs") : QStringLiteral("no type"));
            m_xml.skip();
            return;
        }
        m_xml.checkAttributes([this] { return where(); }, eventAttributes);
        if (!E::eventTypeFromKey(*typeText, m_type)) {
            add(Finding::Warning, QStringLiteral("a known kind of event"), quoted(*typeText));
            m_xml.skip();
            return;
        }
        m_typeText = *typeText;
        m_times.start = msecsText->toInt(&m_hasTime);
        if (!m_hasTime)
            add(Finding::Error, QStringLiteral("msecs, ") + kindText(Kind::Integer),
                quoted(*msecsText));
        countStanding();
        checkParameters();
        if (m_hasTime && !m_xml.isOver())
            checkTimes();
    }

    void countStanding()
    {
        if (m_type == E::CprSessionInfo)
            ++m_infos;
        else if (m_type == E::CprSessionStatistics)
            ++m_statistics;
        else if (m_type == E::CprSessionScore)
            ++m_scores;
    }

    void checkParameters()
    {
        const EventSchema &schema = schemaOf(m_type);
        Parameters held;
        while (m_xml.nextChild()) {
            if (m_xml.name() == QLatin1String("param")) {
                checkParameter(schema, held);
                m_xml.skipEmpty();
            } else {
                add(Finding::Error, QStringLiteral("the element param; readers end the list here"),
                    quoted(m_xml.name().toString()));
                m_xml.skip();
            }
        }
        const Parameters missing = schema.expected & ~held;
        if (missing.none() || m_xml.isOver())
            return;
        QStringList keys;
        for (std::size_t i = 0; i < parameterCount; ++i) {
            if (missing.test(i))
                keys.append(E::parameterKey(static_cast<E::ParameterType>(i)));
        }
        add(Finding::Warning, QStringLiteral("every measurement"),
            QStringLiteral("no ") + keys.join(QLatin1String(", ")));
    }

    void checkParameter(const EventSchema &schema, Parameters &held)
    {
        const std::optional<QString> key = m_xml.attribute("type");
        const std::optional<QString> value = m_xml.attribute("value");
        if (!key || !value) {
            add(Finding::Error, QStringLiteral("a param with type and value"),
                key ? quoted(*key) + QStringLiteral(" without a value")
                    : QStringLiteral("one without a type"));
            return;
        }
        const auto here = [&] { return whereParameter(*key); };
        E::ParameterType parameter{};
        if (!E::parameterFromKey(*key, parameter)) {
            add(Finding::Warning, QStringLiteral("a known parameter"), quoted(*key));
            return;
        }
        m_xml.checkAttributes(here, parameterAttributes);
        const auto index = static_cast<std::size_t>(parameter);
        if (held.test(index)) {
            m_xml.addIn(Finding::Warning, here, QStringLiteral("the parameter once"),
                        QStringLiteral("another; the last one counts"));
        }
        held.set(index);

        const Kind kind = schema.kinds[index];
        if (kind == Kind::Unknown) {
            m_xml.addIn(Finding::Warning, here, QStringLiteral("a measurement of this event"),
                        QStringLiteral("one that the event does not have"));
            return;
        }
        checkUnits(here, parameter);
        if (!fits(*value, kind)) {
            m_xml.addIn(Finding::Error, here, kindText(kind), quoted(*value));
            return;
        }
        if (kind == Kind::Enumeration)
            checkEnumeration(here, parameter, value->toInt());
        takeTime(parameter, value->toInt());
    }

    template <typename Element> void checkUnits(Element here, E::ParameterType parameter)
    {
        static const QMetaEnum units = QMetaEnum::fromType<E::ParameterUnit>();
        const E::ParameterUnit unit = E::parameterUnit.value(parameter, E::none);
        const auto expected = QLatin1String(units.valueToKey(unit));
        const std::optional<QString> found = m_xml.attribute("units");
        if (found && *found != expected) {
            m_xml.addIn(Finding::Error, here, QStringLiteral("the units ") + expected,
                        quoted(*found));
        } else if (!found && unit != E::none) {
            m_xml.addIn(Finding::Warning, here, QStringLiteral("the units ") + expected,
                        QStringLiteral("none"));
        }
    }

    template <typename Element>
    void checkEnumeration(Element here, E::ParameterType parameter, int value)
    {
        const auto *row =
            std::find_if(enumerations.begin(), enumerations.end(),
                         [&](const EnumerationRow &each) { return each.parameter == parameter; });
        if (row != enumerations.end() && !row->has(value)) {
            m_xml.addIn(row->isManikins ? Finding::Warning : Finding::Error, here,
                        QStringLiteral("a value of the enumeration"), QString::number(value));
        }
    }

    void takeTime(E::ParameterType parameter, int value)
    {
        switch (parameter) {
        case E::endTime:
            m_times.end = value;
            break;
        case E::compPeakTime:
        case E::ventPeakTime:
            m_times.peak = value;
            break;
        case E::compInactivity:
            m_times.pauseSecs = value;
            break;
        case E::totalTime:
            if (m_type == E::CprSessionInfo)
                m_totalTime = value;
            break;
        default:
            break;
        }
    }

    void checkTimes()
    {
        const bool isCompression = m_type == E::CprCompEvent;
        const bool isVentilation = m_type == E::CprVentEvent;
        const bool isPause = m_type == E::CprInactivityCPR;
        const qint64 start = m_times.start;
        qint64 end = start;
        if (isPause)
            end = start + qint64(m_times.pauseSecs) * msecsPerSecond;
        else if ((isCompression || isVentilation) && m_times.end)
            end = *m_times.end;
        if (end < start) {
            add(Finding::Error, QStringLiteral("an end not before the start"),
                QStringLiteral("%1 ms").arg(end));
            end = start;
        } else if ((isCompression || isVentilation) && m_times.peak) {
            const bool hasEnd = m_times.end.has_value();
            if (*m_times.peak < start || (hasEnd && *m_times.peak > end)) {
                add(Finding::Error, QStringLiteral("a peak between start and end"),
                    QStringLiteral("%1 ms").arg(*m_times.peak));
            }
        }
        if (m_type == E::CprSessionInfo || m_type == E::CprSessionStatistics
            || m_type == E::CprSessionScore) {
            return;
        }

        // Readers drop it, so it is no neighbour of the next event either.
        if (isPause && m_previous && m_previous->type == E::CprInactivityCPR
            && m_previous->end > start) {
            add(Finding::Warning,
                QStringLiteral("a pause that begins after the pause before it; readers drop it"),
                QStringLiteral("the pause before it ends at %1 ms").arg(m_previous->end));
            return;
        }
        checkOrder(latestEnd(isVentilation, isPause, end));
        m_previous = {m_type, start, end};
    }

    // How long the event can have lasted when the next one was listed.
    qint64 latestEnd(bool isVentilation, bool isPause, qint64 end) const
    {
        constexpr qint64 longestPeakToEnd = 65535; // 16 bits in the manikin's message
        if (isVentilation && !m_times.end)
            return m_times.peak.value_or(end) + longestPeakToEnd;
        // A pause that was cut keeps its whole seconds only.
        return isPause ? end + msecsPerSecond : end;
    }

    void checkOrder(qint64 latest)
    {
        // A session that was cut to its total time has cut the last pause, but keeps the events
        // behind it.
        if (!m_previous || m_previous->start >= m_coveredMs)
            return;
        if (m_times.start < m_previous->start && latest <= m_previous->start) {
            add(Finding::Error, QStringLiteral("events in the order of time"),
                QStringLiteral("an event that has ended when the one before it starts, at %1 ms")
                    .arg(m_previous->start));
        }
    }

    XmlMember &m_xml;
    MemberReport &m_report;
    qint64 m_coveredMs;
    int m_number = 0; // of the current event, from 1
    E::EventType m_type{};
    QString m_typeText;
    bool m_hasTime = false;
    EventTimes m_times;
    std::optional<Listed> m_previous;
    qint64 m_infos = 0;
    qint64 m_statistics = 0;
    qint64 m_scores = 0;
    int m_totalTime = 0;
};

// What the description of one wave says, as far as other members can be compared with it.
struct WaveDescription {
    std::optional<int> length; // samples
    int samplePeriod = 0; // ms; 0 when it is not known
};

struct WaveAttribute {
    const char *name;
    Kind kind;
};

class WavesCheck {
public:
    explicit WavesCheck(XmlMember &xml) : m_xml(xml) { }

    void run()
    {
        if (!m_xml.nextChild())
            return;
        if (m_xml.name() != QLatin1String("waveFormList")) {
            m_xml.add(Finding::Error, {}, QStringLiteral("the root element waveFormList"),
                      quoted(m_xml.name().toString()));
            m_xml.finish();
            return;
        }
        std::size_t index = 0;
        while (m_xml.nextChild()) {
            if (m_xml.name() == QLatin1String("waveForm") && index < descriptions.size()) {
                checkWaveForm(index++);
                continue;
            }
            // The reader looks for the two descriptions one behind the other.
            m_xml.add(index < descriptions.size() ? Finding::Error : Finding::Warning, {},
                      QStringLiteral("two elements waveForm, the compressions' first"),
                      quoted(m_xml.name().toString()));
            m_xml.skip();
        }
        if (index < descriptions.size() && !m_xml.isOver()) {
            m_xml.add(Finding::Error, QStringLiteral("waveFormList"),
                      QStringLiteral("two elements waveForm"), QString::number(index));
        }
        m_xml.finish();
    }

    std::array<WaveDescription, 2> descriptions; // compressions, ventilations

private:
    // clang-format off
    static constexpr std::array<WaveAttribute, 5> formAttributes = {{
        {"msecs",           Kind::Integer},
        {"type",            Kind::Text},
        {"bitsPerSample",   Kind::Integer},
        {"sampleRate",      Kind::Integer},
        {"length",          Kind::Integer},
    }};
    static constexpr std::array<WaveAttribute, 6> scaleAttributes = {{
        {"lsbValue",        Kind::Number},
        {"scaleUnits",      Kind::Text},
        {"scaleUnitsPerMM", Kind::Number},
        {"scaleMax",        Kind::Number},
        {"scaleMin",        Kind::Number},
        {"offset",          Kind::Number},
    }};
    static constexpr std::array<WaveAttribute, 1> fileAttributes = {{
        {"fileName",        Kind::Text},
    }};
    // clang-format on
    static constexpr std::array types{"comp", "vent"};
    static constexpr std::array files{"COMP.WV", "VENT.WV"};

    QString where(const char *element) const
    {
        return QStringLiteral("waveForm %1, %2")
            .arg(QLatin1String(types[m_index]), QLatin1String(element));
    }
    void add(Finding::Severity severity, const char *element, const QString &expected,
             const QString &found)
    {
        m_xml.add(severity, where(element), expected, found);
    }

    // Whether each attribute is there and fits; others are unknown.
    template <std::size_t N>
    void checkAttributes(const char *element, const std::array<WaveAttribute, N> &rows)
    {
        std::array<const char *, N> known{};
        for (std::size_t i = 0; i < N; ++i) {
            known[i] = rows[i].name;
            const std::optional<QString> text = m_xml.attribute(rows[i].name);
            const auto here = QString::fromLatin1(rows[i].name);
            if (!text)
                add(Finding::Error, element, QStringLiteral("the attribute ") + here,
                    QStringLiteral("none"));
            else if (!fits(*text, rows[i].kind))
                add(Finding::Error, element, here + QStringLiteral(", ") + kindText(rows[i].kind),
                    quoted(*text));
        }
        m_xml.checkAttributes([&] { return where(element); }, known);
    }

    // The attribute has to be this text, if it is there.
    void checkText(const char *element, const char *attribute, const QString &expected)
    {
        const std::optional<QString> text = m_xml.attribute(attribute);
        if (text && *text != expected) {
            add(Finding::Error, element,
                QStringLiteral("%1 \"%2\"").arg(QLatin1String(attribute), expected), quoted(*text));
        }
    }

    void checkWaveForm(std::size_t index)
    {
        m_index = index;
        WaveDescription &description = descriptions[index];
        constexpr const char *form = "waveForm";
        checkAttributes(form, formAttributes);
        checkText(form, "type", QString::fromLatin1(types[index]));
        checkText(form, "bitsPerSample", QString::number(8 * bytesPerSample));
        if (const std::optional<QString> text = m_xml.attribute("sampleRate")) {
            bool ok = false;
            const int rate = text->toInt(&ok);
            if (ok && (rate < 1 || rate > msecsPerSecond))
                add(Finding::Error, form, QStringLiteral("sampleRate, 1 to 1000 per second"),
                    quoted(*text));
            else if (ok)
                description.samplePeriod = msecsPerSecond / rate;
        }
        if (const std::optional<QString> text = m_xml.attribute("length")) {
            bool ok = false;
            const int length = text->toInt(&ok);
            if (ok)
                description.length = length;
        }

        int scales = 0;
        int externalFiles = 0;
        while (m_xml.nextChild()) {
            if (m_xml.name() == QLatin1String("scale")) {
                ++scales;
                checkAttributes("scale", scaleAttributes);
                checkUnit();
                m_xml.skipEmpty();
            } else if (m_xml.name() == QLatin1String("externalFile")) {
                ++externalFiles;
                checkAttributes("externalFile", fileAttributes);
                checkText("externalFile", "fileName", QString::fromLatin1(files[index]));
                m_xml.skipEmpty();
            } else {
                add(Finding::Warning, form, QStringLiteral("scale and externalFile only"),
                    quoted(m_xml.name().toString()));
                m_xml.skip();
            }
        }
        if (m_xml.isOver())
            return;
        if (scales != 1)
            add(Finding::Error, form, QStringLiteral("one scale"), QString::number(scales));
        if (externalFiles != 1)
            add(Finding::Error, form, QStringLiteral("one externalFile"),
                QString::number(externalFiles));
    }

    void checkUnit()
    {
        const std::optional<QString> unit = m_xml.attribute("scaleUnits");
        const auto units = QMetaEnum::fromType<CPRWaveformInfo::ScaleUnit>();
        if (unit && units.keyToValue(unit->toLatin1().constData()) < 0)
            add(Finding::Error, "scale", QStringLiteral("scaleUnits, a known unit"), quoted(*unit));
    }

    XmlMember &m_xml;
    std::size_t m_index = 0;
};

class GuidelinesCheck {
public:
    explicit GuidelinesCheck(XmlMember &xml) : m_xml(xml)
    {
        const QMetaObject &object = CPRGuidelines::staticMetaObject;
        for (int i = object.propertyOffset(); i < object.propertyCount(); ++i)
            m_values.insert(QString::fromLatin1(object.property(i).name()),
                            {kindOf(object.property(i)), false});
    }

    void run()
    {
        if (!m_xml.nextChild())
            return;
        if (m_xml.name() != QLatin1String("GuideLineSettings")
            && m_xml.name() != QLatin1String("guidelines")) {
            m_xml.add(Finding::Error, {}, QStringLiteral("the root element GuideLineSettings"),
                      quoted(m_xml.name().toString()));
            m_xml.finish();
            return;
        }
        while (m_xml.nextChild()) {
            checkValue();
            m_xml.skipEmpty();
        }
        if (m_xml.isOver())
            return;
        QStringList missing;
        for (auto it = m_values.cbegin(); it != m_values.cend(); ++it) {
            if (!it->isHeld)
                missing.append(it.key());
        }
        if (!missing.isEmpty()) {
            m_xml.add(Finding::Warning, QStringLiteral("GuideLineSettings"),
                      QStringLiteral("every guideline value"),
                      QStringLiteral("no ") + missing.join(QLatin1String(", ")));
        }
        m_xml.finish();
    }

private:
    struct Value {
        Kind kind;
        bool isHeld;
    };
    static constexpr std::array attributes{"value", "unit"};

    void checkValue()
    {
        const QString name = m_xml.name().toString();
        const auto here = [&] { return name; };
        const auto known = m_values.find(name);
        if (known == m_values.end()) {
            m_xml.add(Finding::Warning, {}, QStringLiteral("a known guideline value"),
                      quoted(name));
            return;
        }
        m_xml.checkAttributes(here, attributes);
        if (known->isHeld) {
            m_xml.addIn(Finding::Warning, here, QStringLiteral("the value once"),
                        QStringLiteral("another; the last one counts"));
        }
        known->isHeld = true;

        const std::optional<QString> text = m_xml.attribute("value");
        if (!text) {
            m_xml.addIn(Finding::Error, here, QStringLiteral("the attribute value"),
                        QStringLiteral("none"));
        } else if (!fits(*text, known->kind)) {
            m_xml.addIn(Finding::Error, here, kindText(known->kind), quoted(*text));
        } else {
            checkSetting(name, text->toInt());
        }
        static const QMetaEnum units = QMetaEnum::fromType<CPRDataBase::ParameterUnit>();
        const auto unit = QLatin1String(
            units.valueToKey(CPRDataBase::parameterUnit.value(name, CPRDataBase::none)));
        const std::optional<QString> unitText = m_xml.attribute("unit");
        if (!unitText || *unitText != unit) {
            m_xml.addIn(unitText ? Finding::Error : Finding::Warning, here,
                        QStringLiteral("the unit ") + unit,
                        unitText ? quoted(*unitText) : QStringLiteral("none"));
        }
    }

    // The manikin's own value, which a newer manikin may know more of.
    void checkSetting(const QString &name, int value)
    {
        const bool isTooDeep = name == QLatin1String("CompressionTooDeepSetting");
        const bool isUsage = name == QLatin1String("PreVentilationsUsage");
        if ((isTooDeep && !isKey<CPRGuidelines::CompTooDeepSetting>(value))
            || (isUsage && !isKey<CPRGuidelines::PreventilationUsageEnum>(value))) {
            m_xml.add(Finding::Warning, name, QStringLiteral("a value of the enumeration"),
                      QString::number(value));
        }
    }

    XmlMember &m_xml;
    QMap<QString, Value> m_values;
};

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

QString memberName(MemberIndex index)
{
    return QString::fromLatin1(members[index].name);
}

class SessionCheck {
public:
    SessionCheck(FindingList &list, QuaZip &zip, std::function<void(qint64, qint64)> advance)
        : m_list(list), m_zip(zip), m_advance(std::move(advance))
    {
    }

    void run()
    {
        listMembers();
        read(Waves, [this](MemberReader &reader, MemberReport &report) {
            XmlMember xml(reader, report);
            WavesCheck check(xml);
            check.run();
            m_descriptions = check.descriptions;
        });
        checkWave(Compressions);
        checkWave(Ventilations);
        checkWavesTogether();
        read(Events, [this](MemberReader &reader, MemberReport &report) {
            XmlMember xml(reader, report);
            EventListCheck check(xml, report, coveredMs(Compressions));
            check.run();
            checkTotalTime(report, check.totalTime());
        });
        read(Guidelines, [](MemberReader &reader, MemberReport &report) {
            XmlMember xml(reader, report);
            GuidelinesCheck(xml).run();
        });
    }

private:
    // Finds the place of each member in the archive's directory.
    void listMembers()
    {
        MemberReport archive(m_list, QString());
        std::array<int, members.size()> counts{};
        int entry = 0;
        for (bool more = m_zip.goToFirstFile(); more; more = m_zip.goToNextFile(), ++entry) {
            if (entry == maxEntries) {
                archive.error(QStringLiteral("at most %1 members").arg(maxEntries),
                              QStringLiteral("more; the rest is not looked at"));
                break;
            }
            QuaZipFileInfo64 info;
            if (!m_zip.getCurrentFileInfo(&info))
                break;
            const auto *row = std::find_if(members.begin(), members.end(), [&](const MemberRow &r) {
                return info.name == QLatin1String(r.name);
            });
            if (row != members.end()) {
                if (counts[row->index]++ == 0) {
                    m_entries[row->index] = entry;
                    m_total += static_cast<qint64>(
                        qMin(info.uncompressedSize, static_cast<quint64>(row->limit)));
                }
            } else if (info.name != QLatin1String("CPR/")) {
                archive.add(Finding::Warning, QStringLiteral("a session's members only"),
                            quoted(info.name));
            }
        }
        if (const int error = m_zip.getZipError()) {
            archive.error(QStringLiteral("a directory of %1 members").arg(m_zip.getEntriesCount()),
                          QStringLiteral("zip error %1 at member %2").arg(error).arg(entry + 1));
        }
        for (const MemberRow &row : members) {
            if (const int count = counts[row.index]; count != 1) {
                MemberReport(m_list, memberName(row.index))
                    .error(QStringLiteral("the member once"),
                           count == 0 ? QStringLiteral("none")
                                      : QStringLiteral("%1; the first is checked").arg(count));
            }
        }
    }

    // Calls check(reader, report) for the member, when it is there and can be opened.
    template <typename Check> bool read(MemberIndex index, Check check)
    {
        const int entry = m_entries[index];
        if (entry < 0)
            return false;
        MemberReport report(m_list, memberName(index));
        bool found = m_zip.goToFirstFile();
        for (int i = 0; found && i < entry; ++i)
            found = m_zip.goToNextFile();
        MemberReader reader(m_zip, report, [this](qint64 bytes) {
            m_done += bytes;
            m_advance(m_done, m_total);
        });
        if (!found || !reader.open(members[index].limit))
            return false;
        check(reader, report);
        reader.finish();
        return !reader.isDamaged();
    }

    WaveDescription &description(MemberIndex wave) { return m_descriptions[wave - Compressions]; }
    std::optional<qint64> &samples(MemberIndex wave) { return m_samples[wave - Compressions]; }

    // How much time the samples cover, when that is known.
    std::optional<qint64> coveredMs(MemberIndex wave)
    {
        const int period = description(wave).samplePeriod;
        if (!samples(wave) || period == 0)
            return std::nullopt;
        return *samples(wave) * period;
    }

    void checkWave(MemberIndex wave)
    {
        const bool isWhole = read(wave, [this, wave](MemberReader &reader, MemberReport &report) {
            reader.finish();
            const qint64 bytes = reader.position();
            samples(wave) = bytes / bytesPerSample;
            if (bytes % bytesPerSample != 0 && !reader.isDamaged()) {
                report.errorAtByte(bytes - 1,
                                   QStringLiteral("two bytes of sample %1").arg(*samples(wave)),
                                   QStringLiteral("one"));
            }
        });
        if (!isWhole)
            samples(wave).reset(); // what cannot be read has been reported
        if (!samples(wave))
            return;
        MemberReport report(m_list, memberName(wave));
        if (const std::optional<int> length = description(wave).length;
            length && *length != *samples(wave)) {
            report.error(QStringLiteral("%1 samples, as described").arg(*length),
                         QString::number(*samples(wave)));
        }
        if (const std::optional<qint64> covered = coveredMs(wave);
            covered && *covered > maxSessionMs) {
            report.error(QStringLiteral("at most 24 hours"),
                         QStringLiteral("%1 s").arg(*covered / msecsPerSecond));
        }
    }

    void checkWavesTogether()
    {
        const std::optional<qint64> compressions = coveredMs(Compressions);
        const std::optional<qint64> ventilations = coveredMs(Ventilations);
        // A manikin without one of the two sends nothing of it.
        if (!compressions || !ventilations || *compressions == 0 || *ventilations == 0)
            return;
        if (qAbs(*compressions - *ventilations) > maxWaveDifferenceMs) {
            MemberReport(m_list, memberName(Ventilations))
                .add(Finding::Warning,
                     QStringLiteral("about as long as the compressions, %1 ms").arg(*compressions),
                     QStringLiteral("%1 ms").arg(*ventilations));
        }
    }

    void checkTotalTime(MemberReport &report, int totalSecs)
    {
        const std::optional<qint64> covered = coveredMs(Compressions);
        // Without statistics of the manikin no total time is stored.
        if (!covered || totalSecs == 0)
            return;
        const qint64 totalMs = qint64(totalSecs) * msecsPerSecond;
        if (qAbs(totalMs - *covered) > maxTimeDifferenceMs) {
            report.add(Finding::Warning,
                       QStringLiteral("a totalTime about as long as the compression wave, %1 ms")
                           .arg(*covered),
                       QStringLiteral("%1 s").arg(totalSecs));
        }
    }

    FindingList &m_list;
    QuaZip &m_zip;
    std::function<void(qint64, qint64)> m_advance;
    std::array<int, members.size()> m_entries{-1, -1, -1, -1, -1};
    qint64 m_done = 0;
    qint64 m_total = 0;
    std::array<WaveDescription, 2> m_descriptions;
    std::array<std::optional<qint64>, 2> m_samples;
};

// What the zip library lets pass but other readers, and recovery, do not: the record at the end of
// the file, and the header before each member, which names the member as the directory does.
class HeaderCheck {
public:
    HeaderCheck(FindingList &list, const QString &name) : m_list(list), m_file(name) { }

    void run()
    {
        if (!m_file.open(QIODevice::ReadOnly))
            return;
        MemberReport archive(m_list, QString());
        const qint64 end = endRecord();
        if (end < 0) {
            archive.error(QStringLiteral("the end of the directory at the end of the file"),
                          QStringLiteral("none; is the file cut short?"));
            return;
        }
        const QByteArray record = at(end, endRecordSize);
        const qint64 size = number<quint32>(record, 12);
        const qint64 offset = number<quint32>(record, 16);
        if (offset == std::numeric_limits<quint32>::max())
            return; // as in archives above 4 GB, which no session needs
        const qint64 before = end - size - offset;
        if (before != 0) {
            archive.add(Finding::Warning, QStringLiteral("an archive from the first byte on"),
                        QStringLiteral("one that is off by %1 bytes").arg(before));
        }
        const int entries = qMin<int>(number<quint16>(record, 10), maxEntries);
        qint64 entry = end - size;
        for (int i = 0; i < entries; ++i) {
            const QByteArray header = at(entry, directoryHeaderSize);
            if (!header.startsWith("PK\x01\x02"))
                return; // told by the zip library
            const int nameSize = number<quint16>(header, 28);
            checkName(at(entry + directoryHeaderSize, nameSize),
                      before + number<quint32>(header, 42));
            entry += directoryHeaderSize + nameSize + number<quint16>(header, 30)
                + number<quint16>(header, 32);
        }
    }

private:
    static constexpr int endRecordSize = 22;
    static constexpr int directoryHeaderSize = 46;
    static constexpr int memberHeaderSize = 30;

    // The bytes, or none when they do not lie in the file.
    QByteArray at(qint64 position, qint64 size)
    {
        if (position < 0 || !m_file.seek(position))
            return {};
        const QByteArray bytes = m_file.read(size);
        return bytes.size() == size ? bytes : QByteArray();
    }

    template <typename T> static T number(const QByteArray &bytes, int index)
    {
        return index + int(sizeof(T)) <= bytes.size() ? qFromLittleEndian<T>(bytes.data() + index)
                                                      : T(0);
    }

    // Where the record starts that reaches, with its comment, to the end of the file; -1 for none.
    qint64 endRecord()
    {
        constexpr qint64 longest = endRecordSize + std::numeric_limits<quint16>::max();
        const qint64 begin = qMax<qint64>(0, m_file.size() - longest);
        const QByteArray tail = at(begin, m_file.size() - begin);
        for (int i = tail.size() - endRecordSize; i >= 0; --i) {
            if (tail.mid(i, 4) == "PK\x05\x06"
                && i + endRecordSize + number<quint16>(tail, i + 20) == tail.size()) {
                return begin + i;
            }
        }
        return -1;
    }

    void checkName(const QByteArray &name, qint64 position)
    {
        const QByteArray header = at(position, memberHeaderSize);
        const QByteArray found = at(position + memberHeaderSize, number<quint16>(header, 26));
        if (header.startsWith("PK\x03\x04") && found != name) {
            MemberReport(m_list, QString())
                .error(QStringLiteral("the name %1 in the member's header")
                           .arg(quoted(QString::fromUtf8(name))),
                       quoted(QString::fromUtf8(found)));
        }
    }

    FindingList &m_list;
    QFile m_file;
};

QString severityText(Finding::Severity severity)
{
    return severity == Finding::Error ? QStringLiteral("error") : QStringLiteral("warning");
}

QString counted(qint64 count, const QString &what)
{
    if (count == 0)
        return QStringLiteral("no %1s").arg(what);
    return QStringLiteral("%1 %2%3").arg(count).arg(what,
                                                    count == 1 ? QString() : QStringLiteral("s"));
}

} // namespace

QString Finding::toText() const
{
    QString text = severityText(severity) + QStringLiteral(": ");
    text += member.isEmpty() ? QStringLiteral("archive") : member;
    if (line > 0)
        text += QStringLiteral(", line %1, column %2").arg(line).arg(column);
    if (byte >= 0)
        text += QStringLiteral(", byte %1").arg(byte);
    if (!element.isEmpty())
        text += QStringLiteral(", ") + element;
    return text + QStringLiteral(": expected ") + expected + QStringLiteral("; found ") + found;
}

QJsonObject Finding::toJson() const
{
    QJsonObject object{
        {QStringLiteral("severity"), severityText(severity)},
        {QStringLiteral("member"), member},
        {QStringLiteral("expected"), expected},
        {QStringLiteral("found"), found},
    };
    if (line > 0) {
        object.insert(QStringLiteral("line"), line);
        object.insert(QStringLiteral("column"), column);
    }
    if (byte >= 0)
        object.insert(QStringLiteral("byte"), byte);
    if (!element.isEmpty())
        object.insert(QStringLiteral("element"), element);
    return object;
}

QString FindingList::toText() const
{
    QString text;
    for (const Finding &finding : m_findings)
        text += finding.toText() + QLatin1Char('\n');
    text += counted(m_errors, QStringLiteral("error")) + QStringLiteral(", ")
        + counted(m_warnings, QStringLiteral("warning"));
    if (leftOut() > 0)
        text += QStringLiteral("; only the first %1 are shown").arg(m_findings.size());
    return text + QLatin1Char('\n');
}

QJsonObject FindingList::toJson() const
{
    QJsonArray findings;
    for (const Finding &finding : m_findings)
        findings.append(finding.toJson());
    return {
        {QStringLiteral("file"), m_file},        {QStringLiteral("findings"), findings},
        {QStringLiteral("errors"), m_errors},    {QStringLiteral("warnings"), m_warnings},
        {QStringLiteral("left_out"), leftOut()},
    };
}

namespace ArchiveCheck {

QString whyNoArchive(const QString &name)
{
    const QFileInfo info(name);
    if (!info.exists())
        return QStringLiteral("%1 does not exist").arg(name);
    if (info.isDir())
        return QStringLiteral("%1 is a directory, not a session archive").arg(name);
    if (!info.isFile())
        return QStringLiteral("%1 is no regular file").arg(name);
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1 cannot be read: %2").arg(name, file.errorString());
    if (file.size() == 0)
        return QStringLiteral("%1 is empty").arg(name);
    if (QuaZip zip(name); zip.open(QuaZip::mdUnzip))
        return QString();
    if (file.peek(2) == "PK")
        return QStringLiteral("%1 is a damaged archive: its directory, at the end, is missing or "
                              "broken; is the file cut short?")
            .arg(name);
    return QStringLiteral("%1 is no session archive").arg(name);
}

FindingList run(const QString &name, const std::function<void(qint64, qint64)> &advance)
{
    FindingList list(name);
    if (const QString reason = whyNoArchive(name); !reason.isEmpty()) {
        MemberReport(list, QString()).error(QStringLiteral("a session archive"), reason);
        return list;
    }
    QuaZip zip(name);
    HeaderCheck(list, name).run();
    if (zip.open(QuaZip::mdUnzip))
        SessionCheck(list, zip, advance).run();
    return list;
}

} // namespace ArchiveCheck
