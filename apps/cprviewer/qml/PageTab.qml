// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import "."

// One of several views of which one is shown.
TabButton {
    id: tab

    property real inset: Look.padding

    implicitHeight: Look.controlHeight
    implicitWidth: label.implicitWidth + 2 * tab.inset
    width: implicitWidth
    font.pixelSize: Look.normal
    focusPolicy: Qt.StrongFocus
    Accessible.name: tab.text

    contentItem: PlainText {
        id: label
        text: tab.text
        font.pixelSize: tab.font.pixelSize
        font.bold: tab.checked
        color: tab.checked ? Look.text : Look.muted
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
    }
    background: Item {
        Rectangle {
            anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
            height: Math.round(3 * Look.unit)
            radius: height / 2
            color: Look.accent
            visible: tab.checked
        }
        // The arrow keys move the focus without saying so.
        FocusFrame { visible: tab.activeFocus && (tab.visualFocus || !tab.hovered); anchors.margins: 2 }
    }
}
