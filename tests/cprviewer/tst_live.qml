// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtTest 1.15
import CPRViewer 1.0

// The session of two rescuers, whose figures stand in tests/data/README.md, as it runs.
ViewerCase {
    name: "Live"

    function test_figures_data() {
        return [
            // 20 compressions are over; the last began at 12260 and was 52 mm deep.
            { tag: "compressions", at: 13, depth: ["52", "Right depth", "Full release"], rate: ["111", "Right rate"],
              volume: ["–"], counts: ["20", "0", "–", "0:13"], advice: "Well done, keep going" },
            // The 3rd breath has ended at 38740: 320 ml.
            { tag: "breaths", at: 38.8, depth: ["51"], rate: ["107"], volume: ["320", "Too little"],
              counts: ["30", "1", "–", "0:38"], advice: "Give each ventilation the target volume, neither less nor more." },
            // Pause A since 56220; rate 0 was sent.
            { tag: "pause", at: 61.5, depth: ["53"], rate: ["–"], volume: ["600", "Right volume"],
              counts: ["30", "0", "5", "1:01"], advice: "Go on, keep the pause short" },
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
        tryCompare(item("advice"), "words", "Put the hands in the right place on the chest.");
        mouseClick(item("review"));
        compare(window.page, 2);
    }
}
