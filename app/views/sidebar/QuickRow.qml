import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// A shortcut to filters of the thread index.
SidebarButton {
    id: row

    required property string code
    required property string title
    required property string count

    height: 36
    fill: chosen ? SoftTheme.insetSurface : SoftTheme.withOpacity(SoftTheme.insetSurface, 0)
    Accessible.name: row.title
    Accessible.description: row.count

    SoftInset {
        id: icon

        x: 8
        anchors.verticalCenter: parent.verticalCenter
        width: 24
        height: 24
        radius: 6
        continuous: false

        FadingSymbol {
            anchors.fill: parent
            replaces: true
            name: row.chosen ? "star.fill" : "star"
            size: 11
            weight: Font.DemiBold
            color: SoftTheme.primaryInk
        }
    }
    SoftText {
        id: code

        anchors.left: icon.right
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        width: 28
        text: row.code
        size: 10
        weight: Font.Bold
        design: SoftFont.Monospaced
    }
    SoftText {
        anchors.left: code.right
        anchors.leftMargin: 10
        anchors.right: count.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: row.title
        size: 10
        color: SoftTheme.secondaryInk
    }
    SoftText {
        id: count

        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        text: row.count
        size: 9
        color: SoftTheme.secondaryInk
    }
}
