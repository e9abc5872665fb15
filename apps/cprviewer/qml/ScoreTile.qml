// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A score in percent, with a bar, what is asked for, and whether it passes.
Item {
    id: tile

    property string title: ""
    property int percent: -1
    property int least: 0
    property int advanced: 0 // what more is asked for; 0 for nothing
    property string verdict: "" // whether it passes, and why
    property bool isMain: false

    implicitHeight: Math.round(90 * Look.unit)
    implicitWidth: Math.max(Math.round(104 * Look.unit), caption.implicitWidth, verdictText.implicitWidth)
    Accessible.role: Accessible.Indicator
    Accessible.name: [tile.title + ": " + number.text, tile.verdict].filter(part => part.length > 0).join(", ")

    PageText {
        id: caption
        width: parent.width
        text: tile.title
        color: Look.muted
        font.pixelSize: Look.small
        Accessible.ignored: true
    }
    PageText {
        id: number
        anchors { top: caption.bottom }
        width: parent.width
        fontSizeMode: Text.HorizontalFit
        text: tile.percent < 0 ? qsTr("not known") : qsTr("%1 %").arg(tile.percent)
        font.pixelSize: tile.percent < 0 ? Look.title
                        : Math.round((tile.isMain ? 36 : 30) * Look.unit)
        font.bold: true
        height: Math.round(46 * Look.unit)
        Accessible.ignored: true
    }
    Rectangle {
        id: bar
        anchors { top: number.bottom; topMargin: Look.gap / 3 }
        width: parent.width
        height: Math.round(6 * Look.unit)
        radius: height / 2
        color: Look.colors.grid

        Rectangle {
            width: parent.width * Math.max(0, Math.min(100, tile.percent)) / 100
            height: parent.height
            radius: parent.radius
            color: Look.colors.bars
        }
        Repeater {
            model: [tile.least, tile.advanced].filter(threshold => threshold > 0)
            delegate: Rectangle {
                required property int modelData

                x: bar.width * modelData / 100
                y: -2
                width: 2
                height: bar.height + 4
                color: Look.text
            }
        }
    }
    PageText {
        id: verdictText
        anchors { top: bar.bottom; topMargin: Look.gap / 3 }
        text: tile.verdict
        font.pixelSize: Math.round(12 * Look.unit)
        Accessible.ignored: true
    }
}
