// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/TwoSessions.h"

#include "sessionplot/Head.h"
#include "sessionplot/Lanes.h"
#include "sessionplot/ReviewPicture.h"

#include "sessionreview/Words.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace sessionplot {

namespace {

/// What is as high as \a part, from \a left to \a right.
QRectF beside(const QRectF &part, qreal left, qreal right)
{
    return QRectF(QPointF(left, part.top()), QPointF(right, part.bottom()));
}

/// Who trained what when, on one line; where both lie over one another, with a piece of the curve.
void paintHead(QPainter *painter, const Style &style, const PlotModel &model, bool isOther,
               TwoSessions::Form form, const QRectF &line)
{
    const sessionreview::Figures &figures = model.review().figures;
    const QString letter = isOther ? QStringLiteral("B") : QStringLiteral("A");
    style.bold.draw(painter, line, Qt::AlignLeft, letter, style.theme.text);
    QRectF texts = line.adjusted(1.5 * style.em, 0, 0, 0);
    if (form == TwoSessions::Form::Overlaid) {
        const QPointF sample(texts.left(), line.center().y());
        painter->setPen(QPen(isOther ? style.theme.otherCurve : style.theme.curve, 2 * style.hair,
                             isOther ? Qt::DashLine : Qt::SolidLine));
        painter->drawLine(sample, sample + QPointF(3 * style.em, 0));
        texts.adjust(4 * style.em, 0, 0, 0);
    }
    const QString names = learnersText(figures);
    const qreal width = std::min(style.bold.width(names) + 1, texts.width() / 2);
    style.bold.draw(painter, QRectF(texts.topLeft(), QSizeF(width, texts.height())), Qt::AlignLeft,
                    names, style.theme.text);
    QStringList rest({dateText(figures.start(), QLocale::ShortFormat),
                      sessionreview::protocolText(figures.protocol), lengthText(model)});
    if (figures.hasScores)
        rest.append(percentText(figures.overallScore));
    style.normal.draw(painter, texts.adjusted(width + style.em, 0, 0, 0), Qt::AlignLeft,
                      rest.join(QStringLiteral(" · ")), style.theme.mutedText);
}

} // namespace

TimeRange TwoSessions::range() const
{
    const qint64 shift = zero - otherZero;
    const qint64 from = std::min<qint64>(0, shift);
    return {from, std::max({model->length(), other->length() + shift, from + 1})};
}

QRectF paintOverlay(QPainter *painter, const Style &style, const TwoSessions &sessions,
                    const TimeRange &shown, const QRectF &area, WavePainter &wave,
                    WavePainter &otherWave)
{
    // A frame of one line stands around the lane.
    const qreal bottom = std::floor(area.bottom()) - 1 - std::ceil(timeAxisHeight(style));
    const QRectF plot(QPointF(std::ceil(area.left() + leftMargin(style)), area.top()),
                      QPointF(std::floor(area.right() - rightMargin(style)), bottom));
    if (!(plot.width() > 0) || !(plot.height() > 0) || shown.length() <= 0)
        return QRectF();
    const qint64 shift = sessions.otherZero - sessions.zero;
    const LaneContext context{painter, sessions.model, &style,
                              TimeScale(shown, plot.left(), plot.width(), sessions.zero)};
    const LaneContext otherContext{painter, sessions.other, &style,
                                   TimeScale({shown.from + shift, shown.to + shift}, plot.left(),
                                             plot.width(), sessions.otherZero)};
    const QRectF axis(plot.left(), plot.bottom(), plot.width(), area.bottom() - plot.bottom());
    const auto laneOf = [&](const QRectF &part) {
        return LaneArea{part, beside(part, area.left(), plot.left()),
                        beside(part, plot.right(), area.right())};
    };
    paintGround(context, plot);
    paintTimeGrid(context, plot);
    paintTwoDepths(context, otherContext, laneOf(plot), wave, otherWave);
    paintTimeAxis(context, laneOf(axis));
    return plot;
}

void paintTwoSessions(QPainter *painter, const TwoSessions &sessions, TwoSessions::Form form,
                      const QRectF &area, qreal columnsPerUnit)
{
    const Style style(Theme::light(), ReviewPicture::suitableTextSize(area.size()),
                      painter->device());
    painter->setRenderHint(QPainter::TextAntialiasing);
    painter->fillRect(area, style.theme.background);
    const qreal line = std::ceil(2 * style.em);
    QRectF rest = area.adjusted(style.em, style.em / 2, -style.em, -style.em / 2);
    const auto cut = [&rest](qreal height) {
        const QRectF top(rest.topLeft(), QSizeF(rest.width(), height));
        rest.setTop(top.bottom());
        return top;
    };
    const TimeRange range = sessions.range();
    if (form == TwoSessions::Form::Overlaid) {
        paintHead(painter, style, *sessions.model, false, form, cut(line));
        paintHead(painter, style, *sessions.other, true, form, cut(line));
        WavePainter wave;
        WavePainter otherWave;
        wave.setColumnsPerUnit(columnsPerUnit);
        otherWave.setColumnsPerUnit(columnsPerUnit);
        paintOverlay(painter, style, sessions, range, rest, wave, otherWave);
        return;
    }
    const qint64 shift = sessions.otherZero - sessions.zero;
    const qreal height = std::floor(rest.height() / 2 - line);
    const auto paint = [&](const PlotModel &model, bool isOther, const TimeRange &window,
                           qint64 zero) {
        paintHead(painter, style, model, isOther, form, cut(line));
        ReviewPicture picture(&model);
        picture.setParts(ReviewPicture::TimelineParts);
        picture.setTextSize(style.em);
        picture.setWindow(window, zero);
        picture.setColumnsPerUnit(columnsPerUnit);
        picture.paint(painter, cut(height));
    };
    paint(*sessions.model, false, range, sessions.zero);
    paint(*sessions.other, true, {range.from + shift, range.to + shift}, sessions.otherZero);
}

} // namespace sessionplot
