// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_PICTUREFILE_H
#define SESSIONPLOT_PICTUREFILE_H

#include "sessionplot/Style.h"
#include "sessionplot/TwoSessions.h"

#include <QPageLayout>
#include <QSize>
#include <QString>
#include <QStringList>

class CPRData;

namespace sessionplot {

class PlotModel;

/// The suffixes of the files that writePicture() writes.
QStringList pictureSuffixes();

/// Writes the review picture to \a fileName; the suffix decides on the form: png, svg or pdf.
/// \a from and \a to as in ReviewPicture::setRange(). Until all of the picture is written, a file
/// of that name stays as it was. False when it could not be written; \a error (may be null) then
/// says why. Needs a QGuiApplication, which may be offscreen.
bool writePicture(const QString &fileName, const QSize &size, qint64 from, qint64 to,
                  const CPRData &session, QString *error);
/// The same for a model, in any theme.
bool writePicture(const QString &fileName, const QSize &size, qint64 from, qint64 to,
                  const PlotModel &model, const Theme &theme, QString *error);
/// The same on one page of \a paper, between its margins; \a fileName has to end with .pdf.
bool writePicture(const QString &fileName, const QPageLayout &paper, qint64 from, qint64 to,
                  const PlotModel &model, const Theme &theme, QString *error);
/// Writes all of two sessions to \a fileName, a png, svg or pdf, in the light theme; the rest as
/// above.
bool writePicture(const QString &fileName, const QSize &size, const TwoSessions &sessions,
                  TwoSessions::Form form, QString *error);

} // namespace sessionplot

#endif
