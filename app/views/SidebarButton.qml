import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Theme

// A row of the sidebar that can be pressed; its content lies on a rounded background.
T.AbstractButton {
    id: row

    property real radius: 8
    property color fill: SoftTheme.clear

    // The keyboard's focus has come here.
    signal reached()

    Accessible.onPressAction: clicked()
    onVisualFocusChanged: {
        if (visualFocus)
            reached();
    }

    background: SoftSurface {
        radius: row.radius
        fill: row.fill

        Behavior on fill { ReplaceColorAnimation {} }
    }

    SoftFocusRing {
        target: row
        radius: row.radius
    }
}
