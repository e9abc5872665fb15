// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// Who trains on a manikin of the class: somebody of the class list, or a name that is typed.
AppDialog {
    id: dialog

    required property Viewer viewer
    property int row: -1
    property ClassManikin manikin: null
    readonly property var names: dialog.viewer.classList.names

    function ask(row) {
        const manikin = dialog.viewer.room.at(row);
        if (manikin === null || manikin.state === ClassManikin.Ended)
            return;
        dialog.row = row;
        dialog.manikin = manikin;
        field.text = "";
        list.choose(-1);
        dialog.open();
    }
    function accept() {
        const name = field.text.trim();
        dialog.close();
        if (name.length > 0 && dialog.viewer.room.at(dialog.row) === dialog.manikin)
            dialog.viewer.room.assign(dialog.row, name);
    }

    title: qsTr("Who trains?")
    text: dialog.manikin === null ? ""
          : dialog.manikin.isRunning && dialog.manikin.learner.length > 0
            ? qsTr("%1 runs with %2. The learner is added to the session.").arg(dialog.manikin.name).arg(dialog.manikin.learner)
            : dialog.manikin.name
    firstItem: field

    Field {
        id: field
        objectName: "assignName"
        Layout.fillWidth: true
        placeholderText: qsTr("Name")
        Keys.onDownPressed: if (list.count > 0) list.forceActiveFocus()
    }
    RowList {
        id: list
        objectName: "assignNames"
        Layout.fillWidth: true
        Layout.preferredHeight: Math.min(list.contentHeight, Math.round(320 * Look.unit))
        visible: list.count > 0
        name: qsTr("Class list")
        model: dialog.names
        onPicked: row => field.text = dialog.names[row]
        onAccepted: dialog.accept()

        delegate: ListRow {
            id: nameRow

            required property int index
            required property string modelData

            width: list.width
            isChosen: list.row === nameRow.index
            spoken: Words.shown(nameRow.modelData)
            onPicked: list.pick(nameRow.index)
            onAccepted: dialog.accept()

            PageText { height: parent.height; width: list.width - 2 * Look.padding; horizontalAlignment: Text.AlignLeft; text: Words.shown(nameRow.modelData); Accessible.ignored: true }
        }
    }
    buttons: [
        ActionButton { objectName: "acceptAssign"; text: qsTr("Assign"); highlighted: true; enabled: field.text.trim().length > 0; onClicked: dialog.accept() },
        ActionButton { text: qsTr("Cancel"); onClicked: dialog.close() }
    ]
}
