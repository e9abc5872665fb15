// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "HistogramModel.h"

#include <CPREventSessionStatistics.h>

#include <QCoreApplication>

#include <algorithm>
#include <iterator>

namespace {

using E = CPREventBase;

// clang-format off
// In the order of their parameters.
constexpr const char *names[] = {
    QT_TRANSLATE_NOOP("cprquick", "Depth"),
    QT_TRANSLATE_NOOP("cprquick", "Release"),
    QT_TRANSLATE_NOOP("cprquick", "Compression rate"),
    QT_TRANSLATE_NOOP("cprquick", "Pauses"),
    QT_TRANSLATE_NOOP("cprquick", "Volume"),
    QT_TRANSLATE_NOOP("cprquick", "Ventilation rate"),
};
// clang-format on
static_assert(std::size(names) == HistogramModel::histogramCount);
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
    QString key;
    const bool isReceived = statistics && statistics->hasParameters()
        && statistics->hasParameterType(E::compHistogramDepthBin_0, key);
    decltype(m_bars) bars{};
    for (std::size_t i = 0; isReceived && i < bars.size(); ++i) {
        const auto type = static_cast<E::ParameterType>(E::compHistogramDepthBin_0 + int(i));
        bars[i] = statistics->parameterValue(type, 0).toInt();
    }
    if (bars != m_bars) {
        m_bars = bars;
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
        return QCoreApplication::translate("cprquick", names[index.row()]);
    case ValuesRole: {
        QVariantList values;
        std::copy(first, first + barCount, std::back_inserter(values));
        return values;
    }
    case HighestRole:
        return *std::max_element(first, first + barCount);
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> HistogramModel::roleNames() const
{
    return {{NameRole, "name"}, {ValuesRole, "values"}, {HighestRole, "highest"}};
}
