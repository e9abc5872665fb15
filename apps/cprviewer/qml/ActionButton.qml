// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import "."

// A button. The one that is most likely wanted is highlighted.
Button {
    id: button

    property string help: ""
    property color focusColor: Look.accent // stands out from what the button lies on
    property bool isUsed: false // so that nobody has to be told what it does
    readonly property bool isSymbol: !/\w/.test(button.text)

    implicitHeight: Look.controlHeight
    // Whole pixels: a width that is a trace too small cuts the text.
    leftPadding: Math.round(Look.padding * (button.isSymbol ? 0.5 : 0.8))
    rightPadding: button.leftPadding
    font.pixelSize: Look.normal
    Accessible.name: button.isSymbol ? button.help : button.text
    Accessible.description: button.isSymbol ? "" : button.help
    onClicked: button.isUsed = true
    onHoveredChanged: button.isUsed = false
    Keys.onReturnPressed: button.clicked()
    Keys.onEnterPressed: button.clicked()

    ToolTip {
        id: toolTip
        visible: button.hovered && !button.isUsed && toolTip.text.length > 0
        delay: 600
        text: button.help
        contentItem: PlainText {
            text: toolTip.text
            font: toolTip.font
            color: Look.text
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        }
    }
    contentItem: PlainText {
        text: button.text
        font: button.font
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
        border { color: Look.outline; width: button.highlighted ? 0 : 1 }

        FocusFrame { visible: button.visualFocus; border.color: button.focusColor }
    }
}
