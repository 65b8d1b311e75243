import QtQuick
import Orvik.Tallyview.Theme

/// Full turns without end; not to be run under reduced motion.
RotationAnimation {
    from: 0
    to: 360
    duration: SoftTheme.spinDuration
    loops: Animation.Infinite
}
