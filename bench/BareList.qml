pragma ComponentBehavior: Bound

import QtQuick

// 20,000 plain rectangles in the place, the size and the distance of the application's rows.
Window {
    id: window

    width: 1440
    height: 900
    color: "#e9ecf2"

    ListView {
        objectName: "list"
        x: 263
        y: 200
        width: 813
        height: 700
        clip: true
        spacing: 10
        model: 20000

        delegate: Rectangle {
            width: ListView.view.width
            height: 58
            color: "#f4f6fa"
        }
    }
}
