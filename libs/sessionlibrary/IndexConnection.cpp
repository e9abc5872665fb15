// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionlibrary/IndexConnection.h"

#include "private/FileCalls.h"
#include "sessionlibrary/ArchiveFolder.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QDir>
#include <QMutex>
#include <QSqlError>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <atomic>

namespace sessionlibrary {

namespace {

constexpr mode_t onlyUserFolder = 0700;
constexpr mode_t onlyUserFile = 0600;

QString translated(const char *text)
{
    return QCoreApplication::translate("sessionlibrary", text);
}

// By which the index of a folder is found, whoever asks.
QString keyOf(const QString &folder)
{
    constexpr int digits = 32;
    return QString::fromLatin1(
        QCryptographicHash::hash(QFile::encodeName(folder), QCryptographicHash::Sha256)
            .toHex()
            .left(digits));
}

// Makes a folder that only the user can look into, and those above it. False when nothing can be
// written there.
bool makePrivateFolder(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    QDir().mkpath(QFileInfo(path).path());
    if (::mkdir(name.constData(), onlyUserFolder) != 0
        && (errno != EEXIST || ::chmod(name.constData(), onlyUserFolder) != 0))
        return false;
    return ::access(name.constData(), R_OK | W_OK | X_OK) == 0;
}

// For this process alone, when the user's folder cannot be written. All connections share it.
QString temporaryFolder()
{
    static QMutex mutex;
    static QTemporaryDir folder(QDir::tempPath() + QStringLiteral("/cprlibrary-XXXXXX"));
    const QMutexLocker locker(&mutex);
    return folder.isValid() ? folder.path() : QString(); // 0700
}

// Held while an index is looked over, made or removed, by one process at a time. Goes with its
// process.
class Lock {
public:
    explicit Lock(const QString &file)
        : m_descriptor(FileCalls::repeated([name = QFile::encodeName(file)] {
              return ::open(name.constData(), O_CREAT | O_RDWR | O_CLOEXEC | O_NOFOLLOW,
                            onlyUserFile);
          }))
    {
        if (m_descriptor >= 0)
            FileCalls::repeated([this] { return ::flock(m_descriptor, LOCK_EX); });
    }
    ~Lock()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    Lock(const Lock &) = delete;
    Lock &operator=(const Lock &) = delete;
    bool isHeld() const { return m_descriptor >= 0; }

private:
    int m_descriptor;
};

// The database gets its permissions before there is anything in it; SQLite gives them to the files
// beside it. One that is there is not opened: closing it would end all locks that other connections
// of this process have on it.
bool makePrivateFile(const QString &file)
{
    const QByteArray name = QFile::encodeName(file);
    const int descriptor = FileCalls::repeated([&name] {
        return ::open(name.constData(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, onlyUserFile);
    });
    if (descriptor < 0)
        return errno == EEXIST && ::chmod(name.constData(), onlyUserFile) == 0;
    ::close(descriptor);
    return true;
}

qint64 inodeOf(const QString &file)
{
    return stampOf(file).inode;
}

} // namespace

OpenResult IndexConnection::open(const QString &folder, Check check)
{
    close();
    OpenResult result;
    m_folder = QFileInfo(folder).canonicalFilePath();
    if (m_folder.isEmpty() || !QFileInfo(m_folder).isDir()) {
        m_folder = folder;
        m_error =
            translated(QT_TRANSLATE_NOOP("sessionlibrary", "%1 is no folder that can be read"))
                .arg(folder);
        result.reason = m_error;
        return result;
    }
    const QString key = keyOf(m_folder);
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    for (const bool isTemporary : {false, true}) {
        const QString parent =
            isTemporary ? temporaryFolder() : data + QStringLiteral("/cprlibrary");
        const QString place = parent + QLatin1Char('/') + key;
        if (parent.isEmpty() || !makePrivateFolder(parent) || !makePrivateFolder(place)) {
            if (!isTemporary)
                result.reason =
                    translated(QT_TRANSLATE_NOOP("sessionlibrary", "%1 cannot be written: %2"))
                        .arg(place, FileCalls::reason());
            continue;
        }
        const Lock lock(place + QStringLiteral("/lock"));
        if (!lock.isHeld())
            continue;
        result.isTemporary = isTemporary;
        m_file = place + QStringLiteral("/index.sqlite");
        result.isOpen = openFile(check, result);
        if (result.isOpen || !isTemporary)
            break;
    }
    if (!result.isOpen && result.reason.isEmpty())
        result.reason = m_error;
    m_error = result.isOpen ? QString() : result.reason;
    return result;
}

void IndexConnection::close()
{
    if (!m_name.isEmpty()) {
        database().close();
        QSqlDatabase::removeDatabase(m_name);
    }
    m_name.clear();
    m_isOpen = false;
    m_isBroken = false;
}

// With the lock held.
bool IndexConnection::openFile(Check check, OpenResult &result)
{
    constexpr int attempts = 2; // the second after what was there is gone
    for (int attempt = 0; attempt < attempts; ++attempt) {
        close();
        if (!makePrivateFile(m_file)) {
            m_error = translated(QT_TRANSLATE_NOOP("sessionlibrary", "%1 cannot be written: %2"))
                          .arg(m_file, FileCalls::reason());
            return false;
        }
        const SchemaResult schema = openDatabase();
        const bool isSoundIndex =
            schema != SchemaResult::Failed && schema != SchemaResult::Foreign && isSound(check);
        if (isSoundIndex) {
            m_isOpen = true;
            m_isBroken = false;
            m_opened.inode = inodeOf(m_file);
            ++m_generation;
            result.isMigrated = schema == SchemaResult::Migrated;
            if (schema == SchemaResult::Made && result.rebuilt == OpenResult::Rebuilt::No)
                result.rebuilt = OpenResult::Rebuilt::Missing;
            return true;
        }
        if (schema == SchemaResult::Foreign) {
            result.rebuilt = OpenResult::Rebuilt::OtherVersion;
            result.reason = translated(QT_TRANSLATE_NOOP(
                "sessionlibrary", "the index was another version's and is made anew"));
        } else if (m_isBroken) {
            result.rebuilt = OpenResult::Rebuilt::Damaged;
            result.reason = translated(
                QT_TRANSLATE_NOOP("sessionlibrary", "the index was damaged and is made anew"));
        } else {
            return false; // a full disk, say
        }
        close();
        removeFiles();
    }
    return false;
}

SchemaResult IndexConnection::openDatabase()
{
    static std::atomic<int> connections{0}; // a program and its shared library have one each
    m_name = QStringLiteral("sessionlibrary-%1-%2").arg(quintptr(&connections)).arg(++connections);
    QSqlDatabase index = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), m_name);
    index.setDatabaseName(m_file);
    index.setConnectOptions(QStringLiteral("QSQLITE_BUSY_TIMEOUT=10000"));
    if (!index.open()) {
        m_error = reasonOf(index.lastError());
        return SchemaResult::Failed;
    }
    // Names must not stay in freed pages, nor go to files elsewhere.
    for (const char *pragma : {"secure_delete=ON", "temp_store=MEMORY", "journal_mode=WAL",
                               "synchronous=NORMAL", "foreign_keys=ON", "trusted_schema=OFF"})
        select(QLatin1String("PRAGMA ") + QLatin1String(pragma));
    if (m_isBroken)
        return SchemaResult::Failed;
    QSqlError error;
    const SchemaResult schema = prepareSchema(index, error);
    if (schema == SchemaResult::Failed) {
        m_isBroken = isCorruption(error);
        m_error = reasonOf(error);
    }
    return schema;
}

bool IndexConnection::isSound(Check check)
{
    if (check == Check::Quick)
        return true;
    QSqlQuery query = select(QStringLiteral("PRAGMA quick_check(1)"));
    const bool isOk = query.next() && query.value(0).toString() == QLatin1String("ok");
    m_isBroken = m_isBroken || (query.isActive() && !isOk);
    return isOk;
}

void IndexConnection::removeFiles()
{
    for (const char *suffix : {"", "-wal", "-shm", "-journal"})
        ::unlink((QFile::encodeName(m_file) + suffix).constData());
}

qint64 IndexConnection::version()
{
    if (!m_folder.isEmpty() && (m_isBroken || !m_isOpen || inodeOf(m_file) != m_opened.inode)
        && !open(QString(m_folder), Check::Quick).isOpen)
        return -1;
    QSqlQuery query = select(QStringLiteral("PRAGMA data_version"));
    constexpr int generationShift = 32;
    return query.next() ? (m_generation << generationShift) + query.value(0).toLongLong() : -1;
}

QSqlQuery IndexConnection::select(const QString &sql, const QVariantList &values)
{
    QSqlQuery query(database());
    query.setForwardOnly(true);
    bool isDone = query.prepare(sql);
    for (const QVariant &value : values)
        query.addBindValue(value);
    isDone = isDone && query.exec();
    if (!isDone)
        fail(query);
    return query;
}

bool IndexConnection::fail(const QSqlQuery &query)
{
    m_isBroken = m_isBroken || isCorruption(query.lastError());
    m_error = translated(QT_TRANSLATE_NOOP("sessionlibrary", "the index cannot be used: %1"))
                  .arg(reasonOf(query.lastError()));
    return false;
}

bool IndexConnection::writeBack()
{
    QSqlQuery query = select(QStringLiteral("PRAGMA wal_checkpoint(TRUNCATE)"));
    const bool isDone = query.next() && query.value(0).toInt() == 0;
    if (!isDone) // it has waited for some seconds
        m_error = translated("another program reads the index all the time; try it again");
    return isDone;
}

} // namespace sessionlibrary
