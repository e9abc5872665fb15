// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "SessionExport.h"

#include "private/AtomicFile.h"
#include "sessionfiles/SessionFile.h"
#include "sessionfiles/SessionTable.h"
#include "sessionfiles/TableWriter.h"

#include <CPRData.h>
#include <sessionplot/ClassReport.h>
#include <sessionplot/PictureFile.h>
#include <sessionplot/SessionReport.h>

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

Written SessionExport::writeReport(const QString &name, const CPRData &session,
                                   const ReportNotes &notes)
{
    const sessionplot::PlotModel model(session);
    sessionplot::SessionReport report(model);
    report.setRemark(notes.remark);
    report.setDamaged(notes.isDamaged);
    report.setEarlier(
        sessionreview::earlierOf(sessionreview::resultOf(model.review()), notes.results));
    QString reason;
    return sessionplot::writeReport(name, report, notes.paper, &reason) ? done(name)
                                                                        : failed(name, reason);
}

QString SessionExport::reportName(const QString &folder, const QString &archive)
{
    return QDir(folder).filePath(QFileInfo(archive).completeBaseName() + QStringLiteral(".pdf"));
}

Written SessionExport::writeReports(const QString &folder, const QStringList &archives,
                                    const ReportNotes &notes)
{
    Written all = done(folder);
    for (const QString &archive : archives) {
        CPRData session;
        const sessionfiles::LoadResult loaded = sessionfiles::load(archive, session);
        ReportNotes own = notes;
        own.isDamaged = !loaded.isComplete;
        const Written written = loaded.hasSession()
            ? writeReport(reportName(folder, archive), session, own)
            : failed(archive,
                     QCoreApplication::translate("cprviewer", "%1 cannot be read as a session")
                         .arg(archive));
        if (!written.isComplete && all.isComplete)
            all = {true, false, folder, {}, written.problem, false};
    }
    return all;
}

Written SessionExport::writeClass(const QString &name, const sessionreview::ClassFigures &figures,
                                  QPageSize::PageSizeId paper)
{
    QString reason;
    return sessionplot::writeClassReport(name, sessionplot::ClassReport(figures), paper, &reason)
        ? done(name)
        : failed(name, reason);
}
