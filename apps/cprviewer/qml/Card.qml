// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// A panel on a page.
Rectangle {
    color: Look.card
    radius: Look.radius
    border.color: Look.frame
    border.width: 1
}
