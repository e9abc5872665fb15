// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONLIBRARY_INDEXCOLUMNS_H
#define SESSIONLIBRARY_INDEXCOLUMNS_H

#include "sessionlibrary/SessionEntry.h"

#include <QVariant>

namespace sessionlibrary {

/// A column of the table of sessions. Whatever the manikin has not sent is NULL.
struct IndexColumn {
    QString
        name; ///< as the members of `cprsession info --json`; figures with "recorded_" before it
    const char *type; ///< in SQL
    std::function<QVariant(const SessionEntry &)> get; ///< a null value for NULL
    std::function<void(SessionEntry &, const QVariant &)> set; ///< not called for NULL
};

/// All columns but the row's id. Figures stand at the end, in the order of
/// sessionreview::recordedFigures().
const std::vector<IndexColumn> &indexColumns();

/// A text that Qt would store as NULL because it was never set, as an empty one.
QVariant notNull(const QVariant &value);

/// The names of all, with commas between.
QString columnNames();

} // namespace sessionlibrary

#endif
