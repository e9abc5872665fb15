// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import "."

// Calls a learner by another name in all stored sessions.
AppDialog {
    id: dialog

    required property LibraryFolder library
    property string learner: ""
    readonly property bool isAnother: nameField.text.trim().length > 0 && nameField.text.trim() !== dialog.learner

    function edit(learner) {
        dialog.learner = learner;
        nameField.text = learner;
        dialog.open();
        nameField.selectAll();
    }
    function accept() {
        if (!dialog.isAnother)
            return;
        dialog.close();
        dialog.library.renameLearner(dialog.learner, nameField.text);
    }

    title: qsTr("Rename the learner in all sessions")
    text: Words.shown(dialog.learner)
    firstItem: nameField

    Field {
        id: nameField
        objectName: "newName"
        Layout.fillWidth: true
        placeholderText: qsTr("New name")
    }
    PageText {
        objectName: "renameNote"
        Layout.fillWidth: true
        wrapMode: Text.WordWrap
        text: dialog.isAnother && dialog.library.hasLearner(nameField.text)
              ? "⚠ " + qsTr("There is a learner of that name already. Both become one, for good.")
              : qsTr("Each session is saved anew with the new name.")
    }
    buttons: [
        ActionButton { objectName: "acceptName"; text: qsTr("Rename"); highlighted: true; enabled: dialog.isAnother; onClicked: dialog.accept() },
        ActionButton { text: qsTr("Cancel"); onClicked: dialog.close() }
    ]
}
