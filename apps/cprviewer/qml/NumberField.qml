// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import "."

// A whole number, typed or stepped.
SpinBox {
    id: field

    property string name: ""
    property string zeroText: "" // what 0 is called, if it is no number there

    editable: true
    implicitHeight: Look.controlHeight
    implicitWidth: Math.round(84 + 76 * Look.textUnit)
    font.pixelSize: Look.normal
    textFromValue: (value, locale) => value === 0 && field.zeroText.length > 0 ? field.zeroText : String(value)
    valueFromText: (text, locale) => parseInt(text) || 0
    Accessible.name: field.name
    background: Rectangle { color: Look.card }
    // The frame lies over the steps at both ends, which have none.
    Rectangle {
        anchors.fill: parent
        z: 1
        color: "transparent"
        border.color: Look.outline
        radius: 2

        FocusFrame { visible: field.activeFocus }
    }
    contentItem: TextInput {
        id: input
        text: field.displayText
        font: field.font
        color: Look.text
        selectionColor: Look.accent
        selectedTextColor: Look.accentText
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        selectByMouse: true
        validator: field.validator
        inputMethodHints: Qt.ImhDigitsOnly
        Accessible.name: field.name
        // No digit can be typed beside a word: what is typed takes its place.
        onActiveFocusChanged: if (input.activeFocus) Qt.callLater(input.selectAll)
    }
}
