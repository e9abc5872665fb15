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
    property alias figures: live
    signal reviewWanted()

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Live training")

    readonly property bool hasCycles: live.compressionsPerCycle > 0 && live.ventilationsPerCycle > 0

    LiveFigures {
        id: live
        session: page.viewer.session
        isActive: page.visible
    }

    ColumnLayout {
        anchors { fill: parent; margins: Look.padding }
        spacing: Look.gap

        RowLayout {
            Layout.fillHeight: true
            spacing: Look.gap

            DepthPanel {
                objectName: "depth"
                figures: live
                Layout.fillHeight: true
                Layout.fillWidth: true
                Layout.preferredWidth: 470
            }
            RatePanel {
                objectName: "rate"
                figures: live
                Layout.fillHeight: true
                Layout.fillWidth: true
                Layout.preferredWidth: 390
            }
            VolumePanel {
                objectName: "volume"
                figures: live
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
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 300
                title: page.hasCycles ? qsTr("Compressions in cycle") : qsTr("Compressions")
                number: page.hasCycles ? live.compressionsInCycle.toString() : live.compressionCount.toString()
                unit: page.hasCycles ? qsTr("of %1").arg(live.compressionsPerCycle) : ""
            }
            CounterPanel {
                objectName: "ventilations"
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 300
                title: page.hasCycles ? qsTr("Ventilations in cycle") : qsTr("Ventilations")
                number: page.hasCycles ? live.ventilationsInCycle.toString() : live.ventilationCount.toString()
                unit: page.hasCycles ? qsTr("of %1").arg(live.ventilationsPerCycle) : ""
            }
            CounterPanel {
                objectName: "pause"
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 300
                title: qsTr("Pause")
                number: live.pause > 0 ? live.pause.toString() : "–"
                unit: live.pause > 0 ? qsTr("s") : ""
                isFault: live.pause > 0
            }
            CounterPanel {
                objectName: "time"
                Layout.fillWidth: true
                Layout.fillHeight: true
                Layout.preferredWidth: 300
                title: qsTr("Time")
                number: live.timeText
            }
        }
        AdvicePanel {
            objectName: "advice"
            figures: live
            isLive: page.viewer.isLive
            Layout.fillWidth: true
            Layout.preferredHeight: Math.round(84 * Look.unit)
            onReviewWanted: page.reviewWanted()
            onStopWanted: page.viewer.stop()
        }
        Card {
            Layout.fillWidth: true
            Layout.preferredHeight: Math.round(150 * Look.unit)

            WaveItem {
                id: wave
                anchors { fill: parent; margins: Look.gap }
                session: page.viewer.session
                kind: WaveItem.Depth
                span: 15000
                dark: Look.dark
                textSize: Look.normal
                Accessible.role: Accessible.Chart
                Accessible.name: qsTr("Depth over the last 15 seconds")
            }
            PageText {
                objectName: "lost"
                anchors { right: parent.right; bottom: parent.bottom; margins: Look.gap }
                visible: wave.lost > 0
                text: qsTr("%1 s missing").arg(Number(wave.lost / 1000).toLocaleString(Qt.locale(), "f", 1))
                font.pixelSize: Math.round(12 * Look.unit)
            }
        }
    }
}
