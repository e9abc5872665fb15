// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// What can be done with the chosen event if it is a remark.
Row {
    id: actions

    required property Viewer viewer
    required property CPREventBase chosen
    signal correctWanted(CPREventBase remark)

    function remove() {
        const remark = actions.chosen;
        removeDialog.text = Words.time(remark.msec) + "  " + Words.remark(actions.viewer.remarkText(remark));
        removeDialog.yesAction = () => {
            if (actions.chosen === remark)
                actions.viewer.removeRemark(remark);
        };
        removeDialog.open();
    }

    readonly property bool isRemark: actions.chosen !== null && actions.viewer.remarkText(actions.chosen).length > 0
    visible: actions.isRemark
    spacing: Look.gap
    topPadding: Look.gap

    ActionButton {
        objectName: "correctRemark"
        text: qsTr("Correct…")
        help: qsTr("Correct the remark (F2)")
        onClicked: actions.correctWanted(actions.chosen)
    }
    ActionButton {
        objectName: "removeRemark"
        text: qsTr("Remove…")
        help: qsTr("Remove the remark (Del)")
        onClicked: actions.remove()
    }
    QuestionDialog {
        id: removeDialog
        objectName: "removeDialog"
        title: qsTr("Remove the remark?")
        yes: qsTr("Remove")
    }
}
