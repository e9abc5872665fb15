// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_PAGETEXT_H
#define SESSIONPLOT_PAGETEXT_H

#include "sessionplot/Style.h"

#include <QTextCursor>
#include <QTextDocument>
#include <QTextObjectInterface>

#include <functional>
#include <initializer_list>
#include <vector>

class QPainter;
class QPagedPaintDevice;

namespace sessionplot {

/// Printed pages are laid out in this unit, a twentieth of a point, whatever device they go to: all
/// devices get the same lines.
constexpr qreal unitsPerPoint = 20;

/// What of a printed text is drawn: pictures, charts, lines to write on.
class PageDrawings final : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
public:
    using Paint = std::function<void(QPainter *painter, const QRectF &area)>;
    static constexpr int type = QTextFormat::UserObject + 1;

    /// The number by which a text refers to the drawing.
    int add(const QSizeF &size, Paint paint);

    QSizeF intrinsicSize(QTextDocument *document, int position, const QTextFormat &format) override;
    void drawObject(QPainter *painter, const QRectF &area, QTextDocument *document, int position,
                    const QTextFormat &format) override;

private:
    struct Drawing {
        QSizeF size;
        Paint paint;
    };
    std::vector<Drawing> m_drawings;
};

/// A text for printed pages: paragraphs and tables. What is inserted is plain text, never markup;
/// what somebody chose is shown as PrintableText::shown(). It is laid out once, by layOut(), when
/// all of it is there: a text that is laid out while it grows takes ten times as long.
class PageText {
public:
    /// For paper of \a width units. \a scale shrinks all texts and distances.
    PageText(const Theme &theme, qreal width, qreal scale);

    /// How a piece of text looks.
    struct Look {
        qreal points = 9;
        bool isBold = false;
        bool isMuted = false;
        Qt::Alignment alignment = Qt::AlignLeft;
    };

    /// Ends the writing. The height is known after it.
    void layOut() { m_writing.endEditBlock(); }
    QTextDocument &document() { return m_document; }
    const Theme &theme() const { return m_theme; }
    qreal width() const { return m_document.textWidth(); }
    qreal height() const { return m_document.size().height(); }
    /// A distance in units.
    qreal units(qreal points) const { return points * unitsPerPoint * m_scale; }
    QFont font(const Look &look) const;
    /// The font with its measures, for drawings.
    TextStyle style(const Look &look) const { return TextStyle(font(look), nullptr); }

    /// At the end of the text.
    QTextCursor end();
    /// Writes into the paragraph of \a cursor, which gets its alignment, with \a above units free.
    void write(QTextCursor cursor, const QString &text, const Look &look, qreal above = 0);
    /// The same at the end of the text, in a new paragraph.
    void paragraph(const QString &text, const Look &look, qreal above = 0);
    /// In another paragraph of the same cell.
    void addLine(QTextCursor &cursor, const QString &text, const Look &look, qreal above = 0);
    /// Free height at the end of the text, points.
    void gap(qreal points);
    /// A drawing at the end of the text, in a new paragraph.
    void draw(const QSizeF &size, PageDrawings::Paint paint);
    /// The same in the paragraph of \a cursor.
    void drawIn(QTextCursor cursor, const QSizeF &size, PageDrawings::Paint paint);
    /// A table at the end of the text. \a widths in percent of the paper. \a padding in points.
    QTextTable *table(int rows, const std::vector<qreal> &widths, qreal padding);
    /// More free height in a cell, points.
    void pad(QTextTable *table, int row, int column, qreal above);
    /// A line under a cell.
    void underline(QTextTable *table, int row, int column, const QColor &color);
    /// The begin of \a text that \a lines of \a width units have room for.
    QString fitted(const QString &text, const Look &look, qreal width, int lines) const;
    /// How many lines it takes.
    int linesOf(const QString &text, const Look &look, qreal width) const;

private:
    Theme m_theme;
    qreal m_scale;
    PageDrawings m_drawings; // before the document, which refers to it
    QTextDocument m_document;
    QTextCursor m_writing; // while nothing is laid out
};

/// The paper that \a device leaves for a text, in units; \a painter gets its scale.
QSizeF paperOf(QPainter *painter);

} // namespace sessionplot

#endif
