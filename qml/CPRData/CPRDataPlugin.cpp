// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "CPRDataPlugin.h"

#include <cprquick/QuickTypes.h>

CPRDataPlugin::CPRDataPlugin(QObject *parent) : QQmlEngineExtensionPlugin(parent)
{
    cprquick::useTypes();
}
