import QtQuick
import Orvik.Tallyview.Theme

/// A slide of the focus workspace, ease-in-out.
NumberAnimation {
    duration: SoftTheme.focusSlideDuration
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
}
