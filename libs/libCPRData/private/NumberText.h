// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef NUMBERTEXT_H
#define NUMBERTEXT_H

#include <QString>
#include <QVariant>

/// Numbers as files hold them: what QString and QVariant make of them, without their cost for the
/// plain ones, of which an hour of training has a hundred thousand.
namespace NumberText {

/// The text as an int, or else as a float, or else as it is.
QVariant toVariant(QStringView text);
/// As Qt 5's QString::number() in as few digits as tell the double from others. A float is taken
/// for a double, which gives it more digits than it needs. Qt 6 writes a few numbers otherwise:
/// 100000 as 1e+05.
QString fromReal(double value);
/// As QVariant::toString(), numbers as fromReal() writes them.
QString fromVariant(const QVariant &value);

} // namespace NumberText

#endif
