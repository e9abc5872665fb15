// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "ViewerTypes.h"

#include <cprquick/QuickTypes.h>

#include <QQuickStyle>

// Generated from the headers of this directory.
void qml_register_types_CPRViewer();

// The macro has to be used outside of any function's namespace.
static void initResources()
{
    Q_INIT_RESOURCE(cprviewer);
    Q_INIT_RESOURCE(cprviewer_translations);
}

void useViewerTypes()
{
    // Qt 6 has another name for it.
    constexpr auto plainStyle = QT_VERSION_MAJOR < 6 ? "Default" : "Basic";
    // In a static library neither registers itself.
    static const bool isRegistered = [] {
        initResources();
        cprquick::useTypes();
        qml_register_types_CPRViewer();
        QQuickStyle::setStyle(QLatin1String(plainStyle));
        return true;
    }();
    Q_UNUSED(isRegistered)
}
