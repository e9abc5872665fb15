// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef SESSIONFILES_SHOWNVALUES_H
#define SESSIONFILES_SHOWNVALUES_H

#include <CPREventBase.h>

#include <QString>
#include <QVariant>

namespace sessionfiles {

/// The text of a unit in tables; empty for none.
QString unitText(CPREventBase::ParameterUnit unit);
/// A value of the parameter in Vocabulary::shownUnit().
QVariant inShownUnit(CPREventBase::ParameterType type, const QVariant &value);
/// The same, of the type that the parameter has for people: texts, numbers, truth values and times
/// of ISO 8601. Null for what was not measured or has no text.
QVariant shownValue(CPREventBase::ParameterType type, const QVariant &value);

/// A value of a guideline set, in mm where the set has hundredths of them.
struct ShownGuideline {
    QVariant value; ///< mm, or as the set has it
    QString unit; ///< empty when there is none
};
/// \a value of the property \a name of CPRGuidelines.
ShownGuideline shownGuideline(const QString &name, const QVariant &value);

} // namespace sessionfiles

#endif
