// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// Sessions of a library, in the order of a column.
FocusScope {
    id: panel

    required property LibraryModel model
    property bool hasLearners: true
    property string file: "" // the chosen one
    readonly property string day: panel.file.length > 0 && list.row >= 0
                                  ? panel.model.data(panel.model.index(list.row, 0), LibraryModel.DayRole) : ""
    readonly property string reason: panel.file.length > 0 && list.row >= 0
                                     ? panel.model.data(panel.model.index(list.row, 0), LibraryModel.ReasonRole) : ""
    property alias list: list
    signal accepted(string file)

    readonly property var widths: {
        const unit = Look.textUnit, fixed = [165, 0, 215, 72, 84, 185].map(width => Math.round(width * unit));
        fixed[1] = panel.hasLearners ? Math.max(60, panel.width - fixed.reduce((sum, width) => sum + width) - 7 * Look.gap) : 0;
        if (!panel.hasLearners)
            fixed[2] = Math.max(60, panel.width - fixed[0] - fixed[3] - fixed[4] - fixed[5] - 6 * Look.gap);
        return fixed;
    }

    // Where the keyboard was before in this list, a head perhaps, does not matter to who steps into its rows.
    function focusRows() {
        list.forceActiveFocus(Qt.TabFocusReason);
    }
    // The chosen session stays chosen when others come and go.
    function follow() {
        const row = panel.model.rowOf(panel.file, list.row);
        list.choose(row >= 0 ? row : Math.min(list.row, list.count - 1));
        panel.file = panel.model.fileAt(list.row);
    }
    Connections {
        target: panel.model
        function onCountChanged() { panel.follow(); }
        function onDataChanged() { panel.follow(); }
    }

    Row {
        id: heads
        x: Look.gap
        spacing: Look.gap
        Keys.onDownPressed: panel.focusRows()

        SortHead { objectName: "sortStart"; width: panel.widths[0]; model: panel.model; by: LibraryModel.Start; startsDescending: true; text: qsTr("Begin") }
        SortHead { objectName: "sortLearner"; visible: panel.hasLearners; width: panel.widths[1]; model: panel.model; by: LibraryModel.Learner; text: qsTr("Learners") }
        SortHead { width: panel.widths[2]; model: panel.model; by: LibraryModel.Protocol; text: qsTr("Protocol") }
        SortHead { width: panel.widths[3]; model: panel.model; by: LibraryModel.Length; startsDescending: true; text: qsTr("Length") }
        SortHead { objectName: "sortScore"; width: panel.widths[4]; model: panel.model; by: LibraryModel.Score; startsDescending: true; text: qsTr("Score") }
        PageText { width: panel.widths[5]; height: Look.controlHeight; text: qsTr("File"); color: Look.muted; font.pixelSize: Look.small }
    }
    Rectangle { id: line; anchors { left: parent.left; right: parent.right; top: heads.bottom } height: 1; color: Look.frame }
    RowList {
        id: list
        objectName: "sessionList"
        anchors { left: parent.left; right: parent.right; top: line.bottom; bottom: parent.bottom }
        focus: true
        name: qsTr("Sessions")
        model: panel.model
        onPicked: row => panel.file = panel.model.fileAt(row)
        onAccepted: row => panel.accepted(panel.model.fileAt(row))

        delegate: ListRow {
            id: row

            required property int index
            required property string file
            required property var learners
            required property string startText
            required property string lengthText
            required property string protocolText
            required property string scoreText
            required property var isPassed
            required property string stateText
            required property string reason
            readonly property string passedText: row.isPassed === undefined ? "" : row.isPassed ? qsTr("passed") : qsTr("not passed")

            width: list.width
            isChosen: list.row === row.index
            spoken: [row.startText, names.Accessible.name, row.protocolText, row.lengthText, row.scoreText, row.passedText,
                     row.stateText, Words.shown(row.reason)].filter(text => text.length > 0).join(", ")
            onPicked: {
                list.forceActiveFocus();
                list.pick(row.index);
            }
            onAccepted: list.accepted(row.index)

            PageText { width: panel.widths[0]; height: parent.height; text: row.startText.length > 0 ? row.startText : "–"; color: Look.muted; Accessible.ignored: true }
            NameList { id: names; visible: panel.hasLearners; width: panel.widths[1]; height: parent.height; names: row.learners; Accessible.ignored: true }
            PageText { width: panel.widths[2]; height: parent.height; text: row.protocolText; font.pixelSize: Look.small; Accessible.ignored: true }
            PageText { width: panel.widths[3]; height: parent.height; text: row.lengthText.length > 0 ? row.lengthText : "–"; Accessible.ignored: true }
            PageText {
                width: panel.widths[4]
                height: parent.height
                text: row.scoreText.length === 0 ? "–" : row.isPassed === undefined ? row.scoreText : (row.isPassed ? "✓ " : "✗ ") + row.scoreText
                color: row.isPassed === undefined ? Look.muted : row.isPassed ? Look.text : row.isChosen ? Look.text : Look.fault
                Accessible.ignored: true
            }
            PageText {
                width: panel.widths[5]
                height: parent.height
                text: row.stateText.length > 0 ? "⚠ " + row.stateText : Words.shown(row.file.replace(/^.*\//, ""))
                font { pixelSize: Look.small; bold: row.stateText.length > 0 }
                color: row.stateText.length > 0 && !row.isChosen ? Look.fault : Look.muted
                elide: row.stateText.length > 0 ? Text.ElideRight : Text.ElideMiddle
                Accessible.ignored: true
            }
        }
    }
}
