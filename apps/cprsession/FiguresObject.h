// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRSESSION_FIGURESOBJECT_H
#define CPRSESSION_FIGURESOBJECT_H

#include "sessionreview/Figures.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QMetaEnum>
#include <QString>

#include <optional>

/// The key of an enumerator, or its number when it has none.
template <typename Enumeration> QString keyOf(int value)
{
    const char *key = QMetaEnum::fromType<Enumeration>().valueToKey(value);
    return key ? QString::fromLatin1(key) : QString::number(value);
}

/// The figures of a session as programs get them. What has not been received is null.
QJsonObject figuresObject(const sessionreview::Figures &figures);

/// @{
/// JSON's null for what is not there.
QJsonValue orNull(const QString &text);
QJsonValue orNull(std::optional<double> number);
/// @}

#endif
