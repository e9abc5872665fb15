// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A line of the learner's view below what it is called.
Card {
    id: counter

    required property real letter // size of what must be read
    property string title: ""
    property string number: "–"
    property bool isFault: false
    property color textColor: counter.isFault ? Look.fault : Look.text

    readonly property real gap: Math.round(counter.letter * 0.16)

    border.color: counter.isFault ? Look.fault : Look.frame
    border.width: counter.isFault ? Math.max(3, Math.round(counter.letter * 0.08)) : 1
    Accessible.role: Accessible.Indicator
    Accessible.name: counter.title + ": " + counter.number

    PageText {
        id: titleText
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: counter.gap }
        text: counter.title
        color: Look.muted
        font.pixelSize: Math.round(counter.letter / 2)
        font.bold: true
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Math.round(counter.letter / 4)
        Accessible.ignored: true
    }
    PlainText {
        anchors { left: parent.left; right: parent.right; top: titleText.bottom; bottom: parent.bottom; leftMargin: counter.gap; rightMargin: counter.gap }
        text: counter.number
        color: counter.textColor
        font.pixelSize: counter.letter
        font.bold: true
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Math.round(counter.letter / 2)
        verticalAlignment: Text.AlignVCenter
    }
}
