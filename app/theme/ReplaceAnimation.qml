import QtQuick
import Orvik.Tallyview.Theme

/// Replaced content and filters: a number eases in and out.
NumberAnimation {
    duration: SoftTheme.replaceDuration
    easing.type: Easing.InOutQuad
}
