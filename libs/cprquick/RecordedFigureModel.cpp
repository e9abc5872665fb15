// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/RecordedFigureModel.h"

#include "cprquick/ParameterText.h"

#include "sessionreview/RecordedFigures.h"

#include <CPREventSessionScore.h>
#include <CPREventSessionStatistics.h>

#include <QLocale>

#include <algorithm>

namespace cprquick {

namespace {

using E = CPREventBase;

/// The manikin's own figure in words; empty when it has sent none.
QString manikinText(const CPREvents &events, int type, bool isRecorded)
{
    const auto parameter = static_cast<E::ParameterType>(type);
    // Older manikins send the flow time with the scores alone.
    const std::initializer_list<const E *> senders{events.sessionStatistics(),
                                                   events.sessionScore()};
    for (const E *event : senders) {
        QString key;
        if (type < 0 || !event || !event->hasParameterType(parameter, key)
            || !sessionreview::hasArrived(event, parameter))
            continue;
        const QVariant value = event->value(parameter);
        // What could not be measured is sent as -1, a mean of nothing as 0.
        const bool isEmpty = value.toInt() < 0 || (value.toInt() == 0 && !isRecorded);
        return isEmpty ? QString() : parameterValueText(parameter, value);
    }
    return QString();
}

} // namespace

RecordedFigureModel::RecordedFigureModel(QObject *parent) : QAbstractListModel(parent)
{
    connect(&m_watcher, &SessionWatcher::settled, this, &RecordedFigureModel::refresh);
    connect(&m_watcher, &SessionWatcher::sessionChanged, this, [this] {
        refresh();
        Q_EMIT sessionChanged();
    });
}

RecordedFigureModel::~RecordedFigureModel() = default;

bool RecordedFigureModel::hasManikin() const
{
    return std::any_of(m_rows.begin(), m_rows.end(),
                       [](const Row &row) { return !row.manikinText.isEmpty(); });
}

QVector<RecordedFigureModel::Row> RecordedFigureModel::rowsOf(const CPRData &session)
{
    const sessionreview::SessionReview review = sessionreview::reviewOf(session);
    const QLocale locale;
    QVector<Row> rows;
    for (const sessionreview::RecordedFigure &figure : sessionreview::recordedFigures()) {
        Row row{QLatin1String(figure.key), figure.titleText(), {}, {}, {}};
        const std::optional<double> value = figure.value(review);
        if (value) {
            row.value = *value;
            row.valueText = figure.text(*value, locale);
        }
        row.manikinText = manikinText(*session.cprEvents(), figure.parameter, value.has_value());
        if (value || !row.manikinText.isEmpty())
            rows.append(row);
    }
    int number = 0;
    for (const sessionreview::ShockPauses &shock : sessionreview::shockPausesOf(review)) {
        ++number;
        rows.append({QStringLiteral("shock_pauses_%1").arg(number),
                     sessionreview::shockTitle(shock, number),
                     {},
                     sessionreview::shockText(shock, locale),
                     {}});
    }
    return rows;
}

void RecordedFigureModel::refresh()
{
    const CPRData *known = session();
    const QVector<Row> now = known ? rowsOf(*known) : QVector<Row>();
    const bool isSameList =
        std::equal(now.begin(), now.end(), m_rows.begin(), m_rows.end(),
                   [](const Row &a, const Row &b) { return a.key == b.key && a.name == b.name; });
    if (!isSameList) {
        beginResetModel();
        m_rows = now;
        endResetModel();
        Q_EMIT changed();
        return;
    }
    bool isChanged = false;
    for (int row = 0; row < now.size(); ++row) {
        if (now[row].value == m_rows[row].value && now[row].valueText == m_rows[row].valueText
            && now[row].manikinText == m_rows[row].manikinText)
            continue;
        m_rows[row] = now[row];
        isChanged = true;
        Q_EMIT dataChanged(index(row), index(row));
    }
    if (isChanged)
        Q_EMIT changed();
}

int RecordedFigureModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

QVariant RecordedFigureModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case KeyRole:
        return row.key;
    case Qt::DisplayRole:
    case NameRole:
        return row.name;
    case ValueRole:
        return row.value;
    case ValueTextRole:
        return row.valueText;
    case ManikinTextRole:
        return row.manikinText;
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> RecordedFigureModel::roleNames() const
{
    // clang-format off
    return {
        {KeyRole,         "key"},
        {NameRole,        "name"},
        {ValueRole,       "value"},
        {ValueTextRole,   "valueText"},
        {ManikinTextRole, "manikinText"},
    };
    // clang-format on
}

} // namespace cprquick
