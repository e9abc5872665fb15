// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/ParameterModel.h"

#include "cprquick/ParameterText.h"

#include "sessionreview/Figures.h"

#include <Vocabulary.h>

#include <CPREventSessionInfo.h>
#include <CPREventSessionScore.h>
#include <CPREventSessionStatistics.h>

#include <algorithm>

namespace cprquick {

namespace {

bool isBar(CPREventBase::ParameterType type)
{
    return type >= CPREventBase::compHistogramDepthBin_0
        && type <= CPREventBase::ventHistogramRateBin_5;
}

} // namespace

ParameterModel::ParameterModel(QObject *parent) : QAbstractListModel(parent)
{
    connect(&m_watcher, &SessionWatcher::settled, this, &ParameterModel::refresh);
    connect(&m_watcher, &SessionWatcher::sessionChanged, this, [this] {
        refresh();
        Q_EMIT sessionChanged();
    });
    for (const auto change : {&ParameterModel::rowsInserted, &ParameterModel::rowsRemoved})
        connect(this, change, this, &ParameterModel::countChanged);
    connect(this, &ParameterModel::modelReset, this, &ParameterModel::countChanged);
}

ParameterModel::~ParameterModel() = default;

void ParameterModel::setSubject(Subject subject)
{
    if (subject == m_subject)
        return;
    m_subject = subject;
    if (subject == ChosenEvent)
        show(nullptr);
    refresh();
    Q_EMIT subjectChanged();
}

void ParameterModel::setHasBars(bool bars)
{
    if (bars == m_hasBars)
        return;
    m_hasBars = bars;
    refresh();
    Q_EMIT hasBarsChanged();
}

void ParameterModel::setEvent(CPREventBase *event)
{
    if (m_subject != ChosenEvent || event == m_event)
        return;
    if (event && event->events())
        setSession(event->events()->cprData());
    show(event);
}

void ParameterModel::show(CPREventBase *event)
{
    if (m_event)
        m_event->disconnect(this);
    m_event = event;
    if (event) {
        connect(event, &QObject::destroyed, this, [this] { show(nullptr); });
        if (auto *statistics = qobject_cast<CPREventSessionStatistics *>(event))
            connect(statistics, &CPREventSessionStatistics::statisticsReady, this,
                    &ParameterModel::refresh);
    }
    beginResetModel();
    m_rows = rowsOf(event);
    endResetModel();
    Q_EMIT eventChanged();
}

QVector<ParameterModel::Row> ParameterModel::rowsOf(const CPREventBase *event) const
{
    QVector<Row> rows;
    if (!event)
        return rows;
    event->visitValues([&](CPREventBase::ParameterType type, const QVariant &value) {
        const bool isForPeople = Vocabulary::parameter(type)->form != Vocabulary::Form::Internal;
        if (value.isValid() && isForPeople && (m_hasBars || !isBar(type))
            && sessionreview::hasArrived(event, type))
            rows.append({type, value});
    });
    std::sort(rows.begin(), rows.end(), [](const Row &a, const Row &b) { return a.type < b.type; });
    return rows;
}

void ParameterModel::refresh()
{
    if (m_subject != ChosenEvent) {
        const CPREvents *events = m_watcher.events();
        CPREventBase *standing = nullptr;
        if (events) {
            standing = m_subject == SessionInfo ? events->cprSessionInfo()
                : m_subject == Statistics       ? events->cprSessionStatistics()
                                                : events->cprSessionScore();
        }
        if (standing != m_event) {
            show(standing);
            return;
        }
    }

    // Both are ordered by type, so one walk finds what has come, gone or changed.
    const QVector<Row> now = rowsOf(m_event);
    for (int row = 0; row < now.size() || row < m_rows.size(); ++row) {
        while (row < m_rows.size() && (row >= now.size() || m_rows[row].type < now[row].type)) {
            beginRemoveRows(QModelIndex(), row, row);
            m_rows.removeAt(row);
            endRemoveRows();
        }
        if (row >= now.size())
            break;
        if (row >= m_rows.size() || now[row].type < m_rows[row].type) {
            beginInsertRows(QModelIndex(), row, row);
            m_rows.insert(row, now[row]);
            endInsertRows();
        } else if (m_rows[row].value != now[row].value) {
            m_rows[row].value = now[row].value;
            Q_EMIT dataChanged(index(row), index(row));
        }
    }
}

int ParameterModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

QVariant ParameterModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    const Row &row = m_rows.at(index.row());
    switch (role) {
    case KeyRole:
        return CPREventBase::parameterKey(row.type);
    case TypeRole:
        return row.type;
    case Qt::DisplayRole:
    case NameRole:
        return parameterTextIn(*m_event, row.type);
    case ValueRole:
        return row.value;
    case ValueTextRole:
        return parameterValueTextIn(*m_event, row.type, row.value);
    case UnitRole:
        return parameterUnitText(row.type);
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> ParameterModel::roleNames() const
{
    // clang-format off
    return {
        {KeyRole,       "key"},
        {TypeRole,      "type"},
        {NameRole,      "name"},
        {ValueRole,     "value"},
        {ValueTextRole, "valueText"},
        {UnitRole,      "unit"},
    };
    // clang-format on
}

} // namespace cprquick
