// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "UnsavedSessions.h"

#include "cprquick/SessionLoader.h"
#include "private/AtomicFile.h"
#include "sessionreview/Figures.h"

#include <manikinlog/ManikinLogReader.h>
#include <manikinlog/SessionJournal.h>

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <tuple>

using cprquick::SessionLoader;
using manikinlog::ManikinLogReader;
using manikinlog::SessionJournal;

namespace {

const QLatin1String noteSuffix(".archive"); // of the file that names the archive of a session

// The whole lines at the begin and at the end of a journal, which may be long: learners come at the
// begin, and the last line has the time. What lies between is left out.
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

// Whether a sender has begun to send the session, and the manikin has not started it. A line that
// is damaged may have been the start.
bool waitsForStart(const QString &target)
{
    const QString name = SessionJournal::nameFor(target);
    QFile journal(name);
    if (!journal.open(QIODevice::ReadOnly))
        return false;
    ManikinLogReader reader(&journal, name, ManikinLogReader::Damage::IsSkipped);
    manikinlog::Record record;
    bool isOfLink = false;
    ManikinLogReader::Result result = reader.read(record);
    for (; result == ManikinLogReader::Result::Record; result = reader.read(record)) {
        isOfLink = isOfLink || std::holds_alternative<manikinlog::Stream>(record.entry);
        const auto *state = std::get_if<manikinlog::State>(&record.entry);
        // The journal of a link says at its begin that it is one.
        if (!isOfLink && !std::holds_alternative<manikinlog::Start>(record.entry))
            return false;
        if (state && state->state == CPRData::CPR_START)
            return false;
    }
    return isOfLink && result == ManikinLogReader::Result::End && reader.skippedLines() == 0;
}

// Whether the archive has all of what the journal has.
bool holdsAllOf(const QString &archive, const QString &journal)
{
    const SessionLoader::Result saved = SessionLoader::loadHere(archive, SessionLoader::Kind::File);
    if (!saved.session || saved.isDamaged)
        return false;
    const SessionLoader::Result left =
        SessionLoader::loadHere(journal, SessionLoader::Kind::Salvaged);
    if (!left.session)
        return false;
    const sessionreview::Figures a = sessionreview::figuresOf(*saved.session);
    const sessionreview::Figures b = sessionreview::figuresOf(*left.session);
    return std::tie(a.learners, a.compressions, a.ventilations, a.pauses)
        == std::tie(b.learners, b.compressions, b.ventilations, b.pauses);
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
        if (SessionJournal::isRecoverable(target) && !waitsForStart(target))
            targets.append(target);
    }
    return targets;
}

void UnsavedSessions::noteSaving(const QString &target, const QString &archive)
{
    if (target.isEmpty())
        return;
    AtomicFile note(target + noteSuffix);
    if (note.open(QIODevice::WriteOnly)) {
        note.write(QFile::encodeName(archive));
        note.finish(); // where that fails, the session may be offered again after a kill
    }
}

void UnsavedSessions::forgetSaving(const QString &target)
{
    if (!target.isEmpty())
        QFile::remove(target + noteSuffix);
}

void UnsavedSessions::removeSaved() const
{
    if (m_folder.isEmpty())
        return;
    const QDir folder(m_folder);
    const QStringList notes =
        folder.entryList({QLatin1Char('*') + QString(noteSuffix)}, QDir::Files);
    for (const QString &note : notes) {
        const QString target = folder.filePath(note.chopped(noteSuffix.size()));
        const std::unique_ptr<LeftSession> left = LeftSession::claim(target);
        if (!left && QFileInfo::exists(SessionJournal::nameFor(target)))
            continue; // another viewer saves it now
        QFile file(folder.filePath(note));
        const QString archive =
            file.open(QIODevice::ReadOnly) ? QFile::decodeName(file.readAll()) : QString();
        if (left && !archive.isEmpty() && holdsAllOf(archive, left->journal()))
            left->remove();
        forgetSaving(target);
    }
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
