// SPDX-License-Identifier: LGPL-2.1-or-later
// A launcher: its icon and its label. A package that cannot be read has a sign, and its fault below the label.
// A screen has many cells, so what few of them need is loaded when it is needed.
import QtQuick 2.15
import Sorrel 0.5

Item {
    id: cell

    property var entry: null
    property bool hasPlaceholder: true
    property color foreground
    readonly property bool isBroken: entry !== null && entry.status === ShelfModel.Broken
    readonly property alias iconStatus: icon.status
    readonly property alias label: name

    visible: entry !== null

    Image {
        id: icon

        x: Math.round((cell.width - width) / 2)
        y: 8
        width: 56
        height: 56
        asynchronous: true
        source: cell.entry ? cell.entry.icon : ""
    }

    Text {
        id: name

        x: 4
        y: 68
        width: cell.width - 8
        horizontalAlignment: Text.AlignHCenter
        font.pixelSize: 12
        color: cell.foreground
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        text: cell.entry ? cell.entry.label : ""
    }

    // In place of an icon that is missing.
    Loader {
        x: icon.x
        y: icon.y
        active: cell.hasPlaceholder && cell.entry !== null && icon.status !== Image.Ready

        sourceComponent: Rectangle {
            width: 56
            height: 56
            radius: 18
            color: Qt.rgba(cell.foreground.r, cell.foreground.g, cell.foreground.b, 0.18)

            Text {
                anchors.centerIn: parent
                font { pixelSize: 26; bold: true }
                color: cell.foreground
                textFormat: Text.PlainText
                text: cell.isBroken ? "!" : ""
            }
        }
    }

    Loader {
        x: name.x
        y: name.y + name.height
        active: cell.isBroken

        sourceComponent: Text {
            width: name.width
            horizontalAlignment: Text.AlignHCenter
            font.pixelSize: 9
            color: cell.foreground
            opacity: 0.7
            textFormat: Text.PlainText
            elide: Text.ElideRight
            maximumLineCount: 1
            text: cell.isBroken ? cell.entry.errorString : ""
        }
    }
}
