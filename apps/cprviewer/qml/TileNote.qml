// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A small fact in a tile, with what it is above it.
Item {
    id: note

    property real unit: 1
    property string title: ""
    property alias text: value.text
    property bool isFault: false
    property bool isOutdated: false

    implicitHeight: titleText.height + value.height

    PlainText {
        id: titleText
        width: note.width - 4
        text: note.title
        color: Look.muted
        font.pixelSize: Math.round(11 * note.unit)
        elide: Text.ElideRight
    }
    PlainText {
        id: value
        anchors.top: titleText.bottom
        width: note.width - 4
        height: Math.round(21 * note.unit)
        color: note.isFault ? Look.fault : note.isOutdated ? Look.muted : Look.text
        font { pixelSize: Math.round(16 * note.unit); bold: true }
        verticalAlignment: Text.AlignVCenter
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Math.max(9, Math.round(9 * note.unit))
        elide: Text.ElideRight
    }
}
