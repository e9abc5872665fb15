// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// How fast the chest is pressed.
LivePanel {
    id: panel

    required property LiveFigures figures
    readonly property bool hasRate: panel.figures.rate > 0

    title: qsTr("Rate")
    corner: panel.figures.rateMax > 0
            ? qsTr("Target %1–%2").arg(panel.figures.rateMin).arg(panel.figures.rateMax) : ""
    spoken: panel.hasRate ? qsTr("%1 per minute, %2").arg(panel.figures.rate).arg(verdict.words)
                          : qsTr("not known")

    DialItem {
        id: dial
        anchors { horizontalCenter: parent.horizontalCenter; top: parent.top }
        width: Math.min(parent.width, (parent.height - verdict.height) * 1.1)
        height: width
        dark: Look.dark
        value: panel.figures.rate
        hasValue: panel.hasRate
        from: 40
        to: 180
        bandFrom: panel.figures.rateMin
        bandTo: panel.figures.rateMax
    }
    Rectangle {
        anchors.centerIn: dial
        width: dial.width * 0.6
        height: width
        radius: width / 2
        color: Look.card

        BigFigure {
            anchors.centerIn: parent
            number: panel.hasRate ? panel.figures.rate.toString() : "–"
            size: Math.min(96 * Look.unit, parent.width * 0.54)
        }
    }
    PageText {
        anchors { horizontalCenter: dial.horizontalCenter; bottom: dial.bottom; bottomMargin: dial.height * 0.1 }
        text: qsTr("per min")
        color: Look.muted
        font.pixelSize: Math.round(22 * Look.unit)
    }
    Verdict {
        id: verdict
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        size: 32 * Look.unit
        kind: panel.figures.rateSide
        words: ["–", qsTr("Too slow"), qsTr("Right rate"), qsTr("Too fast")][verdict.kind]
    }
}
