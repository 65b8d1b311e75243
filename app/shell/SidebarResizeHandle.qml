import QtQuick
import Orvik.Tallyview.Theme

// The edge of the sidebar. Dragging it resizes the sidebar, a double-click restores its width.
Item {
    id: handle

    // The width of the sidebar and its bounds, in points, under the names that assistive
    // technology reads from a slider. It also writes the value; only a Binding object outlives
    // that.
    property real value
    required property real minimumValue
    required property real maximumValue
    required property real defaultValue
    readonly property real stepSize: 20

    readonly property bool hovering: pointer.containsMouse

    // The sidebar is to have this width, which is within the bounds.
    signal resized(width: real)

    function bounded(width: real): real {
        return Math.min(Math.max(width, minimumValue), maximumValue);
    }
    function resizeTo(width: real) {
        resized(bounded(width));
    }

    width: 8
    activeFocusOnTab: true
    Accessible.role: Accessible.Slider
    Accessible.name: "调整项目栏宽度"
    Accessible.description: "拖动调整宽度，双击恢复默认宽度"
    Accessible.onIncreaseAction: resizeTo(value + stepSize)
    Accessible.onDecreaseAction: resizeTo(value - stepSize)
    Keys.onLeftPressed: resizeTo(value - stepSize)
    Keys.onRightPressed: resizeTo(value + stepSize)
    onValueChanged: {
        value = bounded(value);
        resized(value);
    }

    Rectangle {
        readonly property bool emphasized: handle.hovering || handle.activeFocus

        anchors.horizontalCenter: parent.horizontalCenter
        width: emphasized ? 2 : 1
        height: parent.height
        color: emphasized ? SoftTheme.withOpacity(SoftTheme.accent, 0.55) : SoftTheme.hairline
    }
    MouseArea {
        id: pointer

        // Where the drag was pressed, across the window, and the width when it began to move.
        property real pressedAt: 0
        property real startWidth: 0
        property bool dragging: false

        function place(event: MouseEvent): real {
            return mapToItem(null, event.x, event.y).x;
        }

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true
        cursorShape: Qt.SplitHCursor
        onPressed: event => {
            pressedAt = place(event);
            dragging = false;
        }
        onPositionChanged: event => {
            const translation = place(event) - pressedAt;
            if (!pressed || (!dragging && Math.abs(translation) < 1))
                return;
            if (!dragging) {
                dragging = true;
                startWidth = handle.value;
            }
            handle.resizeTo(startWidth + translation);
        }
        onDoubleClicked: handle.resized(handle.defaultValue)
    }
}
