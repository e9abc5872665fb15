// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtTest 1.15
import CPRData 1.0
import CPRViewer 1.0

// The same session looked over.
ViewerCase {
    name: "Review"

    property var page: null

    function review() {
        load(desk.data("two-rescuers.cprlog"));
        page = window.pageItem;
        tryCompare(page.timelinePanel.timeline, "length", 120000);
        tryCompare(page.events, "count", 187);
    }
    function fact(name, title) {
        tryVerify(() => texts(item(name)).includes(title), 5000, title);
        const all = texts(item(name));
        return all[all.indexOf(title) + 1].replace("\u00a0", " ");
    }
    function test_results() {
        review();
        compare(item("learners").text, "Mira Holm, Jörg Aldane");
        tryCompare(item("overall"), "percent", 68);
        compare(item("overall").verdict, "✓ basic, from 50 %");
        compare(item("primaryAdvice").text, "1.  Put the hands in the right place on the chest.");
        compare(item("secondaryAdvice").text, "2.  Press deeper.");
        page.sidePanel.currentIndex = 2;
        compare(fact("recorded", "Deviation of depth"), "2.8 mm");
        compare(fact("recorded", "Longest compression pause"), "6.6 s");
        compare(fact("statistics", "Compressions"), "162");
        compare(fact("statistics", "Mean volume"), "530 ml");
        page.sidePanel.currentIndex = 3;
        compare(fact("guidelines", "Compression depth"), "50–60 mm");
        compare(fact("guidelines", "Inflation time"), "0.7–1.5 s");
    }
    function test_events() {
        review();
        page.events.tags = CPREventBase.TagInactivity;
        compare(page.events.count, 2);
        page.pick(0);
        compare(page.timelinePanel.position, 56220);
        compare(fact("parameters", "Length of pause"), "10 s");
        const pause = page.chosen;
        page.events.tags = 0; // rows come in front of it
        tryVerify(() => page.row > 0 && page.events.eventAt(page.row) === pause);
        compare([page.chosen, page.timelinePanel.position], [pause, 56220]);
        compare(page.events.data(page.events.index(0, 0), EventListModel.DetailRole),
                "Mira Holm, Jörg Aldane, CPR with two rescuers");
        page.events.tags = CPREventBase.TagInactivity;
        desk.resetSession(); // releases the event that is shown
        tryCompare(page, "chosen", null);
        compare(page.events.count, 0);
    }
    function test_keys() {
        review();
        const timeline = page.timelinePanel.timeline;
        keyClick(Qt.Key_Plus);
        tryVerify(() => timeline.shownTo - timeline.shownFrom < 120000);
        const shown = timeline.shownFrom;
        keyClick(Qt.Key_Right);
        tryVerify(() => timeline.shownFrom > shown);
        keyClick(Qt.Key_F);
        tryCompare(timeline, "shownTo", 120000);
        for (let row = 0, before = 0; row < page.events.count; ++row) {
            page.pick(row);
            verify(page.timelinePanel.position >= before, row);
            before = page.timelinePanel.position;
        }
        page.pick(2);
        keyClick(Qt.Key_N);
        compare(page.timelinePanel.position, 2540);
        keyClick(Qt.Key_P);
        compare(page.timelinePanel.position, 2000);
        keyClick(Qt.Key_Space);
        tryVerify(() => page.timelinePanel.position > 2540 && page.row > 3);
        keyClick(Qt.Key_Space);
        verify(!page.timelinePanel.isPlaying);
    }
    function test_staysAsItWasLeft() {
        replay(60);
        window.show(2);
        page = window.pageItem;
        tryVerify(() => page.timelinePanel.timeline.length > 59000);
        page.events.tags = CPREventBase.TagAed;
        page.pick(2);
        page.timelinePanel.speed = 4;
        page.timelinePanel.zoom(4);
        const panel = page.timelinePanel;
        const state = () => [page.chosen, page.row, panel.position, panel.speed, page.events.tags,
                             panel.timeline.shownFrom, panel.timeline.shownTo];
        const before = state();
        compare(before.slice(1, 5), [2, 45000, 4, CPREventBase.TagAed]);
        window.show(1);
        desk.advance(70);
        window.show(2);
        compare(state(), before);
    }
    function test_faults() {
        review();
        page.events.faultsOnly = true;
        // Of the runs 2 + 2 + 29 + 12 + 2 compressions, four breaths, and both pauses: of ten seconds
        // the AED asked for three.
        compare(page.events.count, 53);
        page.goTo(45000);
        keyClick(Qt.Key_N, Qt.ShiftModifier);
        compare([page.chosen.msec, page.timelinePanel.position], [47700, 47700]);
        keyClick(Qt.Key_P, Qt.ShiftModifier);
        compare(page.chosen.msec, 43380);
        const timeline = page.timelinePanel.timeline;
        verify(!item("overviewStrip").visible);
        timeline.showTime(52000, 56000);
        tryVerify(() => timeline.plotArea.width > 0 && item("overviewStrip").visible);
        wait(50); // drawn
        // What is right is picked, too: the filter goes.
        const x = timeline.xAt(54400);
        mouseClick(item("timelineView"), x, timeline.plotArea.y + timeline.plotArea.height * 0.25);
        compare([page.chosen.type, page.chosen.msec, page.events.faultsOnly], [CPREventBase.CprCompEvent, 54180, false]);
        mouseClick(item("overview"), item("overview").width / 2, 5); // 60 s of 120 s
        tryVerify(() => Math.abs(timeline.shownFrom - 58000) < 200); // a pixel has some 100 ms
        page.sidePanel.currentIndex = 1;
        tryVerify(() => texts(item("cycleList")).includes("1:19   Too shallow, 22 times"));
        page.goTo(43000);
        tryCompare(item("depthThen"), "text", "54");
        compare([item("rateThen").text, item("volumeThen").text], ["111", "600"]);
    }
    function test_remarks() {
        cleanup();
        begin(true);
        replay(30);
        const at = viewer.session.cprEvents.sessionTime;
        keyClick(Qt.Key_1);
        keyClick(Qt.Key_T);
        keyClick(Qt.Key_X);
        keyClick(Qt.Key_Return);
        compare(item("remarkNotice").text, "⚑ 0:30  x");
        viewer.addRemark("now", at);
        viewer.correctRemark(viewer.addRemark("then", 7000), "Depth");
        viewer.removeRemark(viewer.addRemark("gone", 8000));
        compare(viewer.addRemark(" ", 9000), null);
        cleanup();
        begin(true); // from the journal
        shown.clear();
        viewer.bringBack(viewer.leftSessions[0].target);
        shown.wait(20000);
        page = window.pageItem;
        const remarks = () => {
            const all = [];
            page.events.tags = CPREventBase.TagCprGui;
            for (let row = 0; row < page.events.count; ++row)
                all.push([page.events.data(page.events.index(row, 0), EventListModel.StartRole),
                          page.events.data(page.events.index(row, 0), EventListModel.DetailRole)].join(" "));
            return all.filter(text => !text.includes("AED")).sort();
        };
        compare(remarks(), [`${at} Hands`, `${at} now`, `${at} x`, "7000 Depth"].sort());
        const saved = desk.newFile("remarks.zip");
        write(() => viewer.save("file:" + saved, false));
        load(saved);
        page = window.pageItem;
        verify(!viewer.isUnsaved);
        page.goTo(9000);
        keyClick(Qt.Key_9);
        verify(viewer.isUnsaved && page.chosen.msec === 9000);
        compare(viewer.proposedFile(".zip").toString(), "file://" + saved);
        write(() => viewer.save("file:" + saved, true));
        verify(!viewer.isUnsaved);
        load(saved);
        page = window.pageItem;
        compare(remarks().length, 5);
        page.pick(page.events.rowAt(9000));
        keyClick(Qt.Key_Delete);
        tryVerify(() => item("removeDialog").opened);
        mouseClick(findChild(item("removeDialog").contentItem, "yes"));
        compare(remarks().length, 4);
        viewer.discard();
    }
    function test_files() {
        window.firstPage = "live";
        load(desk.data("golden.zip"));
        compare([window.page, item("liveTab").visible], [2, false]); // nothing of now
        compare([viewer.name, viewer.problem, viewer.isUnsaved], ["golden.zip", "", false]);
        compare(viewer.recentFiles.names, [desk.data("golden.zip")]);
        review();
        compare(viewer.fileName("file:///there/my%20100%25.zip"), "my 100%.zip");
        const saved = desk.newFile("saved.zip");
        write(() => viewer.save("file:" + desk.newFile("saved"), false));
        compare(viewer.save("file:" + saved, false), Viewer.Exists);
        write(() => viewer.save("file:" + saved, true));
        compare(viewer.notice, `Saved as ${saved}.`);
        write(() => viewer.save("file:" + desk.newFile("no/folder.zip"), false));
        compare([viewer.problem.split("no/folder.zip").length, viewer.notice], [2, ""]); // said once
        const table = desk.newFile("events.csv");
        write(() => viewer.exportTable("file:" + table, "events", false));
        compare(desk.textOf(table).trim().split("\n").length, 188);
        load(saved);
        tryCompare(page.events, "count", 185); // an archive does not list statistics and score
        write(() => viewer.exportTable("file:" + table, "events", true));
        compare(desk.textOf(table).trim().split("\n").length, 186);
        write(() => viewer.exportPicture("file:" + desk.newFile("picture.svg"), false));
        verify(desk.textOf(desk.newFile("picture.svg")).includes("</svg>"));
        write(() => viewer.save("file:" + desk.newFile("again.zip"), false));
        load(desk.newFile("again.zip"));
        tryCompare(item("overall"), "percent", 68);
    }
    function test_notLoaded() {
        review();
        viewer.open(desk.data("golden.zip"));
        viewer.cancelLoading();
        tryCompare(viewer, "isLoading", false);
        compare(viewer.problem, "");
        viewer.open(desk.data("README.md"));
        tryCompare(viewer, "isLoading", false);
        verify(viewer.problem.includes("neither a session archive nor a recorded log"));
        compare(page.events.count, 187);
    }
}
