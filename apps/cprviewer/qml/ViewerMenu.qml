// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// Everything that the viewer can do besides its pages.
PageMenu {
    id: menu

    required property Viewer viewer
    signal openWanted()
    signal simulationWanted()
    signal fileWanted(string name)
    signal saveWanted()
    signal compareWanted()
    signal tableWanted(string what)
    signal pictureWanted()
    signal reportWanted()
    signal libraryWanted(int view)
    signal roomWanted()
    signal keysWanted()
    signal soundWanted()
    signal quitWanted()

    readonly property bool hasSession: menu.viewer.session !== null
    readonly property bool canWrite: menu.hasSession && !menu.viewer.isWriting
    readonly property var names: menu.viewer.recentFiles.names

    Action { text: qsTr("&Open…"); onTriggered: menu.openWanted() }
    Action { text: qsTr("Simulated &manikin…"); onTriggered: menu.simulationWanted() }
    PageMenu {
        title: qsTr("&Library")

        Action { text: qsTr("Sessions"); onTriggered: menu.libraryWanted(0) }
        Action { text: qsTr("Learners"); onTriggered: menu.libraryWanted(1) }
        Action { text: qsTr("Class"); onTriggered: menu.libraryWanted(2) }
        Action { text: qsTr("Class list"); onTriggered: menu.libraryWanted(3) }
    }
    Action { text: qsTr("Ma&nikins"); onTriggered: menu.roomWanted() }
    PageMenu {
        id: recent
        objectName: "recentMenu"
        readonly property var names: menu.names
        // An item has a menu of its own.
        function choose(name) { menu.fileWanted(name); }
        title: qsTr("&Recent files")
        enabled: recent.names.length > 0
        width: Math.round(380 * Look.unit)

        Instantiator {
            model: recent.names
            delegate: MenuItem {
                id: item
                required property string modelData
                readonly property var parts: item.modelData.split("/")
                readonly property string fileName: item.parts[item.parts.length - 1]
                readonly property bool isOnlyOne: recent.names.filter(name => name.endsWith("/" + item.fileName)).length < 2
                text: Words.shown(item.isOnlyOne ? item.fileName : item.parts.slice(-2).join("/"))
                implicitHeight: Look.controlHeight
                leftPadding: Look.gap
                rightPadding: Look.gap
                font.pixelSize: Look.normal
                contentItem: PlainText { // knows no keys of the menu, either
                    text: item.text
                    font: item.font
                    color: Look.text
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideMiddle
                }
                background: Rectangle {
                    radius: Look.radius / 2
                    color: item.highlighted ? Look.chosen : "transparent"
                    border.color: Look.accent
                    border.width: item.highlighted ? 2 : 0
                }
                onTriggered: recent.choose(item.modelData)
            }
            onObjectAdded: (index, object) => recent.insertItem(index, object)
            onObjectRemoved: (index, object) => recent.removeItem(object)
        }
    }
    Action { text: qsTr("&Compare…"); enabled: menu.hasSession; onTriggered: menu.compareWanted() }
    MenuSeparator { }
    Action { text: qsTr("&Save…"); enabled: menu.canWrite && !menu.viewer.isLive; onTriggered: menu.saveWanted() }
    PageMenu {
        title: qsTr("Export &table")
        enabled: menu.canWrite

        Action { text: qsTr("Events…"); onTriggered: menu.tableWanted("events") }
        Action { text: qsTr("Summary…"); onTriggered: menu.tableWanted("summary") }
        Action { text: qsTr("Waves…"); onTriggered: menu.tableWanted("waves") }
        Action { text: qsTr("Guidelines…"); onTriggered: menu.tableWanted("guidelines") }
    }
    Action { text: qsTr("Export &picture…"); enabled: menu.canWrite; onTriggered: menu.pictureWanted() }
    Action { text: qsTr("Re&port…"); enabled: menu.hasSession; onTriggered: menu.reportWanted() }
    MenuSeparator { }
    Action { text: menu.viewer.learnerPlace.isOpen ? qsTr("Close learner's &view") : qsTr("Learner's &view"); onTriggered: menu.viewer.learnerPlace.isOpen = !menu.viewer.learnerPlace.isOpen }
    Action { text: qsTr("So&und…"); onTriggered: menu.soundWanted() }
    PageMenu {
        title: qsTr("&Appearance")

        ActionGroup { id: modes }
        Action { text: qsTr("As the system"); ActionGroup.group: modes; checkable: true; checked: menu.viewer.appearance.mode === Appearance.System; onTriggered: menu.viewer.appearance.mode = Appearance.System }
        Action { text: qsTr("Light"); ActionGroup.group: modes; checkable: true; checked: menu.viewer.appearance.mode === Appearance.Light; onTriggered: menu.viewer.appearance.mode = Appearance.Light }
        Action { text: qsTr("Dark"); ActionGroup.group: modes; checkable: true; checked: menu.viewer.appearance.mode === Appearance.Dark; onTriggered: menu.viewer.appearance.mode = Appearance.Dark }
    }
    PageMenu {
        title: qsTr("&Language")

        ActionGroup { id: languages }
        Action { text: "English"; ActionGroup.group: languages; checkable: true; checked: menu.viewer.appearance.language === "en"; onTriggered: menu.viewer.appearance.language = "en" }
        Action { text: "Deutsch"; ActionGroup.group: languages; checkable: true; checked: menu.viewer.appearance.language === "de"; onTriggered: menu.viewer.appearance.language = "de" }
    }
    Action { text: qsTr("&Keys"); onTriggered: menu.keysWanted() }
    MenuSeparator { }
    Action { text: qsTr("&Quit"); onTriggered: menu.quitWanted() }
}
