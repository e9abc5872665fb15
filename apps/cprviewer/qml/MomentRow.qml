// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import CPRData 1.0
import "."

// One of the worst moments: when, what, and how it looked.
AbstractButton {
    id: row

    required property int start
    required property int end
    required property string title
    required property bool isOfVentilations
    property CPRData session: null
    // With what was done around it.
    readonly property int margin: Math.max(2000, (row.end - row.start) / 10)
    signal picked(int from, int to)

    implicitHeight: Math.round(92 * Look.unit)
    focusPolicy: Qt.StrongFocus
    Accessible.name: Words.time(row.start) + ", " + row.title
    Keys.onReturnPressed: row.clicked()
    onClicked: row.picked(row.start, row.end)

    contentItem: Item {
        PageText {
            id: titleText
            width: parent.width
            text: Words.time(row.start) + "   " + row.title
        }
        TimelineItem {
            anchors { left: parent.left; right: parent.right; top: titleText.bottom; bottom: parent.bottom }
            session: row.session
            from: Math.max(0, row.start - row.margin)
            to: row.end + row.margin
            parts: row.isOfVentilations ? TimelineItem.Volume : TimelineItem.Depth
            dark: Look.dark
            textSize: Math.round(11 * Look.unit)
        }
    }
    background: Rectangle {
        color: row.hovered ? Look.controlHover : "transparent"
        radius: Look.radius / 2

        FocusFrame { visible: row.visualFocus }
    }
}
