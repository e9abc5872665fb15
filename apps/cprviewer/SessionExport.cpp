// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "SessionExport.h"

#include "private/AtomicFile.h"
#include "sessionfiles/SessionTable.h"
#include "sessionfiles/TableWriter.h"

#include <CPRData.h>
#include <sessionplot/PictureFile.h>

#include <QCoreApplication>
#include <QLocale>
#include <QSize>

namespace {

using sessionfiles::SessionTable;
using sessionfiles::TableWriter;

QString cannotWrite(const QString &name, const QString &reason)
{
    return QCoreApplication::translate("cprviewer", "%1 cannot be written: %2").arg(name, reason);
}

} // namespace

bool SessionExport::writeTable(const QString &name, const QString &what, const CPRData &session,
                               QString *error)
{
    const auto table = SessionTable::create(what, {}, error);
    if (!table)
        return false;
    AtomicFile file(name);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = cannotWrite(name, file.errorString());
        return false;
    }
    const bool hasComma = QLocale().decimalPoint() == QLatin1Char(',');
    const auto writer = TableWriter::csv(&file, QString(QLatin1Char(hasComma ? ';' : ',')));
    const bool isWritten = writer->begin(table->columns())
        && table->writeRows(session,
                            [&writer](const TableWriter::Row &row) { return writer->write(row); })
        && writer->end() && file.finish();
    if (!isWritten)
        *error = cannotWrite(name, file.errorString());
    return isWritten;
}

bool SessionExport::writePicture(const QString &name, const CPRData &session, QString *error)
{
    constexpr QSize size(1600, 900);
    return sessionplot::writePicture(name, size, 0, -1, session, error);
}
