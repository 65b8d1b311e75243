import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

/// A thin veil of ink over `target`, its parent or a sibling, while the pointer is on it, and a
/// denser one while it is pressed. It lies on a surface, below the texts.
SoftSurface {
    id: veil

    required property T.AbstractButton target
    /// From nothing, 0, to pressed, 1.
    property real level: target.down ? 1 : target.hovered ? 0.5 : 0

    anchors.fill: target
    fill: SoftTheme.withOpacity(SoftTheme.primaryInk, 0.1)
    opacity: level
    visible: opacity > 0

    Behavior on opacity { HoverAnimation {} }
}
