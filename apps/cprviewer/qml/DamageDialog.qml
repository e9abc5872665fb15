// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRViewer 1.0
import "."

// What became of the parts of a damaged file, and whether there may be more of them.
AppDialog {
    id: dialog

    required property Viewer viewer
    readonly property bool canSalvage: dialog.viewer.isDamaged && !dialog.viewer.isSalvaged
    signal salvageWanted()

    title: dialog.viewer.isSalvaged ? qsTr("This was salvaged") : qsTr("The file is damaged")
    text: dialog.viewer.report.join("\n") || qsTr("All of it is there.")
    width: Math.round(680 * Look.textUnit)
    firstItem: closeButton

    buttons: [
        ActionButton { id: closeButton; objectName: "closeReport"; text: qsTr("Close"); onClicked: dialog.close() },
        ActionButton {
            objectName: "salvage"
            visible: dialog.canSalvage
            text: qsTr("Salvage…")
            highlighted: true
            onClicked: {
                dialog.close();
                dialog.salvageWanted();
            }
        }
    ]
}
