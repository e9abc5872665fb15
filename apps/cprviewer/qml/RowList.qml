// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import "."

// Rows of which one is chosen, by keyboard or mouse.
ListView {
    id: list

    property int row: -1
    property real rowHeight: Look.rowHeight
    property string name: ""
    readonly property int pageRows: Math.max(1, Math.floor(list.height / list.rowHeight) - 1)
    signal picked(int row)
    signal accepted(int row)

    function choose(row) {
        list.row = list.count > 0 ? Math.max(-1, Math.min(list.count - 1, row)) : -1;
        list.currentIndex = list.row;
        if (list.row >= 0)
            list.positionViewAtIndex(list.row, ListView.Contain);
    }
    function pick(row) {
        list.choose(Math.max(0, row));
        list.picked(list.row);
    }

    clip: true
    currentIndex: -1
    highlightMoveDuration: 0
    cacheBuffer: 0
    keyNavigationEnabled: false
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: true
    ScrollBar.vertical: ScrollBar { }
    Accessible.role: Accessible.List
    Accessible.name: list.name
    onActiveFocusChanged: if (list.activeFocus && list.row < 0 && list.count > 0) list.pick(0)

    Keys.onReturnPressed: if (list.row >= 0) list.accepted(list.row)
    Keys.onEnterPressed: if (list.row >= 0) list.accepted(list.row)
    Keys.onPressed: event => {
        const targets = {};
        targets[Qt.Key_Up] = list.row - 1;
        targets[Qt.Key_Down] = list.row + 1;
        targets[Qt.Key_PageUp] = list.row - list.pageRows;
        targets[Qt.Key_PageDown] = list.row + list.pageRows;
        targets[Qt.Key_Home] = 0;
        targets[Qt.Key_End] = list.count - 1;
        if (targets[event.key] === undefined || (event.modifiers & (Qt.ControlModifier | Qt.AltModifier)))
            return;
        list.pick(targets[event.key]);
        event.accepted = true;
    }

    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border { color: Look.accent; width: 2 }
        visible: list.activeFocus
    }
}
