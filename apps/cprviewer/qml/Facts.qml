// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// Names and values in two columns, from a model with the roles name and valueText.
Column {
    id: facts

    property string title: ""
    property alias model: rows.model

    visible: rows.count > 0

    PageText {
        visible: facts.title.length > 0
        text: facts.title
        font.bold: true
        topPadding: Look.gap
        bottomPadding: Look.gap / 2
    }
    Repeater {
        id: rows

        delegate: Item {
            id: row

            required property int index
            required property string name
            required property string valueText

            visible: row.valueText.length > 0
            width: facts.width
            height: Math.max(nameText.implicitHeight, value.implicitHeight) + Look.gap / 2
            Accessible.role: Accessible.Row
            Accessible.name: row.name + ": " + row.valueText

            Rectangle {
                width: parent.width
                height: 1
                color: Look.frame
                visible: row.index > 0
            }
            PageText {
                id: nameText
                anchors { left: parent.left; verticalCenter: parent.verticalCenter }
                width: parent.width * 0.58
                text: row.name
                color: Look.muted
                font.pixelSize: Look.small
                wrapMode: Text.WordWrap
                Accessible.ignored: true
            }
            PageText {
                id: value
                anchors { left: nameText.right; leftMargin: Look.gap / 2; right: parent.right; verticalCenter: parent.verticalCenter }
                text: row.valueText
                font.pixelSize: Look.small
                horizontalAlignment: Text.AlignRight
                wrapMode: Text.WrapAtWordBoundaryOrAnywhere
                Accessible.ignored: true
            }
        }
    }
}
