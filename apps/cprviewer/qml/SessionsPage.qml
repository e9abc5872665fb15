// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// All sessions of the library: searched, filtered and put in order.
FocusScope {
    id: page

    required property LibraryFolder library
    readonly property var scores: [[-1, -1], [75, -1], [50, 74], [0, 49]]
    property alias model: sessions
    property alias search: search
    signal openWanted(string file)
    signal learnerWanted(string name)
    signal classWanted(string day)
    signal correctWanted(string file)

    function focusSearch() {
        search.forceActiveFocus(Qt.ShortcutFocusReason);
        search.selectAll();
    }

    LibraryModel {
        id: sessions
        library: page.library
        text: search.text
        day: day.text
        protocol: protocol.currentIndex - 1
        minScore: page.scores[score.currentIndex][0]
        maxScore: page.scores[score.currentIndex][1]
    }
    Keys.onPressed: event => {
        const actions = {};
        actions[Qt.Key_L] = () => learnerButton.clicked();
        actions[Qt.Key_C] = () => classButton.clicked();
        actions[Qt.Key_F2] = () => correctButton.clicked();
        if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier) || list.file.length === 0 || !actions[event.key])
            return;
        actions[event.key]();
        event.accepted = true;
    }

    ColumnLayout {
        anchors.fill: parent
        spacing: Look.gap / 2

        RowLayout {
            spacing: Look.gap

            Field {
                id: search
                objectName: "search"
                Layout.fillWidth: true
                focus: true
                placeholderText: qsTr("Search learner, file, manikin or remark")
                Keys.onDownPressed: list.focusRows()
                Keys.onReturnPressed: list.focusRows()
                Keys.onEscapePressed: search.clear()
            }
            Field {
                id: day
                objectName: "day"
                Layout.preferredWidth: Math.round(150 * Look.textUnit)
                placeholderText: qsTr("Day or month")
                isWrong: sessions.isDayUnknown
                Accessible.description: sessions.isDayUnknown ? qsTr("No day") : qsTr("A day, a month or a year: 2026-03-02, 2026-03, 2026")
                Keys.onDownPressed: list.focusRows()
                Keys.onEscapePressed: day.clear()
            }
            Choice {
                id: protocol
                objectName: "protocol"
                Layout.preferredWidth: Math.round(215 * Look.textUnit)
                name: qsTr("Protocol")
                model: [qsTr("All protocols")].concat([0, 1, 2, 3, 4, 5].map(number => Words.protocol(number)))
            }
            Choice {
                id: score
                objectName: "score"
                Layout.preferredWidth: Math.round(180 * Look.textUnit)
                name: qsTr("Score")
                model: [qsTr("All scores"), qsTr("From 75 %"), qsTr("50 to 74 %"), qsTr("Below 50 %")]
            }
        }
        Card {
            Layout.fillWidth: true
            Layout.fillHeight: true

            SessionList {
                id: list
                objectName: "sessions"
                anchors { fill: parent; margins: 1 }
                model: sessions
                onAccepted: file => page.openWanted(file)
            }
            PageText {
                anchors.centerIn: parent
                visible: sessions.count === 0
                text: page.library.isScanning ? qsTr("The folder is being read…") : qsTr("No session found.")
                color: Look.muted
            }
        }
        RowLayout {
            spacing: Look.gap

            PageText {
                objectName: "sessionCount"
                Layout.fillWidth: true
                text: list.reason.length > 0 ? "⚠ " + Words.shown(list.reason) : qsTr("%n session(s)", "", sessions.count)
                color: list.reason.length > 0 ? Look.fault : Look.muted
            }
            ActionButton {
                id: correctButton
                objectName: "correctLearners"
                enabled: list.file.length > 0 && !page.library.isCorrecting
                text: qsTr("Learners…")
                help: qsTr("Correct the learners of the chosen session (F2)")
                onClicked: page.correctWanted(list.file)
            }
            ActionButton {
                id: learnerButton
                objectName: "learnerProgress"
                enabled: list.file.length > 0
                text: qsTr("Progress")
                help: qsTr("All sessions of the learner (L)")
                onClicked: {
                    const names = page.library.learnersOf(list.file);
                    if (names.length > 0)
                        page.learnerWanted(names[0]);
                }
            }
            ActionButton {
                id: classButton
                objectName: "classOfDay"
                enabled: list.day.length > 0
                text: qsTr("Class of the day")
                help: qsTr("All learners of that day (C)")
                onClicked: page.classWanted(list.day)
            }
            ActionButton {
                objectName: "openSession"
                enabled: list.file.length > 0
                highlighted: true
                text: qsTr("Open")
                help: qsTr("Open the chosen session (Enter)")
                onClicked: page.openWanted(list.file)
            }
        }
    }
}
