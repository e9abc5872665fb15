// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// One learner: how the sessions followed each other.
FocusScope {
    id: page

    required property LibraryFolder library
    required property string learner
    signal openWanted(string file)
    signal backWanted()
    signal renameWanted()

    Keys.onEscapePressed: page.backWanted()
    Keys.onPressed: event => {
        if (event.key !== Qt.Key_F2 || page.library.isCorrecting)
            return;
        page.renameWanted();
        event.accepted = true;
    }

    LibraryModel { id: sessions; library: page.library; learner: page.learner }

    ColumnLayout {
        anchors.fill: parent
        spacing: Look.gap

        RowLayout {
            spacing: Look.gap

            ActionButton {
                objectName: "back"
                text: "‹ " + qsTr("Back")
                help: qsTr("Back to the list (Esc)")
                onClicked: page.backWanted()
            }
            PageText {
                objectName: "learnerName"
                Layout.fillWidth: true
                text: Words.shown(page.learner)
                font { pixelSize: Math.round(24 * Look.unit); bold: true }
            }
            PageText { text: qsTr("%n session(s)", "", sessions.count); color: Look.muted }
            ActionButton {
                objectName: "renameLearner"
                enabled: !page.library.isCorrecting
                text: qsTr("Rename…")
                help: qsTr("Correct the name in all sessions of the learner (F2)")
                onClicked: page.renameWanted()
            }
        }
        Card {
            Layout.fillWidth: true
            Layout.preferredHeight: Math.round(250 * Look.unit)

            TrendItem {
                id: trend
                objectName: "trend"
                anchors { left: parent.left; right: parent.right; top: parent.top; bottom: figures.top; margins: Look.padding; bottomMargin: Look.gap / 2 }
                library: page.library
                learner: page.learner
                dark: Look.dark
                textSize: Look.small
                Accessible.role: Accessible.Chart
                Accessible.name: qsTr("Progress over the sessions")
                Accessible.description: trend.texts.join(". ")
            }
            PageText {
                id: figures
                anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: Look.padding; bottomMargin: Look.gap / 2 }
                text: trend.texts.join("  ·  ")
                color: Look.muted
                font.pixelSize: Math.round(12 * Look.textUnit)
                wrapMode: Text.WordWrap
                maximumLineCount: 2
            }
        }
        Card {
            Layout.fillWidth: true
            Layout.fillHeight: true

            SessionList {
                anchors { fill: parent; margins: 1 }
                focus: true
                model: sessions
                onAccepted: file => page.openWanted(file)
            }
        }
    }
}
