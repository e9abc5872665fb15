// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Window 2.15
import CPRDataTypes 1.0

Window {
    id: window

    property int compressions: 0
    property string lastAdvice: qsTr("no advice yet")

    visible: true
    width: 480
    height: 320
    title: qsTr("CPR session")

    Column {
        anchors.centerIn: parent
        spacing: 16

        Text {
            // The wave comes in units of 10 micrometres.
            text: qsTr("%1 mm").arg((session.compressionData.relativeDepth / 100).toFixed(0))
            font.pixelSize: 96
        }
        Text {
            text: qsTr("%1 compressions, %2 per minute").arg(window.compressions).arg(
                      session.compressionData.compressionRate)
            font.pixelSize: 24
        }
        Text {
            text: window.lastAdvice
            font.pixelSize: 24
        }
    }

    Connections {
        target: session.cprEvents

        function onCompressionEvent(event) {
            window.compressions = session.cprEvents.count(CPREventBase.TagComp)
        }
        function onCprSessionScoreChanged() {
            switch (session.cprEvents.cprSessionScore.params.primaryAdvice) {
            case CPREventBase.Advice_None: window.lastAdvice = qsTr("Well done"); break
            case CPREventBase.Advice_CompressDeepEnough: window.lastAdvice = qsTr("Compress deeper"); break
            case CPREventBase.Advice_HandPosition: window.lastAdvice = qsTr("Mind the hand position"); break
            default: window.lastAdvice = qsTr("See the review"); break
            }
        }
    }
}
