// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtTest 1.15
import CPRData 1.0
import CPRViewer 1.0
import "qrc:/cprviewer/qml"

// What the pages are for eyes that see little, other colours or nothing.
ViewerCase {
    name: "Eyes"

    // Colours are red, green and blue from 0 to 1.
    function linear(color) {
        return color.map(part => part <= 0.04045 ? part / 12.92 : Math.pow((part + 0.055) / 1.055, 2.4));
    }
    function product(matrix, vector) {
        return matrix.map(row => row.reduce((sum, factor, i) => sum + factor * vector[i], 0));
    }
    // WCAG 2: (L1 + 0.05) / (L2 + 0.05)
    function contrast(one, other) {
        const [darker, lighter] = [one, other].map(color => product([[0.2126, 0.7152, 0.0722]], linear(color))[0]).sort((a, b) => a - b);
        return (lighter + 0.05) / (darker + 0.05);
    }
    // The distance of CIE 1976 as a deuteranope sees it: Machado, Oliveira and Fernandes 2009, severity 1.0.
    function seenDistance(one, other) {
        const [a, b] = [one, other].map(color => {
            const seen = product([[0.367322, 0.860646, -0.227968], [0.280085, 0.672501, 0.047413],
                                  [-0.01182, 0.04294, 0.968881]], linear(color)).map(part => Math.max(0, part));
            const [x, y, z] = product([[0.4339, 0.3762, 0.1899], [0.2126, 0.7152, 0.0722], [0.0177, 0.1095, 0.8728]], seen)
                .map(part => part > 0.008856 ? Math.cbrt(part) : 7.787 * part + 4 / 29);
            return [116 * y - 16, 500 * (x - y), 200 * (y - z)];
        });
        return Math.hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
    }
    // Translucent colours as they look on a lane.
    function shown(name) {
        const [color, lane] = [Look[name] || Look.colors[name], Look.colors.lane];
        return ["r", "g", "b"].map(part => color.a * color[part] + (1 - color.a) * lane[part]);
    }
    // Events in their list and the session's name may end in dots: they stand elsewhere as well.
    function cutTexts(parent, right) {
        return Array.from(parent.children).filter(child => child.visible && !["eventList", "sessionName"].includes(child.objectName))
                    .reduce((all, child) => {
            const end = child.mapToItem(null, child.width, 0).x;
            const isCut = child.truncated || (child.text && child.contentWidth && end > right + 1);
            return all.concat(isCut ? [child.text] : [], cutTexts(child, child instanceof Card ? Math.min(right, end) : right));
        }, []);
    }
    function checkWhole(place) {
        waitForRendering(window.contentItem);
        const cut = () => cutTexts(window.contentItem.parent, window.width).join();
        tryVerify(() => cut() === "", 5000, place + ": " + cut());
    }
    function test_textsAreWhole_data() { return [{ tag: "en" }, { tag: "de" }]; }
    function test_textsAreWhole(data) {
        viewer.appearance.language = data.tag;
        viewer.chooseLibrary("file:" + desk.copies(2));
        viewer.classList.add("Mira Holm;Manikin 1;0\nTom Berg;Manikin 2;5");
        for (let view = 0; view < 4; ++view) {
            window.showLibrary(view);
            tryVerify(() => !viewer.library.isBusy);
            checkWhole("library " + view);
        }
        load(desk.data("two-rescuers.cprlog"));
        for (let i = 0; i < 5; ++i) {
            window.pageItem.sidePanel.currentIndex = i;
            checkWhole("review " + i);
        }
        for (const key of ["n", "r"]) {
            keyClick(key, Qt.ControlModifier);
            checkWhole("dialog " + key);
            keyClick(Qt.Key_Escape);
        }
        window.compareWith(desk.data("golden.zip"));
        tryVerify(() => window.pageItem !== null);
        checkWhole("comparison");
        verify(viewer.startScenario("aed", 1, 0));
        desk.advance(70);
        checkWhole("live");
        viewer.discard();
        keyClick("7", Qt.ControlModifier);
        verify(viewer.room.simulate(["good", "shallow", "aed", "leaning", "lossy-link", "beginner"], 1, 0.001));
        viewer.room.startAll();
        viewer.room.advance(40);
        checkWhole("class");
    }
    function test_contrast_data() {
        const texts = { text: "card page control controlHover chosen lane band pause", muted: "card page chosen lane band pause",
                        good: "card page chosen", fault: "card page chosen", accentText: "accent fault" };
        const shapes = { outline: "card page", accent: "card page control", accentText: "accent fault", bars: "card grid lane",
                         bandEdge: "lane band grid", fault: "lane band", curve: "lane", loss: "lane pause", cursor: "card lane band pause" };
        return [[texts, 4.5], [shapes, 3]].reduce((rows, [pairs, least]) => rows.concat(Object.keys(pairs).map(
            name => ({ tag: name + " " + least, name: name, grounds: pairs[name].split(" "), least: least }))), []);
    }
    function test_contrast(data) {
        verify(Math.abs(contrast([0, 0, 0], [1, 1, 1]) - 21) < 1e-6);
        verify(Math.abs(contrast([1, 0, 0], [1, 1, 1]) - 4) < 0.01); // 1.05 / 0.2626
        for (const dark of [false, true]) {
            Look.dark = dark;
            data.grounds.forEach(ground => verify(contrast(shown(data.name), shown(ground)) >= data.least,
                                                  [dark, ground, contrast(shown(data.name), shown(ground))]));
        }
    }
    function test_colourVision() {
        verify(Math.abs(seenDistance([0, 0, 0], [1, 1, 1]) - 100) < 0.1);
        for (const dark of [false, true]) {
            Look.dark = dark;
            // Grounds alone do not do: the pause has lines.
            verify(seenDistance(shown("band"), shown("pauseLines")) > 20);
            for (const name of ["good", "fault", "curve", "bars", "loss", "text", "pauseLines", "flag"])
                verify(seenDistance(shown("cursor"), shown(name)) > 20, [dark, name, seenDistance(shown("cursor"), shown(name))]);
        }
    }
    function test_spoken() {
        replay(92.6);
        tryCompare(item("depth").Accessible, "name", "Depth: 45 mm, Too shallow, 7 mm not released");
        compare(item("rate").Accessible.name, "Rate: 125 per minute, Too fast");
        tryCompare(item("advice").Accessible, "name", "Advice: Press deeper.");
        desk.advance(99.5);
        tryCompare(item("advice").Accessible, "name", "Advice: Go on, keep the pause short.");
        compare(item("pause").Accessible.name, "Pause: 5 s, Too long");
        desk.advance(1000);
        tryCompare(item("depth").Accessible, "name", "Depth: 55 mm, Right depth, Full release (earlier)");
        window.show(Main.Review);
        tryVerify(() => window.pageItem.timelinePanel.timeline.length > 0);
        compare(item("play").Accessible.description, "Play the session back (space)");
        keyClick(Qt.Key_Space);
        compare([item("play").Accessible.name, item("play").Accessible.description], ["Pause", "Stop the playback (space)"]);
        compare(item("menu").Accessible.name, "Menu (F10)");
        window.pageItem.sidePanel.currentIndex = 2;
        tryVerify(() => item("histograms").visible);
        const depth = item("histograms").children[0];
        verify(depth.Accessible.description.startsWith("below 45 mm: 0 % ≈ 0 of 162; 45–50 mm: 14 % ≈ 23 of 162; "));
        depth.move(2);
        compare(depth.Accessible.name, "Depth, mm: 45–50 mm: 14 % ≈ 23 of 162");
    }
    // What screen readers say without being asked, each once.
    function test_announced() {
        if (!desk.isHeard())
            skip("needs Qt's private headers");
        const hears = text => {
            let said = [];
            tryVerify(() => (said = said.concat(desk.takeAlerts())).some(each => each.includes(text)), 5000, text + " in " + said);
            compare(said.filter(each => each.includes(text)).length, 1);
        };
        replay(0.5);
        hears("Advice: Waiting for the first compression");
        for (const [secs, advice] of [[3, "Keep going."], [30, "Well done, keep going."], [61.5, "Stand clear."],
                                      [64.5, "Continue compressions."], [92.6, "Press deeper."]]) {
            desk.advance(secs);
            hears("Advice: " + advice);
        }
        keyClick(Qt.Key_1);
        hears("Hands");
        viewer.discard();
        write(() => viewer.exportTable("file:" + desk.newFile("t.csv"), "summary", false));
        hears("Exported to ");
        write(() => viewer.exportTable("file:" + desk.newFile("no/t.csv"), "summary", false));
        hears("no/t.csv cannot be written");
        viewer.open(desk.data("README.md"));
        hears("neither a session archive");
        viewer.chooseLibrary("file:" + desk.newFile("gone"));
        window.showLibrary(0);
        hears("gone is not there");
        window.show(Main.Compare);
        viewer.compareWith(desk.data("README.md"));
        hears("neither a session archive");
    }
}
