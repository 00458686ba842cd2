// SPDX-License-Identifier: LGPL-2.1-or-later
import QtQuick 2.15
import QtQuick.Window 2.15
import Sorrel 0.5

Window {
    width: 480
    height: 640
    visible: true

    GridView {
        anchors.fill: parent
        cellWidth: 96
        cellHeight: 104
        model: ShelfModel {
            folders: ["/srv/packages"]
            launchersOnly: true
            iconSize: 64
            iconShape: ShelfModel.Circle
        }
        delegate: Column {
            width: 96
            Image {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 64
                height: 64
                asynchronous: true
                source: model.icon
            }
            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                textFormat: Text.PlainText
                elide: Text.ElideRight
                text: model.label
            }
        }
    }
}
