// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// One histogram of the manikin. The pointer or the arrow keys choose a bar, of which more is shown.
Item {
    id: histogram

    required property string name
    required property string unit
    required property var values // percent
    required property var ranges // what each bar counts
    required property var edges
    required property var targets
    required property int total // compressions or ventilations in all bars; 0 when it is not known
    property int chosen: -1

    readonly property string shown: histogram.chosen < 0 ? "" : histogram.share(histogram.chosen)

    function share(bar) {
        const range = histogram.ranges[bar], percent = histogram.values[bar];
        return histogram.total === 0 ? qsTr("%1: %2 %").arg(range).arg(percent)
            : qsTr("%1: %2 % ≈ %3 of %4").arg(range).arg(percent).arg(Math.round(percent * histogram.total / 100)).arg(histogram.total);
    }

    function move(step) {
        histogram.chosen = Math.max(0, Math.min(histogram.values.length - 1, histogram.chosen + step));
    }

    implicitHeight: column.implicitHeight
    activeFocusOnTab: true
    onActiveFocusChanged: histogram.chosen = histogram.activeFocus ? 0 : -1
    Keys.onLeftPressed: histogram.move(-1)
    Keys.onRightPressed: histogram.move(1)
    Accessible.role: Accessible.Chart
    Accessible.name: qsTr("%1, %2").arg(histogram.name).arg(histogram.unit) + (histogram.shown ? ": " + histogram.shown : "")
    Accessible.description: histogram.values.map((value, bar) => histogram.share(bar)).join("; ")
    Accessible.focusable: true

    Column {
        id: column
        width: parent.width
        spacing: Look.gap / 3

        PageText {
            width: parent.width
            text: qsTr("%1, %2").arg(histogram.name).arg(histogram.unit)
            font.pixelSize: Look.small
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Math.round(9 * Look.unit)
            color: Look.muted
            Accessible.ignored: true
        }
        HistogramItem {
            id: bars
            width: parent.width
            height: Math.round(98 * Look.unit)
            values: histogram.values
            edges: histogram.edges
            targets: histogram.targets
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
        PageText {
            width: parent.width
            text: histogram.shown || (histogram.targets.includes(true) ? qsTr("Shaded: target") : " ")
            font.pixelSize: Math.round(12 * Look.unit)
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Math.round(9 * Look.unit)
            color: histogram.chosen < 0 ? Look.muted : Look.text
            Accessible.ignored: true
        }
    }
    FocusFrame { visible: histogram.activeFocus }
}
