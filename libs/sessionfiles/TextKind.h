// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_TEXTKIND_H
#define SESSIONFILES_TEXTKIND_H

#include <Vocabulary.h>

#include <QDateTime>
#include <QMetaProperty>
#include <QString>

namespace sessionfiles {

using Kind = Vocabulary::Kind;

inline bool fits(const QString &text, Kind kind)
{
    bool ok = false;
    switch (kind) {
    case Kind::Text:
        return true;
    case Kind::Integer:
        text.toInt(&ok);
        return ok;
    case Kind::Unsigned:
        text.toUInt(&ok);
        return ok;
    case Kind::Number:
        return qIsFinite(text.toFloat(&ok)) && ok;
    case Kind::Flag:
        return text == QLatin1String("0") || text == QLatin1String("1");
    case Kind::Time:
        return QDateTime::fromString(text, Qt::ISODate).isValid();
    }
    return false;
}

inline QString kindText(Kind kind)
{
    switch (kind) {
    case Kind::Integer:
        return QStringLiteral("an integer of 32 bits");
    case Kind::Unsigned:
        return QStringLiteral("an integer of 32 bits, not negative");
    case Kind::Number:
        return QStringLiteral("a number");
    case Kind::Flag:
        return QStringLiteral("0 or 1");
    case Kind::Time:
        return QStringLiteral("a date and time of ISO 8601");
    case Kind::Text:
        break;
    }
    return QStringLiteral("a text");
}

inline Kind kindOf(const QMetaProperty &property)
{
    switch (property.userType()) {
    case QMetaType::Bool:
        return Kind::Flag;
    case QMetaType::Int:
        return Kind::Integer;
    case QMetaType::UInt:
        return Kind::Unsigned;
    case QMetaType::Float:
        return Kind::Number;
    default:
        return Kind::Text;
    }
}

} // namespace sessionfiles

#endif
