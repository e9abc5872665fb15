// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "cprquick/QuickTypes.h"

#include <QtGlobal>

// Generated from the headers of this directory.
void qml_register_types_CPRData();

namespace cprquick {

void useTypes()
{
    // The generated code registers itself when the library is loaded. A reference makes the linker
    // load it.
    volatile auto registration = &qml_register_types_CPRData;
    Q_UNUSED(registration)
}

} // namespace cprquick
