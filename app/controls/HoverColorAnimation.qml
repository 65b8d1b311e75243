import QtQuick
import Orvik.Tallyview.Theme

/// A hover or selection change of a colour, ease-out.
ColorAnimation {
    duration: SoftTheme.hoverDuration
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0, 0, 0.58, 1, 1, 1]
}
