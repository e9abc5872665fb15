// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// How much air the last ventilation brought.
LivePanel {
    id: panel

    required property LiveFigures figures
    readonly property int last: panel.figures.lastVolume

    title: qsTr("Ventilation")
    corner: panel.figures.volumeMax > 0
            ? qsTr("Target %1–%2 ml").arg(panel.figures.volumeMin).arg(panel.figures.volumeMax) : ""
    spoken: panel.last < 0 ? qsTr("none yet") : qsTr("%1 ml, %2").arg(panel.last).arg(verdict.words)

    BandGauge {
        id: gauge
        anchors { top: parent.top; bottom: verdict.top; bottomMargin: Look.gap }
        width: Math.round(128 * Look.unit)
        value: panel.figures.volume
        to: 1000
        bandFrom: panel.figures.volumeMin
        bandTo: panel.figures.volumeMax
        marker: panel.last
        textSize: Math.round(22 * Look.unit)
    }
    BigFigure {
        anchors { left: gauge.right; right: parent.right; verticalCenter: gauge.verticalCenter }
        number: panel.last < 0 ? "–" : panel.last.toString()
        unit: qsTr("ml")
        size: 72 * Look.unit
        isOutdated: panel.isOutdated
    }
    Verdict {
        id: verdict
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        size: 32 * Look.unit
        isOutdated: panel.isOutdated
        kind: panel.figures.volumeSide
        words: ["–", qsTr("Too little"), qsTr("Right volume"), qsTr("Too much")][verdict.kind]
    }
}
