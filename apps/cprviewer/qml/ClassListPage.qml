// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// Who trains today: before the sessions.
FocusScope {
    id: page

    required property Viewer viewer
    readonly property ClassList names: page.viewer.classList
    signal fileWanted()
    signal startWanted()

    Keys.onPressed: event => {
        const row = list.row;
        const actions = {};
        if (row >= 0) {
            actions[Qt.Key_F2] = () => entryDialog.edit(row);
            actions[Qt.Key_Delete] = () => page.names.remove(row);
        }
        if (event.modifiers & Qt.AltModifier || typed.area.activeFocus || !actions[event.key])
            return;
        actions[event.key]();
        event.accepted = true;
    }

    RowLayout {
        anchors.fill: parent
        spacing: Look.gap

        ColumnLayout {
            spacing: Look.gap / 2

            Card {
                Layout.fillWidth: true
                Layout.fillHeight: true

                RowList {
                    id: list
                    objectName: "classList"
                    anchors { fill: parent; margins: 1 }
                    focus: page.names.count > 0
                    name: qsTr("Class list")
                    model: page.names.entries
                    onModelChanged: Qt.callLater(() => list.activeFocus ? list.pick(list.row) : list.choose(list.row)) // the first names come to a list that has the keyboard
                    onAccepted: row => page.names.next = row
                    Keys.onPressed: event => {
                        const step = event.key === Qt.Key_Up ? -1 : event.key === Qt.Key_Down ? 1 : 0;
                        if (!(event.modifiers & Qt.ControlModifier) || step === 0)
                            return;
                        const to = list.row + step;
                        page.names.move(list.row, step);
                        list.choose(to);
                        event.accepted = true;
                    }

                    delegate: ListRow {
                        id: row

                        required property int index
                        required property var modelData
                        readonly property bool isNext: page.names.next === row.index

                        width: list.width
                        isChosen: list.row === row.index
                        spoken: [row.isNext ? qsTr("Next") : "", Words.shown(row.modelData.name), Words.shown(row.modelData.manikin), row.modelData.protocolText,
                                 doneText.text].filter(text => text.length > 0).join(", ")
                        onPicked: {
                            list.forceActiveFocus();
                            list.pick(row.index);
                        }
                        onAccepted: list.accepted(row.index)

                        PageText { width: Math.round(22 * Look.textUnit); height: parent.height; text: row.isNext ? "▶" : ""; color: Look.accent; Accessible.ignored: true }
                        PageText { width: list.width * 0.31; height: parent.height; horizontalAlignment: Text.AlignLeft; text: Words.shown(row.modelData.name); font.bold: row.isNext; Accessible.ignored: true }
                        PageText { width: list.width * 0.2; height: parent.height; text: Words.shown(row.modelData.manikin); color: Look.muted; Accessible.ignored: true }
                        PageText { width: list.width * 0.27; height: parent.height; text: row.modelData.protocolText; color: Look.muted; font.pixelSize: Look.small; Accessible.ignored: true }
                        PageText { id: doneText; width: list.width * 0.12; height: parent.height; text: row.modelData.sessions > 0 ? "✓ " + row.modelData.sessions : ""; Accessible.ignored: true }
                    }
                }
                PageText {
                    anchors.centerIn: parent
                    width: parent.width - 2 * Look.padding
                    visible: page.names.count === 0
                    horizontalAlignment: Text.AlignHCenter
                    wrapMode: Text.WordWrap
                    text: qsTr("Nobody is on the class list. Type names, paste them from a spreadsheet or read a CSV file.")
                    color: Look.muted
                }
            }
            Flow {
                Layout.fillWidth: true
                spacing: Look.gap / 2

                ActionButton { objectName: "makeNext"; enabled: list.row >= 0; text: qsTr("Next"); help: qsTr("The chosen learner is next (Enter)"); onClicked: page.names.next = list.row }
                ActionButton { objectName: "editEntry"; enabled: list.row >= 0; text: qsTr("Correct…"); help: qsTr("Name, manikin and protocol of the chosen learner (F2)"); onClicked: entryDialog.edit(list.row) }
                ActionButton { enabled: list.row > 0; text: "↑"; help: qsTr("Move up (Ctrl+Up)"); onClicked: { page.names.move(list.row, -1); list.choose(list.row - 1); } }
                ActionButton { enabled: list.row >= 0 && list.row < list.count - 1; text: "↓"; help: qsTr("Move down (Ctrl+Down)"); onClicked: { page.names.move(list.row, 1); list.choose(list.row + 1); } }
                ActionButton { objectName: "removeEntry"; enabled: list.row >= 0; text: qsTr("Remove"); help: qsTr("Take the chosen learner from the list (Del)"); onClicked: page.names.remove(list.row) }
            }
        }
        Card {
            Layout.fillWidth: false
            Layout.preferredWidth: Math.round(380 * Look.textUnit)
            Layout.fillHeight: true

            ColumnLayout {
                anchors { fill: parent; margins: Look.padding }
                spacing: Look.gap

                PageText { text: qsTr("Next learner"); font.bold: true }
                PageText { objectName: "nextLearner"; Layout.fillWidth: true; text: page.names.nextText.length > 0 ? page.names.nextText : "–"; wrapMode: Text.WrapAtWordBoundaryOrAnywhere; maximumLineCount: 3 }
                ActionButton {
                    objectName: "startNext"
                    enabled: page.names.count > 0
                    highlighted: true
                    text: qsTr("Start session…")
                    help: qsTr("Start the session of the next learner (Ctrl+N)")
                    onClicked: page.startWanted()
                }
                RowLayout {
                    spacing: Look.gap

                    PageText { text: qsTr("Minutes a session") }
                    NumberField {
                        objectName: "minutes"
                        name: qsTr("Minutes a session")
                        from: 0
                        to: 120
                        value: page.names.minutes
                        zeroText: qsTr("any")
                        onValueModified: page.names.minutes = value
                    }
                }
                PageText {
                    Layout.fillWidth: true
                    text: qsTr("Sessions end after these minutes. The protocol is for simulated ones: a manikin has its own. A recording is played as it is.")
                    wrapMode: Text.WordWrap
                    color: Look.muted
                    font.pixelSize: Look.small
                }
                Rectangle { Layout.fillWidth: true; Layout.preferredHeight: 1; color: Look.frame }
                PageText { Layout.fillWidth: true; text: qsTr("Add learners: name, manikin, protocol"); font.bold: true; wrapMode: Text.WordWrap }
                FieldArea {
                    id: typed
                    objectName: "typedNames"
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    focus: page.names.count === 0
                    name: qsTr("Add learners: name, manikin, protocol")
                    hint: qsTr("Mira Holm; Manikin 1\nJörg Aldane; Manikin 2")
                }
                Flow {
                    Layout.fillWidth: true
                    spacing: Look.gap / 2

                    ActionButton {
                        objectName: "addNames"
                        enabled: typed.text.trim().length > 0
                        text: qsTr("Add")
                        help: qsTr("Add the typed learners")
                        onClicked: {
                            if (page.names.add(typed.text) === 0)
                                return;
                            typed.text = "";
                            list.forceActiveFocus();
                        }
                    }
                    ActionButton { objectName: "readNames"; text: qsTr("Read CSV…"); onClicked: page.fileWanted() }
                    ActionButton { objectName: "restartClass"; enabled: page.names.count > 0; text: qsTr("New day"); help: qsTr("The class begins today, with the first learner"); onClicked: page.names.restart() }
                    ActionButton { objectName: "clearClass"; enabled: page.names.count > 0; text: qsTr("Clear…"); onClicked: clearDialog.open() }
                }
            }
        }
    }
    EntryDialog { id: entryDialog; objectName: "entryDialog"; names: page.names }
    QuestionDialog {
        id: clearDialog
        title: qsTr("Take everybody from the class list?")
        text: qsTr("Stored sessions stay as they are.")
        yes: qsTr("Clear")
        yesAction: () => page.names.clear()
    }
}
