// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef VOCABULARY_H
#define VOCABULARY_H

#include "CPREventBase.h"
#include "cprdata_export.h"

#include <initializer_list>
#include <optional>

/// What there is to know of each parameter and of each kind of event: a row each. Files, tables,
/// checks and pages read it here. A parameter's key text is that of its enumerator
/// (CPREventBase::parameterKey()), and so is that of a kind (CPREventBase::typeAsString()).
///
/// The labels are in English; the models that show them translate them in the context "cprquick".
namespace Vocabulary {

/// What the text of a value in a file has to be.
enum class Kind : quint8 {
    Text,
    Integer, ///< of 32 bits
    Unsigned, ///< an integer of 32 bits, not negative
    Number,
    Flag, ///< 0 or 1
    Time ///< a date and time of ISO 8601
};

/// How a value is shown.
enum class Form : quint8 {
    Plain, ///< as it is stored, in its unit
    Percent, ///< -1 was not measured
    Force, ///< g, shown in kg; -1 was not measured
    Seconds, ///< -1 did not happen
    PerMinute, ///< -1 is not known
    YesNo,
    Names, ///< separated by commas
    Clock, ///< session time in ms
    Date,
    Timestamp, ///< s since 1970; 0 is not known
    Advice,
    Protocol,
    Manikin,
    Stiffness,
    AedEvent,
    AedType,
    Rhythm,
    Pulse,
    Shockable,
    Button, ///< of the remote control
    Internal ///< a number that says nothing to people
};

/// An enumeration whose numbers are values of a parameter.
struct Enumeration {
    bool (*has)(int value); ///< whether the number stands for an enumerator
    bool isManikins; ///< the manikin's number is stored as it came; a newer one may know more
};

/// A parameter.
struct Parameter {
    CPREventBase::ParameterType type; ///< its number is that of the row
    std::optional<CPREventBase::ParameterUnit> unit; ///< none where it is missing, too
    Kind kind; ///< in events that have no property for the parameter
    Form form; ///< how tables and pages show it
    const char *label; ///< in English
    const Enumeration *enumeration = nullptr; ///< null unless the value is one of an enumeration
    bool isStored = true; ///< whether files hold it
};

/// A kind of event.
struct EventKind {
    CPREventBase::EventType type; ///< its number is that of the row
    /// Makes an event of the kind, of its own class, that starts at \a msecs and belongs to
    /// \a owner. Null for the standing events: a list has them from the start.
    CPREventBase *(*make)(CPREventBase::EventType type, int msecs, CPREvents *owner);
    const char *label; ///< in English
    /// The class that keeps measurements of such an event in properties; null when all that it
    /// holds are parameters.
    const QMetaObject *measuring = nullptr;
    /// The parameters that are the first properties of that class, in their order, which is that of
    /// files, too.
    std::initializer_list<CPREventBase::ParameterType> measurements = {};
    bool storesEnd = false; ///< whether files hold the end, as the parameter endTime
};

/// The number of parameters; their types are the numbers below it.
CPRDATA_EXPORT int parameterCount();
/// The row of a parameter, in static memory; null for a value outside the enumeration.
CPRDATA_EXPORT const Parameter *parameter(CPREventBase::ParameterType type);
/// The unit in which tables and pages show a parameter: that of files, but mm for hundredths of a
/// millimetre, and percent or cpm where the form says so and files have none. None for a timestamp,
/// which is shown as a date, and for a value outside the enumeration.
CPRDATA_EXPORT CPREventBase::ParameterUnit shownUnit(CPREventBase::ParameterType type);
/// The label that a parameter has in events of a kind.
CPRDATA_EXPORT const char *label(CPREventBase::ParameterType type, CPREventBase::EventType kind);
/// The row of a kind of event, in static memory; null for a value outside the enumeration.
CPRDATA_EXPORT const EventKind *eventKind(CPREventBase::EventType type);

} // namespace Vocabulary

#endif
