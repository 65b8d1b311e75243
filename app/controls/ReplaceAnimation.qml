import QtQuick
import Orvik.Tallyview.Theme

/// A change of content or of a filter, ease-in-out.
NumberAnimation {
    duration: SoftTheme.replaceDuration
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
}
