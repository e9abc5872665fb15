// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "SessionExport.h"

#include "private/AtomicFile.h"
#include "sessionfiles/SessionFile.h"
#include "sessionfiles/SessionTable.h"
#include "sessionfiles/TableWriter.h"

#include <CPRData.h>
#include <CPREventSessionScore.h>
#include <CPREventSessionStatistics.h>
#include <sessionplot/ClassReport.h>
#include <sessionplot/PictureFile.h>
#include <sessionplot/SessionReport.h>
#include <sessionreview/SessionComparison.h>
#include <sessionreview/Words.h>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QPagedPaintDevice>
#include <QPainter>
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
    return {true, true, name, {}, {}, false, {}};
}

Written failed(const QString &name, const QString &problem)
{
    return {false, false, name, {}, problem, false, {}};
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

// With the separators that spreadsheets of the default locale expect.
Written writeCsv(const QString &name, const QVector<TableWriter::Column> &columns,
                 const std::function<bool(const SessionTable::WriteRow &write)> &writeRows)
{
    AtomicFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        return failed(name, cannotWrite(name, file.errorString()));
    const bool hasComma = QLocale().decimalPoint() == QLatin1Char(',');
    const auto writer = TableWriter::csv(&file, QString(QLatin1Char(hasComma ? ';' : ',')));
    const bool isWritten = writer->begin(columns)
        && writeRows([&writer](const TableWriter::Row &row) { return writer->write(row); })
        && writer->end() && file.finish();
    return isWritten ? done(name) : failed(name, cannotWrite(name, file.errorString()));
}

// Makes the page of the archive of that number. False, with the reason, when that fails.
using MakeReport =
    std::function<bool(int number, const sessionplot::SessionReport &report, QString *problem)>;

// Calls make for each archive that can be read, until advance says that it is enough.
Written makeReports(const QString &name, const QStringList &archives,
                    const SessionExport::ReportNotes &notes, const SessionExport::Advance &advance,
                    const MakeReport &make)
{
    QStringList problems;
    const int count = archives.size();
    for (int i = 0; i < count; ++i) {
        if (!advance(i, count)) {
            problems.prepend(
                QCoreApplication::translate("cprviewer", "Cancelled: %1 of %2 reports are made.")
                    .arg(i - problems.size())
                    .arg(count));
            break;
        }
        const QString &archive = archives.at(i);
        CPRData session;
        const sessionfiles::LoadResult loaded = sessionfiles::load(archive, session);
        QString problem =
            QCoreApplication::translate("cprviewer", "%1 cannot be read as a session").arg(archive);
        bool isMade = loaded.hasSession();
        if (isMade) {
            const sessionplot::PlotModel model(session);
            sessionplot::SessionReport report(model);
            report.setDamaged(!loaded.isComplete);
            report.setEarlier(
                sessionreview::earlierOf(sessionreview::resultOf(model.review()), notes.results));
            isMade = make(i, report, &problem);
        }
        if (!isMade)
            problems.append(problem);
    }
    if (problems.isEmpty())
        return done(name);
    QString told = problems.first();
    const int more = problems.size() - 1;
    if (more > 0)
        told += QLatin1Char(' ')
            + QCoreApplication::translate("cprviewer", "(and %n more)", nullptr, more);
    return {true, false, name, {}, told, false, {}};
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

std::unique_ptr<CPRData> SessionExport::copyAsListed(const CPRData &session)
{
    auto copy = std::make_unique<CPRData>(session);
    const auto &listed = session.cprEvents()->events();
    if (!listed.contains(session.cprEvents()->sessionStatistics()))
        delete copy->cprEvents()->sessionStatistics();
    if (!listed.contains(session.cprEvents()->sessionScore()))
        delete copy->cprEvents()->sessionScore();
    return copy;
}

Written SessionExport::writeArchive(const QString &name, CPRData &session)
{
    const sessionfiles::SaveResult saved = sessionfiles::save(name, session);
    return {saved.isSaved, saved.isComplete, name, {}, saved.reason, false, {}};
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
    return writeCsv(name, table->columns(), [&](const SessionTable::WriteRow &write) {
        return table->writeRows(session, write);
    });
}

Written SessionExport::writeComparison(const QString &name, const Compared &compared)
{
    using sessionreview::ComparedFigure;
    const sessionreview::SessionReview &a = compared.model->review();
    const sessionreview::SessionReview &b = compared.other->review();
    const auto comparison = sessionreview::comparisonOf(a, b);
    const auto startOf = [](const sessionreview::SessionReview &review) {
        return review.figures.start().toUTC().toString(Qt::ISODate);
    };
    const auto rows = [&](const SessionTable::WriteRow &write) {
        const auto head = [&write](const char *key, const QVariant &one, const QVariant &other) {
            return write({QLatin1String(key), {}, {}, one, other, {}, {}});
        };
        bool isWritten = head("learners", a.figures.learners.join(QLatin1String(", ")),
                              b.figures.learners.join(QLatin1String(", ")))
            && head("start", startOf(a), startOf(b))
            && head("protocol", sessionreview::protocolText(a.figures.protocol),
                    sessionreview::protocolText(b.figures.protocol))
            && head("guidelines", a.figures.guidelines, b.figures.guidelines);
        for (const ComparedFigure &each : comparison.figures) {
            if (!each.value && !each.other)
                continue;
            // As people read them: a fraction in percent.
            const bool isFraction =
                each.figure->unit == sessionreview::RecordedFigure::Unit::Fraction;
            const auto cell = [&](const std::optional<double> &value) {
                return value ? QVariant(each.figure->shown(*value) * (isFraction ? 100 : 1))
                             : QVariant();
            };
            isWritten = isWritten
                && write({QLatin1String(each.figure->key), each.figure->titleText(),
                          each.figure->unitText(), cell(each.value), cell(each.other),
                          cell(each.difference), sessionreview::outcomeText(each.outcome)});
        }
        for (const sessionreview::ComparedFault &fault : comparison.faults) {
            isWritten = isWritten
                && write({QLatin1String("fault"),
                          sessionreview::faultTexts(fault.fault).value(0),
                          {},
                          fault.count,
                          fault.other,
                          fault.count - fault.other,
                          {}});
        }
        return isWritten;
    };
    QVector<TableWriter::Column> columns;
    for (const char *column : {"key", "figure", "unit", "a", "b", "difference", "a_against_b"})
        columns.append({QLatin1String(column), {}});
    return writeCsv(name, columns, rows);
}

Written SessionExport::writeComparisonPicture(const QString &name, const Compared &compared,
                                              bool isOverlaid)
{
    using Form = sessionplot::TwoSessions::Form;
    constexpr QSize size(1600, 900);
    QString reason;
    const bool isWritten = sessionplot::writePicture(
        name, size, {compared.model.get(), compared.other.get(), compared.zero, compared.otherZero},
        isOverlaid ? Form::Overlaid : Form::Stacked, &reason);
    return isWritten ? done(name) : failed(name, reason);
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

QStringList SessionExport::reportNames(const QString &folder, const QStringList &archives)
{
    QStringList names;
    for (const QString &archive : archives) {
        const QString stem = QFileInfo(archive).completeBaseName();
        QString name;
        for (int number = 1; name.isEmpty() || names.contains(name); ++number)
            name = QDir(folder).filePath(
                stem + (number > 1 ? QStringLiteral("-%1").arg(number) : QString())
                + QStringLiteral(".pdf"));
        names.append(name);
    }
    return names;
}

Written SessionExport::writeReports(const QString &folder, const QStringList &archives,
                                    const ReportNotes &notes, const Advance &advance)
{
    const QStringList names = reportNames(folder, archives);
    return makeReports(folder, archives, notes, advance,
                       [&](int number, const sessionplot::SessionReport &report, QString *problem) {
                           return sessionplot::writeReport(names.at(number), report, notes.paper,
                                                           problem);
                       });
}

Written SessionExport::printReports(QPagedPaintDevice *printer, const QStringList &archives,
                                    const ReportNotes &notes, const Advance &advance)
{
    QPainter painter;
    int pages = 0;
    Written printed = makeReports(
        QString(), archives, notes, advance,
        [&](int /*number*/, const sessionplot::SessionReport &report, QString *problem) {
            const bool isReady = pages == 0 ? painter.begin(printer) : printer->newPage();
            if (isReady)
                report.paint(&painter);
            else
                *problem = QCoreApplication::translate("cprviewer", "The printer takes no page.");
            pages += isReady ? 1 : 0;
            return isReady;
        });
    if (painter.isActive() && !painter.end())
        return failed({}, QCoreApplication::translate("cprviewer", "The printer takes no page."));
    printed.done =
        QCoreApplication::translate("cprviewer", "%n report(s) printed.", nullptr, pages);
    return printed;
}

Written SessionExport::writeClass(const QString &name, const sessionreview::ClassFigures &figures,
                                  QPageSize::PageSizeId paper)
{
    QString reason;
    return sessionplot::writeClassReport(name, sessionplot::ClassReport(figures), paper, &reason)
        ? done(name)
        : failed(name, reason);
}
