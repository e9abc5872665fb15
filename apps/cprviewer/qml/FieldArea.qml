// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import "."

// Lines to type in. Tab leads out of them.
ScrollView {
    id: view

    property alias text: area.text
    property alias area: area
    property string name: ""
    property alias hint: area.placeholderText

    clip: true
    background: Rectangle {
        radius: Look.radius * 0.75
        color: Look.page
        border.color: area.activeFocus ? Look.accent : Look.frame
        border.width: area.activeFocus ? 2 : 1
    }

    TextArea {
        id: area
        focus: true
        textFormat: TextEdit.PlainText
        font.pixelSize: Look.normal
        color: Look.text
        selectionColor: Look.accent
        selectedTextColor: Look.accentText
        placeholderTextColor: Look.muted
        selectByMouse: true
        wrapMode: TextEdit.WrapAtWordBoundaryOrAnywhere
        activeFocusOnTab: true
        Accessible.name: view.name
        KeyNavigation.priority: KeyNavigation.BeforeItem
        Keys.onTabPressed: area.nextItemInFocusChain(true).forceActiveFocus(Qt.TabFocusReason)
        Keys.onBacktabPressed: area.nextItemInFocusChain(false).forceActiveFocus(Qt.BacktabFocusReason)
    }
}
