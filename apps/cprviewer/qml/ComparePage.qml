// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Qt.labs.platform 1.1 as Platform
import CPRData 1.0
import CPRViewer 1.0
import "."

// The open session beside another one.
FocusScope {
    id: page

    required property Viewer viewer
    readonly property SessionSource source: page.viewer.other
    readonly property bool hasOther: page.source.session !== null
    property bool isSwapped: false // the open one is B
    property alias comparison: compared
    property alias panel: panel
    property alias table: table
    signal backWanted()
    signal tableWanted(ComparisonModel model)
    signal pictureWanted(ComparisonModel model, bool isOverlaid)

    function chooseFile() { openDialog.open(); }

    onHasOtherChanged: page.isSwapped = false

    ComparisonModel {
        id: compared
        readonly property CPRData open: page.hasOther ? page.viewer.session : null
        session: page.isSwapped ? page.source.session : compared.open
        other: page.isSwapped ? compared.open : page.source.session
    }
    Connections {
        target: compared
        function onSessionChanged() {
            panel.position = 0;
            panel.fit();
        }
    }

    Keys.onPressed: event => {
        const isShifted = event.modifiers & Qt.ShiftModifier;
        const actions = {};
        actions[Qt.Key_Plus] = () => panel.zoom(1.25);
        actions[Qt.Key_Equal] = actions[Qt.Key_Plus];
        actions[Qt.Key_Minus] = () => panel.zoom(0.8);
        actions[Qt.Key_F] = () => panel.fit();
        actions[Qt.Key_O] = () => panel.isOverlaid = !panel.isOverlaid;
        actions[Qt.Key_Left] = () => isShifted ? panel.step(-1000) : panel.pan(-0.1);
        actions[Qt.Key_Right] = () => isShifted ? panel.step(1000) : panel.pan(0.1);
        actions[Qt.Key_Home] = () => panel.goTo(compared.begin);
        actions[Qt.Key_End] = () => panel.goTo(compared.end);
        if (!page.hasOther || event.modifiers & (Qt.ControlModifier | Qt.AltModifier) || !actions[event.key])
            return;
        actions[event.key]();
        event.accepted = true;
    }

    FocusScope {
        anchors.fill: parent
        visible: !page.hasOther
        focus: !page.hasOther

        CompareChooser {
            objectName: "compareChooser"
            anchors.centerIn: parent
            width: Math.min(parent.width - 2 * Look.padding, Math.round(760 * Look.textUnit))
            viewer: page.viewer
            source: page.source
            onFileWanted: page.chooseFile()
            onBackWanted: page.backWanted()
        }
    }
    FocusScope {
        anchors.fill: parent
        visible: page.hasOther
        focus: page.hasOther

        ColumnLayout {
            anchors { fill: parent; margins: Look.padding }
            spacing: Look.gap

            Card {
                Layout.fillWidth: true
                implicitHeight: Math.max(headA.implicitHeight, headB.implicitHeight, buttons.implicitHeight) + 2 * Look.gap

                CompareHead {
                    id: headA
                    readonly property real room: (parent.width - buttons.width - 4 * Look.padding) / 2
                    anchors { left: parent.left; leftMargin: Look.padding; top: parent.top; topMargin: Look.gap }
                    width: headA.room
                    letter: "A"
                    session: compared.session
                    problem: page.mark(page.isSwapped ? page.source.isDamaged : page.viewer.isDamaged)
                }
                CompareHead {
                    id: headB
                    anchors { left: headA.right; leftMargin: Look.padding; top: headA.top }
                    width: headA.room
                    letter: "B"
                    isOther: true
                    session: compared.other
                    problem: page.mark(page.isSwapped ? page.viewer.isDamaged : page.source.isDamaged)
                }
                Row {
                    id: buttons
                    anchors { right: parent.right; rightMargin: Look.padding; verticalCenter: parent.verticalCenter }
                    spacing: Look.gap

                    ActionButton {
                        objectName: "swap"
                        text: "⇄"
                        help: qsTr("Exchange A and B")
                        onClicked: page.isSwapped = !page.isSwapped
                    }
                    ActionButton {
                        id: exportButton
                        objectName: "exportComparison"
                        enabled: compared.count > 0 && !page.viewer.isWriting
                        text: "↧"
                        help: qsTr("Export the comparison as a table or a picture")
                        onClicked: exportMenu.popup(exportButton, 0, exportButton.height)
                    }
                    ActionButton {
                        objectName: "chooseAnother"
                        text: qsTr("Another…")
                        help: qsTr("Compare with another session")
                        onClicked: page.chooseFile()
                    }
                    ActionButton {
                        objectName: "closeOther"
                        text: qsTr("Close")
                        help: qsTr("End the comparison")
                        onClicked: page.viewer.compareWith("")
                    }
                }
            }
            RowLayout {
                Layout.fillHeight: true
                spacing: Look.gap

                ComparePanel {
                    id: panel
                    Layout.fillWidth: true
                    Layout.fillHeight: true
                    comparison: compared
                    runningSession: page.viewer.isLive ? page.viewer.session : null
                }
                CompareTable {
                    id: table
                    Layout.preferredWidth: Math.round(460 * Look.textUnit)
                    Layout.fillHeight: true
                    comparison: compared
                }
            }
        }
    }

    PageMenu {
        id: exportMenu
        objectName: "exportMenu"

        Action { text: qsTr("&Table…"); onTriggered: page.tableWanted(compared) }
        Action { text: qsTr("&Picture…"); onTriggered: page.pictureWanted(compared, panel.isOverlaid) }
    }

    function mark(isDamaged) { return isDamaged ? qsTr("Damaged; what could be read is shown.") : ""; }

    Platform.FileDialog {
        id: openDialog
        title: qsTr("Compare with another session")
        nameFilters: [qsTr("Sessions and logs (*.zip *.cprlog *.journal)"), qsTr("All files (*)")]
        onAccepted: page.source.file = openDialog.file
    }
}
