// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

pragma Singleton

import QtQuick 2.15
import CPRData 1.0

// Colours and sizes that all pages share. All sizes grow with the window.
QtObject {
    id: look

    property bool dark: false
    property real unit: 1 // 1 in a window of 1280x800
    property real textScale: 1 // of the system
    // Small windows have no room for larger texts.
    readonly property real textUnit: look.unit * (look.unit < 0.85 ? 1 : look.textScale)

    readonly property PlotColors colors: PlotColors { dark: look.dark }
    readonly property color page: look.dark ? Qt.darker(look.colors.background, 1.5) : "#eceff3"
    readonly property color card: look.colors.background
    readonly property color frame: look.dark ? look.colors.grid : "#d5dae0"
    readonly property color control: look.dark ? "#2a3038" : "#e6eaef"
    readonly property color controlHover: look.dark ? "#353d47" : "#d9dfe6"
    readonly property color text: look.colors.text
    readonly property color muted: look.colors.mutedText
    readonly property color accent: look.dark ? look.colors.bars : "#005a9e"
    readonly property color accentText: look.dark ? "#0b0f13" : "#ffffff"
    readonly property color outline: look.dark ? "#858f9b" : "#737d8a" // of controls
    readonly property color chosen: look.dark ? "#23384a" : "#dcebf7"
    readonly property color good: look.colors.bandEdge
    readonly property color fault: look.colors.fault

    readonly property real gap: Math.round(12 * look.unit)
    readonly property real padding: Math.round(16 * look.unit)
    readonly property real radius: Math.round(8 * look.unit)
    readonly property real controlHeight: Math.round(38 * look.textUnit) // height of a button
    readonly property real rowHeight: Math.round(40 * look.textUnit) // of an event
    readonly property real small: Math.round(13 * look.textUnit)
    readonly property real normal: Math.round(15 * look.textUnit)
    readonly property real title: Math.round(18 * look.textUnit)
}
