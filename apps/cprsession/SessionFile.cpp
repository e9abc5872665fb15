// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "SessionFile.h"

#include "NotingFileHandler.h"

#include <CPRData.h>
#include <CPRFileHandlerZip.h>

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace SessionFile {

LoadResult load(const QString &name, CPRData &session)
{
    LoadResult result;
    CPRFileHandlerZip zip;
    if (!QFileInfo(name).isFile() || !zip.open(name, CPRFileHandlerZip::Read))
        return result;
    result.isArchive = true;
    NotingFileHandler handler(&zip);
    result.isComplete = session.readData(&handler) && handler.missing().isEmpty();
    result.missing = handler.missing();
    zip.close();
    return result;
}

QString save(const QString &name, CPRData &session)
{
    const QFileInfo target(name);
    if (target.exists() && !target.isFile())
        return QStringLiteral("%1 is no regular file").arg(name);

    const QString part = name + QStringLiteral(".part");
    CPRFileHandlerZip zip;
    if (!zip.open(part, CPRFileHandlerZip::Create))
        return QStringLiteral("%1 cannot be written; is the directory there and writable?")
            .arg(part);
    NotingFileHandler handler(&zip);
    const bool stored = session.writeData(&handler) && handler.missing().isEmpty();
    if (!zip.close() || !stored) {
        QFile::remove(part);
        return QStringLiteral("%1 cannot be written whole; is the disk full?").arg(part);
    }
    // Unlike QFile::rename() this replaces a file of that name in one step.
    if (std::rename(QFile::encodeName(part).constData(), QFile::encodeName(name).constData())
        != 0) {
        const QString reason = QString::fromLocal8Bit(std::strerror(errno));
        QFile::remove(part);
        return QStringLiteral("%1 cannot be written: %2").arg(name, reason);
    }
    return QString();
}

} // namespace SessionFile
