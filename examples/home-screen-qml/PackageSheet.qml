// SPDX-License-Identifier: LGPL-2.1-or-later
// The facts of a package, which PackageInfo reads from the file in a thread.
import QtQuick 2.15
import Sorrel 0.5

Rectangle {
    id: sheet

    property bool dark: false
    property real pixelRatio: 1
    readonly property color foreground: dark ? "#f2f2f2" : "#202124"
    readonly property alias info: facts

    function show(path) {
        facts.source = "file://" + path.split("/").map(encodeURIComponent).join("/")
        visible = true
    }

    function hide() {
        visible = false
        facts.source = ""
    }

    visible: false
    color: dark ? "#ee10151c" : "#eef7f9fb"

    PackageInfo { id: facts }

    TapHandler { onTapped: sheet.hide() }

    Image {
        id: icon

        anchors { top: parent.top; horizontalCenter: parent.horizontalCenter; topMargin: 32 }
        width: 96
        height: 96
        sourceSize: Qt.size(96 * sheet.pixelRatio, 96 * sheet.pixelRatio)
        asynchronous: true
        source: facts.icon
    }

    Column {
        anchors { top: icon.bottom; left: parent.left; right: parent.right; margins: 24; topMargin: 16 }
        spacing: 6

        Repeater {
            model: [
                facts.label,
                facts.packageName,
                facts.version ? qsTr("Version %1").arg(facts.version) : "",
                facts.targetSdkVersion ? qsTr("For API level %1, from %2 on").arg(facts.targetSdkVersion)
                                                                          .arg(facts.minSdkVersion) : "",
                facts.status === PackageInfo.Ready ? qsTr("%1 permissions").arg(facts.permissions.length) : "",
                facts.status === PackageInfo.Loading ? qsTr("Reading the package") : "",
                facts.errorString
            ]

            delegate: Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                font { pixelSize: index === 0 ? 20 : 13; bold: index === 0 }
                color: sheet.foreground
                textFormat: Text.PlainText
                elide: Text.ElideRight
                maximumLineCount: 2
                wrapMode: Text.Wrap
                visible: text.length > 0
                text: modelData
            }
        }
    }
}
