// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/SessionReport.h"

#include "private/PrintableText.h"
#include "sessionplot/Head.h"
#include "sessionplot/PageText.h"
#include "sessionplot/PdfFile.h"
#include "sessionplot/ReportParts.h"
#include "sessionplot/ReviewPicture.h"

#include "sessionreview/ClassFigures.h"
#include "sessionreview/Scores.h"
#include "sessionreview/Words.h"

#include <QCoreApplication>
#include <QLocale>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextTable>

#include <algorithm>
#include <iterator>
#include <memory>
#include <utility>

namespace sessionplot {

using namespace sessionreview;

namespace {

using Look = PageText::Look;

constexpr Look head{10.5, true, false, Qt::AlignLeft};
constexpr Look body{9, false, false, Qt::AlignLeft};
constexpr Look strong{9, true, false, Qt::AlignLeft};
constexpr Look muted{8, false, true, Qt::AlignLeft};

// Points.
constexpr qreal minPictureHeight = 150;
constexpr qreal maxPictureHeight = 310;
constexpr qreal figurePoints = 7.4;
constexpr qreal trendHeight = 68;
constexpr qreal lineToWriteOn = 18;
constexpr qreal minLinesHeight = 2 * lineToWriteOn;
constexpr qreal maxLinesHeight = 5 * lineToWriteOn;
constexpr qreal spaceAboveHead = 10;

constexpr std::size_t maxEarlier = 7;

/// What stands on the page.
struct Content {
    const PlotModel &model;
    const std::vector<SessionResult> &earlier;
    const QString &remark;
    bool isDamaged;
};

QString translated(const char *text)
{
    return QCoreApplication::translate("sessionplot", text);
}

/// The names in one text that \a lines of the paper hold in this look, "+37" for those that have no
/// room. The look becomes smaller when that helps.
QString namesText(const PageText &page, const QStringList &names, qreal width, Look *look)
{
    if (names.isEmpty())
        return learnersText({});
    constexpr struct {
        qreal points;
        int lines;
    } sizes[] = {{17, 1}, {14, 1}, {12, 2}, {9, 3}};
    for (const auto &size : sizes) {
        look->points = size.points;
        const QString all = learnersText([&names] {
            Figures figures;
            figures.learners = names;
            return figures;
        }());
        if (page.linesOf(all, *look, width) <= size.lines && all == PrintableText::shown(all))
            return all;
    }
    const int lines = sizes[std::size(sizes) - 1].lines;
    for (int count = names.size() - 1; count > 0; --count) {
        QStringList some;
        for (const QString &name : names.mid(0, count))
            some.append(page.fitted(learnerText(name), *look, width, 1));
        const QString text =
            some.join(QLatin1String(", ")) + QStringLiteral(" +%1").arg(names.size() - count);
        if (page.linesOf(text, *look, width) <= lines)
            return text;
    }
    return page.fitted(learnerText(names.first()), *look, width, lines);
}

void addHeading(PageText &page, const Content &content)
{
    const Figures &figures = content.model.review().figures;
    constexpr qreal leftPercent = 70;
    constexpr qreal all = 100;
    QTextTable *table = page.table(1, {leftPercent, all - leftPercent}, 0);
    const qreal width = page.width() * (leftPercent - 2) / all;

    Look name{17, true, false, Qt::AlignLeft};
    const QString names = namesText(page, figures.learners, width, &name);
    QTextCursor cursor = table->cellAt(0, 0).firstCursorPosition();
    page.write(cursor, names, name);
    cursor = table->cellAt(0, 0).lastCursorPosition();
    page.addLine(cursor,
                 page.fitted(dateText(figures.start(), QLocale::LongFormat), body, width, 1), body,
                 2);
    page.addLine(cursor,
                 QStringList({protocolText(figures.protocol), lengthText(content.model)})
                     .join(QStringLiteral(" \u00b7 ")),
                 body, 1);
    page.addLine(cursor, page.fitted(equipmentText(content.model.review()), muted, width, 2), muted,
                 1);

    const auto right = [](Look look) {
        look.alignment = Qt::AlignRight;
        return look;
    };
    cursor = table->cellAt(0, 1).firstCursorPosition();
    page.write(cursor, translated(QT_TRANSLATE_NOOP("sessionplot", "Overall score")), right(muted));
    cursor = table->cellAt(0, 1).lastCursorPosition();
    if (!figures.hasScores) {
        page.addLine(cursor, QStringLiteral("\u2013"), right({22, true}));
        page.addLine(cursor,
                     translated(QT_TRANSLATE_NOOP("sessionplot", "The manikin has sent no scores")),
                     right(muted));
        return;
    }
    page.addLine(cursor, percentText(figures.overallScore), right({22, true}));
    const Verdict verdict =
        verdictOn(figures.overallScore, figures.basicThreshold, figures.advancedThreshold);
    if (!verdict.text.isEmpty()) {
        page.addLine(cursor,
                     verdict.isPassed ? translated(QT_TRANSLATE_NOOP("sessionplot", "Passed"))
                                      : translated(QT_TRANSLATE_NOOP("sessionplot", "Not passed")),
                     right({11, true}));
        page.addLine(cursor, verdict.text, right(muted));
    }
}

/// The parts of the score. The manikin's advice is left out: it goes by its own rules and could
/// contradict what is said below.
void addScores(PageText &page, const Figures &figures)
{
    if (!figures.hasScores)
        return;
    QStringList scores;
    const auto add = [&scores](const QString &title, int percent) {
        scores.append(QStringLiteral("%1 %2").arg(title, percentText(percent)));
    };
    if (figures.training.compressions)
        add(translated(QT_TRANSLATE_NOOP("sessionplot", "Compressions")), figures.compressionScore);
    if (figures.training.ventilations)
        add(translated(QT_TRANSLATE_NOOP("sessionplot", "Ventilations")), figures.ventilationScore);
    if (figures.training.compressions)
        add(translated(QT_TRANSLATE_NOOP("sessionplot", "Flow time")), figures.flowTime);
    page.paragraph(scores.join(QStringLiteral(" \u00b7 ")), muted, 3);
}

void addFindings(PageText &page, QTextTable *table, int column, const QString &title,
                 const std::vector<Finding> &findings, const QString &none, const Targets &targets)
{
    const QLocale locale;
    QTextTableCell cell = table->cellAt(0, column);
    page.write(cell.firstCursorPosition(), title, head);
    page.underline(table, 0, column, page.theme().frame);
    page.pad(table, 1, column, 2);
    cell = table->cellAt(1, column);
    if (findings.empty()) {
        page.write(cell.firstCursorPosition(), none, body);
        return;
    }
    QTextCursor cursor = cell.firstCursorPosition();
    for (std::size_t i = 0; i < std::min(findings.size(), maxToldFindings); ++i) {
        const Finding &finding = findings[i];
        const QString text = finding.isGood() || findings.size() == 1
            ? finding.text()
            : QStringLiteral("%1. %2").arg(i + 1).arg(finding.text());
        constexpr qreal above = 3;
        if (i == 0)
            page.write(cursor, text, strong, above);
        else
            page.addLine(cursor, text, strong, above);
        cursor = cell.lastCursorPosition();
        const QString target = targetText(*finding.figure, targets, locale);
        page.addLine(cursor,
                     target.isEmpty()
                         ? finding.figureText(locale)
                         : translated(QT_TRANSLATE_NOOP("sessionplot", "%1 (target: %2)"))
                               .arg(finding.figureText(locale), target),
                     muted);
        cursor = cell.lastCursorPosition();
    }
}

void addFeedback(PageText &page, const SessionReview &review)
{
    const Feedback feedback = feedbackOn(review);
    const bool isJudged = !feedback.good.empty() || !feedback.toWorkOn.empty();
    const QString tooLittle =
        translated(QT_TRANSLATE_NOOP("sessionplot", "Too little was recorded to say."));
    page.gap(spaceAboveHead);
    QTextTable *table = page.table(2, {48, 4, 48}, 1);
    addFindings(page, table, 0, translated(QT_TRANSLATE_NOOP("sessionplot", "This was good")),
                feedback.good,
                isJudged ? translated(QT_TRANSLATE_NOOP(
                    "sessionplot", "Nothing is right often enough yet. Keep practising."))
                         : tooLittle,
                review.targets);
    addFindings(page, table, 2, translated(QT_TRANSLATE_NOOP("sessionplot", "Work on this")),
                feedback.toWorkOn,
                isJudged ? translated(QT_TRANSLATE_NOOP("sessionplot", "Nothing: keep it up."))
                         : tooLittle,
                review.targets);
}

/// Light, and told apart by lightness on a printer without colours.
Theme printTheme()
{
    Theme theme = Theme::light();
    theme.bars = QColor(120, 170, 208);
    theme.fault = QColor(140, 42, 0);
    theme.pause = QColor(226, 228, 231);
    return theme;
}

void addPicture(PageText &page, const Content &content, qreal height)
{
    page.gap(spaceAboveHead - 4);
    const PlotModel *model = &content.model;
    const qreal textSize = page.units(7.5);
    page.draw({page.width(), page.units(height)},
              [model, textSize](QPainter *painter, const QRectF &area) {
                  constexpr qreal columnsPerPoint = 4;
                  ReviewPicture picture(model);
                  picture.setTheme(printTheme());
                  picture.setParts(ReviewPicture::TimelineParts | ReviewPicture::LegendPart);
                  picture.setTextSize(textSize);
                  picture.setColumnsPerUnit(columnsPerPoint / unitsPerPoint);
                  picture.paint(painter, area);
              });
}

struct FigureRow {
    QString title;
    QString value;
    QString target;
};

std::vector<FigureRow> figureRows(const SessionReview &review)
{
    const Training &training = review.figures.training;
    std::vector<const RecordedFigure *> figures;
    const auto add = [&figures](bool isTrained, std::initializer_list<const char *> keys) {
        for (const char *key : keys) {
            if (isTrained)
                figures.push_back(recordedFigure(key));
        }
    };
    add(training.compressions,
        {"compressions", "mean_depth_mm", "correct_depth_percent", "mean_rate_per_min",
         "correct_rate_percent", "complete_release_percent", "correct_hands_percent",
         "compression_fraction", "longest_pause_s"});
    add(trainingOf(review.figures.protocol).cycles, {"correct_cycles_percent"});
    add(training.ventilations, {"ventilations", "mean_volume_ml", "correct_volume_percent"});
    add(!shockPausesOf(review).empty(), {"shocks", "mean_peri_shock_pause_s"});
    const QLocale locale;
    std::vector<FigureRow> rows;
    for (const RecordedFigure *figure : figures) {
        const std::optional<double> value = figure->value(review);
        rows.push_back({figure->titleText(),
                        value ? figure->text(*value, locale) : QStringLiteral("\u2013"),
                        targetText(*figure, review.targets, locale)});
    }
    return rows;
}

void addFigures(PageText &page, const SessionReview &review)
{
    const std::vector<FigureRow> rows = figureRows(review);
    const int perSide = static_cast<int>(rows.size() + 1) / 2;
    page.gap(spaceAboveHead - 4);
    constexpr int columns = 4;
    QTextTable *table = page.table(perSide + 1, {23, 12.5, 13.5, 2, 23, 12.5, 13.5}, 1.6);
    Look value{figurePoints, true, false, Qt::AlignRight};
    Look title{figurePoints, false, false, Qt::AlignLeft};
    Look target{figurePoints, false, true, Qt::AlignRight};
    const auto cell = [&](int row, int column, const QString &text, const Look &look) {
        page.write(table->cellAt(row, column).firstCursorPosition(), text, look);
        page.underline(table, row, column, row == 0 ? page.theme().frame : page.theme().grid);
    };
    for (int side = 0; side < 2; ++side) {
        const int first = side * columns;
        cell(0, first, translated(QT_TRANSLATE_NOOP("sessionplot", "Figures")), strong);
        cell(0, first + 1, QString(), strong);
        cell(0, first + 2, translated(QT_TRANSLATE_NOOP("sessionplot", "Target")), target);
        for (int i = 0; i < perSide; ++i) {
            const std::size_t index = std::size_t(side) * std::size_t(perSide) + std::size_t(i);
            if (index >= rows.size())
                break;
            cell(i + 1, first, rows[index].title, title);
            cell(i + 1, first + 1, rows[index].value, value);
            cell(i + 1, first + 2, rows[index].target, target);
        }
    }
}

void addTrend(PageText &page, const Content &content)
{
    if (content.earlier.empty())
        return;
    const std::size_t count = std::min(content.earlier.size(), maxEarlier);
    std::vector<SessionResult> results(content.earlier.end() - std::ptrdiff_t(count),
                                       content.earlier.end());
    results.push_back(resultOf(content.model.review()));
    const bool hasCompressions = content.model.review().figures.training.compressions;
    page.gap(spaceAboveHead);
    page.paragraph(translated(QT_TRANSLATE_NOOP("sessionplot", "The last sessions")), head);
    page.draw({page.width(), page.units(trendHeight)},
              [&page, results, hasCompressions](QPainter *painter, const QRectF &area) {
                  paintTrend(painter, page, results, hasCompressions, area);
              });
}

void addRemark(PageText &page, const Content &content, qreal linesHeight)
{
    constexpr int maxLines = 4;
    constexpr qreal signature = 32;
    page.gap(spaceAboveHead);
    page.paragraph(translated(QT_TRANSLATE_NOOP("sessionplot", "Instructor's remark")), head);
    if (content.remark.trimmed().isEmpty()) {
        const int lines = std::max(1, static_cast<int>(linesHeight / lineToWriteOn));
        page.draw({page.width(), page.units(linesHeight)},
                  [&page, lines](QPainter *painter, const QRectF &area) {
                      paintRules(painter, page, lines, area);
                  });
    } else {
        page.paragraph(page.fitted(content.remark, body, page.width(), maxLines), body, 2);
    }
    page.draw(
        {page.width(), page.units(signature)},
        [&page](QPainter *painter, const QRectF &area) { paintSignature(painter, page, area); });
    const QString foot = translated(QT_TRANSLATE_NOOP(
        "sessionplot",
        "Figures are worked out from the events that were recorded, and judged by the session's "
        "guideline set. A dash stands for what was not recorded or not received."));
    page.paragraph(foot, {6.5, false, true}, 3);
}

void build(PageText &page, const Content &content, qreal pictureHeight, qreal linesHeight)
{
    addHeading(page, content);
    addScores(page, content.model.review().figures);
    if (content.isDamaged)
        page.paragraph(translated(QT_TRANSLATE_NOOP(
                           "sessionplot",
                           "The session's file is damaged. This page shows what could be read.")),
                       strong, 4);
    addFeedback(page, content.model.review());
    addPicture(page, content, pictureHeight);
    addFigures(page, content.model.review());
    addTrend(page, content);
    addRemark(page, content, linesHeight);
}

} // namespace

void SessionReport::setEarlier(std::vector<SessionResult> earlier)
{
    m_earlier = std::move(earlier);
}

QString SessionReport::title() const
{
    const Figures &figures = m_model->review().figures;
    return QStringLiteral("%1, %2").arg(learnersText(figures),
                                        dateText(figures.start(), QLocale::ShortFormat));
}

void SessionReport::paint(QPainter *painter) const
{
    painter->save();
    const QSizeF paper = paperOf(painter);
    const Content content{*m_model, m_earlier, m_remark, m_isDamaged};
    constexpr qreal smallest = 0.5;
    constexpr qreal step = 0.04;
    for (qreal scale = 1;; scale -= step) {
        const auto built = [&](qreal pictureHeight, qreal linesHeight) {
            auto page = std::make_unique<PageText>(Theme::light(), paper.width(), scale);
            build(*page, content, pictureHeight, linesHeight);
            page->layOut();
            return page;
        };
        std::unique_ptr<PageText> page = built(minPictureHeight, minLinesHeight);
        const qreal spare = (paper.height() - page->height()) / page->units(1) - 1;
        if (spare < 0 && scale > smallest)
            continue;
        // The picture grows first, then the room for a remark.
        const qreal forPicture = std::clamp(spare, 0.0, maxPictureHeight - minPictureHeight);
        const qreal forLines = std::clamp(spare - forPicture, 0.0, maxLinesHeight - minLinesHeight);
        page = built(minPictureHeight + forPicture, minLinesHeight + forLines);
        page->document().drawContents(painter);
        break;
    }
    painter->restore();
}

bool SessionReport::print(QPagedPaintDevice *device) const
{
    QPainter painter;
    if (!painter.begin(device))
        return false;
    paint(&painter);
    return painter.end();
}

bool writeReport(const QString &fileName, const SessionReport &report, QPageSize::PageSizeId paper,
                 QString *error)
{
    return writePdf(
        fileName, report.title(), paper, QPageLayout::Portrait,
        [&report](QPagedPaintDevice *device) { return report.print(device); }, error);
}

} // namespace sessionplot
