// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_CLASSREPORT_H
#define SESSIONPLOT_CLASSREPORT_H

#include "sessionreview/ClassFigures.h"

#include <QPageSize>
#include <QString>

class QPagedPaintDevice;

namespace sessionplot {

/// A class on paper: the faults that its learners share, and a table of learners by figures with
/// the class's means. As many pages as the learners need; each has the heads of the columns. Names
/// that are too long end in an ellipsis, what is not known is a dash.
class ClassReport {
public:
    explicit ClassReport(sessionreview::ClassFigures figures);

    /// When, as a title of the document.
    QString title() const;
    /// Draws all pages on \a device, best on landscape paper. False when it cannot be painted on.
    bool print(QPagedPaintDevice *device) const;

private:
    sessionreview::ClassFigures m_figures;
};

/// Writes the pages as a PDF with its fonts, on landscape paper, as writeReport() does.
bool writeClassReport(const QString &fileName, const ClassReport &report,
                      QPageSize::PageSizeId paper, QString *error);

} // namespace sessionplot

#endif
