// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Layouts 1.15
import CPRViewer 1.0
import "."

// The page to take home: the instructor's remark, and whether it is printed or kept as PDF.
AppDialog {
    id: dialog

    required property Viewer viewer
    readonly property bool isA4: paper.currentIndex === 0
    signal pdfWanted(string remark, bool isA4)

    title: qsTr("Report to take home")
    text: qsTr("One page: the score, what was good and what to work on, the figures and the last sessions.")
    width: Math.round(640 * Look.textUnit)
    firstItem: remark.area

    Connections {
        target: dialog.viewer
        function onSessionChanged() { remark.text = ""; }
    }
    PageText { text: qsTr("Instructor's remark; without one there are lines to write on") }
    FieldArea {
        id: remark
        objectName: "reportRemark"
        Layout.fillWidth: true
        Layout.preferredHeight: Math.round(110 * Look.textUnit)
        name: qsTr("Instructor's remark")
    }
    RowLayout {
        spacing: Look.gap

        PageText { text: qsTr("Paper of the PDF") }
        Choice {
            id: paper
            Layout.preferredWidth: Math.round(140 * Look.textUnit)
            name: qsTr("Paper of the PDF")
            model: ["A4", qsTr("Letter")]
        }
    }
    buttons: [
        ActionButton {
            objectName: "reportPdf"
            text: qsTr("Save as PDF…")
            highlighted: true
            enabled: !dialog.viewer.isWriting
            onClicked: {
                dialog.close();
                dialog.pdfWanted(remark.text, dialog.isA4);
            }
        },
        ActionButton {
            objectName: "reportPrint"
            text: qsTr("Print…")
            help: qsTr("Print the page, with a preview")
            onClicked: {
                dialog.close();
                dialog.viewer.printReport(remark.text);
            }
        },
        ActionButton { text: qsTr("Cancel"); onClicked: dialog.close() }
    ]
}
