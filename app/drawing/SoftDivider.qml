import QtQuick
import Orvik.Tallyview.Theme

/// A line of exactly one point; the other length is the place's to give.
Rectangle {
    property int axis: Qt.Horizontal

    implicitWidth: 1
    implicitHeight: 1
    width: axis === Qt.Vertical ? 1 : implicitWidth
    height: axis === Qt.Horizontal ? 1 : implicitHeight
    color: SoftTheme.hairline
}
