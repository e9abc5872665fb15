// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// What the learner sees: gauges and advice, and the result when all is over. Nothing of the
// instructor's, and nobody's name.
//
// It is read from four metres. What must be read is as high as 1/200 of that, 20 mm, which is more
// than three times what good eyes need. A display of 24 inches, 16:9, is 299 mm high; so a capital is
// 1/15 of the shorter side. It is 73 % of its font's size: 9.2 % of that side. What only names a
// figure never moves, and is half as high. Nearer to a square there is less room, for all of it alike.
Rectangle {
    id: view

    property CPRData session: null
    property bool isLive: false
    property bool isInterrupted: false // nothing comes from the manikin: what is shown is of before
    property alias figures: live

    readonly property real letter: Math.round(Math.min(view.width, view.height, Math.max(view.width, view.height) * 0.6) * 0.092)
    readonly property real gap: Math.round(view.letter * 0.16)
    readonly property bool isTall: view.height > view.width
    readonly property bool hasCycles: live.compressionsPerCycle > 0 && live.ventilationsPerCycle > 0
    // An order to stand clear stays, whatever has happened to the link.
    readonly property bool isBlind: view.isInterrupted && !live.isStandClear
    readonly property int tone: view.isBlind ? LiveFigures.Silence : live.adviceTone
    readonly property bool isLoud: view.tone === LiveFigures.Fault || view.tone === LiveFigures.Instruction
    readonly property string advice: view.isBlind ? qsTr("No connection to the manikin.")
                                     : live.advice || (live.compressionCount + live.ventilationCount > 0 ? qsTr("Keep going.")
                                                                                                       : qsTr("Begin when you are ready."))

    color: Look.page
    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Learner's view")

    LiveFigures {
        id: live
        session: view.session
    }

    GridLayout {
        visible: view.isLive && !live.isStandClear
        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: counters.top; margins: view.gap }
        columns: view.isTall ? 2 : 3
        columnSpacing: view.gap
        rowSpacing: view.gap

        LearnerCard {
            objectName: "learnerDepth"
            visible: live.hasCompressions
            letter: view.letter
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.columnSpan: view.isTall ? 2 : 1
            Layout.preferredWidth: 740
            Layout.preferredHeight: 360
            title: qsTr("Depth")
            number: live.lastDepthText
            unit: qsTr("mm")
            kind: live.depthSide
            isOutdated: live.isCompressionOutdated || view.isInterrupted
            symbols: ["", "▼", "✓", "▲"] // a chest goes down
            words: ["", qsTr("Deeper"), qsTr("Good"), qsTr("Less")]
            gaugeWidth: view.letter * 2.1

            BandGauge {
                anchors.fill: parent
                unit: view.letter / 50
                fromTop: true
                value: live.depth
                to: 80
                bandFrom: live.depthMin
                bandTo: live.depthMax
                limit: live.releaseDepth
                marker: live.lastDepth
                textSize: Math.round(view.letter / 2)
            }
        }
        LearnerCard {
            objectName: "learnerRate"
            visible: live.hasCompressions
            letter: view.letter
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredWidth: 540
            Layout.preferredHeight: 300
            title: qsTr("Rate")
            number: live.rate > 0 ? live.rate.toString() : "–"
            kind: live.rateSide
            isOutdated: live.isCompressionOutdated || view.isInterrupted
            words: ["", qsTr("Faster"), qsTr("Good"), qsTr("Slower")]
            barFrom: 60
            barTo: 160
            value: Math.max(live.rate, 60)
            bandFrom: live.rateMin
            bandTo: live.rateMax
            bar.marker: live.rate > 0 ? Math.max(live.rate - 60, 0) : -1
        }
        LearnerCard {
            objectName: "learnerVolume"
            visible: live.hasVentilations
            letter: view.letter
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredWidth: 540
            Layout.preferredHeight: 300
            title: qsTr("Ventilation")
            number: live.lastVolume < 0 ? "–" : live.lastVolume.toString()
            unit: qsTr("ml")
            kind: live.volumeSide
            isOutdated: live.isVentilationOutdated || view.isInterrupted
            words: ["", qsTr("More"), qsTr("Good"), qsTr("Less")]
            barTo: 1000
            value: live.volume
            bandFrom: live.volumeMin
            bandTo: live.volumeMax
            bar.marker: live.lastVolume
        }
        LearnerCard {
            objectName: "learnerVentilationRate"
            visible: live.hasVentilations && !live.hasCompressions
            letter: view.letter
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.preferredWidth: 540
            Layout.preferredHeight: 300
            title: qsTr("Ventilation rate")
            number: live.ventilationRate > 0 ? live.ventilationRate.toString() : "–"
            kind: live.ventilationRateSide
            isOutdated: live.isVentilationOutdated || view.isInterrupted
            words: ["", qsTr("Faster"), qsTr("Good"), qsTr("Slower")]
            barTo: 30
            value: Math.max(live.ventilationRate, 0)
            bandFrom: live.ventilationRateMin
            bandTo: live.ventilationRateMax
            bar.marker: live.ventilationRate
        }
    }
    GridLayout {
        id: counters
        readonly property real rowHeight: Math.round(view.letter * 2.05)
        visible: view.isLive && !live.isStandClear
        anchors { left: parent.left; right: parent.right; bottom: adviceBand.top; margins: view.gap }
        columns: view.isTall ? 2 : 5
        columnSpacing: view.gap
        rowSpacing: view.gap

        LearnerCounter {
            objectName: "learnerRelease"
            readonly property bool isKnown: live.lastDepth >= 0 && !live.isCompressionOutdated && !view.isInterrupted
            visible: live.hasCompressions
            letter: view.letter
            Layout.fillWidth: true
            Layout.preferredWidth: 540
            Layout.preferredHeight: counters.rowHeight
            title: qsTr("Release")
            number: !isKnown ? "–" : live.isReleased ? "✓ " + qsTr("Complete") : "▲ " + qsTr("Let go")
            isFault: isKnown && !live.isReleased
            textColor: !isKnown ? Look.muted : live.isReleased ? Look.good : Look.fault
        }
        LearnerCounter {
            objectName: "learnerCompressions"
            visible: view.hasCycles
            letter: view.letter
            Layout.fillWidth: true
            Layout.preferredWidth: 400
            Layout.preferredHeight: counters.rowHeight
            title: qsTr("Compressions")
            number: live.compressionsInCycle + " / " + live.compressionsPerCycle
            isFault: live.hasTooManyCompressions
        }
        LearnerCounter {
            objectName: "learnerVentilations"
            visible: view.hasCycles
            letter: view.letter
            Layout.fillWidth: true
            Layout.preferredWidth: 400
            Layout.preferredHeight: counters.rowHeight
            title: qsTr("Ventilations")
            number: live.ventilationsInCycle + " / " + live.ventilationsPerCycle
            isFault: live.hasTooManyVentilations
        }
        LearnerCounter {
            objectName: "learnerBreathing"
            readonly property bool isKnown: live.ventilationRate > 0 && !live.isVentilationOutdated && !view.isInterrupted
            visible: live.hasCompressions && live.ventilationRateMax > 0
            letter: view.letter
            Layout.fillWidth: true
            Layout.preferredWidth: 400
            Layout.preferredHeight: counters.rowHeight
            title: qsTr("Ventilation rate")
            number: isKnown ? ["", "▲ ", "✓ ", "▼ "][live.ventilationRateSide] + live.ventilationRate : "–"
            isFault: isKnown && (live.ventilationRateSide === LiveFigures.Below || live.ventilationRateSide === LiveFigures.Above)
        }
        LearnerCounter {
            objectName: "learnerPause"
            visible: live.hasCompressions || live.hasVentilations
            letter: view.letter
            Layout.fillWidth: true
            Layout.preferredWidth: 280
            Layout.preferredHeight: counters.rowHeight
            title: qsTr("Pause")
            number: live.pause > 0 ? qsTr("%1 s").arg(live.pause) : "–"
            isFault: live.isPauseTooLong
        }
    }
    Rectangle {
        id: adviceBand
        objectName: "learnerAdvice"
        readonly property bool isAlone: live.isStandClear
        visible: view.isLive
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: view.gap }
        height: adviceBand.isAlone ? view.height - 2 * view.gap : Math.round(view.letter * (view.isTall ? 4 : 2.6))
        radius: view.gap
        color: view.tone === LiveFigures.Fault ? Look.fault : view.tone === LiveFigures.Instruction ? Look.accent : Look.card
        border { color: Look.frame; width: view.isLoud ? 0 : 1 }
        Accessible.role: view.isLoud ? Accessible.AlertMessage : Accessible.StaticText
        Accessible.name: view.advice

        RowLayout {
            anchors { fill: parent; leftMargin: 2 * view.gap; rightMargin: 2 * view.gap }
            spacing: 2 * view.gap

            PlainText {
                visible: !adviceBand.isAlone && (view.isLoud || view.tone === LiveFigures.Praise)
                text: view.isLoud ? "!" : "✓"
                color: view.isLoud ? Look.accentText : Look.good
                font.pixelSize: view.letter * 1.4
                font.bold: true
            }
            ColumnLayout {
                spacing: view.gap

                PlainText {
                    objectName: "learnerWords"
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    text: view.advice
                    color: view.isLoud ? Look.accentText : view.tone === LiveFigures.Praise ? Look.text : Look.muted
                    font.pixelSize: adviceBand.isAlone ? view.letter * 2.6 : view.letter * 1.2
                    font.bold: true
                    fontSizeMode: Text.Fit
                    minimumPixelSize: Math.round(view.letter / 2)
                    wrapMode: Text.WordWrap
                    horizontalAlignment: adviceBand.isAlone ? Text.AlignHCenter : Text.AlignLeft
                    verticalAlignment: Text.AlignVCenter
                }
                PlainText {
                    objectName: "learnerAed"
                    Layout.fillWidth: true
                    Layout.bottomMargin: 4 * view.gap
                    visible: adviceBand.isAlone
                    text: live.aed
                    color: Look.accentText
                    font.pixelSize: view.letter
                    wrapMode: Text.WordWrap
                    horizontalAlignment: Text.AlignHCenter
                }
            }
        }
    }
    // Before a session and after it.
    Column {
        id: calm
        objectName: "learnerCalm"
        readonly property bool hasResult: view.session !== null && live.score >= 0
        visible: !view.isLive
        anchors.centerIn: parent
        width: parent.width - 4 * view.letter
        spacing: view.letter / 2
        Accessible.role: Accessible.StaticText
        Accessible.name: Array.from(calm.children).filter(child => child.visible).map(child => child.text).join(". ")

        PlainText {
            width: parent.width
            text: calm.hasResult ? qsTr("Your result") : view.session !== null ? qsTr("The session has ended.") : qsTr("Ready for you")
            color: calm.hasResult ? Look.muted : Look.text
            font.pixelSize: view.letter * (calm.hasResult ? 1 : 1.4)
            font.bold: true
            wrapMode: Text.WordWrap
            horizontalAlignment: Text.AlignHCenter
        }
        PlainText {
            objectName: "learnerScore"
            width: parent.width
            visible: calm.hasResult
            text: qsTr("%1 %").arg(live.score)
            color: Look.text
            font.pixelSize: view.letter * 3.2
            font.bold: true
            horizontalAlignment: Text.AlignHCenter
        }
        PlainText {
            width: parent.width
            text: calm.hasResult ? live.advice
                : view.session !== null ? qsTr("Thank you. Your instructor looks it over with you.")
                                        : qsTr("As soon as a session begins you see here how you do.")
            color: calm.hasResult ? Look.text : Look.muted
            font.pixelSize: view.letter
            wrapMode: Text.WordWrap
            horizontalAlignment: Text.AlignHCenter
        }
    }
}
