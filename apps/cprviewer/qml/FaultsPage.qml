// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import QtQuick.Controls 2.15
import CPRData 1.0
import "."

// What was worst, and the faults of each cycle.
Item {
    id: page

    property CPRData session: null
    signal timeWanted(int from, int to) // ms of session time

    MomentModel { id: moments; session: page.session }
    CycleModel { id: cycles; session: page.session }

    ListView {
        id: list
        objectName: "cycleList"
        anchors { fill: parent; leftMargin: Look.gap; rightMargin: Look.gap / 2 }
        clip: true
        model: cycles
        currentIndex: -1
        highlightMoveDuration: 0
        keyNavigationEnabled: false
        boundsBehavior: Flickable.StopAtBounds
        activeFocusOnTab: true
        ScrollBar.vertical: ScrollBar { }
        Accessible.role: Accessible.List
        Accessible.name: cycles.hasCycles ? qsTr("Cycles") : qsTr("Runs of compressions")

        function choose(row) {
            if (list.count === 0)
                return;
            list.currentIndex = Math.max(0, Math.min(list.count - 1, row));
            const index = cycles.index(list.currentIndex, 0);
            page.timeWanted(cycles.data(index, CycleModel.StartRole), cycles.data(index, CycleModel.EndRole));
        }
        Keys.onUpPressed: list.choose(list.currentIndex - 1)
        Keys.onDownPressed: list.choose(list.currentIndex + 1)

        header: Column {
            // The view begins with it, whenever it gets its rows.
            onHeightChanged: if (list.currentIndex < 0) list.positionViewAtBeginning()
            width: list.width - Look.gap
            topPadding: Look.gap
            spacing: Look.gap / 2

            PageText { text: qsTr("Worst moments"); font.bold: true }
            PageText {
                visible: moments.count === 0
                width: parent.width
                text: qsTr("Nothing stands out.")
                color: Look.muted
            }
            Repeater {
                model: moments
                delegate: MomentRow {
                    width: parent.width
                    session: page.session
                    onPicked: (from, to) => page.timeWanted(from, to)
                }
            }
            PageText {
                topPadding: Look.gap
                bottomPadding: Look.gap / 2
                text: cycles.hasCycles ? qsTr("Cycles") : qsTr("Runs of compressions")
                font.bold: true
            }
        }
        delegate: CycleRow {
            width: list.width - Look.gap
            hasCycles: cycles.hasCycles
            isChosen: ListView.isCurrentItem
            onPicked: row => {
                list.forceActiveFocus();
                list.choose(row);
            }
        }
    }
    Rectangle {
        anchors.fill: parent
        color: "transparent"
        border { color: Look.accent; width: 2 }
        radius: Look.radius
        visible: list.activeFocus
    }
}
