// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef TESTSUPPORT_EVENTVALUES_H
#define TESTSUPPORT_EVENTVALUES_H

#include "CPREventBase.h"

#include <QQmlPropertyMap>
#include <QVector>

#include <initializer_list>

/// What an event holds, as a test compares it.
namespace testsupport {

/// The int value of a parameter, and a value that no test uses when it is not there.
inline int intOf(const CPREventBase *event, CPREventBase::ParameterType type)
{
    return event->parameterValue(type, QVariant(-987654)).toInt();
}

inline QString textOf(const CPREventBase *event, CPREventBase::ParameterType type)
{
    return event->parameterValue(type, QVariant()).toString();
}

/// What numberOf() gives for a parameter that is not there.
constexpr double missing = -987654;

/// The number under \a name, a property of the event or else a parameter, to hundredths.
inline double numberOf(const CPREventBase *event, const char *name)
{
    const QString key = QString::fromLatin1(name);
    QVariant value = missing;
    if (event->metaObject()->indexOfProperty(name) >= 0)
        value = event->property(name);
    else if (event->params() && event->params()->contains(key))
        value = event->params()->value(key);
    return qRound64(value.toDouble() * 100) / 100.0;
}

inline QVector<double> numbersOf(const CPREventBase *event,
                                 std::initializer_list<const char *> names)
{
    QVector<double> numbers;
    for (const char *name : names)
        numbers.append(numberOf(event, name));
    return numbers;
}

} // namespace testsupport

#endif
