import QtQuick
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// The heading of one time group; its line leads into the rows below.
Item {
    id: header

    required property timeGroupRow row

    height: 38

    Row {
        anchors.verticalCenter: parent.verticalCenter
        spacing: 14

        SoftDot {
            anchors.verticalCenter: parent.verticalCenter
            diameter: 15
            fill: SoftTheme.raisedSurface
            outline: SoftTheme.rimLight

            SoftDot {
                anchors.centerIn: parent
                diameter: 7
                fill: SoftTheme.running
            }
        }
        SoftText {
            anchors.verticalCenter: parent.verticalCenter
            text: header.row.title
            weight: Font.DemiBold
            design: SoftFont.Rounded
            color: SoftTheme.secondaryInk
        }
        SoftText {
            anchors.verticalCenter: parent.verticalCenter
            text: header.row.count
            size: 8
            weight: Font.Medium
            design: SoftFont.Monospaced
            color: SoftTheme.mutedInk
        }
    }
    Rectangle {
        x: 7.5
        y: 20
        width: 1
        height: header.height
        color: SoftTheme.hairline
    }
}
