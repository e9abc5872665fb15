// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtTest 1.15
import CPRViewer 1.0
import "qrc:/cprviewer/qml"

// A test with a window of the viewer.
TestCase {
    id: test

    property Viewer viewer: null
    property Main window: null
    readonly property Component windows: Component { Main { width: 1280; height: 800 } }
    readonly property SignalSpy shown: SignalSpy { target: test.viewer; signalName: "sessionChanged" }

    when: windowShown

    function init() { begin(false); }
    function begin(keepsJournals, keepsSettings = false) {
        viewer = desk.newViewer(keepsJournals, keepsSettings);
        window = windows.createObject(null, { viewer: viewer });
        window.requestActivate();
        tryVerify(() => window.active);
    }
    function cleanup() {
        window.destroy();
        window = null;
        wait(0);
        viewer = null;
        compare(desk.takeWarnings(), "");
    }
    function item(name) {
        const found = findChild(window, name);
        verify(found !== null, name);
        return found;
    }
    // All texts below an item.
    function texts(parent) {
        return Array.from(parent.children).reduce((all, child) =>
            all.concat(child.visible && child.font && child.text ? [child.text] : [], texts(child)), []);
    }
    function load(name) {
        shown.clear();
        viewer.open(name);
        shown.wait(20000);
    }
    // Saves or exports.
    function write(start) {
        compare(start(), Viewer.Started);
        tryCompare(viewer, "isWriting", false);
    }
    function replay(secs) {
        verify(viewer.startReplay(desk.data("two-rescuers.cprlog"), 0.001));
        desk.advance(secs);
    }
}
