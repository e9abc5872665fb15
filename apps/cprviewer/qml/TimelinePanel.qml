// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// The picture of the session with zoom, pan and a time that can be moved and played back.
Card {
    id: panel

    property alias session: timeline.session
    property alias timeline: timeline
    property int position: 0 // ms of session time
    readonly property bool isPlaying: playing.running
    property real speed: 1

    signal moved(int msecs) // the user has gone to that time
    signal previousWanted()
    signal nextWanted()
    signal previousFaultWanted()
    signal nextFaultWanted()
    signal remarkWanted()
    signal picked(CPREventBase event) // the user has pointed at it

    function togglePlaying() {
        if (panel.isPlaying)
            panel.stopPlaying();
        else
            panel.startPlaying();
    }
    function startPlaying() {
        if (panel.position >= timeline.length)
            panel.position = 0;
        playing.from = panel.position;
        playing.to = timeline.length;
        playing.duration = Math.max(1, (timeline.length - panel.position) / panel.speed);
        playing.start();
    }
    function stopPlaying() { playing.stop(); }
    function goTo(msecs) {
        playing.stop();
        panel.position = Math.max(0, Math.min(timeline.length, msecs));
        timeline.reveal(panel.position);
    }
    function centre() {
        const x = timeline.cursorX;
        const area = timeline.plotArea;
        return x >= area.left && x <= area.right ? x : (area.left + area.right) / 2;
    }
    function zoom(factor) { timeline.zoom(factor, panel.centre()); }
    function pan(share) { timeline.pan((timeline.shownTo - timeline.shownFrom) * share); }

    onPositionChanged: {
        // A window at a time, so that what comes is seen and the picture is drawn seldom.
        if (panel.isPlaying && (panel.position < timeline.shownFrom || panel.position > timeline.shownTo))
            timeline.pan(panel.position - timeline.shownFrom);
    }

    NumberAnimation { id: playing; target: panel; property: "position" }

    Item {
        id: view
        objectName: "timelineView"
        anchors { left: parent.left; right: parent.right; top: parent.top; bottom: overview.top; margins: Look.gap; bottomMargin: overview.isZoomed ? Look.gap / 2 : Look.gap }
        activeFocusOnTab: true
        focus: true
        Accessible.role: Accessible.Chart
        Accessible.name: qsTr("Timeline from %1 to %2, at %3").arg(Words.time(timeline.shownFrom))
                         .arg(Words.time(timeline.shownTo)).arg(Words.time(panel.position, true))
        Accessible.focusable: true

        Keys.onLeftPressed: panel.pan(-0.1)
        Keys.onRightPressed: panel.pan(0.1)
        Keys.onUpPressed: panel.zoom(1.25)
        Keys.onDownPressed: panel.zoom(0.8)

        TimelineItem {
            id: timeline
            objectName: "timeline"
            anchors.fill: parent
            dark: Look.dark
            textSize: Look.small
            cursor: panel.position
        }
        Rectangle {
            visible: timeline.cursorX >= timeline.plotArea.left && timeline.cursorX <= timeline.plotArea.right
            x: Math.round(timeline.cursorX) - 1
            y: timeline.plotArea.y
            width: Math.max(2, Math.round(2 * Look.unit)) + 2
            height: timeline.plotArea.height
            color: Look.colors.cursor
            border { color: Look.card; width: 1 } // keeps it apart from what it crosses
        }
        FocusFrame { visible: view.activeFocus }
        MouseArea {
            anchors.fill: parent
            property real pressedX: 0
            property real lastX: 0

            onPressed: mouse => {
                view.forceActiveFocus();
                pressedX = lastX = mouse.x;
            }
            onPositionChanged: mouse => {
                timeline.pan(timeline.timeAt(lastX) - timeline.timeAt(mouse.x));
                lastX = mouse.x;
            }
            onClicked: mouse => {
                if (Math.abs(mouse.x - pressedX) >= 4)
                    return;
                const event = timeline.eventAt(mouse.x, mouse.y);
                if (event !== null)
                    panel.picked(event);
                else
                    panel.moved(timeline.timeAt(mouse.x));
            }
            onWheel: wheel => {
                const steps = wheel.angleDelta.y / 120;
                if (wheel.modifiers & Qt.ShiftModifier || wheel.angleDelta.x !== 0)
                    panel.pan(-0.1 * (steps + wheel.angleDelta.x / 120));
                else
                    timeline.zoom(Math.pow(1.25, steps), wheel.x);
            }
        }
    }
    OverviewStrip {
        id: overview
        objectName: "overviewStrip"
        anchors { left: view.left; right: view.right; bottom: bar.top; bottomMargin: overview.isZoomed ? Look.gap : 0 }
        timeline: timeline
        position: panel.position
    }
    RowLayout {
        id: bar
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: Look.gap }
        spacing: Look.gap / 2

        ActionButton {
            objectName: "play"
            highlighted: true
            Layout.minimumWidth: Math.round(104 * Look.unit)
            text: panel.isPlaying ? qsTr("Pause") : qsTr("Play")
            help: panel.isPlaying ? qsTr("Stop the playback (space)") : qsTr("Play the session back (space)")
            onClicked: panel.togglePlaying()
        }
        ActionButton {
            objectName: "speed"
            text: qsTr("%1×").arg(panel.speed)
            help: qsTr("Speed of the playback")
            onClicked: {
                const wasPlaying = panel.isPlaying;
                panel.stopPlaying();
                panel.speed = panel.speed >= 8 ? 1 : panel.speed * 2;
                if (wasPlaying)
                    panel.startPlaying();
            }
        }
        ActionButton { text: "◀"; help: qsTr("Previous event (P)"); onClicked: panel.previousWanted() }
        ActionButton { text: "▶"; help: qsTr("Next event (N)"); onClicked: panel.nextWanted() }
        ActionButton { objectName: "previousFault"; text: "◀ ✗"; help: qsTr("Previous fault (Shift+P)"); onClicked: panel.previousFaultWanted() }
        ActionButton { objectName: "nextFault"; text: "✗ ▶"; help: qsTr("Next fault (Shift+N)"); onClicked: panel.nextFaultWanted() }
        PageText {
            id: positionText
            objectName: "position"
            readonly property string time: Words.time(panel.position, true)
            readonly property string both: qsTr("%1 of %2").arg(positionText.time).arg(Words.time(timeline.length))
            Layout.fillWidth: true
            Layout.minimumWidth: Math.ceil(timeRoom.advanceWidth) + Look.gap
            Layout.preferredWidth: Layout.minimumWidth // the rest is what others leave
            leftPadding: Look.gap
            text: room.advanceWidth <= positionText.width - Look.gap ? positionText.both : positionText.time
            Accessible.name: positionText.both
            font.pixelSize: Look.title
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: Look.small

            TextMetrics { id: room; text: positionText.both; font { family: positionText.font.family; pixelSize: Look.small } }
            TextMetrics { id: timeRoom; text: positionText.time; font { family: positionText.font.family; pixelSize: Look.normal } }
        }
        PageText {
            objectName: "lost"
            visible: timeline.lost > 0
            Layout.fillWidth: true
            Layout.maximumWidth: Math.ceil(implicitWidth)
            Layout.minimumWidth: 0
            text: qsTr("%1 s not received").arg(Number(timeline.lost / 1000).toLocaleString(Qt.locale(), "f", 1))
            color: Look.muted
            font.pixelSize: Look.small
        }
        ActionButton { objectName: "remark"; text: "⚑"; help: qsTr("Remark on this time (T)"); onClicked: panel.remarkWanted() }
        ActionButton { text: "−"; help: qsTr("Show more time (−)"); onClicked: panel.zoom(0.8) }
        ActionButton { text: "+"; help: qsTr("Show less time (+)"); onClicked: panel.zoom(1.25) }
        ActionButton { objectName: "fit"; text: qsTr("Fit"); help: qsTr("Show the whole session (F)"); onClicked: timeline.fit() }
    }
}
