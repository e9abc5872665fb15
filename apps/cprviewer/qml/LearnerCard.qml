// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A figure of the learner's view: its name, the number, a gauge, and by shape and word what to do.
Card {
    id: card

    required property real letter // size of what must be read
    property string title: ""
    property string number: "–"
    property string unit: ""
    property int kind: Verdict.None
    property var words: [] // by kind: none, too low, good, too high
    property var symbols: ["", "▲", "✓", "▼"] // which way it has to go
    property bool isOutdated: false
    property real gaugeWidth: 0 // of what stands at the left
    default property alias gauge: gaugeArea.data
    // A bar below the number; none when it ends at 0.
    property alias bar: bar
    property real barFrom: 0
    property real barTo: 0
    property real bandFrom: 0
    property real bandTo: 0
    property real value: 0

    readonly property real gap: Math.round(card.letter * 0.16)
    readonly property string word: card.isOutdated ? "" : card.words[card.kind] || ""
    readonly property bool isFault: !card.isOutdated && card.kind !== Verdict.None && card.kind !== Verdict.Good

    border.color: card.isFault ? Look.fault : Look.frame
    border.width: card.isFault ? Math.max(3, Math.round(card.letter * 0.08)) : 1
    Accessible.role: Accessible.Indicator
    Accessible.name: card.title + ": " + [card.number + " " + card.unit, card.word].filter(part => part.length > 0).join(", ")

    PageText {
        id: titleText
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: card.gap }
        text: card.title
        color: Look.muted
        font.pixelSize: Math.round(card.letter / 2)
        font.bold: true
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Math.round(card.letter / 4)
        Accessible.ignored: true
    }
    Item {
        id: gaugeArea
        anchors { left: parent.left; top: titleText.bottom; bottom: parent.bottom; margins: card.gap }
        width: card.gaugeWidth
    }
    Item {
        id: figureArea
        anchors { left: gaugeArea.right; right: parent.right; top: titleText.bottom; bottom: bar.top; leftMargin: card.gaugeWidth > 0 ? card.gap : 0; rightMargin: card.gap }

        BigFigure {
            anchors.centerIn: parent
            width: Math.min(implicitWidth, figureArea.width)
            number: card.number
            unit: card.unit
            size: Math.max(card.letter, Math.min(card.letter * 2.6, figureArea.height * 0.9))
            isOutdated: card.isOutdated
        }
    }
    BandBar {
        id: bar
        anchors { left: figureArea.left; right: figureArea.right; bottom: verdictRow.top; leftMargin: card.gap }
        visible: card.barTo > 0
        height: visible ? Math.round(card.letter * 0.35) : 0
        unit: card.letter / 30
        to: card.barTo - card.barFrom
        value: card.value - card.barFrom
        bandFrom: card.bandFrom - card.barFrom
        bandTo: card.bandTo - card.barFrom
    }
    Row {
        id: verdictRow
        anchors { horizontalCenter: figureArea.horizontalCenter; bottom: parent.bottom; bottomMargin: card.gap }
        height: Math.round(card.letter * 1.3)
        spacing: Math.round(card.letter * 0.2)

        PlainText {
            id: symbolText
            anchors.verticalCenter: parent.verticalCenter
            text: card.isOutdated ? "" : card.symbols[card.kind]
            color: card.isFault ? Look.fault : Look.good
            font.pixelSize: card.letter
            font.bold: true
        }
        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, figureArea.width - symbolText.width - verdictRow.spacing)
            text: card.word
            color: symbolText.color
            font.pixelSize: card.letter
            font.bold: true
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Math.round(card.letter / 2)
        }
    }
}
