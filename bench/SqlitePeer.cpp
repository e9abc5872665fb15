// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Peers.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>

#include <algorithm>

namespace bench {

namespace {

const QString connectionName = QStringLiteral("peer");
const QString blobTable = QStringLiteral("blobs");

/// Opens the file, lets use(database) work with it in one transaction, and closes it.
template <typename Use> bool withDatabase(const QString &file, Use use)
{
    bool isGood = false;
    {
        QSqlDatabase database =
            QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
        database.setDatabaseName(file);
        isGood = database.open();
        // The file is written once and as a whole, so a journal would protect nothing.
        QSqlQuery(database).exec(QStringLiteral("PRAGMA journal_mode=OFF"));
        QSqlQuery(database).exec(QStringLiteral("PRAGMA synchronous=OFF"));
        isGood = isGood && database.transaction() && use(database) && database.commit();
    }
    QSqlDatabase::removeDatabase(connectionName);
    return isGood;
}

bool insert(QSqlQuery &query, const QVariantList &values)
{
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values.at(i));
    return query.exec();
}

// A table for each kind of event; a row carries the event's place in the list.
bool writeKind(QSqlDatabase &database, const KindTable &table,
               const std::vector<PlainEvent> &events)
{
    QStringList columns{QStringLiteral("place INTEGER PRIMARY KEY"), QStringLiteral("msecs")};
    for (const CPREventBase::ParameterType type : table.columns)
        columns.append(CPREventBase::parameterKey(type));
    QStringList marks;
    for (int i = 0; i < columns.size(); ++i)
        marks.append(QStringLiteral("?"));
    const QString name = kindKey(table.type);
    const QString comma = QStringLiteral(",");
    QSqlQuery query(database);
    bool isGood = query.exec(QStringLiteral("CREATE TABLE %1(%2)").arg(name, columns.join(comma)))
        && query.prepare(QStringLiteral("INSERT INTO %1 VALUES(%2)").arg(name, marks.join(comma)));
    for (const int position : table.positions) {
        const PlainEvent &event = events[static_cast<std::size_t>(position)];
        QVariantList values{position, event.msecs};
        for (const CPREventBase::ParameterType type : table.columns)
            values.append(valueOf(event, type));
        isGood = isGood && insert(query, values);
    }
    return isGood;
}

void readKind(QSqlDatabase &database, const QString &name, std::vector<PlainEvent> &events)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT * FROM %1").arg(name));
    std::vector<CPREventBase::ParameterType> types; // of the columns behind place and time
    for (int i = 2; i < query.record().count(); ++i)
        types.push_back(parameterOf(query.record().fieldName(i)));
    while (query.next()) {
        PlainEvent event{kindOf(name), query.value(1).toInt(), {}};
        for (std::size_t i = 0; i < types.size(); ++i) {
            const QVariant value = query.value(static_cast<int>(i) + 2);
            if (!value.isNull())
                event.values.push_back({types[i], value});
        }
        place(std::move(event), query.value(0).toInt(), events);
    }
}

bool write(const PlainSession &session, const QString &file)
{
    QFile::remove(file);
    return withDatabase(file, [&session](QSqlDatabase &database) {
        bool isGood = true;
        for (const KindTable &table : kindTables(session.events))
            isGood = isGood && writeKind(database, table, session.events);
        QSqlQuery query(database);
        isGood = isGood
            && query.exec(QStringLiteral("CREATE TABLE %1(name TEXT, bytes BLOB)").arg(blobTable))
            && query.prepare(QStringLiteral("INSERT INTO %1 VALUES(?,?)").arg(blobTable));
        for (const Member &blob : session.blobs)
            isGood = isGood && insert(query, {blob.name, blob.bytes});
        return isGood;
    });
}

bool read(const QString &file, PlainSession &session)
{
    return withDatabase(file, [&session](QSqlDatabase &database) {
        QStringList kinds = database.tables();
        kinds.removeAll(blobTable);
        for (const QString &kind : qAsConst(kinds))
            readKind(database, kind, session.events);
        QSqlQuery query(QStringLiteral("SELECT name, bytes FROM %1").arg(blobTable), database);
        while (query.next())
            session.blobs.push_back({query.value(0).toString(), query.value(1).toByteArray(), {}});
        return true;
    });
}

} // namespace

Peer sqlitePeer()
{
    return {"SQLite through Qt", write, read};
}

} // namespace bench
