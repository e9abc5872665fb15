// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef NUMBERTEXT_H
#define NUMBERTEXT_H

#include <QString>

/// Numbers as files hold them: what QString and QVariant make of them, without their cost for the
/// plain ones, of which an hour of training has a hundred thousand.
namespace NumberText {

/// As QString::toInt().
bool toInt(QStringView text, int &value);
/// As QString::toFloat().
bool toFloat(QStringView text, float &value);
/// As QVariant::toString().
QString fromFloat(float value);

} // namespace NumberText

#endif
