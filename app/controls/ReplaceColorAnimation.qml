import QtQuick
import Orvik.Tallyview.Theme

/// A colour that changes with content or a filter, ease-in-out.
ColorAnimation {
    duration: SoftTheme.replaceDuration
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
}
