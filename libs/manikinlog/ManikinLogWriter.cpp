// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/ManikinLogWriter.h"

#include "manikinlog/ManikinLogReader.h"

#include <QIODevice>
#include <QMetaEnum>

namespace manikinlog {

namespace {

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

} // namespace

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
    const QByteArray text =
        std::visit([&error](const auto &entry) { return toText(entry, error); }, record.entry);
    if (!error.isEmpty())
        return fail(error);

    const QByteArray line = QByteArray::number(record.msecs) + ' ' + text;
    if (line.size() > ManikinLogReader::maxLineLength)
        return fail(QStringLiteral("the record needs a line of more than %1 bytes")
                        .arg(ManikinLogReader::maxLineLength));
    if (!writeLine(line))
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
