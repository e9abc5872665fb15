// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRViewer 1.0
import "."

// How far a file is loaded. It can be given up; the window stays alive meanwhile.
AppDialog {
    id: dialog

    required property Viewer viewer

    title: qsTr("Loading %1").arg(dialog.viewer.loadedName)
    onClosed: if (dialog.viewer.isLoading) dialog.viewer.cancelLoading()
    firstItem: cancelButton

    // What is there at once needs no dialog that flashes up.
    property Timer delay: Timer {
        interval: 250
        running: dialog.viewer.isLoading
        onTriggered: dialog.open()
    }
    property Connections watcher: Connections {
        target: dialog.viewer
        function onIsLoadingChanged() {
            if (!dialog.viewer.isLoading)
                dialog.close();
        }
    }

    Rectangle {
        Layout.fillWidth: true
        Layout.preferredHeight: Math.round(10 * Look.unit)
        radius: height / 2
        color: Look.control
        // A screen reader looks for these names.
        readonly property real minimumValue: 0
        readonly property real maximumValue: 1
        readonly property real value: dialog.viewer.loadedShare

        Accessible.role: Accessible.ProgressBar
        Accessible.name: qsTr("%1 % loaded").arg(Math.round(100 * dialog.viewer.loadedShare))

        Rectangle {
            width: parent.width * dialog.viewer.loadedShare
            height: parent.height
            radius: parent.radius
            color: Look.accent
        }
    }
    buttons: [ActionButton { id: cancelButton; objectName: "cancelLoading"; text: qsTr("Cancel"); onClicked: dialog.close() }]
}
