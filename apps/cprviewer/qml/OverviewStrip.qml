// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// The whole session, small, while the picture shows a part of it. The part is a frame that can be
// moved and made longer or shorter.
Item {
    id: strip

    required property TimelineItem timeline
    property int position: 0 // ms of session time
    readonly property bool isZoomed: strip.timeline.shownTo - strip.timeline.shownFrom < strip.timeline.length
    readonly property real pixelsPerMsec: overview.width / Math.max(1, strip.timeline.length)
    readonly property int shown: strip.timeline.shownTo - strip.timeline.shownFrom

    visible: strip.isZoomed
    implicitHeight: strip.isZoomed ? Math.round(48 * Look.unit) : 0
    activeFocusOnTab: true
    Accessible.role: Accessible.Slider
    Accessible.name: qsTr("Part of the session that is shown: %1 to %2 of %3")
                     .arg(Words.time(strip.timeline.shownFrom)).arg(Words.time(strip.timeline.shownTo))
                     .arg(Words.time(strip.timeline.length))
    Accessible.focusable: true

    function zoom(factor) {
        const area = strip.timeline.plotArea;
        strip.timeline.zoom(factor, area.x + area.width / 2);
    }
    Keys.onLeftPressed: strip.timeline.pan(-strip.shown / 2)
    Keys.onRightPressed: strip.timeline.pan(strip.shown / 2)
    Keys.onUpPressed: strip.zoom(1.25)
    Keys.onDownPressed: strip.zoom(0.8)
    Keys.onPressed: event => {
        if (event.key !== Qt.Key_Home && event.key !== Qt.Key_End)
            return;
        strip.timeline.pan(event.key === Qt.Key_Home ? -strip.timeline.length : strip.timeline.length);
        event.accepted = true;
    }

    OverviewItem {
        id: overview
        objectName: "overview"
        x: strip.timeline.plotArea.x
        width: strip.timeline.plotArea.width
        height: parent.height
        session: strip.timeline.session
        dark: Look.dark
        textSize: Look.small

        // What is not shown is dimmed.
        Rectangle { color: Look.card; opacity: 0.5; width: frame.x; height: parent.height }
        Rectangle { color: Look.card; opacity: 0.5; x: frame.x + frame.width; width: parent.width - x; height: parent.height }
        Rectangle {
            x: Math.round(strip.position * strip.pixelsPerMsec)
            width: Math.max(2, Math.round(2 * Look.unit))
            height: parent.height
            color: Look.fault
        }
        Rectangle {
            id: frame
            objectName: "overviewFrame"
            x: Math.round(Math.min(strip.timeline.shownFrom * strip.pixelsPerMsec, parent.width - width))
            width: Math.max(Math.round(10 * Look.unit), Math.round(strip.shown * strip.pixelsPerMsec))
            height: parent.height
            color: "transparent"
            border { color: Look.accent; width: 2 }
            radius: 2

            Repeater {
                model: 2 // what it is resized by
                delegate: Rectangle {
                    required property int index
                    x: index === 0 ? 0 : frame.width - width
                    anchors.verticalCenter: parent.verticalCenter
                    width: Math.round(5 * Look.unit)
                    height: parent.height / 2
                    color: Look.accent
                }
            }
        }
        MouseArea {
            id: mouse
            anchors { fill: parent; leftMargin: -edge; rightMargin: -edge }
            readonly property real edge: Math.round(8 * Look.unit) // how near an edge is meant
            property int side: 0 // -1 and 1 move an edge, 0 moves the frame
            property int offset: 0 // from the pointer to what is moved, ms
            hoverEnabled: true
            cursorShape: (pressed ? side : sideAt(mouseX)) !== 0 ? Qt.SizeHorCursor : Qt.OpenHandCursor

            function timeAt(x) { return Math.round((x - mouse.edge) / strip.pixelsPerMsec); }
            function sideAt(x) {
                const left = Math.abs(x - mouse.edge - frame.x);
                const right = Math.abs(x - mouse.edge - frame.x - frame.width);
                const reach = Math.min(mouse.edge, Math.max(3, frame.width / 4));
                return Math.min(left, right) > reach ? 0 : left < right ? -1 : 1;
            }
            onPressed: event => {
                strip.forceActiveFocus(Qt.MouseFocusReason);
                const time = mouse.timeAt(event.x);
                mouse.side = mouse.sideAt(event.x);
                if (mouse.side === 0 && (time < strip.timeline.shownFrom || time > strip.timeline.shownTo))
                    strip.timeline.pan(time - (strip.timeline.shownFrom + strip.timeline.shownTo) / 2);
                mouse.offset = (mouse.side > 0 ? strip.timeline.shownTo : strip.timeline.shownFrom) - time;
            }
            onPositionChanged: event => {
                if (!mouse.pressed)
                    return;
                const minimum = 1000; // ms
                const time = mouse.timeAt(event.x) + mouse.offset;
                if (mouse.side < 0)
                    strip.timeline.showTime(Math.max(0, Math.min(time, strip.timeline.shownTo - minimum)), strip.timeline.shownTo);
                else if (mouse.side > 0)
                    strip.timeline.showTime(strip.timeline.shownFrom, Math.min(strip.timeline.length, Math.max(time, strip.timeline.shownFrom + minimum)));
                else
                    strip.timeline.pan(time - strip.timeline.shownFrom);
            }
            onWheel: wheel => strip.zoom(Math.pow(1.25, wheel.angleDelta.y / 120))
        }
    }
    FocusFrame { visible: strip.activeFocus }
}
