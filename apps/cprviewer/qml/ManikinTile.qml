// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

import QtQuick 2.15
import CPRData 1.0
import CPRViewer 1.0
import "."

// A learner of a class at a manikin, to be read while walking past. Few items, which grow with the
// tile: twelve of them are drawn without a graphics card.
Rectangle {
    id: tile

    required property int index
    required property ClassManikin manikin
    property bool isCurrent: false // the keyboard speaks to it
    property string key: "" // that opens it
    readonly property LiveFigures live: tile.manikin.figures
    readonly property bool isLinkBad: tile.manikin.state === ClassManikin.ManikinLost || tile.manikin.state === ClassManikin.Silent
                                      || tile.manikin.state === ClassManikin.Gone
    readonly property bool isNow: tile.manikin.state === ClassManikin.Running // what the figures say is of now
    readonly property bool hasResult: tile.manikin.state === ClassManikin.Ended && tile.live.score >= 0
    readonly property bool isOutdated: !tile.isNow || (tile.live.hasCompressions ? tile.live.isCompressionOutdated : tile.live.isVentilationOutdated)
    readonly property bool isFirst: tile.manikin.isFirst
    readonly property bool isChange: tile.isNow && tile.live.rescuerChange !== LiveFigures.NoChange
    readonly property real unit: Math.min(tile.width / 330, tile.height / 196)
    readonly property real pad: Math.round(8 * tile.unit)
    readonly property real frame: Math.max(3, Math.round(4 * tile.unit)) // the widest
    readonly property real small: Math.round(13 * tile.unit)
    readonly property real middle: Math.round(16 * tile.unit)
    readonly property string learner: tile.manikin.learner.length > 0 ? tile.manikin.learner : qsTr("No learner")
    readonly property string duration: {
        const secs = tile.manikin.remaining;
        return secs >= 0 ? Math.floor(secs / 60) + ":" + String(secs % 60).padStart(2, "0") : tile.live.timeText;
    }
    readonly property string link: {
        switch (tile.manikin.state) {
        case ClassManikin.Ready: return qsTr("ready");
        case ClassManikin.ManikinLost: return qsTr("manikin lost");
        case ClassManikin.Silent: return qsTr("silent");
        case ClassManikin.Gone: return qsTr("gone");
        case ClassManikin.Ended: return [qsTr("ended"), qsTr("is being saved"), qsTr("saved"), qsTr("not saved"), qsTr("nothing recorded")][tile.manikin.storage];
        }
        const lost = tile.live.lostMsecs > 0 ? qsTr("%1 s missing").arg(Number(tile.live.lostMsecs / 1000).toLocaleString(Qt.locale(), "f", 1)) : "";
        if (!tile.manikin.isLinked)
            return lost;
        return [lost, tile.manikin.lost > 0 ? qsTr("%n packet(s) lost", "", tile.manikin.lost) : "",
                qsTr("%1 ms delay").arg(tile.manikin.delay)].filter(text => text.length > 0).join(", ");
    }
    // The one thing to say, or what is wrong with the link.
    readonly property string words: {
        const secs = tile.manikin.stateSecs;
        switch (tile.manikin.state) {
        case ClassManikin.Ready: return tile.manikin.isStarting ? qsTr("Starting…") : qsTr("Ready to start");
        case ClassManikin.ManikinLost: return qsTr("Manikin lost for %1 s").arg(secs);
        case ClassManikin.Silent: return qsTr("Silent for %1 s").arg(secs);
        case ClassManikin.Gone: return qsTr("Link gone for %1 s").arg(secs);
        case ClassManikin.Ended: return tile.live.score >= 0 && tile.live.advice || qsTr("The session has ended.");
        }
        return tile.live.advice || (tile.live.compressionCount + tile.live.ventilationCount > 0 ? qsTr("Keep going.") : qsTr("Waiting for the learner"));
    }
    readonly property string score: tile.live.score >= 0 ? qsTr("Result %1 %").arg(tile.live.score)
                                    : tile.live.scoreSoFar >= 0 ? qsTr("%1 % right").arg(tile.live.scoreSoFar) : "" // explained below the tiles
    readonly property string cycle: tile.live.compressionsPerCycle > 0 && tile.live.ventilationsPerCycle > 0
                                    ? tile.live.compressionsInCycle + ":" + tile.live.ventilationsInCycle
                                    : tile.live.hasCompressions ? String(tile.live.compressionCount) : String(tile.live.ventilationCount)
    readonly property string cycleTitle: tile.live.compressionsPerCycle > 0 && tile.live.ventilationsPerCycle > 0
                                         ? qsTr("Cycle of %1:%2").arg(tile.live.compressionsPerCycle).arg(tile.live.ventilationsPerCycle)
                                         : tile.live.hasCompressions ? qsTr("Compressions") : qsTr("Ventilations")
    readonly property bool isFault: tile.isNow && tile.live.adviceTone === LiveFigures.Fault
    readonly property bool isInstruction: tile.isNow && tile.live.adviceTone === LiveFigures.Instruction
    readonly property string change: tile.live.rescuerChange === LiveFigures.ChangeNow ? qsTr("Change rescuer") : qsTr("Change rescuer soon")
    readonly property string spoken: [
        tile.isFirst ? qsTr("Help here first") : "", tile.learner, tile.manikin.name, tile.link,
        firstFigure.isOutdated ? "" : firstFigure.spoken, secondFigure.isOutdated ? "" : secondFigure.spoken,
        tile.isNow && tile.live.pause > 0 ? qsTr("Pause %1 s").arg(tile.live.pause) : "", tile.live.aed, tile.hasResult ? "" : tile.score, tile.words,
        tile.isChange ? tile.change : "", tile.duration].filter(text => text.length > 0).join(", ")
    signal opened()
    signal picked()
    signal menuWanted(Item at)
    signal started()

    radius: Look.radius
    color: Look.card
    border.color: tile.isFirst ? Look.fault : tile.isCurrent ? Look.accent : Look.frame
    border.width: tile.isFirst ? tile.frame : tile.isCurrent ? 2 : 1

    FocusFrame { visible: tile.isCurrent; anchors.margins: -4 }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onPressed: tile.picked()
        onClicked: mouse => {
            if (mouse.button === Qt.RightButton)
                tile.menuWanted(menuButton);
            else
                tile.opened();
        }
    }

    // Who, and how long.
    Rectangle {
        id: head
        anchors { left: parent.left; right: parent.right; top: parent.top; margins: tile.frame - 1 }
        height: Math.round(30 * tile.unit)
        color: tile.isFirst ? Look.fault : "transparent"

        PlainText {
            id: keyText
            anchors { left: parent.left; leftMargin: tile.pad; verticalCenter: parent.verticalCenter }
            text: tile.isFirst ? "▶ " + tile.key : tile.key
            color: tile.isFirst ? Look.accentText : Look.muted
            font.pixelSize: tile.middle
        }
        PlainText {
            anchors { left: keyText.right; leftMargin: tile.pad; right: timeText.left; rightMargin: tile.pad; verticalCenter: parent.verticalCenter }
            text: tile.learner
            color: tile.isFirst ? Look.accentText : tile.manikin.learner.length > 0 ? Look.text : Look.muted
            font { pixelSize: Math.round(18 * tile.unit); bold: true }
            elide: Text.ElideRight
            horizontalAlignment: Text.AlignLeft
        }
        PlainText {
            id: timeText
            anchors { right: menuButton.left; rightMargin: tile.pad / 2; verticalCenter: parent.verticalCenter }
            text: tile.duration
            color: tile.isFirst ? Look.accentText : Look.text
            font { pixelSize: Math.round(18 * tile.unit); bold: true }
        }
        PlainText {
            id: menuButton
            anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
            width: Math.round(26 * tile.unit)
            text: "⋮"
            color: tile.isFirst ? Look.accentText : Look.text
            font { pixelSize: Math.round(20 * tile.unit); bold: true }
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter

            MouseArea {
                anchors.fill: parent
                onClicked: { tile.picked(); tile.menuWanted(menuButton); }
            }
        }
    }
    // Where, how well the link is, and the score; that the rescuers change places goes first.
    Rectangle {
        anchors { fill: placeText; leftMargin: -tile.pad / 2; rightMargin: -tile.pad / 2 }
        visible: tile.isChange
        radius: Look.radius / 2
        color: Look.accent
    }
    PlainText {
        id: placeText
        anchors { left: parent.left; leftMargin: tile.pad + 2; right: scoreText.left; rightMargin: tile.pad; top: head.bottom; topMargin: 2 }
        text: tile.isChange ? "⇄ " + tile.change : tile.isFirst ? qsTr("Help here first") + " · " + tile.manikin.name
                            : [tile.manikin.name, tile.link].filter(text => text.length > 0).join(" · ")
        color: tile.isChange ? Look.accentText : tile.isFirst ? Look.fault : Look.muted
        font { pixelSize: tile.small; bold: tile.isFirst || tile.isChange }
        elide: Text.ElideRight
        horizontalAlignment: Text.AlignLeft
    }
    PlainText {
        id: scoreText
        anchors { right: parent.right; rightMargin: tile.pad + 2; top: head.bottom; topMargin: 2 }
        text: tile.hasResult ? "" : tile.score
        color: Look.text
        font { pixelSize: tile.small; bold: true }
    }
    Row {
        id: figureRow
        readonly property real free: strip.y - placeText.y - placeText.height - figureRow.height - smallRow.height
        anchors { left: parent.left; right: parent.right; leftMargin: tile.pad + 2; rightMargin: tile.pad + 2 }
        y: placeText.y + placeText.height + Math.round(figureRow.free / 3)

        TileFigure {
            id: firstFigure
            width: Math.floor(figureRow.width / 2)
            unit: tile.unit
            isOutdated: tile.isOutdated && !tile.hasResult
            title: tile.hasResult ? qsTr("Result") : tile.live.hasCompressions ? qsTr("Depth") : qsTr("Volume")
            units: tile.hasResult ? "%" : tile.live.hasCompressions ? qsTr("mm") : qsTr("ml")
            value: tile.hasResult ? tile.live.score : tile.live.hasCompressions ? tile.live.lastDepth : tile.live.lastVolume
            number: tile.hasResult || !tile.live.hasCompressions ? firstFigure.value.toFixed(0) : tile.live.lastDepthText
            from: tile.hasResult ? 0 : tile.live.hasCompressions ? tile.live.depthMin : tile.live.volumeMin
            to: tile.hasResult ? 0 : tile.live.hasCompressions ? tile.live.depthMax : tile.live.volumeMax
            side: tile.hasResult ? LiveFigures.Unknown : tile.live.hasCompressions ? tile.live.depthSide : tile.live.volumeSide
        }
        TileFigure {
            id: secondFigure
            width: Math.floor(figureRow.width / 2)
            unit: tile.unit
            isOutdated: tile.isOutdated && !tile.hasResult
            title: tile.hasResult ? qsTr("Right") : qsTr("Rate")
            units: tile.hasResult ? "%" : qsTr("/min")
            value: tile.hasResult ? tile.live.scoreSoFar : tile.live.hasCompressions ? tile.live.rate : tile.live.ventilationRate
            from: tile.hasResult ? 0 : tile.live.hasCompressions ? tile.live.rateMin : tile.live.ventilationRateMin
            to: tile.hasResult ? 0 : tile.live.hasCompressions ? tile.live.rateMax : tile.live.ventilationRateMax
            side: tile.hasResult ? LiveFigures.Unknown : tile.live.hasCompressions ? tile.live.rateSide : tile.live.ventilationRateSide
        }
    }
    Row {
        id: smallRow
        readonly property bool hasAed: tile.live.aed.length > 0
        anchors { left: parent.left; right: parent.right; leftMargin: tile.pad + 2; rightMargin: tile.pad + 2 }
        y: figureRow.y + figureRow.height + Math.round(figureRow.free / 3)

        TileNote {
            visible: tile.live.hasCompressions
            width: smallRow.width * (smallRow.hasAed ? 0.22 : 0.3)
            unit: tile.unit
            title: qsTr("Release")
            text: tile.live.lastDepth < 0 ? "–" : tile.live.isReleased ? "✓" : "✗ " + tile.live.lastReleaseDepth.toFixed(0) + " " + qsTr("mm")
            isFault: !tile.isOutdated && !tile.live.isReleased
            isOutdated: tile.isOutdated
        }
        TileNote {
            width: smallRow.width * (smallRow.hasAed ? 0.29 : 0.4)
            unit: tile.unit
            title: tile.cycleTitle
            text: tile.cycle
            isFault: tile.isNow && (tile.live.hasTooManyCompressions || tile.live.hasTooManyVentilations)
            isOutdated: !tile.isNow
        }
        TileNote {
            width: smallRow.width * (smallRow.hasAed ? 0.15 : 0.3)
            unit: tile.unit
            title: qsTr("Pause")
            text: tile.isNow && tile.live.pause > 0 ? qsTr("%1 s").arg(tile.live.pause) : "–"
            isFault: tile.isNow && tile.live.isPauseTooLong
            isOutdated: !tile.isNow
        }
        TileNote {
            visible: smallRow.hasAed
            width: smallRow.width * 0.34
            unit: tile.unit
            title: qsTr("AED")
            text: tile.live.aed
            isOutdated: !tile.isNow
        }
    }
    // What to say. Filled where the instructor is needed, and where the link is.
    Rectangle {
        id: strip
        readonly property color tone: tile.isLinkBad ? Look.text : tile.isInstruction ? Look.accent
                                      : tile.isFault ? Look.fault : Look.frame
        readonly property bool isFilled: tile.isLinkBad || tile.isFirst
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom; margins: tile.frame + 2 }
        height: Math.round(36 * tile.unit)
        radius: Look.radius / 2
        color: strip.isFilled ? strip.tone : "transparent"
        border { color: strip.tone; width: tile.isFault || tile.isInstruction ? 2 : 1 }

        PlainText {
            id: mark
            anchors { left: parent.left; leftMargin: tile.pad; verticalCenter: parent.verticalCenter }
            text: tile.isLinkBad ? "⚠" : tile.isFault || tile.isInstruction ? "!"
                  : tile.isNow && tile.live.adviceTone === LiveFigures.Praise ? "✓" : ""
            color: stripText.color
            font { pixelSize: tile.middle; bold: true }
        }
        PlainText {
            id: stripText
            anchors { left: mark.right; leftMargin: mark.text.length > 0 ? tile.pad : 0; right: startButton.visible ? startButton.left : parent.right; rightMargin: tile.pad; top: parent.top; bottom: parent.bottom; topMargin: 3; bottomMargin: 3 }
            text: tile.words
            color: strip.isFilled ? tile.isLinkBad ? Look.card : Look.accentText
                   : tile.isFault ? Look.fault : tile.isNow && tile.live.adviceTone === LiveFigures.Praise ? Look.good
                   : tile.isInstruction ? Look.text : Look.muted
            font { pixelSize: tile.middle; bold: tile.isFault || strip.isFilled || tile.isInstruction }
            fontSizeMode: Text.Fit
            minimumPixelSize: Math.max(9, Math.round(11 * tile.unit))
            wrapMode: Text.WordWrap
            maximumLineCount: 2
            verticalAlignment: Text.AlignVCenter
            elide: Text.ElideRight
        }
        Rectangle {
            id: startButton
            visible: (tile.manikin.state === ClassManikin.Ready && !tile.manikin.isStarting) || tile.manikin.canResume || tile.manikin.isReusable
            anchors { right: parent.right; top: parent.top; bottom: parent.bottom }
            width: startText.implicitWidth + 3 * tile.pad
            radius: strip.radius
            color: Look.accent

            PlainText {
                id: startText
                anchors.centerIn: parent
                text: tile.manikin.canResume ? qsTr("Go on") : "▶ " + (tile.manikin.isReusable ? qsTr("Next") : qsTr("Start"))
                color: Look.accentText
                font { pixelSize: tile.middle; bold: true }
            }
            MouseArea {
                anchors.fill: parent
                onClicked: { tile.picked(); tile.started(); }
            }
        }
    }
}
