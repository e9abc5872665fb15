// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Window 2.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// The window for another display. LearnerPlace shows it there.
Window {
    id: window

    required property Viewer viewer
    property CPRData session: null // whichever the learner is at
    property bool isLive: false
    property bool isInterrupted: false
    readonly property bool isFullScreen: window.visibility === Window.FullScreen

    title: qsTr("Learner's view")
    color: Look.page
    minimumWidth: 480
    minimumHeight: 270
    onClosing: close => {
        close.accepted = false; // it goes by the choice
        window.viewer.learnerPlace.isOpen = false;
    }

    LearnerView {
        objectName: "learnerView"
        anchors.fill: parent
        session: window.session
        isLive: window.isLive
        isInterrupted: window.isInterrupted
    }
    MouseArea {
        anchors.fill: parent
        cursorShape: window.isFullScreen ? Qt.BlankCursor : Qt.ArrowCursor
        onDoubleClicked: window.viewer.learnerPlace.toggleFullScreen()
    }
    Shortcut { sequence: "F11"; onActivated: window.viewer.learnerPlace.toggleFullScreen() }
    Shortcut { sequence: "Escape"; enabled: window.isFullScreen; onActivated: window.viewer.learnerPlace.toggleFullScreen() }
}
