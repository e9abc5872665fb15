// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtTest 1.15
import CPRData 1.0
import CPRViewer 1.0
import "qrc:/cprviewer/qml"

// The session of two minutes beside another one.
ViewerCase {
    name: "Compare"

    property var page: null
    property var upper: null
    property var lower: null

    function open(other) {
        load(desk.data("two-rescuers.cprlog"));
        window.compareWith(other);
        compare(window.page, Main.Compare);
        page = window.pageItem;
        tryVerify(() => page.hasOther && page.comparison.count > 0, 20000);
        [upper, lower] = [item("timelineA"), item("timelineB")];
        tryVerify(() => upper.plotArea.width > 0 && lower.plotArea.width > 0);
    }
    // What both show of the common time, and where their marks are.
    function shown(plot, zero) {
        return [plot.shownFrom - zero, plot.shownTo - zero, Math.round(plot.cursorX), plot.plotArea.x, plot.plotArea.width];
    }
    function isCommon() {
        return JSON.stringify(shown(upper, page.comparison.zero)) === JSON.stringify(shown(lower, page.comparison.otherZero));
    }
    function row(key) {
        const model = page.comparison;
        for (let i = 0; i < model.count; ++i) {
            const at = model.index(i, 0);
            if (model.data(at, ComparisonModel.KeyRole) === key)
                return [ComparisonModel.ValueTextRole, ComparisonModel.OtherTextRole, ComparisonModel.DifferenceTextRole].map(role => model.data(at, role));
        }
        return [];
    }
    function test_oneWindowOfTime() {
        open(desk.data("golden.zip"));
        compare(row("compressions"), ["162", "2", "+160"]);
        compare(item("learnersA").text, "Mira Holm, Jörg Aldane");
        tryCompare(item("endedB"), "visible", true);
        compare([upper.shownFrom, upper.shownTo, upper.zero], [0, 120000, 0]);
        verify(isCommon());
        page.panel.goTo(30000);
        keyClick(Qt.Key_Plus);
        tryVerify(() => upper.shownTo - upper.shownFrom === 96000 && isCommon());
        compare([upper.cursor, lower.cursor], [30000, 30000]);
        keyClick(Qt.Key_Right);
        keyClick(Qt.Key_Right, Qt.ShiftModifier);
        tryVerify(() => upper.shownFrom > 9000 && isCommon());
        mouseClick(item("fromCompression"));
        compare(upper.zero, 2000);
        verify(page.comparison.otherZero > 0 && item("sessionPositions").text.startsWith("A at 0:31.0, B at"));
        tryVerify(isCommon);
        keyClick(Qt.Key_F);
        tryVerify(() => upper.shownFrom - 2000 === page.comparison.begin && upper.shownTo - 2000 === page.comparison.end);
        keyClick(Qt.Key_O);
        const overlay = item("overlay");
        tryVerify(() => overlay.visible && !upper.visible && overlay.plotArea.width > 0);
        keyClick(Qt.Key_Plus);
        tryVerify(() => overlay.shownFrom === upper.shownFrom && overlay.shownTo === upper.shownTo
                        && overlay.shownTo - overlay.shownFrom < 96001);
        compare(overlay.cursor, 31000);
    }
    function test_export() {
        open(desk.data("golden.zip"));
        const table = desk.newFile("both.csv"), picture = desk.newFile("both.svg");
        write(() => viewer.exportComparison(page.comparison, "file:" + table, false));
        const lines = desk.textOf(table).split("\r\n");
        verify(lines.includes("compressions,Compressions,,162,2,160,"), lines);
        verify(lines.includes("learners,,,\"Mira Holm, Jörg Aldane\",\"Ann, Bob Jörg\",,"), lines);
        verify(lines.includes("fault,Too shallow,,22,0,22,"), lines);
        compare(viewer.exportComparison(page.comparison, "file:" + table, false), Viewer.Exists);
        write(() => viewer.exportComparisonPicture(page.comparison, true, "file:" + picture, false));
        verify(["</svg>", "Mira Holm", ">B<"].every(part => desk.textOf(picture).includes(part)));
    }
    function test_withItself() {
        open(desk.data("two-rescuers.cprlog"));
        for (let i = 0; i < page.comparison.count; ++i) {
            const difference = page.comparison.data(page.comparison.index(i, 0), ComparisonModel.DifferenceTextRole);
            verify(/^[0.]*([^0-9].*)?$/.test(difference), difference);
        }
        compare(row("mean_depth_mm")[2].replace("\u00a0", " "), "0.0 mm");
        verify(!item("endedA").visible && !item("endedB").visible);
        page.table.currentIndex = 1;
        compare(page.comparison.faults.map(fault => [fault.count, fault.other])[0], [22, 22]);
        tryVerify(() => texts(item("comparedFaults")).includes("Too shallow"));
    }
    function test_otherSession() {
        open(desk.damaged("checksum"));
        tryVerify(() => item("problemB").text.length > 0);
        compare([item("problemA").text, viewer.session.cprEvents.count(CPREventBase.TagComp)], ["", 162]);
        mouseClick(item("swap"));
        compare([page.comparison.other, item("problemB").text], [viewer.session, ""]);
        viewer.compareWith(desk.data("README.md"));
        tryVerify(() => item("compareProblem").text.includes("neither a session archive nor"));
        verify(!page.isSwapped && page.comparison.count === 0);
        viewer.compareWith(desk.data("golden.zip"));
        mouseClick(item("cancelCompare"));
        compare([viewer.other.isLoading, viewer.other.session], [false, null]);
        viewer.compareWith(desk.data("golden.zip"));
        tryVerify(() => page.hasOther);
        compare(viewer.recentFiles.names[0], desk.data("golden.zip"));
        mouseClick(item("closeOther"));
        compare([page.hasOther, window.page, viewer.name], [false, Main.Compare, "two-rescuers.cprlog"]);
        mouseClick(item("cancelCompare"));
        compare([window.page, item("compareTab").visible], [Main.Review, false]);
        keyClick("6", Qt.ControlModifier);
        compare(window.page, Main.Compare);
    }
}
