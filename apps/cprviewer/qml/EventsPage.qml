// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import CPRData 1.0
import "."

// The events with filters, and the parameters of the chosen one.
Item {
    id: page

    required property EventListModel events
    required property int row
    required property CPREventBase chosen
    property alias actions: actions.data // on the chosen event
    signal picked(int row)

    function joinedTags() {
        let tags = 0;
        for (let i = 0; i < chips.count; ++i) {
            if (chips.itemAt(i).checked)
                tags |= chips.itemAt(i).tags;
        }
        return tags;
    }

    Flow {
        id: filters
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Look.gap }
        spacing: Look.gap / 2

        Repeater {
            id: chips
            model: [
                { name: qsTr("Compressions"), tags: CPREventBase.TagComp },
                { name: qsTr("Ventilations"), tags: CPREventBase.TagVent },
                { name: qsTr("Pauses"), tags: CPREventBase.TagInactivity },
                { name: qsTr("AED and ECG"), tags: CPREventBase.TagAed | CPREventBase.TagCprd },
                { name: qsTr("Events"), tags: CPREventBase.TagCprGui },
                { name: qsTr("Others"), tags: CPREventBase.TagOther }
            ]
            delegate: FilterChip {
                required property var modelData
                text: modelData.name
                tags: modelData.tags
                onToggled: page.events.tags = page.joinedTags()
            }
        }
        FilterChip {
            id: faultsChip
            objectName: "faultsOnly"
            text: qsTr("Faults only")
            onToggled: page.events.faultsOnly = faultsChip.checked
        }
    }
    // Filters can be taken off by others.
    Connections {
        target: page.events
        function onTagsChanged() {
            faultsChip.checked = page.events.faultsOnly;
            for (let i = 0; i < chips.count; ++i)
                chips.itemAt(i).checked = (page.events.tags & chips.itemAt(i).tags) === chips.itemAt(i).tags;
        }
    }
    PageText {
        id: count
        objectName: "eventCount"
        anchors { left: filters.left; top: filters.bottom; topMargin: Look.gap / 2 }
        text: qsTr("%n event(s)", "", page.events.count)
        color: Look.muted
        font.pixelSize: Look.small
    }
    ListView {
        id: list
        objectName: "eventList"
        anchors { left: parent.left; right: parent.right; top: count.bottom; topMargin: Look.gap / 2; bottom: line.top }
        clip: true
        model: page.events
        currentIndex: page.row
        highlightMoveDuration: 0
        cacheBuffer: 0 // rows made ahead are in the way of a model that shrinks
        keyNavigationEnabled: false
        onHeightChanged: list.positionViewAtIndex(list.currentIndex, ListView.Contain)
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        ScrollBar.vertical: ScrollBar { }
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Events")

        readonly property int pageRows: Math.max(1, Math.floor(list.height / Look.rowHeight) - 1)

        function pick(row) { page.picked(Math.max(0, Math.min(list.count - 1, row))); }

        Keys.onUpPressed: list.pick(page.row - 1)
        Keys.onDownPressed: list.pick(page.row + 1)
        Keys.onPressed: event => {
            const targets = {};
            targets[Qt.Key_PageUp] = page.row - list.pageRows;
            targets[Qt.Key_PageDown] = page.row + list.pageRows;
            targets[Qt.Key_Home] = 0;
            targets[Qt.Key_End] = list.count - 1;
            if (targets[event.key] === undefined)
                return;
            list.pick(targets[event.key]);
            event.accepted = true;
        }

        delegate: EventRow {
            width: list.width
            isChosen: index === page.row
            onPicked: row => {
                list.forceActiveFocus();
                page.picked(row);
            }
        }
        Rectangle {
            anchors.fill: parent
            color: "transparent"
            border { color: Look.accent; width: 2 }
            visible: list.activeFocus
        }
    }
    Rectangle {
        id: line
        anchors { left: parent.left; right: parent.right; bottom: parameters.top }
        height: 1
        color: Look.frame
    }
    FactsPage {
        id: parameters
        title: qsTr("Parameters of the event")
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: Math.round(Math.min((page.chosen === null ? 48 : 220) * Look.unit, 0.42 * page.height))

        PageText {
            visible: page.chosen === null
            topPadding: Look.gap
            text: qsTr("Choose an event to see its parameters.")
            color: Look.muted
        }
        Facts {
            objectName: "parameters"
            width: parent.width
            title: page.chosen !== null ? Words.eventType(page.chosen.type) : ""
            model: ParameterModel { event: page.chosen }
        }
        Item {
            id: actions
            width: parent.width
            height: childrenRect.height
        }
    }
}
