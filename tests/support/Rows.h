// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef TESTSUPPORT_ROWS_H
#define TESTSUPPORT_ROWS_H

#include <QTest>

namespace testsupport {

/// Adds the columns of a test's table. What it gives adds a row: a name, and a value for each
/// column.
template <typename... Types, typename... Names> auto columns(Names... names)
{
    static_assert(sizeof...(Types) == sizeof...(Names), "each column has a type and a name");
    (QTest::addColumn<Types>(names), ...);
    return [](const char *name, const Types &...values) { (QTest::newRow(name) << ... << values); };
}

} // namespace testsupport

#endif
