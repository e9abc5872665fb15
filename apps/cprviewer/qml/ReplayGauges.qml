// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// The gauges of the live page, small, as they stood at a time of the session.
Card {
    id: panel

    property alias session: figures.session
    property alias at: figures.at // ms of session time
    readonly property LiveFigures figures: figures

    implicitHeight: row.implicitHeight + 2 * Look.gap

    LiveFigures {
        id: figures
        isActive: panel.visible
    }
    RowLayout {
        id: row
        anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: Look.gap }
        spacing: Look.padding

        ReplayGauge {
            objectName: "depthThen"
            visible: figures.hasCompressions
            title: qsTr("Depth")
            hasValue: figures.lastDepth >= 0
            number: figures.lastDepth
            unit: qsTr("mm")
            isOutdated: figures.isCompressionOutdated
            side: figures.depthSide
            value: figures.depth
            marker: figures.lastDepth
            to: 80
            bandFrom: figures.depthMin
            bandTo: figures.depthMax
        }
        ReplayGauge {
            objectName: "rateThen"
            visible: figures.hasCompressions
            title: qsTr("Rate")
            hasValue: figures.rate > 0
            number: figures.rate
            unit: qsTr("/min")
            isOutdated: figures.isCompressionOutdated
            side: figures.rateSide
            marker: figures.rate > 0 ? figures.rate : -1
            to: 180
            bandFrom: figures.rateMin
            bandTo: figures.rateMax
        }
        ReplayGauge {
            objectName: "volumeThen"
            visible: figures.hasVentilations
            title: qsTr("Volume")
            hasValue: figures.lastVolume >= 0
            number: figures.lastVolume
            unit: qsTr("ml")
            isOutdated: figures.isVentilationOutdated
            side: figures.volumeSide
            value: figures.volume
            marker: figures.lastVolume
            to: 1000
            bandFrom: figures.volumeMin
            bandTo: figures.volumeMax
        }
    }
}
