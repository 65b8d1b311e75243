import QtQuick
import Orvik.Tallyview.Theme

// The edge of the sidebar. Dragging it or the arrow keys resize the sidebar, a double-click or the
// space bar restores its width.
Item {
    id: handle

    // The width of the sidebar and its bounds, in points, under the names that assistive technology
    // reads from a slider. It also writes the value; only a Binding object survives that.
    property real value
    required property real minimumValue
    required property real maximumValue
    required property real defaultValue
    readonly property real stepSize: 20

    // The sidebar is to have this width, which is within the bounds.
    signal resized(width: real)

    width: 8
    activeFocusOnTab: true
    Accessible.role: Accessible.Slider
    Accessible.name: "调整项目栏宽度"
    Accessible.description: "拖动调整宽度，双击恢复默认宽度"
    Accessible.onIncreaseAction: value += stepSize
    Accessible.onDecreaseAction: value -= stepSize
    Keys.onLeftPressed: value -= stepSize
    Keys.onRightPressed: value += stepSize
    Keys.onSpacePressed: value = defaultValue
    onValueChanged: {
        value = Math.min(Math.max(value, minimumValue), maximumValue);
        resized(value);
    }

    Rectangle {
        readonly property bool held: drag.active || handle.activeFocus
        readonly property bool emphasized: pointer.hovered || held

        anchors.horizontalCenter: parent.horizontalCenter
        width: emphasized ? 2 : 1
        height: parent.height
        color: held ? SoftTheme.accent : emphasized ? SoftTheme.withOpacity(SoftTheme.accent, 0.55) : SoftTheme.hairline
    }
    HoverHandler {
        id: pointer

        cursorShape: Qt.SplitHCursor
    }
    TapHandler {
        onDoubleTapped: handle.value = handle.defaultValue
    }
    // Counts from the width at its start, so that the edge stays under a pointer that comes back
    // from beyond a bound. The move that starts it counts too; a translation comes with the next
    // one only, and not if the last drag ended with the same.
    DragHandler {
        id: drag

        property real startWidth: 0

        function follow() {
            if (active)
                handle.value = startWidth + centroid.scenePosition.x - centroid.scenePressPosition.x;
        }

        target: null
        dragThreshold: 0
        cursorShape: Qt.SplitHCursor
        onActiveChanged: {
            startWidth = handle.value;
            follow();
        }
        onCentroidChanged: follow()
    }
}
