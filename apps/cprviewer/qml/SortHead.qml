// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import CPRData 1.0
import "."

// The head of a column; its rows are put in order by it.
AbstractButton {
    id: head

    required property LibraryModel model
    required property int by
    property bool startsDescending: false
    readonly property bool isChosen: head.model.sortBy === head.by

    implicitHeight: Look.controlHeight
    focusPolicy: Qt.TabFocus
    Accessible.name: head.isChosen ? head.model.isDescending ? qsTr("%1, descending").arg(head.text)
                                                             : qsTr("%1, ascending").arg(head.text)
                                   : head.text
    Keys.onReturnPressed: head.clicked()
    onClicked: {
        const isDescending = head.isChosen ? !head.model.isDescending : head.startsDescending;
        head.model.sortBy = head.by;
        head.model.isDescending = isDescending;
    }
    contentItem: PlainText {
        text: head.isChosen ? head.text + (head.model.isDescending ? " ▾" : " ▴") : head.text
        font { pixelSize: Look.small; bold: head.isChosen }
        color: head.isChosen ? Look.text : Look.muted
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    background: Item {
        FocusFrame { visible: head.visualFocus; anchors { margins: 2; leftMargin: -Look.gap / 2 } }
    }
}
