import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

/// A slim knob over the edge of a Flickable. It shows while the content moves and while the pointer
/// is near, or always if it is `lasting`, and takes no room. The knob can be dragged.
T.ScrollBar {
    id: scroller

    /// Where the content is, along the scroller. Its position changes with the content's length too.
    required property real place
    property bool lasting: false

    readonly property real thickness: 3
    /// How wide the strip is that the pointer can hit.
    readonly property real reach: 11
    readonly property real shortestKnob: 28

    /// A click beside the knob asks to scroll by this many pages.
    signal turned(pages: int)

    z: 1
    visible: size < 1
    hoverEnabled: true
    implicitWidth: reach + rightPadding
    implicitHeight: reach + bottomPadding
    rightPadding: vertical ? SoftTheme.windowRim : 0
    bottomPadding: vertical ? 0 : SoftTheme.windowRim
    minimumSize: Math.min(1, shortestKnob / (vertical ? availableHeight : availableWidth))
    Accessible.ignored: true
    onPlaceChanged: linger.restart()

    contentItem: Item {
        opacity: scroller.lasting || scroller.hovered || scroller.pressed || linger.running ? 1 : 0

        Behavior on opacity { ReplaceAnimation {} }

        SoftSurface {
            objectName: scroller.vertical ? "knob" : "horizontalKnob"
            anchors.fill: parent
            anchors.leftMargin: scroller.vertical ? scroller.reach - scroller.thickness + 0.35 : 1.5
            anchors.topMargin: scroller.vertical ? 1.5 : scroller.reach - scroller.thickness + 0.35
            anchors.rightMargin: scroller.vertical ? 0.35 : 1.5
            anchors.bottomMargin: scroller.vertical ? 1.5 : 0.35
            radius: 2
            continuous: false
            fill: SoftTheme.knobFill
            outline: SoftTheme.knobRim
            outlineWidth: 0.5
            darkShadow.color: SoftTheme.knobShadow
            darkShadow.blur: 2
            darkShadow.x: 0.7
            darkShadow.y: 0.7
        }
    }

    Timer {
        id: linger

        interval: 1100
    }
    // Before and after the knob.
    Item {
        width: scroller.vertical ? scroller.width : scroller.contentItem.x
        height: scroller.vertical ? scroller.contentItem.y : scroller.height

        TapHandler {
            gesturePolicy: TapHandler.WithinBounds
            onTapped: scroller.turned(-1)
        }
    }
    Item {
        x: scroller.vertical ? 0 : scroller.contentItem.x + scroller.contentItem.width
        y: scroller.vertical ? scroller.contentItem.y + scroller.contentItem.height : 0
        width: scroller.width - x
        height: scroller.height - y

        TapHandler {
            gesturePolicy: TapHandler.WithinBounds
            onTapped: scroller.turned(1)
        }
    }
}
