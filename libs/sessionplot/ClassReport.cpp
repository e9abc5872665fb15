// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/ClassReport.h"

#include "sessionplot/Head.h"
#include "sessionplot/PageText.h"
#include "sessionplot/PdfFile.h"

#include <QCoreApplication>
#include <QLocale>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QTextTable>

#include <algorithm>
#include <utility>

namespace sessionplot {

using namespace sessionreview;

namespace {

using Look = PageText::Look;

constexpr Look large{17, true, false, Qt::AlignLeft};
constexpr Look head{10.5, true, false, Qt::AlignLeft};
constexpr Look body{9, false, false, Qt::AlignLeft};
constexpr Look columnHead{6.6, false, true, Qt::AlignRight};
constexpr Look number{8, false, false, Qt::AlignRight};
constexpr Look foot{6.5, false, true, Qt::AlignLeft};

constexpr int firstFigure = 4; // column

QString translated(const char *text)
{
    return QCoreApplication::translate("sessionplot", text);
}

QString dash()
{
    return QStringLiteral("\u2013");
}

/// From the first of the learners' last sessions to the last.
QString datesText(const ClassFigures &figures)
{
    QDateTime first;
    QDateTime last;
    for (const ClassRow &row : figures.rows) {
        const QDateTime &start = row.last.start;
        if (start.isValid() && (!first.isValid() || start < first))
            first = start;
        if (start.isValid() && (!last.isValid() || start > last))
            last = start;
    }
    if (!first.isValid())
        return dateText(first, QLocale::LongFormat);
    const QLocale locale;
    const QString from = locale.toString(first.date(), QLocale::LongFormat);
    return first.date() == last.date()
        ? from
        : QStringLiteral("%1 \u2013 %2")
              .arg(from, locale.toString(last.date(), QLocale::LongFormat));
}

void addFaults(PageText &page, const ClassFigures &figures)
{
    page.gap(8);
    page.paragraph(translated(QT_TRANSLATE_NOOP("sessionplot", "What the class has to work on")),
                   head);
    page.gap(2);
    if (figures.faults.empty()) {
        page.paragraph(translated(QT_TRANSLATE_NOOP("sessionplot", "No fault was found.")), body);
        return;
    }
    QTextTable *table = page.table(static_cast<int>(figures.faults.size()), {12, 12, 76}, 1.2);
    for (std::size_t i = 0; i < figures.faults.size(); ++i) {
        const SharedFault &fault = figures.faults[i];
        const int row = static_cast<int>(i);
        const auto cell = [&](int column) { return table->cellAt(row, column); };
        // A bar per learner: the share is seen before it is read.
        page.write(cell(0).firstCursorPosition(),
                   translated(QT_TRANSLATE_NOOP("sessionplot", "%1 learners"))
                       .arg(countText(fault.learners, fault.judged)),
                   body);
        page.drawIn(cell(1).firstCursorPosition(), {page.units(80), page.units(7)},
                    [&page, fault](QPainter *painter, const QRectF &area) {
                        painter->fillRect(area, page.theme().grid);
                        const qreal share = qreal(fault.learners) / std::max(fault.judged, 1);
                        painter->fillRect(
                            QRectF(area.left(), area.top(), share * area.width(), area.height()),
                            page.theme().mutedText);
                    });
        page.write(cell(2).firstCursorPosition(), faultText(fault.fault),
                   {body.points, true, false, Qt::AlignLeft});
    }
}

void addRow(PageText &page, QTextTable *table, int row, const QStringList &texts, bool isBold,
            bool isHead)
{
    for (int column = 0; column < texts.size(); ++column) {
        Look look = isHead ? columnHead : number;
        look.isBold = isBold;
        if (column == 0)
            look.alignment = Qt::AlignLeft;
        page.write(table->cellAt(row, column).firstCursorPosition(), texts.at(column), look);
        page.underline(table, row, column,
                       isHead || isBold ? page.theme().frame : page.theme().grid);
    }
}

/// The letters of the longest word of a column's head, which should not be broken; at least as many
/// as the numbers below need.
qsizetype lettersOf(const QString &title)
{
    qsizetype letters = 9;
    for (const QString &word : title.split(QLatin1Char(' ')))
        letters = qMax<qsizetype>(letters, word.size());
    return letters;
}

QStringList figureHeads()
{
    QStringList heads;
    for (const RecordedFigure *figure : classFigures()) {
        const QString unit = figure->unitText();
        heads.append(unit.isEmpty() ? figure->titleText()
                                    : QStringLiteral("%1, %2").arg(figure->titleText(), unit));
    }
    return heads;
}

void addLearners(PageText &page, const ClassFigures &figures)
{
    constexpr qreal namePercent = 19;
    constexpr qreal numberPercent = 5.5;
    constexpr qreal datePercent = 8;
    constexpr qreal all = 100;
    std::vector<qreal> widths{namePercent, numberPercent + 1, datePercent, numberPercent};
    const qreal rest = all - namePercent - 2 * numberPercent - 1 - datePercent;
    const QStringList heads = figureHeads();
    qreal letters = 0;
    for (const QString &text : heads)
        letters += qreal(lettersOf(text));
    for (const QString &text : heads)
        widths.push_back(rest * qreal(lettersOf(text)) / letters);

    page.gap(8);
    page.paragraph(translated(QT_TRANSLATE_NOOP("sessionplot", "Learners, by their last session")),
                   head);
    page.gap(2);
    const QLocale locale;
    QTextTable *table = page.table(static_cast<int>(figures.rows.size()) + 2, widths, 2);
    QTextTableFormat format = table->format();
    format.setHeaderRowCount(1);
    table->setFormat(format);

    const QStringList texts{translated(QT_TRANSLATE_NOOP("sessionplot", "Learner")),
                            translated(QT_TRANSLATE_NOOP("sessionplot", "Sessions")),
                            translated(QT_TRANSLATE_NOOP("sessionplot", "Last session")),
                            translated(QT_TRANSLATE_NOOP("sessionplot", "Score"))};
    addRow(page, table, 0, texts + heads, false, true);

    const auto add = [&](int row, QStringList first,
                         const std::vector<std::optional<double>> &values, bool isBold) {
        for (std::size_t i = 0; i < classFigures().size(); ++i) {
            const std::optional<double> value = i < values.size() ? values[i] : std::nullopt;
            first.append(value ? classFigures()[i]->number(*value, locale) : dash());
        }
        addRow(page, table, row, first, isBold, false);
    };
    const auto scoreText = [](const std::optional<int> &score) {
        return score ? percentText(*score) : dash();
    };
    const qreal nameWidth = page.width() * (namePercent - 1) / all;
    int row = 0;
    for (const ClassRow &learner : figures.rows) {
        const SessionResult &last = learner.last;
        add(++row,
            {page.fitted(learnerText(learner.learner).simplified(), number, nameWidth, 2),
             QString::number(learner.sessions),
             last.start.isValid() ? locale.toString(last.start.date(), QLocale::ShortFormat)
                                  : dash(),
             scoreText(last.score)},
            last.figures, false);
    }
    add(++row,
        {translated(QT_TRANSLATE_NOOP("sessionplot", "Mean of the class")),
         QString::number(figures.sessions), QString(),
         scoreText(figures.meanScore ? std::optional(qRound(*figures.meanScore)) : std::nullopt)},
        figures.means, true);
}

} // namespace

ClassReport::ClassReport(ClassFigures figures) : m_figures(std::move(figures))
{
}

QString ClassReport::title() const
{
    return QStringLiteral("%1, %2").arg(translated(QT_TRANSLATE_NOOP("sessionplot", "Class")),
                                        datesText(m_figures));
}

bool ClassReport::print(QPagedPaintDevice *device) const
{
    QPainter painter;
    if (!painter.begin(device))
        return false;
    const QSizeF paper = paperOf(&painter);
    PageText page(Theme::light(), paper.width(), 1);
    const TextStyle footStyle = page.style(foot);
    const qreal footHeight = 2 * footStyle.line();
    page.document().setPageSize({paper.width(), paper.height() - footHeight});

    page.paragraph(title(), large);
    QStringList counts{
        translated(QT_TRANSLATE_NOOP("sessionplot", "Learners: %1")).arg(m_figures.rows.size()),
        translated(QT_TRANSLATE_NOOP("sessionplot", "Sessions: %1")).arg(m_figures.sessions)};
    if (m_figures.withThreshold > 0)
        counts.append(translated(QT_TRANSLATE_NOOP("sessionplot", "Passed: %1"))
                          .arg(countText(m_figures.passed, m_figures.withThreshold)));
    page.paragraph(counts.join(QStringLiteral(" \u00b7 ")), body, 2);
    addFaults(page, m_figures);
    addLearners(page, m_figures);
    page.layOut();

    const int pages = page.document().pageCount();
    const qreal height = page.document().pageSize().height();
    const QString note = translated(QT_TRANSLATE_NOOP(
        "sessionplot",
        "Figures are those of each learner's last session, worked out from the events that were "
        "recorded. A dash stands for what was not recorded or not received."));
    for (int i = 0; i < pages; ++i) {
        if (i > 0 && !device->newPage())
            return false;
        painter.save();
        painter.translate(0, -i * height);
        page.document().drawContents(&painter, QRectF(0, i * height, paper.width(), height));
        painter.restore();
        const QRectF line(0, paper.height() - footStyle.line(), paper.width(), footStyle.line());
        const QString place = QStringLiteral("%1 / %2").arg(i + 1).arg(pages);
        footStyle.draw(&painter, line, Qt::AlignRight, place, page.theme().mutedText);
        footStyle.draw(&painter,
                       line.adjusted(0, 0, -footStyle.width(place) - page.units(foot.points), 0),
                       Qt::AlignLeft, note, page.theme().mutedText);
    }
    return painter.end();
}

bool writeClassReport(const QString &fileName, const ClassReport &report,
                      QPageSize::PageSizeId paper, QString *error)
{
    return writePdf(
        fileName, report.title(), paper, QPageLayout::Landscape,
        [&report](QPagedPaintDevice *device) { return report.print(device); }, error);
}

} // namespace sessionplot
