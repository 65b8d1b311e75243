import QtQuick
import Orvik.Tallyview.Theme

/// Hover and selection: a colour eases out.
ColorAnimation {
    duration: SoftTheme.hoverDuration
    easing.type: Easing.OutQuad
}
