// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A card with a title, for one figure of the live page.
Card {
    id: panel

    property string title: ""
    property string spoken: "" // what a screen reader says of it
    property bool isOutdated: false // its figures are not of now
    property alias corner: cornerText.text // beside the title
    default property alias content: body.data

    Accessible.role: Accessible.Indicator
    Accessible.name: panel.title + ": " + (panel.isOutdated ? qsTr("%1 (earlier)").arg(panel.spoken) : panel.spoken)

    PageText {
        id: titleText
        anchors { left: parent.left; top: parent.top; margins: Look.padding }
        width: Math.min(implicitWidth, panel.width - 2 * Look.padding)
        text: panel.title
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Look.small
        color: Look.muted
        font.pixelSize: Math.round(22 * Look.unit)
        font.bold: true
        Accessible.ignored: true
    }
    PageText {
        id: cornerText
        anchors { right: parent.right; left: titleText.right; leftMargin: Look.gap; rightMargin: Look.padding; verticalCenter: titleText.verticalCenter }
        horizontalAlignment: Text.AlignRight
        fontSizeMode: Text.HorizontalFit
        minimumPixelSize: Look.small
        color: Look.muted
        font.pixelSize: Math.round(20 * Look.unit)
        Accessible.ignored: true
    }
    Item {
        id: body
        anchors { fill: parent; margins: Look.padding; topMargin: Look.padding + titleText.height + Look.gap / 2 }
    }
}
