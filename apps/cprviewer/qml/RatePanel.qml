// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// How fast the chest is pressed, or how often air is given.
LivePanel {
    id: panel

    required property LiveFigures figures
    property bool isOfVentilations: false
    readonly property int rate: panel.isOfVentilations ? panel.figures.ventilationRate : panel.figures.rate
    readonly property int rateMin: panel.isOfVentilations ? panel.figures.ventilationRateMin : panel.figures.rateMin
    readonly property int rateMax: panel.isOfVentilations ? panel.figures.ventilationRateMax : panel.figures.rateMax
    readonly property bool hasRate: panel.rate > 0

    title: panel.isOfVentilations ? qsTr("Ventilation rate") : qsTr("Rate")
    corner: panel.rateMax > 0 ? qsTr("Target %1–%2").arg(panel.rateMin).arg(panel.rateMax) : ""
    spoken: panel.hasRate ? qsTr("%1 per minute, %2").arg(panel.rate).arg(verdict.words)
                          : qsTr("not known")

    DialItem {
        id: dial
        anchors { horizontalCenter: parent.horizontalCenter; top: parent.top }
        width: Math.min(parent.width, (parent.height - verdict.height) * 1.1)
        height: width
        dark: Look.dark
        value: panel.rate
        hasValue: panel.hasRate
        from: panel.isOfVentilations ? 0 : 40
        to: panel.isOfVentilations ? 30 : 180
        bandFrom: panel.rateMin
        bandTo: panel.rateMax
    }
    Rectangle {
        anchors.centerIn: dial
        width: dial.width * 0.6
        height: width
        radius: width / 2
        color: Look.card

        BigFigure {
            anchors.centerIn: parent
            number: panel.hasRate ? panel.rate.toString() : "–"
            isOutdated: panel.isOutdated
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
        isOutdated: panel.isOutdated
        kind: panel.isOfVentilations ? panel.figures.ventilationRateSide : panel.figures.rateSide
        words: ["–", qsTr("Too slow"), qsTr("Right rate"), qsTr("Too fast")][verdict.kind]
    }
}
