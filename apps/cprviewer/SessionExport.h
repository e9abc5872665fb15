// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_SESSIONEXPORT_H
#define CPRVIEWER_SESSIONEXPORT_H

#include <QString>

class CPRData;

/// What a session becomes for other programs. Until all of it is written, a file of the same name
/// stays as it was. False, and why in
/// \a error, when it is not written.
namespace SessionExport {

/// The table \a what (events, summary, waves, guidelines) as CSV, with the separators that
/// spreadsheets of the default locale expect.
bool writeTable(const QString &name, const QString &what, const CPRData &session, QString *error);
/// The review picture; the suffix decides on the form: png, svg or pdf.
bool writePicture(const QString &name, const CPRData &session, QString *error);

} // namespace SessionExport

#endif
