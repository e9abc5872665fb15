// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// The picture of one of two sessions, in a window of time that both share.
Item {
    id: lane

    property alias timeline: timeline
    property alias parts: timeline.parts
    property string letter: ""
    property real textSize: Look.small
    property real gutter: 0 // for the letter
    property bool isRunning: false
    property int end: 0 // ms of session time, where the session ends

    function xAt(msecs) {
        const area = timeline.plotArea;
        const left = timeline.x + area.x;
        const share = (msecs - timeline.shownFrom) / Math.max(1, timeline.shownTo - timeline.shownFrom);
        return left + Math.max(0, Math.min(1, share)) * area.width;
    }

    // Time of which the session has nothing.
    component Outside: Rectangle {
        property string label: ""
        y: timeline.y + timeline.plotArea.y
        height: timeline.plotArea.height
        visible: width > 0
        color: Look.page

        PageText {
            anchors.centerIn: parent
            width: parent.width - Look.gap
            visible: width > 4 * Look.small
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            text: parent.label
            color: Look.muted
            font.pixelSize: Look.small
        }
    }

    TimelineItem {
        id: timeline
        objectName: "timeline" + lane.letter
        anchors { fill: parent; leftMargin: lane.gutter }
        dark: Look.dark
        textSize: lane.textSize
        flagRows: 1
    }
    Outside {
        x: timeline.x + timeline.plotArea.x
        width: lane.xAt(0) - x
        label: qsTr("%1 has not begun").arg(lane.letter)
    }
    Outside {
        objectName: "ended" + lane.letter
        x: lane.xAt(lane.end)
        width: timeline.x + timeline.plotArea.x + timeline.plotArea.width - x
        label: (lane.isRunning ? qsTr("%1 still runs, so far %2") : qsTr("%1 has ended, after %2")).arg(lane.letter).arg(Words.time(lane.end))

        Rectangle { width: 2; height: parent.height; color: Look.text }
    }
    CompareCursor { at: timeline.cursorX; area: timeline.plotArea; parent: timeline }
    PageText {
        anchors { left: parent.left; leftMargin: Look.gap / 2; verticalCenter: parent.verticalCenter }
        text: lane.letter
        font.pixelSize: Look.title
        font.bold: true
        Accessible.ignored: true
    }
}
