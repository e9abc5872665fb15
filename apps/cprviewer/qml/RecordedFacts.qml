// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// What was worked out from the recorded events, beside the manikin's own figures.
Column {
    id: facts

    property alias session: figures.session
    readonly property real columnWidth: facts.width * 0.26

    visible: figures.count > 0

    RecordedFigureModel { id: figures }

    component Cell: PageText {
        width: facts.columnWidth
        leftPadding: Look.gap / 2
        font.pixelSize: Look.small
        horizontalAlignment: Text.AlignRight
        wrapMode: Text.WordWrap
        Accessible.ignored: true
    }

    PageText {
        text: qsTr("From the recorded events")
        font.bold: true
        topPadding: Look.gap
        bottomPadding: Look.gap / 2
    }
    Row {
        x: facts.width - 2 * facts.columnWidth

        Cell { text: qsTr("Recording"); color: Look.muted }
        Cell { text: qsTr("Manikin"); color: Look.muted }
    }
    Repeater {
        model: figures

        delegate: Item {
            id: row

            required property int index
            required property string key
            required property string name
            required property string valueText
            required property string manikinText
            readonly property bool isWide: row.key.startsWith("shock_pauses")

            width: facts.width
            height: Math.max(nameText.implicitHeight, recorded.implicitHeight, manikin.implicitHeight) + Look.gap / 2
            Accessible.role: Accessible.Row
            Accessible.name: row.name + ": " + row.valueText
                             + (row.manikinText ? ", " + qsTr("Manikin") + ": " + row.manikinText : "")

            Rectangle { width: parent.width; height: 1; color: Look.frame }
            Cell {
                id: nameText
                anchors.verticalCenter: parent.verticalCenter
                width: row.width - 2 * facts.columnWidth
                leftPadding: 0
                horizontalAlignment: Text.AlignLeft
                text: row.name
                color: Look.muted
            }
            Cell {
                id: recorded
                objectName: row.key
                anchors { left: nameText.right; verticalCenter: parent.verticalCenter }
                width: (row.isWide ? 2 : 1) * facts.columnWidth
                text: row.valueText
            }
            Cell {
                id: manikin
                anchors { right: parent.right; verticalCenter: parent.verticalCenter }
                text: row.manikinText
            }
        }
    }
    PageText {
        width: parent.width
        topPadding: Look.gap / 2
        wrapMode: Text.WordWrap
        color: Look.muted
        font.pixelSize: Look.small
        text: figures.hasManikin
              ? qsTr("Recording: worked out from the events that arrived. Manikin: as it has sent it, by its own rules. Both can differ: the recording's mean rate goes by the time between two compressions, the shares by the running rate that the manikin showed; gaps of up to 2 s count as compressing; what was lost on the way only the manikin knows.")
                + " " + qsTr("An empty cell was not sent, or there is nothing to work it out from.")
              : qsTr("There are no figures of the manikin's own.")
    }
}
