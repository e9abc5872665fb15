// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import Qt.labs.platform 1.1 as Platform
import CPRViewer 1.0
import "."

// Asks for files, and before one is replaced.
Item {
    id: chooser

    required property Viewer viewer
    signal opened(url file)

    property var job: null // (url, replaces) => result
    property var done: null // what is done after a success
    property string thereText: "%1" // what is there already, by the name that was chosen
    property var whenWritten: null // the same, of what is being written

    function open() { openDialog.open(); }
    function save(done) {
        chooser.write(qsTr("Save session"), ".zip", [qsTr("Session (*.zip)")],
                      (url, replaces) => chooser.viewer.save(url, replaces), done);
    }
    function saveLeft(target) {
        chooser.write(qsTr("Save session"), ".zip", [qsTr("Session (*.zip)")],
                      (url, replaces) => chooser.viewer.saveLeft(target, url, replaces), null);
        saveDialog.currentFile = chooser.viewer.proposedFileForLeft(target);
    }
    function exportTable(what) {
        chooser.write(qsTr("Export table"), `-${what}.csv`, [qsTr("Table (*.csv)")],
                      (url, replaces) => chooser.viewer.exportTable(url, what, replaces), null);
    }
    function exportPicture() {
        chooser.write(qsTr("Export picture"), ".png", [qsTr("Picture (*.png *.svg *.pdf)")],
                      (url, replaces) => chooser.viewer.exportPicture(url, replaces), null);
    }
    function exportComparison(model) {
        chooser.write(qsTr("Export comparison"), "-comparison.csv", [qsTr("Table (*.csv)")],
                      (url, replaces) => chooser.viewer.exportComparison(model, url, replaces), null);
    }
    function exportComparisonPicture(model, isOverlaid) {
        chooser.write(qsTr("Export picture"), "-comparison.png", [qsTr("Picture (*.png *.svg *.pdf)")],
                      (url, replaces) => chooser.viewer.exportComparisonPicture(model, isOverlaid, url, replaces), null);
    }
    function exportReport(remark, isA4) {
        chooser.write(qsTr("Save report"), "-report.pdf", [qsTr("Report (*.pdf)")],
                      (url, replaces) => chooser.viewer.exportReport(url, remark, isA4, replaces), null);
    }
    function exportClass(model) {
        chooser.write(qsTr("Save class"), "-class.pdf", [qsTr("Class (*.pdf)")],
                      (url, replaces) => chooser.viewer.exportClass(model, url, chooser.isA4, replaces), null);
    }
    function exportReports(model) {
        chooser.job = (url, replaces) => chooser.viewer.exportReports(model, url, chooser.isA4, replaces);
        chooser.done = null;
        chooser.thereText = qsTr("%1 has reports of these sessions already.");
        chooser.viewer.chooseFolder(qsTr("Folder for the reports"), folder => chooser.finish(folder, false));
    }
    function saveInLibrary(done) {
        chooser.whenWritten = chooser.viewer.saveInLibrary() === Viewer.Started ? done : null;
    }
    function chooseLibrary() {
        chooser.viewer.chooseFolder(qsTr("Folder of the library"), folder => chooser.viewer.chooseLibrary(folder));
    }
    function readClassList() { listDialog.open(); }
    // What printers have where people do not write letters on A4.
    readonly property bool isA4: Qt.locale().measurementSystem !== Locale.ImperialUSSystem
    function write(title, ending, filters, job, done) {
        chooser.job = job;
        chooser.done = done;
        chooser.thereText = "%1";
        saveDialog.title = title;
        saveDialog.nameFilters = filters;
        saveDialog.defaultSuffix = ending.replace(/^.*\./, "");
        saveDialog.open();
        saveDialog.currentFile = chooser.viewer.proposedFile(ending); // forgotten when it comes before
    }
    function finish(url, replaces) {
        const result = chooser.job(url, replaces);
        if (result === Viewer.Exists || result === Viewer.LosesSource) {
            const lost = qsTr("%1 is damaged. Of it this is all that the session has:\n%2\nThe damaged file is kept beside it.");
            replaceDialog.text = result === Viewer.Exists ? chooser.thereText.arg(chooser.viewer.fileName(url))
                : lost.arg(chooser.viewer.fileName(url)).arg(chooser.viewer.report.join("\n"));
            replaceDialog.yesAction = () => chooser.finish(url, true);
            replaceDialog.open();
        }
        chooser.whenWritten = result === Viewer.Started ? chooser.done : null;
    }

    Connections {
        target: chooser.viewer
        function onWritten(isComplete) {
            const action = chooser.whenWritten;
            chooser.whenWritten = null;
            if (isComplete && action)
                action();
        }
    }

    Platform.FileDialog {
        id: openDialog
        title: qsTr("Open session or recorded log")
        nameFilters: [qsTr("Sessions and logs (*.zip *.cprlog *.journal)"), qsTr("All files (*)")]
        onAccepted: chooser.opened(file)
    }
    Platform.FileDialog {
        id: saveDialog
        fileMode: Platform.FileDialog.SaveFile
        options: Platform.FileDialog.DontConfirmOverwrite // it is asked for below, for every platform
        onAccepted: chooser.finish(file, false)
    }
    Platform.FileDialog {
        id: listDialog
        title: qsTr("Read learners")
        nameFilters: [qsTr("Lists (*.csv *.tsv *.txt)"), qsTr("All files (*)")]
        onAccepted: chooser.viewer.readClassList(file)
    }
    QuestionDialog {
        id: replaceDialog
        objectName: "replaceDialog"
        title: qsTr("Replace the file that is there?")
        yes: qsTr("Replace")
    }
}
