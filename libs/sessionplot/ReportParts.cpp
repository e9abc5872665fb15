// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionplot/ReportParts.h"

#include "sessionplot/PageText.h"
#include "sessionplot/Scales.h"
#include "sessionplot/Symbols.h"

#include <QCoreApplication>
#include <QLocale>
#include <QPainter>
#include <QPolygonF>

#include <algorithm>

namespace sessionplot {

using namespace sessionreview;

namespace {

constexpr PageText::Look small{7, false, true, Qt::AlignLeft};
constexpr PageText::Look value{8, true, false, Qt::AlignLeft};

/// A figure over the sessions.
struct Chart {
    QString title;
    QString last; ///< the value of the last session, with its unit; a dash for none
    Band target; ///< not valid when there is none
    std::vector<std::optional<double>> values;
};

Chart scoreChart(const std::vector<SessionResult> &results)
{
    constexpr double all = 100;
    Chart chart;
    chart.title = QCoreApplication::translate("sessionplot", "Overall score");
    for (const SessionResult &result : results)
        chart.values.push_back(result.score ? std::optional<double>(*result.score) : std::nullopt);
    const SessionResult &last = results.back();
    if (last.score)
        chart.last = QStringLiteral("%1\u00a0%").arg(*last.score);
    if (last.basicThreshold > 0)
        chart.target = {double(last.basicThreshold), all};
    return chart;
}

Chart figureChart(const std::vector<SessionResult> &results, const char *key, const Band &target)
{
    const RecordedFigure &figure = *recordedFigure(key);
    Chart chart;
    chart.title = figure.titleText();
    for (const SessionResult &result : results)
        chart.values.push_back(result.figure(key));
    if (chart.values.back())
        chart.last = figure.text(*chart.values.back(), QLocale());
    chart.target = target;
    return chart;
}

void paintChart(QPainter *painter, const PageText &page, const Chart &chart, const QRectF &area)
{
    const Theme &theme = page.theme();
    const TextStyle label = page.style(small);
    const TextStyle strong = page.style(value);
    const QRectF title(area.left(), area.top(), area.width(), label.line());
    label.draw(painter, title, Qt::AlignLeft, chart.title, theme.mutedText);
    const QRectF line(area.left(), title.bottom(), area.width(), strong.line());
    strong.draw(painter, line, Qt::AlignLeft,
                chart.last.isEmpty() ? QStringLiteral("\u2013") : chart.last, theme.text);
    const QRectF plot(QPointF(area.left(), line.bottom() + page.units(2)), area.bottomRight());
    painter->fillRect(plot, theme.lane);
    double low = chart.target.min;
    double high = chart.target.max;
    if (!chart.target.isValid()) {
        const auto first = std::find_if(chart.values.begin(), chart.values.end(),
                                        [](const auto &each) { return each.has_value(); });
        low = high = first != chart.values.end() ? **first : 0;
    }
    for (const std::optional<double> &each : chart.values) {
        low = std::min(low, each.value_or(low));
        high = std::max(high, each.value_or(high));
    }
    constexpr double around = 0.15;
    const double margin = std::max((high - low) * around, 1.0 / 100);
    const ValueScale scale(high + margin, low - margin, plot.top(), plot.bottom());
    if (chart.target.isValid()) {
        const qreal top = scale.y(chart.target.max);
        const qreal bottom = scale.y(chart.target.min);
        painter->fillRect(QRectF(plot.left(), top, plot.width(), bottom - top), theme.pause);
        for (const qreal y : {top, bottom})
            drawRule(painter, {plot.left(), y}, {plot.right(), y}, page.units(0.5), theme.frame);
    }

    const qreal inset = page.units(6);
    const auto steps = std::max<std::size_t>(chart.values.size() - 1, 1);
    QPolygonF curve;
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(theme.text, page.units(1)));
    painter->setBrush(theme.text);
    for (std::size_t i = 0; i < chart.values.size(); ++i) {
        if (chart.values[i])
            curve.append(
                {plot.left() + inset + (plot.width() - 2 * inset) * qreal(i) / qreal(steps),
                 scale.y(*chart.values[i])});
    }
    painter->drawPolyline(curve);
    for (const QPointF &point : curve) {
        const qreal radius = page.units(point == curve.back() ? 2.4 : 1.5);
        painter->drawEllipse(point, radius, radius);
    }
}

} // namespace

void paintTrend(QPainter *painter, const PageText &page, const std::vector<SessionResult> &results,
                bool hasCompressions, const QRectF &area)
{
    constexpr double whole = 1;
    constexpr double percent = 100;
    const Targets &targets = results.back().targets;
    std::vector<Chart> charts{scoreChart(results)};
    if (hasCompressions) {
        const Band fraction{targets.minFlowTime / percent, targets.minFlowTime > 0 ? whole : 0};
        charts.push_back(figureChart(results, "mean_depth_mm", targets.depth));
        charts.push_back(figureChart(results, "mean_rate_per_min", targets.rate));
        charts.push_back(figureChart(results, "compression_fraction", fraction));
    } else {
        charts.push_back(figureChart(results, "mean_volume_ml", targets.volume));
        charts.push_back(figureChart(results, "correct_volume_percent", {}));
    }
    const qreal gap = page.units(14);
    const qreal width = (area.width() - gap * qreal(charts.size() - 1)) / qreal(charts.size());
    const TextStyle label = page.style(small);
    const QRectF plots = area.adjusted(0, page.units(3), 0, -label.line() - page.units(2));
    const auto dateOf = [](const SessionResult &result) {
        return QLocale().toString(result.start.date(), QLocale::ShortFormat);
    };
    for (std::size_t i = 0; i < charts.size(); ++i) {
        const qreal left = area.left() + qreal(i) * (width + gap);
        paintChart(painter, page, charts[i], QRectF(left, plots.top(), width, plots.height()));
        const QRectF dates(left, area.bottom() - label.line(), width, label.line());
        label.draw(painter, dates, Qt::AlignLeft, dateOf(results.front()), page.theme().mutedText);
        label.draw(painter, dates, Qt::AlignRight, dateOf(results.back()), page.theme().mutedText);
    }
}

void paintRules(QPainter *painter, const PageText &page, int count, const QRectF &area)
{
    for (int i = 1; i <= count; ++i) {
        const qreal y = area.top() + area.height() * i / count;
        drawRule(painter, {area.left(), y}, {area.right(), y}, page.units(0.5), page.theme().frame);
    }
}

void paintSignature(QPainter *painter, const PageText &page, const QRectF &area)
{
    const TextStyle label = page.style(small);
    const qreal gap = page.units(14);
    const qreal y = area.bottom() - label.line() - page.units(1);
    constexpr qreal dateShare = 0.28;
    const QRectF date(area.left(), y, dateShare * area.width(), label.line());
    const QRectF name(date.right() + gap, y, area.right() - date.right() - gap, label.line());
    const auto line = [&](const QRectF &box, const QString &text) {
        drawRule(painter, box.topLeft(), box.topRight(), page.units(0.5), page.theme().frame);
        label.draw(painter, box.translated(0, page.units(1)), Qt::AlignLeft, text,
                   page.theme().mutedText);
    };
    line(date, QCoreApplication::translate("sessionplot", "Date"));
    line(name, QCoreApplication::translate("sessionplot", "Instructor's name and signature"));
}

} // namespace sessionplot
