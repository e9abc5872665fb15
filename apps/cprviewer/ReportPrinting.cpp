// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ReportPrinting.h"

#include "WindowDialogs.h"

#include <QGuiApplication>
#include <QMarginsF>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QScreen>

namespace {

std::shared_ptr<QPrinter> newPrinter(const QString &title, QPageLayout::Orientation orientation)
{
    constexpr QMarginsF margins(15, 12, 15, 12); // mm
    auto printer = std::make_shared<QPrinter>(QPrinter::HighResolution);
    printer->setDocName(title);
    printer->setPageOrientation(orientation);
    printer->setPageMargins(margins, QPageLayout::Millimeter);
    return printer;
}

} // namespace

void previewReport(const QString &title, QPageLayout::Orientation orientation,
                   const std::function<bool(QPagedPaintDevice *device)> &print)
{
    const auto printer = newPrinter(title, orientation);
    auto *dialog = new QPrintPreviewDialog(printer.get());
    QObject::connect(dialog, &QPrintPreviewDialog::paintRequested, dialog,
                     [print](QPrinter *device) { print(device); });
    // The dialog prints on it until it is gone.
    QObject::connect(dialog, &QObject::destroyed, [printer] {});
    constexpr double share = 0.8;
    dialog->resize(QGuiApplication::primaryScreen()->availableSize() * share);
    openDialog(dialog, title);
}

void choosePrinter(const QString &title,
                   const std::function<void(const std::shared_ptr<QPrinter> &printer)> &print)
{
    const auto printer = newPrinter(title, QPageLayout::Portrait);
    auto *dialog = new QPrintDialog(printer.get());
    dialog->setOption(QAbstractPrintDialog::PrintPageRange, false);
    QObject::connect(dialog, qOverload<QPrinter *>(&QPrintDialog::accepted), dialog,
                     [printer, print] { print(printer); });
    openDialog(dialog, title);
}
