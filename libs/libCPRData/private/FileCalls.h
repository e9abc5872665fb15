// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef FILECALLS_H
#define FILECALLS_H

#include <QFile>
#include <QFileInfo>
#include <QString>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

/// What the operating system does with files beyond Qt. Each call gives its reason in errno.
namespace FileCalls {

/// Calls again while a signal interrupts it.
template <typename Call> auto repeated(Call call)
{
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// errno, for people.
inline QString reason()
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

/// Closes the file and leaves errno as it is.
inline void closeQuietly(int file)
{
    const int error = errno;
    ::close(file);
    errno = error;
}

/// Locks the file for this descriptor, whatever process asks; the lock goes when the descriptor is
/// closed, so it never outlives its process. False when another one holds it. A file system without
/// locks has nobody who holds one.
inline bool lock(int file)
{
    return repeated([file] { return ::flock(file, LOCK_EX | LOCK_NB); }) == 0
        || errno != EWOULDBLOCK;
}

/// Gives the lock back at once: otherwise a copy of the descriptor would still hold it.
inline void unlock(int file)
{
    ::flock(file, LOCK_UN);
}

/// Whether the descriptor's file still has this name.
inline bool isNamed(int file, const QByteArray &name)
{
    struct stat opened { };
    struct stat named { };
    return ::fstat(file, &opened) == 0 && ::lstat(name.constData(), &named) == 0
        && opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/// Opens a file to be looked at, without following a link or waiting for a pipe. Negative when that
/// cannot be.
inline int openExisting(const QByteArray &name)
{
    return repeated([&name] {
        return ::open(name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    });
}

/// The file that \a name leads to when it is a symbolic link, which need not exist; otherwise \a
/// name.
inline QString resolved(const QString &name)
{
    constexpr int maxLinks = 40; // as Linux has it
    QFileInfo info(name);
    for (int links = 0; info.isSymLink() && links < maxLinks; ++links)
        info.setFile(info.exists() ? info.canonicalFilePath() : info.symLinkTarget());
    return info.filePath();
}

/// Waits until the disk has the folder of \a file: before that a new name can be lost. False when
/// that failed. True where the file system has no such call, and for a folder that this process may
/// not read.
inline bool syncFolderOf(const QString &file)
{
    const QByteArray name = QFile::encodeName(QFileInfo(file).path());
    const int folder =
        repeated([&name] { return ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (folder < 0)
        return errno == EACCES;
    const bool isSynced = repeated([folder] { return ::fsync(folder); }) == 0 || errno == EINVAL
        || errno == ENOTSUP || errno == ENOSYS;
    closeQuietly(folder);
    return isSynced;
}

} // namespace FileCalls

#endif
