// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLOG_MANIKINLOGREADER_H
#define MANIKINLOG_MANIKINLOGREADER_H

#include "ManikinLogRecord.h"

#include <QByteArray>
#include <QString>

class QIODevice;

namespace manikinlog {

/// Reads a recorded log record by record.
///
/// A log is UTF-8 text: the first line, then a record a line, each field one blank after the one
/// before. Empty lines and lines that begin with # are skipped.
///
///     cprlog 1
///     <ms> msg <identifier> <sequence> <content bytes as hex, index 0 first>
///     <ms> header <sequence>
///     <ms> wave <wave type> <value> <sequence>
///     <ms> state <CprState key>
///     <ms> learner <name, to the end of the line>
///
/// A message without content ends after its sequence number. Only as much of the log is held in
/// memory as the longest line takes.
class ManikinLogReader {
public:
    enum class Result { Record, End, Error };

    /// The first line: the format and its version.
    static constexpr char firstLine[] = "cprlog 1";
    /// Bytes in a line, its end not counted; a longer line is an error. A message's content may
    /// thus have some 32000 bytes, many times what a manikin can send.
    static constexpr int maximalLineLength = 64 * 1024;

    /// \a device is open for reading and is not owned; \a name stands for it in error messages.
    ManikinLogReader(QIODevice *device, const QString &name);
    ManikinLogReader(const ManikinLogReader &) = delete;
    ManikinLogReader &operator=(const ManikinLogReader &) = delete;

    /// Reads the next record; \a record changes only when there is one. After the end of the log
    /// and after an error every further call gives the same result again.
    Result read(Record &record);

    /// "NAME:LINE: expected WHAT, found "TEXT"", or why the device could not be read; empty as long
    /// as there was no error.
    QString errorString() const { return m_errorString; }

    /// Number of the line read last, counted from 1; 0 before the first.
    qint64 line() const { return m_line; }

private:
    Result readLine(QByteArray &text);
    Result parse(const QByteArray &text, Record &record);
    Result fail(const QString &reason);
    Result failExpecting(const QString &what, const QByteArray &found);

    QIODevice *m_device; // not owned
    QString m_name;
    QString m_errorString;
    QByteArray m_pending; // read from the device, not yet handed out as lines
    qint64 m_line = 0;
    qint64 m_msecs = 0; // time of the last record
    Result m_result = Result::Record;
};

} // namespace manikinlog

#endif
