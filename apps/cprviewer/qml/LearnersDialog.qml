// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// Corrects the learners of a stored session.
AppDialog {
    id: dialog

    required property LibraryFolder library
    property string file: ""

    function edit(file) {
        dialog.file = file;
        names.text = dialog.library.learnersOf(file).join("\n");
        dialog.open();
    }
    function accept() {
        dialog.close();
        dialog.library.setLearners(dialog.file, names.text.split("\n"));
    }

    title: qsTr("Learners of the session")
    text: Words.shown(dialog.file)
    firstItem: names.area

    PageText { text: qsTr("One name a line. The session is saved anew with them.") }
    FieldArea {
        id: names
        objectName: "learnerNames"
        Layout.fillWidth: true
        Layout.preferredHeight: Math.round(130 * Look.textUnit)
        name: qsTr("Learners of the session")
    }
    buttons: [
        ActionButton { objectName: "acceptLearners"; text: qsTr("Correct"); highlighted: true; onClicked: dialog.accept() },
        ActionButton { text: qsTr("Cancel"); onClicked: dialog.close() }
    ]
}
