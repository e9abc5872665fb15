// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/TrendItem.h"

#include "cprquick/SessionResults.h"

#include <sessionplot/PageText.h>
#include <sessionplot/ReportParts.h>
#include <sessionreview/ClassFigures.h>

#include <QFontInfo>
#include <QGuiApplication>
#include <QLocale>
#include <QPainter>

#include <utility>

namespace cprquick {

using namespace sessionreview;

namespace {

bool hasCompressions(const SessionResult &result)
{
    return result.figure("mean_depth_mm").has_value();
}

} // namespace

TrendItem::TrendItem(QQuickItem *parent)
    : QQuickPaintedItem(parent), m_lastResult(std::make_unique<SessionResults>())
{
    connect(m_lastResult.get(), &SessionResults::finished, this, [this] {
        if (m_library)
            m_library->setWorking(this, false);
        if (!m_results.empty() && !m_lastResult->results().empty())
            m_results.back() = m_lastResult->results().back();
        update();
        Q_EMIT textsChanged();
    });
    connect(this, &TrendItem::lookChanged, this, [this] { update(); });
}

TrendItem::~TrendItem()
{
    if (m_library)
        m_library->setWorking(this, false);
}

void TrendItem::setLibrary(LibraryFolder *library)
{
    if (showLibrary(m_library, library, this, &TrendItem::refresh))
        Q_EMIT changed();
}

void TrendItem::setLearner(const QString &learner)
{
    if (std::exchange(m_learner, learner) == learner)
        return;
    refresh();
    Q_EMIT changed();
}

void TrendItem::setDark(bool dark)
{
    if (std::exchange(m_isDark, dark) != dark)
        Q_EMIT lookChanged();
}

void TrendItem::setTextSize(qreal size)
{
    if (!qFuzzyCompare(std::exchange(m_textSize, size), size))
        Q_EMIT lookChanged();
}

void TrendItem::refresh()
{
    const auto entries = m_library && m_library->index() && !m_learner.isEmpty()
        ? m_library->index()->sessionsOf(m_learner)
        : std::nullopt;
    m_results.clear();
    QString last;
    if (entries) {
        for (const sessionlibrary::SessionEntry &entry : *entries) {
            if (entry.state == sessionlibrary::State::Damaged)
                continue;
            m_results.push_back(entry.result());
            last = m_library->pathOf(entry.file);
        }
    }
    if (m_results.size() > std::size_t(maxSessions))
        m_results.erase(m_results.begin(), m_results.end() - maxSessions);
    if (!last.isEmpty()) {
        m_library->setWorking(this, true);
        m_lastResult->read({last});
    }
    update();
    Q_EMIT textsChanged();
}

QStringList TrendItem::texts() const
{
    QStringList texts;
    if (m_results.empty())
        return texts;
    const SessionResult &last = m_results.back();
    const QLocale locale;
    for (const char *key : {"mean_depth_mm", "mean_rate_per_min", "compression_fraction",
                            "longest_pause_s", "mean_volume_ml"}) {
        const RecordedFigure &figure = *recordedFigure(key);
        const std::optional<double> value = last.figure(key);
        if (!value)
            continue;
        const QString target = targetText(figure, last.targets, locale);
        texts.append(QStringLiteral("%1: %2").arg(figure.titleText(), figure.text(*value, locale))
                     + (target.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(target)));
    }
    return texts;
}

void TrendItem::paint(QPainter *painter)
{
    if (m_results.empty())
        return;
    using namespace sessionplot;
    Theme theme = m_isDark ? Theme::dark() : Theme::light();
    theme.font = QGuiApplication::font();
    constexpr qreal textPoints = 7.5; // between those of a chart's texts
    const qreal size = m_textSize > 0 ? m_textSize : QFontInfo(QGuiApplication::font()).pixelSize();
    const qreal scale = size / (textPoints * unitsPerPoint);
    painter->scale(scale, scale);
    const PageText page(theme, width() / scale, 1);
    paintTrend(painter, page, m_results, hasCompressions(m_results.back()),
               QRectF(0, 0, width() / scale, height() / scale));
}

} // namespace cprquick
