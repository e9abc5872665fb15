// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_HEAD_H
#define SESSIONPLOT_HEAD_H

#include "sessionplot/PlotModel.h"
#include "sessionplot/Style.h"

#include <QLocale>
#include <QString>

class QDateTime;
class QPainter;
class QRectF;

namespace sessionplot {

/// How much of the head there is room for.
enum class HeadForm {
    Line, ///< learners and overall score
    Short, ///< two lines
    Full ///< with large scores and both advices
};

qreal headHeight(const Style &style, HeadForm form, qreal width);
/// Who trained what when, the scores and the advices.
void paintHead(QPainter *painter, const Style &style, const PlotModel &model, HeadForm form,
               const QRectF &area);

/// @{
/// The texts of the head.
QString learnersText(const sessionreview::Figures &figures);
QString dateText(const QDateTime &start, QLocale::FormatType format);
QString lengthText(const PlotModel &model);
QString equipmentText(const sessionreview::SessionReview &review);
QString percentText(int percent); ///< a dash for one that is not known
/// @}

} // namespace sessionplot

#endif
