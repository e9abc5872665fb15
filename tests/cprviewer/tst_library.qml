// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtTest 1.15
import CPRData 1.0
import CPRViewer 1.0
import "qrc:/cprviewer/qml"

// A folder of sessions, and a class from its list to its reports.
ViewerCase {
    name: "Library"

    readonly property LibraryFolder library: viewer !== null ? viewer.library : null

    function useFolder(folder) {
        viewer.chooseLibrary("file:" + folder);
        tryVerify(() => !library.isBusy, 60000);
    }
    function checkPreview(title) {
        const shown = desk.closePreview();
        verify(shown.startsWith(title), shown);
        window.requestActivate();
        tryVerify(() => window.active);
    }
    function test_listParsing_data() {
        return [
            { tag: "typed", text: "Mira Holm\n\n  Jörg   Aldane \n", wanted: ["Mira Holm||-1", "Jörg Aldane||-1"] },
            { tag: "spreadsheet", text: "Mira, Holm\tM 1\t0\r\nJörg\tM;2\tx\r\n", wanted: ["Mira Holm|M 1|0", "Jörg|M;2|-1"] },
            { tag: "head", text: "\ufeffProtocol;Name;E-Mail;Manikin\n1;Mira;m@x;M 1\n;;;\n9;Bo;;", wanted: ["Mira|M 1|1", "Bo||-1"] },
            { tag: "quotes", text: '"Holm, ""Mira""","M\n1",5\r"Bo","",', wanted: ['Holm "Mira"|M 1|5', "Bo||-1"] },
            { tag: "words", text: "Mira;;CPR with two rescuers\nname;;", wanted: ["Mira||4", "name||-1"] },
            { tag: "nobody", text: "name;manikin\n;M 1\n", wanted: [] }
        ];
    }
    function test_listParsing(data) {
        compare(viewer.classList.add(data.text), data.wanted.length);
        compare(viewer.classList.entries.map(entry => [entry.name, entry.manikin, entry.protocol].join("|")), data.wanted);
    }
    function test_list() {
        const list = viewer.classList;
        list.add("A;1\nB;2;1\nC");
        list.minutes = 2;
        verify(desk.isPrivate("class/list.json"));
        list.next = 1;
        compare(list.nextText, "B · 2 · Compressions only · 2 minutes");
        list.move(1, 1);
        compare([list.names.join(""), list.next], ["ACB", 2]);
        list.remove(2);
        compare([list.names.join(""), list.next], ["AC", 1]);
        list.correct(1, " ", "", 0); // nobody has no name
        list.correct(1, "D, E", "", 0);
        compare(list.names.join(), "A,D E");
        verify(desk.append("names.csv", "\ufeffName\r\nÖ\r\n"));
        viewer.readClassList("file:" + desk.newFile("names.csv"));
        compare([list.names.join(), viewer.notice], ["A,D E,Ö", "1 learner added."]);
        viewer.readClassList("file:" + desk.newFile("none.csv"));
        compare([viewer.problem, viewer.notice], ["none.csv cannot be read.", ""]);
        list.remove(2);
        cleanup();
        begin(true);
        compare([viewer.classList.names.join(), viewer.classList.next, viewer.classList.minutes], ["A,D E", 1, 2]);
    }
    function test_rows() {
        useFolder(desk.copies(250));
        window.showLibrary(0);
        const model = item("sessionsPage").model, list = item("sessionList");
        compare(model.count, 250);
        model.sortBy = LibraryModel.File;
        compare([0, 99, 100, 249, 250].map(row => model.fileAt(row)), ["249.zip", "150.zip", "149.zip", "000.zip", ""]);
        model.isDescending = false;
        compare([model.fileAt(0), model.fileAt(249)], ["000.zip", "249.zip"]);
        list.pick(110);
        verify(desk.append("library/0995.zip", "no session") && desk.append("library/zzz.zip", "PK"));
        tryCompare(model, "count", 252, 20000);
        compare([list.row, item("sessions").file], [111, "110.zip"]); // one has come before it
        compare(model.data(model.index(100, 0), LibraryModel.StateTextRole), "Damaged");
        for (const [property, value, count] of [["day", "2019", 0], ["day", "2026-03-04", 250], ["day", "3/4/26", 250], ["day", "2026-02", 0], ["day", "2026-03", 250], ["day", "2026", 250], ["day", "", 252],
                                                ["minScore", 20, 0], ["minScore", 19, 250], ["minScore", -1, 252], ["maxScore", 18, 0], ["maxScore", -1, 252], ["day", "nonsense", 252], ["day", "", 252], ["protocol", 5, 0], ["protocol", -1, 252],
                                                ["text", "24", 10], ["text", "", 252], ["learner", "nobody", 0], ["learner", "", 252]]) {
            model[property] = value;
            compare(model.count, count, property + value);
        }
    }
    function test_keyboardWalk_data() {
        return [
            { tag: "sessions", view: 0, wanted: ["search", "day", "protocol", "score", "sortScore", "sessionList", "openSession", "chooseFolder"] },
            { tag: "learners", view: 1, wanted: ["learnerSearch", "learnerList"] },
            { tag: "class", view: 2, wanted: ["classRows", "printClass", "classPdf", "classReports", "classListed"] },
            { tag: "class list", view: 3, wanted: ["classList", "typedNames", "startNext", "makeNext", "editEntry", "removeEntry", "readNames", "clearClass"] }
        ];
    }
    function test_keyboardWalk(data) {
        viewer.classList.add("A\nB");
        useFolder(desk.copies(2));
        window.showLibrary(data.view);
        tryVerify(() => !library.isBusy);
        const lists = ["sessionList", "learnerList", "classRows", "classList"];
        item(lists[data.view]).forceActiveFocus();
        keyClick(Qt.Key_Down, data.view === 3 ? Qt.ControlModifier : Qt.NoModifier);
        compare(viewer.classList.names.join(""), data.view === 3 ? "BA" : "AB");
        const names = [], visited = [];
        while (!visited.includes(window.activeFocusItem)) {
            const focused = window.activeFocusItem;
            verify(focused.visible && (focused.Accessible.name || focused.parent.Accessible.name).length > 0, focused + focused.objectName);
            visited.push(focused);
            for (let named = focused; named && named !== window.contentItem; named = named.parent)
                names.push(named.objectName);
            keyClick(Qt.Key_Tab);
        }
        data.wanted.forEach(name => verify(names.includes(name), name + " in " + names));
    }
    function test_fromHeadToRows() {
        useFolder(desk.copies(2));
        window.showLibrary(0);
        for (const name of ["sortScore", "search"]) {
            item("sortScore").forceActiveFocus(Qt.TabFocusReason);
            item(name).forceActiveFocus(Qt.TabFocusReason);
            keyClick(Qt.Key_Down);
            verify(item("sessionList").activeFocus, name);
        }
    }
    function test_problems() {
        useFolder(desk.newFile("gone"));
        window.showLibrary(0);
        verify(item("libraryProblem").text.includes("gone is not there"));
    }
    // Six learners with two sessions each, by keyboard alone.
    function test_class() {
        const list = viewer.classList, names = ["Ann", "Bo", "דוד", "<b>Di</b>", "Eve", "Fay"];
        useFolder(desk.copies(0));
        keyClick(Qt.Key_5, Qt.ControlModifier);
        compare(window.activeFocusItem.Accessible.name, "Add learners: name, manikin, protocol");
        item("typedNames").text = names.map((name, i) => `${name};M ${i % 2 + 1};0`).join("\n"); // is pasted
        item("addNames").forceActiveFocus();
        keyClick(Qt.Key_Return);
        tryCompare(item("classList"), "row", 0);
        list.minutes = 1;
        for (let session = 0; session < 12; ++session) {
            compare(list.next, session % 6);
            keyClick(Qt.Key_N, Qt.ControlModifier);
            tryVerify(() => item("scenarioDialog").opened);
            keyClick(Qt.Key_Return);
            tryCompare(viewer, "isLive", true);
            desk.advance(1000);
            tryCompare(viewer, "isLive", false);
            compare(viewer.session.learners, [names[session % 6]]);
            keyClick(Qt.Key_S, Qt.ControlModifier);
            tryVerify(() => !viewer.isUnsaved && !viewer.isWriting);
        }
        compare(list.entries.map(entry => entry.sessions).join(), "2,2,2,2,2,2");
        verify(viewer.addRemark("again", 0) !== null);
        keyClick(Qt.Key_S, Qt.ControlModifier); // where it was
        tryVerify(() => !viewer.isUnsaved && !viewer.isWriting);
        compare(desk.filesIn("library").length, 12);

        keyClick(Qt.Key_3, Qt.ControlModifier);
        const model = item("sessionsPage").model;
        tryCompare(model, "count", 12, 20000);
        keyClick(Qt.Key_F, Qt.ControlModifier);
        for (const letter of "ann")
            keyClick(letter);
        compare(model.count, 2);
        keyClick(Qt.Key_Down);
        keyClick(Qt.Key_L);
        compare(item("learnerName").text, "Ann");
        tryVerify(() => item("trend").texts.includes("Mean depth: " + item("trend").texts[0].split(": ")[1]) && item("trend").texts[0].includes("50–60"));
        keyClick(Qt.Key_Escape);
        shown.clear();
        item("sessionList").forceActiveFocus();
        keyClick(Qt.Key_Return);
        shown.wait(20000);
        compare([window.page, viewer.session.learners], [Main.Review, ["Ann"]]);

        keyClick(Qt.Key_R, Qt.ControlModifier);
        tryVerify(() => item("reportDialog").opened);
        keyClick(Qt.Key_Escape);
        write(() => viewer.exportReport("file:" + desk.newFile("ann.pdf"), "Well done", true, false));
        verify(desk.textOf(desk.newFile("ann.pdf")).startsWith("%PDF"));

        viewer.printReport("Well done");
        checkPreview("Ann, ");

        keyClick(Qt.Key_4, Qt.ControlModifier);
        const page = item("classPage");
        tryVerify(() => page.model.count === 6 && !page.model.isLoading, 20000);
        verify(page.model.summary.startsWith("Learners: 6 · Sessions: 12 · Passed: "));
        // All do what a beginner does with seed 1: they share all faults.
        verify(page.model.faults.length > 0 && page.model.faults.every(fault => fault.countText === "6 of 6" && fault.share === 1));
        keyClick(Qt.Key_P, Qt.ControlModifier);
        checkPreview("Class, ");
        page.model.learners = ["Bo"];
        tryCompare(page.model, "count", 1);
        page.model.learners = [];
        tryCompare(page.model, "count", 6);
        const reports = desk.newFile("reports");
        verify(desk.append("reports/note", ""));
        write(() => viewer.exportReports(page.model, "file:" + reports, true, false));
        compare([viewer.problem, desk.filesIn("reports").length], ["", 13]);
        compare(viewer.exportReports(page.model, "file:" + reports, true, false), Viewer.Exists);
        write(() => viewer.exportClass(page.model, "file:" + reports + "/class", false, false));
        verify(desk.textOf(reports + "/class.pdf").startsWith("%PDF"));
    }
    // What a pointer can reach.
    function click(name) {
        tryVerify(() => item(name).visible && item(name).enabled, 20000, name);
        waitForRendering(window.contentItem, 200);
        mouseClick(item(name));
    }
    function clickRow(name, row, isDouble) {
        tryVerify(() => item(name).itemAtIndex(row) !== null, 20000, name);
        waitForRendering(window.contentItem, 200);
        if (isDouble)
            mouseDoubleClickSequence(item(name).itemAtIndex(row));
        else
            mouseClick(item(name).itemAtIndex(row));
    }
    // A class of six from its list to twelve printed pages, two sessions each.
    function test_classByMouse() {
        const list = viewer.classList, names = ["Ann", "Bo", "Cy", "Di", "Eve", "Fay"];
        click("libraryTab");
        click("firstFolder");
        verify(desk.chooseFolder(desk.copies(0)));
        tryCompare(library, "folder", desk.newFile("library"));
        click("classListTab");
        item("typedNames").text = names.join("\n");
        click("addNames");
        mouseClick(item("minutes"), item("minutes").width - 8, item("minutes").height / 2);
        compare(list.minutes, 1);
        clickRow("classList", 1);
        click("makeNext");
        for (let session = 0; session < 12; ++session) {
            const name = names[(session + 1) % 6];
            if (session > 0)
                click("simulate");
            else
                click("startNext");
            tryVerify(() => item("scenarioDialog").opened);
            click("start");
            tryCompare(viewer, "isLive", true);
            if (session === 3) { // begun by mistake, and again
                click("simulate");
                tryVerify(() => item("scenarioDialog").opened);
                click("start");
                tryVerify(() => item("unsavedDialog").opened);
                mouseClick(findChild(item("unsavedDialog").contentItem, "no"));
            }
            desk.advance(session === 5 ? 20 : 1000);
            if (session === 5) {
                click("stop");
                tryVerify(() => item("endDialog").opened);
                mouseClick(findChild(item("endDialog").contentItem, "yes"));
            }
            tryCompare(viewer, "isLive", false);
            compare(viewer.session.learners, [name]);
            click("save");
            tryVerify(() => !viewer.isUnsaved && !viewer.isWriting);
        }
        compare(list.entries.map(entry => entry.sessions).join(), "2,2,2,2,2,2");
        click("simulate");
        tryVerify(() => item("scenarioDialog").opened);
        click("start");
        desk.advance(1000);
        tryVerify(() => list.entries[1].sessions === 3);
        viewer.discard();
        compare(list.entries[1].sessions, 2);

        click("libraryTab");
        click("sessionsTab");
        tryCompare(item("sessionsPage").model, "count", 12, 20000);
        click("sortLearner");
        clickRow("sessionList", 0);
        click("learnerProgress");
        compare(item("learnerName").text, "Ann");
        click("renameLearner");
        tryVerify(() => item("renameDialog").opened);
        item("newName").text = "Bo";
        verify(item("renameNote").text.includes("Both become one"));
        item("newName").text = " Zoë,  B. ";
        click("acceptName");
        tryCompare(viewer, "notice", "Ann is called Zoë B. in 2 sessions.", 20000);
        compare([item("learnerName").text, list.names[0], library.hasLearner("Ann")], ["Zoë B.", "Zoë B.", false]);
        verify(desk.append("library/cut.zip", "PK"));
        click("back");
        click("classOfDay");
        const page = item("classPage");
        tryVerify(() => page.model.count === 6 && !page.model.isLoading, 20000);
        click("printClass");
        checkPreview("Class, ");
        click("classReports");
        tryVerify(() => item("reportsMenu").opened);
        mouseClick(item("reportsMenu").itemAt(0));
        verify(desk.printTo(desk.newFile("all.pdf")));
        tryCompare(viewer, "notice", "12 reports printed.", 20000);
        compare(desk.pagesOf(desk.newFile("all.pdf")), 12);
        clickRow("classRows", 5, true);
        tryCompare(item("learnerName"), "text", "Zoë B.");
        click("back");
        click("sessionsTab");
        shown.clear();
        clickRow("sessionList", item("sessionList").row, true);
        shown.wait(20000);
        compare([window.page, viewer.session.learners], [Main.Review, ["Zoë B."]]);
        const wanted = viewer.recentFiles.names[1], menu = item("viewerMenu"), recent = item("recentMenu");
        click("menu");
        tryVerify(() => menu.opened);
        let place = 0;
        while (menu.itemAt(place).subMenu !== recent)
            ++place;
        mouseClick(menu.itemAt(place));
        tryVerify(() => recent.opened);
        tryVerify(() => {
            place = viewer.recentFiles.names.indexOf(wanted);
            if (recent.opened && place >= 0)
                mouseClick(recent.itemAt(place));
            return viewer.source === wanted;
        }, 20000);
    }
    function test_correction() {
        useFolder(desk.copies(2));
        window.showLibrary(0);
        const list = item("sessionList"), dialog = item("learnersDialog");
        list.forceActiveFocus();
        keyClick(Qt.Key_F2);
        tryVerify(() => dialog.opened);
        item("learnerNames").text = "Ada, Jr.\n\nBo";
        mouseClick(item("acceptLearners"));
        tryVerify(() => viewer.notice.includes("are corrected"), 20000);
        tryVerify(() => library.learnersOf(item("sessions").file).join("|") === "Ada Jr.|Bo");
        load(library.pathOf(item("sessions").file));
        compare([viewer.session.learners, viewer.isDamaged], [["Ada Jr.", "Bo"], false]);
        verify(desk.append("library/cut.zip", "PK"));
        tryVerify(() => library.learnersOf("cut.zip") !== undefined && item("sessionsPage").model.count === 3, 20000);
        verify(library.setLearners("cut.zip", ["Ann"]));
        tryVerify(() => viewer.problem.includes("stay as they were"), 20000);
    }
}
