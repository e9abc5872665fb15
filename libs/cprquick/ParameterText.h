// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_PARAMETERTEXT_H
#define CPRQUICK_PARAMETERTEXT_H

#include "cprquick_export.h"

#include <CPREventBase.h>

#include <QString>
#include <QVariant>

namespace cprquick {

/// What the event model's kinds and parameters are called in front of people. The translations are
/// in the context "cprquick".

/// A kind of event.
CPRQUICK_EXPORT QString eventTypeText(CPREventBase::EventType type);
/// A parameter, without its unit.
CPRQUICK_EXPORT QString parameterText(CPREventBase::ParameterType type);
/// The unit in which parameterValueText() shows a parameter; empty for none. It need not be the
/// unit in which it is stored: hundredths of a mm are shown as mm, g as kg.
CPRQUICK_EXPORT QString parameterUnitText(CPREventBase::ParameterType type);
/// A parameter's value with its unit, enumerations and truth values in words. What was not measured
/// is said to be so. Empty for an invalid value.
CPRQUICK_EXPORT QString parameterValueText(CPREventBase::ParameterType type, const QVariant &value);
/// @{
/// The same for a parameter of \a event, as it is meant there.
CPRQUICK_EXPORT QString parameterTextIn(const CPREventBase &event,
                                        CPREventBase::ParameterType type);
CPRQUICK_EXPORT QString parameterValueTextIn(const CPREventBase &event,
                                             CPREventBase::ParameterType type,
                                             const QVariant &value);
/// @}

} // namespace cprquick

#endif
