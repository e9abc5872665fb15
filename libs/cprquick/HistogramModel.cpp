// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/HistogramModel.h"

#include "sessionreview/Figures.h"

#include <CPREventSessionStatistics.h>

#include <QCoreApplication>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

namespace cprquick {

namespace {

using E = CPREventBase;

struct Histogram {
    const char *name;
    const char *unit;
    std::optional<E::ParameterType> total; ///< what its bars share, where the manikin counts it
};

// clang-format off
// In the order of their parameters.
constexpr Histogram histograms[] = {
    {QT_TRANSLATE_NOOP("cprquick", "Depth"),            "mm", E::compCount},
    {QT_TRANSLATE_NOOP("cprquick", "Release"),          "mm", E::compCount},
    {QT_TRANSLATE_NOOP("cprquick", "Compression rate"), QT_TRANSLATE_NOOP("cprquick", "per min"), std::nullopt},
    {QT_TRANSLATE_NOOP("cprquick", "Pauses"),           QT_TRANSLATE_NOOP("cprquick", "s"), std::nullopt},
    {QT_TRANSLATE_NOOP("cprquick", "Volume"),           "ml", E::ventCount},
    {QT_TRANSLATE_NOOP("cprquick", "Ventilation rate"), QT_TRANSLATE_NOOP("cprquick", "per min"), std::nullopt},
};
// clang-format on
static_assert(std::size(histograms) == HistogramModel::histogramCount);
static_assert(E::ventHistogramRateBin_5 - E::compHistogramDepthBin_0 + 1
              == HistogramModel::histogramCount * HistogramModel::barCount);

QString numberText(double value)
{
    return QLocale().toString(value, 'f', value == std::round(value) ? 0 : 1);
}

QString unitText(const Histogram &histogram)
{
    return QCoreApplication::translate("cprquick", histogram.unit);
}

QString rangeText(const sessionreview::Bar &bar, bool isWhole, const QString &unit)
{
    if (std::isinf(bar.from))
        return QCoreApplication::translate("cprquick", "below %1 %2").arg(numberText(bar.to), unit);
    if (std::isinf(bar.to))
        return QCoreApplication::translate("cprquick", "%1 %2 or more")
            .arg(numberText(bar.from), unit);
    return QStringLiteral("%1\u2013%2 %3")
        .arg(numberText(bar.from), numberText(isWhole ? bar.to - 1 : bar.to), unit);
}

} // namespace

HistogramModel::HistogramModel(QObject *parent) : QAbstractListModel(parent)
{
    connect(&m_watcher, &SessionWatcher::settled, this, &HistogramModel::refresh);
    connect(&m_watcher, &SessionWatcher::sessionChanged, this, [this] {
        refresh();
        Q_EMIT sessionChanged();
    });
}

HistogramModel::~HistogramModel() = default;

void HistogramModel::refresh()
{
    const CPREvents *events = m_watcher.events();
    const E *statistics = events ? events->cprSessionStatistics() : nullptr;
    const bool isReceived = sessionreview::hasArrived(statistics, E::compHistogramDepthBin_0);
    decltype(m_bars) bars{};
    decltype(m_totals) totals{};
    const auto numberOf = [statistics, isReceived](E::ParameterType type) {
        return isReceived ? statistics->parameterValue(type, 0).toInt() : 0;
    };
    for (std::size_t i = 0; i < bars.size(); ++i)
        bars[i] = numberOf(static_cast<E::ParameterType>(E::compHistogramDepthBin_0 + int(i)));
    for (std::size_t i = 0; i < totals.size(); ++i)
        totals[i] = histograms[i].total ? numberOf(*histograms[i].total) : 0;
    const auto targets =
        session() ? sessionreview::targetsOf(*session()) : sessionreview::Targets();
    if (bars != m_bars || totals != m_totals || targets != m_targets) {
        m_targets = targets;
        m_bars = bars;
        m_totals = totals;
        Q_EMIT dataChanged(index(0), index(histogramCount - 1));
    }
    if (isReceived != m_isReceived) {
        m_isReceived = isReceived;
        Q_EMIT isReceivedChanged();
    }
}

int HistogramModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : histogramCount;
}

QVariant HistogramModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const Histogram &histogram = histograms[index.row()];
    const auto kind = static_cast<sessionreview::HistogramKind>(index.row());
    const auto ofEach = [&](const auto &textOf) {
        QVariantList list;
        for (const sessionreview::Bar &bar : sessionreview::barsOf(kind, m_targets))
            list.append(textOf(bar));
        return list;
    };
    const auto first = m_bars.begin() + index.row() * barCount;
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return QCoreApplication::translate("cprquick", histogram.name);
    case UnitRole:
        return unitText(histogram);
    case RangesRole:
        return ofEach([&](const sessionreview::Bar &bar) {
            return rangeText(bar, sessionreview::countsWholeNumbers(kind), unitText(histogram));
        });
    case EdgesRole:
        return ofEach([](const sessionreview::Bar &bar) { return numberText(bar.from); }).mid(1);
    case TargetsRole:
        return ofEach([](const sessionreview::Bar &bar) { return bar.isTarget; });
    case ValuesRole: {
        QVariantList values;
        std::copy(first, first + barCount, std::back_inserter(values));
        return values;
    }
    case HighestRole:
        return *std::max_element(first, first + barCount);
    case TotalRole:
        return m_totals[static_cast<std::size_t>(index.row())];
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> HistogramModel::roleNames() const
{
    return {{NameRole, "name"},       {UnitRole, "unit"},       {RangesRole, "ranges"},
            {EdgesRole, "edges"},     {TargetsRole, "targets"}, {ValuesRole, "values"},
            {HighestRole, "highest"}, {TotalRole, "total"}};
}

} // namespace cprquick
