// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A column that is filled to a value, with a target band and its limits beside it.
Item {
    id: gauge

    property real value: 0
    property real to: 100
    property real bandFrom: 0
    property real bandTo: 0
    property real marker: -1 // where the last stroke ended; none below 0
    property real limit: 0 // a line of its own; none at 0
    property bool fromTop: false // a depth grows downwards
    property real textSize: Look.title
    property real unit: Look.unit // of lines and marks
    readonly property bool hasBand: gauge.bandTo > gauge.bandFrom

    function position(number) {
        const share = Math.max(0, Math.min(1, number / gauge.to));
        return Math.round(track.height * (gauge.fromTop ? share : 1 - share));
    }

    Rectangle {
        id: track
        width: Math.round(parent.width * 0.46)
        height: parent.height
        radius: Look.radius / 2
        color: Look.colors.grid
        clip: true

        Rectangle {
            width: parent.width
            y: gauge.fromTop ? 0 : gauge.position(gauge.value)
            height: gauge.fromTop ? gauge.position(gauge.value) : parent.height - y
            color: Look.colors.bars
        }
        Rectangle {
            visible: gauge.hasBand
            width: parent.width
            y: Math.min(gauge.position(gauge.bandFrom), gauge.position(gauge.bandTo))
            height: Math.abs(gauge.position(gauge.bandTo) - gauge.position(gauge.bandFrom))
            color: "transparent"
            border { color: Look.card; width: 2 } // keeps the edges apart from what fills the column

            Rectangle {
                anchors { fill: parent; margins: 2 }
                color: Look.colors.band
                border { color: Look.good; width: Math.max(2, Math.round(3 * gauge.unit)) }
            }
        }
        Rectangle {
            visible: gauge.limit > 0
            width: parent.width
            y: gauge.position(gauge.limit)
            height: Math.max(2, Math.round(2 * gauge.unit))
            color: Look.text
        }
    }
    Repeater {
        model: gauge.hasBand ? [gauge.bandFrom, gauge.bandTo] : []
        delegate: PageText {
            id: bandLabel
            required property real modelData
            readonly property real middle: (gauge.position(gauge.bandFrom) + gauge.position(gauge.bandTo)) / 2
            readonly property real fromMiddle: gauge.position(bandLabel.modelData) - bandLabel.middle
            // A narrow band in a short column: one above the other, all the same.
            readonly property real distance: Math.sign(bandLabel.fromMiddle) * Math.max(Math.abs(bandLabel.fromMiddle), gauge.textSize / 2)
            x: track.width + Math.round(26 * gauge.unit)
            y: Math.round(Math.max(0, Math.min(gauge.height - height, bandLabel.middle + bandLabel.distance - height / 2)))
            text: bandLabel.modelData.toFixed(0)
            font.pixelSize: gauge.textSize
            font.bold: true
        }
    }
    PlainText {
        visible: gauge.marker >= 0
        x: track.width + Math.round(2 * gauge.unit)
        y: gauge.position(gauge.marker) - height / 2
        text: "◀"
        color: Look.text
        font.pixelSize: gauge.textSize
    }
}
