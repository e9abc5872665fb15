// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_SESSIONREPORT_H
#define SESSIONPLOT_SESSIONREPORT_H

#include "sessionplot/PlotModel.h"

#include "sessionreview/ClassFigures.h"

#include <QPageSize>
#include <QString>

#include <vector>

class QPagedPaintDevice;
class QPainter;

namespace sessionplot {

/// The page that a learner takes home: who, what and when, the score, what was good and what to
/// work on, the review picture, the figures with their targets, how the last sessions went, and
/// room for the instructor's remark and signature.
///
/// It is always one page: pictures give way to texts, all texts shrink, and names and a remark that
/// are still too long end in an ellipsis. What was not recorded or not received is a dash. Texts
/// are in the language of the translators that are installed, numbers and dates in QLocale().
class SessionReport {
public:
    /// \a model is not owned and has to live as long as the report.
    explicit SessionReport(const PlotModel &model) : m_model(&model) { }

    /// The learner's sessions before this one, in order of time (sessionreview::earlierOf()). The
    /// last of them make a trend with this one; without any there is none.
    void setEarlier(std::vector<sessionreview::SessionResult> earlier);
    /// The instructor's remark, plain text of one paragraph. Without one there are lines to write
    /// on.
    void setRemark(const QString &remark) { m_remark = remark; }
    /// Says on the page that the session could not be read whole.
    void setDamaged(bool isDamaged) { m_isDamaged = isDamaged; }

    /// Who and when, as a title of the document; a line of plain text.
    QString title() const;
    /// Draws the page on what \a painter has begun to paint on: a QPdfWriter or a QPrinter, whose
    /// margins stay free. A page of several reports begins with QPagedPaintDevice::newPage().
    void paint(QPainter *painter) const;
    /// Draws the page as the only one of \a device. False when it cannot be painted on.
    bool print(QPagedPaintDevice *device) const;

private:
    const PlotModel *m_model;
    std::vector<sessionreview::SessionResult> m_earlier;
    QString m_remark;
    bool m_isDamaged = false;
};

/// Writes the page as a PDF with its fonts. Until all of it is written, a file of that name stays
/// as it was. False when it could not be written; \a error (may be null) then says why. Needs a
/// QGuiApplication, which may be offscreen; reports may be written in several threads at once.
bool writeReport(const QString &fileName, const SessionReport &report, QPageSize::PageSizeId paper,
                 QString *error);

} // namespace sessionplot

#endif
