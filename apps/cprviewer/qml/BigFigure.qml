// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A number that is read from far away, with its unit.
Item {
    id: figure

    property string number: "–"
    property string unit: ""
    property real size: 64 * Look.unit
    property bool isOutdated: false

    implicitWidth: line.implicitWidth
    implicitHeight: numberText.implicitHeight * 0.86

    Row {
        id: line
        anchors.centerIn: parent
        scale: Math.min(1, figure.width / Math.max(1, line.width)) // what is longer is smaller
        spacing: Math.round(figure.size * 0.1)

        PlainText {
            id: numberText
            text: figure.number
            color: figure.isOutdated ? Look.muted : Look.text
            font.pixelSize: Math.round(figure.size)
            font.bold: true
        }
        PlainText {
            anchors.baseline: numberText.baseline
            text: figure.unit
            color: Look.muted
            font.pixelSize: Math.round(Math.max(figure.size * 0.3, 26 * Look.unit))
        }
    }
}
