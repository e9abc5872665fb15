// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import CPRViewer 1.0
import "."

// What a learner hears while a session runs, and how loud.
AppDialog {
    id: dialog

    required property Sound sound

    title: qsTr("Sound for the learner")
    width: Math.round(620 * Look.textUnit)
    firstItem: metronome

    GridLayout {
        Layout.fillWidth: true
        columns: 2
        columnSpacing: Look.padding
        rowSpacing: Look.gap

        FilterChip {
            id: metronome
            objectName: "metronome"
            Layout.fillWidth: true
            text: qsTr("Metronome")
            checked: dialog.sound.hasMetronome
            onCheckedChanged: dialog.sound.hasMetronome = checked
        }
        PageText {
            Layout.fillWidth: true
            text: qsTr("In the middle of the guidelines' rate, while the chest is to be pressed.")
            color: Look.muted
            wrapMode: Text.WordWrap
        }
        FilterChip {
            objectName: "tones"
            Layout.fillWidth: true
            text: qsTr("Tones")
            checked: dialog.sound.hasTones
            onCheckedChanged: dialog.sound.hasTones = checked
        }
        Flow {
            Layout.fillWidth: true
            spacing: Look.gap / 2

            Repeater {
                model: dialog.sound.tones
                delegate: ActionButton {
                    id: tone
                    required property int index
                    required property string modelData
                    objectName: "tone" + tone.index
                    text: "♪ " + tone.modelData
                    help: qsTr("Listen to the tone")
                    onClicked: dialog.sound.play(tone.index)
                }
            }
        }
        FilterChip {
            objectName: "speech"
            Layout.fillWidth: true
            text: qsTr("Spoken advice")
            checked: dialog.sound.hasSpeech
            onCheckedChanged: dialog.sound.hasSpeech = checked
        }
        PageText {
            Layout.fillWidth: true
            text: qsTr("The sentences of the live page.")
            color: Look.muted
            wrapMode: Text.WordWrap
        }
        PageText { text: qsTr("Volume"); Accessible.ignored: true }
        Slider {
            id: slider
            objectName: "volumeSlider"
            Layout.fillWidth: true
            stepSize: 0.1
            snapMode: Slider.SnapAlways
            value: dialog.sound.volume
            Accessible.name: qsTr("Volume")
            onMoved: dialog.sound.volume = slider.value

            background: Rectangle {
                y: (slider.height - height) / 2
                width: slider.width
                height: Math.round(6 * Look.unit)
                radius: height / 2
                color: Look.control
                border { color: Look.outline; width: 1 }

                Rectangle { width: slider.position * parent.width; height: parent.height; radius: height / 2; color: Look.accent }
            }
            handle: Rectangle {
                x: slider.position * (slider.width - width)
                y: (slider.height - height) / 2
                width: Math.round(22 * Look.unit)
                height: width
                radius: width / 2
                color: Look.accent

                FocusFrame { visible: slider.visualFocus; radius: height / 2 }
            }
        }
    }
    PageText {
        objectName: "soundLack"
        Layout.fillWidth: true
        visible: dialog.sound.lack.length > 0
        text: dialog.sound.lack
        color: Look.fault
        wrapMode: Text.WordWrap
    }
    buttons: [ActionButton { text: qsTr("Close"); highlighted: true; onClicked: dialog.close() }]
}
