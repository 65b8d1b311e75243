import QtQuick
import Orvik.Tallyview.Theme

/// A change of content or of a filter as a colour shows it, ease-in-out.
ColorAnimation {
    duration: SoftTheme.replaceDuration
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
}
