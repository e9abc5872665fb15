// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import "."

// One of a few.
ComboBox {
    id: choice

    property string name: ""

    implicitHeight: Look.controlHeight
    font.pixelSize: Look.normal
    Accessible.name: choice.name + ": " + choice.displayText
    Keys.onReturnPressed: choice.popup.open()

    contentItem: PlainText {
        leftPadding: Look.gap
        text: choice.displayText
        font: choice.font
        color: Look.text
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    background: Rectangle {
        radius: Look.radius * 0.75
        color: choice.hovered ? Look.controlHover : Look.control

        FocusFrame { visible: choice.visualFocus }
    }
    delegate: ItemDelegate {
        id: item

        required property int index
        required property var modelData

        width: choice.width
        height: Look.controlHeight
        highlighted: choice.highlightedIndex === item.index
        Accessible.name: item.modelData
        contentItem: PlainText {
            text: item.modelData
            font: choice.font
            color: Look.text
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
        }
        background: Rectangle { color: item.highlighted ? Look.chosen : Look.card }
    }
}
