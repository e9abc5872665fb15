// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_PDFFILE_H
#define SESSIONPLOT_PDFFILE_H

#include <QPageLayout>
#include <QString>

#include <functional>

class QPagedPaintDevice;

namespace sessionplot {

/// Writes what \a print prints to \a fileName, in one step. False when it could not be written;
/// \a error (may be null) then says why.
bool writePdf(const QString &fileName, const QString &title, QPageSize::PageSizeId paper,
              QPageLayout::Orientation orientation,
              const std::function<bool(QPagedPaintDevice *)> &print, QString *error);

} // namespace sessionplot

#endif
