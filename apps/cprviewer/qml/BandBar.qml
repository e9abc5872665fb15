// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A line that is filled to a value, with a target band and a mark.
Item {
    id: bar

    property real value: 0
    property real to: 100
    property real bandFrom: 0
    property real bandTo: 0
    property real marker: -1 // none below 0
    property real unit: Look.unit // of the mark

    implicitHeight: Math.round(12 * Look.unit)

    function position(number) { return Math.round(bar.width * Math.max(0, Math.min(1, number / bar.to))); }

    Rectangle {
        anchors.fill: parent
        radius: height / 4
        color: Look.colors.grid
    }
    Rectangle {
        width: bar.position(bar.value)
        height: parent.height
        radius: height / 4
        color: Look.colors.bars
    }
    Rectangle {
        visible: bar.bandTo > bar.bandFrom
        x: bar.position(bar.bandFrom)
        width: bar.position(bar.bandTo) - x
        height: parent.height
        color: Look.colors.band
        border { color: Look.good; width: 2 }
    }
    Rectangle {
        visible: bar.marker >= 0
        x: Math.round(bar.position(bar.marker) - width / 2)
        y: -Math.round(3 * bar.unit)
        width: Math.max(3, Math.round(3 * bar.unit))
        height: parent.height - 2 * y
        color: Look.text
    }
}
