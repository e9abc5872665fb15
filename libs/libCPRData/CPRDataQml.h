// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRDATAQML_H
#define CPRDATAQML_H

#include "cprdata_export.h"

/// Makes the library known to QML: after it, a document that imports \a uri can name the classes,
/// read their enumerations (CPREventBase.TagComp) and use every object that the host hands it.
/// None of the classes can be created in QML. To be called once, before the engine loads.
///
/// \a uri is not "CPRData": that is the QML module, which has these classes too, and Qt refuses a
/// module that a machine has installed when the program has registered types under its name.
CPRDATA_EXPORT void registerCPRDataTypes(const char *uri = "CPRDataTypes", int major = 1,
                                         int minor = 0);

#endif
