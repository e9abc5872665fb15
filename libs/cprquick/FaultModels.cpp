// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/FaultModels.h"

#include "sessionreview/Words.h"

#include <QLocale>

#include <algorithm>
#include <utility>

namespace cprquick {

using namespace sessionreview;

FaultModel::FaultModel(QObject *parent) : QAbstractListModel(parent)
{
    connect(&m_watcher, &SessionWatcher::settled, this, &FaultModel::refresh);
    connect(&m_watcher, &SessionWatcher::sessionChanged, this, [this] {
        refresh();
        Q_EMIT sessionChanged();
    });
}

FaultModel::~FaultModel() = default;

void FaultModel::refresh()
{
    find(session() ? reviewOf(*session()) : SessionReview());
}

CycleModel::CycleModel(QObject *parent) : FaultModel(parent)
{
}

CycleModel::~CycleModel() = default;

// Rows that are there stay, so that a view does while a session grows.
void CycleModel::find(const SessionReview &review)
{
    const int before = rowCount();
    std::vector<CycleFaults> now = faultsPerCycle(review);
    const int after = static_cast<int>(now.size());
    m_hasCycles = review.figures.training.cycles;
    if (after > before)
        beginInsertRows(QModelIndex(), before, after - 1);
    else if (after < before)
        beginRemoveRows(QModelIndex(), after, before - 1);
    m_rows = std::move(now);
    if (after > before)
        endInsertRows();
    else if (after < before)
        endRemoveRows();
    const int kept = std::min(before, after);
    if (kept > 0)
        Q_EMIT dataChanged(index(0), index(kept - 1));
    if (after != before)
        Q_EMIT countChanged();
}

int CycleModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant CycleModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const CycleFaults &row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case StartRole:
        return row.cycle.begin;
    case EndRole:
        return row.cycle.end;
    case CompressionsRole:
        return row.cycle.compressions;
    case RightRole:
        return row.right;
    case VentilationsRole:
        return row.cycle.ventilations;
    case MiscountedRole:
        return row.cycle.isMiscounted;
    case Qt::DisplayRole:
    case FaultTextRole:
        return faultTexts(row.faults).join(QStringLiteral(", "));
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> CycleModel::roleNames() const
{
    // clang-format off
    return {
        {StartRole,        "start"},
        {EndRole,          "end"},
        {CompressionsRole, "compressions"},
        {RightRole,        "rightCompressions"},
        {VentilationsRole, "ventilations"},
        {MiscountedRole,   "isMiscounted"},
        {FaultTextRole,    "faultText"},
    };
    // clang-format on
}

MomentModel::MomentModel(QObject *parent) : FaultModel(parent)
{
}

MomentModel::~MomentModel() = default;

void MomentModel::find(const SessionReview &review)
{
    std::vector<Moment> now = worstMoments(review, maxCount);
    const auto isSame = [](const Moment &a, const Moment &b) {
        return a.prompt == b.prompt && a.begin == b.begin && a.end == b.end && a.count == b.count;
    };
    if (std::equal(now.begin(), now.end(), m_rows.begin(), m_rows.end(), isSame))
        return;
    beginResetModel();
    m_rows = std::move(now);
    endResetModel();
    Q_EMIT countChanged();
}

int MomentModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant MomentModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const Moment &row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case StartRole:
        return row.begin;
    case EndRole:
        return row.end;
    case Qt::DisplayRole:
    case TextRole:
        return momentText(row, QLocale());
    case OfVentilationsRole:
        return isOfVentilations(row.prompt);
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> MomentModel::roleNames() const
{
    // clang-format off
    return {
        {StartRole,          "start"},
        {EndRole,            "end"},
        {TextRole,           "title"},
        {OfVentilationsRole, "isOfVentilations"},
    };
    // clang-format on
}

} // namespace cprquick
