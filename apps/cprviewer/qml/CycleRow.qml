// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// One cycle: when, how many were right, and what was wrong.
Item {
    id: row

    required property int index
    required property int start
    required property int compressions
    required property int rightCompressions
    required property int ventilations
    required property bool isMiscounted
    required property string faultText
    property bool hasCycles: true
    property bool isChosen: false
    signal picked(int index)

    readonly property string numbers: qsTr("%1 of %2 right").arg(row.rightCompressions).arg(row.compressions)
    readonly property string breaths: !row.hasCycles ? "" : qsTr("%n breath(s)", "", row.ventilations)
    readonly property string wrong: [row.isMiscounted ? qsTr("Wrong number") : "", row.faultText].filter(part => part.length > 0).join(", ")
    readonly property bool isFault: row.wrong.length > 0

    height: Math.max(Math.round(32 * Look.textUnit), texts.height + Look.gap / 2)
    Accessible.role: Accessible.ListItem
    Accessible.name: [(row.index + 1).toString(), Words.time(row.start), row.numbers, row.breaths, row.wrong].filter(part => part.length > 0).join(", ")
    Accessible.selected: row.isChosen
    Accessible.onPressAction: row.picked(row.index)

    Rectangle {
        anchors.fill: parent
        color: row.isChosen ? Look.chosen : "transparent"
    }
    PageText {
        id: number
        anchors { left: parent.left; top: texts.top }
        width: Math.round(26 * Look.textUnit)
        horizontalAlignment: Text.AlignRight
        text: (row.index + 1).toString()
        color: Look.muted
        Accessible.ignored: true
    }
    PageText {
        id: time
        anchors { left: number.right; leftMargin: Look.gap / 2; top: texts.top }
        width: Math.round(46 * Look.textUnit)
        horizontalAlignment: Text.AlignRight
        fontSizeMode: Text.HorizontalFit // of hours
        minimumPixelSize: Math.round(9 * Look.unit)
        text: Words.time(row.start)
        color: Look.muted
        Accessible.ignored: true
    }
    PlainText {
        id: symbol
        anchors { left: time.right; leftMargin: Look.gap / 2; top: texts.top }
        width: Math.round(18 * Look.textUnit)
        text: row.isFault ? "✗" : "✓"
        color: row.isFault ? Look.fault : Look.good
        font { pixelSize: Look.normal; bold: true }
        Accessible.ignored: true
    }
    Column {
        id: texts
        anchors { left: symbol.right; leftMargin: Look.gap / 2; right: parent.right; verticalCenter: parent.verticalCenter }

        PageText {
            width: parent.width
            text: row.hasCycles ? row.numbers + " · " + row.breaths : row.numbers
            Accessible.ignored: true
        }
        PageText {
            visible: row.isFault
            width: parent.width
            wrapMode: Text.WordWrap
            text: row.wrong
            color: row.isChosen ? Look.text : Look.fault // has too little contrast there
            font.pixelSize: Look.small
            Accessible.ignored: true
        }
    }
    MouseArea {
        anchors.fill: parent
        onClicked: row.picked(row.index)
    }
}
