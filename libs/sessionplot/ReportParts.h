// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_REPORTPARTS_H
#define SESSIONPLOT_REPORTPARTS_H

#include "sessionreview/ClassFigures.h"

#include <vector>

class QPainter;
class QRectF;

namespace sessionplot {

class PageText;

/// What is drawn on a report. \a page has the fonts and colours.

/// How sessions of a learner followed each other: a small chart for each of the figures that matter
/// most, with its target. The last result is that of the report.
void paintTrend(QPainter *painter, const PageText &page,
                const std::vector<sessionreview::SessionResult> &results, bool hasCompressions,
                const QRectF &area);
/// Lines to write on.
void paintRules(QPainter *painter, const PageText &page, int count, const QRectF &area);
/// Lines for date and signature.
void paintSignature(QPainter *painter, const PageText &page, const QRectF &area);

} // namespace sessionplot

#endif
