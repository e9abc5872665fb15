// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A single figure in a low card.
LivePanel {
    id: panel

    property string number: "–"
    property string unit: ""
    property string fault: "" // what is wrong with it
    readonly property bool isFault: panel.fault.length > 0

    spoken: [panel.number + " " + panel.unit, panel.fault].filter(part => part.length > 0).join(", ")
    border.color: panel.isFault ? Look.fault : Look.frame
    border.width: panel.isFault ? Math.max(2, Math.round(4 * Look.unit)) : 1

    BigFigure {
        anchors { left: parent.left; bottom: parent.bottom; bottomMargin: -Look.gap / 2 }
        width: Math.min(implicitWidth, parent.width)
        number: panel.number
        unit: panel.unit
        isOutdated: panel.isOutdated
        size: 60 * Look.unit
    }
}
