// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRVIEWER_REPORTPRINTING_H
#define CPRVIEWER_REPORTPRINTING_H

#include <QPageLayout>
#include <QString>

#include <functional>
#include <memory>

class QPagedPaintDevice;
class QPrinter;

/// Opens a window with the pages as they will be printed, in which printer and paper are chosen.
/// \a print draws them; it is called again whenever they change, until the window is closed. Needs
/// a QApplication.
void previewReport(const QString &title, QPageLayout::Orientation orientation,
                   const std::function<bool(QPagedPaintDevice *device)> &print);

/// Asks for a printer, and calls \a print with it if one was chosen; whoever keeps it owns it.
/// \a title names the job, too. Needs a QApplication.
void choosePrinter(const QString &title,
                   const std::function<void(const std::shared_ptr<QPrinter> &printer)> &print);

#endif
