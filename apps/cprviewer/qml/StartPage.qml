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
    signal saveLeftWanted(string target)
    signal libraryWanted(int view)
    signal roomWanted()
    readonly property ClassList names: page.viewer.classList

    property string lastDay: page.viewer.library.lastDay()
    ClassModel { id: lastClass; firstDay: page.lastDay } // for its words alone
    Connections {
        target: page.viewer.library
        function onChanged() { page.lastDay = page.viewer.library.lastDay(); }
    }

    ColumnLayout {
        anchors.centerIn: parent
        width: Math.min(parent.width - 2 * Look.padding, Math.round(760 * Look.textUnit))
        spacing: Look.gap

        Card {
            visible: leftList.count > 0
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
                    text: qsTr("%n session(s) were not saved", "", leftList.count)
                    font.pixelSize: Look.title
                    font.bold: true
                }
                PageText {
                    width: parent.width
                    wrapMode: Text.WordWrap
                    text: qsTr("They ended with the viewer, or without a library to go to. Everything up to then is there.")
                }
                LeftList {
                    id: leftList
                    objectName: "leftList"
                    focus: leftList.count > 0
                    width: parent.width
                    height: implicitHeight
                    viewer: page.viewer
                    onOpenWanted: target => page.viewer.bringBack(target)
                    onSaveWanted: target => page.saveLeftWanted(target)
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
                Flow {
                    width: parent.width
                    spacing: Look.gap
                    ActionButton {
                        objectName: "startOpen"
                        focus: leftList.count === 0
                        highlighted: leftList.count === 0
                        text: qsTr("Open session…")
                        onClicked: page.openWanted()
                    }
                    ActionButton {
                        objectName: "startSimulation"
                        text: qsTr("Simulated manikin…")
                        onClicked: page.simulationWanted()
                    }
                    ActionButton {
                        objectName: "startRoom"
                        text: qsTr("Manikins")
                        help: qsTr("A class that trains at the same time (Ctrl+7)")
                        onClicked: page.roomWanted()
                    }
                    ActionButton {
                        objectName: "startLibrary"
                        text: qsTr("Library")
                        help: qsTr("The stored sessions (Ctrl+3)")
                        onClicked: page.libraryWanted(0)
                    }
                    ActionButton {
                        objectName: "startClassList"
                        text: qsTr("Class list")
                        help: qsTr("Who trains today (Ctrl+5)")
                        onClicked: page.libraryWanted(3)
                    }
                }
                RowLayout {
                    visible: page.names.count > 0
                    width: parent.width
                    spacing: Look.gap

                    ActionButton {
                        objectName: "startNextLearner"
                        text: qsTr("Next learner…")
                        help: qsTr("Start the session of the next learner (Ctrl+N)")
                        onClicked: page.simulationWanted()
                    }
                    PageText { Layout.fillWidth: true; text: page.names.nextText }
                }
                RowLayout {
                    visible: page.lastDay.length > 0
                    width: parent.width
                    spacing: Look.gap

                    ActionButton {
                        objectName: "startClass"
                        text: qsTr("Last class")
                        help: qsTr("How the class did (Ctrl+4)")
                        onClicked: page.libraryWanted(2)
                    }
                    PageText { Layout.fillWidth: true; text: lastClass.dayText }
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
}
