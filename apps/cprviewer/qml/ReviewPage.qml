// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// A session is looked over: everything that happened, how well, and why.
FocusScope {
    id: page

    required property Viewer viewer
    // The timeline and the events stay as they were left while another page is shown. The rest
    // follows nothing that nobody sees.
    readonly property CPRData session: page.viewer.session
    readonly property CPRData seenSession: page.visible ? page.session : null
    property CPREventBase chosen: null
    property int row: -1 // of the chosen event, which may move
    property alias events: eventModel
    property alias timelinePanel: timelinePanel
    property alias sidePanel: sidePanel

    function choose(row) {
        page.chosen = eventModel.eventAt(row);
        page.row = row;
    }
    function follow() { page.choose(eventModel.rowOf(page.chosen)); }
    function pick(row) {
        if (row < 0 || row >= eventModel.count)
            return;
        page.choose(row);
        timelinePanel.goTo(eventModel.data(eventModel.index(row, 0), EventListModel.StartRole));
    }
    function goTo(msecs) {
        timelinePanel.goTo(msecs);
        page.choose(eventModel.rowAt(timelinePanel.position));
    }
    function previous() { page.pick(page.row < 0 ? eventModel.rowAt(timelinePanel.position) : page.row - 1); }
    function next() { page.pick(page.row < 0 ? eventModel.rowAt(timelinePanel.position) + 1 : page.row + 1); }

    // Also an event that the filters leave out.
    function show(event) {
        if (eventModel.rowOf(event) < 0) {
            eventModel.tags = 0;
            eventModel.faultsOnly = false;
        }
        sidePanel.currentIndex = 0;
        page.pick(eventModel.rowOf(event));
    }
    function goToFault(step) {
        const at = page.row >= 0 ? page.row + step : eventModel.rowAt(timelinePanel.position) + (step > 0 ? 1 : 0);
        page.pick(eventModel.faultFrom(at, step));
    }
    function showTime(from, to) {
        const margin = Math.max(2000, (to - from) / 4);
        timelinePanel.timeline.showTime(from - margin, to + margin);
        page.goTo(from);
    }

    onSessionChanged: {
        page.choose(-1);
        timelinePanel.stopPlaying();
        timelinePanel.position = 0;
        timelinePanel.timeline.fit();
    }

    onVisibleChanged: if (!page.visible) timelinePanel.stopPlaying()

    EventListModel {
        id: eventModel
        session: page.session
        onCountChanged: Qt.callLater(page.follow) // when the views have heard of the rows
    }

    Keys.onPressed: event => {
        const actions = {};
        actions[Qt.Key_Space] = () => timelinePanel.togglePlaying();
        actions[Qt.Key_Plus] = () => timelinePanel.zoom(1.25);
        actions[Qt.Key_Equal] = actions[Qt.Key_Plus];
        actions[Qt.Key_Minus] = () => timelinePanel.zoom(0.8);
        actions[Qt.Key_F] = () => timelinePanel.timeline.fit();
        actions[Qt.Key_Left] = () => timelinePanel.pan(-0.1);
        actions[Qt.Key_Right] = () => timelinePanel.pan(0.1);
        actions[Qt.Key_N] = () => page.next();
        actions[Qt.Key_P] = () => page.previous();
        actions[Qt.Key_Home] = () => page.goTo(0);
        actions[Qt.Key_End] = () => page.goTo(timelinePanel.timeline.length);
        if (event.modifiers & Qt.ShiftModifier) {
            actions[Qt.Key_N] = () => page.goToFault(1);
            actions[Qt.Key_P] = () => page.goToFault(-1);
        }
        if (sidePanel.remarkActions.isRemark) {
            actions[Qt.Key_F2] = () => remarkBar.correct(page.chosen);
            actions[Qt.Key_Delete] = () => sidePanel.remarkActions.remove();
        }
        if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier))
            return;
        if (actions[event.key])
            actions[event.key]();
        else if (!remarkBar.takeKey(event.key, timelinePanel.position))
            return;
        event.accepted = true;
    }

    ColumnLayout {
        anchors { fill: parent; margins: Look.padding }
        spacing: Look.gap

        ResultsPanel {
            Layout.fillWidth: true
            session: page.seenSession
            isLive: page.viewer.isLive
        }
        RowLayout {
            Layout.fillHeight: true
            spacing: Look.gap

            TimelinePanel {
                id: timelinePanel
                Layout.fillWidth: true
                Layout.fillHeight: true
                session: page.session
                onPositionChanged: if (isPlaying) page.choose(eventModel.rowAt(position))
                onMoved: time => page.goTo(time)
                onPreviousWanted: page.previous()
                onNextWanted: page.next()
                onPreviousFaultWanted: page.goToFault(-1)
                onNextFaultWanted: page.goToFault(1)
                onRemarkWanted: remarkBar.open(timelinePanel.position)
                onPicked: event => page.show(event)
            }
            ColumnLayout {
                Layout.fillWidth: false
                Layout.preferredWidth: Math.round(410 * Look.textUnit)
                Layout.fillHeight: true
                spacing: Look.gap

                ReplayGauges {
                    objectName: "gauges"
                    Layout.fillWidth: true
                    session: page.seenSession
                    at: timelinePanel.position
                }
                SidePanel {
                    id: sidePanel
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    viewer: page.viewer
                    session: page.seenSession
                    events: eventModel
                    row: page.row
                    chosen: page.chosen
                    onPicked: index => page.pick(index)
                    onTimeWanted: (from, to) => page.showTime(from, to)
                    onCorrectWanted: remark => remarkBar.correct(remark)
                }
            }
        }
    }
    RemarkBar {
        id: remarkBar
        objectName: "remarkBar"
        anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: Look.controlHeight + 4 * Look.gap }
        width: Math.min(implicitWidth, parent.width - 4 * Look.padding)
        viewer: page.viewer
        onRemarked: remark => { if (!timelinePanel.isPlaying) page.show(remark); }
    }
}
