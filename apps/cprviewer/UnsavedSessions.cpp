// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "UnsavedSessions.h"

#include <manikinlog/SessionJournal.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>

using manikinlog::SessionJournal;

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
    QFile::remove(journal());
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
    const QString stem =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    return folder.filePath(
        QStringLiteral("%1-%2.zip").arg(stem).arg(QCoreApplication::applicationPid()));
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
