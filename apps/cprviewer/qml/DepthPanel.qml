// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// How deep the chest is pressed, and whether it comes back.
LivePanel {
    id: panel

    required property LiveFigures figures
    readonly property real last: panel.figures.lastDepth
    readonly property bool hasLast: panel.last >= 0
    readonly property int side: panel.figures.depthSide
    readonly property string shown: panel.figures.lastDepthText

    title: qsTr("Depth")
    corner: panel.figures.depthMax > 0
            ? qsTr("Target %1–%2 mm").arg(panel.figures.depthMin.toFixed(0)).arg(panel.figures.depthMax.toFixed(0)) : ""
    spoken: !panel.hasLast ? qsTr("none yet") : qsTr("%1 mm, %2, %3").arg(panel.shown).arg(depthVerdict.words).arg(releaseVerdict.words)

    BandGauge {
        id: gauge
        width: Math.round(150 * Look.unit)
        height: parent.height
        fromTop: true
        value: panel.figures.depth
        to: 80
        bandFrom: panel.figures.depthMin
        bandTo: panel.figures.depthMax
        limit: panel.figures.releaseDepth
        marker: panel.last
        textSize: Math.round(26 * Look.unit)
    }
    Column {
        anchors { left: gauge.right; right: parent.right; verticalCenter: parent.verticalCenter }
        scale: Math.min(1, parent.height / height) // a message over the page needs height
        spacing: Look.gap

        BigFigure {
            anchors.horizontalCenter: parent.horizontalCenter
            number: panel.shown
            unit: qsTr("mm")
            size: 132 * Look.unit
            isOutdated: panel.isOutdated
        }
        Verdict {
            id: depthVerdict
            width: parent.width
            size: 32 * Look.unit
            isOutdated: panel.isOutdated
            kind: panel.side
            words: ["–", qsTr("Too shallow"), qsTr("Right depth"), qsTr("Too deep")][panel.side]
        }
        Verdict {
            id: releaseVerdict
            width: parent.width
            size: 26 * Look.unit
            isOutdated: panel.isOutdated
            kind: !panel.hasLast ? Verdict.None : panel.figures.isReleased ? Verdict.Good : Verdict.Fault
            words: !panel.hasLast ? "–" : panel.figures.isReleased ? qsTr("Full release")
                 : qsTr("%1 mm not released").arg(panel.figures.lastReleaseDepth.toFixed(0))
        }
    }
}
