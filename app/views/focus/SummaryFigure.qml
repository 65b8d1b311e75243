import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// A number above what it counts.
Column {
    id: figure

    required property string value
    required property string label
    property color tint: SoftTheme.primaryInk

    width: Math.max(52, number.implicitWidth, caption.implicitWidth)
    spacing: 2

    SoftText {
        id: number

        anchors.right: parent.right
        text: figure.value
        size: 16
        weight: Font.Bold
        design: SoftFont.Monospaced
        color: figure.tint
    }
    SoftText {
        id: caption

        anchors.right: parent.right
        text: figure.label
        size: 9
        weight: Font.Medium
        design: SoftFont.Rounded
        color: SoftTheme.mutedInk
    }
}
