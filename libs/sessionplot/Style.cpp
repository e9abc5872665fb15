// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/Style.h"

#include "private/PrintableText.h"

#include <QPaintDevice>
#include <QPainter>
#include <QRectF>

#include <cmath>

namespace sessionplot {

namespace {

constexpr qreal smallSize = 0.86;
constexpr qreal largeSize = 1.5;
constexpr qreal symbolSize = 0.7;
constexpr qreal pixelsPerHair = 14; // of text size

QFont sized(const QFont &font, qreal size, bool isBold = false)
{
    QFont result = font;
    result.setPixelSize(qMax(1, qRound(size)));
    result.setBold(isBold);
    return result;
}

QFontMetricsF metricsOf(const QFont &font, QPaintDevice *device)
{
    return device ? QFontMetricsF(font, device) : QFontMetricsF(font);
}

} // namespace

// The hues are those of the palette of Okabe and Ito; lines and texts are darkened or lightened
// until they stand out from the background.
Theme Theme::light()
{
    Theme theme;
    theme.background = QColor(255, 255, 255);
    theme.lane = QColor(247, 248, 250);
    theme.frame = QColor(168, 174, 182);
    theme.grid = QColor(228, 231, 235);
    theme.text = QColor(22, 26, 31);
    theme.mutedText = QColor(86, 94, 104);
    theme.band = QColor(0, 158, 115, 56);
    theme.bandEdge = QColor(0, 116, 82);
    theme.curve = QColor(0, 82, 147);
    theme.curveArea = QColor(0, 114, 178, 70);
    theme.otherCurve = QColor(190, 100, 150);
    theme.bars = QColor(0, 114, 178);
    theme.pause = QColor(221, 223, 227);
    theme.pauseLines = QColor(150, 157, 166);
    theme.loss = QColor(100, 60, 110);
    theme.fault = QColor(176, 62, 0);
    theme.flag = QColor(40, 46, 54);
    theme.cursor = QColor(122, 0, 224);
    return theme;
}

Theme Theme::dark()
{
    Theme theme;
    theme.background = QColor(20, 23, 27);
    theme.lane = QColor(28, 32, 37);
    theme.frame = QColor(92, 100, 110);
    theme.grid = QColor(46, 51, 58);
    theme.text = QColor(236, 239, 242);
    theme.mutedText = QColor(164, 172, 182);
    theme.band = QColor(0, 190, 140, 62);
    theme.bandEdge = QColor(40, 200, 152);
    theme.curve = QColor(120, 200, 245);
    theme.curveArea = QColor(86, 180, 233, 80);
    theme.otherCurve = QColor(176, 98, 140);
    theme.bars = QColor(86, 180, 233);
    theme.pause = QColor(58, 64, 72);
    theme.pauseLines = QColor(116, 124, 134);
    theme.loss = QColor(214, 150, 190);
    theme.fault = QColor(240, 146, 40);
    theme.flag = QColor(225, 229, 234);
    theme.cursor = QColor(255, 232, 60);
    return theme;
}

TextStyle::TextStyle(const QFont &wantedFont, QPaintDevice *device)
    : m_font(wantedFont), m_metrics(metricsOf(m_font, device))
{
}

qreal TextStyle::width(const QString &text) const
{
    return m_metrics.horizontalAdvance(PrintableText::shown(text));
}

QString TextStyle::elided(const QString &text, qreal width) const
{
    return m_metrics.elidedText(PrintableText::shown(text), Qt::ElideRight, width);
}

void TextStyle::draw(QPainter *painter, const QRectF &box, Qt::Alignment alignment,
                     const QString &text, const QColor &color) const
{
    QString shown = PrintableText::shown(text);
    qreal length = m_metrics.horizontalAdvance(shown);
    if (length > box.width()) {
        shown = m_metrics.elidedText(shown, Qt::ElideRight, box.width());
        length = m_metrics.horizontalAdvance(shown);
        if (length > box.width())
            return;
    }
    qreal x = box.left();
    if (alignment & Qt::AlignRight)
        x = box.right() - length;
    else if (alignment & Qt::AlignHCenter)
        x = box.center().x() - length / 2;
    qreal baseline = box.center().y() + (m_metrics.ascent() - m_metrics.descent()) / 2;
    if (alignment & Qt::AlignTop)
        baseline = box.top() + m_metrics.ascent();
    else if (alignment & Qt::AlignBottom)
        baseline = box.bottom() - m_metrics.descent();
    painter->setFont(m_font);
    painter->setPen(color);
    painter->drawText(QPointF(x, baseline), shown);
}

Style::Style(const Theme &wantedTheme, qreal textSize, QPaintDevice *device)
    : theme(wantedTheme), em(textSize), hair(qMax(1.0, std::floor(em / pixelsPerHair))),
      symbol(std::round(symbolSize * em)), normal(sized(theme.font, em), device),
      bold(sized(theme.font, em, true), device), small(sized(theme.font, em * smallSize), device),
      smallBold(sized(theme.font, em * smallSize, true), device),
      large(sized(theme.font, em * largeSize, true), device)
{
}

} // namespace sessionplot
