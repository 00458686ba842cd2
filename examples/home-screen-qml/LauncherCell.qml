// SPDX-License-Identifier: LGPL-2.1-or-later
// A launcher: its icon and its label. A package that cannot be read has a sign, and its fault below the label.
import QtQuick 2.15
import Sorrel 0.5

Item {
    id: cell

    property var entry: null
    property bool isCurrent: false
    property color foreground
    readonly property bool isBroken: entry !== null && entry.status === ShelfModel.Broken
    readonly property alias iconStatus: icon.status
    readonly property alias label: name

    signal tapped
    signal held

    visible: entry !== null

    Rectangle {
        anchors { fill: parent; margins: 3 }
        radius: 14
        color: cell.foreground
        opacity: 0.14
        visible: cell.isCurrent
    }

    Image {
        id: icon

        anchors { top: parent.top; topMargin: 8; horizontalCenter: parent.horizontalCenter }
        width: 56
        height: 56
        asynchronous: true
        source: cell.entry ? cell.entry.icon : ""
    }

    // In place of an icon that is missing.
    Rectangle {
        anchors.fill: icon
        radius: 18
        color: Qt.rgba(cell.foreground.r, cell.foreground.g, cell.foreground.b, 0.18)
        visible: icon.status !== Image.Ready

        Text {
            anchors.centerIn: parent
            font { pixelSize: 26; bold: true }
            color: cell.foreground
            textFormat: Text.PlainText
            text: cell.isBroken ? "!" : ""
        }
    }

    Text {
        id: name

        anchors { top: icon.bottom; left: parent.left; right: parent.right; margins: 4 }
        horizontalAlignment: Text.AlignHCenter
        font.pixelSize: 12
        color: cell.foreground
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        text: cell.entry ? cell.entry.label : ""
    }

    Text {
        anchors { top: name.bottom; left: name.left; right: name.right }
        horizontalAlignment: Text.AlignHCenter
        font.pixelSize: 9
        color: cell.foreground
        opacity: 0.7
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        text: cell.isBroken ? cell.entry.errorString : ""
    }

    TapHandler {
        onTapped: cell.tapped()
        onLongPressed: cell.held()
    }
}
