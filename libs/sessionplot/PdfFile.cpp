// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/PdfFile.h"

#include "private/AtomicFile.h"
#include "private/PrintableText.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QPdfWriter>

namespace sessionplot {

bool writePdf(const QString &fileName, const QString &title, QPageSize::PageSizeId paper,
              QPageLayout::Orientation orientation,
              const std::function<bool(QPagedPaintDevice *)> &print, QString *error)
{
    constexpr qreal marginMm = 14;
    constexpr qreal lowMarginMm = 11;
    const auto fail = [&](const QString &reason) {
        if (error)
            *error = QCoreApplication::translate("sessionplot", "%1 cannot be written: %2")
                         .arg(fileName, reason);
        return false;
    };
    AtomicFile file(fileName);
    if (!file.open(QIODevice::WriteOnly))
        return fail(file.errorString());
    QBuffer encoded;
    encoded.open(QIODevice::WriteOnly);
    {
        QPdfWriter writer(&encoded);
        writer.setPageLayout(QPageLayout(QPageSize(paper), orientation,
                                         QMarginsF(marginMm, lowMarginMm, marginMm, lowMarginMm),
                                         QPageLayout::Millimeter));
        writer.setTitle(PrintableText::shown(title));
        writer.setCreator(QStringLiteral("libCPRData"));
        if (!print(&writer))
            return fail(QCoreApplication::translate("sessionplot", "the page cannot be drawn"));
    }
    if (file.write(encoded.data()) != encoded.size() || !file.finish())
        return fail(file.errorString());
    return true;
}

} // namespace sessionplot
