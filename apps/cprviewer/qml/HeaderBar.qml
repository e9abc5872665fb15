// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRViewer 1.0
import "."

// The top of the window: the pages, what is open, and what can be done with it.
Rectangle {
    id: bar

    required property Viewer viewer
    property int page: 0 // 0 start, 1 live, 2 review, 3 library, 4 compare, 5 manikins
    property alias menuButton: menuButton
    signal pageWanted(int page)
    signal openWanted()
    signal simulationWanted()
    signal saveWanted()
    signal menuWanted(Item at)
    signal reportWanted()
    signal soundWanted()

    readonly property bool hasSession: bar.viewer.session !== null
    readonly property string mark: bar.viewer.isSalvaged ? bar.viewer.isDamaged ? qsTr("Salvaged in part") : qsTr("Salvaged")
                                                         : bar.viewer.isDamaged ? qsTr("Damaged") : ""
    readonly property string markedName: bar.mark.length > 0 ? qsTr("%1 (%2)").arg(bar.viewer.name).arg(bar.mark)
                                                             : bar.viewer.name

    implicitHeight: Math.round(60 * Look.unit)
    color: Look.card

    Rectangle { anchors { left: parent.left; right: parent.right; bottom: parent.bottom } height: 1; color: Look.frame }
    RowLayout {
        anchors { fill: parent; leftMargin: Look.padding; rightMargin: Look.padding }
        spacing: Look.gap

        TabBar {
            background: null
            spacing: 0
            currentIndex: Math.max(0, bar.page - 1)
            Layout.alignment: Qt.AlignVCenter

            PageTab {
                id: liveTab
                objectName: "liveTab"
                visible: bar.viewer.wasLive // a stored session has nothing of now
                width: liveTab.visible ? liveTab.implicitWidth : 0
                text: qsTr("Live")
                font.pixelSize: Look.title
                checked: bar.page === 1
                onClicked: bar.pageWanted(1)
            }
            PageTab {
                objectName: "reviewTab"
                visible: bar.hasSession
                width: visible ? implicitWidth : 0
                text: qsTr("Review")
                font.pixelSize: Look.title
                checked: bar.page === 2
                onClicked: bar.pageWanted(2)
            }
            PageTab {
                objectName: "libraryTab"
                text: qsTr("Library")
                font.pixelSize: Look.title
                checked: bar.page === 3
                onClicked: bar.pageWanted(3)
            }
            PageTab {
                id: compareTab
                objectName: "compareTab"
                visible: bar.page === 4 || bar.viewer.other.session !== null
                width: compareTab.visible ? compareTab.implicitWidth : 0
                text: qsTr("Compare")
                font.pixelSize: Look.title
                checked: bar.page === 4
                onClicked: bar.pageWanted(4)
            }
            PageTab {
                id: roomTab
                objectName: "roomTab"
                visible: bar.page === 5 || bar.viewer.room.count > 0
                width: roomTab.visible ? roomTab.implicitWidth : 0
                text: qsTr("Manikins")
                font.pixelSize: Look.title
                checked: bar.page === 5
                onClicked: bar.pageWanted(5)
            }
        }
        PageText {
            objectName: "sessionName"
            Layout.fillWidth: true
            Layout.leftMargin: Look.gap
            text: bar.hasSession ? bar.viewer.name : qsTr("CPR sessions")
            font.pixelSize: Look.title
            font.bold: !bar.hasSession
            color: bar.hasSession ? Look.muted : Look.text
        }
        Rectangle {
            visible: bar.viewer.isLive
            implicitWidth: liveText.implicitWidth + 2 * Look.gap
            implicitHeight: Math.round(30 * Look.unit)
            radius: height / 2
            color: "transparent"
            border.color: Look.good
            border.width: 2

            PageText {
                id: liveText
                anchors.centerIn: parent
                objectName: "source"
                text: bar.viewer.isReplay ? "▶  " + qsTr("Replay") : "●  " + qsTr("Recording")
                color: Look.good
                font.pixelSize: Look.small
                font.bold: true
            }
        }
        ActionButton {
            objectName: "sound"
            visible: bar.viewer.sound.hasMetronome || bar.viewer.sound.hasTones || bar.viewer.sound.hasSpeech
            text: "♪"
            help: qsTr("Sound for the learner is on")
            onClicked: bar.soundWanted()
        }
        ActionButton {
            objectName: "mark"
            visible: bar.mark.length > 0
            text: "⚠ " + bar.mark
            font.bold: true
            help: qsTr("What of the session is there")
            onClicked: bar.reportWanted()
        }
        PageText {
            visible: bar.viewer.isWriting
            text: qsTr("Writing…")
            color: Look.muted
        }
        PageText {
            visible: bar.viewer.isUnsaved && !bar.viewer.isLive && !bar.viewer.isWriting
            text: qsTr("Not saved")
            color: Look.fault
            font.bold: true
        }
        ActionButton {
            objectName: "save"
            visible: (bar.viewer.isUnsaved || bar.mark.length > 0) && !bar.viewer.isLive
            enabled: !bar.viewer.isWriting
            highlighted: bar.viewer.isUnsaved
            text: qsTr("Save…")
            help: qsTr("Save the session (Ctrl+S)")
            onClicked: bar.saveWanted()
        }
        ActionButton {
            objectName: "simulate"
            text: qsTr("Simulate…")
            help: qsTr("Start the simulated manikin (Ctrl+N)")
            onClicked: bar.simulationWanted()
        }
        ActionButton {
            objectName: "open"
            text: qsTr("Open…")
            help: qsTr("Open a session or a recorded log (Ctrl+O)")
            onClicked: bar.openWanted()
        }
        ActionButton {
            id: menuButton
            objectName: "menu"
            text: "☰"
            help: qsTr("Menu (F10)")
            onClicked: bar.menuWanted(menuButton)
        }
    }
}
