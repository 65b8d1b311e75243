import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

/// A symbol that fades into the next when its name changes.
Item {
    id: fading

    required property string name
    required property real size
    required property int weight
    required property color color
    /// Fades like replaced content, not like a choice.
    property bool replaces: false

    property string shown: name

    Behavior on shown {
        SequentialAnimation {
            PropertyAction { target: before; property: "name"; value: fading.shown }
            PropertyAction {}
            HoverAnimation {
                target: before
                property: "opacity"
                from: 1
                to: 0
                duration: fading.replaces ? SoftTheme.replaceDuration : SoftTheme.hoverDuration
                easing.bezierCurve: [fading.replaces ? 0.42 : 0, 0, 0.58, 1, 1, 1]
            }
        }
    }

    SoftSymbol {
        id: now

        anchors.fill: parent
        smooth: fading.smooth
        opacity: 1 - before.opacity
        name: fading.shown
        size: fading.size
        weight: fading.weight
        color: fading.color
    }
    SoftSymbol {
        id: before

        anchors.fill: parent
        smooth: fading.smooth
        opacity: 0
        visible: opacity > 0
        size: fading.size
        weight: fading.weight
        color: fading.color
    }
}
