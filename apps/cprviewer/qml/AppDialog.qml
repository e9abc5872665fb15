// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Window 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import "."

// A question in the middle of the window. Escape answers it by nothing, Return by the highlighted button where
// what has the keyboard does not need it.
Popup {
    id: dialog

    property string title: ""
    property string text: ""
    property Item firstItem: null // which the keyboard speaks to first
    default property alias content: body.data
    property alias buttons: buttonRow.data

    parent: Overlay.overlay
    anchors.centerIn: parent
    modal: true
    focus: true
    padding: Look.padding * 1.5
    width: Math.round(520 * Look.textUnit)

    function takeFocus() {
        dialog.firstItem.forceActiveFocus(Qt.TabFocusReason);
        // When the dialog opens again a button still has the focus, but would not show it.
        if (dialog.firstItem.focusReason !== undefined)
            dialog.firstItem.focusReason = Qt.TabFocusReason;
    }
    onOpened: dialog.takeFocus()
    function pressHighlighted() {
        const button = Array.from(buttonRow.children).find(child => child.highlighted && child.enabled);
        if (button)
            button.clicked();
    }

    background: Card { }
    // No layout: asked for its height it may lay its texts out anew, and tell of another height in the
    // middle of the answer, which is a loop of bindings.
    contentItem: Column {
        id: column
        spacing: Look.gap
        Keys.onReturnPressed: dialog.pressHighlighted()
        Keys.onEnterPressed: dialog.pressHighlighted()
        // Opened by a file dialog's answer, it comes before the window has got the focus back.
        Window.onActiveChanged: if (Window.active && dialog.opened && !dialog.activeFocus) dialog.takeFocus()
        Accessible.role: Accessible.Dialog
        Accessible.name: dialog.title

        PageText {
            width: column.width
            text: dialog.title
            font.pixelSize: Math.round(22 * Look.unit)
            font.bold: true
            wrapMode: Text.WordWrap
        }
        PageText {
            width: column.width
            visible: dialog.text.length > 0
            text: dialog.text
            wrapMode: Text.WrapAtWordBoundaryOrAnywhere
        }
        ColumnLayout {
            id: body
            width: column.width
            visible: children.length > 0
            spacing: Look.gap
        }
        Flow {
            id: buttonRow
            width: column.width
            topPadding: Look.gap
            layoutDirection: Qt.RightToLeft
            spacing: Look.gap
        }
    }
}
