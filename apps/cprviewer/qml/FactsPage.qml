// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import "."

// A column that scrolls, also by keyboard.
Flickable {
    id: page

    property string title: "" // what a screen reader calls it
    default property alias content: column.data

    contentHeight: column.height
    clip: true
    boundsBehavior: Flickable.StopAtBounds
    activeFocusOnTab: true
    Accessible.role: Accessible.Pane
    Accessible.name: page.title
    ScrollBar.vertical: ScrollBar { }

    function scroll(distance) {
        page.contentY = Math.max(0, Math.min(page.contentHeight - page.height, page.contentY + distance));
    }
    // Scrolls so far that all of an item in the column is seen.
    function reveal(item) {
        const top = item.mapToItem(column, 0, 0).y;
        page.scroll(Math.min(0, top - page.contentY)
                    + Math.max(0, top + item.height - page.contentY - page.height));
    }
    Keys.onUpPressed: page.scroll(-Look.controlHeight)
    Keys.onDownPressed: page.scroll(Look.controlHeight)
    Keys.onPressed: event => {
        if (event.key === Qt.Key_PageUp || event.key === Qt.Key_PageDown) {
            page.scroll(event.key === Qt.Key_PageUp ? -page.height : page.height);
            event.accepted = true;
        }
    }

    Column {
        id: column
        x: Look.gap
        width: page.width - 2 * Look.gap - Look.gap / 2
        bottomPadding: Look.gap
    }
    Rectangle {
        parent: page
        anchors.fill: parent
        color: "transparent"
        border { color: Look.accent; width: 2 }
        radius: Look.radius
        visible: page.activeFocus
    }
}
