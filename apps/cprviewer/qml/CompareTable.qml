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
    readonly property real columnWidth: Math.round(table.width * 0.175)
    readonly property real lastWidth: Math.round(table.width * 0.27)

    component Cell: PageText {
        width: table.columnWidth
        leftPadding: Look.gap / 2
        font.pixelSize: Look.small
        horizontalAlignment: Text.AlignRight
        wrapMode: Text.WordWrap
        Accessible.ignored: true
    }
    // A name, a cell for each session, and how they differ.
    component Line: Item {
        id: line
        property string title: ""
        property string value: ""
        property string other: ""
        property string difference: ""
        property string verdict: "" // with a symbol
        property color tone: Look.muted
        property bool isHead: false
        property var spoken: [] // how they differ, for screen readers

        Accessible.role: line.isHead ? Accessible.NoRole : Accessible.Row
        Accessible.name: qsTr("%1: A %2, B %3").arg(line.title).arg(line.value || qsTr("none")).arg(line.other || qsTr("none"))
                         + line.spoken.filter(text => text.length > 0).map(text => ", " + text).join("")
        implicitHeight: Math.max(nameCell.implicitHeight, last.implicitHeight) + Look.gap / 2

        Rectangle { width: parent.width; height: 1; color: Look.frame; visible: !line.isHead }
        Cell {
            id: nameCell
            anchors.verticalCenter: parent.verticalCenter
            width: line.width - 2 * table.columnWidth - table.lastWidth
            horizontalAlignment: Text.AlignLeft
            text: line.title
            color: Look.muted
        }
        Cell { id: valueCell; anchors { left: nameCell.right; verticalCenter: parent.verticalCenter } text: line.value; font.bold: line.isHead }
        Cell { id: otherCell; anchors { left: valueCell.right; verticalCenter: parent.verticalCenter } text: line.other; font.bold: line.isHead }
        Column {
            id: last
            anchors { left: otherCell.right; verticalCenter: parent.verticalCenter }

            Cell { width: table.lastWidth; text: line.difference; visible: text.length > 0; color: line.isHead ? Look.muted : Look.text }
            Cell { width: table.lastWidth; text: line.verdict; visible: text.length > 0; color: line.tone }
        }
    }

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
    Line {
        id: titles
        anchors { left: parent.left; right: parent.right; top: rule.bottom; leftMargin: Look.gap / 2; rightMargin: Look.gap }
        isHead: true
        value: "A"
        other: "B"
        difference: qsTr("A against B")
    }
    component Lines: ListView {
        id: list
        anchors { left: parent.left; right: parent.right; top: titles.bottom; bottom: note.top; leftMargin: Look.gap / 2; rightMargin: Look.gap }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        highlightMoveDuration: 0
        highlight: Rectangle { color: Look.chosen; visible: list.activeFocus }
        ScrollBar.vertical: ScrollBar { }
        Accessible.role: Accessible.Table

        Rectangle {
            parent: table
            anchors.fill: list
            color: "transparent"
            border { color: Look.accent; width: 2 }
            visible: list.activeFocus
        }
    }
    Lines {
        id: figures
        objectName: "figures"
        visible: tabs.currentIndex === 0
        Accessible.name: qsTr("Figures")
        model: table.comparison
        delegate: Line {
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
    Lines {
        id: faults
        objectName: "faults"
        visible: tabs.currentIndex === 1
        Accessible.name: qsTr("Faults")
        model: table.comparison.faults
        delegate: Line {
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
