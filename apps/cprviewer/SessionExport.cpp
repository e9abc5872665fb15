// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "SessionExport.h"

#include "private/AtomicFile.h"
#include "sessionfiles/SessionFile.h"
#include "sessionfiles/SessionTable.h"
#include "sessionfiles/TableWriter.h"

#include <CPRData.h>
#include <sessionplot/PictureFile.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QSize>

namespace {

using SessionExport::Written;
using sessionfiles::SessionTable;
using sessionfiles::TableWriter;

QString cannotWrite(const QString &name, const QString &reason)
{
    return QCoreApplication::translate("cprviewer", "%1 cannot be written: %2").arg(name, reason);
}

Written done(const QString &name)
{
    return {true, true, name, {}, {}, false};
}

Written failed(const QString &name, const QString &problem)
{
    return {false, false, name, {}, problem, false};
}

// False, with the reason, when the copy is not on the disk.
bool copyFile(const QString &from, const QString &to, QString *reason)
{
    QFile source(from);
    const QByteArray content = source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
    if (source.error() != QFile::NoError || content.size() != source.size()) {
        *reason = source.errorString();
        return false;
    }
    AtomicFile copy(to);
    const bool isCopied =
        copy.open(QIODevice::WriteOnly) && copy.write(content) == content.size() && copy.finish();
    *reason = copy.errorString();
    return isCopied;
}

} // namespace

QString SessionExport::nameToKeep(const QString &name)
{
    const QFileInfo file(name);
    QString kept;
    for (int number = 1; kept.isEmpty() || QFileInfo::exists(kept); ++number) {
        kept = file.dir().filePath(
            QStringLiteral("%1.damaged%2.%3")
                .arg(file.completeBaseName(),
                     number > 1 ? QStringLiteral("-%1").arg(number) : QString(), file.suffix()));
    }
    return kept;
}

Written SessionExport::writeArchive(const QString &name, CPRData &session)
{
    const sessionfiles::SaveResult saved = sessionfiles::save(name, session);
    return {saved.isSaved, saved.isComplete, name, {}, saved.reason, false};
}

Written SessionExport::replaceDamaged(const QString &name, CPRData &session)
{
    const QString kept = nameToKeep(name);
    QString reason;
    if (!copyFile(name, kept, &reason))
        return failed(name, cannotWrite(kept, reason));
    Written result = writeArchive(name, session);
    result.kept = kept;
    return result;
}

Written SessionExport::writeTable(const QString &name, const QString &what, const CPRData &session)
{
    QString reason;
    const auto table = SessionTable::create(what, {}, &reason);
    if (!table)
        return failed(name, reason);
    AtomicFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return failed(name, cannotWrite(name, file.errorString()));
    const bool hasComma = QLocale().decimalPoint() == QLatin1Char(',');
    const auto writer = TableWriter::csv(&file, QString(QLatin1Char(hasComma ? ';' : ',')));
    const bool isWritten = writer->begin(table->columns())
        && table->writeRows(session,
                            [&writer](const TableWriter::Row &row) { return writer->write(row); })
        && writer->end() && file.finish();
    return isWritten ? done(name) : failed(name, cannotWrite(name, file.errorString()));
}

Written SessionExport::writePicture(const QString &name, const CPRData &session)
{
    constexpr QSize size(1600, 900);
    QString reason;
    const bool isWritten = sessionplot::writePicture(name, size, 0, -1, session, &reason);
    return isWritten ? done(name) : failed(name, reason);
}
