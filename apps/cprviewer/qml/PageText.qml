// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A line of text in the pages' colours.
PlainText {
    color: Look.text
    font.pixelSize: Look.normal
    elide: Text.ElideRight
    verticalAlignment: Text.AlignVCenter
    Accessible.role: Accessible.StaticText
    Accessible.name: text
}
