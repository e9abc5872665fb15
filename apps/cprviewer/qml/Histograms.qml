// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import "."

// The manikin's six histograms, two beside each other.
Grid {
    id: grid

    property alias session: histograms.session
    signal focused(Item histogram)

    columns: 2
    columnSpacing: Look.padding
    rowSpacing: Look.gap
    visible: histograms.isReceived

    HistogramModel { id: histograms }

    Repeater {
        model: histograms
        delegate: Histogram {
            id: cell

            width: (grid.width - grid.columnSpacing) / 2
            onActiveFocusChanged: if (cell.activeFocus) grid.focused(cell)
        }
    }
}
