// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_TEXTKIND_H
#define SESSIONFILES_TEXTKIND_H

#include <QDateTime>
#include <QMetaProperty>
#include <QString>

namespace sessionfiles {

// What a text has to be.
enum class Kind : quint8 {
    Unknown, // nothing is expected
    Text,
    Integer,
    Unsigned,
    Number,
    Flag,
    Time, // ISO 8601
    Enumeration // an integer; its values are in the table of enumerations
};

inline bool fits(const QString &text, Kind kind)
{
    bool ok = false;
    switch (kind) {
    case Kind::Unknown:
    case Kind::Text:
        return true;
    case Kind::Integer:
    case Kind::Enumeration:
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
    case Kind::Enumeration:
        return QStringLiteral("an integer of 32 bits");
    case Kind::Unsigned:
        return QStringLiteral("an integer of 32 bits, not negative");
    case Kind::Number:
        return QStringLiteral("a number");
    case Kind::Flag:
        return QStringLiteral("0 or 1");
    case Kind::Time:
        return QStringLiteral("a date and time of ISO 8601");
    case Kind::Unknown:
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
    case QMetaType::QString:
        return Kind::Text;
    default:
        return Kind::Unknown;
    }
}

} // namespace sessionfiles

#endif
