// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef REPEATEDWARNING_H
#define REPEATEDWARNING_H

#include "private/Limits.h"

#include <QLoggingCategory>

/// Of the warnings of one kind that a document or a manikin can repeat as often as it likes only
/// the first are printed. Adds one of them to \a count, and is true when it is to be printed.
inline bool isWarningPrinted(const QLoggingCategory &(*category)(), int &count)
{
    ++count;
    if (count == Limits::maxWarnings + 1)
        qCWarning(category, "Further warnings of this kind are not printed");
    return count <= Limits::maxWarnings;
}

#endif
