// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLINK_LINKTEXT_H
#define MANIKINLINK_LINKTEXT_H

#include "manikinlog/ManikinLogRecord.h"

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <optional>
#include <variant>

/// The lines of a link, without their ends: parse and format. docs/manikin-link.md describes them.
/// Whatever does not parse gives null and, for people, what was expected instead.
namespace manikinlink::LinkText {

using Error = QString;

/// "cprlink 1 <manikin> <sender> <session>". The ids are tokens; see RecordText::isToken().
QByteArray firstLine(const manikinlog::Stream &stream);
/// \a error may be null, here and below.
std::optional<manikinlog::Stream> parseFirstLine(const QByteArray &line, Error *error = nullptr);

/// A sender's line that is no record.
struct Control {
    /// What it says.
    enum class Kind {
        Beat, ///< the sender is alive
        Lost, ///< it has lost its manikin
        Found, ///< the manikin is back
        Bye ///< nothing more comes: the session is whole
    };
    qint64 msecs = 0; ///< ms since the sender's session began, from 0
    Kind kind = Kind::Beat; ///< what it says
};

/// "<ms> beat" and the like.
QByteArray text(const Control &control);

/// What a sender's line behind the first can be.
using Line = std::variant<manikinlog::Record, Control>;

/// A line behind the first: a record, as in a log, or a control line. What only a journal has is
/// refused: "stream", and batch 0. A time before that of the last line is not, since a link must
/// not fail for it.
///
/// Comments are for isComment(), which comes first.
std::optional<Line> parseLine(const QByteArray &line, Error *error = nullptr);
/// The line means nothing: it is empty or begins with #.
bool isComment(const QByteArray &line);

/// A line of the receiver.
struct Answer {
    /// What it says.
    enum class Kind {
        Welcome, ///< go on behind this batch, 0 for from the beginning
        Ack, ///< the batches up to this one are safe
        Start, ///< the session may begin
        Stop, ///< the session should end: send what is left, then bye
        Refused ///< the receiver closes, and says why
    };
    Kind kind = Kind::Welcome; ///< what it says
    quint32 batch = 0; ///< of Welcome and Ack
    QString reason; ///< of Refused, for people; may be empty
};

/// "ack 7" and the like. A reason is cut after 400 characters and made one printable line.
QByteArray text(const Answer &answer);
/// The other way round. Text behind "start" or "stop" is an error. A reason is made one printable
/// line, whoever has sent it.
std::optional<Answer> parseAnswer(const QByteArray &line, Error *error = nullptr);

} // namespace manikinlink::LinkText

#endif
