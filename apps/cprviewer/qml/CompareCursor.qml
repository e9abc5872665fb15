// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import "."

// The time that is looked at.
Rectangle {
    id: mark

    required property real at
    required property rect area // in which time is drawn

    visible: mark.at >= mark.area.x && mark.at <= mark.area.x + mark.area.width
    x: Math.round(mark.at)
    y: mark.area.y
    width: Math.max(2, Math.round(2 * Look.unit))
    height: mark.area.height
    color: Look.fault
}
