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

Written written(const QString &name, const QString &problem)
{
    return {problem.isEmpty(), problem.isEmpty(), name, {}, problem, false};
}

// Returns what went wrong; empty when the copy is on the disk.
QString copyFile(const QString &from, const QString &to)
{
    QFile source(from);
    if (!source.open(QIODevice::ReadOnly))
        return source.errorString();
    const QByteArray content = source.readAll();
    if (source.error() != QFile::NoError)
        return source.errorString();
    AtomicFile copy(to);
    const bool isCopied =
        copy.open(QIODevice::WriteOnly) && copy.write(content) == content.size() && copy.finish();
    return isCopied ? QString() : copy.errorString();
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
    return written(name, sessionfiles::save(name, session));
}

Written SessionExport::replaceDamaged(const QString &name, CPRData &session)
{
    const QString kept = nameToKeep(name);
    if (const QString error = copyFile(name, kept); !error.isEmpty())
        return written(name, cannotWrite(kept, error));
    Written result = writeArchive(name, session);
    result.kept = kept;
    return result;
}

Written SessionExport::writeTable(const QString &name, const QString &what, const CPRData &session)
{
    QString error;
    const auto table = SessionTable::create(what, {}, &error);
    if (!table)
        return written(name, error);
    AtomicFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return written(name, cannotWrite(name, file.errorString()));
    const bool hasComma = QLocale().decimalPoint() == QLatin1Char(',');
    const auto writer = TableWriter::csv(&file, QString(QLatin1Char(hasComma ? ';' : ',')));
    const bool isWritten = writer->begin(table->columns())
        && table->writeRows(session,
                            [&writer](const TableWriter::Row &row) { return writer->write(row); })
        && writer->end() && file.finish();
    return written(name, isWritten ? QString() : cannotWrite(name, file.errorString()));
}

Written SessionExport::writePicture(const QString &name, const CPRData &session)
{
    constexpr QSize size(1600, 900);
    QString error;
    sessionplot::writePicture(name, size, 0, -1, session, &error);
    return written(name, error);
}
