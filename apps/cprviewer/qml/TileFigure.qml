// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// A measurement against its target, in a tile: number, on which side, and where in the band.
Item {
    id: figure

    property real unit: 1
    property string title: ""
    property string units: ""
    property real value: -1 // none below 0
    property string number: figure.value.toFixed(0)
    property real from: 0
    property real to: 0
    property int side: LiveFigures.Unknown
    property bool isOutdated: false
    readonly property real origin: Math.max(0, figure.from - 2 * (figure.to - figure.from)) // of the bar
    readonly property bool hasValue: figure.value > 0 || (figure.value === 0 && figure.units === "%")
    readonly property bool isWrong: !figure.isOutdated && (figure.side === LiveFigures.Below || figure.side === LiveFigures.Above)
    readonly property string sideText: ["", qsTr("too low"), qsTr("right"), qsTr("too high")][figure.side]
    readonly property string spoken: figure.hasValue ? figure.title + " " + figure.number + " " + figure.units + " " + figure.sideText : ""

    implicitHeight: numberText.height + bar.height + titleText.height

    PlainText {
        id: titleText
        text: figure.title + " " + (figure.to > figure.from ? figure.from.toFixed(0) + "–" + figure.to.toFixed(0) + " " : "") + figure.units
        color: Look.muted
        font.pixelSize: Math.round(12 * figure.unit)
    }
    PlainText {
        id: numberText
        anchors.top: titleText.bottom
        height: Math.round(36 * figure.unit)
        verticalAlignment: Text.AlignVCenter
        text: figure.hasValue ? figure.number : "–"
        color: figure.isOutdated ? Look.muted : Look.text
        font { pixelSize: Math.round(32 * figure.unit); bold: true }
    }
    PlainText {
        anchors { left: numberText.right; leftMargin: Math.round(6 * figure.unit); verticalCenter: numberText.verticalCenter }
        visible: figure.hasValue && !figure.isOutdated
        text: ["", "▼", "✓", "▲"][figure.side]
        color: figure.isWrong ? Look.fault : Look.good
        font { pixelSize: Math.round(22 * figure.unit); bold: true }
    }
    BandBar {
        id: bar
        anchors.top: numberText.bottom
        width: figure.width - Math.round(14 * figure.unit)
        height: Math.round(8 * figure.unit)
        value: figure.to > figure.from ? 0 : Math.max(0, figure.value)
        to: figure.to > figure.from ? 5 * (figure.to - figure.from) : 100
        bandFrom: figure.from - figure.origin
        bandTo: figure.to - figure.origin
        marker: figure.to > figure.from && figure.hasValue && !figure.isOutdated ? Math.max(0, figure.value - figure.origin) : -1
    }
}
