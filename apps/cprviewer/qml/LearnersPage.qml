// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// All learners of the library.
FocusScope {
    id: page

    required property LibraryFolder library
    property alias search: search
    signal learnerWanted(string name)

    function focusSearch() {
        search.forceActiveFocus(Qt.ShortcutFocusReason);
        search.selectAll();
    }

    LearnerModel { id: learners; library: page.visible ? page.library : null; text: search.text }

    ColumnLayout {
        anchors.fill: parent
        spacing: Look.gap / 2

        Field {
            id: search
            objectName: "learnerSearch"
            Layout.fillWidth: true
            focus: true
            placeholderText: qsTr("Search learner")
            Keys.onDownPressed: list.forceActiveFocus()
            Keys.onReturnPressed: list.forceActiveFocus()
            Keys.onEscapePressed: search.clear()
        }
        Card {
            Layout.fillWidth: true
            Layout.fillHeight: true

            RowList {
                id: list
                objectName: "learnerList"
                anchors { fill: parent; margins: 1 }
                name: qsTr("Learners")
                model: learners
                onCountChanged: list.choose(Math.min(list.row, list.count - 1))
                onAccepted: row => page.learnerWanted(learners.nameAt(row))

                delegate: ListRow {
                    id: row

                    required property int index
                    required property string name
                    required property int sessions
                    required property string lastText
                    required property string scoreText
                    readonly property string sessionsText: qsTr("%n session(s)", "", row.sessions)

                    width: list.width
                    isChosen: list.row === row.index
                    spoken: [Words.shown(row.name), row.sessionsText, row.lastText, row.scoreText].join(", ")
                    onPicked: {
                        list.forceActiveFocus();
                        list.pick(row.index);
                    }
                    onAccepted: page.learnerWanted(row.name)

                    PageText { width: list.width * 0.45; height: parent.height; horizontalAlignment: Text.AlignLeft; text: Words.shown(row.name); Accessible.ignored: true }
                    PageText { width: list.width * 0.15; height: parent.height; text: row.sessionsText; color: Look.muted; Accessible.ignored: true }
                    PageText { width: list.width * 0.18; height: parent.height; text: row.lastText.length > 0 ? qsTr("last %1").arg(row.lastText) : ""; color: Look.muted; Accessible.ignored: true }
                    PageText { width: list.width * 0.1; height: parent.height; text: row.scoreText; Accessible.ignored: true }
                }
            }
        }
        PageText { text: qsTr("%n learner(s)", "", learners.count); color: Look.muted }
    }
}
