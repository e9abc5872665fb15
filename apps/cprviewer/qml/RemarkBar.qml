// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Window 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// Where an instructor remarks on something, with one key or in words. The page goes on behind it.
Card {
    id: bar

    required property Viewer viewer
    property QtObject receiver: bar.viewer // whose addRemark() takes what is new
    property bool isOpen: false
    property int time: 0 // of the remark, ms of session time
    property CPREventBase corrected: null
    property Item before: null // which had the focus
    readonly property var quickRemarks: Words.quickRemarks()
    signal remarked(CPREventBase remark)

    // The key of a quick remark, or that for words. False for any other.
    function takeKey(key, time) {
        const number = key - Qt.Key_1;
        if (number >= 0 && number < bar.quickRemarks.length)
            bar.remark(bar.quickRemarks[number], time);
        else if (key === Qt.Key_T)
            bar.open(time);
        else
            return false;
        return true;
    }
    function remark(text, time) { bar.show(bar.receiver.addRemark(text, time)); }
    function show(remark) {
        if (remark === null)
            return;
        notice.text = "⚑ " + Words.time(remark.msec) + "  " + Words.remark(bar.viewer.remarkText(remark));
        noticeTimer.restart();
        bar.remarked(remark);
    }
    function open(time) {
        bar.corrected = null;
        bar.time = time;
        bar.begin("");
    }
    function correct(remark) {
        bar.corrected = remark;
        bar.time = remark.msec;
        bar.begin(Words.remark(bar.viewer.remarkText(remark)));
    }
    function begin(text) {
        if (!bar.isOpen)
            bar.before = bar.Window.activeFocusItem;
        noticeTimer.stop();
        field.text = text;
        bar.isOpen = true;
        field.forceActiveFocus(Qt.ShortcutFocusReason);
        field.selectAll();
    }
    function accept(text) {
        const old = bar.corrected;
        const time = bar.time;
        bar.close();
        if (old === null)
            bar.remark(text, time);
        else if (text !== Words.remark(bar.viewer.remarkText(old)))
            bar.show(bar.viewer.correctRemark(old, text));
    }
    function close() {
        bar.isOpen = false;
        bar.corrected = null;
        if (bar.before !== null)
            bar.before.forceActiveFocus();
    }

    visible: bar.isOpen || noticeTimer.running
    implicitWidth: bar.isOpen ? Math.round(760 * Look.unit) : notice.implicitWidth + 2 * Look.padding
    implicitHeight: (bar.isOpen ? form.implicitHeight : notice.implicitHeight) + 2 * Look.gap
    border { color: Look.accent; width: 2 }

    Timer { id: noticeTimer; interval: 3000 }
    Connections {
        target: bar.receiver
        function onSessionChanged() { bar.isOpen = false; noticeTimer.stop(); }
    }
    PageText {
        id: notice
        objectName: "remarkNotice"
        visible: !bar.isOpen
        anchors { centerIn: parent }
        width: Math.min(implicitWidth, bar.width - 2 * Look.padding)
        font.pixelSize: Look.title
        Accessible.role: Accessible.AlertMessage
        Accessible.name: notice.text
        Accessible.onNameChanged: Words.announce(notice)
    }
    ColumnLayout {
        id: form
        visible: bar.isOpen
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: Look.gap }
        spacing: Look.gap

        RowLayout {
            spacing: Look.gap

            PageText {
                text: bar.corrected === null ? qsTr("Remark at %1").arg(Words.time(bar.time))
                                             : qsTr("Correct the remark at %1").arg(Words.time(bar.time))
                font.bold: true
            }
            TextField {
                id: field
                objectName: "remarkField"
                Layout.fillWidth: true
                implicitHeight: Look.controlHeight
                font.pixelSize: Look.normal
                color: Look.text
                selectionColor: Look.accent
                selectedTextColor: Look.accentText
                maximumLength: 200
                selectByMouse: true
                placeholderText: qsTr("In your words")
                placeholderTextColor: Look.muted
                Accessible.name: qsTr("Remark")
                background: Rectangle {
                    radius: Look.radius * 0.75
                    color: Look.page
                    border.color: field.activeFocus ? Look.accent : Look.frame
                    border.width: field.activeFocus ? 2 : 1
                }
                Keys.onReturnPressed: bar.accept(field.text)
                Keys.onEnterPressed: bar.accept(field.text)
                Keys.onEscapePressed: bar.close()
            }
            ActionButton {
                objectName: "acceptRemark"
                text: qsTr("Remark")
                help: qsTr("Keep the remark (Enter)")
                highlighted: true
                onClicked: bar.accept(field.text)
            }
            ActionButton {
                text: qsTr("Cancel")
                Keys.onEscapePressed: bar.close()
                onClicked: bar.close()
            }
        }
        Flow {
            Layout.fillWidth: true
            spacing: Look.gap / 2

            Repeater {
                model: bar.quickRemarks
                delegate: ActionButton {
                    required property int index
                    required property string modelData
                    implicitHeight: Math.round(30 * Look.textUnit)
                    font.pixelSize: Look.small
                    text: (index + 1) + "  " + Words.remark(modelData)
                    Keys.onEscapePressed: bar.close()
                    onClicked: bar.accept(modelData)
                }
            }
        }
    }
}
