pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// Dots that chase each other in a circle above a label; they stand still under reduced motion.
Column {
    id: indicator

    required property string label

    spacing: 10
    Accessible.role: Accessible.ProgressBar
    Accessible.name: label

    Item {
        id: circle

        readonly property int dots: 8

        anchors.horizontalCenter: parent.horizontalCenter
        width: 22
        height: 22

        Repeater {
            model: circle.dots

            delegate: SoftDot {
                required property int index

                readonly property real angle: 2 * Math.PI * index / circle.dots
                readonly property real orbit: (circle.width - width) / 2

                x: orbit * (1 + Math.sin(angle))
                y: orbit * (1 - Math.cos(angle))
                smooth: true
                diameter: 4
                fill: SoftTheme.secondaryInk
                opacity: (index + 1) / circle.dots
            }
        }
        SpinAnimation {
            target: circle
            property: "rotation"
            running: !SoftTheme.still
            onStopped: circle.rotation = 0
        }
    }
    SoftText {
        anchors.horizontalCenter: parent.horizontalCenter
        text: indicator.label
        weight: Font.Medium
    }
}
