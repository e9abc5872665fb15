// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// Before and after sessions: what is stored, who has trained, how a class does and who is next.
FocusScope {
    id: page

    required property Viewer viewer
    property alias view: tabs.currentIndex // 0 sessions, 1 learners, 2 class, 3 class list
    property string learner: "" // whose page lies over them
    readonly property LibraryFolder library: page.viewer.library
    readonly property bool hasFolder: page.library.folder.length > 0
    readonly property bool isRenaming: page.library.isCorrecting && page.library.toCorrect > 1
    readonly property bool isWorking: page.library.isScanning || page.isRenaming
    readonly property alias classPage: classPage
    signal openWanted(string path)
    signal folderWanted()
    signal classFileWanted()
    signal startWanted()
    signal classPdfWanted(ClassModel model)
    signal reportsWanted(ClassModel model)

    function showView(view) {
        page.learner = "";
        page.view = view;
        page.focusView();
    }
    function showLearner(name) {
        page.learner = name;
        page.focusView();
    }
    function focusView() {
        const item = learnerLoader.item ?? (page.hasFolder || page.view === 3 ? [sessionsPage, learnersPage, classPage, classListPage][page.view] : folderButton);
        item.forceActiveFocus(Qt.TabFocusReason);
    }
    function find() {
        if (page.learner.length > 0 || page.view > 1)
            page.showView(0);
        [sessionsPage, learnersPage][page.view].focusSearch();
    }

    ColumnLayout {
        anchors { fill: parent; margins: Look.padding }
        spacing: Look.gap / 2

        RowLayout {
            spacing: Look.gap

            TabBar {
                id: tabs
                background: null
                spacing: 0

                PageTab { objectName: "sessionsTab"; text: qsTr("Sessions"); onClicked: page.learner = "" }
                PageTab { objectName: "learnersTab"; text: qsTr("Learners"); onClicked: page.learner = "" }
                PageTab { objectName: "classTab"; text: qsTr("Class"); onClicked: page.learner = "" }
                PageTab { objectName: "classListTab"; text: qsTr("Class list"); onClicked: page.learner = "" }
            }
            PageText {
                objectName: "libraryState"
                Layout.fillWidth: true
                horizontalAlignment: Text.AlignRight
                elide: Text.ElideMiddle
                color: Look.muted
                font.pixelSize: Look.small
                Accessible.name: page.isWorking ? text : Words.shown(page.library.folder)
                text: page.isRenaming ? qsTr("Correcting sessions: %1 of %2").arg(page.library.correctedFiles).arg(page.library.toCorrect)
                    : !page.library.isScanning ? Words.shown(page.library.folder.replace(/^.*\//, ""))
                    : page.library.toScan > 0 ? qsTr("Reading sessions: %1 of %2").arg(page.library.scanned).arg(page.library.toScan)
                                              : qsTr("Looking for sessions…")
            }
            ActionButton {
                objectName: "cancelScan"
                visible: page.isRenaming || (page.library.isScanning && page.library.toScan > 0)
                text: qsTr("Cancel")
                help: page.isRenaming ? qsTr("Leave the other sessions as they are") : qsTr("Stop reading sessions")
                onClicked: page.isRenaming ? page.library.cancelCorrecting() : page.library.cancelScan()
            }
            ActionButton {
                visible: page.hasFolder && !page.isWorking
                text: "↻"
                help: qsTr("Look for sessions again (F5)")
                onClicked: page.library.scan()
            }
            ActionButton {
                objectName: "chooseFolder"
                visible: page.hasFolder
                text: qsTr("Folder…")
                help: qsTr("Choose the folder of the library")
                onClicked: page.folderWanted()
            }
        }
        Rectangle {
            id: libraryProblem
            objectName: "libraryProblem"
            readonly property alias text: problemText.text
            visible: page.library.problem.length > 0
            Layout.fillWidth: true
            implicitHeight: problemText.implicitHeight + Look.gap
            color: "transparent"
            border { color: Look.fault; width: 2 }
            radius: Look.radius / 2
            Accessible.role: Accessible.AlertMessage
            Accessible.name: problemText.text
            Accessible.onNameChanged: Words.announce(libraryProblem)

            PageText {
                id: problemText
                anchors { left: parent.left; right: parent.right; verticalCenter: parent.verticalCenter; margins: Look.gap }
                text: page.library.problem.length > 0 ? "⚠ " + page.library.problem : ""
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                maximumLineCount: 2
            }
        }
        Item {
            Layout.fillWidth: true
            Layout.fillHeight: true

            StackLayout {
                anchors.fill: parent
                visible: page.learner.length === 0 && (page.hasFolder || tabs.currentIndex === 3)
                currentIndex: tabs.currentIndex

                SessionsPage {
                    id: sessionsPage
                    objectName: "sessionsPage"
                    focus: tabs.currentIndex === 0
                    library: page.library
                    onOpenWanted: file => page.openWanted(page.library.pathOf(file))
                    onLearnerWanted: name => page.showLearner(name)
                    onCorrectWanted: file => learnersDialog.edit(file)
                    onClassWanted: day => {
                        classPage.showDay(day);
                        page.showView(2);
                    }
                }
                LearnersPage {
                    id: learnersPage
                    focus: tabs.currentIndex === 1
                    library: page.library
                    onLearnerWanted: name => page.showLearner(name)
                }
                ClassPage {
                    id: classPage
                    objectName: "classPage"
                    focus: tabs.currentIndex === 2
                    viewer: page.viewer
                    onLearnerWanted: name => page.showLearner(name)
                    onReportWanted: page.classPdfWanted(classPage.model)
                    onReportsWanted: page.reportsWanted(classPage.model)
                }
                ClassListPage {
                    id: classListPage
                    objectName: "classListPage"
                    focus: tabs.currentIndex === 3
                    viewer: page.viewer
                    onFileWanted: page.classFileWanted()
                    onStartWanted: page.startWanted()
                }
            }
            Loader {
                id: learnerLoader
                anchors.fill: parent
                active: page.learner.length > 0 && page.hasFolder
                focus: learnerLoader.active
                sourceComponent: LearnerPage {
                    focus: true
                    library: page.library
                    learner: page.learner
                    onOpenWanted: file => page.openWanted(page.library.pathOf(file))
                    onBackWanted: page.showView(page.view)
                    onRenameWanted: renameDialog.edit(page.learner)
                }
            }
            Card {
                anchors.centerIn: parent
                visible: !page.hasFolder && tabs.currentIndex !== 3
                width: Math.round(560 * Look.textUnit)
                height: invitation.implicitHeight + 2 * Look.padding

                Column {
                    id: invitation
                    anchors { left: parent.left; right: parent.right; top: parent.top; margins: Look.padding }
                    spacing: Look.gap

                    PageText {
                        width: parent.width
                        wrapMode: Text.WordWrap
                        text: qsTr("Choose the folder in which your sessions are stored. All archives in it and below it are listed; none is changed.")
                    }
                    ActionButton {
                        id: folderButton
                        objectName: "firstFolder"
                        highlighted: true
                        text: qsTr("Choose folder…")
                        onClicked: page.folderWanted()
                    }
                }
            }
        }
    }
    RenameDialog { id: renameDialog; objectName: "renameDialog"; library: page.library }
    Connections {
        target: page.library
        function onRenamed(name, newName) { if (page.learner === name) page.learner = newName; }
    }
    LearnersDialog { id: learnersDialog; objectName: "learnersDialog"; library: page.library }

    Shortcut { sequence: StandardKey.Find; enabled: page.visible && page.hasFolder; onActivated: page.find() }
    Shortcut { sequence: StandardKey.Refresh; enabled: page.visible; onActivated: page.library.scan() }
    Shortcut { sequence: StandardKey.Print; enabled: page.visible && classPage.visible && classPage.model.count > 0; onActivated: page.viewer.printClass(classPage.model) }
}
