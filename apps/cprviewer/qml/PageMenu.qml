// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import "."

// A menu in the pages' looks.
Menu {
    id: menu

    width: Math.round(280 * Look.textUnit)
    padding: Look.gap / 2
    background: Card { }

    delegate: MenuItem {
        id: item

        implicitHeight: Look.controlHeight
        font.pixelSize: Look.normal
        leftPadding: Look.gap
        rightPadding: Look.gap
        opacity: item.enabled ? 1 : 0.4
        indicator: PlainText {
            x: Look.gap
            height: item.height
            verticalAlignment: Text.AlignVCenter
            visible: item.checked
            text: "✓"
            color: Look.text
            font.pixelSize: Look.normal
        }
        arrow: PlainText {
            x: item.width - width - Look.gap
            height: item.height
            verticalAlignment: Text.AlignVCenter
            visible: item.subMenu !== null
            text: "›"
            color: Look.text
            font.pixelSize: Look.title
        }
        background: Rectangle {
            radius: Look.radius / 2
            color: item.highlighted ? Look.chosen : "transparent"
            border.color: Look.accent
            border.width: item.highlighted ? 2 : 0
        }
    }
}
