// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionlibrary/SessionLibrary.h"

#include "sessionlibrary/IndexColumns.h"
#include "sessionlibrary/IndexConnection.h"
#include "sessionlibrary/SearchText.h"
#include "sessionreview/RecordedFigures.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSqlError>

namespace sessionlibrary {

namespace {

// The names as a JSON array, since a name may hold any separator.
const QString learnersOfSession =
    QStringLiteral("(SELECT json_group_array(name) FROM (SELECT name FROM session_learners"
                   " JOIN learners ON learners.id = learner WHERE session = sessions.id"
                   " ORDER BY position))");
const QString firstLearner =
    QStringLiteral("(SELECT name FROM session_learners JOIN learners ON learners.id = learner"
                   " WHERE session = sessions.id ORDER BY position LIMIT 1) COLLATE NOCASE");

// The begin of a day in local time, ms since 1970.
qint64 beginOf(const QDate &day)
{
    return day.startOfDay().toMSecsSinceEpoch();
}

// A + keeps SQLite from walking through the scores where the order is another.
Conditions conditionsOf(const Filter &filter)
{
    Conditions conditions;
    addSearch(conditions, filter.text);
    if (filter.learner)
        conditions.add(QStringLiteral("id IN (SELECT session FROM session_learners WHERE learner ="
                                      " (SELECT id FROM learners WHERE name = ?))"),
                       {*filter.learner});
    if (filter.from.isValid())
        conditions.add(QStringLiteral("start_ms >= ?"), {beginOf(filter.from)});
    if (filter.to.isValid())
        conditions.add(QStringLiteral("start_ms < ?"), {beginOf(filter.to.addDays(1))});
    if (filter.protocol)
        conditions.add(QStringLiteral("protocol = ? AND state < 2"), {*filter.protocol});
    if (filter.minScore)
        conditions.add(QStringLiteral("+overall_score >= ?"), {*filter.minScore});
    if (filter.maxScore)
        conditions.add(QStringLiteral("+overall_score <= ?"), {*filter.maxScore});
    return conditions;
}

QString orderOf(const Order &order)
{
    const QString direction =
        order.direction == Qt::AscendingOrder ? QStringLiteral(" ASC") : QStringLiteral(" DESC");
    QString first;
    switch (order.by) {
    case SortBy::Start:
        break;
    case SortBy::Learner:
        first = firstLearner;
        break;
    case SortBy::Length:
        first = QStringLiteral("length_s");
        break;
    case SortBy::Protocol:
        first = QStringLiteral("protocol");
        break;
    case SortBy::Score:
        first = QStringLiteral("overall_score");
        break;
    case SortBy::File:
        return QStringLiteral(" ORDER BY file") + direction;
    }
    if (!first.isEmpty())
        first += direction + QStringLiteral(", ");
    return QStringLiteral(" ORDER BY ") + first + QStringLiteral("start_ms") + direction
        + QStringLiteral(", id") + direction;
}

QStringList namesIn(const QString &json)
{
    QStringList names;
    const QJsonArray array = QJsonDocument::fromJson(json.toUtf8()).array();
    for (const auto &name : array)
        names.append(name.toString());
    return names;
}

// The row that the query stands at: the id, the learners, all columns.
SessionEntry entryAt(const QSqlQuery &query)
{
    SessionEntry entry;
    entry.recorded.resize(sessionreview::recordedFigures().size());
    int index = 0;
    entry.id = query.value(index++).toLongLong();
    entry.figures.learners = namesIn(query.value(index++).toString());
    for (const IndexColumn &column : indexColumns()) {
        const QVariant value = query.value(index++);
        if (!value.isNull())
            column.set(entry, value);
    }
    entry.figures.training = sessionreview::trainingOf(entry.figures.protocol);
    entry.figures.training.compressions |= entry.figures.compressions > 0;
    entry.figures.training.ventilations |= entry.figures.ventilations > 0;
    return entry;
}

std::optional<std::vector<SessionEntry>> entries(IndexConnection &index, const QString &rest,
                                                 const QVariantList &values)
{
    QSqlQuery query =
        index.select(QStringLiteral("SELECT id, ") + learnersOfSession + QLatin1Char(',')
                         + columnNames() + QStringLiteral(" FROM sessions") + rest,
                     values);
    std::vector<SessionEntry> found;
    while (query.next())
        found.push_back(entryAt(query));
    if (!query.isActive() || query.lastError().isValid()) {
        index.fail(query);
        return std::nullopt;
    }
    return found;
}

} // namespace

SessionLibrary::SessionLibrary() : m_index(std::make_unique<IndexConnection>())
{
}

SessionLibrary::~SessionLibrary() = default;

OpenResult SessionLibrary::open(const QString &folder, Check check)
{
    return m_index->open(folder, check);
}

bool SessionLibrary::isOpen() const
{
    return m_index->isOpen();
}

QString SessionLibrary::folder() const
{
    return m_index->folder();
}

QString SessionLibrary::pathOf(const QString &file) const
{
    return m_index->folder() + QLatin1Char('/') + file;
}

QString SessionLibrary::errorString() const
{
    return m_index->errorString();
}

qint64 SessionLibrary::version()
{
    return m_index->version();
}

std::optional<int> SessionLibrary::count(const Filter &filter)
{
    const Conditions conditions = conditionsOf(filter);
    QSqlQuery query = m_index->select(
        QStringLiteral("SELECT count(*) FROM sessions") + conditions.where(), conditions.values);
    if (!query.next()) {
        m_index->fail(query);
        return std::nullopt;
    }
    return query.value(0).toInt();
}

std::optional<std::vector<SessionEntry>> SessionLibrary::page(const Filter &filter,
                                                              const Order &order, int offset,
                                                              int limit)
{
    Conditions conditions = conditionsOf(filter);
    const QString ordered = orderOf(order);
    const QString chosen = conditions.where() + ordered + QStringLiteral(" LIMIT ? OFFSET ?");
    conditions.values << limit << offset;
    // An index has the sessions in these orders. In the others only what is on the page is sorted
    // with all of its columns.
    if (order.by == SortBy::Start || order.by == SortBy::File)
        return entries(*m_index, chosen, conditions.values);
    return entries(*m_index,
                   QStringLiteral(" WHERE id IN (SELECT id FROM sessions%1)").arg(chosen) + ordered,
                   conditions.values);
}

std::optional<std::vector<SessionEntry>> SessionLibrary::sessionsOf(const QString &learner)
{
    Filter filter;
    filter.learner = learner;
    constexpr int all = -1;
    return page(filter, {SortBy::Start, Qt::AscendingOrder}, 0, all);
}

std::optional<SessionEntry> SessionLibrary::session(const QString &file)
{
    const auto found = entries(*m_index, QStringLiteral(" WHERE file = ?"), {file});
    if (!found)
        return std::nullopt;
    return found->empty() ? SessionEntry() : found->front();
}

std::optional<std::vector<Learner>> SessionLibrary::learners()
{
    // The score is that of the row with the greatest start, as SQLite has it for max().
    QSqlQuery query = m_index->select(
        QStringLiteral("SELECT name, count(*), max(ifnull(start_ms, -9e18)), start_ms,"
                       " overall_score FROM learners"
                       " JOIN session_learners ON learner = learners.id"
                       " JOIN sessions ON session = sessions.id"
                       " GROUP BY learners.id ORDER BY name COLLATE NOCASE, name"));
    std::vector<Learner> found;
    while (query.next()) {
        Learner learner{query.value(0).toString(), query.value(1).toInt(), {}, {}};
        if (const QVariant start = query.value(3); !start.isNull())
            learner.last = QDateTime::fromMSecsSinceEpoch(start.toLongLong(), Qt::UTC);
        if (const QVariant score = query.value(4); !score.isNull())
            learner.lastScore = score.toInt();
        found.push_back(learner);
    }
    if (!query.isActive() || query.lastError().isValid()) {
        m_index->fail(query);
        return std::nullopt;
    }
    return found;
}

} // namespace sessionlibrary
