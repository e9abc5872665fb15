// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "SessionFile.h"

#include "NotingFileHandler.h"

#include <CPRData.h>
#include <CPRFileHandlerZip.h>

#include <QFileInfo>

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
    result.isComplete &= zip.close();
    return result;
}

QString save(const QString &name, CPRData &session)
{
    CPRFileHandlerZip zip;
    NotingFileHandler handler(&zip);
    const bool isStored = zip.open(name, CPRFileHandlerZip::Create) && session.writeData(&handler)
        && handler.missing().isEmpty() && zip.close();
    if (isStored)
        return QString();
    return QStringLiteral("%1 cannot be written: %2").arg(name, zip.errorString());
}

} // namespace SessionFile
