// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Window 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// The window: a page at a time, and what is asked between them.
ApplicationWindow {
    id: window

    enum Page { Start, Live, Review, Library, Compare, Room }

    required property Viewer viewer
    property string firstPage: "" // instead of the one that suits the first session
    property string firstLearner: "" // whose page is shown
    property int page: Main.Start
    property bool isLeftForLater: false // the sessions that killed viewers have left
    property bool isClosing: false // as soon as the file is written
    // A page stays when another one is shown, so that it is found as it was left.
    property bool hasPages: true
    property bool usesLive: false
    property bool usesReview: false
    property bool usesCompare: false
    property bool usesLibrary: false
    property bool usesRoom: false
    property bool isJustEnded: false // which can be taken back for a while
    // What the learner's view and the sound follow: the live session, else the manikin of the class
    // that was opened last.
    readonly property ClassManikin learnerManikin: !window.viewer.isLive && roomLoader.item ? (roomLoader.item as RoomPage).followed : null
    property CPRData learnerSession: window.learnerManikin !== null ? window.learnerManikin.session : window.viewer.wasLive ? window.viewer.session : null
    property bool isLearnerLive: window.learnerManikin !== null ? window.learnerManikin.isRunning : window.viewer.isLive
    readonly property bool isLearnerInterrupted: window.isLearnerLive && window.learnerManikin !== null
                                                 && window.learnerManikin.state !== ClassManikin.Running
    readonly property LearnerWindow learnerWindow: learnerLoader.item as LearnerWindow
    // A session that no file holds yet goes into the library at once.
    readonly property bool savesInLibrary: window.viewer.library.folder.length > 0 && window.viewer.wasLive
                                           && window.viewer.isUnsaved && window.viewer.source.length === 0
    readonly property int leftCount: window.viewer.leftSessions.length
    readonly property Item pageItem: [startLoader.item, liveLoader.item, reviewLoader.item, libraryLoader.item, compareLoader.item, roomLoader.item][window.page]

    onPageChanged: window.usePage()
    function usePage() {
        window.usesLive = window.usesLive || window.page === Main.Live;
        window.usesReview = window.usesReview || window.page === Main.Review;
        window.usesCompare = window.usesCompare || window.page === Main.Compare;
        window.usesLibrary = window.usesLibrary || window.page === Main.Library;
        window.usesRoom = window.usesRoom || window.page === Main.Room;
    }
    function showSession() {
        if (window.viewer.session === null)
            window.page = Main.Start;
        else if (window.firstPage === "compare")
            window.page = Main.Compare;
        else
            window.page = window.viewer.wasLive && window.firstPage !== "review" ? Main.Live : Main.Review;
        window.firstPage = "";
        window.isJustEnded = false;
    }
    // One of the library's views: sessions, learners, class, class list.
    function showLibrary(view) {
        window.page = Main.Library;
        libraryLoader.item.showView(view);
    }
    Component.onCompleted: {
        const view = ["sessions", "learners", "class", "class-list"].indexOf(window.firstPage);
        if (window.firstPage === "manikins")
            window.page = Main.Room;
        if (view < 0 && window.firstPage !== "learner")
            return;
        window.showLibrary(Math.max(0, view));
        libraryLoader.item.learner = window.firstPage === "learner" ? window.firstLearner : "";
    }
    // Does something that would replace a session which is not saved; asks first.
    function leave(action) {
        if (!window.viewer.isUnsaved) {
            action();
            return;
        }
        const intoLibrary = window.savesInLibrary;
        unsavedDialog.yes = intoLibrary ? qsTr("Save in the library") : qsTr("Save…");
        unsavedDialog.yesAction = () => {
            window.viewer.stop();
            if (intoLibrary)
                chooser.saveInLibrary(action);
            else
                chooser.save(action);
        };
        unsavedDialog.noAction = () => {
            window.viewer.discard();
            action();
        };
        unsavedDialog.open();
    }
    function openFile(name) { window.leave(() => window.viewer.open(name)); }
    function save() {
        if (window.viewer.session !== null && !window.viewer.isLive && !window.viewer.isWriting)
            chooser.save(null);
    }
    function saveSoon() {
        if (!window.savesInLibrary)
            window.save();
        else if (!window.viewer.isLive && !window.viewer.isWriting)
            chooser.saveInLibrary(null);
    }
    function salvage(name) { window.leave(() => window.viewer.salvage(name)); }
    function show(page) {
        if (page === Main.Library || page === Main.Room)
            window.page = page;
        else if (window.viewer.session !== null && (page !== Main.Live || window.viewer.wasLive))
            window.page = page;
    }
    // Beside the session that is open.
    function compareWith(name) {
        window.viewer.compareWith(name);
        window.show(Main.Compare);
    }
    function endSession() {
        window.viewer.stop();
        window.isJustEnded = true;
        window.show(Main.Review);
    }

    visible: true
    minimumWidth: 960
    minimumHeight: 600
    title: window.viewer.session === null ? qsTr("CPR sessions")
                                          : qsTr("%1 – CPR sessions").arg(headerBar.markedName)
    background: Rectangle { color: Look.page }

    palette.window: Look.card
    palette.windowText: Look.text
    palette.base: Look.card
    palette.text: Look.text
    palette.button: Look.control
    palette.buttonText: Look.text
    palette.light: Look.controlHover
    palette.midlight: Look.controlHover
    palette.mid: Look.outline
    palette.dark: Look.muted
    palette.highlight: Look.accent
    palette.highlightedText: Look.accentText
    palette.toolTipBase: Look.card
    palette.toolTipText: Look.text

    onClosing: close => {
        const room = window.viewer.room;
        if (room.running > 0) {
            close.accepted = false;
            roomDialog.open();
            return;
        }
        room.finish(); // what has just ended need not wait
        window.isClosing = window.viewer.isWriting || !room.isIdle;
        close.accepted = !window.isClosing && !window.viewer.isUnsaved;
        if (!close.accepted && !window.isClosing)
            window.leave(() => window.close());
        else if (close.accepted)
            window.viewer.learnerPlace.hide(); // no window keeps the program running
    }

    Binding { target: Look; property: "dark"; value: window.viewer.appearance.isDark }
    Binding { target: window.viewer.sound; property: "session"; value: window.isLearnerLive ? window.learnerSession : null }
    Binding { target: Look; property: "textScale"; value: window.viewer.appearance.textScale }
    Binding {
        target: Look
        property: "unit"
        value: Math.max(0.75, Math.min(window.width / 1280, window.height / 800))
    }
    Connections {
        target: window.viewer
        function onSessionChanged() {
            window.showSession();
            if (window.viewer.isSalvaged && !window.viewer.isUnsaved)
                damageDialog.open();
        }
        function onWritten(isComplete) {
            const closes = window.isClosing && isComplete;
            window.isClosing = false;
            if (closes)
                window.close();
        }
    }
    Connections {
        target: window.viewer.room
        function onStatesChanged() {
            if (window.isClosing && window.viewer.room.isIdle && !window.viewer.isWriting)
                Qt.callLater(window.close);
        }
    }
    // What models have put into words is put anew.
    Connections {
        target: window.viewer.appearance
        function onLanguageChanged() {
            window.hasPages = window.usesLive = window.usesReview = window.usesCompare = window.usesLibrary = window.usesRoom = false;
            window.usePage();
            window.hasPages = true;
        }
    }

    header: Column {
        HeaderBar {
            id: headerBar
            width: parent.width
            viewer: window.viewer
            page: window.page
            onPageWanted: page => window.show(page)
            onOpenWanted: chooser.open()
            onSimulationWanted: scenarioDialog.open()
            onSaveWanted: window.saveSoon()
            onMenuWanted: at => menu.popup(at, 0, at.height)
            onReportWanted: damageDialog.open()
            onSoundWanted: soundDialog.open()
        }
        MessageBar {
            objectName: "problemBar"
            width: parent.width
            text: window.viewer.problem
            action: window.viewer.damagedFile.length > 0 ? qsTr("Salvage…") : ""
            onActed: window.salvage(window.viewer.damagedFile)
            onDismissed: window.viewer.dismissProblem()
        }
        MessageBar {
            objectName: "noticeBar"
            width: parent.width
            color: Look.accent
            text: window.viewer.notice
            onDismissed: window.viewer.dismissNotice()
        }
        MessageBar {
            objectName: "leftBar"
            width: parent.width
            color: Look.accent
            text: window.leftCount > 0 && window.page !== Main.Start && !window.isLeftForLater
                  ? qsTr("%n session(s) were recorded, but not saved.", "", window.leftCount) : ""
            action: qsTr("Show…")
            onActed: leftDialog.open()
            onDismissed: window.isLeftForLater = true
        }
        MessageBar {
            objectName: "endedBar"
            width: parent.width
            color: Look.accent
            text: window.isJustEnded && window.viewer.canResume && window.viewer.isUnsaved
                  ? qsTr("The session has ended.") : ""
            action: qsTr("Go on with it")
            onActed: {
                window.isJustEnded = false;
                window.viewer.resume();
                window.show(Main.Live);
            }
            onDismissed: window.isJustEnded = false
        }
    }

    Loader {
        id: startLoader
        anchors.fill: parent
        active: window.hasPages && window.page === Main.Start
        focus: startLoader.active
        sourceComponent: StartPage {
            focus: true
            viewer: window.viewer
            onOpenWanted: chooser.open()
            onSimulationWanted: scenarioDialog.open()
            onFileWanted: name => window.openFile(name)
            onLibraryWanted: view => window.showLibrary(view)
            onRoomWanted: window.show(Main.Room)
            onSaveLeftWanted: target => chooser.saveLeft(target)
        }
        onLoaded: startLoader.item.forceActiveFocus()
    }
    Loader {
        id: liveLoader
        anchors.fill: parent
        active: window.hasPages && window.usesLive
        visible: window.page === Main.Live
        sourceComponent: LivePage {
            focus: true
            viewer: window.viewer
            onReviewWanted: window.show(Main.Review)
            onStopWanted: endDialog.open()
        }
        onVisibleChanged: if (liveLoader.visible && liveLoader.item) liveLoader.item.forceActiveFocus()
        onLoaded: if (liveLoader.visible) liveLoader.item.forceActiveFocus()
    }
    Loader {
        id: reviewLoader
        anchors.fill: parent
        active: window.hasPages && window.usesReview
        visible: window.page === Main.Review
        sourceComponent: ReviewPage { focus: true; viewer: window.viewer }
        onVisibleChanged: if (reviewLoader.visible && reviewLoader.item) reviewLoader.item.forceActiveFocus()
        onLoaded: if (reviewLoader.visible) reviewLoader.item.forceActiveFocus()
    }
    Loader {
        id: compareLoader
        anchors.fill: parent
        active: window.hasPages && window.usesCompare
        visible: window.page === Main.Compare
        sourceComponent: ComparePage {
            focus: true
            viewer: window.viewer
            onBackWanted: window.show(Main.Review)
            onTableWanted: model => chooser.exportComparison(model)
            onPictureWanted: (model, isOverlaid) => chooser.exportComparisonPicture(model, isOverlaid)
        }
        onVisibleChanged: if (compareLoader.visible && compareLoader.item) compareLoader.item.forceActiveFocus()
        onLoaded: if (compareLoader.visible) compareLoader.item.forceActiveFocus()
    }
    Loader {
        id: libraryLoader
        anchors.fill: parent
        active: window.hasPages && window.usesLibrary
        visible: window.page === Main.Library
        sourceComponent: LibraryPage {
            focus: true
            viewer: window.viewer
            onOpenWanted: path => window.openFile(path)
            onFolderWanted: chooser.chooseLibrary()
            onClassFileWanted: chooser.readClassList()
            onStartWanted: scenarioDialog.open()
            onClassPdfWanted: model => chooser.exportClass(model)
            onReportsWanted: model => chooser.exportReports(model)
        }
        onVisibleChanged: if (libraryLoader.visible && libraryLoader.item) libraryLoader.item.focusView()
        onLoaded: if (libraryLoader.visible) libraryLoader.item.focusView()
    }
    Loader {
        id: roomLoader
        anchors.fill: parent
        active: window.hasPages && window.usesRoom
        visible: window.page === Main.Room
        sourceComponent: RoomPage { focus: true; viewer: window.viewer; onClassListWanted: window.showLibrary(3) }
        onVisibleChanged: if (roomLoader.visible && roomLoader.item) roomLoader.item.takeFocus()
        onLoaded: if (roomLoader.visible) roomLoader.item.takeFocus()
    }
    Timer {
        interval: 60000
        running: window.isJustEnded
        onTriggered: window.isJustEnded = false
    }

    FileChooser {
        id: chooser
        viewer: window.viewer
        onOpened: file => window.leave(() => window.viewer.openUrl(file))
    }
    LoadingDialog { id: loadingDialog; viewer: window.viewer }
    KeysDialog { id: keysDialog }
    SoundDialog { id: soundDialog; objectName: "soundDialog"; sound: window.viewer.sound }
    Loader {
        id: learnerLoader
        active: window.viewer.learnerPlace.isOpen
        sourceComponent: LearnerWindow {
            viewer: window.viewer
            session: window.learnerSession
            isLive: window.isLearnerLive
            isInterrupted: window.isLearnerInterrupted
        }
        onLoaded: window.viewer.learnerPlace.show(learnerLoader.item, window)
    }
    DamageDialog {
        id: damageDialog
        objectName: "damageDialog"
        viewer: window.viewer
        onSalvageWanted: window.salvage(window.viewer.source)
    }
    AppDialog {
        id: leftDialog
        objectName: "leftDialog"
        title: qsTr("Sessions that were not saved")
        width: Math.round(760 * Look.textUnit)
        firstItem: laterButton

        LeftList {
            objectName: "leftDialogList"
            Layout.fillWidth: true
            viewer: window.viewer
            onOpenWanted: target => {
                leftDialog.close();
                window.leave(() => window.viewer.bringBack(target));
            }
            onSaveWanted: target => chooser.saveLeft(target)
            onCountChanged: if (count === 0) leftDialog.close()
        }
        buttons: [ActionButton { id: laterButton; text: qsTr("Close"); onClicked: leftDialog.close() }]
    }
    ScenarioDialog {
        id: scenarioDialog
        objectName: "scenarioDialog"
        scenarios: window.viewer.scenarios
        names: window.viewer.classList
        onChosen: (name, seed, isNext) => window.leave(() => isNext ? window.viewer.startNext(name, seed)
                                                                     : window.viewer.startScenario(name, seed))
    }
    ReportDialog {
        id: reportDialog
        objectName: "reportDialog"
        viewer: window.viewer
        onPdfWanted: (remark, isA4) => chooser.exportReport(remark, isA4)
    }
    QuestionDialog {
        id: unsavedDialog
        objectName: "unsavedDialog"
        title: qsTr("Save the session first?")
        text: (window.viewer.isLive ? qsTr("%1 still runs, and would end now.") : qsTr("%1 is not saved.")).arg(window.viewer.name)
        yes: qsTr("Save…")
        no: qsTr("Do not save")
    }
    QuestionDialog {
        id: roomDialog
        objectName: "roomDialog"
        title: qsTr("End the class?")
        text: window.viewer.library.folder.length > 0
              ? qsTr("%n session(s) still run. They end now and are saved in the library.", "", window.viewer.room.running)
              : qsTr("%n session(s) still run. They end now, and the viewer offers to save them when it starts again.", "", window.viewer.room.running)
        yes: qsTr("End all and close")
        yesAction: () => {
            window.isClosing = true;
            window.viewer.room.finish();
            if (window.viewer.room.isIdle)
                window.close();
        }
    }
    QuestionDialog {
        id: endDialog
        objectName: "endDialog"
        title: qsTr("End the session?")
        text: qsTr("You will see its results, and can still go on with it for a minute.")
        yes: qsTr("End session")
        yesAction: window.endSession
    }
    ViewerMenu {
        id: menu
        objectName: "viewerMenu"
        viewer: window.viewer
        onOpenWanted: chooser.open()
        onSimulationWanted: scenarioDialog.open()
        onFileWanted: name => window.openFile(name)
        onSaveWanted: window.save()
        onCompareWanted: window.show(Main.Compare)
        onTableWanted: what => chooser.exportTable(what)
        onPictureWanted: chooser.exportPicture()
        onReportWanted: reportDialog.open()
        onLibraryWanted: view => window.showLibrary(view)
        onRoomWanted: window.show(Main.Room)
        onKeysWanted: keysDialog.open()
        onSoundWanted: soundDialog.open()
        onQuitWanted: window.close()
    }

    Shortcut { sequence: StandardKey.Open; onActivated: chooser.open() }
    Shortcut { sequence: StandardKey.New; onActivated: scenarioDialog.open() }
    Shortcut { sequence: StandardKey.Save; onActivated: window.saveSoon() }
    Shortcut { sequence: StandardKey.Quit; onActivated: window.close() }
    Shortcut { sequence: "Ctrl+1"; onActivated: window.show(Main.Live) }
    Shortcut { sequence: "Ctrl+2"; onActivated: window.show(Main.Review) }
    Shortcut { sequence: "Ctrl+3"; onActivated: window.showLibrary(0) }
    Shortcut { sequence: "Ctrl+4"; onActivated: window.showLibrary(2) }
    Shortcut { sequence: "Ctrl+5"; onActivated: window.showLibrary(3) }
    Shortcut { sequence: "Ctrl+6"; onActivated: window.show(Main.Compare) }
    Shortcut { sequence: "Ctrl+7"; onActivated: window.show(Main.Room) }
    Shortcut { sequence: "Ctrl+R"; enabled: window.viewer.session !== null; onActivated: reportDialog.open() }
    // Whatever has the focus, but not where it is typed.
    Shortcut {
        sequence: "Space"
        enabled: window.page === Main.Review && !menu.visible && !(window.activeFocusItem instanceof TextInput || window.activeFocusItem instanceof TextEdit)
        onActivated: reviewLoader.item.timelinePanel.togglePlaying()
    }
    Shortcut { sequence: "Ctrl+L"; context: Qt.ApplicationShortcut; onActivated: window.viewer.learnerPlace.isOpen = !window.viewer.learnerPlace.isOpen }
    Shortcut { sequence: "Ctrl+M"; context: Qt.ApplicationShortcut; onActivated: window.viewer.sound.hasMetronome = !window.viewer.sound.hasMetronome }
    Shortcut { sequence: "F1"; onActivated: keysDialog.open() }
    Shortcut { sequence: "F10"; onActivated: menu.popup(headerBar.menuButton, 0, headerBar.menuButton.height) }
    Shortcut {
        sequence: "F11"
        onActivated: window.visibility = window.visibility === Window.FullScreen ? Window.Windowed : Window.FullScreen
    }
}
