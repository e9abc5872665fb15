// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_SESSIONTABLE_H
#define SESSIONFILES_SESSIONTABLE_H

#include "sessionfiles/TableWriter.h"

#include <QStringList>

#include <functional>
#include <memory>

class CPRData;

namespace sessionfiles {

/// One way to put a session into rows.
class SessionTable {
public:
    /// The table named \a what (summary, events, waves, guidelines) with the columns of those
    /// names, or its usual ones when there are none. Null, and a reason in \a error, which may be
    /// null, when there is no such table or column.
    static std::unique_ptr<SessionTable> create(const QString &what, const QStringList &columns,
                                                QString *error);
    virtual ~SessionTable();

    /// The heads of the columns.
    virtual QVector<TableWriter::Column> columns() const = 0;
    /// Is given a row; false ends the table.
    using WriteRow = std::function<bool(const TableWriter::Row &)>;
    /// Calls \a write for each row of \a session until it returns false; returns its last answer.
    virtual bool writeRows(const CPRData &session, const WriteRow &write) const = 0;
};

} // namespace sessionfiles

#endif
