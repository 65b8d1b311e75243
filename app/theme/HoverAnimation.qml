import QtQuick
import Orvik.Tallyview.Theme

/// Hover and selection: a number eases out.
NumberAnimation {
    duration: SoftTheme.hoverDuration
    easing.type: Easing.OutQuad
}
