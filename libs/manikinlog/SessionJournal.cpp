// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/SessionJournal.h"

#include "private/FileCalls.h"
#include "private/Limits.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFileInfo>
#include <QSignalBlocker>
#include <QThread>

#include <cerrno>
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

// A descriptor of the journal, with its lock.
struct Claimed {
    int file = -1;
    bool isHeld = false; // by somebody else
};

// Another program may look at the lock, which takes some µs.
bool lockPatiently(int file)
{
    constexpr int attempts = 5;
    constexpr unsigned long waitMs = 5;
    for (int attempt = 1; !FileCalls::lock(file); ++attempt) {
        if (attempt == attempts)
            return false;
        QThread::msleep(waitMs);
    }
    return true;
}

Claimed claimed(const QString &name)
{
    Claimed result{FileCalls::openExisting(QFile::encodeName(name)), false};
    if (result.file >= 0 && !lockPatiently(result.file)) {
        ::close(result.file);
        result = {-1, true};
    }
    return result;
}

QString whyNotClaimed(const Claimed &claimed, const QString &name)
{
    if (claimed.isHeld)
        return QCoreApplication::translate(
                   "manikinlog",
                   "%1 is in use by another program; wait until that ends, or choose "
                   "another name for the session")
            .arg(name);
    return QCoreApplication::translate(
               "manikinlog",
               "%1 cannot be read: %2; remove it, or choose another name for the session")
        .arg(name, FileCalls::reason());
}

QString notRegular(const QString &name)
{
    return QCoreApplication::translate(
               "manikinlog",
               "%1 is no regular file; remove it, or choose another name for the "
               "session")
        .arg(name);
}

bool isRegular(const QFileInfo &journal)
{
    return journal.isFile() && !journal.isSymLink();
}

// More than the first line. It may be no journal at all, but it must not be thrown away.
bool holdsSession(const QFileInfo &journal)
{
    return journal.size() > qint64(sizeof ManikinLogReader::firstLine);
}

// Who may read the archive may read its journal, and nobody else.
unsigned permissionsOf(const QString &target)
{
    struct stat info { };
    const bool isThere = ::stat(QFile::encodeName(target).constData(), &info) == 0;
    return isThere ? (info.st_mode & 0666U) | 0600U : 0666U;
}

} // namespace

SessionJournal::SessionJournal(QObject *parent) : QObject(parent)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(syncIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &SessionJournal::requestSync);
}

SessionJournal::~SessionJournal()
{
    blockSignals(true); // who would listen is going, too
    close();
}

QString SessionJournal::nameFor(const QString &target)
{
    return FileCalls::resolved(target) + QStringLiteral(".journal");
}

std::unique_ptr<QFile> SessionJournal::claim(const QString &name, QString *error)
{
    QString reason = notRegular(name);
    if (isRegular(QFileInfo(name))) {
        const Claimed journal = claimed(name);
        auto file = std::make_unique<QFile>(name);
        if (journal.file >= 0
            && file->open(journal.file, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
            return file;
        reason = whyNotClaimed(journal, name);
    }
    if (error)
        *error = reason;
    return nullptr;
}

bool SessionJournal::isRecoverable(const QString &target)
{
    const QFileInfo journal(nameFor(target));
    return isRegular(journal) && holdsSession(journal) && !isBeingWritten(target);
}

bool SessionJournal::isBeingWritten(const QString &target)
{
    const Claimed journal = claimed(nameFor(target));
    ::close(journal.file);
    return journal.isHeld;
}

bool SessionJournal::open(const QString &target, LeftJournal left)
{
    close();
    const QSignalBlocker reportsByResult(this);
    m_errorString.clear();
    m_file.setFileName(nameFor(target));
    if (!makeFile(left, permissionsOf(target)))
        return false;
    if (create())
        return true;
    const QString reason = m_errorString;
    remove();
    return fail(reason);
}

// Makes the file and locks it.
bool SessionJournal::makeFile(LeftJournal left, unsigned permissions)
{
    const QByteArray name = QFile::encodeName(m_file.fileName());
    while (removeLeft(left)) {
        const int file = FileCalls::repeated([&] {
            return ::open(name.constData(), O_CREAT | O_EXCL | O_WRONLY | O_NOFOLLOW | O_CLOEXEC,
                          permissions);
        });
        if (file < 0 && errno == EEXIST)
            continue;
        if (file < 0)
            return fail(QCoreApplication::translate("manikinlog", "%1 cannot be created: %2")
                            .arg(m_file.fileName(), FileCalls::reason()));
        ::close(file);
        if (!openFile())
            return false;
        // Another program may have found the file, and removed it, before it was locked.
        if (lockPatiently(m_file.handle()) && FileCalls::isNamed(m_file.handle(), name))
            return true;
        m_file.close();
    }
    return false;
}

// Without a buffer, which would write its content again after it was written in part.
bool SessionJournal::openFile()
{
    return m_file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)
        || fail(QCoreApplication::translate("manikinlog", "%1 cannot be opened: %2")
                    .arg(m_file.fileName(), m_file.errorString()));
}

bool SessionJournal::resume(const QString &target)
{
    close();
    const QSignalBlocker reportsByResult(this);
    m_errorString.clear();
    const QString name = nameFor(target);
    m_file.setFileName(name);
    if (!isRegular(QFileInfo(name)))
        return fail(notRegular(name));
    if (!openFile())
        return false;
    if (!lockPatiently(m_file.handle())
        || !FileCalls::isNamed(m_file.handle(), QFile::encodeName(name))) {
        m_file.close();
        return fail(whyNotClaimed({-1, true}, name));
    }
    m_left.emplace(&m_file, name, ManikinLogReader::Damage::IsSkipped);
    m_hasRecords = m_isRecording = false;
    m_state = CPRData::CPR_UNINITIALIZED;
    m_leftMsecs = 0;
    m_isFolderSynced = false;
    return true;
}

ManikinLogReader::Result SessionJournal::readLeft(Record &record)
{
    if (!m_left || m_writer)
        return ManikinLogReader::Result::End;
    const auto result = m_left->read(record);
    if (result == ManikinLogReader::Result::Record) {
        m_hasRecords = true;
        m_leftMsecs = record.msecs;
        lookAt(record);
    } else if (result == ManikinLogReader::Result::End) {
        append();
    } else {
        fail(m_left->errorString());
    }
    return result;
}

// Goes on behind the last line that has an end.
void SessionJournal::append()
{
    qint64 end = m_file.size();
    QByteArray block;
    while (end > 0 && !block.contains('\n')) {
        const qint64 begin = qMax<qint64>(0, end - ManikinLogReader::maxLineLength);
        m_file.seek(begin);
        block = m_file.read(end - begin);
        end = begin + block.lastIndexOf('\n') + 1;
    }
    m_pending.setData(QByteArray());
    m_pending.open(QIODevice::WriteOnly);
    if (end > 0)
        m_writer.emplace(&m_pending, m_leftMsecs);
    else
        m_writer.emplace(&m_pending);
    m_syncedBytes = end;
    m_handedBytes = m_addedRecords = m_syncedRecords = 0;
    m_oldest.start();
    if (m_file.resize(end))
        m_timer.start();
    else
        waitForDisk(m_file.errorString());
}

// Makes room for the file, if nobody needs what is there.
bool SessionJournal::removeLeft(LeftJournal left)
{
    const QString name = m_file.fileName();
    const QFileInfo old(name);
    if (!old.exists() && !old.isSymLink())
        return true;
    if (!isRegular(old))
        return fail(notRegular(name));
    const Claimed journal = claimed(name);
    if (journal.file < 0)
        return fail(whyNotClaimed(journal, name));
    const bool isNeeded = left == LeftJournal::Keep && holdsSession(old);
    const bool isRemoved = !isNeeded && ::unlink(QFile::encodeName(name).constData()) == 0;
    FileCalls::closeQuietly(journal.file);
    if (isRemoved)
        return true;
    return fail(isNeeded ? QCoreApplication::translate(
                               "manikinlog",
                               "%1 holds a session that was not saved; recover it, or say "
                               "that it can be discarded")
                               .arg(name)
                         : QCoreApplication::translate("manikinlog", "%1 cannot be removed: %2")
                               .arg(name, FileCalls::reason()));
}

bool SessionJournal::create()
{
    m_syncedBytes = 0;
    m_handedBytes = m_addedRecords = m_syncedRecords = 0;
    m_pending.setData(QByteArray());
    m_pending.open(QIODevice::WriteOnly);
    m_writer.emplace(&m_pending);
    m_hasRecords = m_isRecording = false;
    m_state = CPRData::CPR_UNINITIALIZED;
    m_oldest.start();
    m_isFolderSynced = false;
    if (m_sync) {
        requestSync();
        return !m_isWaiting;
    }
    if (!sync())
        return false;
    m_isFolderSynced = FileCalls::syncFolderOf(m_file.fileName());
    return m_isFolderSynced
        || fail(QCoreApplication::translate("manikinlog", "%1 cannot be written: %2")
                    .arg(m_file.fileName(), FileCalls::reason()));
}

bool SessionJournal::add(const Record &record)
{
    if (!m_writer)
        return false;
    if (needsStart(record) && !write({record.msecs, Start{QDateTime::currentDateTimeUtc()}}))
        return false;
    if (!write(record))
        return false;
    ++m_addedRecords;
    if (!m_oldest.isValid()) {
        m_oldest.start();
        m_timer.start();
    }
    if (!m_isWaiting && m_handedOver.hasExpired(handOverIntervalMs))
        handOver();
    syncWhenDue();
    return isOpen();
}

bool SessionJournal::write(const Record &record)
{
    return m_writer->write(record)
        || fail(QCoreApplication::translate("manikinlog", "%1: a record is left out: %2")
                    .arg(m_file.fileName(), m_writer->errorString()));
}

bool SessionJournal::needsStart(const Record &record)
{
    const bool isFirst = !std::exchange(m_hasRecords, true);
    const bool wasReady = m_state == CPRData::CPR_INIT;
    lookAt(record);
    const auto *const state = std::get_if<State>(&record.entry);
    const bool isStart = wasReady && state && state->state == CPRData::CPR_START;
    return !m_isRecording && (isFirst || isStart);
}

void SessionJournal::lookAt(const Record &record)
{
    m_isRecording = m_isRecording || std::holds_alternative<Start>(record.entry);
    if (const auto *state = std::get_if<State>(&record.entry))
        m_state = state->state;
}

// Gives the lines to the operating system. Of what it does not take no half line stays.
bool SessionJournal::handOver()
{
    const QByteArray &lines = m_pending.data();
    while (m_handedBytes < lines.size()) {
        const auto count = FileCalls::repeated([&] {
            return ::pwrite(m_file.handle(), lines.constData() + m_handedBytes,
                            std::size_t(lines.size() - m_handedBytes),
                            m_syncedBytes + m_handedBytes);
        });
        if (count <= 0) {
            const QString reason = FileCalls::reason();
            m_handedBytes =
                m_handedBytes > 0 ? lines.lastIndexOf('\n', int(m_handedBytes) - 1) + 1 : 0;
            m_file.resize(m_syncedBytes + m_handedBytes);
            waitForDisk(reason);
            return false;
        }
        m_handedBytes += count;
    }
    m_handedOver.start();
    return true;
}

bool SessionJournal::sync()
{
    if (!m_writer)
        return false;
    m_timer.stop();
    if (!m_oldest.isValid() && m_ticket == 0)
        return true;
    cancelRequest();
    if (!handOver())
        return false;
    if (FileCalls::repeated([this] { return ::fdatasync(m_file.handle()); }) != 0) {
        const QString reason = FileCalls::reason();
        m_handedBytes = 0; // the operating system may have dropped it
        waitForDisk(reason);
        return false;
    }
    m_oldest.invalidate();
    setSynced(m_handedBytes, m_addedRecords);
    return true;
}

// The disk has the first \a bytes of m_pending, and so \a records in all.
void SessionJournal::setSynced(qint64 bytes, qint64 records)
{
    m_syncedBytes += bytes;
    m_handedBytes -= bytes;
    m_pending.buffer() = m_pending.buffer().mid(int(bytes));
    m_pending.seek(m_pending.size());
    m_syncedRecords = records;
    if (m_isWaiting) {
        m_isWaiting = false;
        m_errorString.clear();
        Q_EMIT resumed();
    }
    Q_EMIT synced();
}

void SessionJournal::requestSync()
{
    if (!m_sync) {
        sync();
        return;
    }
    m_timer.stop();
    m_isSyncDue = m_ticket != 0;
    if (!m_writer || m_isSyncDue || !m_oldest.isValid() || !handOver())
        return;
    m_requestedBytes = m_handedBytes;
    m_requestedRecords = m_addedRecords;
    m_ticket = m_sync->request(m_file.handle(), m_isFolderSynced ? QString() : m_file.fileName(),
                               [this](int error) { finishRequest(error); });
    if (m_ticket == 0)
        sync();
    else
        m_oldest.invalidate();
}

void SessionJournal::finishRequest(int error)
{
    m_ticket = 0;
    const bool isSyncDue = std::exchange(m_isSyncDue, false);
    if (error != 0) {
        errno = error;
        m_handedBytes = 0; // the operating system may have dropped it
        waitForDisk(FileCalls::reason());
        return;
    }
    m_isFolderSynced = true;
    setSynced(m_requestedBytes, m_requestedRecords);
    if (isSyncDue)
        requestSync();
}

void SessionJournal::syncWhenDue()
{
    if (m_oldest.isValid() && m_oldest.hasExpired(syncIntervalMs))
        requestSync();
}

// Whether the disk gets what was requested nobody hears then: all of it is handed over again.
void SessionJournal::cancelRequest()
{
    if (m_sync)
        m_sync->cancel(m_ticket);
    if (m_ticket != 0)
        m_handedBytes = 0;
    m_ticket = 0;
    m_isSyncDue = false;
}

// The lines stay in memory until the next attempt, which is about all of them: a request that is
// under way must not say that the disk works again.
void SessionJournal::waitForDisk(const QString &reason)
{
    cancelRequest();
    m_oldest.start();
    m_timer.start();
    const bool isFirst = !m_isWaiting;
    m_isWaiting = true;
    const bool isTooMuch = m_pending.size() > Limits::maxWaitingBytes;
    if (isTooMuch)
        end();
    if (!isFirst && !isTooMuch)
        return;
    QString text = QCoreApplication::translate("manikinlog", "%1 cannot be written: %2")
                       .arg(m_file.fileName(), reason);
    if (isTooMuch)
        text +=
            QCoreApplication::translate("manikinlog", "; it ends here, as too many records wait");
    else if (m_syncedBytes > 0)
        text += QCoreApplication::translate("manikinlog", "; its records wait in memory");
    fail(text);
}

bool SessionJournal::remove()
{
    if (!m_file.isOpen())
        return false;
    const QByteArray name = QFile::encodeName(m_file.fileName());
    end(); // nothing has to reach the disk any more
    const bool isRemoved =
        !FileCalls::isNamed(m_file.handle(), name) || ::unlink(name.constData()) == 0;
    if (!isRemoved)
        fail(QCoreApplication::translate("manikinlog", "%1 cannot be removed: %2")
                 .arg(m_file.fileName(), FileCalls::reason()));
    close();
    return isRemoved;
}

bool SessionJournal::fail(const QString &reason)
{
    m_errorString = reason;
    Q_EMIT failed(reason);
    return false;
}

// What has been written stays, and the lock with it; it is good for recovery up to that point.
void SessionJournal::end()
{
    m_writer.reset();
    cancelRequest();
    m_timer.stop();
    m_oldest.invalidate();
    m_isWaiting = false;
    m_pending.close();
    m_pending.setData(QByteArray());
}

void SessionJournal::close()
{
    if (m_writer)
        sync();
    end();
    m_left.reset();
    if (m_file.isOpen())
        FileCalls::unlock(m_file.handle());
    m_file.close();
}

} // namespace manikinlog
