// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_SESSIONEXPORT_H
#define CPRVIEWER_SESSIONEXPORT_H

#include <sessionreview/ClassFigures.h>

#include <QPageSize>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class CPRData;
class QPagedPaintDevice;

namespace sessionplot {
class PlotModel;
}

/// What a session becomes on the disk. Until all of it is written, a file of the same name stays as
/// it was. May run on any thread.
namespace SessionExport {

/// What became of a file.
struct Written {
    bool isThere = false; ///< the file is on the disk
    bool isComplete = false; ///< with all of the session
    QString name; ///< of the file
    QString kept; ///< of the file that was there before, where that is kept
    QString problem; ///< for people; empty when it is complete
    bool isSalvaged = false; ///< not all of the session's source is in it
    QString done; ///< for people, of what is complete; where there is more to say than the name
};

/// NAME.damaged.zip for NAME.zip, with a number where that is there already.
QString nameToKeep(const QString &name);

/// A copy for a file. Score and statistics that do not stand among the events of \a session stand
/// not among those of its copy either.
std::unique_ptr<CPRData> copyAsListed(const CPRData &session);
/// The session archive.
Written writeArchive(const QString &name, CPRData &session);
/// The same in place of a damaged file, which is kept beside it under nameToKeep().
Written replaceDamaged(const QString &name, CPRData &session);

/// The table \a what (events, summary, waves, guidelines) as CSV, with the separators that
/// spreadsheets of the default locale expect.
Written writeTable(const QString &name, const QString &what, const CPRData &session);
/// The review picture; the suffix decides on the form: png, svg or pdf.
Written writePicture(const QString &name, const CPRData &session);

/// Two sessions that are looked at side by side.
struct Compared {
    std::shared_ptr<const sessionplot::PlotModel> model;
    std::shared_ptr<const sessionplot::PlotModel> other;
    int zero = 0; ///< session time that stands at the same place in both, ms
    int otherZero = 0;
};
/// Their figures side by side as CSV, as in writeTable().
Written writeComparison(const QString &name, const Compared &compared);
/// Both as one picture, over each other or else one below the other; the suffix decides as in
/// writePicture().
Written writeComparisonPicture(const QString &name, const Compared &compared, bool isOverlaid);

/// What stands on the page to take home besides the session.
struct ReportNotes {
    QString remark; ///< the instructor's
    bool isDamaged = false; ///< the session could not be read whole
    /// All sessions of its learners that are known.
    std::vector<sessionreview::SessionResult> results;
    QPageSize::PageSizeId paper = QPageSize::A4;
};
/// The page to take home, a PDF.
Written writeReport(const QString &name, const CPRData &session, const ReportNotes &notes);
/// Is told, before each part, how many of how many are done; false ends the work.
using Advance = std::function<bool(int done, int total)>;
/// The same for each of \a archives into \a folder, under the names of reportNames(). The problem
/// tells that it was cancelled, or of the first that could not be made, and how many more there
/// are.
Written writeReports(const QString &folder, const QStringList &archives, const ReportNotes &notes,
                     const Advance &advance);
/// The same on \a printer, as one job. How many were printed stands in done.
Written printReports(QPagedPaintDevice *printer, const QStringList &archives,
                     const ReportNotes &notes, const Advance &advance);
/// The class, a PDF.
Written writeClass(const QString &name, const sessionreview::ClassFigures &figures,
                   QPageSize::PageSizeId paper);
/// The names of the reports of \a archives in \a folder: NAME.pdf for NAME.zip, and NAME-2.pdf for
/// the next one of that name, as those in subfolders of a library may have the same.
QStringList reportNames(const QString &folder, const QStringList &archives);

} // namespace SessionExport

#endif
