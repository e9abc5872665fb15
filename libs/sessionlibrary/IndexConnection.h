// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONLIBRARY_INDEXCONNECTION_H
#define SESSIONLIBRARY_INDEXCONNECTION_H

#include "sessionlibrary/IndexSchema.h"
#include "sessionlibrary/SessionLibrary.h"

#include <QSqlQuery>
#include <QVariantList>

namespace sessionlibrary {

/// A thread's connection to the index of a folder, and the files that it consists of.
class IndexConnection {
public:
    IndexConnection() = default;
    ~IndexConnection() { close(); }
    IndexConnection(const IndexConnection &) = delete;
    IndexConnection &operator=(const IndexConnection &) = delete;

    OpenResult open(const QString &folder, Check check);
    void close();
    bool isOpen() const { return m_isOpen; }
    const QString &folder() const { return m_folder; }
    const QString &errorString() const { return m_error; }
    QSqlDatabase database() const { return QSqlDatabase::database(m_name, false); }
    qint64 version();

    /// A query that reads forward, executed; inactive after an error.
    QSqlQuery select(const QString &sql, const QVariantList &values = {});
    /// Remembers the error of a query; always false.
    bool fail(const QSqlQuery &query);
    /// Whether no query has failed so that the index has to be made anew.
    bool isBroken() const { return m_isBroken; }
    /// Writes everything into the database's own file and empties the log beside it.
    bool writeBack();

private:
    bool openFile(Check check, OpenResult &result);
    SchemaResult openDatabase();
    bool isSound(Check check);
    void removeFiles();

    QString m_name; // of the connection; unique in the process
    QString m_folder;
    QString m_file; // of the database
    FileStamp m_opened; // its inode alone
    QString m_error;
    bool m_isOpen = false;
    bool m_isBroken = false;
    qint64 m_generation = 0; // how often it was opened
};

} // namespace sessionlibrary

#endif
