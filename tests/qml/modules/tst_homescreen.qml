// SPDX-License-Identifier: LGPL-2.1-or-later
import QtQuick 2.15
import QtTest 1.15
import "../../../examples/home-screen-qml"

Item {
    id: window

    width: 360
    height: 640

    HomeScreen {
        id: home

        anchors.fill: parent
        focus: true
        folder: places.packages
        index: places.index
    }

    SignalSpy {
        id: launched

        target: home
        signalName: "launched"
    }

    TestCase {
        name: "HomeScreen"
        when: windowShown

        function initTestCase() {
            home.model.locale = "en"
        }

        function init() {
            window.width = 360
            window.height = 640
            home.search = ""
            home.dark = false
            if (home.sheet)
                home.sheet.hide()
            home.forceActiveFocus()
            tryCompare(home.model, "count", 63, 60000)
            tryCompare(home.pageView, "moving", false)
            home.turnTo(0)
            launched.clear()
        }

        function test_pages() {
            compare(home.columns, 4)
            compare(home.pageCount, Math.ceil(63 / home.perPage))
            keyClick(Qt.Key_PageDown)
            compare(home.pageView.currentIndex, 1)
            compare(home.current, home.perPage)
            keyClick(Qt.Key_PageUp)
            compare(home.pageView.currentIndex, 0)
        }

        function test_swipe() {
            home.pageView.forceLayout()
            mousePress(home.pageView, 300, 200)
            for (let x = 290; x >= 40; x -= 25)
                mouseMove(home.pageView, x, 200, 10)
            mouseRelease(home.pageView, 40, 200)
            tryCompare(home.pageView, "currentIndex", 1)
        }

        function test_tap() {
            tryCompare(home.pageView, "contentX", 0)
            tryCompare(home.pageView, "moving", false)
            const width = home.pageView.width / home.columns
            const height = home.pageView.height / home.rows
            mouseClick(home.pageView, width * 1.5, height * 1.5)
            compare(home.current, home.columns + 1)
            compare(launched.count, 1)
            compare(launched.signalArguments[0][1], home.model.get(home.columns + 1).entryName)
            home.turnTo(home.pageCount - 1)
            tryCompare(home.pageView, "contentX", (home.pageCount - 1) * home.pageView.width)
            tryCompare(home.pageView, "moving", false)
            const current = home.current
            mouseClick(home.pageView, width * (home.columns - 0.5), height * (home.rows - 0.5))
            compare(home.current, current)
            compare(launched.count, 1)
        }

        function test_keys() {
            keyClick(Qt.Key_Right)
            compare(home.current, 1)
            keyClick(Qt.Key_Down)
            compare(home.current, 1 + home.columns)
            keyClick(Qt.Key_Left)
            keyClick(Qt.Key_Up)
            compare(home.current, 0)
            keyClick(Qt.Key_Return)
            compare(launched.count, 1)
            compare(launched.signalArguments[0][0], "org.example.markup")
        }

        function test_typingSearches() {
            keyClick("n")
            keyClick("o")
            keyClick("t")
            compare(home.search, "not")
            tryCompare(home.model, "count", 1, 60000)
            tryCompare(home, "current", 0)
            keyClick(Qt.Key_Escape)
            tryCompare(home.model, "count", 63, 60000)
        }

        function test_rotating() {
            home.moveTo(62)
            const page = home.pageView.currentIndex
            window.width = 640
            window.height = 360
            verify(home.isLandscape)
            compare(home.columns, 7)
            compare(home.current, 62)
            tryCompare(home.pageView, "currentIndex", Math.floor(62 / home.perPage))
            verify(page >= 2)
        }

        function test_darkIsANight() {
            keyClick(Qt.Key_F9)
            verify(home.dark)
            verify(home.model.get(0).icon.indexOf("night=1") > 0)
        }

        function test_textsAreText() {
            tryVerify(function () { return findCells(home).length >= home.perPage })
            const cells = findCells(home)
            for (const cell of cells)
                compare(cell.label.textFormat, Text.PlainText)
            verify(cells.some(function (cell) { return cell.label.text === "<b>Bold</b><img src='x'>" }))
            verify(cells.some(function (cell) { return cell.isBroken }))
        }

        function test_sheet() {
            keyClick(Qt.Key_F2)
            verify(home.sheet.visible)
            tryCompare(home.sheet.info, "packageName", "org.example.markup", 60000)
            keyClick(Qt.Key_Escape)
            verify(!home.sheet.visible)
        }

        // The program of the tutorial.
        function test_grid() {
            const grid = Qt.createComponent("../../../examples/launcher-grid/grid.qml")
            compare(grid.status, Component.Ready, grid.errorString())
        }

        function findCells(item) {
            let cells = []
            for (let i = 0; i < item.children.length; ++i) {
                const child = item.children[i]
                if (child.isBroken !== undefined && child.entry)
                    cells.push(child)
                cells = cells.concat(findCells(child))
            }
            return cells
        }
    }
}
