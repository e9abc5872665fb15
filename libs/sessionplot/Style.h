// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONPLOT_STYLE_H
#define SESSIONPLOT_STYLE_H

#include <QColor>
#include <QFont>
#include <QFontMetricsF>

class QPaintDevice;
class QPainter;
class QRectF;

namespace sessionplot {

/// Colours and the typeface of a picture. The colours stay apart for every kind of colour vision;
/// what matters is shown by shape or text as well.
struct Theme {
    QColor background;
    QColor lane; ///< behind the curves
    QColor frame;
    QColor grid;
    QColor text;
    QColor mutedText;
    QColor band; ///< translucent
    QColor bandEdge;
    QColor curve;
    QColor curveArea; ///< translucent
    QColor otherCurve; ///< of another session; differs in lightness
    QColor bars;
    QColor pause;
    QColor pauseLines; ///< hatching, by which a pause is told from the band without colour
    QColor loss;
    QColor fault;
    QColor flag;
    QColor cursor; ///< the time that is looked at; unlike all others
    QFont font; ///< its size is not used

    static Theme light();
    static Theme dark();
};

/// A font with its measures: the only way by which a picture lays out and draws a text. It may come
/// from a file; what is drawn of it is PrintableText::shown().
class TextStyle {
public:
    TextStyle(const QFont &font, QPaintDevice *device);

    qreal width(const QString &text) const;
    /// The text without the end that \a width has no room for.
    QString elided(const QString &text, qreal width) const;
    qreal line() const { return m_metrics.height(); }
    /// Draws one line of \a text inside \a box, its end left out where there is no room for it.
    void draw(QPainter *painter, const QRectF &box, Qt::Alignment alignment, const QString &text,
              const QColor &color) const;

private:
    QFont m_font;
    QFontMetricsF m_metrics;
};

/// A theme at a text size: what the parts of a picture share.
struct Style {
    /// \a textSize in pixels. Texts are measured for \a device, which may be null.
    Style(const Theme &theme, qreal textSize, QPaintDevice *device);

    Theme theme;
    qreal em; ///< the text size; all distances are multiples of it
    qreal hair; ///< width of a thin line
    qreal symbol; ///< width of a symbol beside a text
    TextStyle normal;
    TextStyle bold;
    TextStyle small;
    TextStyle smallBold;
    TextStyle large; ///< bold
};

} // namespace sessionplot

#endif
