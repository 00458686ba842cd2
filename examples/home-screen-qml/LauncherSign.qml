// SPDX-License-Identifier: LGPL-2.1-or-later
// A sign in place of the icon of a launcher, and the fault of a package that cannot be read.
import QtQuick 2.15

Item {
    id: sign

    property Item cell: null
    readonly property color foreground: cell ? cell.foreground : "transparent"

    width: cell ? cell.label.width : 0

    Rectangle {
        anchors.horizontalCenter: parent.horizontalCenter
        width: 56
        height: 56
        radius: 18
        color: Qt.rgba(sign.foreground.r, sign.foreground.g, sign.foreground.b, 0.18)
        visible: sign.cell !== null && sign.cell.iconStatus !== Image.Ready

        Text {
            anchors.centerIn: parent
            font { pixelSize: 26; bold: true }
            color: sign.foreground
            textFormat: Text.PlainText
            text: sign.cell && sign.cell.isBroken ? "!" : ""
        }
    }

    Text {
        y: 76
        width: parent.width
        horizontalAlignment: Text.AlignHCenter
        font.pixelSize: 9
        color: sign.foreground
        opacity: 0.7
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        text: sign.cell && sign.cell.isBroken ? sign.cell.entry.errorString : ""
    }
}
