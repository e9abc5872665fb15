// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import "."

// A line to type in.
TextField {
    id: field

    property bool isWrong: false

    implicitHeight: Look.controlHeight
    font.pixelSize: Look.normal
    color: Look.text
    selectionColor: Look.accent
    selectedTextColor: Look.accentText
    placeholderTextColor: Look.muted
    selectByMouse: true
    maximumLength: 300
    Accessible.name: field.placeholderText
    background: Rectangle {
        radius: Look.radius * 0.75
        color: Look.page
        border.color: field.isWrong ? Look.fault : field.activeFocus ? Look.accent : Look.frame
        border.width: field.activeFocus || field.isWrong ? 2 : 1
    }
}
