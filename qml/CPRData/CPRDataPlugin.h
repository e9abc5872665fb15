// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef CPRDATAPLUGIN_H
#define CPRDATAPLUGIN_H

#include <QQmlEngineExtensionPlugin>

/// Brings the types of libs/cprquick and of the library to any program that imports CPRData.
class CPRDataPlugin final : public QQmlEngineExtensionPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlEngineExtensionInterface_iid)

public:
    explicit CPRDataPlugin(QObject *parent = nullptr);
};

#endif
