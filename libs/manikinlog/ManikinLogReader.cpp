// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/ManikinLogReader.h"

#include <QFile>

#include <utility>

namespace manikinlog {

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
    if (text.size() > maxLineLength)
        return failExpecting(QStringLiteral("a line of at most %1 bytes").arg(maxLineLength), text);

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
    QString error;
    std::optional<Record> parsed = RecordText::parse(text, m_msecs, &error);
    if (!parsed) {
        fail(error);
        return Line::Damaged;
    }
    if (!m_hasLineEnd)
        return failExpecting(QStringLiteral("a whole line"), text);
    if (m_damage == Damage::IsError)
        m_msecs = parsed->msecs;
    record = std::move(*parsed);
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
    fail(RecordText::mismatch(what, found));
    return Line::Damaged;
}

} // namespace manikinlog
