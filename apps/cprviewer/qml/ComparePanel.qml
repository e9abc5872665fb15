// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// The pictures of two sessions over one time axis: one zoom, one cursor, one window of time.
Card {
    id: panel

    required property ComparisonModel comparison
    readonly property CPRData session: panel.comparison.session
    readonly property CPRData other: panel.comparison.other
    property CPRData runningSession: null // null when both are over
    property bool isOverlaid: false
    property int position: 0 // ms of session time, of the first session
    readonly property int commonPosition: panel.position - panel.comparison.zero
    readonly property TimelineItem lead: upper.timeline // has the window, also while it is not seen
    readonly property int shift: panel.comparison.otherZero - panel.comparison.zero

    function goTo(common) {
        const time = Math.max(panel.comparison.begin, Math.min(panel.comparison.end, common));
        panel.position = time + panel.comparison.zero;
        panel.lead.reveal(panel.position);
    }
    function step(msecs) { panel.goTo(panel.commonPosition + msecs); }
    function zoom(factor) {
        const isShown = panel.position >= panel.lead.shownFrom && panel.position <= panel.lead.shownTo;
        panel.lead.zoomAt(factor, isShown ? panel.position : (panel.lead.shownFrom + panel.lead.shownTo) / 2);
    }
    function pan(share) { panel.lead.pan((panel.lead.shownTo - panel.lead.shownFrom) * share); }
    function fit() { panel.lead.fit(); }

    component Choice: FilterChip {
        Accessible.role: Accessible.RadioButton
    }

    // Where a session ends, in the picture of both.
    component EndMark: Rectangle {
        property string letter: ""
        property int end: 0 // ms of session time, of the first session
        property CPRData source: null
        readonly property real share: (end - overlay.shownFrom) / Math.max(1, overlay.shownTo - overlay.shownFrom)

        objectName: "end" + letter
        visible: share > 0 && share < 1 && (source === null || source !== panel.runningSession)
        x: Math.round(overlay.plotArea.x + share * overlay.plotArea.width)
        y: overlay.plotArea.y
        width: 1
        height: overlay.plotArea.height
        color: Look.text

        PageText {
            x: parent.share < 0.5 ? Look.gap / 3 : -width - Look.gap / 3
            y: Look.gap / 3
            text: qsTr("%1 ends").arg(parent.letter)
            color: Look.muted
            font.pixelSize: Look.small
        }
    }

    Flow {
        id: choices
        anchors { left: parent.left; right: parent.right; top: parent.top; leftMargin: Look.gap; rightMargin: Look.gap; topMargin: Look.gap / 2 }
        spacing: Look.gap / 2

        ButtonGroup { buttons: [stacked, overlaid] }
        ButtonGroup { buttons: [fromStart, fromCompression] }
        Choice {
            id: stacked
            objectName: "stacked"
            text: qsTr("One above the other")
            checked: !panel.isOverlaid
            onClicked: panel.isOverlaid = false
        }
        Choice {
            id: overlaid
            objectName: "overlaid"
            text: qsTr("Overlaid")
            checked: panel.isOverlaid
            onClicked: panel.isOverlaid = true
        }
        Item { width: Look.gap; height: 1 }
        Choice {
            id: fromStart
            objectName: "fromStart"
            text: qsTr("From the start")
            checked: panel.comparison.alignment === ComparisonModel.Start
            onClicked: panel.comparison.alignment = ComparisonModel.Start
        }
        Choice {
            id: fromCompression
            objectName: "fromCompression"
            enabled: panel.comparison.canAlignCompressions
            opacity: enabled ? 1 : 0.5
            text: qsTr("From the first compression")
            checked: panel.comparison.alignment === ComparisonModel.FirstCompression
            onClicked: panel.comparison.alignment = ComparisonModel.FirstCompression
        }
    }
    Item {
        id: view
        objectName: "compareView"
        anchors { left: parent.left; right: parent.right; top: choices.bottom; bottom: bar.top; leftMargin: Look.gap; rightMargin: Look.gap; topMargin: Look.gap / 2; bottomMargin: Look.gap / 3 }
        readonly property real textSize: Math.max(10, Math.round(12 * Look.textUnit)) // two pictures have little room
        readonly property real gutter: Math.round(24 * Look.unit)
        // Both pictures have the same parts. Faults matter more than rates, whose mean stands beside the pictures.
        readonly property int parts: upper.height < 26 * view.textSize
            ? TimelineItem.Flags | TimelineItem.Depth | TimelineItem.Faults | TimelineItem.Volume | TimelineItem.TimeAxis
            : TimelineItem.AllLanes
        activeFocusOnTab: true
        focus: true
        Accessible.role: Accessible.Chart
        Accessible.name: qsTr("Both sessions from %1 to %2, at %3")
                         .arg(Words.time(panel.lead.shownFrom - panel.comparison.zero))
                         .arg(Words.time(panel.lead.shownTo - panel.comparison.zero))
                         .arg(Words.time(panel.commonPosition, true))
        Accessible.focusable: true

        Keys.onUpPressed: panel.zoom(1.25)
        Keys.onDownPressed: panel.zoom(0.8)

        CompareLane {
            id: upper
            width: parent.width
            height: (parent.height - lower.axisHeight) / 2
            visible: !panel.isOverlaid
            letter: "A"
            isRunning: panel.runningSession !== null && panel.runningSession === panel.session
            end: panel.comparison.length
            gutter: view.gutter
            textSize: view.textSize
            parts: view.parts & ~TimelineItem.TimeAxis
            timeline.session: panel.session
            timeline.zero: panel.comparison.zero
            timeline.earliest: panel.comparison.begin + panel.comparison.zero
            timeline.latest: panel.comparison.end + panel.comparison.zero
            timeline.cursor: panel.position
        }
        CompareLane {
            id: lower
            readonly property real axisHeight: Math.round(1.9 * view.textSize)
            anchors { left: parent.left; right: parent.right; top: upper.bottom; bottom: parent.bottom }
            visible: !panel.isOverlaid
            letter: "B"
            isRunning: panel.runningSession !== null && panel.runningSession === panel.other
            gutter: view.gutter
            textSize: view.textSize
            parts: view.parts
            end: panel.comparison.otherLength
            timeline.session: panel.other
            timeline.zero: panel.comparison.otherZero
            timeline.earliest: panel.lead.earliest + panel.shift
            timeline.latest: panel.lead.latest + panel.shift
            timeline.from: panel.lead.shownFrom + panel.shift
            timeline.to: panel.lead.shownTo + panel.shift
            timeline.cursor: panel.position + panel.shift
        }
        OverlayItem {
            id: overlay
            objectName: "overlay"
            anchors { fill: parent; leftMargin: view.gutter }
            visible: panel.isOverlaid
            dark: Look.dark
            textSize: view.textSize
            session: panel.session
            other: panel.other
            zero: panel.comparison.zero
            otherZero: panel.comparison.otherZero
            earliest: panel.lead.earliest
            latest: panel.lead.latest
            from: panel.lead.shownFrom
            to: panel.lead.shownTo
            cursor: panel.position

            EndMark { letter: "A"; source: panel.session; end: panel.comparison.length }
            EndMark { letter: "B"; source: panel.other; end: panel.comparison.otherLength - panel.shift }
            CompareCursor { at: overlay.cursorX; area: overlay.plotArea }
        }
        FocusFrame { visible: view.activeFocus }
        MouseArea {
            anchors.fill: parent
            property real pressedX: 0
            property real lastX: 0

            // Of the first session.
            function timeAt(x) { return (panel.isOverlaid ? overlay : panel.lead).timeAt(x - view.gutter); }

            onPressed: mouse => {
                view.forceActiveFocus();
                pressedX = lastX = mouse.x;
            }
            onPositionChanged: mouse => {
                panel.lead.pan(timeAt(lastX) - timeAt(mouse.x));
                lastX = mouse.x;
            }
            onClicked: mouse => {
                if (Math.abs(mouse.x - pressedX) < 4)
                    panel.goTo(timeAt(mouse.x) - panel.comparison.zero);
            }
            onWheel: wheel => {
                const steps = wheel.angleDelta.y / 120;
                if (wheel.modifiers & Qt.ShiftModifier || wheel.angleDelta.x !== 0)
                    panel.pan(-0.1 * (steps + wheel.angleDelta.x / 120));
                else
                    panel.lead.zoomAt(Math.pow(1.25, steps), timeAt(wheel.x));
            }
        }
    }
    RowLayout {
        id: bar
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; leftMargin: Look.gap; rightMargin: Look.gap; bottomMargin: Look.gap / 2 }
        spacing: Look.gap / 2

        PageText {
            objectName: "comparePosition"
            text: qsTr("%1 of %2").arg(Words.time(panel.commonPosition, true)).arg(Words.time(panel.comparison.end))
            font.pixelSize: Look.title
        }
        PageText {
            objectName: "sessionPositions"
            Layout.fillWidth: true
            leftPadding: Look.gap
            text: panel.shift === 0 && panel.comparison.zero === 0 ? ""
                  : qsTr("A at %1, B at %2").arg(Words.time(panel.position, true)).arg(Words.time(panel.position + panel.shift, true))
            color: Look.muted
            font.pixelSize: Look.small
        }
        ActionButton { text: "−"; help: qsTr("Show more time (−)"); onClicked: panel.zoom(0.8) }
        ActionButton { text: "+"; help: qsTr("Show less time (+)"); onClicked: panel.zoom(1.25) }
        ActionButton { text: qsTr("Fit"); help: qsTr("Show both sessions (F)"); onClicked: panel.fit() }
    }
}
