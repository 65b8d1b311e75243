pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

/// A ring around `target`, its parent or a sibling, while the keyboard's focus
/// is there. `radius` is the target's own corner radius.
Item {
    id: ring

    required property T.Control target
    property real radius: 0

    readonly property real gap: 1
    readonly property real line: 2
    readonly property bool shown: target.visible && target.visualFocus

    property SoftSurface surface: null

    anchors.fill: target
    anchors.margins: -(gap + line / 2)
    visible: shown
    onShownChanged: {
        if (shown && !surface)
            surface = drawn.createObject(ring) as SoftSurface;
    }

    // Made when it is wanted: hardly any control ever shows its ring.
    Component {
        id: drawn

        SoftSurface {
            anchors.fill: parent
            radius: ring.radius + ring.gap + ring.line / 2
            outline: SoftTheme.accent
            outlineWidth: ring.line
        }
    }
}
