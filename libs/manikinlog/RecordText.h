// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLOG_RECORDTEXT_H
#define MANIKINLOG_RECORDTEXT_H

#include "manikinlog/ManikinLogRecord.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// A record as a line of text, as recorded logs, journals and links have it; ManikinLogReader.h
/// lists the kinds.
namespace manikinlog::RecordText {

/// Bytes in a line, its end not counted. A message's content may thus have some 32000 bytes, many
/// times what a manikin can send.
constexpr int maxLineLength = 64 * 1024;
/// Characters in an id.
constexpr int maxTokenLength = 64;

/// Whether \a text is an id: letters and digits of ASCII, dots, underscores and hyphens, at most
/// maxTokenLength, and no name of a folder that every folder has.
bool isToken(const QString &text);

/// The record of one \a line without its end. Nothing, and the reason in \a error (may be null),
/// when there is none in it or its time is below \a minMsecs.
std::optional<Record> parse(const QByteArray &line, qint64 minMsecs = 0, QString *error = nullptr);

/// The line of one \a record, without an end. Nothing, and the reason in \a error (may be null),
/// when a line cannot hold it: a negative time, a state without a key, a name or a remark that is
/// empty, has a line break or is no valid text, a stream with something else than ids, a start
/// without a valid time, or more than maxLineLength bytes.
std::optional<QByteArray> text(const Record &record, QString *error = nullptr);

/// "expected WHAT, found "TEXT"". What was \a found is cut to 40 characters and made one printable
/// line, as it can hold anything.
QString mismatch(const QString &expected, const QByteArray &found);

} // namespace manikinlog::RecordText

#endif
