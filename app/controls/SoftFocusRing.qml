pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

/// A ring around `target`, its parent or a sibling, while the keyboard's focus
/// is there. `radius` is the target's own corner radius.
Item {
    id: ring

    required property Item target
    property bool wanted: (target as T.Control)?.visualFocus ?? false
    property real radius: 0

    readonly property real gap: 1
    readonly property real line: 2

    anchors.fill: target
    anchors.margins: -(gap + line / 2)
    visible: target.visible && wanted

    // Hardly any control ever shows its ring. A Loader makes no bound component before Qt 6.5.
    Repeater {
        model: ring.visible ? 1 : 0

        delegate: SoftSurface {
            anchors.fill: ring
            radius: ring.radius + ring.gap + ring.line / 2
            outline: SoftTheme.accent
            outlineWidth: ring.line
        }
    }
}
