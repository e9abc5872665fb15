// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/PageText.h"

#include "private/PrintableText.h"

#include <QAbstractTextDocumentLayout>
#include <QPainter>
#include <QTextBoundaryFinder>
#include <QTextLayout>
#include <QTextTable>

#include <utility>

namespace sessionplot {

namespace {

constexpr int drawingNumber = QTextFormat::UserProperty + 1;

/// Lays the text out and returns where its first \a lines end; calls it the whole text when they
/// hold it.
int endOfLines(const QString &text, const QFont &font, qreal width, int lines, int *needed)
{
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    int count = 0;
    int end = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        if (++count <= lines)
            end = line.textStart() + line.textLength();
    }
    layout.endLayout();
    if (needed)
        *needed = count;
    return end;
}

} // namespace

int PageDrawings::add(const QSizeF &size, Paint paint)
{
    m_drawings.push_back({size, std::move(paint)});
    return static_cast<int>(m_drawings.size()) - 1;
}

QSizeF PageDrawings::intrinsicSize(QTextDocument * /*document*/, int /*position*/,
                                   const QTextFormat &format)
{
    return m_drawings.at(std::size_t(format.intProperty(drawingNumber))).size;
}

void PageDrawings::drawObject(QPainter *painter, const QRectF &area, QTextDocument * /*document*/,
                              int /*position*/, const QTextFormat &format)
{
    painter->save();
    m_drawings.at(std::size_t(format.intProperty(drawingNumber))).paint(painter, area);
    painter->restore();
}

PageText::PageText(const Theme &theme, qreal width, qreal scale) : m_theme(theme), m_scale(scale)
{
    m_document.setUndoRedoEnabled(false);
    m_document.setDocumentMargin(0);
    m_document.setUseDesignMetrics(true);
    m_document.setDefaultFont(font({}));
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    m_document.setDefaultTextOption(option);
    m_document.setTextWidth(width);
    m_document.documentLayout()->registerHandler(PageDrawings::type, &m_drawings);
    m_writing = QTextCursor(&m_document);
    m_writing.beginEditBlock();
}

QFont PageText::font(const Look &look) const
{
    QFont font = m_theme.font;
    font.setPixelSize(qMax(1, qRound(units(look.points))));
    font.setBold(look.isBold);
    // Text with letters that are joined to one, as in "file", cannot be searched for.
    constexpr qreal notJoined = 0.05;
    font.setLetterSpacing(QFont::AbsoluteSpacing, notJoined);
    return font;
}

QTextCursor PageText::end()
{
    QTextCursor cursor(&m_document);
    cursor.movePosition(QTextCursor::End);
    return cursor;
}

void PageText::write(QTextCursor cursor, const QString &text, const Look &look, qreal above)
{
    QTextBlockFormat block;
    // A name that is written from right to left does not move the paragraph.
    block.setLayoutDirection(Qt::LeftToRight);
    block.setAlignment(look.alignment);
    block.setTopMargin(units(above));
    cursor.setBlockFormat(block);
    QTextCharFormat format;
    format.setFont(font(look));
    format.setForeground(look.isMuted ? m_theme.mutedText : m_theme.text);
    cursor.mergeBlockCharFormat(format); // a cell's first paragraph shares it with the cell
    cursor.insertText(PrintableText::shown(text), format);
}

void PageText::paragraph(const QString &text, const Look &look, qreal above)
{
    QTextCursor cursor = end();
    if (!cursor.atBlockStart())
        cursor.insertBlock();
    write(cursor, text, look, above);
}

void PageText::addLine(QTextCursor &cursor, const QString &text, const Look &look, qreal above)
{
    cursor.insertBlock();
    write(cursor, text, look, above);
}

void PageText::gap(qreal points)
{
    draw({1, units(points)}, [](QPainter *, const QRectF &) {});
}

void PageText::draw(const QSizeF &size, PageDrawings::Paint paint)
{
    paragraph(QString(), {1});
    drawIn(end(), size, std::move(paint));
}

void PageText::drawIn(QTextCursor cursor, const QSizeF &size, PageDrawings::Paint paint)
{
    QTextCharFormat format;
    format.setFont(font({1}));
    format.setObjectType(PageDrawings::type);
    format.setProperty(drawingNumber, m_drawings.add(size, std::move(paint)));
    cursor.mergeBlockCharFormat(format); // a cell's first paragraph shares it with the cell
    cursor.insertText(QString(QChar::ObjectReplacementCharacter), format);
}

QTextTable *PageText::table(int rows, const std::vector<qreal> &widths, qreal padding)
{
    QTextTableFormat format;
    format.setBorder(0);
    format.setBorderStyle(QTextFrameFormat::BorderStyle_None);
    format.setCellSpacing(0);
    format.setCellPadding(0);
    format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
    QVector<QTextLength> lengths;
    for (const qreal percent : widths)
        lengths.append(QTextLength(QTextLength::PercentageLength, percent));
    format.setColumnWidthConstraints(lengths);
    QTextTable *table = end().insertTable(rows, lengths.size(), format);
    constexpr qreal betweenColumns = 3;
    QTextTableCellFormat cell;
    cell.setTopPadding(units(padding));
    cell.setBottomPadding(units(padding));
    const QTextTableCellFormat first = cell;
    cell.setLeftPadding(units(betweenColumns));
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < lengths.size(); ++column)
            table->cellAt(row, column).setFormat(column > 0 ? cell : first);
    }
    return table;
}

void PageText::pad(QTextTable *table, int row, int column, qreal above)
{
    QTextTableCell cell = table->cellAt(row, column);
    QTextTableCellFormat format = cell.format().toTableCellFormat();
    format.setTopPadding(units(above));
    cell.setFormat(format);
}

void PageText::underline(QTextTable *table, int row, int column, const QColor &color)
{
    QTextTableCell cell = table->cellAt(row, column);
    QTextTableCellFormat format = cell.format().toTableCellFormat();
    format.setBottomBorder(units(0.5));
    format.setBottomBorderStyle(QTextFrameFormat::BorderStyle_Solid);
    format.setBottomBorderBrush(color);
    cell.setFormat(format);
}

QString PageText::fitted(const QString &text, const Look &look, qreal width, int lines) const
{
    QString shown = PrintableText::shown(text);
    const QFont used = font(look);
    int needed = 0;
    int end = endOfLines(shown, used, width, lines, &needed);
    if (needed <= lines)
        return shown;
    const QChar ellipsis(0x2026);
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, shown);
    for (QString cut; end > 0; end = static_cast<int>(finder.toPreviousBoundary())) {
        finder.setPosition(end);
        cut = shown.left(end).trimmed() + ellipsis;
        endOfLines(cut, used, width, lines, &needed);
        if (needed <= lines)
            return cut;
    }
    return ellipsis;
}

int PageText::linesOf(const QString &text, const Look &look, qreal width) const
{
    int needed = 0;
    endOfLines(PrintableText::shown(text), font(look), width, 0, &needed);
    return needed;
}

QSizeF paperOf(QPainter *painter)
{
    constexpr qreal unitsPerInch = 72 * unitsPerPoint;
    const QPaintDevice *device = painter->device();
    const qreal scaleX = device->logicalDpiX() / unitsPerInch;
    const qreal scaleY = device->logicalDpiY() / unitsPerInch;
    painter->scale(scaleX, scaleY);
    return {device->width() / scaleX, device->height() / scaleY};
}

} // namespace sessionplot
