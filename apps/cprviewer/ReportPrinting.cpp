// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ReportPrinting.h"

#include <QGuiApplication>
#include <QMarginsF>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>
#include <QWindow>

#include <memory>

void previewReport(const QString &title, QPageLayout::Orientation orientation,
                   const std::function<bool(QPagedPaintDevice *device)> &print)
{
    constexpr QMarginsF margins(15, 12, 15, 12); // mm
    const auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    printer->setDocName(title);
    printer->setPageOrientation(orientation);
    printer->setPageMargins(margins, QPageLayout::Millimeter);
    auto *dialog = new QPrintPreviewDialog(printer.get());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(title);
    dialog->setWindowModality(Qt::ApplicationModal);
    QObject::connect(dialog, &QPrintPreviewDialog::paintRequested, dialog,
                     [print](QPrinter *device) { print(device); });
    // The dialog prints on it until it is gone.
    QObject::connect(dialog, &QObject::destroyed, [printer] {});
    constexpr double share = 0.8;
    dialog->resize(QGuiApplication::primaryScreen()->availableSize() * share);
    dialog->winId(); // makes the window that belongs to the viewer's
    dialog->windowHandle()->setTransientParent(QGuiApplication::focusWindow());
    dialog->open();
}
