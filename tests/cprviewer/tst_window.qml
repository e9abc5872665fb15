// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Window 2.15
import QtTest 1.15
import CPRData 1.0
import CPRViewer 1.0

// The window as a whole: by keyboard alone, in both languages, and after a kill.
ViewerCase {
    name: "Window"

    function test_keyboardWalk_data() {
        return [
            { tag: "start", page: 0, wanted: ["startOpen", "startSimulation", "open", "simulate", "menu"] },
            { tag: "live", page: 1, wanted: ["liveTab", "reviewTab", "save", "open", "menu", "review"] },
            { tag: "review", page: 2, wanted: ["timelineView", "play", "speed", "fit", "eventList"] }
        ];
    }
    function test_keyboardWalk(data) {
        if (data.page > 0)
            replay(1000);
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
        shown.wait(20000);
        verify(viewer.isUnsaved && !viewer.hasLeftSession);
        // 110 a minute from the first second on: 15 in nine seconds, of which the last may be cut.
        verify(viewer.session.cprEvents.count(CPREventBase.TagComp) >= 14);
        compare(viewer.save("file:" + desk.newFile("back.zip"), false), Viewer.Saved);
        compare([viewer.isUnsaved, desk.journals()], [false, 0]);
    }
    function test_commandLine_data() {
        return [
            { tag: "picture", arguments: ["--live", "beginner", "--at", "5", "--size", "1000x700", "--screenshot", "PICTURE"], result: [0, 1000, 700, 0] },
            { tag: "damaged", arguments: [desk.data("README.md"), "--screenshot", "PICTURE"], result: [1, 0, 0, 1] },
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
        compare(viewer.exportTable("file:" + input, "summary", true), Viewer.Saved);
        const before = desk.textOf(input);
        compare(desk.run(data.option.concat([input, "--screenshot", input])), [2, 0, 0, 1]);
        compare(desk.textOf(input), before);
    }
    function test_commandLine(data) { compare(desk.run(data.arguments), data.result); }
}
