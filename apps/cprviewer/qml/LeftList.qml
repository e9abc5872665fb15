// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// The sessions that killed viewers have left, and what can be done with each.
FocusScope {
    id: panel

    required property Viewer viewer
    readonly property alias count: list.count
    signal openWanted(string target)
    signal saveWanted(string target)

    implicitHeight: Math.min(list.contentHeight, Math.round(240 * Look.textUnit))

    ListView {
        id: list
        anchors.fill: parent
        clip: true
        focus: true
        model: panel.viewer.leftSessions
        spacing: Look.gap / 2
        boundsBehavior: Flickable.StopAtBounds
        ScrollBar.vertical: ScrollBar { }
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Sessions that were not saved")

        delegate: FocusScope {
            id: row

            required property int index
            required property var modelData

            width: list.width
            height: Look.controlHeight + 2
            focus: ListView.isCurrentItem
            Accessible.role: Accessible.ListItem
            Accessible.name: who.text + ", " + when.text

            RowLayout {
                anchors { left: parent.left; right: parent.right; rightMargin: Look.gap; verticalCenter: parent.verticalCenter }
                spacing: Look.gap

                Column {
                    Layout.fillWidth: true

                    NameList { id: who; width: parent.width; names: row.modelData.learners; font.bold: true }
                    PageText {
                        id: when
                        width: parent.width
                        text: Words.value("startTime", row.modelData.start) + "  ·  " + Words.time(row.modelData.msecs)
                        color: Look.muted
                        font.pixelSize: Look.small
                    }
                }
                Row {
                    id: buttons
                    spacing: Look.gap / 2

                    ActionButton {
                        objectName: "bringBack"
                        focus: true
                        highlighted: row.index === 0
                        text: qsTr("Open")
                        help: qsTr("Open the session of %1").arg(when.text)
                        onClicked: panel.openWanted(row.modelData.target)
                    }
                    ActionButton {
                        objectName: "saveLeft"
                        text: qsTr("Save…")
                        enabled: !panel.viewer.isWriting
                        help: qsTr("Save the session of %1").arg(when.text)
                        onClicked: panel.saveWanted(row.modelData.target)
                    }
                    ActionButton {
                        objectName: "discardLeft"
                        text: qsTr("Throw away…")
                        help: qsTr("Throw the session of %1 away").arg(when.text)
                        onClicked: {
                            discardDialog.text = `${who.text}, ${when.text}\n` + qsTr("It cannot be brought back then.");
                            discardDialog.yesAction = () => panel.viewer.discardLeft(row.modelData.target);
                            discardDialog.open();
                        }
                    }
                }
            }
        }
    }
    QuestionDialog {
        id: discardDialog
        objectName: "discardDialog"
        title: qsTr("Throw the session away?")
        yes: qsTr("Throw away")
    }
}
