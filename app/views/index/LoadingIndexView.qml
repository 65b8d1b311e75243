pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// Placeholder rows while the first read runs.
Item {
    id: view

    Column {
        anchors.fill: parent
        anchors.margins: 24
        spacing: 11

        Repeater {
            model: 7

            delegate: SoftRaised {
                width: view.width - 48
                height: 58
                radius: 11
                strength: 0.45

                SoftDot {
                    id: mark

                    x: 14
                    anchors.verticalCenter: parent.verticalCenter
                    diameter: 34
                    fill: SoftTheme.insetSurface
                }
                Column {
                    anchors.left: mark.right
                    anchors.leftMargin: 12
                    anchors.right: parent.right
                    // The row's padding, and its spacing before an empty spacer of 8 points.
                    anchors.rightMargin: 14 + 12 + 8
                    anchors.verticalCenter: parent.verticalCenter
                    spacing: 7

                    SoftSurface {
                        width: parent.width
                        height: 11
                        radius: 4
                        continuous: false
                        fill: SoftTheme.insetSurface
                    }
                    SoftSurface {
                        width: 180
                        height: 7
                        radius: 3
                        continuous: false
                        fill: SoftTheme.insetSurface
                    }
                }
            }
        }
    }
}
