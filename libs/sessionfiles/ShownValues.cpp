// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionfiles/ShownValues.h"

#include <CPRDataBase.h>
#include <Vocabulary.h>
#include <private/Units.h>

#include <QDateTime>
#include <QMetaEnum>

namespace sessionfiles {

using E = CPREventBase;
using Vocabulary::Form;
using Vocabulary::Kind;

QString unitText(E::ParameterUnit unit)
{
    return unit == E::none
        ? QString()
        : QString::fromLatin1(QMetaEnum::fromType<E::ParameterUnit>().valueToKey(unit));
}

namespace {

// A text that looks like a number comes back from an archive as one, and one that was a float, like
// a version, with the digits of a double.
QString textOf(const QVariant &value)
{
    constexpr int floatDigits = 7;
    const double number = value.toDouble();
    const bool isFloat = (value.userType() == QMetaType::Double && double(float(number)) == number)
        || value.userType() == QMetaType::Float;
    return isFloat ? QString::number(number, 'g', floatDigits)
                   : CPRDataBase::variantToString(value);
}

} // namespace

QVariant inShownUnit(E::ParameterType type, const QVariant &value)
{
    const Vocabulary::Parameter *row = Vocabulary::parameter(type);
    const bool isHmm = row && row->unit == E::hmm && value.isValid();
    return isHmm ? QVariant(Units::mmOf(value.toDouble())) : value;
}

QVariant shownValue(E::ParameterType type, const QVariant &value)
{
    const QVariant null = QVariant::fromValue(nullptr);
    const Vocabulary::Parameter *row = Vocabulary::parameter(type);
    if (!row || !value.isValid())
        return value;
    const bool hasNone = row->form == Form::Percent || row->form == Form::Force
        || row->form == Form::Seconds || row->form == Form::PerMinute;
    if (hasNone && value.toDouble() < 0)
        return null;
    if (row->form == Form::Timestamp) {
        const qint64 secs = value.toLongLong();
        return secs > 0
            ? QVariant(QDateTime::fromSecsSinceEpoch(secs, Qt::UTC).toString(Qt::ISODate))
            : null;
    }
    if (row->kind == Kind::Text || row->kind == Kind::Time) {
        const QString text = textOf(value);
        return text.isEmpty() ? null : text;
    }
    if (row->form == Form::YesNo && !row->enumeration)
        return value.toInt() != 0;
    return inShownUnit(type, value);
}

ShownGuideline shownGuideline(const QString &name, const QVariant &value)
{
    const CPRDataBase::ParameterUnit unit =
        CPRDataBase::parameterUnit.value(name, CPRDataBase::none);
    // The library's table of units, which stays as it is, calls forces hmm and lacks percentages.
    if (unit == CPRDataBase::hmm && name.endsWith(QLatin1String("Force")))
        return {value, unitText(E::g)};
    if (unit == CPRDataBase::hmm)
        return {Units::mmOf(value.toDouble()), unitText(E::mm)};
    if (name.contains(QLatin1String("Percentage")))
        return {value, unitText(E::percent)};
    return {value, unitText(static_cast<E::ParameterUnit>(unit))};
}

} // namespace sessionfiles
