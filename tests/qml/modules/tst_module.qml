// SPDX-License-Identifier: LGPL-2.1-or-later
import QtQuick 2.15
import QtTest 1.15
import Sorrel 0.5

TestCase {
    id: testCase

    name: "Module"
    when: windowShown
    visible: true
    width: 200
    height: 200

    Component {
        id: shelfComponent

        ShelfModel {
            fileName: places.index
            folders: [places.packages]
            locale: "en"
            iconSize: 48
            iconShape: ShelfModel.Circle
        }
    }
    Component {
        id: infoComponent

        PackageInfo {}
    }
    Component {
        id: imageComponent

        Image { asynchronous: true }
    }
    Component {
        id: listComponent

        ListView {
            width: 200
            height: 200
            delegate: Text {
                required property string label
                required property string packageName
                required property int status

                textFormat: Text.PlainText
                text: label
                width: 200
                height: 20
            }
        }
    }

    function initTestCase() {
        verify(places.filled)
    }

    function test_rowsAtOnce() {
        const shelf = createTemporaryObject(shelfComponent, testCase)
        compare(shelf.count, 63)
        compare(shelf.get(0).label, "<b>Bold</b><img src='x'>")
        compare(shelf.get(1).status, ShelfModel.Broken)
        tryCompare(shelf, "refreshing", false, 60000)
        compare(shelf.errorString, "")
    }

    function test_requiredRoles() {
        const shelf = createTemporaryObject(shelfComponent, testCase)
        const list = createTemporaryObject(listComponent, testCase, { model: shelf })
        tryVerify(function () { return list.itemAtIndex(0) !== null })
        compare(list.itemAtIndex(0).packageName, "org.example.markup")
        compare(list.itemAtIndex(0).text, "<b>Bold</b><img src='x'>")
    }

    function test_icons() {
        const shelf = createTemporaryObject(shelfComponent, testCase)
        const image = createTemporaryObject(imageComponent, testCase, { source: shelf.get(2).icon })
        tryCompare(image, "status", Image.Ready, 60000)
        compare(image.implicitWidth, 48)
        const broken = createTemporaryObject(imageComponent, testCase, { source: shelf.get(1).icon })
        ignoreWarning(/QML Image: .*/)
        tryCompare(broken, "status", Image.Error, 60000)
    }

    function test_packageInfo() {
        const info = createTemporaryObject(infoComponent, testCase, { source: places.notes })
        tryCompare(info, "status", PackageInfo.Ready, 60000)
        compare(info.label, "Notes")
        compare(info.launchers[0].name, "org.example.notes.Activity0")
        const image = createTemporaryObject(imageComponent, testCase,
                                            { source: info.icon, sourceSize: Qt.size(32, 32) })
        tryCompare(image, "status", Image.Ready, 60000)
        compare(image.implicitWidth, 32)
    }

    function test_search() {
        const shelf = createTemporaryObject(shelfComponent, testCase)
        shelf.search = "notes"
        tryCompare(shelf, "count", 1, 60000)
        compare(shelf.get(0).label, "Notes")
    }
}
