import QtQuick
import Orvik.Tallyview.Theme

/// A text of several lines with `spacing` points between them, wrapped wherever a word is too
/// long.
SoftText {
    id: paragraph

    property real spacing: 0

    horizontalAlignment: Text.AlignLeft
    wrapMode: Text.Wrap
    lineHeightMode: Text.FixedHeight
    lineHeight: Math.ceil(metrics.height) + spacing
    // None below the last line.
    bottomPadding: -spacing

    FontMetrics {
        id: metrics

        font: paragraph.font
    }
}
