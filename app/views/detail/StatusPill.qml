import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// A thread's state in one word.
SoftSurface {
    id: pill

    required property bool active
    required property string label

    readonly property color tint: active ? SoftTheme.running : SoftTheme.secondaryInk

    width: row.width + 20
    height: 26
    radius: 13
    fill: SoftTheme.withOpacity(tint, 0.09)

    Row {
        id: row

        x: 10
        anchors.verticalCenter: parent.verticalCenter
        spacing: 6

        SoftDot {
            anchors.verticalCenter: parent.verticalCenter
            diameter: 7
            fill: pill.tint
        }
        SoftText {
            anchors.verticalCenter: parent.verticalCenter
            text: pill.label
            size: 9
            weight: Font.DemiBold
            design: SoftFont.Rounded
            color: pill.tint
        }
    }
}
