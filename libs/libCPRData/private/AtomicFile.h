// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef ATOMICFILE_H
#define ATOMICFILE_H

#include "FileCalls.h"

#include <QIODevice>
#include <QThread>

/// A file that appears under its name in one step, with all that was written to it on the disk; or
/// not at all, and the file that was there stays. All that writes a file for a user writes it with
/// this.
///
/// The new file has no name until it is complete, where the file system can do that. A process that
/// is killed then leaves nothing. Elsewhere, and for the moment between the two steps by which the
/// file gets its name, it is called NAME.cprtmp; the next save of NAME removes what was left.
class AtomicFile final : public QIODevice {
public:
    /// The file \a name, or the one that it leads to when it is a symbolic link.
    explicit AtomicFile(const QString &name) : m_name(FileCalls::resolved(name)) { }
    /// Discards a file that is not finished.
    ~AtomicFile() override { discard(); }

    /// Opens the file for writing. False, with an errorString(), when the old file or its folder
    /// refuses it, or the name is that of a folder, a device or a pipe. The new file gets the
    /// permissions of the old one, and its owner as far as this process may. Unbuffered gives each
    /// write its own result; otherwise a later write, or finish(), has it.
    bool open(OpenMode mode) override
    {
        struct stat old { };
        const bool isReplacing = ::stat(path().constData(), &old) == 0;
        if (!isReplacing && errno != ENOENT)
            return failForErrno();
        if (isReplacing && !S_ISREG(old.st_mode))
            return fail(QStringLiteral("it is no regular file"));
        if (isReplacing && ::access(path().constData(), W_OK) != 0)
            return failForErrno();
        const mode_t permissions = isReplacing ? old.st_mode & 0777U : 0666U;
        if (!openUnnamed(permissions) && !openNamed(permissions))
            return failForErrno();
        if (isReplacing)
            copyOwner(old);
        m_blockSize = mode.testFlag(Unbuffered) ? 0 : 64 * 1024;
        return QIODevice::open(mode | Unbuffered);
    }

    qint64 size() const override { return m_size; }

    /// Something could not be written; errorString() tells what happened first.
    bool hasFailed() const { return m_hasFailed; }

    /// Puts the file in place. False, with an errorString(), when something that was written is not
    /// on the disk; the old file is then untouched, unless the folder alone could not be written:
    /// then the new one is in place, and a power cut may bring the old one back.
    bool finish()
    {
        const bool isFinished = m_descriptor >= 0 && writeBlock()
            && ((FileCalls::repeated([this] { return ::fsync(m_descriptor); }) == 0 && giveName()
                 && replace() && FileCalls::syncFolderOf(m_name))
                || failForErrno());
        discard();
        return isFinished;
    }

protected:
    qint64 writeData(const char *data, qint64 size) override
    {
        if (pos() != m_blockStart + m_block.size() && !writeBlock())
            return -1;
        if (m_block.isEmpty())
            m_blockStart = pos();
        m_block.append(data, int(size));
        m_size = qMax(m_size, pos() + size);
        return m_block.size() < m_blockSize || writeBlock() ? size : -1;
    }
    qint64 readData(char * /*data*/, qint64 /*maxSize*/) override { return -1; }

private:
    QByteArray path() const { return QFile::encodeName(m_name); }
    QByteArray temporaryPath() const { return path() + ".cprtmp"; }

    bool fail(const QString &reason)
    {
        if (!m_hasFailed)
            setErrorString(reason);
        m_hasFailed = true;
        return false;
    }
    bool failForErrno() { return fail(FileCalls::reason()); }

    // A write that failed once is not forgotten: finish() reports it.
    bool writeBlock()
    {
        qint64 written = 0;
        while (written < m_block.size() && !m_hasFailed) {
            const auto count = FileCalls::repeated([&] {
                return ::pwrite(m_descriptor, m_block.constData() + written,
                                std::size_t(m_block.size() - written), m_blockStart + written);
            });
            if (count <= 0)
                failForErrno();
            written += count;
        }
        m_block.clear();
        return !m_hasFailed;
    }

    bool openUnnamed([[maybe_unused]] mode_t permissions)
    {
#ifdef O_TMPFILE
        if (::access("/proc/self/fd", X_OK) == 0) { // by which giveName() finds it
            const QByteArray folder = QFile::encodeName(QFileInfo(m_name).path());
            m_descriptor = FileCalls::repeated([&] {
                return ::open(folder.constData(), O_TMPFILE | O_RDWR | O_CLOEXEC, permissions);
            });
        }
#endif
        if (m_descriptor >= 0)
            FileCalls::lock(m_descriptor); // by which removeLeft() knows that its process lives
        return m_descriptor >= 0;
    }

    bool openNamed(mode_t permissions)
    {
        const QByteArray temporary = temporaryPath();
        return whenFree([&] {
            m_descriptor = FileCalls::repeated([&] {
                return ::open(temporary.constData(),
                              O_CREAT | O_EXCL | O_RDWR | O_NOFOLLOW | O_CLOEXEC, permissions);
            });
            if (m_descriptor < 0)
                return false;
            FileCalls::lock(m_descriptor);
            // Another process may have found it before it was locked.
            m_isNamed = FileCalls::isNamed(m_descriptor, temporary);
            if (!m_isNamed) {
                discard();
                errno = EEXIST;
            }
            return m_isNamed;
        });
    }

    bool giveName()
    {
        const QByteArray unnamed = "/proc/self/fd/" + QByteArray::number(m_descriptor);
        const QByteArray temporary = temporaryPath();
        m_isNamed = m_isNamed || whenFree([&] {
                        return ::linkat(AT_FDCWD, unnamed.constData(), AT_FDCWD,
                                        temporary.constData(), AT_SYMLINK_FOLLOW)
                            == 0;
                    });
        return m_isNamed;
    }

    bool replace()
    {
        m_isNamed = ::rename(temporaryPath().constData(), path().constData()) != 0;
        return !m_isNamed;
    }

    // Tries to make the temporary name until none of another process is in the way. False, with the
    // reason in errno, when it cannot be made.
    template <typename Make> bool whenFree(Make make)
    {
        constexpr int attempts = 50;
        constexpr unsigned long waitMs = 10; // much longer than a name is used
        for (int attempt = 0; attempt < attempts; ++attempt) {
            if (make())
                return true;
            if (errno != EEXIST || !removeLeft())
                return false;
            if (attempt > 0)
                QThread::msleep(waitMs);
        }
        errno = EBUSY;
        return false;
    }

    // Removes the file that a killed process has left, not that of a living one. False, with the
    // reason in errno, when it cannot be removed.
    bool removeLeft()
    {
        const QByteArray temporary = temporaryPath();
        const int left = FileCalls::openExisting(temporary);
        if (left < 0)
            return errno == ENOENT;
        const bool isInOrder =
            !FileCalls::lock(left) || ::unlink(temporary.constData()) == 0 || errno == ENOENT;
        FileCalls::closeQuietly(left);
        return isInOrder;
    }

    // Nobody may read the new file who could not read the old one.
    void copyOwner(const struct stat &old)
    {
        mode_t permissions = old.st_mode & 0777U;
        const bool hasGroup = ::fchown(m_descriptor, old.st_uid, old.st_gid) == 0
            || ::fchown(m_descriptor, uid_t(-1), old.st_gid) == 0;
        if (!hasGroup)
            permissions = (permissions & 0707U) | ((permissions & 07U) << 3U);
        ::fchmod(m_descriptor, permissions);
    }

    void discard()
    {
        if (m_isNamed)
            ::unlink(temporaryPath().constData());
        m_isNamed = false;
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        m_descriptor = -1;
        if (isOpen())
            QIODevice::close();
    }

    QString m_name;
    int m_descriptor = -1;
    qint64 m_size = 0; // with what is not written yet
    QByteArray m_block; // not written yet; up to m_blockSize bytes
    qint64 m_blockStart = 0;
    qint64 m_blockSize = 0;
    bool m_isNamed = false; // by the temporary name
    bool m_hasFailed = false;
};

#endif
