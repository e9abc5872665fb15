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
    signal keysWanted()
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
    PageMenu {
        id: recent
        title: qsTr("&Recent files")
        enabled: menu.names.length > 0
        width: Math.round(380 * Look.unit)

        Instantiator {
            model: menu.names
            delegate: MenuItem {
                id: item
                required property string modelData
                text: Words.shown(item.modelData.replace(/^.*\//, ""))
                font.pixelSize: Look.normal
                contentItem: PlainText { // knows no keys of the menu, either
                    text: item.text
                    font: item.font
                    color: Look.text
                    verticalAlignment: Text.AlignVCenter
                    elide: Text.ElideMiddle
                }
                onTriggered: menu.fileWanted(item.modelData)
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
