import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// One project of the navigation.
SidebarButton {
    id: view

    required property projectRow row

    height: 40
    checkable: true
    chosen: row.selected
    fill: SoftTheme.withOpacity(SoftTheme.accent, row.selected ? 0.09 : 0)
    Accessible.name: row.name
    Accessible.description: row.count

    SoftSurface {
        id: badge

        x: 6
        anchors.verticalCenter: parent.verticalCenter
        width: 30
        height: 30
        radius: 7
        fill: view.row.selected ? SoftTheme.withOpacity(SoftTheme.accent, 0.16) : SoftTheme.insetSurface

        Behavior on fill { ReplaceColorAnimation {} }

        SoftText {
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            fontSizeMode: Text.HorizontalFit
            minimumPixelSize: 4
            text: view.row.code
            size: 9
            weight: Font.Bold
            design: SoftFont.Monospaced
            maximumLineCount: 1
            color: view.row.selected ? SoftTheme.accent : SoftTheme.primaryInk

            Behavior on color { ReplaceColorAnimation {} }
        }
    }
    SoftText {
        anchors.left: badge.right
        anchors.leftMargin: 10
        anchors.right: count.left
        // The spacing of the row on either side of a spacer of at least 4 points.
        anchors.rightMargin: 10 + 4 + 10
        // On one line whether there is Han in it or not.
        y: Math.round(24 - baselineOffset)
        text: view.row.name
        size: 11.5
        weight: view.row.selected ? Font.DemiBold : Font.Normal
        design: SoftFont.Rounded
        maximumLineCount: 1
    }
    SoftText {
        id: count

        anchors.right: parent.right
        anchors.rightMargin: 6
        anchors.verticalCenter: parent.verticalCenter
        text: view.row.count
        size: 9
        design: SoftFont.Monospaced
        color: SoftTheme.secondaryInk
    }
    SoftToolTip {
        about: view
        text: view.row.name
        wanted: (view.hovered || view.visualFocus) && !view.down
    }
}
