// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// Asks for one of two answers, or for nothing.
AppDialog {
    id: dialog

    property string yes: ""
    property string no: "" // empty when there is only one answer
    property var yesAction: null // what is done then
    property var noAction: null

    function answer(action) {
        dialog.close();
        if (action)
            action();
    }

    firstItem: yesButton

    buttons: [
        ActionButton {
            id: yesButton
            objectName: "yes"
            text: dialog.yes
            highlighted: true
            onClicked: dialog.answer(dialog.yesAction)
        },
        ActionButton {
            objectName: "no"
            visible: dialog.no.length > 0
            text: dialog.no
            onClicked: dialog.answer(dialog.noAction)
        },
        ActionButton {
            objectName: "cancel"
            text: qsTr("Cancel")
            onClicked: dialog.close()
        }
    ]
}
