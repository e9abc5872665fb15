// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A row of a RowList: what is in it lies beside each other.
Item {
    id: row

    property bool isChosen: false
    property string spoken: ""
    default property alias content: cells.data
    signal picked()
    signal accepted()

    height: Look.rowHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: row.spoken
    Accessible.selected: row.isChosen
    Accessible.onPressAction: row.picked()

    Rectangle {
        anchors.fill: parent
        color: row.isChosen ? Look.chosen : "transparent"
    }
    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: 1
        color: Look.frame
    }
    MouseArea {
        anchors.fill: parent
        onClicked: row.picked()
        onDoubleClicked: row.accepted()
    }
    Row {
        id: cells
        anchors { fill: parent; leftMargin: Look.gap; rightMargin: Look.gap }
        spacing: Look.gap
    }
}
