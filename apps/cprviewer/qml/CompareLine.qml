// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A name, a cell for each of two sessions, and how they differ.
Item {
    id: line

    property string title: ""
    property string value: ""
    property string other: ""
    property string difference: ""
    property string verdict: "" // with a symbol
    property color tone: Look.muted
    property bool isHead: false
    property var spoken: [] // how they differ, for screen readers
    readonly property real columnWidth: Math.round(line.width * 0.22)
    readonly property real lastWidth: Math.round(line.width * 0.24)

    Accessible.role: line.isHead ? Accessible.NoRole : Accessible.Row
    Accessible.name: qsTr("%1: A %2, B %3").arg(line.title).arg(line.value || qsTr("not known")).arg(line.other || qsTr("not known"))
                     + line.spoken.filter(text => text.length > 0).map(text => ", " + text).join("")
    implicitHeight: Math.max(nameCell.implicitHeight, valueCell.implicitHeight, otherCell.implicitHeight, last.implicitHeight) + Look.gap / 2

    component Cell: PageText {
        width: line.columnWidth
        leftPadding: Look.gap / 2
        font.pixelSize: Look.small
        font.bold: line.isHead
        horizontalAlignment: Text.AlignRight
        wrapMode: Text.WordWrap
        Accessible.ignored: true
    }

    Rectangle { width: parent.width; height: 1; color: Look.frame; visible: !line.isHead }
    Cell {
        id: nameCell
        anchors.verticalCenter: parent.verticalCenter
        width: line.width - 2 * line.columnWidth - line.lastWidth
        horizontalAlignment: Text.AlignLeft
        text: line.title
        color: Look.muted
    }
    Cell { id: valueCell; anchors { left: nameCell.right; verticalCenter: parent.verticalCenter } text: line.value }
    Cell { id: otherCell; anchors { left: valueCell.right; verticalCenter: parent.verticalCenter } text: line.other }
    Column {
        id: last
        anchors { left: otherCell.right; verticalCenter: parent.verticalCenter }

        Cell { width: line.lastWidth; text: line.difference; visible: text.length > 0 }
        Cell { width: line.lastWidth; text: line.verdict; visible: text.length > 0; color: line.tone }
    }
}
