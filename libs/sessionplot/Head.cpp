// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/Head.h"

#include "sessionplot/Scales.h"
#include "sessionplot/Symbols.h"

#include "sessionreview/ClassFigures.h"
#include "sessionreview/Words.h"

#include <private/Units.h>

#include <QCoreApplication>
#include <QLocale>
#include <QPainter>

#include <vector>

namespace sessionplot {

using namespace sessionreview;

namespace {

using Units::msecsPerSecond;

// In em.
constexpr qreal tileWidth = 9.5;
constexpr qreal tileHeight = 4.2;
constexpr qreal minTextWidth = 24;
constexpr qreal rowGap = 0.25;

struct Tile {
    QString label;
    QString value;
    int percent;
    int minPercent; ///< percent that is asked for; 0 for none
};

QString notReceived()
{
    return QCoreApplication::translate("sessionplot", "not received");
}

QString separator()
{
    return QStringLiteral(" \u00b7 ");
}

/// What was trained and when, in \a width if that can be.
QString occasionText(const PlotModel &model, const TextStyle &style, qreal width)
{
    const Figures &figures = model.review().figures;
    QStringList parts{protocolText(figures.protocol), lengthText(model),
                      dateText(figures.start(), QLocale::LongFormat)};
    if (style.width(parts.join(separator())) > width)
        parts.last() = dateText(figures.start(), QLocale::ShortFormat);
    return parts.join(separator());
}

std::vector<Tile> tilesOf(const PlotModel &model)
{
    const Figures &figures = model.review().figures;
    std::vector<Tile> tiles;
    tiles.push_back({QCoreApplication::translate("sessionplot", "Overall"),
                     percentText(figures.overallScore), figures.overallScore,
                     figures.basicThreshold});
    if (model.review().figures.training.compressions)
        tiles.push_back({QCoreApplication::translate("sessionplot", "Compressions"),
                         percentText(figures.compressionScore), figures.compressionScore,
                         figures.basicThreshold});
    if (model.review().figures.training.ventilations)
        tiles.push_back({QCoreApplication::translate("sessionplot", "Ventilations"),
                         percentText(figures.ventilationScore), figures.ventilationScore,
                         figures.basicThreshold});
    if (model.review().figures.training.compressions)
        tiles.push_back({QCoreApplication::translate("sessionplot", "Flow time"),
                         percentText(figures.flowTime), figures.flowTime,
                         model.review().targets.minFlowTime});
    return tiles;
}

struct AdviceLine {
    QString label;
    QString text;
};

std::vector<AdviceLine> adviceLines(const Figures &figures)
{
    const QString advice = QCoreApplication::translate("sessionplot", "Advice");
    if (!figures.hasScores)
        return {{advice, notReceived()}};
    const QString primary = adviceText(figures.primaryAdvice, figures.primarySide);
    const QString secondary = adviceText(figures.secondaryAdvice, figures.secondarySide);
    if (primary.isEmpty() && secondary.isEmpty())
        return {{advice, QCoreApplication::translate("sessionplot", "none was given")}};
    std::vector<AdviceLine> lines;
    lines.push_back({QCoreApplication::translate("sessionplot", "First advice"), primary});
    if (!secondary.isEmpty())
        lines.push_back({QCoreApplication::translate("sessionplot", "Second advice"), secondary});
    return lines;
}

void paintTile(QPainter *painter, const Style &style, const Tile &tile, bool isReceived,
               const QRectF &area)
{
    const QRectF label(area.left(), area.top(), area.width(), style.small.line());
    style.small.draw(painter, label, Qt::AlignLeft, tile.label, style.theme.mutedText);
    const QRectF value(area.left(), label.bottom(), area.width(), style.large.line());
    if (!isReceived) {
        style.normal.draw(painter, value, Qt::AlignLeft, notReceived(), style.theme.text);
        return;
    }
    style.large.draw(painter, value, Qt::AlignLeft, tile.value, style.theme.text);

    const QRectF gauge(area.left(), value.bottom() + 0.1 * style.em, area.width(), 0.4 * style.em);
    painter->fillRect(gauge, style.theme.grid);
    const qreal part = qBound(0, tile.percent, 100) / 100.0;
    painter->fillRect(QRectF(gauge.left(), gauge.top(), part * gauge.width(), gauge.height()),
                      style.theme.bars);
    if (tile.minPercent > 0) {
        // The text and the mark say the same.
        const qreal x = gauge.left() + qBound(0, tile.minPercent, 100) / 100.0 * gauge.width();
        const qreal over = 0.15 * style.em;
        drawRule(painter, QPointF(x, gauge.top() - over), QPointF(x, gauge.bottom() + over),
                 2 * style.hair, style.theme.text);
        const QRectF rest = value.adjusted(style.large.width(tile.value) + 0.5 * style.em, 0, 0, 0);
        style.small.draw(painter, rest, Qt::AlignRight,
                         QCoreApplication::translate("sessionplot", "min. %1").arg(tile.minPercent),
                         style.theme.mutedText);
    }
}

bool hasTilesBeside(const Style &style, qreal width, std::size_t tiles)
{
    return width >= (qreal(tiles) * (tileWidth + 1) + minTextWidth) * style.em;
}

QRectF cutLine(QRectF &area, qreal height)
{
    const QRectF line(area.left(), area.top(), area.width(), height);
    area.setTop(area.top() + height);
    return line;
}

void paintTiles(QPainter *painter, const Style &style, const PlotModel &model, const QRectF &area)
{
    const std::vector<Tile> tiles = tilesOf(model);
    const qreal step = qMin(area.width() / qreal(tiles.size()), (tileWidth + 1) * style.em);
    qreal x = area.right() - qreal(tiles.size()) * step + style.em;
    if (!hasTilesBeside(style, area.width(), tiles.size()))
        x = area.left();
    for (const Tile &tile : tiles) {
        paintTile(painter, style, tile, model.review().figures.hasScores,
                  QRectF(x, area.top(), step - style.em, area.height()));
        x += step;
    }
}

void paintFull(QPainter *painter, const Style &style, const PlotModel &model, QRectF area)
{
    const Figures &figures = model.review().figures;
    const std::size_t tiles = tilesOf(model).size();
    const bool beside = hasTilesBeside(style, area.width(), tiles);
    const qreal line = style.normal.line() + rowGap * style.em;
    QRectF texts = area;
    if (beside) {
        paintTiles(painter, style, model,
                   QRectF(area.left(), area.top(), area.width(), tileHeight * style.em));
        texts.setWidth(area.width() - qreal(tiles) * (tileWidth + 1) * style.em);
    }
    style.large.draw(painter, cutLine(texts, style.large.line()), Qt::AlignLeft,
                     learnersText(figures), style.theme.text);
    style.normal.draw(painter, cutLine(texts, line), Qt::AlignLeft,
                      occasionText(model, style.normal, texts.width()), style.theme.text);
    style.normal.draw(painter, cutLine(texts, line), Qt::AlignLeft, equipmentText(model.review()),
                      style.theme.mutedText);
    if (!beside)
        paintTiles(painter, style, model, cutLine(texts, tileHeight * style.em));

    texts.setWidth(area.width());
    for (const AdviceLine &advice : adviceLines(figures)) {
        const QRectF box = cutLine(texts, line);
        const QString label = QStringLiteral("%1: ").arg(advice.label);
        style.bold.draw(painter, box, Qt::AlignLeft, label, style.theme.text);
        style.normal.draw(painter, box.adjusted(style.bold.width(label), 0, 0, 0), Qt::AlignLeft,
                          advice.text, style.theme.text);
    }
}

QString scoresText(const PlotModel &model)
{
    if (!model.review().figures.hasScores)
        return QCoreApplication::translate("sessionplot", "Scores and advice: %1")
            .arg(notReceived());
    QStringList parts;
    for (const Tile &tile : tilesOf(model))
        parts.append(QStringLiteral("%1 %2").arg(tile.label, tile.value));
    return parts.join(separator());
}

void paintShort(QPainter *painter, const Style &style, const PlotModel &model, QRectF area)
{
    const Figures &figures = model.review().figures;
    const qreal line = style.normal.line();
    const QRectF first = cutLine(area, line);
    const QString learners = learnersText(figures);
    const qreal gap = style.em;
    const qreal width = qMin(style.bold.width(learners), first.width() / 2);
    style.bold.draw(painter, QRectF(first.topLeft(), QSizeF(width + 1, line)), Qt::AlignLeft,
                    learners, style.theme.text);
    const QRectF rest = first.adjusted(width + gap, 0, 0, 0);
    style.normal.draw(painter, rest, Qt::AlignLeft, occasionText(model, style.normal, rest.width()),
                      style.theme.mutedText);

    QString text = scoresText(model);
    if (figures.hasScores) {
        for (const AdviceLine &advice : adviceLines(figures))
            text += separator() + advice.text;
    }
    style.normal.draw(painter, cutLine(area, line), Qt::AlignLeft, text, style.theme.text);
}

void paintLine(QPainter *painter, const Style &style, const PlotModel &model, const QRectF &area)
{
    const Figures &figures = model.review().figures;
    const QString score = figures.hasScores ? percentText(figures.overallScore) : QString();
    const qreal width = style.bold.width(score);
    style.bold.draw(painter, area, Qt::AlignRight, score, style.theme.text);
    style.normal.draw(painter, area.adjusted(0, 0, -width - style.em, 0), Qt::AlignLeft,
                      learnersText(figures), style.theme.text);
}

} // namespace

QString learnersText(const Figures &figures)
{
    if (figures.learners.isEmpty())
        return QCoreApplication::translate("sessionplot", "No learner named");
    QStringList names;
    for (const QString &name : figures.learners)
        names.append(learnerText(name));
    return names.join(QLatin1String(", ")).simplified();
}

QString dateText(const QDateTime &start, QLocale::FormatType format)
{
    if (!start.isValid())
        return QCoreApplication::translate("sessionplot", "Date not known");
    const QLocale locale;
    return QStringLiteral("%1, %2").arg(locale.toString(start.date(), format),
                                        locale.toString(start.time(), QLocale::ShortFormat));
}

QString lengthText(const PlotModel &model)
{
    const Figures &figures = model.review().figures;
    const qint64 length = figures.secs > 0 ? qint64(figures.secs) * msecsPerSecond : model.length();
    const bool withHours = needsHours({0, length});
    return QCoreApplication::translate("sessionplot", "Length %1 %2")
        .arg(timeText(length, msecsPerSecond, withHours),
             withHours ? QStringLiteral("h") : QStringLiteral("min"));
}

QString equipmentText(const SessionReview &review)
{
    const Figures &figures = review.figures;
    QStringList parts;
    const QString type = manikinText(figures.manikinType, figures.ageLetter);
    if (type.isEmpty() && figures.manikinName.isEmpty())
        parts.append(QCoreApplication::translate("sessionplot", "Manikin not known"));
    else if (figures.manikinName.isEmpty())
        parts.append(QCoreApplication::translate("sessionplot", "Manikin %1").arg(type));
    else
        parts.append(QCoreApplication::translate("sessionplot", "Manikin \u201c%1\u201d")
                         .arg(figures.manikinName.simplified()));
    if (!figures.manikinName.isEmpty() && !type.isEmpty())
        parts.append(type);
    if (!figures.guidelines.isEmpty())
        parts.append(
            QCoreApplication::translate("sessionplot", "Guidelines %1").arg(figures.guidelines));
    if (const int lost = lostMsecs(review))
        parts.append(QCoreApplication::translate("sessionplot", "%1 s not received")
                         .arg(QLocale().toString(double(lost) / msecsPerSecond, 'f', 1)));
    return parts.join(separator());
}

QString percentText(int percent)
{
    return percent < 0 ? QStringLiteral("\u2013") : QStringLiteral("%1 %").arg(percent);
}

qreal headHeight(const Style &style, HeadForm form, qreal width)
{
    const qreal line = style.normal.line();
    switch (form) {
    case HeadForm::Line:
        return line;
    case HeadForm::Short:
        return 2 * line;
    case HeadForm::Full:
        break;
    }
    constexpr std::size_t maxTiles = 4;
    const qreal row = line + rowGap * style.em;
    const qreal texts = style.large.line() + 4 * row;
    return hasTilesBeside(style, width, maxTiles) ? texts : texts + tileHeight * style.em;
}

void paintHead(QPainter *painter, const Style &style, const PlotModel &model, HeadForm form,
               const QRectF &area)
{
    switch (form) {
    case HeadForm::Line:
        paintLine(painter, style, model, area);
        break;
    case HeadForm::Short:
        paintShort(painter, style, model, area);
        break;
    case HeadForm::Full:
        paintFull(painter, style, model, area);
        break;
    }
}

} // namespace sessionplot
