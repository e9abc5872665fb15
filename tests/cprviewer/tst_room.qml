// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtTest 1.15
import CPRData 1.0
import CPRViewer 1.0
import "qrc:/cprviewer/qml"

// A class that trains at the same time.
ViewerCase {
    name: "Room"

    readonly property ClassRoom room: viewer !== null ? viewer.room : null
    readonly property var six: ["good", "shallow", "aed", "leaning", "lossy-link", "beginner"]

    function manikins() { return Array.from({ length: room.count }, (_, row) => room.at(row)); }
    function learners() { return manikins().map(manikin => manikin.learner).join(); }
    function states() { return manikins().map(manikin => manikin.state).join(""); }
    function tileOf(row) { return findChild(item("tiles").itemAtIndex(row), "tile"); }
    function show(scenarios, speed) {
        keyClick("7", Qt.ControlModifier);
        verify(room.simulate(scenarios, 11, speed));
        waitForRendering(window.contentItem);
    }
    function test_archives() {
        viewer.chooseLibrary("file:" + desk.copies(0));
        viewer.classList.add("A\nB\nC;Manikin 6\nD\nE\nF\nG");
        show(six, 1000);
        compare(learners(), "A,B,D,E,F,C");
        compare(viewer.classList.nextText, "G");
        room.startAll();
        tryCompare(room, "isIdle", true, 60000);
        compare([states(), desk.filesIn("library").length, desk.journals(), viewer.problem], ["555555", 6, 0, ""]);
        six.forEach((scenario, i) => compare(desk.differenceFrom(scenario, 11 + i, "ABDEFC"[i], "Manikin " + (i + 1)), "", scenario));
        verify(manikins().every(manikin => manikin.storage === ClassManikin.InLibrary && manikin.figures.score >= 0));
        compare(viewer.classList.entries.map(entry => entry.sessions).join(""), "1111110");
        room.start(0);
        compare([learners(), room.at(0).state], ["G,B,D,E,F,C", ClassManikin.Running]);
        tryCompare(room, "isIdle", true, 20000);
        compare(desk.filesIn("library").length, 7);
    }
    function test_numbersAreTyped() {
        keyClick("7", Qt.ControlModifier);
        item("roomMinutes").forceActiveFocus();
        tryCompare(item("roomMinutes").contentItem, "selectedText", "any");
        keyClick("3");
        keyClick(Qt.Key_Tab);
        compare(viewer.classList.minutes, 3);
        item("simulateDialog").open();
        tryCompare(item("howMany").contentItem, "selectedText", "6");
        keyClick("2");
        keyClick(Qt.Key_Return);
        compare(room.count, 2);
        tryVerify(() => !item("simulateDialog").visible);
    }
    function test_learners() {
        viewer.classList.add("A\nB\nC");
        show(["perfect", "good"], 1);
        compare([learners(), viewer.classList.next], ["A,B", 2]);
        tileOf(1).picked();
        keyClick("l");
        tryVerify(() => item("assignDialog").opened);
        item("assignName").text = " C, jr. ";
        keyClick(Qt.Key_Return);
        compare([learners(), viewer.classList.next], ["A,C jr.", 1]);
        room.startAll();
        tryVerify(() => room.at(0).session.learners.length === 1, 8000);
        room.assign(0, "B");
        compare([learners(), room.at(0).session.learners.length], ["A, B,C jr.", 2]);
        room.stopAll();
        compare(desk.journals(), 2);
        tryVerify(() => desk.textOfJournals().includes(" learner B\n"));
        // What is resumed is one session.
        room.resume(0);
        room.stopAll();
        room.finish();
        compare(viewer.classList.entries.map(entry => entry.sessions).join(""), "110");
    }
    function test_startAndStop() {
        show(["perfect", "good", "aed"], 1);
        mouseClick(item("startAll"));
        compare([states(), room.running], ["111", 3]);
        room.advance(20);
        keyClick(Qt.Key_Right);
        keyClick("e");
        tryVerify(() => item("stopDialog").opened);
        compare(room.running, 3);
        keyClick(Qt.Key_Return);
        compare(states(), "151");
        verify(room.at(1).canResume);
        tryVerify(() => !item("stopDialog").visible);
        keyClick("s");
        compare(states(), "111");
        keyClick("e", Qt.ShiftModifier);
        tryVerify(() => item("stopDialog").opened);
        keyClick(Qt.Key_Return);
        compare(states(), "555");
        room.remove(0);
        compare(room.count, 2);
        room.finish();
        verify(room.isIdle);
        tryVerify(() => viewer.leftSessions.length === 3);
    }
    function test_nothingIsLostWhenItCloses() {
        viewer.chooseLibrary("file:" + desk.copies(0));
        show(["perfect", "good"], 1);
        room.startAll();
        room.advance(20);
        window.close();
        verify(window.visible);
        tryVerify(() => item("roomDialog").opened);
        keyClick(Qt.Key_Return);
        tryVerify(() => !window.visible, 20000);
        compare([desk.filesIn("library").length, desk.journals()], [2, 0]);
    }
    // A viewer that was killed when the archive was there, and the journal, too. Another session is not
    // taken for the one that was saved.
    function test_comesOutOnce_data() {
        return [{ tag: "the same", archive: "", left: 0 }, { tag: "another one", archive: desk.data("golden.zip"), left: 1 }];
    }
    function test_comesOutOnce(data) {
        viewer.chooseLibrary("file:" + desk.copies(0));
        show(["good"], 1);
        room.startAll();
        room.advance(20);
        room.stop(0);
        let journal = "";
        tryVerify(() => (journal = desk.textOfJournals()).includes("CPR_ENDED\n"));
        room.finish();
        tryCompare(room, "isIdle", true);
        desk.leaveJournal(journal, data.archive || desk.newFile("library/" + desk.filesIn("library")[0]));
        cleanup();
        begin(true);
        compare([viewer.leftSessions.length, desk.journals()], [data.left, data.left]);
    }
    function test_links() {
        viewer.chooseLibrary("file:" + desk.copies(0));
        viewer.classList.add("A\nB");
        verify(room.listen("tcp:0") && !room.listen("tcp:x") && viewer.problem.length > 0);
        viewer.dismissProblem();
        keyClick("7", Qt.ControlModifier);
        const port = room.addresses.split(":")[1], hello = "cprlink 1 m7 tester s1\n0 batch 1\n";
        verify(desk.openLink(port));
        desk.sendLink(hello + "0 manikin Lab 7\n");
        tryVerify(() => room.count === 1 && room.at(0).name === "Lab 7");
        compare([states(), learners(), viewer.classList.next], ["0", "A", 1]);
        waitForRendering(window.contentItem);
        keyClick("s");
        let answers = "";
        tryVerify(() => (answers += desk.takeAnswers()).includes("start\n"), 5000);
        const whole = desk.linesOf("good", 5, "Zoe", "Lab 7", 1000000), first = desk.linesOf("good", 5, "Zoe", "Lab 7", 60000);
        desk.sendLink(first);
        tryVerify(() => states() === "1" && room.at(0).session.cprEvents.sessionTime > 56000);
        compare([learners(), viewer.classList.next], ["Zoe", 0]);
        desk.closeLink();
        tryCompare(room.at(0), "state", ClassManikin.Gone);
        compare(tileOf(0).words, "Link gone for 0 s");
        keyClick("1");
        verify(item("trouble").visible);
        keyClick(Qt.Key_Escape);
        verify(desk.openLink(port));
        desk.sendLink(hello + "0 manikin Lab 7\n" + whole + "200000 bye\n");
        tryVerify(() => states() === "5" && room.isIdle, 10000);
        compare([desk.differenceFrom("good", 5, "Zoe", "Lab 7"), desk.journals(), viewer.problem], ["", 0, ""]);
        // Its minute is over while the manikin is lost; it is told when it is back.
        viewer.classList.minutes = 1;
        verify(desk.openLink(port));
        desk.sendLink("cprlink 1 m7 tester s2\n0 batch 1\n" + desk.linesOf("perfect", 1, "Kim", "Lab 7", 64000) + "64000 lost\n");
        tryCompare(room.at(0), "state", ClassManikin.ManikinLost);
        verify(room.count === 1 && tileOf(0).isLinkBad && learners() === "Kim");
        desk.sendLink("65000 found\n");
        tryCompare(room.at(0), "state", ClassManikin.Running);
        tryVerify(() => (answers += desk.takeAnswers()).includes("stop\n"), 5000);
        desk.sendLink("66000 state CPR_ENDED\n66000 bye\n");
        tryVerify(() => room.isIdle && desk.filesIn("library").length === 2, 10000);
        for (const id of ["m10", "m2"]) {
            verify(desk.openLink(port));
            desk.sendLink("cprlink 1 " + id + " tester s1\n");
            tryVerify(() => manikins().some(manikin => manikin.name === id));
        }
        compare(manikins().map(manikin => manikin.name).join(), "m2,Lab 7,m10");
        // A sender that begins again before the session has the learner whom it had. Nobody has trained,
        // and there is nothing to be saved.
        desk.openLink(port);
        desk.sendLink("cprlink 1 m10 tester s2\n");
        answers = "";
        tryVerify(() => (answers += desk.takeAnswers()).includes("welcome 0\n"));
        compare([learners(), viewer.classList.entries.map(entry => entry.sessions).join("")], ["B,Kim,A", "00"]);
        cleanup();
        begin(true);
        compare(viewer.leftSessions.length, 0);
    }
    function test_tiles() {
        viewer.classList.minutes = 3;
        show(["good", "shallow", "perfect"], 0.001);
        room.advance(75);
        tryVerify(() => room.at(1).isFirst, 5000);
        const tile = tileOf(1);
        verify(!tileOf(0).isFirst && tile.border.width > tileOf(0).border.width);
        tryCompare(tile, "duration", "1:45");
        compare(tile.words, "Press deeper.");
        verify(tile.spoken.startsWith("Help here first, No learner, Manikin 2, Depth ") && tile.parent.Accessible.name === tile.spoken, tile.spoken);
        verify(tileOf(2).score === "100 % right" && tileOf(2).words === "Well done, keep going.");
    }
    function test_pageByKeyboardAndMouse() {
        show(six, 0.001);
        room.advance(10);
        const page = window.pageItem, live = () => findChild(window, "allManikins").visible;
        keyClick(Qt.Key_4);
        verify(live() && page.opened === room.at(3) && window.activeFocusItem !== null);
        keyClick(Qt.Key_PageDown);
        compare(page.openedRow, 4);
        keyClick(Qt.Key_1);
        verify(findChild(page, "remarkNotice").text.startsWith("⚑ 0:10  "));
        keyClick(Qt.Key_Escape);
        verify(!live() && page.grid.activeFocus);
        keyClick(Qt.Key_Return);
        verify(live() && page.openedRow === 4);
        keyClick(Qt.Key_Return);
        verify(!live());
        mouseClick(tileOf(2), 20, 60);
        verify(live() && page.openedRow === 2);
        mouseClick(item("allManikins"));
        verify(!live() && window.learnerSession === room.at(2).session && window.isLearnerLive);
        for (const columns of [[1, 1], [2, 2], [4, 2], [6, 3], [9, 3], [12, 4]]) {
            while (room.count > 0) {
                room.stop(0);
                room.remove(0);
            }
            verify(room.simulate(Array(columns[0]).fill("good"), 1, 0.001));
            tryCompare(page.grid, "columns", columns[1]);
        }
        verify(!room.simulate(["good"], 1) && viewer.problem.length > 0);
    }
}
