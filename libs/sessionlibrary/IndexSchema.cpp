// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionlibrary/IndexSchema.h"

#include "sessionlibrary/IndexColumns.h"

#include <QSet>
#include <QSqlQuery>
#include <QVector>

#include <optional>

namespace sessionlibrary {

namespace {

constexpr int applicationId = 0x43505249; // "CPRI"

/// Grows when a figure or another column is worked out in another way: all archives are read anew.
constexpr int contentVersion = 1;

// What leads from one version of the schema to the next, the first from an empty file. A step that
// has been released never changes. The columns of sessions are those of indexColumns(); they need
// no step.
const QVector<QStringList> &steps()
{
    static const QVector<QStringList> all = {{
        QStringLiteral("CREATE TABLE about(content_version INTEGER NOT NULL)"),
        QStringLiteral("INSERT INTO about VALUES(0)"),
        QStringLiteral(
            "CREATE TABLE sessions(id INTEGER PRIMARY KEY,"
            " file TEXT NOT NULL UNIQUE, size INTEGER NOT NULL DEFAULT -1,"
            " modified_ns INTEGER NOT NULL DEFAULT 0, inode INTEGER NOT NULL DEFAULT 0,"
            " state INTEGER NOT NULL DEFAULT 2, start_ms INTEGER, overall_score INTEGER)"),
        QStringLiteral("CREATE INDEX sessions_files"
                       " ON sessions(file, size, modified_ns, inode, state)"),
        QStringLiteral("CREATE INDEX sessions_start ON sessions(start_ms)"),
        QStringLiteral("CREATE INDEX sessions_score ON sessions(overall_score)"),
        QStringLiteral("CREATE TABLE learners(id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE)"),
        QStringLiteral("CREATE TABLE session_learners("
                       "session INTEGER NOT NULL REFERENCES sessions(id) ON DELETE CASCADE,"
                       " position INTEGER NOT NULL,"
                       " learner INTEGER NOT NULL REFERENCES learners(id),"
                       " PRIMARY KEY(session, position)) WITHOUT ROWID"),
        QStringLiteral("CREATE INDEX session_learners_learner ON session_learners(learner)"),
        QStringLiteral(
            "CREATE VIRTUAL TABLE search USING fts5(learners, file, start, manikin, notes,"
            " tokenize='unicode61 remove_diacritics 2', prefix='1 2 3')"),
    }};
    return all;
}

int number(QSqlQuery &query, const QString &statement)
{
    return query.exec(statement) && query.next() ? query.value(0).toInt() : -1;
}

// Adds the columns that are missing, and removes those that nobody knows any more. Whether there
// was anything to do; none for an error.
std::optional<bool> alignColumns(QSqlQuery &query)
{
    if (!query.exec(QStringLiteral("SELECT name FROM pragma_table_info('sessions')")))
        return std::nullopt;
    QSet<QString> present;
    while (query.next())
        present.insert(query.value(0).toString());
    present.remove(QStringLiteral("id"));
    bool isChanged = false;
    for (const IndexColumn &column : indexColumns()) {
        if (present.remove(column.name))
            continue;
        isChanged = true;
        if (!query.exec(QStringLiteral("ALTER TABLE sessions ADD COLUMN %1 %2")
                            .arg(column.name, QLatin1String(column.type))))
            return std::nullopt;
    }
    for (const QString &name : qAsConst(present)) {
        isChanged = true;
        if (!query.exec(QStringLiteral("ALTER TABLE sessions DROP COLUMN \"%1\"").arg(name)))
            return std::nullopt;
    }
    return isChanged;
}

// Leaves all entries as they are until the next scan reads their files.
bool markAll(QSqlQuery &query)
{
    return query.exec(QStringLiteral("UPDATE sessions SET size = -1"))
        && query.exec(QStringLiteral("UPDATE about SET content_version = %1").arg(contentVersion));
}

SchemaResult prepare(QSqlQuery &query)
{
    const int id = number(query, QStringLiteral("PRAGMA application_id"));
    const int version = number(query, QStringLiteral("PRAGMA user_version"));
    const int tables = number(query, QStringLiteral("SELECT count(*) FROM sqlite_master"));
    if (id < 0 || version < 0 || tables < 0)
        return SchemaResult::Failed;
    const bool isNew = id == 0 && version == 0 && tables == 0;
    if ((!isNew && id != applicationId) || version > steps().size())
        return SchemaResult::Foreign;
    for (int step = version; step < steps().size(); ++step) {
        for (const QString &statement : steps()[step]) {
            if (!query.exec(statement))
                return SchemaResult::Failed;
        }
    }
    const bool isOld = version < steps().size();
    if (isOld
        && (!query.exec(QStringLiteral("PRAGMA application_id = %1").arg(applicationId))
            || !query.exec(QStringLiteral("PRAGMA user_version = %1").arg(steps().size()))))
        return SchemaResult::Failed;
    const std::optional<bool> isAligned = alignColumns(query);
    if (!isAligned)
        return SchemaResult::Failed;
    const bool isStale = isOld || *isAligned
        || number(query, QStringLiteral("SELECT content_version FROM about")) != contentVersion;
    if (isStale && !markAll(query))
        return SchemaResult::Failed;
    return isNew ? SchemaResult::Made : isStale ? SchemaResult::Migrated : SchemaResult::Current;
}

} // namespace

SchemaResult prepareSchema(const QSqlDatabase &database, QSqlError &error)
{
    QSqlQuery query(database);
    SchemaResult result = SchemaResult::Failed;
    if (query.exec(QStringLiteral("BEGIN"))) {
        result = prepare(query);
        const bool isKept = result == SchemaResult::Made || result == SchemaResult::Migrated;
        if (isKept && !query.exec(QStringLiteral("COMMIT")))
            result = SchemaResult::Failed;
    }
    error = query.lastError();
    query.finish();
    if (result != SchemaResult::Made && result != SchemaResult::Migrated)
        QSqlQuery(database).exec(QStringLiteral("ROLLBACK"));
    return result;
}

bool isCorruption(const QSqlError &error)
{
    constexpr int corrupt = 11; // SQLITE_CORRUPT; the bits above are details
    constexpr int notADatabase = 26; // SQLITE_NOTADB
    constexpr int base = 0xff;
    const int code = error.nativeErrorCode().toInt() & base;
    return code == corrupt || code == notADatabase;
}

QString reasonOf(const QSqlError &error)
{
    return error.databaseText().isEmpty() ? error.text() : error.databaseText();
}

} // namespace sessionlibrary
