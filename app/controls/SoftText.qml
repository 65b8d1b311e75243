import QtQuick
import Orvik.Tallyview.Theme

/// A visible text: always plain, cut at the end when there is no room.
Text {
    id: text

    property real size: 11
    property int weight: Font.Normal
    property int design: SoftFont.System

    font: SoftFont.font(text.size, text.weight, text.design)
    color: SoftTheme.primaryInk
    textFormat: Text.PlainText
    // A column keeps its edge whichever way a text runs.
    horizontalAlignment: Text.AlignLeft
    elide: Text.ElideRight

    Accessible.role: Accessible.StaticText
    Accessible.name: text.text
}
