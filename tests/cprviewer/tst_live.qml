// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtTest 1.15
import CPRData 1.0
import CPRViewer 1.0

// The session of two rescuers, whose figures stand in tests/data/README.md, as it runs.
ViewerCase {
    name: "Live"

    function test_figures_data() {
        return [
            // 20 compressions are over; the last began at 12260 and was 52 mm deep.
            { tag: "compressions", at: 13, depth: ["52", "Right depth", "Full release"], rate: ["111", "Right rate"],
              volume: ["–"], counts: ["20", "0", "–", "0:13"], advice: "Well done, keep going." },
            // The 3rd breath has ended at 38740: 320 ml.
            { tag: "breaths", at: 38.8, depth: ["51"], rate: ["107"], volume: ["320", "Too little"],
              counts: ["30", "1", "–", "0:38"], advice: "Well done, keep going." },
            // Pause A since 56220, shock advised since 60000; rate 0 was sent.
            { tag: "stand clear", at: 61.5, aed: ["Shock advised", "VF"], depth: ["53"], rate: ["–"], volume: ["600", "Right volume"],
              counts: ["30", "0", "5", "1:01"], advice: "Stand clear." },
            // The shock at 63000.
            { tag: "go on", at: 64.5, aed: ["Shock 200 J", "VF, shock 200 J"], depth: ["53"], rate: ["–"],
              volume: ["600"], counts: ["30", "0", "8", "1:04"], advice: "Continue compressions." },
            // Pause B since 94300.
            { tag: "pause", at: 99.5, isFault: true, depth: ["45"], rate: ["–"], volume: ["700"],
              counts: ["12", "0", "5", "1:39"], advice: "Go on, keep the pause short." },
            // 8 compressions of run 5 at 125 a minute, all 45 mm; the 8th leant, 7 mm.
            { tag: "faults", at: 92.6, depth: ["45", "Too shallow", "7 mm not released"], rate: ["125", "Too fast"],
              volume: ["700", "Too much"], counts: ["8", "0", "–", "1:32"], advice: "Press deeper." }
        ];
    }
    function test_figures(data) {
        replay(data.at);
        for (const panel of ["depth", "rate", "volume"])
            tryVerify(() => data[panel].every(text => texts(item(panel)).includes(text)), 5000, panel);
        verify(texts(item("depth")).includes("Target 50–60 mm"));
        ["compressions", "ventilations", "pause", "time"].forEach(
            (panel, i) => tryCompare(item(panel), "number", data.counts[i]));
        tryCompare(item("advice"), "words", data.advice);
        compare(item("pause").isFault, data.isFault === true);
        if (data.aed)
            compare([item("aed").number, item("aed").corner], data.aed);
    }
    function test_protocols_data() {
        return [
            { tag: "one rescuer", protocol: 0, shown: ["depth", "rate", "volume", "compressions", "ventilations"], title: "Compressions in cycle" },
            { tag: "compressions only", protocol: 1, shown: ["depth", "rate", "compressions"], title: "Compressions" },
            { tag: "ventilations only", protocol: 2, shown: ["volume", "ventilationRate", "ventilations"] },
            { tag: "high performance", protocol: 5, shown: ["depth", "rate", "volume", "compressions", "ventilations", "breathing"], title: "Compressions" }
        ];
    }
    function test_protocols(data) {
        verify(viewer.startScenario("perfect", 1, 0));
        desk.advance(0.5); // nothing is done yet
        desk.setProtocol(data.protocol);
        const panels = ["depth", "rate", "volume", "ventilationRate", "compressions", "ventilations", "breathing"];
        tryVerify(() => panels.filter(name => item(name).visible).join() === data.shown.join()
                        && (!data.title || item("compressions").title === data.title));
    }
    function test_continuesWhatIsTrained() {
        replay(61.5);
        desk.setProtocol(2); // ventilations only
        desk.advance(64.5);
        tryCompare(item("advice"), "words", "Continue ventilations.");
    }
    function test_goesOnFromThere() {
        verify(viewer.startReplay(desk.data("two-rescuers.cprlog"), 1));
        desk.advance(60);
        tryVerify(() => window.pageItem.figures.time > 60200, 5000);
    }
    function test_endsAndIsCounted() {
        verify(viewer.startReplay(desk.data("two-rescuers.cprlog"), 1000));
        verify(viewer.isUnsaved);
        tryCompare(viewer, "isLive", false, 30000);
        const figures = window.pageItem.figures;
        tryCompare(figures, "compressionCount", 162);
        tryCompare(figures, "ventilationCount", 8);
        tryCompare(item("advice"), "words", "Result: 68 %. Put the hands in the right place on the chest.");
        verify(!viewer.canResume);
        mouseClick(item("review"));
        compare(window.page, 2);
    }
    function test_endIsTakenBack() {
        replay(60);
        compare(item("source").text, "▶  Replay");
        mouseClick(item("stop"));
        verify(viewer.isLive); // asks first
        tryVerify(() => item("endDialog").opened);
        keyClick(Qt.Key_Return);
        tryCompare(window, "page", 2);
        verify(!viewer.isLive);
        mouseClick(findChild(item("endedBar"), "act"));
        compare([window.page, viewer.isLive, item("endedBar").visible], [1, true, false]);
        desk.advance(200);
        compare([viewer.isLive, viewer.problem], [false, ""]); // nothing is refused by the journal
        compare(viewer.session.cprEvents.count(CPREventBase.TagComp), 162);
    }
}
