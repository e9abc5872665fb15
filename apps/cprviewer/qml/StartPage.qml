// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// What there is to do when no session is open.
FocusScope {
    id: page

    required property Viewer viewer
    signal openWanted()
    signal simulationWanted()
    signal fileWanted(string name)

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Look.padding, Math.round(640 * Look.unit))
        spacing: Look.gap

        Card {
            visible: page.viewer.hasLeftSession
            Layout.fillWidth: true
            implicitHeight: leftColumn.implicitHeight + 2 * Look.padding
            border.color: Look.accent
            border.width: 2

            Column {
                id: leftColumn
                x: Look.padding
                y: Look.padding
                width: parent.width - 2 * Look.padding
                spacing: Look.gap

                PageText {
                    objectName: "leftText"
                    width: parent.width
                    text: qsTr("A session was not saved")
                    font.pixelSize: Look.title
                    font.bold: true
                }
                PageText {
                    width: parent.width
                    wrapMode: Text.WordWrap
                    text: page.viewer.hasLeftSession
                          ? qsTr("The viewer ended while it was recorded, on %1. Everything up to then is there.")
                            .arg(Words.value("startTime", page.viewer.leftSessionTime)) : ""
                }
                Row {
                    spacing: Look.gap
                    ActionButton {
                        objectName: "bringBack"
                        focus: page.viewer.hasLeftSession
                        highlighted: true
                        text: qsTr("Bring it back")
                        onClicked: page.viewer.bringBack()
                    }
                    ActionButton {
                        objectName: "discardLeft"
                        text: qsTr("Throw it away…")
                        onClicked: discardDialog.open()
                    }
                }
            }
        }
        Card {
            Layout.fillWidth: true
            implicitHeight: startColumn.implicitHeight + 2 * Look.padding

            Column {
                id: startColumn
                x: Look.padding
                y: Look.padding
                width: parent.width - 2 * Look.padding
                spacing: Look.gap

                PageText {
                    text: qsTr("Begin")
                    font.pixelSize: Math.round(24 * Look.unit)
                    font.bold: true
                }
                PageText {
                    width: parent.width
                    wrapMode: Text.WordWrap
                    color: Look.muted
                    text: qsTr("Look a stored session over, or watch a training session live.")
                }
                Row {
                    spacing: Look.gap
                    ActionButton {
                        objectName: "startOpen"
                        focus: !page.viewer.hasLeftSession
                        highlighted: !page.viewer.hasLeftSession
                        text: qsTr("Open session…")
                        onClicked: page.openWanted()
                    }
                    ActionButton {
                        objectName: "startSimulation"
                        text: qsTr("Simulated manikin…")
                        onClicked: page.simulationWanted()
                    }
                }
                PageText {
                    visible: recent.count > 0
                    topPadding: Look.gap
                    text: qsTr("Recent files")
                    color: Look.muted
                    font.pixelSize: Look.small
                }
                Repeater {
                    id: recent
                    model: page.viewer.recentFiles.names
                    delegate: ActionButton {
                        required property string modelData
                        width: parent.width
                        text: Words.shown(modelData.replace(/^.*\//, ""))
                        help: Words.shown(modelData)
                        onClicked: page.fileWanted(modelData)
                    }
                }
            }
        }
    }
    QuestionDialog {
        id: discardDialog
        title: qsTr("Throw the session away?")
        text: qsTr("It cannot be brought back then.")
        yes: qsTr("Throw away")
        yesAction: () => page.viewer.discardLeft()
    }
}
