// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtTest 1.15
import CPRData 1.0
import CPRViewer 1.0
import "qrc:/cprviewer/qml"

// What stands on the pages is what the command line says of the same file.
ViewerCase {
    id: test
    name: "Truth"

    readonly property EventListModel events: EventListModel { session: test.viewer ? test.viewer.session : null }
    readonly property HistogramModel histograms: HistogramModel { session: test.events.session }
    // All that the session has, also what the pages leave out.
    readonly property ParameterModel statistics: ParameterModel { session: test.events.session; subject: ParameterModel.Statistics }
    readonly property ParameterModel score: ParameterModel { session: test.events.session; subject: ParameterModel.Score }
    readonly property CycleModel cycles: CycleModel { session: test.events.session }
    readonly property var protocols: ["single-rescuer", "two-rescuers", "compression-only", "ventilation-only", "automatic", "high-performance"]

    function json(parts) { return JSON.parse(desk.cprsession(parts.concat(["truth.zip"]))); }
    function simulate(scenario, protocol, out) {
        desk.cprsession(["simulate", "--force", "--scenario", scenario, "--protocol", protocol].concat(out));
    }
    function rows(model, role) { return Array.from({ length: model.rowCount() }, (none, index) => row(model, index, role)); }
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
        for (const protocol of protocols) {
            simulate(data.tag, protocol, ["--to", "truth.zip"]);
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
            const numbers = [["statistics", statistics], ["scores", score]].map(([name, model]) => {
                const facts = texts(item(name)), keys = rows(model, ParameterModel.KeyRole);
                const sent = json(["export", "--format", "json", "--what", "summary", "--columns", keys.join()])[0];
                keys.forEach((key, index) => {
                    const shown = row(model, index, ParameterModel.ValueTextRole), value = sent[key];
                    verify(/Histogram.*Bin_/.test(key) || shown === "" || facts.includes(shown), [name, key, shown]);
                    if (Number.isFinite(value) && /^-?[0-9]/.test(shown))
                        shows(shown, value, 1, key);
                    else
                        verify(!/^-?[0-9]/.test(shown) || typeof value === "string", [key, shown, value]);
                });
                return keys.filter(key => Number.isFinite(sent[key])).length;
            });
            verify(numbers[0] >= 40 && numbers[1] >= 3, numbers);

            // The list; its compressions and ventilations make the bars, but for what was lost.
            compare(told.map((event, index) => row(page.events, index, EventListModel.StartRole)), told.map(event => event.start));
            const pressed = told.map((event, index) => index).filter(
                index => row(page.events, index, EventListModel.TypeRole) === CPREventBase.CprCompEvent);
            const depths = told.filter(event => event.type === "CprCompEvent").map(event => event.compDepth);
            compare(pressed.length, depths.length);
            pressed.forEach((index, i) => shows(row(page.events, index, EventListModel.DetailRole), depths[i], 1, index));
            const kinds = ["compHistogramDepth", "compHistogramRelease", "compHistogramRate", "compHistogramInactivity", "ventHistogramVolume", "ventHistogramRate"].map(
                kind => [0, 1, 2, 3, 4, 5].map(bar => `${kind}Bin_${bar}`));
            const bars = json(["export", "--format", "json", "--what", "summary", "--columns", [].concat(...kinds).join()])[0];
            kinds.forEach((keys, i) => {
                const shown = row(histograms, i, HistogramModel.ValuesRole), name = ["compDepth", "compReleaseDepth", "", "", "ventVolume"][i];
                compare(shown, keys.map(key => bars[key]));
                compare(item("histograms").children[i].values, shown);
                const values = name ? told.filter(event => event[name] !== undefined).map(event => event[name]) : [];
                const edges = row(histograms, i, HistogramModel.EdgesRole).map(Number);
                if (values.length > 0 && data.tag !== "lossy-link")
                    shown.forEach((percent, bar) => {
                        const inBar = values.filter(value => (bar === 0 || value >= edges[bar - 1]) && (bar === edges.length || value < edges[bar]));
                        verify(Math.abs(percent - 100 * inBar.length / values.length) <= 1, [protocol, keys[bar], percent, inBar.length, values.length]);
                    });
            });

            // Cycle by cycle, and at the cursor.
            const sum = role => rows(cycles, role).reduce((sum, count) => sum + count, 0), breaths = told.filter(event => event.type === "CprVentEvent");
            if (data.tag !== "lossy-link")
                compare(sum(CycleModel.CompressionsRole), depths.length);
            verify(sum(CycleModel.VentilationsRole) <= breaths.length);
            tryVerify(() => page.timelinePanel.timeline.length > 0);
            page.goTo(page.timelinePanel.timeline.length);
            if (depths.length > 0)
                tryVerify(() => Math.abs(item("depthThen").text - depths[depths.length - 1]) < 1);
            if (breaths.length > 0)
                tryVerify(() => Number(item("volumeThen").text) === breaths[breaths.length - 1].ventVolume);

            // Beside itself.
            window.compareWith(desk.newFile("truth.zip"));
            const compared = window.pageItem.comparison;
            tryVerify(() => compared.count > 0, 20000);
            for (let i = 0; i < compared.count; ++i) {
                const key = row(compared, i, ComparisonModel.KeyRole);
                for (const role of [ComparisonModel.ValueTextRole, ComparisonModel.OtherTextRole])
                    shows(row(compared, i, role), info.recorded[key] ?? info[key] ?? info[key.replace(/_percent$/, "")], key === "compression_fraction" ? 0.01 : 1, key);
            }
            verify(worked.every(key => rows(compared, ComparisonModel.KeyRole).includes(key)), protocol);
            viewer.compareWith("");
            window.show(Main.Review);
        }
    }
    function test_live_data() { return test_figures_data(); }
    // What stands on the live page when the session has ended.
    function test_live(data) {
        for (const protocol of protocols) {
            simulate(data.tag, protocol, ["-o", "truth.cprlog"]);
            const log = name => JSON.parse(desk.cprsession(name.concat(["truth.cprlog"])));
            const info = log(["info", "--json"]), told = log(["export", "--format", "json", "--what", "events"]).sort((a, b) => a.start - b.start);
            const limits = {}, of = type => told.filter(event => event.type === type);
            log(["export", "--format", "json", "--what", "guidelines"]).forEach(each => limits[each.name] = each.value);
            viewer.discard();
            verify(viewer.startReplay(desk.newFile("truth.cprlog"), 0.001));
            desk.advance(1000000);
            tryCompare(viewer, "isLive", false);
            const figures = window.pageItem.figures, pressed = of("CprCompEvent"), breaths = of("CprVentEvent"), last = list => list[list.length - 1];
            tryCompare(figures, "score", info.overall_score);
            compare([figures.compressionCount, figures.ventilationCount], [pressed.length, breaths.length]);
            compare(item("advice").words, `Result: ${info.overall_score} %. ${info.primary_advice_text || ""}`.trim());
            compare([item("depth").visible, item("volume").visible], [protocol !== "ventilation-only", protocol !== "compression-only"]);
            compare(item("time").number, Words.time(info.length_s * 1000));
            if (pressed.length > 0) {
                const press = last(pressed), depth = press.compDepth, min = limits.CompressionDepthMin, max = limits.CompressionDepthMax;
                verify(Math.abs(item("depth").shown - depth) < 1 && texts(item("depth")).includes(item("depth").shown), [item("depth").shown, depth]);
                verify(texts(item("depth")).includes(`Target ${min}–${max} mm`));
                verify(item("depth").spoken.includes(depth < min ? "Too shallow" : depth > max ? "Too deep" : "Right depth"), item("depth").spoken);
                verify(item("depth").spoken.endsWith(press.compIncompleteRelease ? `${press.compReleaseDepth.toFixed(0)} mm not released` : "Full release"), item("depth").spoken);
                verify(item("rate").rate === press.compMeanRate || item("rate").rate <= 0 && of("CprInactivityCPR").some(pause => pause.start > press.start), [item("rate").rate, press.compMeanRate]);
                const before = last(breaths.filter(breath => breath.start < press.start)), after = breaths.filter(breath => breath.start > press.start);
                compare(Number(item("compressions").number), item("compressions").unit ? pressed.filter(each => !before || each.start > before.start).length : pressed.length);
                compare(Number(item("ventilations").number), item("ventilations").unit ? after.length : breaths.length);
            }
            if (breaths.length > 0) {
                const volume = last(breaths).ventVolume, min = limits.VentilationVolumeMin, max = limits.VentilationVolumeMax;
                compare(item("volume").spoken, `${volume} ml, ${volume < min ? "Too little" : volume > max ? "Too much" : "Right volume"}`);
                compare([item("breathing").number, item("ventilationRate").rate], [String(last(breaths).ventRate), last(breaths).ventRate]);
            }
            compare([item("aed").visible, item("aed").corner.includes("200 J")], [of("CprAedEvent").length > 1, told.some(event => event.shockEnergy === 200)]);
        }
    }
}
