// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_FIGURESOBJECT_H
#define CPRSESSION_FIGURESOBJECT_H

#include "sessionreview/Figures.h"

#include <QJsonObject>
#include <QMetaEnum>

/// The key of an enumerator, or its number when it has none.
template <typename Enumeration> QString keyOf(int value)
{
    const char *key = QMetaEnum::fromType<Enumeration>().valueToKey(value);
    return key ? QString::fromLatin1(key) : QString::number(value);
}

/// The figures of a session as programs get them. What the manikin has not sent is null.
QJsonObject figuresObject(const sessionreview::Figures &figures);

/// The object without the members that are null.
QJsonObject withoutNulls(const QJsonObject &object);

#endif
