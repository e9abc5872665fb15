// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// Who trained what, the scores, and both advices.
Card {
    id: panel
    objectName: "summary"

    property alias session: summary.session
    property bool isLive: false

    implicitHeight: Math.round(128 * Look.unit)

    SessionSummary { id: summary }

    component Detail: PageText {
        width: who.width
        color: Look.muted
        font.pixelSize: Look.small
    }

    Column {
        id: who
        anchors { left: parent.left; top: parent.top; margins: Look.padding }
        width: Math.round(300 * Look.unit)
        spacing: Math.round(3 * Look.unit)

        NameList {
            objectName: "learners"
            width: parent.width
            names: summary.learners
            font.pixelSize: Look.title
            font.bold: true
        }
        Detail {
            text: (isNaN(summary.start.getTime()) ? qsTr("Date not known")
                                                  : Words.value("startTime", summary.start))
                  + "  ·  " + Words.time(summary.length * 1000)
        }
        Detail { text: summary.protocolText }
        Detail { text: summary.manikinText }
    }
    Row {
        id: tiles
        anchors { left: who.right; top: parent.top; margins: Look.padding }
        spacing: Look.padding
        visible: summary.hasScores

        Rectangle { width: 1; height: panel.height - 2 * Look.padding; color: Look.frame }
        ScoreTile { objectName: "overall"; title: qsTr("Overall"); percent: summary.overallScore; least: summary.basicThreshold; advanced: summary.advancedThreshold; verdict: summary.verdictText(percent, least, advanced); isMain: true }
        ScoreTile { objectName: "compressionScore"; visible: summary.trainsCompressions; title: qsTr("Compressions"); percent: summary.compressionScore; least: summary.basicThreshold; advanced: summary.advancedThreshold; verdict: summary.verdictText(percent, least, advanced) }
        ScoreTile { objectName: "ventilationScore"; visible: summary.trainsVentilations; title: qsTr("Ventilations"); percent: summary.ventilationScore; least: summary.basicThreshold; advanced: summary.advancedThreshold; verdict: summary.verdictText(percent, least, advanced) }
        ScoreTile { objectName: "flowTime"; visible: summary.trainsCompressions; title: qsTr("Flow time"); percent: summary.flowTime; least: summary.leastFlowTime; verdict: summary.verdictText(percent, least) }
        Rectangle { width: 1; height: panel.height - 2 * Look.padding; color: Look.frame }
    }
    Row {
        id: recorded

        readonly property var keys: ["compression_fraction", "correct_depth_percent", "correct_rate_percent",
                                     "complete_release_percent", "correct_volume_percent"]
        readonly property bool hasTiles: width > 1 // more than the line

        anchors { left: who.right; top: parent.top; margins: Look.padding }
        spacing: Look.padding
        visible: !summary.hasScores

        Rectangle { width: 1; height: panel.height - 2 * Look.padding; color: Look.frame }
        Repeater {
            model: RecordedFigureModel { session: summary.hasScores ? null : panel.session }
            delegate: ScoreTile {
                required property string key
                required property string name
                required property var value

                visible: recorded.keys.includes(key) && value !== undefined
                title: name
                percent: Math.round(key === "compression_fraction" ? 100 * value : value)
            }
        }
    }
    PageText {
        anchors { left: who.right; right: parent.right; leftMargin: 2 * Look.padding; rightMargin: Look.padding }
        y: recorded.hasTiles ? panel.height - height - Look.gap / 2 : (panel.height - height) / 2
        visible: !summary.hasScores
        text: (panel.isLive ? qsTr("Scores come at the end.") : qsTr("There are no scores."))
              + (recorded.hasTiles ? " " + qsTr("These figures are worked out from the recorded events.") : "")
        color: Look.muted
        font.pixelSize: recorded.hasTiles ? Look.small : Look.title
    }
    Column {
        anchors { left: tiles.right; right: parent.right; top: parent.top; margins: Look.padding }
        visible: summary.hasScores
        spacing: Math.round(4 * Look.unit)

        PageText {
            text: qsTr("Advice")
            color: Look.muted
            font.pixelSize: Look.small
        }
        PageText {
            id: primaryAdvice
            objectName: "primaryAdvice"
            width: parent.width
            text: summary.primaryAdviceText.length > 0 ? "1.  " + summary.primaryAdviceText
                                                      : qsTr("None was given.")
            // What a long sentence asks for often stands at its end.
            font.pixelSize: Math.round((text.length > 40 ? 15 : 17) * Look.unit)
            font.bold: true
            wrapMode: Text.WordWrap
            maximumLineCount: 3
        }
        PageText {
            objectName: "secondaryAdvice"
            visible: summary.secondaryAdviceText.length > 0
            width: parent.width
            text: "2.  " + summary.secondaryAdviceText
            font.pixelSize: Look.small
            wrapMode: Text.WordWrap
            maximumLineCount: primaryAdvice.lineCount > 2 ? 1 : 2
        }
    }
}
