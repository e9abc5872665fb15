// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRViewer 1.0
import "."

// What the simulated manikin is to do.
AppDialog {
    id: dialog

    property var scenarios: []
    property ClassList names: null
    readonly property bool hasNext: dialog.names !== null && dialog.names.count > 0
    signal chosen(string name, int seed, bool isNext)

    title: qsTr("Simulated manikin")
    text: qsTr("A simulated rescuer trains, in real time.")
    width: Math.round(640 * Look.textUnit)

    function accept() {
        dialog.close();
        dialog.chosen(dialog.scenarios[list.currentIndex].name, seed.value, dialog.hasNext && nextChip.checked);
    }
    firstItem: list

    ListView {
        id: list
        objectName: "scenarios"
        Layout.fillWidth: true
        Layout.preferredHeight: Math.min(list.contentHeight, Math.round(480 * Look.unit))
        clip: true
        model: dialog.scenarios
        currentIndex: 2
        keyNavigationEnabled: true
        activeFocusOnTab: true
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar { }
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Scenario")

        delegate: Rectangle {
            id: row

            required property int index
            required property var modelData
            readonly property bool isCurrent: list.currentIndex === row.index

            width: list.width
            height: Math.round(52 * Look.textUnit)
            radius: Look.radius / 2
            color: row.isCurrent ? Look.chosen : "transparent"
            border.color: Look.accent
            border.width: row.isCurrent && list.activeFocus ? 2 : 0
            Accessible.role: Accessible.ListItem
            Accessible.name: row.modelData.title + ": " + row.modelData.description
            Accessible.selected: row.isCurrent

            Column {
                anchors { left: parent.left; right: parent.right; leftMargin: Look.gap; rightMargin: Look.gap; verticalCenter: parent.verticalCenter }

                PageText { width: parent.width; text: row.modelData.title; font.bold: true; Accessible.ignored: true }
                PageText { width: parent.width; text: row.modelData.description; color: Look.muted; font.pixelSize: Look.small; Accessible.ignored: true }
            }
            MouseArea {
                anchors.fill: parent
                onClicked: list.currentIndex = row.index
                onDoubleClicked: dialog.accept()
            }
        }
    }
    RowLayout {
        spacing: Look.gap
        visible: dialog.hasNext

        FilterChip {
            id: nextChip
            objectName: "forNext"
            checked: true
            text: qsTr("For the next learner")
        }
        PageText { objectName: "scenarioNext"; Layout.fillWidth: true; text: dialog.names !== null ? dialog.names.nextText : "" }
    }
    RowLayout {
        spacing: Look.gap

        PageText { text: qsTr("Seed") }
        NumberField {
            id: seed
            objectName: "seed"
            name: qsTr("Seed")
            from: 0
            to: 999999
            value: 1
        }
        PageText {
            Layout.fillWidth: true
            text: qsTr("The same seed gives the same session.")
            color: Look.muted
            font.pixelSize: Look.small
        }
    }
    buttons: [
        ActionButton { objectName: "start"; text: qsTr("Start"); highlighted: true; onClicked: dialog.accept() },
        ActionButton { text: qsTr("Cancel"); onClicked: dialog.close() }
    ]
}
