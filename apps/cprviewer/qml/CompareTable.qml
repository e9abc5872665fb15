// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// The figures and the faults of two sessions side by side.
Card {
    id: table

    required property ComparisonModel comparison
    property alias currentIndex: tabs.currentIndex

    TabBar {
        id: tabs
        anchors { left: parent.left; right: parent.right; top: parent.top; topMargin: 1; leftMargin: Look.gap / 2; rightMargin: Look.gap / 2 }
        background: null
        spacing: 0
        focusPolicy: Qt.NoFocus

        PageTab { text: qsTr("Figures"); inset: Look.gap * 0.8 }
        PageTab { objectName: "faultsTab"; text: qsTr("Faults"); inset: Look.gap * 0.8 }
    }
    Rectangle { id: rule; anchors { left: parent.left; right: parent.right; top: tabs.bottom } height: 1; color: Look.frame }
    CompareLine {
        id: titles
        anchors { left: parent.left; right: parent.right; top: rule.bottom; leftMargin: Look.gap / 2; rightMargin: Look.gap }
        isHead: true
        value: "A"
        other: "B"
        difference: qsTr("A against B")
    }
    CompareList {
        id: figures
        anchors { left: parent.left; right: parent.right; top: titles.bottom; bottom: note.top; bottomMargin: Look.gap / 2; leftMargin: Look.gap / 2; rightMargin: Look.gap }
        objectName: "figures"
        visible: tabs.currentIndex === 0
        Accessible.name: qsTr("Figures")
        model: table.comparison
        delegate: CompareLine {
            id: figure
            required property string key
            required property string name
            required property string valueText
            required property string otherText
            required property string differenceText
            required property int outcome
            required property string outcomeText

            objectName: figure.key
            width: figures.width
            title: figure.name
            value: figure.valueText
            other: figure.otherText
            difference: figure.differenceText
            verdict: figure.outcomeText.length > 0 ? ["", "=", "▲", "▼", "≠"][figure.outcome] + " " + figure.outcomeText : ""
            tone: figure.outcome === ComparisonModel.Better ? Look.good
                  : figure.outcome === ComparisonModel.Worse ? Look.fault : Look.muted
            spoken: [figure.differenceText, figure.outcomeText]
        }
    }
    CompareList {
        id: faults
        anchors { left: parent.left; right: parent.right; top: titles.bottom; bottom: note.top; bottomMargin: Look.gap / 2; leftMargin: Look.gap / 2; rightMargin: Look.gap }
        objectName: "comparedFaults"
        visible: tabs.currentIndex === 1
        Accessible.name: qsTr("Faults")
        model: table.comparison.faults
        delegate: CompareLine {
            id: fault
            required property var modelData
            readonly property int more: fault.modelData.count - fault.modelData.other

            objectName: "fault"
            width: faults.width
            title: fault.modelData.name
            value: fault.modelData.count
            other: fault.modelData.other
            difference: (fault.more > 0 ? "+" : fault.more < 0 ? "−" : "") + Math.abs(fault.more)
            spoken: [fault.difference]
        }

        PageText {
            visible: faults.count === 0
            padding: Look.gap / 2
            text: qsTr("Neither has a fault.")
            color: Look.muted
        }
    }
    Rectangle { anchors { left: parent.left; right: parent.right; top: figures.bottom } height: 1; color: Look.frame }
    PageText {
        id: note
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: Look.gap }
        wrapMode: Text.WordWrap
        color: Look.muted
        font.pixelSize: Look.small
        text: tabs.currentIndex === 1 ? qsTr("Compressions and ventilations with the fault, by the guidelines of each session.")
              : qsTr("The difference is A less B. ▲ A is better, ▼ A is worse.")
                + (table.comparison.hasOtherStandard ? " " + qsTr("≠ The sessions went by different guidelines or protocols.") : "")
    }
}
