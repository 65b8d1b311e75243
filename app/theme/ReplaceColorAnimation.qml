import QtQuick
import Orvik.Tallyview.Theme

/// Replaced content and filters: a colour eases in and out.
ColorAnimation {
    duration: SoftTheme.replaceDuration
    easing.type: Easing.InOutQuad
}
