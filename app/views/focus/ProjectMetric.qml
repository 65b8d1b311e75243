import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// A figure of a project after a dot of its colour.
Row {
    id: metric

    required property string text
    property color tint: SoftTheme.secondaryInk
    // The width that it may take.
    property real room: Infinity

    spacing: 5

    SoftDot {
        anchors.verticalCenter: parent.verticalCenter
        diameter: 6
        fill: metric.tint
    }
    SoftText {
        width: Math.min(implicitWidth, Math.max(0, metric.room - 6 - metric.spacing))
        anchors.verticalCenter: parent.verticalCenter
        text: metric.text
        size: 9
        weight: Font.Medium
        color: SoftTheme.secondaryInk
    }
}
