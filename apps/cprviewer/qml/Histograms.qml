// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// The manikin's six histograms, two beside each other.
Grid {
    id: grid

    property alias session: histograms.session

    columns: 2
    columnSpacing: Look.padding
    rowSpacing: Look.gap
    visible: histograms.isReceived

    HistogramModel { id: histograms }

    Repeater {
        model: histograms
        delegate: Column {
            id: cell

            required property string name
            required property var values

            width: (grid.width - grid.columnSpacing) / 2
            spacing: Look.gap / 3
            Accessible.role: Accessible.Chart
            Accessible.name: cell.name + ": " + cell.values.join(", ")

            PageText {
                width: parent.width
                text: cell.name
                font.pixelSize: Look.small
                color: Look.muted
                Accessible.ignored: true
            }
            HistogramItem {
                width: parent.width
                height: Math.round(84 * Look.unit)
                values: cell.values
                dark: Look.dark
                textSize: Look.small
            }
            Item {
                width: parent.width
                height: low.height

                PageText {
                    id: low
                    text: qsTr("low")
                    font.pixelSize: Math.round(11 * Look.unit)
                    color: Look.muted
                    Accessible.ignored: true
                }
                PageText {
                    anchors.right: parent.right
                    text: qsTr("high")
                    font.pixelSize: low.font.pixelSize
                    color: Look.muted
                    Accessible.ignored: true
                }
            }
        }
    }
}
