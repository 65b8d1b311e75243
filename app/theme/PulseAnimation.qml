import QtQuick
import Orvik.Tallyview.Theme

/// One swing of the running pulse; not to be run under reduced motion.
NumberAnimation {
    duration: SoftTheme.pulseDuration
    easing.type: Easing.InOutQuad
}
