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
    readonly property bool needsSign: hasPlaceholder && entry !== null && (isBroken || icon.status !== Image.Ready)
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

    Loader {
        x: 4
        y: 8
        source: cell.needsSign ? "LauncherSign.qml" : ""
        onLoaded: item.cell = cell
    }
}
