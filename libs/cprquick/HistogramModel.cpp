// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/HistogramModel.h"

#include "sessionreview/Figures.h"

#include <CPREventSessionStatistics.h>

#include <QCoreApplication>

#include <algorithm>
#include <iterator>
#include <optional>

namespace cprquick {

namespace {

using E = CPREventBase;

struct Histogram {
    const char *name;
    std::optional<E::ParameterType> total; ///< what its bars share, where the manikin counts it
};

// clang-format off
// In the order of their parameters.
constexpr Histogram histograms[] = {
    {QT_TRANSLATE_NOOP("cprquick", "Depth"),            E::compCount},
    {QT_TRANSLATE_NOOP("cprquick", "Release"),          E::compCount},
    {QT_TRANSLATE_NOOP("cprquick", "Compression rate"), std::nullopt},
    {QT_TRANSLATE_NOOP("cprquick", "Pauses"),           std::nullopt},
    {QT_TRANSLATE_NOOP("cprquick", "Volume"),           E::ventCount},
    {QT_TRANSLATE_NOOP("cprquick", "Ventilation rate"), std::nullopt},
};
// clang-format on
static_assert(std::size(histograms) == HistogramModel::histogramCount);
static_assert(E::ventHistogramRateBin_5 - E::compHistogramDepthBin_0 + 1
              == HistogramModel::histogramCount * HistogramModel::barCount);

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
    if (bars != m_bars || totals != m_totals) {
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
    const auto first = m_bars.begin() + index.row() * barCount;
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return QCoreApplication::translate("cprquick", histograms[index.row()].name);
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
    return {
        {NameRole, "name"}, {ValuesRole, "values"}, {HighestRole, "highest"}, {TotalRole, "total"}};
}

} // namespace cprquick
