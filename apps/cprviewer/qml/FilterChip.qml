// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import "."

// Switches one kind of rows on or off. A tick shows it without colour.
AbstractButton {
    id: chip

    property int tags: 0

    checkable: true
    focusPolicy: Qt.StrongFocus
    implicitHeight: Math.round(30 * Look.unit)
    leftPadding: Look.gap * 0.8
    rightPadding: Look.gap * 0.8
    Accessible.role: Accessible.CheckBox
    Accessible.name: chip.text
    Accessible.checked: chip.checked
    Keys.onReturnPressed: chip.toggle()

    contentItem: PlainText {
        text: chip.checked ? "✓ " + chip.text : chip.text
        font.pixelSize: Look.small
        color: chip.checked ? Look.accentText : Look.text
        verticalAlignment: Text.AlignVCenter
        horizontalAlignment: Text.AlignHCenter
    }
    background: Rectangle {
        radius: height / 2
        color: chip.checked ? Look.accent : chip.hovered ? Look.controlHover : Look.control
        border { color: Look.outline; width: chip.checked ? 0 : 1 }

        FocusFrame { visible: chip.visualFocus; radius: height / 2 }
    }
}
