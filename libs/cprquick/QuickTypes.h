// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRQUICK_QUICKTYPES_H
#define CPRQUICK_QUICKTYPES_H

#include "cprquick_export.h"

namespace cprquick {

/// Ties the types of the QML module CPRData 1.0 to the caller. A program that calls it may import
/// the module without the plugin; the plugin itself does nothing else. May be called any number of
/// times. The module has the library's classes: registerCPRDataTypes() is not needed besides.
CPRQUICK_EXPORT void useTypes();

} // namespace cprquick

#endif
