// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtTest 1.15
import CPRData 1.0
import CPRViewer 1.0

// What stands on the pages is what the command line says of the same file.
ViewerCase {
    id: test
    name: "Truth"

    readonly property EventListModel events: EventListModel { session: test.viewer ? test.viewer.session : null }
    readonly property HistogramModel histograms: HistogramModel { session: test.events.session }

    function json(parts) { return JSON.parse(desk.cprsession(parts.concat(["truth.zip"]))); }
    function shows(text, value, scale, what) {
        const number = text.replace(/,/g, "").match(/-?[0-9]+(\.([0-9]+))?/);
        verify(number && Math.abs(number[0] - value / scale) <= 0.501 * Math.pow(10, -(number[2] || "").length), [what, text, value]);
    }
    function row(model, index, role) { return model.data(model.index(index, 0), role); }
    function test_figures_data() {
        const scenarios = ["perfect", "good", "beginner", "shallow", "too-fast", "leaning", "long-pauses", "aed", "lossy-link"];
        return scenarios.map(scenario => ({ tag: scenario }));
    }
    function test_figures(data) {
        for (const protocol of ["single-rescuer", "two-rescuers", "compression-only", "ventilation-only", "automatic", "high-performance"]) {
            desk.cprsession(["simulate", "--force", "--scenario", data.tag, "--protocol", protocol, "--to", "truth.zip"]);
            const info = json(["info", "--json"]), summary = json(["export", "--format", "json", "--what", "summary"])[0];
            const told = json(["export", "--format", "json", "--what", "events"]).sort((a, b) => a.start - b.start);
            load(desk.newFile("truth.zip"));
            const page = window.pageItem;
            page.sidePanel.currentIndex = 2;
            tryCompare(page.events, "count", told.length);

            // Above the picture.
            compare(item("learners").text, info.learners.join(", "));
            verify(texts(item("summary")).some(text => text.endsWith("·  " + Words.time(info.length_s * 1000))));
            verify(texts(item("summary")).includes(Words.protocol(summary.cprProtocol)));
            const scores = { overall: info.overall_score, compressionScore: info.compression_score,
                             ventilationScore: info.ventilation_score, flowTime: info.flow_time_percent };
            for (const name in scores)
                verify(!item(name).visible || texts(item(name)).includes(scores[name] + " %"), [protocol, name, texts(item(name))]);
            verify(item("overall").visible && item("compressionScore").visible !== (protocol === "ventilation-only"));
            for (const advice of ["primary", "secondary"])
                verify(item(advice + "Advice").text.endsWith(info[advice + "_advice_text"] || "None was given.") || (advice === "secondary" && !item("secondaryAdvice").visible && !info.secondary_advice_text), advice);

            // Worked out from the recorded events: all that is told is shown, and nothing else.
            const worked = Object.keys(info.recorded).filter(key => key !== "shock_pauses" && info.recorded[key] !== null);
            const cells = Array.from(item("recorded").children).filter(row => row.key !== undefined);
            compare(cells.filter(cell => !cell.isWide).map(cell => cell.key).sort(), worked.sort());
            compare(cells.filter(cell => cell.isWide).length, info.recorded.shock_pauses.length);
            cells.filter(cell => !cell.isWide).forEach(cell => {
                const shown = findChild(cell, cell.key).text, value = info.recorded[cell.key];
                shows(shown, value, cell.key === "compression_fraction" ? 0.01 : 1, cell.key);
                compare(summary["recorded_" + cell.key], value);
            });

            // The manikin's own.
            const facts = texts(item("statistics")), known = key => summary[key] !== undefined && summary[key] !== null;
            const sent = ["compCount", "compMeanDepth", "compMeanRate", "compCorrectDepthPercentage", "ventCount", "ventMeanVolume"]
                .filter(key => facts.includes(Words.parameter(key)));
            verify(sent.length >= 2);
            sent.forEach(key => known(key) ? shows(facts[facts.indexOf(Words.parameter(key)) + 1], summary[key], 1, key) : verify(facts.includes("not measured")));

            // The list; its compressions make the bars, but for what was lost.
            compare(told.map((event, index) => row(page.events, index, EventListModel.StartRole)), told.map(event => event.start));
            const pressed = told.map((event, index) => index).filter(
                index => row(page.events, index, EventListModel.TypeRole) === CPREventBase.CprCompEvent);
            const depths = told.filter(event => event.type === "CprCompEvent").map(event => event.compDepth);
            compare(pressed.length, depths.length);
            pressed.forEach((index, i) => shows(row(page.events, index, EventListModel.DetailRole), depths[i], 1, index));
            const edges = row(histograms, 0, HistogramModel.EdgesRole).map(Number);
            if (depths.length > 0 && data.tag !== "lossy-link")
                row(histograms, 0, HistogramModel.ValuesRole).forEach((percent, bar) => {
                    const inBar = depths.filter(depth => (bar === 0 || depth >= edges[bar - 1]) && (bar === edges.length || depth < edges[bar]));
                    verify(Math.abs(percent - 100 * inBar.length / depths.length) <= 1, [protocol, bar, percent, inBar.length, depths.length]);
                });
        }
    }
}
