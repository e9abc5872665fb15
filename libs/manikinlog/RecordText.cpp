// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/RecordText.h"

#include <QMetaEnum>

#include <algorithm>
#include <charconv>
#include <utility>

namespace manikinlog::RecordText {

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
        if (kind == "stream")
            return parseEntry<Stream>(record);
        if (kind == "batch")
            return parseEntry<Batch>(record);
        return fail(
            "msg, header, wave, state, learner, start, manikin, remark, unremark, stream or batch",
            kind);
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

    bool parseFields(Stream &stream)
    {
        return parseToken(stream.manikin, "a manikin's id")
            && parseToken(stream.sender, "a sender's id")
            && parseToken(stream.session, "a session's id");
    }

    bool parseFields(Batch &batch) { return parseNumber(batch.number, "a batch's number"); }

    bool parseToken(QString &token, const char *what)
    {
        const QByteArray field = next();
        token = QString::fromUtf8(field);
        return isToken(token) || fail(what, field);
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

// The text of an entry. Where the log cannot hold the entry, nothing and the reason in \a error.

QByteArray toText(const Message &message, QString &)
{
    QByteArray text = "msg " + QByteArray::number(message.identifier) + ' '
        + QByteArray::number(message.sequence);
    if (!message.content.isEmpty())
        text += ' ' + message.content.toHex();
    return text;
}

QByteArray toText(const WaveHeader &header, QString &)
{
    return "header " + QByteArray::number(header.sequence);
}

QByteArray toText(const WaveSample &sample, QString &)
{
    return "wave " + QByteArray::number(static_cast<uint>(sample.waveType)) + ' '
        + QByteArray::number(sample.value) + ' ' + QByteArray::number(sample.sequence);
}

QByteArray toText(const State &state, QString &error)
{
    const char *const key = QMetaEnum::fromType<CPRData::CprState>().valueToKey(state.state);
    if (!key) {
        error = QStringLiteral("%1 is no session state").arg(static_cast<int>(state.state));
        return QByteArray();
    }
    return QByteArray("state ") + key;
}

QByteArray restOfLine(const QString &text, const char *what, QString &error)
{
    const QByteArray bytes = text.toUtf8();
    if (bytes.isEmpty())
        error = QStringLiteral("the %1 is empty");
    else if (bytes.contains('\n') || bytes.contains('\r'))
        error = QStringLiteral("the %1 contains a line break");
    else if (QString::fromUtf8(bytes) != text)
        error = QStringLiteral("the %1 cannot be written as UTF-8");
    else
        return bytes;
    error = error.arg(QLatin1String(what));
    return QByteArray();
}

QByteArray toText(const Learner &learner, QString &error)
{
    return "learner " + restOfLine(learner.name, "learner's name", error);
}

QByteArray toText(const Start &start, QString &error)
{
    const bool isWholeSecond = start.time.time().msec() == 0;
    const QString time =
        start.time.toUTC().toString(isWholeSecond ? Qt::ISODate : Qt::ISODateWithMs);
    if (time.isEmpty())
        error = QStringLiteral("the start has no time that can be written");
    return "start " + time.toLatin1();
}

QByteArray toText(const ManikinName &manikin, QString &error)
{
    return "manikin " + restOfLine(manikin.name, "manikin's name", error);
}

QByteArray toText(const Remark &remark, QString &error)
{
    return "remark " + QByteArray::number(remark.msecs) + ' '
        + restOfLine(remark.text, "remark", error);
}

QByteArray toText(const RemarkRemoval &removal, QString &error)
{
    return "unremark " + QByteArray::number(removal.msecs) + ' '
        + restOfLine(removal.text, "remark", error);
}

QByteArray toText(const Stream &stream, QString &error)
{
    for (const QString &id : {stream.manikin, stream.sender, stream.session}) {
        if (!isToken(id))
            error = QStringLiteral("\"%1\" is no id").arg(id);
    }
    const QString fields = stream.manikin + QLatin1Char(' ') + stream.sender + QLatin1Char(' ');
    return "stream " + fields.toLatin1() + stream.session.toLatin1();
}

QByteArray toText(const Batch &batch, QString &)
{
    return "batch " + QByteArray::number(batch.number);
}

} // namespace

bool isToken(const QString &text)
{
    const auto isPlain = [](QChar c) {
        return (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
            || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
            || (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('.')
            || c == QLatin1Char('_') || c == QLatin1Char('-');
    };
    return !text.isEmpty() && text.size() <= maxTokenLength
        && std::all_of(text.begin(), text.end(), isPlain) && text != QLatin1String(".")
        && text != QLatin1String("..");
}

std::optional<Record> parse(const QByteArray &line, qint64 minMsecs, QString *error)
{
    LineParser parser(line);
    Record record;
    if (line.size() <= maxLineLength && parser.parse(record, minMsecs))
        return record;
    if (error && line.size() <= maxLineLength)
        *error = mismatch(parser.expected(), parser.found());
    else if (error)
        *error = mismatch(QStringLiteral("a line of at most %1 bytes").arg(maxLineLength), line);
    return std::nullopt;
}

std::optional<QByteArray> text(const Record &record, QString *error)
{
    QString reason;
    QByteArray line =
        std::visit([&reason](const auto &entry) { return toText(entry, reason); }, record.entry);
    line.prepend(QByteArray::number(record.msecs) + ' ');
    if (record.msecs < 0)
        reason = QStringLiteral("the time %1 ms is negative").arg(record.msecs);
    else if (reason.isEmpty() && line.size() > maxLineLength)
        reason = QStringLiteral("the record needs a line of more than %1 bytes").arg(maxLineLength);
    if (reason.isEmpty())
        return line;
    if (error)
        *error = reason;
    return std::nullopt;
}

QString mismatch(const QString &expected, const QByteArray &found)
{
    return QStringLiteral("expected %1, found \"%2\"").arg(expected, shortened(found));
}

} // namespace manikinlog::RecordText
