// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// A class: what it shares, and its learners by figures.
FocusScope {
    id: page

    required property Viewer viewer
    property string day: "" // the class's, ISO 8601; empty for the last one
    property bool isListed: false // only learners of the class list, since its day
    readonly property LibraryFolder library: page.viewer.library
    readonly property ClassList names: page.viewer.classList
    property alias model: classModel
    signal learnerWanted(string name)
    signal reportWanted()
    signal reportsWanted()

    function showDay(day) {
        page.isListed = false;
        page.day = day;
    }
    function step(step) {
        const day = page.model.otherDay(step);
        if (day.length > 0)
            page.showDay(day);
    }
    function findDay() {
        if (page.visible && page.day.length === 0)
            page.day = page.library.lastDay();
    }
    onVisibleChanged: page.findDay()
    Component.onCompleted: page.findDay()
    Connections {
        target: page.library
        function onChanged() { page.findDay(); }
        function onFolderChanged() { page.day = ""; }
    }

    ClassModel {
        id: classModel
        library: page.visible ? page.library : null
        firstDay: page.isListed ? page.names.day : page.day
        lastDay: page.isListed ? "9999-12-31" : ""
        learners: page.isListed ? page.names.names : []
    }
    Keys.onPressed: event => {
        const actions = {};
        actions[Qt.Key_Left] = () => page.step(-1);
        actions[Qt.Key_Right] = () => page.step(1);
        if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier) || !actions[event.key])
            return;
        actions[event.key]();
        event.accepted = true;
    }

    PageMenu {
        id: reportsMenu
        objectName: "reportsMenu"

        Action { text: qsTr("&Print in one job…"); onTriggered: page.viewer.printReports(page.model) }
        Action { text: qsTr("As P&DF into a folder…"); onTriggered: page.reportsWanted() }
    }
    ColumnLayout {
        anchors.fill: parent
        spacing: Look.gap / 2

        // No layout: while the page is hidden it can miss that there is a day, and leave no room for it (Qt 6.4).
        Item {
            Layout.fillWidth: true
            implicitHeight: Look.controlHeight

            Row {
                id: chosen
                spacing: Look.gap

                ActionButton { visible: !page.isListed; text: "‹"; help: qsTr("The class before (left arrow)"); onClicked: page.step(-1) }
                PageText {
                    objectName: "classDay"
                    text: page.isListed ? qsTr("Class list, since %1").arg(new Date(page.names.day).toLocaleDateString(Qt.locale(), 1)) : page.model.dayText
                    anchors.verticalCenter: parent.verticalCenter
                    font { pixelSize: Look.title; bold: true }
                }
                ActionButton { visible: !page.isListed; text: "›"; help: qsTr("The class behind (right arrow)"); onClicked: page.step(1) }
                FilterChip {
                    objectName: "classListed"
                    anchors.verticalCenter: parent.verticalCenter
                    visible: page.names.count > 0
                    text: qsTr("Class list")
                    checked: page.isListed
                    onToggled: page.isListed = checked
                }
            }
            PageText {
                objectName: "classSummary"
                anchors { left: chosen.right; right: actions.left; leftMargin: Look.gap; rightMargin: Look.gap; verticalCenter: parent.verticalCenter }
                text: page.viewer.partsToWrite > 0 ? qsTr("Making reports: %1 of %2").arg(page.viewer.writtenParts).arg(page.viewer.partsToWrite)
                    : page.model.isLoading ? qsTr("Reading sessions…") : page.model.summary
                color: Look.muted
            }
            Row {
                id: actions
                anchors.right: parent.right
                spacing: Look.gap

                ActionButton {
                    objectName: "printClass"
                    enabled: page.model.count > 0 && !page.model.isLoading
                    text: qsTr("Print…")
                    help: qsTr("Print the class, with a preview (Ctrl+P)")
                    onClicked: page.viewer.printClass(page.model)
                }
                ActionButton {
                    objectName: "classPdf"
                    enabled: page.model.count > 0 && !page.model.isLoading && !page.viewer.isWriting
                    text: qsTr("PDF…")
                    help: qsTr("The class as PDF")
                    onClicked: page.reportWanted()
                }
                ActionButton {
                    id: reportsButton
                    objectName: "classReports"
                    enabled: page.model.count > 0 && !page.model.isLoading && !page.viewer.isWriting
                    text: qsTr("Reports…")
                    help: qsTr("A page to take home of each session")
                    onClicked: reportsMenu.popup(reportsButton, 0, reportsButton.height)
                }
                ActionButton {
                    objectName: "cancelReports"
                    visible: page.viewer.partsToWrite > 0
                    text: qsTr("Cancel")
                    help: qsTr("Leave the other reports out")
                    onClicked: page.viewer.cancelWriting()
                }
            }
        }
        PageText {
            id: classProblem
            objectName: "classProblem"
            visible: page.model.problem.length > 0
            Layout.fillWidth: true
            text: "⚠ " + page.model.problem
            color: Look.fault
            Accessible.role: Accessible.AlertMessage
            Accessible.onNameChanged: Words.announce(classProblem)
        }
        Card {
            visible: page.model.count > 0
            Layout.fillWidth: true
            implicitHeight: faults.implicitHeight + 2 * Look.gap

            ColumnLayout {
                id: faults
                anchors { left: parent.left; right: parent.right; top: parent.top; margins: Look.gap }
                spacing: Look.gap / 3

                PageText { text: qsTr("What to teach next"); font.bold: true }
                PageText { visible: page.model.faults.length === 0; text: qsTr("No fault was found."); color: Look.muted }
                Repeater {
                    model: page.model.faults
                    delegate: RowLayout {
                        id: fault

                        required property int index
                        required property var modelData

                        visible: fault.index < 5
                        Layout.fillWidth: true
                        spacing: Look.gap
                        Accessible.role: Accessible.ListItem
                        Accessible.name: fault.modelData.text + " " + learnersText.text

                        PageText { id: learnersText; Layout.preferredWidth: Math.round(150 * Look.textUnit); text: qsTr("%1 learners").arg(fault.modelData.countText); Accessible.ignored: true }
                        Rectangle {
                            Layout.preferredWidth: Math.round(140 * Look.unit)
                            Layout.preferredHeight: Math.round(10 * Look.unit)
                            radius: height / 2
                            color: Look.control

                            Rectangle { width: parent.width * fault.modelData.share; height: parent.height; radius: height / 2; color: Look.fault }
                        }
                        PageText { Layout.fillWidth: true; text: fault.modelData.text; Accessible.ignored: true }
                    }
                }
            }
        }
        Card {
            id: table
            Layout.fillWidth: true
            Layout.fillHeight: true

            readonly property real nameWidth: Math.round(Math.max(170 * Look.textUnit, list.width * 0.22))
            readonly property var heads: {
                const heads = [{ title: qsTr("Score"), unit: "%" }, ...page.model.heads];
                return heads.map(head => head.unit.length > 0 ? head.title + ", " + head.unit : head.title);
            }
            // Of the columns, by the longest words of their heads, which cannot be broken.
            readonly property var widths: {
                const letters = table.heads.map(head => Math.max(9, ...head.split(" ").map(word => word.length)));
                const letter = (list.width - table.nameWidth - 2 * Look.gap) / letters.reduce((sum, count) => sum + count);
                return letters.map(count => Math.floor(count * letter));
            }

            Row {
                id: heads
                x: Look.gap + 1
                y: Look.gap / 2
                height: Math.round(62 * Look.textUnit)

                PageText { width: table.nameWidth; height: parent.height; text: qsTr("Learner, last session"); color: Look.muted; font.pixelSize: Look.small; verticalAlignment: Text.AlignBottom; wrapMode: Text.WordWrap }
                Repeater {
                    model: table.heads
                    delegate: PageText {
                        required property string modelData
                        required property int index
                        width: table.widths[index]
                        height: heads.height
                        leftPadding: Look.gap / 3
                        text: modelData
                        color: Look.muted
                        font.pixelSize: Math.round(12 * Look.textUnit)
                        fontSizeMode: Text.Fit
                        minimumPixelSize: Math.round(9 * Look.unit)
                        wrapMode: Text.WordWrap
                        horizontalAlignment: Text.AlignRight
                        verticalAlignment: Text.AlignBottom
                    }
                }
            }
            RowList {
                id: list
                objectName: "classRows"
                anchors { left: parent.left; right: parent.right; top: heads.bottom; bottom: means.top; leftMargin: 1; rightMargin: 1; topMargin: Look.gap / 2 }
                focus: true
                name: qsTr("Learners by figures")
                rowHeight: Math.round(46 * Look.textUnit)
                model: page.model
                onCountChanged: list.choose(Math.min(list.row, list.count - 1))
                onAccepted: row => {
                    if (page.model.nameAt(row).length > 0)
                        page.learnerWanted(page.model.nameAt(row));
                }

                delegate: ListRow {
                    id: row

                    required property int index
                    required property string nameText
                    required property int sessions
                    required property string scoreText
                    required property var isPassed
                    required property var figures
                    required property string faultText
                    readonly property string sessionsText: qsTr("%n session(s)", "", row.sessions)
                    readonly property string passedText: row.isPassed === undefined ? "" : row.isPassed ? qsTr("passed") : qsTr("not passed")

                    width: list.width
                    height: list.rowHeight
                    isChosen: list.row === row.index
                    spoken: [Words.shown(row.nameText), row.sessionsText, row.scoreText, row.passedText, row.faultText]
                            .concat(row.figures.map((text, i) => page.model.heads[i].title + " " + text)).filter(text => text.length > 0).join(", ")
                    onPicked: {
                        list.forceActiveFocus();
                        list.pick(row.index);
                    }
                    onAccepted: list.accepted(row.index)

                    Row {
                        height: parent.height

                        Column {
                            width: table.nameWidth
                            anchors.verticalCenter: parent.verticalCenter

                            PageText { width: parent.width; horizontalAlignment: Text.AlignLeft; text: Words.shown(row.nameText); Accessible.ignored: true }
                            PageText { width: parent.width; text: row.faultText.length > 0 ? row.faultText : row.sessionsText; color: row.isChosen ? Look.text : row.faultText.length > 0 ? Look.fault : Look.muted; font.pixelSize: Math.round(12 * Look.textUnit); Accessible.ignored: true }
                        }
                        PageText {
                            width: table.widths[0]
                            height: parent.height
                            text: (row.isPassed === undefined ? "" : row.isPassed ? "✓ " : "✗ ") + row.scoreText.replace(/\s*%/, "")
                            color: row.isPassed === false && !row.isChosen ? Look.fault : Look.text
                            font.bold: true
                            horizontalAlignment: Text.AlignRight
                            Accessible.ignored: true
                        }
                        Repeater {
                            model: row.figures
                            delegate: PageText {
                                required property string modelData
                                required property int index
                                width: table.widths[index + 1]
                                height: row.height
                                text: modelData
                                horizontalAlignment: Text.AlignRight
                                Accessible.ignored: true
                            }
                        }
                    }
                }
            }
            Row {
                id: means
                anchors { left: parent.left; leftMargin: Look.gap + 1; bottom: parent.bottom; bottomMargin: 1 }
                height: page.model.count > 0 ? Look.rowHeight : 0
                visible: page.model.count > 0

                PageText { width: table.nameWidth; height: parent.height; text: qsTr("Mean of the class"); font.bold: true }
                Repeater {
                    model: page.model.means
                    delegate: PageText {
                        required property string modelData
                        required property int index
                        width: table.widths[index]
                        height: means.height
                        text: modelData.replace(/\s*%/, "")
                        font.bold: true
                        horizontalAlignment: Text.AlignRight
                    }
                }
            }
            PageText {
                anchors.centerIn: parent
                visible: page.model.count === 0 && !page.model.isLoading
                text: qsTr("No session found.")
                color: Look.muted
            }
        }
    }
}
