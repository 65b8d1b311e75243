import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// One figure with its label below.
SoftSurface {
    id: tile

    required property string value
    required property string label
    property color tint: SoftTheme.primaryInk

    implicitHeight: texts.height + 24
    radius: 11
    fill: SoftTheme.liftedSurface
    outline: SoftTheme.hairline

    Column {
        id: texts

        x: 12
        y: 12
        width: parent.width - 24
        spacing: 4

        SoftText {
            width: parent.width
            text: tile.value
            size: 18
            weight: Font.Bold
            design: SoftFont.Monospaced
            color: tile.tint
        }
        SoftText {
            width: parent.width
            text: tile.label
            size: 9
            weight: Font.Medium
            design: SoftFont.Rounded
            color: SoftTheme.mutedInk
        }
    }
}
