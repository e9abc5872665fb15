// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// One histogram of the manikin. The pointer or the arrow keys choose a bar, of which more is shown.
Item {
    id: histogram

    required property string name
    required property var values // percent
    required property int total // compressions or ventilations in all bars; 0 when it is not known
    property int chosen: -1

    readonly property string shown: histogram.chosen < 0 ? "" : histogram.total > 0
        ? qsTr("Bar %1: %2 % ≈ %3 of %4").arg(histogram.chosen + 1).arg(histogram.values[histogram.chosen])
          .arg(Math.round(histogram.values[histogram.chosen] * histogram.total / 100)).arg(histogram.total)
        : qsTr("Bar %1: %2 %").arg(histogram.chosen + 1).arg(histogram.values[histogram.chosen])

    function move(step) {
        histogram.chosen = Math.max(0, Math.min(histogram.values.length - 1, histogram.chosen + step));
    }

    implicitHeight: column.implicitHeight
    activeFocusOnTab: true
    onActiveFocusChanged: histogram.chosen = histogram.activeFocus ? 0 : -1
    Keys.onLeftPressed: histogram.move(-1)
    Keys.onRightPressed: histogram.move(1)
    Accessible.role: Accessible.Chart
    Accessible.name: histogram.name + ": " + (histogram.shown || histogram.values.join(", "))
    Accessible.focusable: true

    Column {
        id: column
        width: parent.width
        spacing: Look.gap / 3

        PageText {
            width: parent.width
            text: histogram.name
            font.pixelSize: Look.small
            color: Look.muted
            Accessible.ignored: true
        }
        HistogramItem {
            id: bars
            width: parent.width
            height: Math.round(84 * Look.unit)
            values: histogram.values
            chosen: histogram.chosen
            dark: Look.dark
            textSize: Look.small

            MouseArea {
                anchors.fill: parent
                hoverEnabled: true
                onPositionChanged: mouse => histogram.chosen = bars.barAt(mouse.x)
                onExited: histogram.chosen = -1
            }
        }
        Item {
            width: parent.width
            height: low.height

            PageText {
                id: low
                width: parent.width
                text: histogram.shown || qsTr("low")
                font.pixelSize: Math.round(12 * Look.unit)
                fontSizeMode: Text.HorizontalFit
                minimumPixelSize: Math.round(9 * Look.unit)
                color: histogram.chosen < 0 ? Look.muted : Look.text
                Accessible.ignored: true
            }
            PageText {
                anchors.right: parent.right
                visible: histogram.chosen < 0
                text: qsTr("high")
                font.pixelSize: low.font.pixelSize
                color: Look.muted
                Accessible.ignored: true
            }
        }
    }
    FocusFrame { visible: histogram.activeFocus }
}
