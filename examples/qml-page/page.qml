// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0

Item {
    id: page

    property alias file: source.file

    width: 960
    height: 540

    SessionSource { id: source }
    SessionSummary { id: summary; session: source.session }
    Text {
        id: heading
        text: source.problem || summary.protocolText
    }
    TimelineItem {
        anchors { top: heading.bottom; left: parent.left; right: parent.right; bottom: parent.bottom }
        session: source.session
    }
}
