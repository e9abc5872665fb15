// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Window 2.15
import QtTest 1.15
import CPRData 1.0
import CPRViewer 1.0
import "qrc:/cprviewer/qml"

// The window as a whole: by keyboard alone, in both languages, and after a kill.
ViewerCase {
    name: "Window"

    function test_keyboardWalk_data() {
        return [
            { tag: "start", page: 0, wanted: ["startOpen", "startSimulation", "open", "simulate", "menu"] },
            { tag: "live", page: 1, wanted: ["liveTab", "reviewTab", "save", "open", "menu", "review"] },
            { tag: "review", page: 2, wanted: ["timelineView", "play", "speed", "fit", "eventList"] },
            { tag: "manikins", page: 5, wanted: ["roomTab", "startAll", "roomClassList", "addManikins", "cell"] }
        ];
    }
    function test_keyboardWalk(data) {
        if (data.page > 0)
            replay(1000);
        if (data.page === 5)
            verify(viewer.room.simulate(["good"], 1, 0));
        window.show(data.page);
        const visited = [];
        while (!visited.includes(window.activeFocusItem)) {
            const focused = window.activeFocusItem;
            verify(focused.visible && focused.Accessible.name.length > 0, focused + focused.objectName);
            visited.push(focused);
            keyClick(Qt.Key_Tab);
        }
        const names = visited.map(focused => focused.objectName);
        data.wanted.forEach(name => verify(names.includes(name), name + " in " + names));
    }
    function test_nothingIsLostUnasked() {
        const question = item("unsavedDialog");
        for (let starts = 0; starts < 3; ++starts) {
            keyClick("n", Qt.ControlModifier);
            tryVerify(() => item("scenarioDialog").opened);
            keyClick(Qt.Key_Return);
            tryVerify(() => viewer.isLive && (starts === 0 || question.opened));
            verify(starts === 0 || window.activeFocusItem.visualFocus); // the second time as well
            keyClick(Qt.Key_Escape);
            tryVerify(() => !question.visible);
        }
        compare(viewer.name, "Simulated: Beginner");
        verify(viewer.isLive);
        compare(desk.journals(), 1);
        viewer.discard();
        compare(desk.journals(), 0);
    }
    function test_fullScreen() {
        keyClick(Qt.Key_F11);
        tryCompare(window, "visibility", Window.FullScreen);
    }
    function test_german() {
        load(desk.data("two-rescuers.cprlog"));
        viewer.appearance.language = "de";
        compare(item("reviewTab").text, "Auswertung");
        tryVerify(() => item("primaryAdvice").text === "1.  Die Hände am richtigen Druckpunkt ansetzen.");
        tryVerify(() => item("eventCount").text === "187 Ereignisse");
        compare(Words.value("compMeanDepth", 5164), "51,6\u00a0mm");
        compare(viewer.scenarios[2].title, "Anfänger");
        const translations = desk.textOf(desk.data("../../apps/cprviewer/translations/cprviewer_de.ts"));
        verify(translations.includes("Drucktiefe") && !translations.includes("unfinished"));
    }
    function test_killed() {
        verify(desk.killRecording());
        cleanup();
        begin(true);
        verify(item("leftText").visible && !item("leftBar").visible);
        compare(window.activeFocusItem.objectName, "bringBack");
        load(desk.data("golden.zip"));
        shown.clear();
        mouseClick(findChild(item("leftBar"), "act")); // offered beside another session, too
        tryVerify(() => item("leftDialog").opened);
        mouseClick(findChild(item("leftDialogList"), "bringBack"));
        shown.wait(20000);
        verify(viewer.isUnsaved && viewer.isSalvaged && viewer.leftSessions.length === 0);
        // 110 a minute from the first second on: 15 in nine seconds, of which the last may be cut.
        verify(viewer.session.cprEvents.count(CPREventBase.TagComp) >= 14);
        write(() => viewer.save("file:" + desk.newFile("back.zip"), false));
        compare([viewer.isUnsaved, desk.journals()], [false, 0]);
    }
    function test_leftSessions() {
        const folder = "libCPRData/cprviewer/unsaved/";
        const first = "cprlog 1\n0 start 2026-01-31T09:00:00Z\n";
        verify(desk.append(folder + "1.zip.journal", first + "0 learner Anna\n0 learner Bo\n5 state CPR_INIT\n90000 state CPR_ENDED\n900"));
        verify(desk.append(folder + "2.zip.journal", first + "0 learner Carl\nwhat?\n500 state CPR_INIT\n"));
        verify(desk.append(folder + "3.zip.journal", first));
        cleanup();
        begin(true);
        compare(viewer.leftSessions.map(left => [left.learners.join(), left.msecs]), [["", 0], ["Carl", 500], ["Anna,Bo", 90000]]);
        compare(viewer.leftSessions[2].start.getTime(), Date.UTC(2026, 0, 31, 9));
        const target = viewer.leftSessions[2].target, damaged = viewer.leftSessions[1].target;
        const question = findChild(item("leftList"), "discardDialog");
        waitForRendering(window.contentItem);
        mouseClick(findChild(item("leftList"), "discardLeft"));
        tryVerify(() => question.opened);
        compare(desk.journals(), 3); // asked first
        mouseClick(findChild(question.contentItem, "yes"));
        compare([desk.journals(), viewer.leftSessions.length], [2, 2]);
        const saved = desk.newFile("left.zip");
        write(() => viewer.saveLeft(target, "file:" + saved, false));
        compare([desk.journals(), viewer.notice, viewer.session], [1, `Saved as ${saved}.`, null]);
        load(saved);
        compare([viewer.session.learners.length, item("learners").text], [2, "Anna, Bo"]);
        write(() => viewer.saveLeft(damaged, "file:" + desk.newFile("damaged.zip"), false));
        verify(desk.textOf(desk.newFile("damaged.damaged.journal")).includes("what?") && desk.journals() === 0);
    }
    function test_damagedFiles_data() {
        const line = "damaged.cprlog", log = desk.textOf(desk.data("two-rescuers.cprlog"));
        return [
            // A wrong checksum costs no event, but nobody knows that; without a directory nothing is found at once.
            { tag: "checksum", file: () => desk.damaged("checksum"), marks: ["⚠ Damaged", "⚠ Salvaged in part"], count: 13 },
            { tag: "cut", file: () => desk.damaged("cut"), marks: [null, "⚠ Salvaged in part"], count: 13 },
            { tag: "log", file: () => desk.append(line, log + "what?\n") && desk.newFile(line),
              marks: ["⚠ Damaged", "⚠ Salvaged in part"], count: 187 },
            { tag: "first line", file: () => desk.append(line, log.slice(1)) && desk.newFile(line), marks: [null, "⚠ Salvaged in part"], count: 187 }
        ];
    }
    function test_damagedFiles(data) {
        const file = data.file(), url = "file:" + file;
        const kept = file.replace(/\.(?=[a-z]*$)/, ".damaged.");
        const mark = () => viewer.session === null ? null : item("mark").text;
        viewer.open(file);
        tryCompare(viewer, "isLoading", false);
        compare([viewer.damagedFile, mark()], [file, data.marks[0]]);
        verify(data.marks[0] === null || viewer.report.length > 0);
        mouseClick(findChild(item("problemBar"), "act"));
        tryCompare(viewer, "isSalvaged", true);
        compare([viewer.problem, mark()], ["", data.marks[1]]);
        tryCompare(window.pageItem.events, "count", data.count);
        compare(viewer.proposedFile(".zip").toString().split("-salvaged.zip").length, 2);
        tryVerify(() => item("damageDialog").opened && viewer.report.length > 0);
        compare(viewer.save(url, false), Viewer.LosesSource);
        write(() => viewer.save(url, true));
        verify(!desk.isSame(file, kept) && viewer.notice.includes(".damaged.") && viewer.isDamaged);
        viewer.open(kept); // is as damaged as before
        tryCompare(viewer, "isLoading", false);
        compare(viewer.damagedFile, kept);
        load(file);
        compare([viewer.problem, viewer.isDamaged], ["", false]);
    }
    function test_growingLog() {
        const text = desk.textOf(desk.data("two-rescuers.cprlog"));
        const half = Math.round(text.length / 2);
        verify(desk.append("growing.cprlog", text.slice(0, half)));
        verify(viewer.startReplay(desk.newFile("growing.cprlog"), 1000));
        desk.advance(1000);
        wait(50);
        compare([viewer.isLive, viewer.problem], [true, ""]);
        verify(desk.append("growing.cprlog", text.slice(half)));
        tryCompare(viewer, "isLive", false);
        window.show(Main.Review);
        tryCompare(window.pageItem.events, "count", 187);
        for (const [replaced, reason] of [["", " is not there any more"], [text, " was cut or replaced"]]) {
            verify(desk.append("gone.cprlog", text.slice(0, half)) && viewer.startReplay(desk.newFile("gone.cprlog"), 1000));
            desk.advance(1000);
            verify(desk.remove("gone.cprlog") && (!replaced || desk.append("gone.cprlog", replaced)));
            tryCompare(viewer, "isLive", false);
            compare(viewer.problem, desk.newFile("gone.cprlog") + reason);
            viewer.discard();
        }
    }
    function test_space() {
        load(desk.data("two-rescuers.cprlog"));
        const panel = window.pageItem.timelinePanel;
        tryVerify(() => panel.timeline.length > 0);
        for (const name of ["liveTab", "speed", "fit", "eventList", "menu"]) {
            const wasPlaying = panel.isPlaying;
            item(name).forceActiveFocus();
            keyClick(Qt.Key_Space);
            compare(panel.isPlaying, !wasPlaying, name);
        }
        keyClick("n", Qt.ControlModifier);
        tryVerify(() => item("scenarioDialog").opened);
        keyClick(Qt.Key_Space);
        verify(panel.isPlaying && window.page === 2);
    }
    function test_manyLearners() {
        load(desk.data("two-rescuers.cprlog"));
        const line = item("learners");
        line.names = Array.from({ length: 40 }, (none, index) => "Learner " + (index + 1));
        const shown = line.text.split(", ");
        verify(!line.truncated && shown.length > 1);
        compare(shown[shown.length - 1].split(" +")[1], String(40 - shown.length));
    }
    function test_place_data() {
        const large = Qt.rect(0, 0, 1920, 1080), small = Qt.rect(0, 0, 1366, 728), right = Qt.rect(1920, 0, 1280, 1024);
        return [
            // 40 pixels are for the title.
            { tag: "first start", wanted: Qt.rect(0, 0, 0, 0), screens: [small], place: Qt.rect(43, 40, 1280, 688) },
            { tag: "as it was", wanted: Qt.rect(100, 90, 1000, 700), screens: [large], place: Qt.rect(100, 90, 1000, 700) },
            { tag: "smaller screen", wanted: Qt.rect(0, 40, 1900, 1000), screens: [small], place: Qt.rect(0, 40, 1366, 688) },
            { tag: "second screen", wanted: Qt.rect(2000, 100, 1000, 700), screens: [large, right], place: Qt.rect(2000, 100, 1000, 700) },
            { tag: "screen gone", wanted: Qt.rect(2000, 100, 1000, 700), screens: [large], place: Qt.rect(460, 210, 1000, 700) },
            { tag: "half outside", wanted: Qt.rect(1500, 700, 1000, 700), screens: [large], place: Qt.rect(920, 380, 1000, 700) }
        ];
    }
    function test_place(data) { compare(desk.placed(data.wanted, data.screens), data.place); }
    function test_commandLine_data() {
        return [
            { tag: "picture", arguments: ["--live", "beginner", "--at", "5", "--size", "1000x700", "--screenshot", "PICTURE"], result: [0, 1000, 700, 0] },
            { tag: "learner's view", arguments: ["--live", "beginner", "--at", "5", "--learner-view", "--size", "1000x700", "--screenshot", "PICTURE"], result: [0, 1000, 700, 0] },
            { tag: "class", arguments: ["--live", "good,aed", "--at", "5", "--size", "1000x700", "--screenshot", "PICTURE"], result: [0, 1000, 700, 0] },
            { tag: "class of nobody", arguments: ["--live", "good,", "--screenshot", "PICTURE"], result: [2, 0, 0, 1] },
            { tag: "from anywhere", arguments: ["--from", "tcp:x"], result: [2, 0, 0, 1] },
            { tag: "damaged", arguments: [desk.data("README.md"), "--screenshot", "PICTURE"], result: [1, 0, 0, 1] },
            { tag: "comparison", arguments: [desk.data("golden.zip"), "--compare", desk.data("golden.zip"), "--size", "1000x700", "--screenshot", "PICTURE"], result: [0, 1000, 700, 0] },
            { tag: "compared with none", arguments: [desk.data("golden.zip"), "--compare", desk.data("README.md"), "--screenshot", "PICTURE"], result: [1, 0, 0, 1] },
            { tag: "nothing compared", arguments: ["--compare", desk.data("golden.zip")], result: [2, 0, 0, 1] },
            { tag: "missing", arguments: ["nothing.zip"], result: [1, 0, 0, 1] },
            { tag: "scenario", arguments: ["--live", "nobody"], result: [2, 0, 0, 1] },
            { tag: "size", arguments: ["--size", "10x10"], result: [2, 0, 0, 1] },
            { tag: "speed", arguments: ["--live", "aed", "--speed", "nan"], result: [2, 0, 0, 1] },
            { tag: "time", arguments: ["--live", "aed", "--at", "inf"], result: [2, 0, 0, 1] },
            { tag: "seed", arguments: ["--live", "aed", "--seed", "-1"], result: [2, 0, 0, 1] },
            { tag: "nothing", arguments: ["--live", "aed", "--screenshot", ""], result: [2, 0, 0, 1] },
            { tag: "no display", arguments: ["--dark"], result: [1, 0, 0, 1] }
        ];
    }
    function test_pictureKeepsItsInput_data() { return [{ tag: "session", option: [] }, { tag: "log", option: ["--replay"] }]; }
    function test_pictureKeepsItsInput(data) {
        load(desk.data("golden.zip"));
        const input = desk.newFile("<b>input.csv");
        write(() => viewer.exportTable("file:" + input, "summary", true));
        const before = desk.textOf(input);
        compare(desk.run(data.option.concat([input, "--screenshot", input])), [2, 0, 0, 1]);
        compare(desk.textOf(input), before);
    }
    function test_commandLine(data) { compare(desk.run(data.arguments), data.result, desk.errors()); }
}
