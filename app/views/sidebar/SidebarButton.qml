import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// A row of the sidebar that can be pressed; its content lies on a rounded background.
T.AbstractButton {
    id: row

    property real radius: 8
    property color fill: SoftTheme.clear
    property bool continuous: false
    // For a row that is `checkable`. Its owner, whom a press asks, must change it.
    property bool chosen: false
    // How dense the veil of a hovered or pressed row is. A chosen row has a ground of its own to keep.
    property real veil: chosen ? 0.6 : 1

    hoverEnabled: true
    containmentMask: background
    checked: chosen
    Accessible.onPressAction: clicked()
    Accessible.onToggleAction: clicked()

    background: SoftSurface {
        radius: row.radius
        continuous: row.continuous
        fill: row.fill

        Behavior on fill { ReplaceColorAnimation {} }
    }

    SoftVeil {
        target: row
        radius: row.radius
        continuous: row.continuous
        level: row.veil * (row.down ? 1 : row.hovered ? 0.5 : 0)
    }
    SoftFocusRing {
        target: row
        radius: row.radius
    }
}
