import QtQuick
import Orvik.Tallyview.Theme

/// Slides of the focus workspace: a number eases in and out.
NumberAnimation {
    duration: SoftTheme.focusSlideDuration
    easing.type: Easing.InOutQuad
}
