// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLOG_MANIKINLOGWRITER_H
#define MANIKINLOG_MANIKINLOGWRITER_H

#include "manikinlog/ManikinLogRecord.h"

#include <QByteArray>
#include <QString>

class QIODevice;

namespace manikinlog {

/// Writes a recorded log in the form that ManikinLogReader reads; reading gives back the records
/// as they were written. What could not be read back is not written.
class ManikinLogWriter {
public:
    /// \a device is open for writing and is not owned. The log's first line is written at once, so
    /// that a log without records is a log as well.
    explicit ManikinLogWriter(QIODevice *device);
    /// Goes on with a log whose last record has the time \a msecs; writes no first line.
    ManikinLogWriter(QIODevice *device, qint64 msecs) : m_device(device), m_msecs(msecs) { }
    ManikinLogWriter(const ManikinLogWriter &) = delete;
    ManikinLogWriter &operator=(const ManikinLogWriter &) = delete;

    /// Writes one record. Gives false for a record that the log cannot hold: an earlier time than
    /// the record before it, or what no line can hold, see RecordText::text(); the next record can
    /// still be written. Gives false also when the device refuses, and from then on
    /// always, since the log may end in half a line. A device with a buffer may refuse only when
    /// it is flushed.
    bool write(const Record &record);

    /// Why write() last gave false; empty as long as it did not.
    QString errorString() const { return m_errorString; }

private:
    bool writeLine(QByteArray line);
    bool fail(const QString &reason);

    QIODevice *m_device; // not owned
    QString m_errorString;
    qint64 m_msecs = 0; // time of the last record
    bool m_isDeviceUsable = true;
};

} // namespace manikinlog

#endif
