// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlink/LinkText.h"

#include "manikinlog/RecordText.h"
#include "private/PrintableText.h"

#include <QList>

#include <charconv>
#include <iterator>
#include <utility>

namespace manikinlink::LinkText {

namespace {

constexpr char format[] = "cprlink 1 ";

constexpr std::pair<const char *, Control::Kind> controls[] = {{"beat", Control::Kind::Beat},
                                                               {"lost", Control::Kind::Lost},
                                                               {"found", Control::Kind::Found},
                                                               {"bye", Control::Kind::Bye}};

constexpr std::pair<const char *, Answer::Kind> answers[] = {{"welcome", Answer::Kind::Welcome},
                                                             {"ack", Answer::Kind::Ack},
                                                             {"start", Answer::Kind::Start},
                                                             {"stop", Answer::Kind::Stop},
                                                             {"refused", Answer::Kind::Refused}};

template <typename List, typename Kind> QByteArray wordOf(const List &words, Kind kind)
{
    for (const auto &[word, meaning] : words) {
        if (meaning == kind)
            return word;
    }
    return QByteArray();
}

std::nullopt_t refuse(Error *error, const char *expected, const QByteArray &found)
{
    if (error)
        *error = manikinlog::RecordText::mismatch(QLatin1String(expected), found);
    return std::nullopt;
}

template <typename Number> bool toNumber(const QByteArray &digits, Number &number)
{
    const char *const last = digits.constData() + digits.size();
    const auto [end, problem] = std::from_chars(digits.constData(), last, number);
    return problem == std::errc() && end == last && number >= 0;
}

bool isTooLong(const QByteArray &line)
{
    return line.size() > manikinlog::RecordText::maxLineLength;
}

} // namespace

QByteArray firstLine(const manikinlog::Stream &stream)
{
    return format + stream.manikin.toLatin1() + ' ' + stream.sender.toLatin1() + ' '
        + stream.session.toLatin1();
}

std::optional<manikinlog::Stream> parseFirstLine(const QByteArray &line, Error *error)
{
    constexpr char expected[] = "\"cprlink 1 MANIKIN SENDER SESSION\"";
    if (!line.startsWith(format) || isTooLong(line))
        return refuse(error, expected, line);
    const QList<QByteArray> fields = line.mid(int(std::size(format)) - 1).split(' ');
    constexpr int fieldCount = 3;
    if (fields.size() != fieldCount)
        return refuse(error, expected, line);
    for (const QByteArray &field : fields) {
        if (!manikinlog::RecordText::isToken(QString::fromUtf8(field)))
            return refuse(error, "an id of 1 to 64 letters, digits, dots, underscores and hyphens",
                          field);
    }
    return manikinlog::Stream{QString::fromLatin1(fields[0]), QString::fromLatin1(fields[1]),
                              QString::fromLatin1(fields[2])};
}

QByteArray text(const Control &control)
{
    return QByteArray::number(control.msecs) + ' ' + wordOf(controls, control.kind);
}

std::optional<Line> parseLine(const QByteArray &line, Error *error)
{
    const int blank = line.indexOf(' ');
    // A control line is its time and one word; all else is left to the records.
    for (const auto &[word, kind] : controls) {
        if (blank < 0 || qstrcmp(line.constData() + blank + 1, word) != 0)
            continue;
        Control control{0, kind};
        if (!toNumber(line.left(blank), control.msecs))
            return refuse(error, "a time of at least 0 ms", line.left(blank));
        return control;
    }
    std::optional<manikinlog::Record> record = manikinlog::RecordText::parse(line, 0, error);
    if (!record)
        return std::nullopt;
    const auto *const batch = std::get_if<manikinlog::Batch>(&record->entry);
    if ((batch && batch->number == 0) || std::holds_alternative<manikinlog::Stream>(record->entry))
        return refuse(error, "a sender's record", line);
    return Line{std::move(*record)};
}

bool isComment(const QByteArray &line)
{
    return line.isEmpty() || line.startsWith('#');
}

QByteArray text(const Answer &answer)
{
    QByteArray line = wordOf(answers, answer.kind);
    if (answer.kind == Answer::Kind::Welcome || answer.kind == Answer::Kind::Ack)
        line += ' ' + QByteArray::number(answer.batch);
    if (answer.kind == Answer::Kind::Refused && !answer.reason.isEmpty())
        line +=
            ' ' + PrintableText::escaped(answer.reason.left(PrintableText::maxShownUnits)).toUtf8();
    return line;
}

std::optional<Answer> parseAnswer(const QByteArray &line, Error *error)
{
    constexpr char expected[] = "welcome, ack, start, stop or refused";
    if (isTooLong(line))
        return refuse(error, expected, line);
    const int blank = line.indexOf(' ');
    const QByteArray first = blank < 0 ? line : line.left(blank);
    const QByteArray rest = blank < 0 ? QByteArray() : line.mid(blank + 1);
    for (const auto &[word, kind] : answers) {
        if (first != word)
            continue;
        Answer answer;
        answer.kind = kind;
        const bool hasNumber = kind == Answer::Kind::Welcome || kind == Answer::Kind::Ack;
        if (hasNumber && !toNumber(rest, answer.batch))
            return refuse(error, "a batch's number", rest);
        if (kind == Answer::Kind::Refused)
            answer.reason = PrintableText::escaped(QString::fromUtf8(rest));
        else if (!hasNumber && blank >= 0)
            return refuse(error, "the end of the line", rest);
        return answer;
    }
    return refuse(error, expected, first);
}

} // namespace manikinlink::LinkText
