import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

/// A slim knob over the edge of `flickable`, which becomes its parent. It shows
/// while the content moves and while the pointer is near, or always where it is
/// `lasting`, and takes no room.
/// The knob can be dragged; a click beside it turns a page.
Item {
    id: scroller

    required property Flickable flickable
    property int orientation: Qt.Vertical
    property bool lasting: false

    readonly property bool vertical: orientation === Qt.Vertical
    /// Knob and pointer target, across the direction of scrolling.
    readonly property real thickness: 3
    readonly property real reach: 11
    readonly property real shortestKnob: 28
    readonly property real lingering: 1100

    readonly property real trackLength: vertical ? height : width
    readonly property real contentLength: vertical ? flickable.contentHeight : flickable.contentWidth
    readonly property real viewLength: vertical ? flickable.height : flickable.width
    readonly property real origin: vertical ? flickable.originY : flickable.originX
    readonly property real position: (vertical ? flickable.contentY : flickable.contentX) - origin
    readonly property real hiddenLength: contentLength - viewLength
    readonly property bool needed: hiddenLength > 0 && viewLength > 0
    readonly property real knobLength: !needed ? 0 : Math.min(trackLength, Math.max(shortestKnob, trackLength * viewLength / contentLength))
    readonly property real travel: trackLength - knobLength
    readonly property real knobStart: needed ? travel * Math.max(0, Math.min(1, position / hiddenLength)) : 0
    readonly property bool awake: lasting || pointer.containsMouse || pointer.pressed || linger.running

    function moveTo(target: real) {
        const place = origin + Math.round(Math.max(0, Math.min(hiddenLength, target)));
        if (vertical)
            flickable.contentY = place;
        else
            flickable.contentX = place;
    }

    parent: flickable
    z: 1
    x: vertical && parent ? parent.width - width - SoftTheme.windowRim : 0
    y: !vertical && parent ? parent.height - height - SoftTheme.windowRim : 0
    width: vertical ? reach : viewLength
    height: vertical ? viewLength : reach
    visible: needed
    Accessible.ignored: true

    onPositionChanged: linger.restart()

    Timer {
        id: linger

        interval: scroller.lingering
    }

    Item {
        x: scroller.vertical ? scroller.reach - scroller.thickness : scroller.knobStart
        y: scroller.vertical ? scroller.knobStart : scroller.reach - scroller.thickness
        width: scroller.vertical ? scroller.thickness : scroller.knobLength
        height: scroller.vertical ? scroller.knobLength : scroller.thickness
        opacity: scroller.awake ? 1 : 0

        Behavior on opacity { ReplaceAnimation {} }

        SoftSurface {
            objectName: "knob"
            anchors.fill: parent
            anchors.leftMargin: scroller.vertical ? 0.35 : 1.5
            anchors.rightMargin: anchors.leftMargin
            anchors.topMargin: scroller.vertical ? 1.5 : 0.35
            anchors.bottomMargin: anchors.topMargin
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

    MouseArea {
        id: pointer

        property real grip: -1

        function along(event: MouseEvent): real {
            return scroller.vertical ? event.y : event.x;
        }

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true

        onPressed: event => {
            const place = along(event) - scroller.knobStart;
            grip = place >= 0 && place <= scroller.knobLength ? place : -1;
            if (grip < 0)
                scroller.moveTo(scroller.position + Math.sign(place) * scroller.viewLength);
        }
        onPositionChanged: event => {
            if (pressed && grip >= 0 && scroller.travel > 0)
                scroller.moveTo((along(event) - grip) / scroller.travel * scroller.hiddenLength);
        }
    }
}
