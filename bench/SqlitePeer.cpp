// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "Peers.h"

#include <QFile>
#include <QSet>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QStringList>

#include <algorithm>

namespace bench {

namespace {

/// Opens the file, lets use(database) work with it in one transaction, and closes it.
template <typename Use> bool withDatabase(const QString &file, Use use)
{
    const QString connection = QStringLiteral("peer");
    bool isGood = false;
    {
        QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        database.setDatabaseName(file);
        isGood = database.open();
        // The file is written once, so a journal would protect nothing.
        QSqlQuery(database).exec(QStringLiteral("PRAGMA journal_mode=OFF"));
        QSqlQuery(database).exec(QStringLiteral("PRAGMA synchronous=OFF"));
        isGood = isGood && database.transaction() && use(database) && database.commit();
    }
    QSqlDatabase::removeDatabase(connection);
    return isGood;
}

bool insert(QSqlQuery &query, const QVariantList &values)
{
    for (int i = 0; i < values.size(); ++i)
        query.bindValue(i, values.at(i));
    return query.exec();
}

// A table of the events of one kind, with a column for each parameter that one of them has. A row
// begins with the event's position in the list.
bool writeKind(QSqlDatabase &database, const QString &kind, const QVector<int> &positions,
               const QVector<PlainEvent> &events)
{
    QSet<CPREventBase::ParameterType> types;
    for (const int position : positions) {
        for (const auto &value : events[position].values)
            types.insert(value.first);
    }
    QMap<QString, CPREventBase::ParameterType> columns;
    for (const CPREventBase::ParameterType type : qAsConst(types))
        columns.insert(CPREventBase::parameterKey(type), type);
    QString marks = QStringLiteral("?,?");
    QString declarations = QStringLiteral("position INTEGER PRIMARY KEY,msecs");
    for (auto column = columns.begin(); column != columns.end(); ++column) {
        marks += QStringLiteral(",?");
        declarations += QLatin1Char(',') + column.key();
    }
    QSqlQuery query(database);
    bool isGood = query.exec(QStringLiteral("CREATE TABLE %1(%2)").arg(kind, declarations))
        && query.prepare(QStringLiteral("INSERT INTO %1 VALUES(%2)").arg(kind, marks));
    for (const int position : positions) {
        QVariantList row{position, events[position].msecs};
        auto value = events[position].values.begin(); // in the order of the columns
        for (const CPREventBase::ParameterType column : qAsConst(columns)) {
            const bool has = value != events[position].values.end() && value->first == column;
            row.append(has ? (value++)->second : QVariant());
        }
        isGood = isGood && insert(query, row);
    }
    return isGood;
}

void readKind(QSqlDatabase &database, const QString &kind, QVector<PlainEvent> &events)
{
    QSqlQuery query(database);
    query.setForwardOnly(true);
    query.exec(QStringLiteral("SELECT * FROM %1").arg(kind));
    QVector<CPREventBase::ParameterType> types; // of the columns behind position and time
    for (int i = 2; i < query.record().count(); ++i)
        types.append(parameterOf(query.record().fieldName(i)));
    while (query.next()) {
        const int position = query.value(0).toInt();
        events.resize(std::max(int(events.size()), position + 1));
        PlainEvent &event = events[position];
        event.kind = kindOf(kind);
        event.msecs = query.value(1).toInt();
        for (int i = 0; i < types.size(); ++i) {
            const QVariant value = query.value(i + 2);
            if (!value.isNull())
                event.values.append({types.at(i), value});
        }
    }
}

const QString blobTable = QStringLiteral("blobs");

bool write(const PlainSession &session, const QString &file)
{
    QMap<CPREventBase::EventType, QVector<int>> positions; // of the events by their kind
    for (int i = 0; i < session.events.size(); ++i)
        positions[session.events[i].kind].append(i);
    QFile::remove(file);
    return withDatabase(file, [&](QSqlDatabase &database) {
        bool isGood = true;
        for (auto kind = positions.begin(); kind != positions.end(); ++kind)
            isGood = isGood && writeKind(database, kindKey(kind.key()), *kind, session.events);
        QSqlQuery query(database);
        isGood = isGood
            && query.exec(QStringLiteral("CREATE TABLE %1(name TEXT, bytes BLOB)").arg(blobTable))
            && query.prepare(QStringLiteral("INSERT INTO %1 VALUES(?,?)").arg(blobTable));
        for (auto blob = session.blobs.begin(); blob != session.blobs.end(); ++blob)
            isGood = isGood && insert(query, {blob.key(), *blob});
        return isGood;
    });
}

bool read(const QString &file, PlainSession &session)
{
    return withDatabase(file, [&session](QSqlDatabase &database) {
        const QStringList tables = database.tables();
        for (const QString &table : tables) {
            if (table != blobTable)
                readKind(database, table, session.events);
        }
        QSqlQuery query(QStringLiteral("SELECT name, bytes FROM %1").arg(blobTable), database);
        while (query.next())
            session.blobs.insert(query.value(0).toString(), query.value(1).toByteArray());
        return true;
    });
}

} // namespace

Peer sqlitePeer()
{
    return {"SQLite through Qt", write, read};
}

} // namespace bench
