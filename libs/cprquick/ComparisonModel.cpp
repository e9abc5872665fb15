// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/ComparisonModel.h"

#include "cprquick/PlotSource.h"

#include "sessionreview/Words.h"

#include <QLocale>

#include <algorithm>
#include <utility>

namespace cprquick {

namespace {

template <typename Ours, typename Theirs> constexpr bool isSame(Ours ours, Theirs theirs)
{
    return static_cast<int>(ours) == static_cast<int>(theirs);
}
using sessionreview::ComparedFigure;
using Compared = sessionreview::Outcome;
static_assert(isSame(ComparisonModel::NotJudged, Compared::NotJudged));
static_assert(isSame(ComparisonModel::AsGood, Compared::AsGood));
static_assert(isSame(ComparisonModel::Better, Compared::Better));
static_assert(isSame(ComparisonModel::Worse, Compared::Worse));
static_assert(isSame(ComparisonModel::OtherStandard, Compared::OtherStandard));

QString textOf(const ComparedFigure &row, const std::optional<double> &value)
{
    return value ? row.figure->text(*value, QLocale()) : QString();
}

} // namespace

ComparisonModel::ComparisonModel(QObject *parent) : QAbstractListModel(parent)
{
    for (Side &side : m_sides) {
        connect(&side.watcher, &SessionWatcher::settled, this, &ComparisonModel::refresh);
        connect(&side.watcher, &SessionWatcher::sessionChanged, this, [this, &side] {
            follow(side);
            refresh();
            Q_EMIT sessionChanged();
        });
    }
}

ComparisonModel::~ComparisonModel() = default;

void ComparisonModel::follow(Side &side)
{
    side.source = side.watcher.session() ? PlotSource::of(side.watcher.session()) : nullptr;
}

void ComparisonModel::setAlignment(Alignment alignment)
{
    if (std::exchange(m_alignment, alignment) == alignment)
        return;
    align();
    Q_EMIT changed();
}

void ComparisonModel::align()
{
    m_canAlign = true;
    for (const Side &side : m_sides)
        m_canAlign = m_canAlign && side.source
            && sessionreview::originOf(side.source->model().review(),
                                       sessionreview::Alignment::FirstCompression);
    const auto used = m_canAlign && m_alignment == FirstCompression
        ? sessionreview::Alignment::FirstCompression
        : sessionreview::Alignment::Start;
    for (Side &side : m_sides) {
        side.zero = side.source
            ? sessionreview::originOf(side.source->model().review(), used).value_or(0)
            : 0;
        side.length = side.source ? side.source->end() : 0;
    }
}

void ComparisonModel::refresh()
{
    for (const Side &side : m_sides) {
        if (side.source)
            side.source->refresh();
    }
    QVector<ComparedFigure> rows;
    m_faults.clear();
    if (m_sides[0].source && m_sides[1].source) {
        const auto comparison = sessionreview::comparisonOf(m_sides[0].source->model().review(),
                                                            m_sides[1].source->model().review());
        for (const ComparedFigure &figure : comparison.figures) {
            if (figure.value || figure.other)
                rows.append(figure);
        }
        for (const sessionreview::ComparedFault &fault : comparison.faults)
            m_faults.append(QVariantMap{
                {QStringLiteral("name"), sessionreview::faultTexts(fault.fault).value(0)},
                {QStringLiteral("count"), fault.count},
                {QStringLiteral("other"), fault.other}});
    }
    const bool isSameList = std::equal(
        rows.begin(), rows.end(), m_rows.begin(), m_rows.end(),
        [](const ComparedFigure &a, const ComparedFigure &b) { return a.figure == b.figure; });
    if (!isSameList)
        beginResetModel();
    m_rows = rows;
    if (!isSameList)
        endResetModel();
    else if (!rows.isEmpty())
        Q_EMIT dataChanged(index(0), index(count() - 1));
    align();
    Q_EMIT changed();
}

int ComparisonModel::begin() const
{
    return std::min(-m_sides[0].zero, -m_sides[1].zero);
}

int ComparisonModel::end() const
{
    return std::max(m_sides[0].length - m_sides[0].zero, m_sides[1].length - m_sides[1].zero);
}

bool ComparisonModel::hasOtherStandard() const
{
    return std::any_of(m_rows.begin(), m_rows.end(), [](const ComparedFigure &row) {
        return row.outcome == Compared::OtherStandard;
    });
}

std::shared_ptr<const sessionplot::PlotModel> ComparisonModel::plot(bool isOther) const
{
    if (!m_sides[0].source || !m_sides[1].source)
        return nullptr;
    return std::make_shared<const sessionplot::PlotModel>(m_sides[isOther ? 1 : 0].source->model());
}

int ComparisonModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

QVariant ComparisonModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const ComparedFigure &row = m_rows.at(index.row());
    switch (role) {
    case KeyRole:
        return QLatin1String(row.figure->key);
    case Qt::DisplayRole:
    case NameRole:
        return row.figure->titleText();
    case ValueTextRole:
        return textOf(row, row.value);
    case OtherTextRole:
        return textOf(row, row.other);
    case DifferenceTextRole:
        return row.differenceText(QLocale());
    case OutcomeRole:
        return static_cast<int>(row.outcome);
    case OutcomeTextRole:
        return sessionreview::outcomeText(row.outcome);
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> ComparisonModel::roleNames() const
{
    // clang-format off
    return {
        {KeyRole,            "key"},
        {NameRole,           "name"},
        {ValueTextRole,      "valueText"},
        {OtherTextRole,      "otherText"},
        {DifferenceTextRole, "differenceText"},
        {OutcomeRole,        "outcome"},
        {OutcomeTextRole,    "outcomeText"},
    };
    // clang-format on
}

} // namespace cprquick
