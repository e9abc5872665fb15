// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// Events, results, guidelines and what is known of the session, one at a time.
Card {
    id: panel

    required property Viewer viewer
    property CPRData session: null
    required property EventListModel events
    required property int row
    required property CPREventBase chosen
    property alias currentIndex: tabs.currentIndex
    property alias remarkActions: remarkActions
    signal picked(int row)
    signal timeWanted(int from, int to) // ms of session time
    signal correctWanted(CPREventBase remark)

    SessionSummary { id: summary; session: panel.session }

    TabBar {
        id: tabs
        anchors { left: parent.left; right: parent.right; top: parent.top; topMargin: 1; leftMargin: Look.gap / 2; rightMargin: Look.gap / 2 }
        background: null
        spacing: 0
        focusPolicy: Qt.NoFocus

        PageTab { text: qsTr("Events"); inset: Look.gap * 0.5 }
        PageTab { text: qsTr("Faults"); inset: Look.gap * 0.5 }
        PageTab { text: qsTr("Results"); inset: Look.gap * 0.5 }
        PageTab { text: qsTr("Guidelines"); inset: Look.gap * 0.5 }
        PageTab { text: qsTr("Session"); inset: Look.gap * 0.5 }
    }
    Rectangle {
        id: line
        anchors { left: parent.left; right: parent.right; top: tabs.bottom }
        height: 1
        color: Look.frame
    }
    StackLayout {
        anchors { left: parent.left; right: parent.right; top: line.bottom; bottom: parent.bottom; margins: 1 }
        currentIndex: tabs.currentIndex

        EventsPage {
            events: panel.events
            row: panel.row
            chosen: panel.chosen
            onPicked: index => panel.picked(index)
            actions: RemarkActions {
                id: remarkActions
                viewer: panel.viewer
                chosen: panel.chosen
                onCorrectWanted: remark => panel.correctWanted(remark)
            }
        }
        FaultsPage {
            objectName: "faults"
            session: visible ? panel.session : null // follows nothing that nobody sees
            onTimeWanted: (from, to) => panel.timeWanted(from, to)
        }
        FactsPage {
            id: results
            objectName: "results"
            title: qsTr("Results")

            PageText {
                visible: !histograms.visible
                topPadding: Look.gap
                width: parent.width
                wrapMode: Text.WordWrap
                text: qsTr("There are no statistics.")
                color: Look.muted
            }
            PageText {
                visible: histograms.visible
                topPadding: Look.gap
                bottomPadding: Look.gap / 2
                text: qsTr("Shares in percent")
                font.bold: true
            }
            Histograms {
                id: histograms
                objectName: "histograms"
                width: parent.width
                session: panel.session
                onFocused: histogram => results.reveal(histogram)
            }
            RecordedFacts {
                objectName: "recorded"
                width: parent.width
                session: panel.session
            }
            Facts {
                objectName: "statistics"
                width: parent.width
                title: qsTr("Statistics")
                model: ParameterModel { session: panel.session; subject: ParameterModel.Statistics; hasBars: false }
            }
            Facts {
                objectName: "scores"
                width: parent.width
                title: qsTr("Scores and reductions")
                model: ParameterModel { session: panel.session; subject: ParameterModel.Score }
            }
        }
        FactsPage {
            title: qsTr("Guidelines")

            PageText {
                objectName: "noGuidelines"
                visible: summary.guidelines.length === 0
                topPadding: Look.gap
                width: parent.width
                wrapMode: Text.WordWrap
                text: qsTr("The session names no guideline set. What it does not hold has the values of a new session.")
            }
            Facts {
                objectName: "guidelines"
                width: parent.width
                title: qsTr("What the session is judged by")
                model: GuidelineModel { session: panel.session }
            }
        }
        FactsPage {
            title: qsTr("Session")

            Facts {
                width: parent.width
                title: qsTr("Session and manikin")
                model: ParameterModel { session: panel.session; subject: ParameterModel.SessionInfo }
            }
        }
    }
}
