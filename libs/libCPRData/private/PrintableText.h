// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef PRINTABLETEXT_H
#define PRINTABLETEXT_H

#include <QChar>
#include <QString>
#include <QTextBoundaryFinder>
#include <QVector>

#include <algorithm>

/// Texts of names, files and messages, for people. Whoever chose them must not move a terminal's
/// cursor, begin a line that looks like the program's own, turn the order of what stands beside
/// them, or keep a window busy.
namespace PrintableText {

/// Code units that are shown of a text; no line has room for more.
constexpr int maxShownUnits = 400;
/// Marks that are shown over and under one letter. No script needs more, and the time to lay them
/// out grows with the square of their number.
constexpr int maxMarks = 5;

/// False for characters that act instead of being seen.
inline bool isPrintable(uint character)
{
    constexpr uint firstInvisible = 0x7f;
    constexpr uint nonJoiner = 0x200c; // both joiners only shape letters and emoji
    constexpr uint joiner = 0x200d;
    if (character < firstInvisible)
        return character >= ' ';
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Other_Surrogate: // half a character
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    case QChar::Other_Format:
        return character == joiner || character == nonJoiner;
    default:
        return !QChar::isNonCharacter(character); // XML has none
    }
}

/// The character as JSON and programmers write it, \u009b.
inline QString escape(uint character)
{
    constexpr int digits = 4;
    constexpr int base = 16;
    const auto unit = [](uint value) {
        return QStringLiteral("\\u%1").arg(value, digits, base, QLatin1Char('0'));
    };
    return QChar::requiresSurrogates(character)
        ? unit(QChar::highSurrogate(character)) + unit(QChar::lowSurrogate(character))
        : unit(character);
}

/// Adds a character to a text.
inline void append(QString &text, uint character)
{
    if (QChar::requiresSurrogates(character)) {
        text += QChar(QChar::highSurrogate(character));
        text += QChar(QChar::lowSurrogate(character));
    } else {
        text += QChar(static_cast<ushort>(character));
    }
}

/// The text in which every character can be seen: one line, or lines if the breaks and tabs are the
/// program's own. JSON of several lines stays the same JSON.
inline QString escaped(const QString &text, bool hasLines = false)
{
    const auto isLeft = [hasLines](uint character) {
        return isPrintable(character) || (hasLines && (character == '\n' || character == '\t'));
    };
    const auto characters = text.toUcs4();
    if (std::all_of(characters.begin(), characters.end(), isLeft))
        return text;
    QString result;
    for (const uint character : characters) {
        if (isLeft(character))
            append(result, character);
        else
            result += escape(character);
    }
    return result;
}

/// The same for lines.
inline QString escapedLines(const QString &text)
{
    return escaped(text, true);
}

/// The begin of the text as a picture or a window shows it: one line that is quickly laid out, cut
/// between two characters and not between a letter and its marks.
inline QString shown(const QString &text)
{
    QString result;
    int marks = 0;
    for (int i = 0; i < text.size() && result.size() <= maxShownUnits; ++i) {
        const QChar unit = text.at(i);
        uint character = unit.unicode();
        if (unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate())
            character = QChar::surrogateToUcs4(unit, text.at(++i));
        marks = QChar::isMark(character) ? marks + 1 : 0;
        if (marks > maxMarks)
            continue;
        if (isPrintable(character))
            append(result, character);
        else if (QChar::isSpace(character))
            result += QLatin1Char(' ');
        else
            result += escape(character);
    }
    if (result.size() <= maxShownUnits)
        return result;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, result);
    finder.setPosition(maxShownUnits);
    const auto end = finder.isAtBoundary() ? maxShownUnits : finder.toPreviousBoundary();
    return result.left(end) + QChar(0x2026);
}

} // namespace PrintableText

#endif
