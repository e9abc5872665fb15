// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import "."

// A button. The one that is most likely wanted is highlighted.
Button {
    id: button

    property string help: ""

    implicitHeight: Look.controlHeight
    leftPadding: Look.padding * 0.8
    rightPadding: Look.padding * 0.8
    font.pixelSize: Look.normal
    Accessible.name: button.help.length > 0 ? button.help : button.text
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    ToolTip.visible: button.hovered && button.help.length > 0
    ToolTip.delay: 600
    ToolTip.text: button.help

    contentItem: Text {
        text: button.text
        font: button.font
        textFormat: Text.PlainText
        color: button.highlighted ? Look.accentText : Look.text
        opacity: button.enabled ? 1 : 0.4
        horizontalAlignment: Text.AlignHCenter
        verticalAlignment: Text.AlignVCenter
        elide: Text.ElideRight
    }
    background: Rectangle {
        radius: Look.radius * 0.75
        color: button.highlighted ? Look.accent
                                  : button.down || button.hovered ? Look.controlHover : Look.control
        opacity: button.enabled ? 1 : 0.6

        FocusFrame { visible: button.visualFocus }
    }
}
