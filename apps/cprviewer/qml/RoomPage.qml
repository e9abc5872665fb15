// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// A class that trains now: a tile for each manikin, of which one can be opened large.
FocusScope {
    id: page

    required property Viewer viewer
    readonly property ClassRoom room: page.viewer.room
    readonly property ClassList names: page.viewer.classList
    property ClassManikin opened: null // that is shown large
    property ClassManikin followed: null // that was large last; the learner's view and the sound are its
    property int openedRow: -1
    property alias grid: grid
    // What is wrong with the link of the one that is shown large.
    readonly property string trouble: {
        switch (page.opened !== null ? page.opened.state : ClassManikin.Running) {
        case ClassManikin.ManikinLost: return qsTr("Manikin lost");
        case ClassManikin.Silent: return qsTr("Silent");
        case ClassManikin.Gone: return qsTr("Link gone");
        }
        return "";
    }
    signal classListWanted()

    function open(row) {
        if (row < 0 || row >= page.room.count)
            return;
        grid.currentIndex = row;
        page.openedRow = row;
        page.opened = page.followed = page.room.at(row);
        largeLoader.forceActiveFocus();
    }
    function takeFocus() {
        if (page.opened !== null)
            largeLoader.forceActiveFocus();
        else
            grid.forceActiveFocus();
    }
    function close() {
        page.opened = null;
        page.openedRow = -1;
        grid.forceActiveFocus();
    }
    function begin(row) {
        if (page.room.at(row).canResume)
            page.room.resume(row);
        else
            page.room.start(row);
    }
    // Asks once.
    function stop(row) {
        const manikin = page.room.at(row);
        if (manikin === null || !manikin.isRunning)
            return;
        stopDialog.title = qsTr("End the session?");
        stopDialog.text = [manikin.learner, manikin.name].filter(text => text.length > 0).join(" · ");
        stopDialog.yes = qsTr("End session");
        stopDialog.yesAction = () => page.room.stop(row);
        stopDialog.open();
    }
    function stopAll() {
        stopDialog.title = qsTr("End %n session(s)?", "", page.room.running);
        stopDialog.text = qsTr("All that run end now.");
        stopDialog.yes = qsTr("End all");
        stopDialog.yesAction = () => page.room.stopAll();
        stopDialog.open();
    }
    function askLearner(row) {
        learnerDialog.ask(row);
    }

    Keys.onPressed: event => {
        if (page.opened !== null || event.modifiers & (Qt.ControlModifier | Qt.AltModifier))
            return;
        const row = grid.currentIndex;
        const isAll = event.modifiers & Qt.ShiftModifier;
        const number = event.key - Qt.Key_1;
        const actions = {};
        actions[Qt.Key_Return] = actions[Qt.Key_Enter] = () => page.open(row);
        actions[Qt.Key_S] = () => isAll ? page.room.startAll() : page.begin(row);
        actions[Qt.Key_E] = () => isAll ? page.room.running > 0 && page.stopAll() : page.stop(row);
        actions[Qt.Key_L] = () => page.askLearner(row);
        actions[Qt.Key_Delete] = () => page.room.remove(row);
        actions[Qt.Key_Menu] = () => tileMenu.show(grid.currentItem);
        if (number >= 0 && number < 9 && number < grid.count)
            page.open(number);
        else if (row >= 0 && actions[event.key])
            actions[event.key]();
        else
            return;
        event.accepted = true;
    }

    Accessible.role: Accessible.Pane
    Accessible.name: qsTr("Manikins")

    Binding { target: page.room; property: "isWatched"; value: page.visible }
    Connections {
        target: page.room
        function onCountChanged() {
            if (page.opened === null)
                return;
            const rows = Array.from({ length: page.room.count }, (_, row) => row);
            page.openedRow = rows.findIndex(row => page.room.at(row) === page.opened);
            if (page.openedRow < 0)
                page.close();
        }
    }

    ColumnLayout {
        anchors { fill: parent; margins: Look.padding }
        spacing: Look.gap
        visible: page.opened === null

        RowLayout {
            spacing: Look.gap

            ActionButton {
                objectName: "startAll"
                enabled: page.room.startable > 0
                highlighted: page.room.startable > 0 && page.room.running === 0
                text: "▶ " + qsTr("Start all")
                help: qsTr("Start the sessions of all manikins that are ready (Shift+S)")
                onClicked: { page.room.startAll(); grid.forceActiveFocus(); }
            }
            ActionButton {
                objectName: "stopAll"
                enabled: page.room.running > 0
                text: "■ " + qsTr("End all…")
                help: qsTr("End all sessions that run (Shift+E)")
                onClicked: page.stopAll()
            }
            PageText {
                objectName: "roomText"
                Layout.fillWidth: true
                text: (page.room.count === 0 ? [] : [qsTr("%n manikin(s)", "", page.room.count), qsTr("%n running", "", page.room.running)])
                      .concat(page.room.addresses.length > 0 ? [qsTr("listens at %1").arg(page.room.addresses)] : []).join(" · ")
                color: Look.muted
            }
            PageText { text: qsTr("Minutes a session") }
            NumberField {
                objectName: "roomMinutes"
                name: qsTr("Minutes a session")
                from: 0
                to: 120
                value: page.names.minutes
                zeroText: qsTr("any")
                onValueModified: page.names.minutes = value
            }
            ActionButton {
                objectName: "roomClassList"
                text: qsTr("Class list…")
                help: qsTr("Who trains today (Ctrl+5)")
                onClicked: page.classListWanted()
            }
            ActionButton {
                id: addButton
                objectName: "addManikins"
                text: qsTr("Add…")
                help: qsTr("Manikins over a link, or simulated ones")
                onClicked: addMenu.popup(addButton, 0, addButton.height)
            }
        }
        GridView {
            id: grid
            objectName: "tiles"

            readonly property int total: page.room.count
            // As many columns as make the tiles largest.
            readonly property int columns: {
                let best = 1, largest = 0;
                for (let columns = 1; columns <= grid.total; ++columns) {
                    const size = Math.min(grid.width / columns / 330, grid.height / Math.ceil(grid.total / columns) / 196);
                    if (size > largest) {
                        best = columns;
                        largest = size;
                    }
                }
                return best;
            }
            Layout.fillWidth: true
            Layout.fillHeight: true
            Layout.rightMargin: -Look.gap
            Layout.bottomMargin: -Look.gap
            focus: true
            activeFocusOnTab: page.room.count > 0
            interactive: false
            keyNavigationEnabled: true
            highlightMoveDuration: 0
            cellWidth: Math.floor(grid.width / grid.columns)
            cellHeight: Math.floor(grid.height / Math.max(1, Math.ceil(grid.total / grid.columns)))
            model: page.room
            Accessible.role: Accessible.List
            Accessible.name: qsTr("Manikins of the class")

            delegate: Item {
                id: cell

                required property int index
                required property ClassManikin manikin

                objectName: "cell" // which the keyboard speaks to
                width: grid.cellWidth
                height: grid.cellHeight
                Accessible.role: Accessible.ListItem
                Accessible.name: tile.spoken
                Accessible.selected: tile.isCurrent
                Accessible.onPressAction: page.open(cell.index)

                ManikinTile {
                    id: tile
                    objectName: "tile"
                    anchors { fill: parent; rightMargin: Look.gap; bottomMargin: Look.gap }
                    index: cell.index
                    manikin: cell.manikin
                    key: cell.index < 9 ? String(cell.index + 1) : ""
                    isCurrent: cell.GridView.isCurrentItem && grid.activeFocus
                    onIsFirstChanged: if (tile.isFirst && page.visible) Words.announce(cell)
                    onPicked: { grid.currentIndex = cell.index; grid.forceActiveFocus(); }
                    onOpened: page.open(cell.index)
                    onStarted: page.begin(cell.index)
                    onMenuWanted: at => tileMenu.popup(at, 0, at.height)
                }
            }
        }
        PageText {
            objectName: "roomHelp"
            Layout.fillWidth: true
            visible: page.room.count > 0
            text: qsTr("% right: of the compressions, by depth, rate and release (else of the ventilations, by volume)  ·  1–9, Enter: large  ·  S: start  ·  E: end  ·  L: learner")
            color: Look.muted
            font.pixelSize: Look.small
            elide: Text.ElideRight
        }
    }
    Column {
        anchors.centerIn: parent
        visible: page.room.count === 0 && page.opened === null
        spacing: Look.gap

        PageText {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("No manikin is here yet.")
            font.pixelSize: Look.title
            font.bold: true
        }
        PageText {
            width: Math.min(page.width - 4 * Look.padding, Math.round(620 * Look.textUnit))
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            color: Look.muted
            text: page.room.addresses.length > 0 ? qsTr("Manikins appear as soon as they send to %1.").arg(page.room.addresses)
                                                 : qsTr("Let the viewer listen for manikins, or add a simulated class to see how it works.")
        }
        Row {
            anchors.horizontalCenter: parent.horizontalCenter
            spacing: Look.gap

            ActionButton { objectName: "listen"; text: qsTr("Listen for manikins…"); onClicked: listenDialog.open() }
            ActionButton { objectName: "simulateClass"; text: qsTr("Simulated class…"); onClicked: simulateDialog.open() }
        }
    }

    // One of them, as the page of a single session shows it.
    FocusScope {
        id: large
        anchors.fill: parent
        visible: page.opened !== null

        Keys.onPressed: event => {
            const row = page.openedRow, count = page.room.count;
            if (event.modifiers & (Qt.ControlModifier | Qt.AltModifier))
                return;
            if ([Qt.Key_Escape, Qt.Key_Return, Qt.Key_Enter, Qt.Key_Backspace].includes(event.key))
                page.close();
            else if (event.key === Qt.Key_PageDown)
                page.open((row + 1) % count);
            else if (event.key === Qt.Key_PageUp)
                page.open((row + count - 1) % count);
            else
                return;
            event.accepted = true;
        }
        RowLayout {
            id: largeHead
            anchors { left: parent.left; right: parent.right; top: parent.top; leftMargin: Look.padding; rightMargin: Look.padding; topMargin: Look.gap }
            spacing: Look.gap

            ActionButton {
                objectName: "allManikins"
                text: "◀ " + qsTr("All manikins")
                help: qsTr("Back to the class (Escape)")
                onClicked: page.close()
            }
            PageText {
                objectName: "largeTitle"
                Layout.fillWidth: true
                text: page.opened === null ? "" : [page.opened.learner, page.opened.name].filter(text => text.length > 0).join(" · ")
                font.pixelSize: Look.title
                font.bold: true
            }
            Rectangle {
                objectName: "trouble"
                visible: page.trouble.length > 0
                implicitWidth: troubleText.implicitWidth + 2 * Look.gap
                implicitHeight: Look.controlHeight
                radius: Look.radius / 2
                color: Look.text

                PageText { id: troubleText; anchors.centerIn: parent; text: "⚠ " + page.trouble; color: Look.card; font.pixelSize: Look.title; font.bold: true }
            }
            PageText {
                visible: page.opened !== null && page.opened.isRunning && page.opened.figures.rescuerChange !== LiveFigures.NoChange
                text: "⇄ " + (page.opened !== null && page.opened.figures.rescuerChange === LiveFigures.ChangeNow ? qsTr("Change rescuer") : qsTr("Change rescuer soon"))
                color: Look.accent
                font.pixelSize: Look.title
                font.bold: true
            }
            PageText {
                visible: page.opened !== null && page.opened.remaining >= 0
                text: page.opened === null ? "" : qsTr("%1 left").arg(Math.floor(page.opened.remaining / 60) + ":" + String(page.opened.remaining % 60).padStart(2, "0"))
                font.pixelSize: Look.title
            }
            ActionButton {
                objectName: "startLarge"
                visible: page.opened !== null && ((page.opened.state === ClassManikin.Ready && !page.opened.isStarting) || page.opened.canResume || page.opened.isReusable)
                highlighted: true
                text: page.opened !== null && page.opened.canResume ? qsTr("Go on") : "▶ " + (page.opened !== null && page.opened.isReusable ? qsTr("Next") : qsTr("Start"))
                onClicked: page.begin(page.openedRow)
            }
            ActionButton { text: "↑"; help: qsTr("Manikin before (Page up)"); onClicked: page.open((page.openedRow + page.room.count - 1) % page.room.count) }
            ActionButton { text: "↓"; help: qsTr("Next manikin (Page down)"); onClicked: page.open((page.openedRow + 1) % page.room.count) }
        }
        Loader {
            id: largeLoader
            anchors { left: parent.left; right: parent.right; top: largeHead.bottom; bottom: parent.bottom }
            active: page.opened !== null
            focus: true
            sourceComponent: LivePage {
                focus: true
                viewer: page.viewer
                session: page.opened !== null ? page.opened.session : null
                isLive: page.opened !== null && page.opened.isRunning
                isInterrupted: page.trouble.length > 0
                receiver: page.opened
                hasReview: false
                onStopWanted: page.stop(page.openedRow)
            }
        }
    }

    PageMenu {
        id: addMenu
        objectName: "addMenu"

        Action { text: qsTr("Listen for manikins…"); onTriggered: listenDialog.open() }
        Action { text: qsTr("Simulated class…"); enabled: page.room.count < page.room.most; onTriggered: simulateDialog.open() }
    }
    PageMenu {
        id: tileMenu
        objectName: "tileMenu"
        readonly property ClassManikin manikin: page.room.count > 0 ? page.room.at(grid.currentIndex) : null
        readonly property bool isRunning: tileMenu.manikin !== null && tileMenu.manikin.isRunning

        function show(cell) { tileMenu.popup(cell, cell.width / 2, cell.height / 4); }

        Action { text: qsTr("Show large"); onTriggered: page.open(grid.currentIndex) }
        Action { text: qsTr("Learner…"); enabled: tileMenu.manikin !== null && tileMenu.manikin.state !== ClassManikin.Ended; onTriggered: page.askLearner(grid.currentIndex) }
        Action { text: tileMenu.manikin !== null && tileMenu.manikin.canResume ? qsTr("Go on") : qsTr("Start"); enabled: !tileMenu.isRunning; onTriggered: page.begin(grid.currentIndex) }
        Action { text: qsTr("End session…"); enabled: tileMenu.isRunning; onTriggered: page.stop(grid.currentIndex) }
        Action { text: qsTr("Take away"); enabled: !tileMenu.isRunning; onTriggered: page.room.remove(grid.currentIndex) }
    }
    QuestionDialog { id: stopDialog; objectName: "stopDialog" }
    AssignDialog {
        id: learnerDialog
        objectName: "assignDialog"
        viewer: page.viewer
    }
    AppDialog {
        id: listenDialog
        objectName: "listenDialog"

        function accept() {
            listenDialog.close();
            page.room.listen(address.text);
            page.takeFocus();
        }
        title: qsTr("Listen for manikins")
        text: qsTr("Where they send to: local:NAME or tcp:PORT on this machine, mqtt:HOST:PORT/SITE for a broker.")
        firstItem: address

        Field {
            id: address
            objectName: "address"
            Layout.fillWidth: true
            text: "local:cpr"
            placeholderText: qsTr("Address")
        }
        buttons: [
            ActionButton { objectName: "acceptListen"; text: qsTr("Listen"); highlighted: true; enabled: address.text.trim().length > 0; onClicked: listenDialog.accept() },
            ActionButton { text: qsTr("Cancel"); onClicked: listenDialog.close() }
        ]
    }
    AppDialog {
        id: simulateDialog
        objectName: "simulateDialog"
        title: qsTr("Simulated class")
        text: qsTr("Simulated rescuers, each with other faults, train in real time.")
        firstItem: howMany

        RowLayout {
            spacing: Look.gap

            PageText { text: qsTr("Manikins") }
            NumberField {
                id: howMany
                objectName: "howMany"
                name: qsTr("Manikins")
                from: 1
                to: Math.max(1, page.room.most - page.room.count)
                value: Math.min(6, to)
            }
        }
        buttons: [
            ActionButton {
                objectName: "addClass"
                text: qsTr("Add")
                highlighted: true
                onClicked: {
                    simulateDialog.close();
                    const all = page.viewer.scenarios;
                    page.room.simulate(Array.from({ length: howMany.value }, (_, i) => all[i % all.length].name), 1 + page.room.count);
                    grid.forceActiveFocus();
                }
            },
            ActionButton { text: qsTr("Cancel"); onClicked: simulateDialog.close() }
        ]
    }
}
