import QtQuick
import Orvik.Tallyview.Theme

/// A line exactly one point thick; whoever places it sets its length.
Rectangle {
    property int axis: Qt.Horizontal

    implicitWidth: 1
    implicitHeight: 1
    width: axis === Qt.Vertical ? 1 : implicitWidth
    height: axis === Qt.Horizontal ? 1 : implicitHeight
    color: SoftTheme.hairline
}
