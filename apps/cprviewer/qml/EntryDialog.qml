// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// Corrects a learner of the class list.
AppDialog {
    id: dialog

    required property ClassList names
    property int number: -1

    function edit(number) {
        const entry = dialog.names.entries[number];
        dialog.number = number;
        nameField.text = entry.name;
        manikin.text = entry.manikin;
        protocol.currentIndex = entry.protocol + 1;
        dialog.open();
    }
    function accept() {
        dialog.names.correct(dialog.number, nameField.text, manikin.text, protocol.currentIndex - 1);
        dialog.close();
    }

    title: qsTr("Learner of the class list")
    firstItem: nameField

    PageText { text: qsTr("Name") }
    Field { id: nameField; objectName: "entryName"; Layout.fillWidth: true; placeholderText: qsTr("Name") }
    PageText { text: qsTr("Manikin") }
    Field { id: manikin; objectName: "entryManikin"; Layout.fillWidth: true; placeholderText: qsTr("Any manikin") }
    PageText { text: qsTr("Protocol") }
    Choice {
        id: protocol
        objectName: "entryProtocol"
        Layout.fillWidth: true
        name: qsTr("Protocol")
        model: [qsTr("Any protocol")].concat([0, 1, 2, 3, 4, 5].map(number => Words.protocol(number)))
    }
    buttons: [
        ActionButton { objectName: "acceptEntry"; text: qsTr("Keep"); highlighted: true; enabled: nameField.text.trim().length > 0; onClicked: dialog.accept() },
        ActionButton { text: qsTr("Cancel"); onClicked: dialog.close() }
    ]
}
