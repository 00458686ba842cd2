// SPDX-License-Identifier: LGPL-2.1-or-later
import QtQuick 2.15
import QtQuick.Window 2.15

Window {
    id: window

    property alias folder: home.folder
    property alias index: home.index

    width: 360
    height: 640
    visible: true
    title: qsTr("Launchers")

    HomeScreen {
        id: home

        anchors.fill: parent
        focus: true
        pixelRatio: Screen.devicePixelRatio
        onLaunched: function (packageName, entryName) {
            console.log("start", packageName, entryName)
        }
    }
}
