import QtQuick
import Orvik.Tallyview.Theme

/// Half a swing of the pulse of a running task, ease-in-out.
NumberAnimation {
    duration: SoftTheme.pulseDuration
    easing.type: Easing.BezierSpline
    easing.bezierCurve: [0.42, 0, 0.58, 1, 1, 1]
}
