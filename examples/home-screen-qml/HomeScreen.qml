// SPDX-License-Identifier: LGPL-2.1-or-later
// The pages of a phone's home screen. Arrow keys move between the launchers, Enter starts one, Page Up and Page Down
// turn the pages, letters search, F2 shows what is known about a package, and F9 switches between light and dark.
import QtQuick 2.15
import QtQuick.Window 2.15
import Sorrel 0.5

FocusScope {
    id: home

    property string folder
    property string index
    property bool dark: false
    property real pixelRatio: 1
    property int current: 0
    // Before the window has its size, a list without width would make all pages.
    property bool isLaidOut: false
    // The rest waits for the first frame.
    property bool isShown: false
    property alias search: field.text
    readonly property bool isLandscape: width > height
    readonly property int columns: Math.max(1, Math.floor(pages.width / 84))
    readonly property int rows: Math.max(1, Math.floor(pages.height / 104))
    readonly property int perPage: columns * rows
    readonly property int pageCount: Math.max(1, Math.ceil(shelf.count / perPage))
    readonly property color foreground: dark ? "#f2f2f2" : "#202124"
    readonly property alias model: shelf
    readonly property alias pageView: pages
    readonly property alias sheet: sheetLoader.item

    signal launched(string packageName, string entryName)

    function start(row) {
        const entry = shelf.get(row)
        if (entry.entryName)
            home.launched(entry.packageName, entry.entryName)
        else if (entry.path)
            home.showPackage(row)
    }

    function showPackage(row) {
        const entry = shelf.get(row)
        if (!entry.path)
            return
        sheetLoader.active = true
        sheet.show(entry.path)
    }

    function moveTo(row) {
        current = Math.max(0, Math.min(shelf.count - 1, row))
        pages.currentIndex = Math.floor(current / perPage)
    }

    function turnTo(page) {
        moveTo(Math.max(0, Math.min(pageCount - 1, page)) * perPage)
    }

    function showMore() {
        isShown = true
    }

    // A list that has another number of pages starts again at the first one.
    function showCurrent() {
        moveTo(current)
        pages.positionViewAtIndex(pages.currentIndex, ListView.SnapPosition)
    }

    Component.onCompleted: isLaidOut = true
    onPerPageChanged: Qt.callLater(showCurrent)
    onPageCountChanged: Qt.callLater(showCurrent)

    Keys.onPressed: function (event) {
        event.accepted = true
        if (event.key === Qt.Key_Left)
            moveTo(current - 1)
        else if (event.key === Qt.Key_Right)
            moveTo(current + 1)
        else if (event.key === Qt.Key_Up)
            moveTo(current - columns)
        else if (event.key === Qt.Key_Down)
            moveTo(current + columns)
        else if (event.key === Qt.Key_PageUp)
            turnTo(pages.currentIndex - 1)
        else if (event.key === Qt.Key_PageDown)
            turnTo(pages.currentIndex + 1)
        else if (event.key === Qt.Key_Return || event.key === Qt.Key_Enter)
            start(current)
        else if (event.key === Qt.Key_F2)
            showPackage(current)
        else if (event.key === Qt.Key_F9)
            dark = !dark
        else if (event.key === Qt.Key_Escape && sheet && sheet.visible)
            sheet.hide()
        else if (event.key === Qt.Key_Escape)
            search = ""
        else if (event.key === Qt.Key_Backspace)
            search = search.slice(0, -1)
        else if (event.text.length > 0 && event.text >= " " && !(event.modifiers & Qt.ControlModifier))
            search += event.text
        else
            event.accepted = false
    }

    ShelfModel {
        id: shelf

        property int revision: 0

        fileName: home.index
        folders: home.folder ? [home.folder] : []
        search: home.search
        launchersOnly: true
        iconSize: 56
        iconShape: ShelfModel.Squircle
        devicePixelRatio: home.pixelRatio
        night: home.dark
    }

    // Pages read rows by their numbers, so they read them again after each change.
    Connections {
        target: shelf

        function onDataChanged() { ++shelf.revision }
        function onModelReset() { ++shelf.revision }
        function onRowsInserted() { ++shelf.revision }
        function onRowsMoved() { ++shelf.revision }
        function onRowsRemoved() { ++shelf.revision }
        function onCountChanged() { Qt.callLater(home.showCurrent) }
    }

    Rectangle {
        anchors.fill: parent

        gradient: Gradient {
            GradientStop { position: 0; color: home.dark ? "#1b2430" : "#dfe9f3" }
            GradientStop { position: 1; color: home.dark ? "#0c0f14" : "#f7f3ec" }
        }
    }

    Rectangle {
        id: searchBar

        anchors { top: parent.top; left: parent.left; right: themeButton.left; margins: 12 }
        height: 40
        radius: 20
        color: home.dark ? "#2b3644" : "#ffffff"

        TextInput {
            id: field

            anchors { fill: parent; leftMargin: 18; rightMargin: 18 }
            verticalAlignment: TextInput.AlignVCenter
            font.pixelSize: 15
            color: home.foreground
            clip: true
            maximumLength: 256
            selectByMouse: true
            // The keys of the home screen work here, too.
            Keys.onPressed: function (event) {
                const keys = [Qt.Key_Up, Qt.Key_Down, Qt.Key_PageUp, Qt.Key_PageDown, Qt.Key_Return, Qt.Key_Enter,
                              Qt.Key_F2, Qt.Key_F9, Qt.Key_Escape]
                if (keys.indexOf(event.key) >= 0) {
                    home.forceActiveFocus()
                    home.Keys.pressed(event)
                }
            }
        }

        Text {
            anchors { fill: field }
            verticalAlignment: Text.AlignVCenter
            font.pixelSize: 15
            color: home.foreground
            opacity: 0.6
            visible: field.text.length === 0
            textFormat: Text.PlainText
            text: qsTr("Search %1 launchers").arg(shelf.count)
        }
    }

    Rectangle {
        id: themeButton

        anchors { top: parent.top; right: parent.right; margins: 12 }
        width: 40
        height: 40
        radius: 20
        color: searchBar.color

        Rectangle {
            anchors.centerIn: parent
            width: 18
            height: 18
            radius: 9
            color: home.dark ? "#f5d76e" : "#33475b"
        }

        TapHandler { onTapped: home.dark = !home.dark }
    }

    Connections {
        target: home.isShown ? null : home.Window.window

        function onFrameSwapped() { Qt.callLater(home.showMore) }
    }

    // The state of the index: one line that never moves the pages.
    Rectangle {
        anchors { top: searchBar.bottom; left: parent.left; margins: 12; topMargin: 4 }
        width: (parent.width - 24) * shelf.progress
        height: 2
        color: "#4c8bf5"
        visible: shelf.refreshing && shelf.progress < 1
    }

    ListView {
        id: pages

        anchors { top: searchBar.bottom; left: parent.left; right: parent.right; bottom: dots.top; topMargin: 10 }
        orientation: ListView.Horizontal
        snapMode: ListView.SnapOneItem
        highlightRangeMode: ListView.StrictlyEnforceRange
        highlightMoveDuration: 250
        preferredHighlightBegin: 0
        preferredHighlightEnd: 0
        boundsBehavior: Flickable.StopAtBounds
        model: home.isLaidOut && width > 0 ? home.pageCount : 0

        // The pages beside this one are made when the first frame is shown.
        cacheBuffer: home.isShown ? Math.max(1, width) : 0

        delegate: Item {
            id: page

            readonly property int first: index * home.perPage
            readonly property real cellWidth: Math.floor(width / home.columns)
            readonly property real cellHeight: Math.floor(height / home.rows)
            readonly property real margin: Math.floor((width - home.columns * cellWidth) / 2)

            // The row at @p point of this page; -1 where no launcher is.
            function rowAt(point) {
                const column = Math.floor((point.x - margin) / cellWidth)
                const line = Math.floor(point.y / cellHeight)
                const row = first + line * home.columns + column
                const isCell = column >= 0 && column < home.columns && line >= 0 && line < home.rows
                return isCell && row < shelf.count ? row : -1
            }

            width: pages.width
            height: pages.height

            // The launcher that keys start.
            Rectangle {
                readonly property int place: home.current - page.first

                x: page.margin + place % home.columns * page.cellWidth + 3
                y: Math.floor(place / home.columns) * page.cellHeight + 3
                width: page.cellWidth - 6
                height: page.cellHeight - 6
                radius: 14
                color: home.foreground
                opacity: 0.14
                visible: home.activeFocus && place >= 0 && place < home.perPage && home.current < shelf.count
            }

            Repeater {
                model: home.perPage

                delegate: LauncherCell {
                    readonly property int row: page.first + index

                    x: page.margin + index % home.columns * page.cellWidth
                    y: Math.floor(index / home.columns) * page.cellHeight
                    width: page.cellWidth
                    height: page.cellHeight
                    entry: shelf.revision >= 0 && row < shelf.count ? shelf.get(row) : null
                    hasPlaceholder: home.isShown
                    foreground: home.foreground
                }
            }

            TapHandler {
                onTapped: function (eventPoint) {
                    const row = page.rowAt(eventPoint.position)
                    if (row < 0)
                        return
                    home.current = row
                    home.start(row)
                }
                onLongPressed: {
                    const row = page.rowAt(point.position)
                    if (row >= 0)
                        home.showPackage(row)
                }
            }
        }
    }

    Row {
        id: dots

        anchors { bottom: parent.bottom; horizontalCenter: parent.horizontalCenter; bottomMargin: 12 }
        height: 8
        spacing: 8

        Repeater {
            model: Math.min(home.pageCount, 20)

            delegate: Rectangle {
                width: 8
                height: 8
                radius: 4
                color: home.foreground
                opacity: index === Math.min(pages.currentIndex, 19) ? 0.9 : 0.25
            }
        }
    }

    Text {
        anchors { left: parent.left; right: parent.right; bottom: dots.top; margins: 12 }
        color: home.dark ? "#ff9c8f" : "#a8281a"
        font.pixelSize: 12
        elide: Text.ElideRight
        maximumLineCount: 2
        wrapMode: Text.Wrap
        textFormat: Text.PlainText
        text: shelf.errorString
        visible: text.length > 0
    }

    Loader {
        id: sheetLoader

        anchors.fill: parent
        active: false

        sourceComponent: PackageSheet {
            dark: home.dark
            pixelRatio: home.pixelRatio
        }
    }
}
