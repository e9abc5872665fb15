// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0

// Says a line that only somebody who has the module's types, words and library can say.
Item {
    CPRData { id: ownSession }
    EventListModel { id: events; session: ownSession }
    WaveItem { session: ownSession; kind: WaveItem.Depth; width: 100; height: 50 }

    Timer {
        running: true
        onTriggered: {
            console.log("module:", events.count, CPREventBase.TagComp, Words.value("compMeanDepth", 5312))
            Qt.quit()
        }
    }
}
