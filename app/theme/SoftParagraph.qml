import QtQuick
import Orvik.Tallyview.Theme

/// A text of several lines, `spacing` points apart, wrapped wherever a word is too long.
SoftText {
    property real spacing: 0

    horizontalAlignment: Text.AlignLeft
    wrapMode: Text.Wrap
    onLineLaidOut: line => {
        if (!line.isLast)
            line.height += spacing;
    }
}
