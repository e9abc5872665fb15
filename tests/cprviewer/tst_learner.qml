// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Window 2.15
import QtTest 1.15
import CPRViewer 1.0
import "qrc:/cprviewer/qml"

// What learners see and hear, in a window of their own.
ViewerCase {
    name: "Learner"

    function openView() {
        keyClick("l", Qt.ControlModifier);
        tryVerify(() => window.learnerWindow !== null && window.learnerWindow.visible);
        return findChild(window.learnerWindow.contentItem, "learnerView");
    }
    function buttons(parent) {
        return Array.from(parent.children).reduce((all, child) =>
            all.concat(child.visible && child.clicked ? [child] : [], buttons(child)), []);
    }
    function test_view_data() {
        return [
            { tag: "faults", at: 92.6, wanted: ["Depth", "45", "▼", "Deeper", "125", "Slower", "700", "Less", "▲ Let go", "8 / 30", "0 / 2", "Press deeper."], unwanted: ["Stand clear."] },
            { tag: "no link", at: 92.6, isInterrupted: true, wanted: ["No connection to the manikin.", "8 / 30"], unwanted: ["Deeper", "▲ Let go", "Press deeper."] },
            { tag: "pause", at: 99.5, wanted: ["5 s", "12 / 30", "Go on, keep the pause short."], unwanted: ["Deeper"] },
            { tag: "stand clear", at: 61.5, wanted: ["Stand clear.", "Shock advised"], unwanted: ["Depth", "53"] },
            { tag: "end", at: 1000, wanted: ["Your result", "68 %", "Put the hands in the right place on the chest."], unwanted: ["Depth"] }
        ];
    }
    function test_view(data) {
        replay(data.at);
        const view = openView();
        view.isInterrupted = data.isInterrupted === true;
        tryVerify(() => data.wanted.every(text => texts(view).includes(text)), 5000, data.wanted + " in " + texts(view));
        const seen = texts(view);
        verify(data.unwanted.every(text => !seen.includes(text)), seen);
        const names = Array.from(viewer.session.learners, learner => learner.name || learner);
        verify(names.length > 0 && names.concat(data.at < 1000 ? ["%"] : []).every(name => !seen.join().includes(name)), names + " in " + seen);
        compare(buttons(view).length, 0);
    }
    function test_followsWhatIsLive() {
        const view = openView();
        tryVerify(() => texts(view).includes("Ready for you"));
        load(desk.data("two-rescuers.cprlog"));
        verify(texts(view).includes("Ready for you"));
        replay(13);
        tryVerify(() => texts(view).includes("Depth"));
        viewer.stop();
        tryVerify(() => texts(view).includes("The session has ended."));
        compare(view.Accessible.name, "Learner's view");
    }
    function test_placeSurvives() {
        openView();
        const learners = window.learnerWindow;
        learners.requestActivate();
        tryVerify(() => learners.active);
        keyClick(Qt.Key_F11);
        tryCompare(learners, "visibility", Window.FullScreen);
        keyClick(Qt.Key_Escape);
        tryCompare(learners, "visibility", Window.Windowed);
        mouseDoubleClickSequence(learners.contentItem);
        tryCompare(learners, "visibility", Window.FullScreen);
        keyClick("m", Qt.ControlModifier);
        verify(viewer.sound.hasMetronome && !viewer.sound.hasTones);
        viewer.sound.volume = 0.4;
        window.close();
        cleanup();
        begin(true, true);
        tryVerify(() => window.learnerWindow !== null && window.learnerWindow.visible);
        compare([viewer.sound.hasMetronome, viewer.sound.hasTones, viewer.sound.hasSpeech, viewer.sound.volume], [true, false, false, 0.4]);
        window.learnerWindow.close();
        tryCompare(window, "learnerWindow", null);
        cleanup();
        begin(true, true);
        compare(window.learnerWindow, null);
    }
    function test_display_data() {
        return [
            { tag: "one", screens: ["A"], first: "A", wanted: "B", place: -1 },
            { tag: "second", screens: ["A", "B", "C"], first: "A", wanted: "", place: 1 },
            { tag: "chosen before", screens: ["A", "B", "C"], first: "A", wanted: "C", place: 2 },
            { tag: "the first window has it", screens: ["A", "B"], first: "B", wanted: "B", place: 0 },
            { tag: "chosen one is gone", screens: ["A", "B"], first: "A", wanted: "C", place: 1 }
        ];
    }
    function test_display(data) { compare(desk.secondScreen(data.screens, data.first, data.wanted), data.place); }
    function test_noDevice() {
        const dialog = item("soundDialog");
        dialog.open();
        tryVerify(() => dialog.opened);
        keyClick(Qt.Key_Space);
        verify(viewer.sound.hasMetronome && item("noticeBar").text.startsWith("This machine has no sound output"));
        verify(findChild(dialog.contentItem, "soundLack").visible);
        viewer.dismissNotice();
        keyClick(Qt.Key_Space);
        keyClick(Qt.Key_Space);
        compare([viewer.sound.hasMetronome, viewer.notice], [true, ""]);
        keyClick(Qt.Key_Escape);
        replay(13);
        compare([viewer.notice, viewer.problem], ["", ""]);
    }
}
