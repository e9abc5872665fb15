// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// Asks for the session that the open one is compared with, and shows how far it is loaded.
Card {
    id: chooser

    required property Viewer viewer
    required property SessionSource source
    signal fileWanted()
    signal backWanted()

    implicitHeight: column.implicitHeight + 2 * Look.padding

    Column {
        id: column
        x: Look.padding
        y: Look.padding
        width: parent.width - 2 * Look.padding
        spacing: Look.gap

        PageText {
            width: parent.width
            text: chooser.source.isLoading ? qsTr("Loading %1").arg(chooser.viewer.fileName(chooser.source.file))
                                           : qsTr("Compare with another session")
            font.pixelSize: Math.round(24 * Look.unit)
            font.bold: true
        }
        PageText {
            width: parent.width
            visible: !chooser.source.isLoading
            wrapMode: Text.WordWrap
            color: Look.muted
            text: qsTr("Of the same learner, before and after, or of another one. The session that is open stays as it is.")
        }
        PageText {
            id: compareProblem
            objectName: "compareProblem"
            width: parent.width
            visible: text.length > 0
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            color: Look.fault
            text: Words.shown(chooser.source.problem)
            Accessible.role: Accessible.AlertMessage
            Accessible.onNameChanged: Words.announce(compareProblem)
        }
        Rectangle {
            visible: chooser.source.isLoading
            width: parent.width
            height: Math.round(10 * Look.unit)
            radius: height / 2
            color: Look.control
            Accessible.role: Accessible.ProgressBar
            Accessible.name: qsTr("%1 % loaded").arg(Math.round(100 * chooser.source.progress))

            Rectangle {
                width: parent.width * chooser.source.progress
                height: parent.height
                radius: parent.radius
                color: Look.accent
            }
        }
        Row {
            spacing: Look.gap

            ActionButton {
                objectName: "chooseOther"
                visible: !chooser.source.isLoading
                focus: true
                highlighted: true
                text: qsTr("Choose session…")
                onClicked: chooser.fileWanted()
            }
            ActionButton {
                objectName: "cancelCompare"
                text: qsTr("Cancel")
                onClicked: {
                    if (chooser.source.isLoading)
                        chooser.viewer.compareWith("");
                    else
                        chooser.backWanted();
                }
            }
        }
        PageText {
            visible: recent.count > 0 && !chooser.source.isLoading
            topPadding: Look.gap
            text: qsTr("Recent files")
            color: Look.muted
            font.pixelSize: Look.small
        }
        Repeater {
            id: recent
            model: chooser.viewer.recentFiles.names
            delegate: ActionButton {
                required property string modelData
                visible: !chooser.source.isLoading
                width: column.width
                text: Words.shown(modelData.replace(/^.*\//, ""))
                help: Words.shown(modelData)
                onClicked: chooser.viewer.compareWith(modelData)
            }
        }
    }
}
