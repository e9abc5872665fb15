// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// What the learner should do next; at the end, what became of the session.
Card {
    id: panel

    required property LiveFigures figures
    required property bool isLive
    property bool hasReview: true
    signal reviewWanted()
    signal stopWanted()

    readonly property int tone: panel.isLive ? panel.figures.adviceTone : LiveFigures.Result
    readonly property bool isLoud: panel.tone === LiveFigures.Fault || panel.tone === LiveFigures.Instruction
    readonly property string result: panel.figures.score < 0 ? qsTr("The session has ended.")
                                                             : qsTr("Result: %1 %.").arg(panel.figures.score)
    readonly property string waiting:
        panel.figures.compressionCount + panel.figures.ventilationCount > 0 ? qsTr("Keep going.")
        : panel.figures.hasCompressions ? qsTr("Waiting for the first compression")
                                        : qsTr("Waiting for the first ventilation")
    readonly property string words: panel.tone === LiveFigures.Result
                                    ? [panel.result].concat(panel.figures.score >= 0 && panel.figures.advice.length > 0 ? panel.figures.advice : []).join(" ")
                                    : panel.figures.advice || panel.waiting

    color: panel.tone === LiveFigures.Fault ? Look.fault
         : panel.tone === LiveFigures.Instruction ? Look.accent : Look.card
    Accessible.role: panel.isLoud ? Accessible.AlertMessage : Accessible.StaticText
    Accessible.name: qsTr("Advice") + ": " + panel.words
    Accessible.onNameChanged: Words.announce(panel)

    RowLayout {
        anchors { fill: parent; leftMargin: Look.padding; rightMargin: Look.padding }
        spacing: Look.gap

        PlainText {
            visible: panel.isLoud || panel.tone === LiveFigures.Praise
            text: panel.isLoud ? "!" : "✓"
            color: panel.isLoud ? Look.accentText : Look.good
            font.pixelSize: Math.round(46 * Look.unit)
            font.bold: true
        }
        PlainText {
            Layout.fillWidth: true
            Layout.fillHeight: true
            text: panel.words
            color: panel.isLoud ? Look.accentText : panel.tone === LiveFigures.Silence ? Look.muted : Look.text
            font.pixelSize: Math.round(42 * Look.unit)
            font.bold: true
            fontSizeMode: Text.Fit
            minimumPixelSize: Look.title
            wrapMode: Text.WordWrap
            verticalAlignment: Text.AlignVCenter
        }
        ActionButton {
            objectName: "stop"
            visible: panel.isLive
            text: qsTr("End session")
            focusColor: panel.isLoud ? Look.accentText : Look.accent
            onClicked: panel.stopWanted()
        }
        ActionButton {
            objectName: "review"
            visible: !panel.isLive && panel.hasReview
            highlighted: true
            text: qsTr("Look the session over")
            onClicked: panel.reviewWanted()
        }
    }
}
