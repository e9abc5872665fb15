// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "UnsavedSessions.h"

#include <manikinlog/ManikinLogReader.h>
#include <manikinlog/SessionJournal.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

using manikinlog::ManikinLogReader;
using manikinlog::SessionJournal;

namespace {

// The whole lines at the begin and at the end of a journal, which may be long: learners come at the
// begin, and the last line has the time.
QByteArray endsOf(QFile &journal)
{
    constexpr qint64 maxBytes = 256 * 1024;
    QByteArray lines = journal.read(maxBytes);
    if (journal.size() > 2 * maxBytes && journal.seek(journal.size() - maxBytes)) {
        lines.truncate(lines.lastIndexOf('\n') + 1);
        const QByteArray tail = journal.readAll();
        lines += tail.mid(tail.indexOf('\n') + 1);
    } else {
        lines += journal.readAll();
    }
    return lines;
}

} // namespace

LeftSession::LeftSession(const QString &target)
    : m_target(target), m_claimed(SessionJournal::claim(SessionJournal::nameFor(target)))
{
}

std::unique_ptr<LeftSession> LeftSession::claim(const QString &target)
{
    std::unique_ptr<LeftSession> session(new LeftSession(target));
    return session->m_claimed ? std::move(session) : nullptr;
}

QString LeftSession::journal() const
{
    return SessionJournal::nameFor(m_target);
}

void LeftSession::remove()
{
    if (!m_isMoved)
        QFile::remove(journal());
}

void LeftSession::moveTo(const QString &name)
{
    m_isMoved = true;
    QFile::rename(journal(), name);
}

UnsavedSessions::UnsavedSessions(const QString &folder) : m_folder(folder)
{
}

QString UnsavedSessions::newTarget() const
{
    const QDir folder(m_folder);
    if (m_folder.isEmpty())
        return QString();
    folder.mkpath(QStringLiteral(".")); // where that fails, opening the journal tells why
    const QString stem = QStringLiteral("%1-%2").arg(
        QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz")),
        QString::number(QCoreApplication::applicationPid()));
    QString target;
    // A class begins several sessions in the same millisecond.
    for (int number = 1; target.isEmpty() || QFileInfo::exists(SessionJournal::nameFor(target));
         ++number)
        target = folder.filePath(stem + (number > 1 ? QStringLiteral("-%1").arg(number) : QString())
                                 + QStringLiteral(".zip"));
    return target;
}

QString UnsavedSessions::targetOf(const QString &id) const
{
    const QDir folder(m_folder);
    if (m_folder.isEmpty())
        return QString();
    folder.mkpath(QStringLiteral("."));
    return folder.filePath(id + QStringLiteral(".zip"));
}

QStringList UnsavedSessions::left() const
{
    if (m_folder.isEmpty())
        return {};
    const QString suffix = SessionJournal::nameFor(QString());
    const QDir folder(m_folder);
    const QStringList journals =
        folder.entryList({QLatin1Char('*') + suffix}, QDir::Files, QDir::Name | QDir::Reversed);
    QStringList targets;
    for (const QString &journal : journals) {
        const QString target = folder.filePath(journal.chopped(suffix.size()));
        if (SessionJournal::isRecoverable(target))
            targets.append(target);
    }
    return targets;
}

LeftSummary UnsavedSessions::summaryOf(const QString &target)
{
    LeftSummary summary;
    summary.target = target;
    QFile journal(SessionJournal::nameFor(target));
    if (!journal.open(QIODevice::ReadOnly))
        return summary;
    QByteArray lines = endsOf(journal);
    QBuffer buffer(&lines);
    buffer.open(QIODevice::ReadOnly);
    ManikinLogReader reader(&buffer, journal.fileName(), ManikinLogReader::Damage::IsSkipped);
    manikinlog::Record record;
    qint64 startMsecs = 0;
    while (reader.read(record) == ManikinLogReader::Result::Record) {
        summary.msecs = qMax<qint64>(0, record.msecs - startMsecs);
        if (const auto *learner = std::get_if<manikinlog::Learner>(&record.entry);
            learner && !summary.learners.contains(learner->name))
            summary.learners.append(learner->name);
        if (const auto *start = std::get_if<manikinlog::Start>(&record.entry)) {
            summary.start = start->time;
            startMsecs = record.msecs;
        }
    }
    if (!summary.start.isValid())
        summary.start = QFileInfo(journal).lastModified().addMSecs(-summary.msecs);
    return summary;
}
