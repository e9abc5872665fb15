// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import "."

// Lines of figures or faults, which scroll, also by keyboard.
ListView {
    id: list

    clip: true
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: true
    highlightMoveDuration: 0
    cacheBuffer: 0 // rows made ahead are in the way of a model that shrinks
    highlight: Rectangle { color: list.activeFocus ? Look.chosen : "transparent" }
    ScrollBar.vertical: ScrollBar { }
    Accessible.role: Accessible.Table

    Rectangle {
        parent: list
        anchors.fill: parent
        color: "transparent"
        border { color: Look.accent; width: 2 }
        visible: list.activeFocus
    }
}
