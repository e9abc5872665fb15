// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/SessionJournal.h"

#include "manikinlog/ManikinLogReader.h"

#include <QDateTime>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace manikinlog {

namespace {

// The disk has the rest of the second to write the records.
constexpr int syncIntervalMs = 800;
// A call of the operating system costs as much as playing the record. A manikin's packets come
// every 20 ms, so this saves nothing live, but much when a log is played as fast as it goes.
constexpr int handOverIntervalMs = 5;

bool isHeld(QLockFile &lock)
{
    return !lock.tryLock(0) && lock.error() == QLockFile::LockFailedError;
}

QString whyNoLock(const QLockFile &lock, const QString &journal)
{
    if (lock.error() != QLockFile::LockFailedError)
        return QStringLiteral("%1 cannot be created; is the directory there and writable?")
            .arg(journal);
    qint64 process = 0;
    QString host;
    QString program;
    lock.getLockInfo(&process, &host, &program);
    return QStringLiteral("%1 is being written by process %2, %3; wait until it ends, or choose "
                          "another name for the session")
        .arg(journal, QString::number(process), program);
}

// More than the first line. It may be no journal at all, but it must not be thrown away.
bool holdsSession(const QFileInfo &journal)
{
    return journal.size() > qint64(sizeof ManikinLogReader::firstLine);
}

// Until its folder is on the disk a new file can be lost, whatever its content.
void syncFolderOf(const QString &file)
{
    const QByteArray folder = QFile::encodeName(QFileInfo(file).path());
    const int descriptor = ::open(folder.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

} // namespace

SessionJournal::SessionJournal(QObject *parent) : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(syncIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &SessionJournal::sync);
}

SessionJournal::~SessionJournal()
{
    close();
}

QString SessionJournal::nameFor(const QString &target)
{
    return target + QStringLiteral(".journal");
}

std::unique_ptr<QLockFile> SessionJournal::lockFor(const QString &target)
{
    auto lock = std::make_unique<QLockFile>(nameFor(target) + QStringLiteral(".lock"));
    // A session may last for hours: a lock is stale when its process is gone, never by age.
    lock->setStaleLockTime(0);
    return lock;
}

bool SessionJournal::isRecoverable(const QString &target)
{
    const QFileInfo journal(nameFor(target));
    return journal.isFile() && holdsSession(journal) && !isBeingWritten(target);
}

bool SessionJournal::isBeingWritten(const QString &target)
{
    return QFileInfo::exists(nameFor(target)) && isHeld(*lockFor(target));
}

bool SessionJournal::open(const QString &target, LeftJournal left)
{
    close();
    m_errorString.clear();
    const QString name = nameFor(target);
    auto lock = lockFor(target);
    if (!lock->tryLock(0))
        return fail(whyNoLock(*lock, name));
    const QFileInfo old(name);
    if (old.exists() && !old.isFile())
        return fail(QStringLiteral("%1 is no regular file").arg(name));
    if (left == LeftJournal::Keep && old.exists() && holdsSession(old))
        return fail(QStringLiteral("%1 holds a session that was not saved; recover it, or say that "
                                   "it can be discarded")
                        .arg(name));
    m_file.setFileName(name);
    if (create()) {
        m_lock = std::move(lock);
        return true;
    }
    close();
    return false;
}

bool SessionJournal::create()
{
    // Without a buffer, which would write its content again after it was written in part.
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return giveUp(m_file.errorString());
    m_pending.setData(QByteArray());
    m_pending.open(QIODevice::WriteOnly);
    m_writer.emplace(&m_pending);
    m_hasRecords = m_isRecording = false;
    m_state = CPRData::CPR_UNINITIALIZED;
    m_oldest.start();
    if (!sync())
        return false;
    syncFolderOf(m_file.fileName());
    return true;
}

bool SessionJournal::add(const Record &record)
{
    if (!m_writer)
        return false;
    if (needsStart(record) && !write({record.msecs, Start{QDateTime::currentDateTimeUtc()}}))
        return false;
    if (!write(record))
        return false;
    if (!m_oldest.isValid()) {
        m_oldest.start();
        m_timer.start();
    }
    if (m_handedOver.hasExpired(handOverIntervalMs) && !handOver())
        return false;
    syncWhenDue();
    return true;
}

bool SessionJournal::write(const Record &record)
{
    return m_writer->write(record)
        || fail(QStringLiteral("%1: a record is left out: %2")
                    .arg(m_file.fileName(), m_writer->errorString()));
}

bool SessionJournal::needsStart(const Record &record)
{
    m_isRecording = m_isRecording || std::holds_alternative<Start>(record.entry);
    const bool isFirst = !std::exchange(m_hasRecords, true);
    bool isStart = false;
    if (const auto *state = std::get_if<State>(&record.entry)) {
        isStart = m_state == CPRData::CPR_INIT && state->state == CPRData::CPR_START;
        m_state = state->state;
    }
    return !m_isRecording && (isFirst || isStart);
}

bool SessionJournal::handOver()
{
    const QByteArray &lines = m_pending.data();
    const qint64 end = m_file.pos();
    if (m_file.write(lines) != lines.size()) {
        const QString reason = m_file.errorString();
        m_file.resize(end);
        return giveUp(reason);
    }
    m_pending.buffer().clear();
    m_pending.seek(0);
    m_handedOver.start();
    return true;
}

bool SessionJournal::sync()
{
    if (!m_writer)
        return false;
    m_timer.stop();
    if (!m_oldest.isValid())
        return true;
    if (!handOver())
        return false;
    if (::fdatasync(m_file.handle()) != 0)
        return giveUp(QString::fromLocal8Bit(std::strerror(errno)));
    m_oldest.invalidate();
    return true;
}

void SessionJournal::syncWhenDue()
{
    if (m_oldest.isValid() && m_oldest.hasExpired(syncIntervalMs))
        sync();
}

bool SessionJournal::remove()
{
    if (!m_lock)
        return false;
    m_writer.reset(); // nothing has to reach the disk any more
    m_file.remove();
    const QString error = m_file.error() == QFile::NoError ? QString() : m_file.errorString();
    close();
    return error.isEmpty()
        || fail(QStringLiteral("%1 cannot be removed: %2").arg(m_file.fileName(), error));
}

bool SessionJournal::fail(const QString &reason)
{
    m_errorString = reason;
    if (m_lock) // open() and remove() report by their result
        Q_EMIT failed(reason);
    return false;
}

/// What has been written stays, and the lock with it; it is good for recovery up to that point.
bool SessionJournal::giveUp(const QString &reason)
{
    m_writer.reset();
    m_timer.stop();
    m_oldest.invalidate();
    return fail(QStringLiteral("%1 cannot be written: %2").arg(m_file.fileName(), reason));
}

void SessionJournal::close()
{
    if (m_writer)
        sync();
    m_writer.reset();
    m_timer.stop();
    m_oldest.invalidate();
    m_pending.close();
    m_file.close();
    m_lock.reset();
}

} // namespace manikinlog
