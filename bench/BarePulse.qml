import QtQuick

// One item of the size of a running task's symbol that pulses as it does.
Window {
    width: 1440
    height: 900
    color: "#e9ecf2"

    Rectangle {
        id: item

        anchors.centerIn: parent
        width: 16
        height: 16
        color: "#2f6fed"
    }
    SequentialAnimation {
        running: true
        loops: Animation.Infinite

        Half { from: 1; to: 0.55 }
        Half { from: 0.55; to: 1 }
    }

    component Half: NumberAnimation {
        target: item
        property: "opacity"
        duration: 1100
        easing.type: Easing.BezierSpline
        easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
    }
}
