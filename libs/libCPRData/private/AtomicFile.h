// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef ATOMICFILE_H
#define ATOMICFILE_H

#include <QFileInfo>
#include <QSaveFile>
#include <QString>

#ifdef Q_OS_UNIX
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>
#endif

/// A file that appears under its name in one step, with all that was written to it on the disk; or
/// not at all, and the file that was there stays.
///
/// QSaveFile alone renames a file whose last bytes the disk had no room for (Qt 5), replaces
/// devices and pipes, and leaves to chance when the new name reaches the disk. All that writes a
/// file for a user writes it with this.
class AtomicFile final : public QSaveFile {
public:
    using QSaveFile::QSaveFile;

    /// Opens the file. False, with an errorString(), when its folder refuses it or its name is that
    /// of a folder, a device or a pipe.
    bool open(OpenMode mode) override
    {
        const QFileInfo target(fileName());
        if (target.exists() && !target.isFile())
            return refuse(QStringLiteral("it is no regular file"));
        return QSaveFile::open(mode);
    }

    /// Puts the file in place. False, with an errorString(), when something that was written is not
    /// on the disk; the old file is then untouched, unless the folder alone could not be written:
    /// then the new one is in place, and a power cut may bring the old one back.
    bool finish() { return flush() && syncContent() && commit() && syncFolder(); }

protected:
    // A disk that fills up can take the first part of a block without an error; the rest then gets
    // the error, without which the last block would be cut off silently.
    qint64 writeData(const char *data, qint64 size) override
    {
        qint64 written = 0;
        while (written < size) {
            const qint64 count = QSaveFile::writeData(data + written, size - written);
            if (count <= 0)
                return -1;
            written += count;
        }
        return written;
    }

private:
    using QSaveFile::commit; // finish() does more

    bool refuse(const QString &reason)
    {
        setErrorString(reason);
        return false;
    }

#ifdef Q_OS_UNIX
    bool refuseForErrno()
    {
        return refuse(QString::fromLocal8Bit(std::strerror(errno)));
    }

    bool syncContent()
    {
        return ::fsync(handle()) == 0 || refuseForErrno();
    }

    // The folder of the file itself, where the name is that of a symbolic link.
    bool syncFolder()
    {
        const QByteArray folder =
            QFile::encodeName(QFileInfo(QFileInfo(fileName()).canonicalFilePath()).absolutePath());
        const int descriptor = ::open(folder.constData(), O_RDONLY | O_CLOEXEC);
        if (descriptor < 0) // a folder that may be written but not read
            return true;
        // Some file systems have no such call for a folder, and say so.
        const bool isSynced = ::fsync(descriptor) == 0 || errno == EINVAL || errno == ENOTSUP
            || errno == EROFS || errno == ENOSYS || refuseForErrno();
        ::close(descriptor);
        return isSynced;
    }
#else
    bool syncContent()
    {
        return true;
    }
    bool syncFolder()
    {
        return true;
    }
#endif
};

#endif
