// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// Whether something is right: a symbol, words and a colour that say the same.
Item {
    id: verdict

    // The first four as LiveFigures.Side.
    enum Kind { None, TooLow, Good, TooHigh, Fault }

    property int kind: Verdict.None
    property string words: ""
    property real size: 26 * Look.unit
    property bool isOutdated: false // of what was done some time ago
    readonly property color tone: verdict.kind === Verdict.None || verdict.isOutdated ? Look.muted
                                : verdict.kind === Verdict.Good ? Look.good : Look.fault

    implicitHeight: Math.round(verdict.size * 1.4)
    Accessible.role: Accessible.StaticText
    Accessible.name: verdict.words

    Row {
        anchors.centerIn: parent
        spacing: Math.round(verdict.size * 0.35)

        PlainText {
            id: symbol
            text: ["", "✗", "✓", "✗", "✗"][verdict.kind]
            visible: text.length > 0
            color: verdict.tone
            font.pixelSize: verdict.size
            font.bold: true
        }
        PlainText {
            anchors.verticalCenter: parent.verticalCenter
            width: Math.min(implicitWidth, verdict.width - (symbol.visible ? symbol.width + parent.spacing : 0))
            text: verdict.words
            color: verdict.tone
            font.pixelSize: verdict.size
            font.bold: true
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Look.normal
            elide: Text.ElideRight
        }
    }
}
