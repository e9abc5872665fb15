// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// One of the small gauges.
ColumnLayout {
    id: gauge

    property string title: ""
    property bool hasValue: false
    property real number: 0
    property string unit: ""
    property bool isOutdated: false
    property int side: LiveFigures.Unknown
    property alias value: bar.value
    property alias marker: bar.marker
    property alias to: bar.to
    property alias bandFrom: bar.bandFrom
    property alias bandTo: bar.bandTo
    readonly property bool isFault: gauge.hasValue && !gauge.isOutdated
                                    && (gauge.side === LiveFigures.Below || gauge.side === LiveFigures.Above)
    // Rounded so that a value outside the band never looks like one of its limits.
    readonly property string text: !gauge.hasValue ? "–"
        : (gauge.side === LiveFigures.Below ? Math.floor(gauge.number)
           : gauge.side === LiveFigures.Above ? Math.ceil(gauge.number) : Math.round(gauge.number)).toString()
    readonly property string sideText: !gauge.isFault ? "" : gauge.side === LiveFigures.Below ? qsTr("below the target")
                                                                                            : qsTr("above the target")

    Layout.fillWidth: true
    Layout.preferredWidth: 100
    spacing: Math.round(2 * Look.unit)
    Accessible.role: Accessible.Indicator
    Accessible.name: [gauge.title + ": " + gauge.text + " " + gauge.unit, gauge.sideText].filter(part => part.length > 0).join(", ")

    PlainText {
        text: gauge.title
        color: Look.muted
        font.pixelSize: Look.small
    }
    Row {
        spacing: Math.round(4 * Look.unit)

        PlainText {
            id: numberText
            text: gauge.isFault ? (gauge.side === LiveFigures.Below ? "↓ " : "↑ ") + gauge.text : gauge.text
            color: gauge.isFault ? Look.fault : gauge.isOutdated ? Look.muted : Look.text
            font.pixelSize: Math.round(22 * Look.unit)
            font.bold: true
        }
        PlainText {
            anchors.baseline: numberText.baseline
            text: gauge.unit
            color: Look.muted
            font.pixelSize: Look.small
        }
    }
    BandBar { id: bar; Layout.fillWidth: true }
}
