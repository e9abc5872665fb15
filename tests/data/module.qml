// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0

// Uses every type of the module, and the library's enumerations, in bindings.
Item {
    id: page

    property CPRData session: ownSession
    property CPREventBase chosen: eventModel.count > 0 ? eventModel.eventAt(0) : null
    property int tag: CPREventBase.TagComp
    property int state: CPRData.CPR_START
    property int advice: CPREventBase.Advice_HandPosition
    property int tooDeep: CPRGuidelines.COMP_TOO_DEEP_SCORE_REDUCTION
    property string words: [
        Words.parameter("compMeanDepth"), Words.value("compMeanDepth", 5312),
        Words.value("compCorrectDepthPercentage", -1), Words.unit("ventRate"),
        Words.advice(page.advice), Words.eventType(CPREventBase.CprInactivityCPR),
        Words.time(83400, true), Words.parameter("noParameter")].join("|")
    property string rows: ""
    property string parameters: ""
    property alias summaryLearners: summary.learners
    property alias rateMin: figures.rateMin

    width: 640
    height: 480

    CPRData { id: ownSession }
    SessionSource { id: source }
    EventListModel { id: eventModel; session: page.session; tags: page.tag | CPREventBase.TagVent }
    ParameterModel { id: parameterModel; event: page.chosen }
    HistogramModel { id: histogramModel; session: page.session }
    RecordedFigureModel { session: page.session }
    ComparisonModel { id: comparison; session: page.session; other: source.session; alignment: ComparisonModel.FirstCompression }
    OverlayItem { session: page.session; other: source.session; otherZero: comparison.otherZero; width: 640; height: 100 }
    SessionSummary { id: summary; session: page.session }
    LiveFigures { id: figures; session: page.session; isActive: page.visible }
    PlotColors { id: colors; dark: true }
    Rectangle { anchors.fill: parent; color: colors.background }
    WaveItem { kind: WaveItem.Volume; session: page.session; span: 12000; width: 640; height: 100 }
    TimelineItem { id: timeline; session: page.session; parts: TimelineItem.AllLanes; cursor: figures.time; y: 100; width: 640; height: 300; dark: true }
    Rectangle { x: timeline.cursorX; y: timeline.plotArea.y; width: 1; height: timeline.plotArea.height }
    DialItem { y: 400; width: 80; height: 80; value: figures.rate; bandFrom: figures.rateMin; bandTo: figures.rateMax; to: 200 }

    Repeater {
        model: histogramModel
        HistogramItem {
            required property int index
            required values
            y: 400
            x: 80 * index
            width: 80
            height: 80
        }
    }
    Repeater {
        model: eventModel
        Item {
            required property string startText
            required property string typeName
            required property string detail
            required property string faultText
            required property var correct
            property string line: [startText, typeName, detail, faultText, correct].join(" ")
        }
        onItemAdded: function(index, item) { page.rows += item.line + ";" }
    }
    Repeater {
        model: parameterModel
        Item {
            required property string name
            required property string valueText
            property string line: name + "=" + valueText
        }
        onItemAdded: function(index, item) { page.parameters += item.line + ";" }
    }
}
