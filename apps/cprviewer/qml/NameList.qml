// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// Names in a line: as many as there is room for, and how many more there are.
PageText {
    id: line

    property var names: []

    function fitting() {
        let text = "";
        for (let shown = 1; shown <= line.names.length; ++shown) {
            const more = line.names.length - shown;
            const longer = Words.shown(line.names.slice(0, shown).join(", ")) + (more > 0 ? qsTr(" +%1").arg(more) : "");
            // A name that is too long by itself is cut, but not the number.
            if (shown > 1 && metrics.advanceWidth(longer) > line.width)
                break;
            text = longer;
        }
        return text;
    }
    horizontalAlignment: Text.AlignLeft // of names that are read from right to left, too
    text: line.names.length > 0 ? line.fitting() : qsTr("No learner named")
    Accessible.name: Words.shown(line.names.join(", ")) || line.text

    FontMetrics { id: metrics; font: line.font }
}
