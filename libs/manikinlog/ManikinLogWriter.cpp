// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/ManikinLogWriter.h"

#include "manikinlog/ManikinLogReader.h"
#include "manikinlog/RecordText.h"

#include <QIODevice>

namespace manikinlog {

ManikinLogWriter::ManikinLogWriter(QIODevice *device) : m_device(device)
{
    writeLine(ManikinLogReader::firstLine);
}

bool ManikinLogWriter::write(const Record &record)
{
    if (!m_isDeviceUsable)
        return false;
    if (record.msecs < m_msecs)
        return fail(QStringLiteral("the time %1 ms lies before %2 ms")
                        .arg(QString::number(record.msecs), QString::number(m_msecs)));

    QString error;
    const std::optional<QByteArray> line = RecordText::text(record, &error);
    if (!line)
        return fail(error);
    if (!writeLine(*line))
        return false;
    m_msecs = record.msecs;
    return true;
}

bool ManikinLogWriter::writeLine(QByteArray line)
{
    line += '\n';
    m_isDeviceUsable = m_device && m_device->write(line) == line.size();
    return m_isDeviceUsable
        || fail(m_device ? m_device->errorString() : QStringLiteral("no device"));
}

bool ManikinLogWriter::fail(const QString &reason)
{
    m_errorString = reason;
    return false;
}

} // namespace manikinlog
