// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLOG_MANIKINLOGREADER_H
#define MANIKINLOG_MANIKINLOGREADER_H

#include "manikinlog/ManikinLogRecord.h"
#include "manikinlog/RecordText.h"

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
///     <ms> start <ISO 8601 time in UTC>
///     <ms> manikin <name, to the end of the line>
///     <ms> remark <session time in ms> <text, to the end of the line>
///     <ms> unremark <session time in ms> <text, to the end of the line>
///     <ms> stream <manikin> <sender> <session>
///     <ms> batch <number>
///
/// A message without content ends after its sequence number. Only as much of the log is held in
/// memory as the longest line takes.
class ManikinLogReader {
public:
    /// What read() has found.
    enum class Result {
        Record, ///< a record
        End, ///< the end of the log
        Error ///< a damaged line, or a device that cannot be read; see errorString()
    };
    /// What a damaged line is.
    enum class Damage {
        /// An error that ends the log; so is a last line without an end.
        IsError,
        /// Left out and counted, for what a killed process, a full disk or a flipped bit has left.
        /// Times may decrease: a damaged time must not cost the records behind it.
        IsSkipped
    };

    /// The first line: the format and its version.
    static constexpr char firstLine[] = "cprlog 1";
    /// Whether the file \a name begins as a log does.
    static bool isLog(const QString &name);
    /// Bytes in a line, its end not counted; a longer line is an error.
    static constexpr int maxLineLength = RecordText::maxLineLength;

    /// \a device is open for reading and is not owned (null cannot be read); \a name stands for it
    /// in error messages.
    ManikinLogReader(QIODevice *device, const QString &name, Damage damage = Damage::IsError);
    ManikinLogReader(const ManikinLogReader &) = delete;
    ManikinLogReader &operator=(const ManikinLogReader &) = delete;

    /// Somebody may still write the log: at its end read() gives End, leaves half a line alone, and
    /// goes on once the device has more. Off at first.
    void setGrowing(bool isGrowing) { m_isGrowing = isGrowing; }

    /// Reads the next record; \a record changes only when there is one. After the end of the log,
    /// if that does not grow, and after an error every further call gives the same result again.
    Result read(Record &record);

    /// "NAME:LINE: expected WHAT, found "TEXT"", or why the device could not be read; empty as long
    /// as there was no error.
    QString errorString() const { return m_errorString; }

    /// Whether the log ends before it should: inside a line, or where its device cannot be read any
    /// further. A last line without an end may be half a record that looks like a full one. False
    /// for an error with more lines behind it.
    bool isCut() const { return m_isCut; }

    /// How many damaged lines have been left out.
    qint64 skippedLines() const { return m_skippedLines; }
    /// What errorString() would say of the first of them; empty when there is none.
    QString skippedError() const { return m_skippedError; }

    /// Number of the line read last, counted from 1; 0 before the first.
    qint64 line() const { return m_line; }

private:
    enum class Line { Record, Empty, Damaged };

    Result readLine(QByteArray &text);
    qint64 readMore();
    Line parse(const QByteArray &text, Record &record);
    Line parseRecord(const QByteArray &text, Record &record);
    Result skipDamaged();
    void fail(const QString &reason);
    Line failExpecting(const QString &what, const QByteArray &found);

    QIODevice *m_device; // not owned
    QString m_name;
    Damage m_damage;
    QString m_errorString;
    QString m_skippedError;
    QByteArray m_pending; // read from the device, not yet handed out as lines
    qint64 m_line = 0;
    qint64 m_skippedLines = 0;
    qint64 m_msecs = 0; // time of the last record
    bool m_hasLineEnd = false; // the line read last
    bool m_isCut = false;
    bool m_isGrowing = false;
    Result m_result = Result::Record;
};

} // namespace manikinlog

#endif
