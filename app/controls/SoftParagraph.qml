import QtQuick
import Orvik.Tallyview.Controls

/// A text of several lines with `spacing` points between them, wrapped wherever a word is too
/// long.
SoftText {
    id: paragraph

    property real spacing: 0

    wrapMode: Text.Wrap
    lineHeightMode: Text.FixedHeight
    lineHeight: Math.ceil(line.contentHeight) + spacing
    // None below the last line.
    bottomPadding: -spacing

    // As tall as a line in the fonts that this text needs.
    Text {
        id: line

        visible: false
        text: paragraph.text.replace(/\s+/g, " ")
        font: paragraph.font
        textFormat: Text.PlainText
        wrapMode: Text.NoWrap
        Accessible.ignored: true
    }
}
