// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONLIBRARY_INDEXSCHEMA_H
#define SESSIONLIBRARY_INDEXSCHEMA_H

#include <QSqlDatabase>
#include <QSqlError>
#include <QString>

namespace sessionlibrary {

/// What becomes of a database that is to be an index.
enum class SchemaResult {
    Current, ///< it is one, of this version
    Made, ///< it was empty and is an index now
    Migrated, ///< it is one of this version now; what has to be read anew is marked
    Foreign, ///< another program's, or a later version's
    Failed ///< an error
};

/// Makes \a database an index of this program's version, in one transaction. \a error is why it
/// failed.
SchemaResult prepareSchema(const QSqlDatabase &database, QSqlError &error);

/// Whether the error says that the file is no database, or a broken one.
bool isCorruption(const QSqlError &error);

/// What QSqlError says, for people.
QString reasonOf(const QSqlError &error);

} // namespace sessionlibrary

#endif
