// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// Whose session it is, and the letter and the line by which it goes.
Item {
    id: head

    property alias session: summary.session
    property string letter: ""
    property bool isOther: false // drawn lighter and dashed
    property string problem: "" // of its file

    implicitHeight: column.implicitHeight

    SessionSummary { id: summary }

    Rectangle {
        id: badge
        width: Math.round(30 * Look.textUnit)
        height: width
        radius: Look.radius / 2
        color: head.isOther ? "transparent" : Look.colors.curve
        border { color: head.isOther ? Look.colors.otherCurve : Look.colors.curve; width: 2 }

        PageText {
            anchors.centerIn: parent
            text: head.letter
            font.bold: true
            color: head.isOther ? Look.text : Look.card
            Accessible.ignored: true
        }
    }
    Row {
        anchors { top: badge.bottom; topMargin: Look.gap / 3; horizontalCenter: badge.horizontalCenter }
        spacing: head.isOther ? Math.round(badge.width / 8) : 0

        Repeater {
            model: head.isOther ? 3 : 1
            delegate: Rectangle {
                width: head.isOther ? Math.round(badge.width / 4) : badge.width
                height: Math.max(2, Math.round(2 * Look.unit))
                color: head.isOther ? Look.colors.otherCurve : Look.colors.curve
            }
        }
    }
    Column {
        id: column
        anchors { left: badge.right; leftMargin: Look.gap; right: parent.right }

        NameList {
            objectName: "learners" + head.letter
            width: parent.width
            names: summary.learners
            font.pixelSize: Look.title
            font.bold: true
            horizontalAlignment: Text.AlignLeft
            Accessible.name: head.letter + ": " + (Words.shown(names.join(", ")) || text)
        }
        PageText {
            width: parent.width
            color: Look.muted
            font.pixelSize: Look.small
            wrapMode: Text.WordWrap
            maximumLineCount: 2
            text: [isNaN(summary.start.getTime()) ? qsTr("Date not known") : Words.value("startTime", summary.start),
                   Words.time(summary.length * 1000), summary.protocolText, summary.guidelines].filter(part => part.length > 0).join("  ·  ")
        }
        PageText {
            objectName: "problem" + head.letter
            visible: text.length > 0
            width: parent.width
            text: head.problem
            color: Look.fault
            font.pixelSize: Look.small
        }
    }
}
