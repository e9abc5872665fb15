// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/EventListModel.h"

#include "cprquick/EventText.h"

#include <QQmlEngine>

#include <algorithm>

namespace cprquick {

EventListModel::EventListModel(QObject *parent) : QAbstractListModel(parent)
{
    connect(&m_watcher, &SessionWatcher::sessionChanged, this, [this] {
        reload();
        Q_EMIT sessionChanged();
    });
    connect(&m_watcher, &SessionWatcher::cleared, this, &EventListModel::follow);
    connect(&m_watcher, &SessionWatcher::eventAnnounced, this, &EventListModel::addAnnounced);
    connect(&m_watcher, &SessionWatcher::eventRemoved, this, &EventListModel::forget);
    connect(&m_watcher, &SessionWatcher::eventChanged, this, &EventListModel::announceChanged);
    connect(&m_watcher, &SessionWatcher::eventsChanged, this, [this] {
        if (m_watcher.events()->events().size() != m_listed)
            follow();
    });
    connect(&m_watcher, &SessionWatcher::guidelinesChanged, this, [this] {
        m_targets = sessionreview::targetsOf(*session());
        if (m_hasFaultsOnly)
            follow();
        announce(0, count() - 1);
    });
    connect(&m_watcher, &SessionWatcher::summaryChanged, this, [this] {
        const CPREvents *events = m_watcher.events();
        for (CPREventBase *event :
             {events->cprSessionInfo(), events->cprSessionStatistics(), events->cprSessionScore()})
            announceChanged(event);
    });
    for (const auto change : {&EventListModel::rowsInserted, &EventListModel::rowsRemoved})
        connect(this, change, this, &EventListModel::countChanged);
    connect(this, &EventListModel::modelReset, this, &EventListModel::countChanged);
}

EventListModel::~EventListModel() = default;

void EventListModel::setTags(int tags)
{
    if (tags == m_tags)
        return;
    m_tags = tags;
    reload();
    Q_EMIT tagsChanged();
}

void EventListModel::setFaultsOnly(bool faultsOnly)
{
    if (faultsOnly == m_hasFaultsOnly)
        return;
    m_hasFaultsOnly = faultsOnly;
    reload();
    Q_EMIT tagsChanged();
}

bool EventListModel::isFault(const CPREventBase &event) const
{
    return sessionreview::isRight(event, m_targets) == false;
}

bool EventListModel::isShown(const CPREventBase *event) const
{
    return (m_tags == 0 || (event->tag() & m_tags) != 0) && (!m_hasFaultsOnly || isFault(*event));
}

QVector<CPREventBase *> EventListModel::shownEvents() const
{
    QVector<CPREventBase *> shown;
    const QList<CPREventBase *> &events = m_watcher.events()->events();
    std::copy_if(events.begin(), events.end(), std::back_inserter(shown),
                 [this](const CPREventBase *event) { return isShown(event); });
    std::stable_sort(shown.begin(), shown.end(), [](const CPREventBase *a, const CPREventBase *b) {
        return a->msecs() < b->msecs();
    });
    return shown;
}

void EventListModel::reload()
{
    beginResetModel();
    m_rows.clear();
    m_shown.clear();
    m_listed = 0;
    m_targets = sessionreview::Targets();
    if (const CPREvents *events = m_watcher.events()) {
        m_targets = sessionreview::targetsOf(*session());
        m_listed = events->events().size();
        m_rows = shownEvents();
        m_shown = QSet<const QObject *>(m_rows.begin(), m_rows.end());
    }
    endResetModel();
}

// Rows that are the same at both ends stay; what stands between them is replaced.
void EventListModel::follow()
{
    const QVector<CPREventBase *> wanted = shownEvents();
    m_listed = m_watcher.events()->events().size();

    const auto [oldEnd, newEnd] =
        std::mismatch(m_rows.begin(), m_rows.end(), wanted.begin(), wanted.end());
    const int first = static_cast<int>(oldEnd - m_rows.begin());
    const auto same = std::mismatch(m_rows.rbegin(), std::make_reverse_iterator(oldEnd),
                                    wanted.rbegin(), std::make_reverse_iterator(newEnd));
    const int after = static_cast<int>(same.first - m_rows.rbegin());
    remove(first, m_rows.size() - after - first);
    insert(first, wanted.mid(first, wanted.size() - after - first));
}

void EventListModel::remove(int first, int count)
{
    if (count <= 0)
        return;
    beginRemoveRows(QModelIndex(), first, first + count - 1);
    for (int row = first; row < first + count; ++row)
        m_shown.remove(m_rows.at(row));
    m_rows.remove(first, count);
    endRemoveRows();
}

void EventListModel::insert(int row, const QVector<CPREventBase *> &events)
{
    if (events.isEmpty())
        return;
    beginInsertRows(QModelIndex(), row, row + events.size() - 1);
    m_rows.insert(row, events.size(), nullptr);
    std::copy(events.begin(), events.end(), m_rows.begin() + row);
    for (const CPREventBase *event : events)
        m_shown.insert(event);
    endInsertRows();
}

void EventListModel::announce(int first, int last)
{
    if (first >= 0 && last >= first)
        Q_EMIT dataChanged(index(first), index(last));
}

void EventListModel::addAnnounced(CPREventBase *event)
{
    if (insertAnnounced(event))
        return;
    if (m_watcher.events()->events().size() != m_listed
        || (isShown(event) && !m_shown.contains(event)))
        follow();
    const int row = rowOf(event);
    announce(row, row);
}

// Searches from the end: nearly every new event stands there or close to it, so the cost does not
// grow with the session. False when the event is not new, or not the only new one.
bool EventListModel::insertAnnounced(CPREventBase *event)
{
    const QList<CPREventBase *> &events = m_watcher.events()->events();
    if (events.size() != m_listed + 1 || m_shown.contains(event))
        return false;
    if (!isShown(event)) {
        // At the end it is the new one.
        if (event != events.last())
            return false;
        m_listed = events.size();
        return true;
    }
    insertInOrder(event);
    ++m_listed;
    return true;
}

// Of events that start together, as the list has them.
void EventListModel::insertInOrder(CPREventBase *event)
{
    const QList<CPREventBase *> &events = m_watcher.events()->events();
    int row = m_rows.size();
    const auto isLater = [&](CPREventBase *other) {
        return other->msecs() > event->msecs()
            || (other->msecs() == event->msecs()
                && events.lastIndexOf(other) > events.lastIndexOf(event));
    };
    while (row > 0 && isLater(m_rows.at(row - 1)))
        --row;
    insert(row, {event});
}

// Statistics and scores get their time when the manikin sends them.
void EventListModel::announceChanged(CPREventBase *event)
{
    // A pause that goes on becomes a fault.
    if (m_hasFaultsOnly && m_watcher.events()->events().contains(event)
        && isShown(event) != m_shown.contains(event))
        follow();
    const int row = rowOf(event);
    if (row < 0)
        return;
    const bool isEarly = row + 1 < count() && m_rows.at(row + 1)->msecs() < event->msecs();
    const bool isLate = row > 0 && m_rows.at(row - 1)->msecs() > event->msecs();
    if (isEarly || isLate) {
        remove(row, 1);
        insertInOrder(event);
    } else {
        announce(row, row);
    }
}

void EventListModel::forget(CPREventBase *gone)
{
    --m_listed;
    if (!m_shown.contains(gone))
        return;
    const auto row = std::find(m_rows.rbegin(), m_rows.rend(), gone);
    // A view may still read the row while it hears of the removal.
    *row = nullptr;
    m_shown.remove(gone);
    remove(static_cast<int>(m_rows.rend() - row) - 1, 1);
}

CPREventBase *EventListModel::eventAt(int row) const
{
    CPREventBase *event = m_rows.value(row);
    if (event)
        QQmlEngine::setObjectOwnership(event, QQmlEngine::CppOwnership);
    return event;
}

int EventListModel::rowOf(CPREventBase *event) const
{
    return event ? m_rows.lastIndexOf(event) : -1;
}

int EventListModel::rowAt(int msecs) const
{
    const auto last =
        std::find_if(m_rows.rbegin(), m_rows.rend(), [msecs](const CPREventBase *event) {
            return event && event->msecs() <= msecs;
        });
    return static_cast<int>(m_rows.rend() - last) - 1;
}

int EventListModel::faultFrom(int row, int step) const
{
    while (row >= 0 && row < m_rows.size() && !(m_rows.at(row) && isFault(*m_rows.at(row))))
        row += step < 0 ? -1 : 1;
    return row < m_rows.size() ? std::max(row, -1) : -1;
}

int EventListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.size();
}

QVariant EventListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return QVariant();
    if (!m_rows.at(index.row()))
        return QVariant();
    const CPREventBase &event = *m_rows.at(index.row());
    const EventText text(event, m_targets);
    switch (role) {
    case EventRole:
        return QVariant::fromValue(eventAt(index.row()));
    case TypeRole:
        return event.type();
    case TagsRole:
        return event.tag();
    case Qt::DisplayRole:
    case TypeNameRole:
        return text.typeName();
    case StartRole:
        return event.msecs();
    case StartTextRole:
        return text.start();
    case EndRole:
        return event.eventEndTime();
    case DurationRole:
        return event.eventEndTime() - event.msecs();
    case DetailRole:
        return text.detail();
    case DepthRole:
        return text.depth();
    case ReleaseDepthRole:
        return text.releaseDepth();
    case RateRole:
        return text.rate();
    case VolumeRole:
        return text.volume();
    case NumberRole:
        return text.numberInCycle();
    case FaultsRole:
        return text.faults();
    case FaultTextRole:
        return text.faults().join(QStringLiteral(", "));
    case CorrectRole:
        return text.correct();
    default:
        return QVariant();
    }
}

QHash<int, QByteArray> EventListModel::roleNames() const
{
    // clang-format off
    return {
        {EventRole,        "event"},
        {TypeRole,         "type"},
        {TagsRole,         "tags"},
        {TypeNameRole,     "typeName"},
        {StartRole,        "start"},
        {StartTextRole,    "startText"},
        {EndRole,          "end"},
        {DurationRole,     "duration"},
        {DetailRole,       "detail"},
        {DepthRole,        "depth"},
        {ReleaseDepthRole, "releaseDepth"},
        {RateRole,         "rate"},
        {VolumeRole,       "volume"},
        {NumberRole,       "numberInCycle"},
        {FaultsRole,       "faults"},
        {FaultTextRole,    "faultText"},
        {CorrectRole,      "correct"},
    };
    // clang-format on
}

} // namespace cprquick
