// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// What a learner and an instructor see while the session runs; read from three metres.
FocusScope {
    id: page

    required property Viewer viewer
    property CPRData session: page.viewer.session
    property bool isLive: page.viewer.isLive
    property QtObject receiver: page.viewer // whose addRemark() takes the remarks
    property bool isInterrupted: false // nothing comes at the moment
    property bool hasReview: true // the session can be looked over from here
    property alias figures: live
    signal reviewWanted()
    signal stopWanted()

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Live training")

    readonly property bool hasCycles: live.compressionsPerCycle > 0 && live.ventilationsPerCycle > 0
    readonly property bool isOver: !page.isLive || page.isInterrupted

    LiveFigures {
        id: live
        session: page.session
        isActive: page.visible
    }

    Keys.onPressed: event => {
        event.accepted = !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier))
                && page.session !== null && remarkBar.takeKey(event.key, page.session.cprEvents.sessionTime);
    }

    ColumnLayout {
        anchors { fill: parent; margins: Look.padding }
        spacing: Look.gap

        RowLayout {
            Layout.fillHeight: true
            spacing: Look.gap

            DepthPanel {
                objectName: "depth"
                visible: live.hasCompressions
                figures: live
                isOutdated: page.isOver || live.isCompressionOutdated
                Layout.fillHeight: true
                Layout.fillWidth: true
                Layout.preferredWidth: 470
            }
            RatePanel {
                objectName: "rate"
                visible: live.hasCompressions
                figures: live
                isOutdated: page.isOver || live.isCompressionOutdated
                Layout.fillHeight: true
                Layout.fillWidth: true
                Layout.preferredWidth: 390
            }
            VolumePanel {
                objectName: "volume"
                visible: live.hasVentilations
                figures: live
                isOutdated: page.isOver || live.isVentilationOutdated
                Layout.fillHeight: true
                Layout.fillWidth: true
                Layout.preferredWidth: 390
            }
            RatePanel {
                objectName: "ventilationRate"
                visible: live.hasVentilations && !live.hasCompressions
                figures: live
                isOfVentilations: true
                isOutdated: page.isOver || live.isVentilationOutdated
                Layout.fillHeight: true
                Layout.fillWidth: true
                Layout.preferredWidth: 390
            }
        }
        RowLayout {
            Layout.fillHeight: false
            Layout.preferredHeight: Math.round(124 * Look.unit)
            spacing: Look.gap

            CounterPanel {
                objectName: "compressions"
                visible: live.hasCompressions
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 330
                title: page.hasCycles ? qsTr("Compressions in cycle") : qsTr("Compressions")
                number: page.hasCycles ? live.compressionsInCycle.toString() : live.compressionCount.toString()
                unit: page.hasCycles ? qsTr("of %1").arg(live.compressionsPerCycle) : ""
                fault: live.hasTooManyCompressions ? qsTr("Too many") : ""
            }
            CounterPanel {
                objectName: "ventilations"
                visible: live.hasVentilations
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 310
                title: page.hasCycles ? qsTr("Ventilations in cycle") : qsTr("Ventilations")
                number: page.hasCycles ? live.ventilationsInCycle.toString() : live.ventilationCount.toString()
                unit: page.hasCycles ? qsTr("of %1").arg(live.ventilationsPerCycle) : ""
                fault: live.hasTooManyVentilations ? qsTr("Too many") : ""
            }
            CounterPanel {
                id: breathing
                objectName: "breathing"
                visible: live.hasCompressions && live.ventilationRateMax > 0
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 310
                title: qsTr("Ventilation rate")
                number: live.ventilationRate > 0 ? live.ventilationRate.toString() : "–"
                unit: qsTr("target %1–%2").arg(live.ventilationRateMin).arg(live.ventilationRateMax)
                isOutdated: page.isOver || live.isVentilationOutdated
                fault: breathing.isOutdated ? "" : live.ventilationRateSide === LiveFigures.Below ? qsTr("Too slow")
                       : live.ventilationRateSide === LiveFigures.Above ? qsTr("Too fast") : ""
            }
            CounterPanel {
                id: pause
                objectName: "pause"
                readonly property bool isRunning: !page.isOver && live.pause > 0
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 270
                title: pause.isRunning && live.isPauseAskedFor ? qsTr("AED pause") : qsTr("Pause")
                number: pause.isRunning ? live.pause.toString() : "–"
                unit: pause.isRunning ? qsTr("s") : ""
                fault: pause.isRunning && live.isPauseTooLong ? qsTr("Too long") : ""
            }
            CounterPanel {
                objectName: "aed"
                visible: live.aed.length > 0
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 390
                title: qsTr("AED")
                corner: [live.rhythm, live.shock].filter(text => text.length > 0).join(", ")
                number: live.aed
                spoken: [live.aed, live.rhythm, live.shock].join(" ")
            }
            CounterPanel {
                objectName: "time"
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 220
                title: qsTr("Time")
                number: live.timeText
            }
        }
        AdvicePanel {
            objectName: "advice"
            figures: live
            isLive: page.isLive
            hasReview: page.hasReview
            Layout.fillWidth: true
            Layout.preferredHeight: Math.round(84 * Look.unit)
            onReviewWanted: page.reviewWanted()
            onStopWanted: page.stopWanted()
        }
        Card {
            Layout.fillWidth: true
            Layout.preferredHeight: Math.round(150 * Look.unit)

            WaveItem {
                id: wave
                anchors { fill: parent; margins: Look.gap }
                session: page.session
                kind: live.hasCompressions ? WaveItem.Depth : WaveItem.Volume
                span: live.hasCompressions ? 15000 : 30000
                dark: Look.dark
                textSize: Look.normal
                Accessible.role: Accessible.Chart
                Accessible.name: live.hasCompressions ? qsTr("Depth over the last 15 seconds")
                                                      : qsTr("Volume over the last 30 seconds")
            }
            PageText {
                objectName: "lost"
                anchors { right: parent.right; bottom: parent.bottom; margins: Look.gap }
                visible: wave.lost > 0
                text: qsTr("%1 s missing").arg(Number(wave.lost / 1000).toLocaleString(Qt.locale(), "f", 1))
                font.pixelSize: Math.round(12 * Look.unit)
            }
            ActionButton {
                objectName: "remark"
                anchors { left: parent.left; verticalCenter: parent.verticalCenter; leftMargin: Look.gap; verticalCenterOffset: Look.gap / 2 }
                text: "⚑"
                help: qsTr("Remark on this time (T)")
                onClicked: remarkBar.open(page.session.cprEvents.sessionTime)
            }
        }
    }
    RemarkBar {
        id: remarkBar
        objectName: "remarkBar"
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 2 * Look.padding }
        width: Math.min(implicitWidth, parent.width - 4 * Look.padding)
        viewer: page.viewer
        receiver: page.receiver
    }
}
