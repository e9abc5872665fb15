// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/ManikinLogReader.h"

#include <QFile>
#include <QMetaEnum>

#include <algorithm>
#include <charconv>
#include <utility>

namespace manikinlog {

namespace {

constexpr int foundTextLength = 40;

bool isHexDigit(char c)
{
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// The start of a line's text, fit to be shown in an error message.
QString shortened(const QByteArray &text)
{
    // Without the dot in front a byte order mark would be dropped and not be seen.
    QString shown = QString::fromUtf8('.' + text).mid(1);
    if (shown.size() > foundTextLength)
        shown = shown.left(foundTextLength) + QLatin1String("...");
    std::replace_if(
        shown.begin(), shown.end(), [](QChar c) { return !c.isPrint() && !c.isSurrogate(); },
        QLatin1Char('?'));
    return shown;
}

/// Parses the fields of one line from left to right. The first field that is not as expected ends
/// it; expected() and found() say what was wrong.
class LineParser {
public:
    explicit LineParser(const QByteArray &line) : m_line(line) { }

    QString expected() const { return m_expected; }
    QByteArray found() const { return m_found; }

    bool parse(Record &record, qint64 minMsecs)
    {
        if (!parseTime(record.msecs, minMsecs))
            return false;
        const QByteArray kind = next();
        if (kind == "msg")
            return parseEntry<Message>(record);
        if (kind == "header")
            return parseEntry<WaveHeader>(record);
        if (kind == "wave")
            return parseEntry<WaveSample>(record);
        if (kind == "state")
            return parseEntry<State>(record);
        if (kind == "learner")
            return parseEntry<Learner>(record);
        if (kind == "start")
            return parseEntry<Start>(record);
        if (kind == "manikin")
            return parseEntry<ManikinName>(record);
        if (kind == "remark")
            return parseEntry<Remark>(record);
        if (kind == "unremark")
            return parseEntry<RemarkRemoval>(record);
        return fail("msg, header, wave, state, learner, start, manikin, remark or unremark", kind);
    }

private:
    template <typename Entry> bool parseEntry(Record &record)
    {
        Entry entry;
        if (!parseFields(entry) || !parseEnd())
            return false;
        record.entry = std::move(entry);
        return true;
    }

    bool parseFields(Message &message)
    {
        return parseNumber(message.identifier, "a message identifier")
            && parseNumber(message.sequence, "a sequence number") && parseContent(message.content);
    }

    bool parseFields(WaveHeader &header)
    {
        return parseNumber(header.sequence, "a sequence number");
    }

    bool parseFields(WaveSample &sample)
    {
        return parseNumber(sample.waveType, "a wave type from 0 to 255")
            && parseNumber(sample.value, "a sample value")
            && parseNumber(sample.sequence, "a sequence number");
    }

    bool parseFields(State &state)
    {
        const auto states = QMetaEnum::fromType<CPRData::CprState>();
        const QByteArray key = next();
        const int value = states.keyToValue(key.constData());
        // The enumerator also finds qualified keys; a log has plain ones.
        if (key != states.valueToKey(value))
            return fail("a session state", key);
        state.state = static_cast<CPRData::CprState>(value);
        return true;
    }

    bool parseFields(Learner &learner)
    {
        return parseName(learner.name, "a learner's name in UTF-8");
    }

    bool parseFields(Start &start)
    {
        const QByteArray field = next();
        start.time = QDateTime::fromString(QString::fromLatin1(field), Qt::ISODateWithMs);
        return (start.time.isValid() && start.time.timeSpec() == Qt::UTC)
            || fail("a time in UTC such as 2026-01-31T09:00:00Z", field);
    }

    bool parseFields(ManikinName &manikin)
    {
        return parseName(manikin.name, "a manikin's name in UTF-8");
    }

    bool parseFields(Remark &remark)
    {
        return parseNumber(remark.msecs, "a session time")
            && parseName(remark.text, "a remark in UTF-8");
    }

    bool parseFields(RemarkRemoval &removal)
    {
        return parseNumber(removal.msecs, "a session time")
            && parseName(removal.text, "a remark in UTF-8");
    }

    bool parseName(QString &name, const char *what)
    {
        const QByteArray field = rest();
        name = QString::fromUtf8(field);
        // Decoding replaces what is not UTF-8 and drops a byte order mark. A carriage return inside
        // would make another line of it for other readers.
        return (!field.isEmpty() && !field.contains('\r') && name.toUtf8() == field)
            || fail(what, field);
    }

    bool parseTime(qint64 &msecs, qint64 minMsecs)
    {
        const QByteArray field = next();
        if (!toNumber(field, msecs) || msecs < minMsecs)
            return fail(QStringLiteral("a time of at least %1 ms").arg(minMsecs), field);
        return true;
    }

    template <typename T> bool parseNumber(T &value, const char *what)
    {
        const QByteArray field = next();
        return toNumber(field, value) || fail(what, field);
    }

    bool parseContent(QByteArray &content)
    {
        if (isAtEnd())
            return true; // a message without content
        const QByteArray digits = next();
        // QByteArray::fromHex passes over whatever is no hex digit.
        if (digits.isEmpty() || digits.size() % 2 != 0
            || !std::all_of(digits.begin(), digits.end(), isHexDigit))
            return fail("content as pairs of hex digits", digits);
        content = QByteArray::fromHex(digits);
        return true;
    }

    bool parseEnd() { return isAtEnd() || fail("the end of the line", rest()); }

    /// Digits with or without a minus, in the range of \a T; no blanks, no plus.
    template <typename T> static bool toNumber(const QByteArray &field, T &value)
    {
        const char *const last = field.constData() + field.size();
        const auto [end, error] = std::from_chars(field.constData(), last, value);
        return error == std::errc() && end == last;
    }

    bool isAtEnd() const { return m_position > m_line.size(); }

    /// The next field, empty when there is none.
    QByteArray next()
    {
        const int blank = m_line.indexOf(' ', m_position);
        return cut(blank < 0 ? m_line.size() : blank);
    }

    QByteArray rest() { return cut(m_line.size()); }

    QByteArray cut(int end)
    {
        const QByteArray field = m_line.mid(m_position, end - m_position);
        m_position = end + 1;
        return field;
    }

    bool fail(const char *expected, const QByteArray &found)
    {
        return fail(QString::fromLatin1(expected), found);
    }

    bool fail(const QString &expected, const QByteArray &found)
    {
        m_expected = expected;
        m_found = found;
        return false;
    }

    QByteArray m_line;
    int m_position = 0;
    QString m_expected;
    QByteArray m_found;
};

} // namespace

ManikinLogReader::ManikinLogReader(QIODevice *device, const QString &name, Damage damage)
    : m_device(device), m_name(name), m_damage(damage)
{
}

bool ManikinLogReader::isLog(const QString &name)
{
    const QByteArray format = QByteArray(firstLine).split(' ').first();
    QFile file(name);
    return file.open(QIODevice::ReadOnly) && file.read(format.size()) == format;
}

ManikinLogReader::Result ManikinLogReader::read(Record &record)
{
    if (m_result == Result::End && m_isGrowing)
        m_result = Result::Record;
    while (m_result == Result::Record) {
        QByteArray text;
        m_result = readLine(text);
        if (m_result != Result::Record)
            break;
        const Line line = parse(text, record);
        if (line == Line::Record)
            break;
        if (line == Line::Damaged)
            m_result = skipDamaged();
    }
    return m_result;
}

/// Hands out the next line without its end. An empty device counts as one empty line, so that it is
/// found to lack the first line. Of a line that is too long only the beginning is handed out.
ManikinLogReader::Result ManikinLogReader::readLine(QByteArray &text)
{
    m_isCut = false;
    int length = -1;
    while ((length = m_pending.indexOf('\n')) < 0 && m_pending.size() <= maxLineLength + 1) {
        const qint64 count = readMore();
        m_isCut = count <= 0;
        if (count < 0) {
            ++m_line;
            fail(QStringLiteral("cannot be read: %1")
                     .arg(m_device ? m_device->errorString() : QStringLiteral("no device")));
            return Result::Error;
        }
        if (count == 0)
            break;
    }
    const bool isHalf = length < 0 && m_pending.size() <= maxLineLength + 1;
    if ((m_pending.isEmpty() && m_line > 0) || (isHalf && m_isGrowing)) {
        m_isCut = false;
        return Result::End;
    }

    ++m_line;
    m_hasLineEnd = length >= 0;
    if (!m_hasLineEnd)
        length = m_pending.size();
    text = m_pending.left(length);
    m_pending.remove(0, length + 1);
    if (text.endsWith('\r'))
        text.chop(1);
    return Result::Record;
}

qint64 ManikinLogReader::readMore()
{
    char chunk[4096];
    const qint64 count = m_device ? m_device->read(chunk, sizeof chunk) : -1;
    m_pending.append(chunk, static_cast<int>(qMax<qint64>(count, 0)));
    return count;
}

ManikinLogReader::Line ManikinLogReader::parse(const QByteArray &text, Record &record)
{
    if (text.size() > maxLineLength) {
        return failExpecting(QStringLiteral("a line of at most %1 bytes").arg(maxLineLength), text);
    }
    if (m_line > 1 && (text.isEmpty() || text.startsWith('#')))
        return Line::Empty;
    if (!m_hasLineEnd && m_damage == Damage::IsSkipped)
        return failExpecting(QStringLiteral("a whole line"), text);
    if (m_line > 1)
        return parseRecord(text, record);
    return text == firstLine
        ? Line::Empty
        : failExpecting(QLatin1Char('"') + QLatin1String(firstLine) + QLatin1Char('"'), text);
}

ManikinLogReader::Line ManikinLogReader::parseRecord(const QByteArray &text, Record &record)
{
    LineParser parser(text);
    Record parsed;
    if (!parser.parse(parsed, m_msecs))
        return failExpecting(parser.expected(), parser.found());
    if (!m_hasLineEnd)
        return failExpecting(QStringLiteral("a whole line"), text);
    if (m_damage == Damage::IsError)
        m_msecs = parsed.msecs;
    record = std::move(parsed);
    return Line::Record;
}

ManikinLogReader::Result ManikinLogReader::skipDamaged()
{
    if (m_damage == Damage::IsError)
        return Result::Error;
    if (m_skippedLines++ == 0)
        m_skippedError = m_errorString;
    m_errorString.clear();
    // The rest of a line that is too long. A device that fails here is reported with the next line.
    int end = -1;
    while (!m_hasLineEnd && (end = m_pending.indexOf('\n')) < 0) {
        m_pending.clear();
        if (readMore() <= 0)
            break;
    }
    m_pending.remove(0, end + 1);
    return Result::Record;
}

void ManikinLogReader::fail(const QString &reason)
{
    m_errorString = QStringLiteral("%1:%2: %3").arg(m_name, QString::number(m_line), reason);
}

ManikinLogReader::Line ManikinLogReader::failExpecting(const QString &what, const QByteArray &found)
{
    fail(QStringLiteral("expected %1, found \"%2\"").arg(what, shortened(found)));
    return Line::Damaged;
}

} // namespace manikinlog
