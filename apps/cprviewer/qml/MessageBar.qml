// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// What went wrong, or what may be done now, until somebody has seen it.
Rectangle {
    id: bar

    property string text: ""
    property string action: "" // what may be done; empty for nothing
    signal acted()
    signal dismissed()

    visible: bar.text.length > 0
    implicitHeight: visible ? Math.max(Look.controlHeight, message.implicitHeight) + Look.gap : 0
    color: Look.fault
    Accessible.role: Accessible.AlertMessage
    Accessible.name: bar.text
    Accessible.onNameChanged: Words.announce(bar)

    RowLayout {
        // Not as high as the bar, which would lay the text out again for a height that it gave.
        anchors {
            left: parent.left; leftMargin: Look.padding
            right: parent.right; rightMargin: Look.padding
            verticalCenter: parent.verticalCenter
        }
        spacing: Look.gap

        PageText {
            id: message
            objectName: "message"
            Layout.fillWidth: true
            text: bar.text
            color: Look.accentText
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
            maximumLineCount: 3
        }
        ActionButton { objectName: "act"; visible: bar.action.length > 0; text: bar.action; focusColor: Look.accentText; onClicked: bar.acted() }
        ActionButton { objectName: "dismiss"; text: qsTr("Close"); focusColor: Look.accentText; onClicked: bar.dismissed() }
    }
}
