// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import "."

// Which key does what.
AppDialog {
    id: dialog

    title: qsTr("Keys")
    width: Math.min(Math.round(1120 * Look.textUnit), dialog.parent.width - 2 * Look.padding)
    firstItem: closeButton

    readonly property var keys: [
        [qsTr("Ctrl+O"), qsTr("Open a session or a recorded log")],
        [qsTr("Ctrl+N"), qsTr("Start the simulated manikin")],
        [qsTr("Ctrl+S"), qsTr("Save the session")],
        [qsTr("Ctrl+1, Ctrl+2"), qsTr("Live, review")],
        [qsTr("Ctrl+6"), qsTr("Compare with another session")],
        [qsTr("Ctrl+7"), qsTr("Manikins: a class that trains at the same time")],
        [qsTr("1 to 9, Enter, Escape"), qsTr("Open a manikin of the class, and go back")],
        [qsTr("S, E, L"), qsTr("Start, end, name the learner; Shift+S and Shift+E for all")],
        [qsTr("Ctrl+3, 4, 5"), qsTr("Library, class, class list")],
        [qsTr("Ctrl+F, F5"), qsTr("Search the library, read it again")],
        [qsTr("Ctrl+R"), qsTr("Report to take home")],
        [qsTr("F10"), qsTr("Menu")],
        [qsTr("F11"), qsTr("Full screen")],
        [qsTr("Ctrl+L, Ctrl+M"), qsTr("Learner's view, metronome on and off")],
        [qsTr("Tab, Shift+Tab"), qsTr("Next and previous element")],
        [qsTr("Space"), qsTr("Play back and pause")],
        [qsTr("+, −, arrows"), qsTr("Zoom and move along the session")],
        [qsTr("F"), qsTr("Show the whole session")],
        [qsTr("N, P"), qsTr("Next and previous event")],
        [qsTr("Shift+N, Shift+P"), qsTr("Next and previous fault")],
        [qsTr("1 to 9"), qsTr("Remark with one key; T shows which")],
        [qsTr("T"), qsTr("Remark in your words")],
        [qsTr("F2, Del"), qsTr("Correct and remove the chosen remark")],
        [qsTr("O, Shift+arrows"), qsTr("Overlay two sessions, move the time by 1 s")],
        [qsTr("Home, End"), qsTr("Begin and end of the session")]
    ]

    GridLayout {
        Layout.fillWidth: true
        flow: GridLayout.TopToBottom
        rows: Math.ceil(dialog.keys.length / 2)
        columnSpacing: 2 * Look.padding
        rowSpacing: Look.gap

        Repeater {
            model: dialog.keys
            delegate: RowLayout {
                id: line
                required property var modelData
                Layout.fillWidth: true
                Layout.preferredWidth: 1 // both columns are alike

                PageText { Layout.preferredWidth: Math.round(220 * Look.textUnit); text: line.modelData[0]; font.bold: true }
                PageText { Layout.fillWidth: true; Layout.preferredWidth: 1; text: line.modelData[1]; wrapMode: Text.WordWrap }
            }
        }
    }
    buttons: [ActionButton { id: closeButton; text: qsTr("Close"); highlighted: true; onClicked: dialog.close() }]
}
