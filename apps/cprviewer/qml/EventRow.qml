// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// One event in the list: when, what, how it was done.
Item {
    id: row

    required property int index
    required property string startText
    required property string typeName
    required property string detail
    required property string faultText
    required property var correct
    property bool isChosen: false
    signal picked(int index)

    height: Look.rowHeight
    Accessible.role: Accessible.ListItem
    Accessible.name: [row.startText, row.typeName, row.detail, row.correct === true ? qsTr("right") : row.faultText].filter(part => part.length > 0).join(", ")
    Accessible.selected: row.isChosen
    Accessible.onPressAction: row.picked(row.index)

    Rectangle {
        anchors.fill: parent
        color: row.isChosen ? Look.chosen : "transparent"
        border.color: Look.accent
        border.width: row.isChosen && row.ListView.view.activeFocus ? 2 : 0

        Rectangle { visible: row.isChosen; width: Math.round(4 * Look.unit); height: parent.height; color: Look.accent }
    }
    PageText {
        id: time
        anchors { left: parent.left; leftMargin: Look.gap; verticalCenter: parent.verticalCenter }
        width: Math.round(62 * Look.unit)
        text: row.startText
        fontSizeMode: Text.HorizontalFit // of hours
        minimumPixelSize: Math.round(9 * Look.unit)
        horizontalAlignment: Text.AlignRight
        color: Look.muted
        Accessible.ignored: true
    }
    PageText {
        id: symbol
        anchors { left: time.right; leftMargin: Look.gap / 2; verticalCenter: parent.verticalCenter }
        width: Math.round(22 * Look.unit)
        horizontalAlignment: Text.AlignHCenter
        text: row.correct === undefined ? "•" : row.correct ? "✓" : "✗"
        color: row.correct === undefined ? Look.muted : row.correct ? Look.good : Look.fault
        font.bold: true
        Accessible.ignored: true
    }
    Column {
        anchors { left: symbol.right; leftMargin: Look.gap / 2; right: parent.right; rightMargin: Look.gap; verticalCenter: parent.verticalCenter }

        PageText {
            width: parent.width
            text: row.detail.length > 0 ? row.typeName + "   " + row.detail : row.typeName
            Accessible.ignored: true
        }
        PageText {
            visible: row.faultText.length > 0
            width: parent.width
            text: row.faultText
            color: Look.fault
            font.pixelSize: Look.small
            Accessible.ignored: true
        }
    }
    MouseArea {
        anchors.fill: parent
        onClicked: row.picked(row.index)
    }
}
