// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionlibrary/IndexWriter.h"

#include "sessionlibrary/IndexColumns.h"
#include "sessionlibrary/SearchText.h"

#include <QSqlError>

namespace sessionlibrary {

namespace {

enum Statement {
    FindRow,
    DeleteSearch,
    DeleteRow,
    InsertRow,
    InsertSearch,
    InsertName,
    InsertLearner,
    statements
};

QString textOf(int statement)
{
    switch (statement) {
    case FindRow:
        return QStringLiteral("SELECT id FROM sessions WHERE file = ?");
    case DeleteSearch:
        return QStringLiteral("DELETE FROM search WHERE rowid = ?");
    case DeleteRow: // its learners go with it
        return QStringLiteral("DELETE FROM sessions WHERE id = ?");
    case InsertRow: {
        QString marks = QStringLiteral("?");
        for (std::size_t i = 0; i < indexColumns().size(); ++i)
            marks += QStringLiteral(",?");
        return QStringLiteral("INSERT INTO sessions(id,%1) VALUES(%2)").arg(columnNames(), marks);
    }
    case InsertSearch:
        return QStringLiteral("INSERT INTO search(rowid, learners, file, start, manikin, notes)"
                              " VALUES(?, ?, ?, ?, ?, ?)");
    case InsertName:
        return QStringLiteral("INSERT OR IGNORE INTO learners(name) VALUES(?)");
    case InsertLearner:
        return QStringLiteral("INSERT INTO session_learners(session, position, learner)"
                              " VALUES(?, ?, (SELECT id FROM learners WHERE name = ?))");
    default:
        return QString();
    }
}

} // namespace

std::optional<std::vector<StoredFile>> IndexWriter::files()
{
    QSqlQuery query = m_index.select(
        QStringLiteral("SELECT file, size, modified_ns, inode, state FROM sessions ORDER BY file"));
    std::vector<StoredFile> files;
    while (query.next())
        files.push_back({query.value(0).toString(),
                         {query.value(1).toLongLong(), query.value(2).toLongLong(),
                          query.value(3).toLongLong()},
                         State(query.value(4).toInt())});
    if (!query.isActive() || query.lastError().isValid()) {
        m_index.fail(query);
        return std::nullopt;
    }
    return files;
}

template <typename Change> bool IndexWriter::inTransaction(Change change)
{
    // From the begin: two that first read and then write would wait for each other.
    bool isDone = m_index.select(QStringLiteral("BEGIN IMMEDIATE")).isActive();
    if (!isDone)
        return false;
    isDone = change();
    m_prepared.clear();
    isDone = isDone && m_index.select(QStringLiteral("COMMIT")).isActive();
    if (!isDone) // the first error is the one that is told
        QSqlQuery(m_index.database()).exec(QStringLiteral("ROLLBACK"));
    return isDone;
}

bool IndexWriter::store(const std::vector<SessionEntry> &entries)
{
    return entries.empty() || inTransaction([&] {
               bool isReplacing = false;
               for (const SessionEntry &entry : entries) {
                   QSqlQuery &find = prepared(FindRow);
                   if (!execute(find, {entry.file}))
                       return false;
                   SessionEntry row = entry;
                   row.id = find.next() ? find.value(0).toLongLong() : 0;
                   find.finish();
                   isReplacing = isReplacing || row.id != 0;
                   if ((row.id != 0 && !removeRow(row.id)) || !insert(row))
                       return false;
               }
               return !isReplacing || removeUnused();
           });
}

bool IndexWriter::remove(const QStringList &files)
{
    return files.isEmpty() || inTransaction([&] {
               for (const QString &file : files) {
                   QSqlQuery &find = prepared(FindRow);
                   if (!execute(find, {file}))
                       return false;
                   const QVariant id = find.next() ? find.value(0) : QVariant();
                   find.finish();
                   if (!id.isNull() && !removeRow(id))
                       return false;
               }
               return removeUnused();
           });
}

std::optional<int> IndexWriter::forget(const QString &name)
{
    Conditions mention;
    addMention(mention, name);
    mention.sql = QStringList(
        QStringLiteral("(%1 OR id IN (SELECT session FROM session_learners WHERE learner ="
                       " (SELECT id FROM learners WHERE name = ?)))")
            .arg(mention.sql.first()));
    mention.values.append(name);
    QVariantList ids;
    const bool isDone = inTransaction([&] {
        QSqlQuery found = m_index.select(
            QStringLiteral("SELECT id FROM sessions") + mention.where(), mention.values);
        while (found.next())
            ids.append(found.value(0));
        if (!found.isActive() || found.lastError().isValid())
            return m_index.fail(found);
        found.finish();
        for (const QVariant &id : qAsConst(ids)) {
            if (!removeRow(id))
                return false;
        }
        // Full-text search only marks words as deleted, until its parts are merged into one.
        return removeUnused()
            && m_index.select(QStringLiteral("INSERT INTO search(search) VALUES('optimize')"))
                   .isActive();
    });
    if (!isDone || !m_index.writeBack())
        return std::nullopt;
    return int(ids.size());
}

bool IndexWriter::removeRow(const QVariant &id)
{
    return execute(prepared(DeleteSearch), {id}) && execute(prepared(DeleteRow), {id});
}

bool IndexWriter::insert(const SessionEntry &entry)
{
    QSqlQuery &query = prepared(InsertRow);
    int position = 0;
    query.bindValue(position++, entry.id == 0 ? QVariant() : QVariant(entry.id));
    for (const IndexColumn &column : indexColumns())
        query.bindValue(position++, column.get(entry));
    if (!query.exec())
        return m_index.fail(query);
    const qint64 id = query.lastInsertId().toLongLong();
    return execute(prepared(InsertSearch),
                   {id, entry.figures.learners.join(QLatin1Char('\n')), entry.file,
                    entry.figures.startTime, entry.figures.manikinName,
                    entry.notes.join(QLatin1Char('\n'))})
        && insertLearners(id, entry.figures.learners);
}

bool IndexWriter::insertLearners(qint64 session, const QStringList &names)
{
    for (int position = 0; position < names.size(); ++position) {
        if (!execute(prepared(InsertName), {names.at(position)})
            || !execute(prepared(InsertLearner), {session, position, names.at(position)}))
            return false;
    }
    return true;
}

bool IndexWriter::removeUnused()
{
    return m_index
        .select(QStringLiteral("DELETE FROM learners"
                               " WHERE id NOT IN (SELECT learner FROM session_learners)"))
        .isActive();
}

bool IndexWriter::execute(QSqlQuery &query, const QVariantList &values)
{
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, notNull(values.at(i)));
    return query.exec() || m_index.fail(query);
}

QSqlQuery &IndexWriter::prepared(int statement)
{
    if (m_prepared.empty()) {
        for (int each = 0; each < statements; ++each) {
            m_prepared.emplace_back(m_index.database());
            m_prepared.back().setForwardOnly(true);
            if (!m_prepared.back().prepare(textOf(each)))
                m_index.fail(m_prepared.back());
        }
    }
    return m_prepared[std::size_t(statement)];
}

} // namespace sessionlibrary
