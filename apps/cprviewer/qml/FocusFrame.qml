// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// Shows which item the keyboard speaks to. Lies around its parent.
Rectangle {
    anchors.fill: parent
    anchors.margins: -3
    radius: Look.radius
    color: "transparent"
    border.color: Look.accent
    border.width: 2
}
