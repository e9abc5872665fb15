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
    signal reviewWanted()
    signal stopWanted()

    readonly property bool isIdle: panel.figures.compressionCount + panel.figures.ventilationCount === 0
    readonly property bool isPausing: panel.isLive && panel.figures.pause > 0
    readonly property bool isRight: !panel.isPausing && panel.figures.advice.length === 0
    readonly property string words: panel.isIdle ? (panel.isLive ? qsTr("Waiting for the first compression")
                                                                 : qsTr("The session has ended"))
                                  : panel.isPausing ? qsTr("Go on, keep the pause short")
                                  : !panel.isRight ? panel.figures.advice
                                  : panel.isLive ? qsTr("Well done, keep going") : qsTr("Well done")

    color: panel.isIdle || panel.isRight ? Look.card : Look.fault
    Accessible.role: Accessible.AlertMessage
    Accessible.name: qsTr("Advice") + ": " + panel.words

    RowLayout {
        anchors { fill: parent; leftMargin: Look.padding; rightMargin: Look.padding }
        spacing: Look.gap

        PlainText {
            visible: !panel.isIdle
            text: panel.isRight ? "✓" : "!"
            color: panel.isRight ? Look.good : Look.accentText
            font.pixelSize: Math.round(46 * Look.unit)
            font.bold: true
        }
        PlainText {
            Layout.fillWidth: true
            Layout.fillHeight: true
            text: panel.words
            color: panel.isIdle ? Look.muted : panel.isRight ? Look.text : Look.accentText
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
            onClicked: panel.stopWanted()
        }
        ActionButton {
            objectName: "review"
            visible: !panel.isLive
            highlighted: panel.isRight || panel.isIdle
            text: qsTr("Look the session over")
            onClicked: panel.reviewWanted()
        }
    }
}
