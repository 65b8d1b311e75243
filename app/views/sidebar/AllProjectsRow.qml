import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// Leads back to the threads of all projects.
SidebarButton {
    id: row

    required property bool selected
    required property string count
    required property string label

    property color ink: selected ? SoftTheme.accentInk : SoftTheme.primaryInk

    height: 42
    radius: 9
    continuous: true
    checkable: true
    chosen: selected
    // The accent bears it, and would hide less.
    veil: 1
    fill: selected ? SoftTheme.accent : SoftTheme.withOpacity(SoftTheme.accent, 0)
    Accessible.name: row.label
    // Pressing it again takes nothing back.
    onToggled: if (!checked) checked = Qt.binding(() => row.chosen)

    Behavior on ink { ReplaceColorAnimation {} }

    SoftSymbol {
        id: symbol

        x: 11
        anchors.verticalCenter: parent.verticalCenter
        width: 24
        name: "square.grid.2x2"
        size: 14
        weight: Font.DemiBold
        color: row.ink
    }
    SoftText {
        anchors.left: symbol.right
        anchors.leftMargin: 10
        anchors.right: count.left
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: "全部项目"
        size: 12
        weight: Font.DemiBold
        color: row.ink
    }
    SoftText {
        id: count

        anchors.right: parent.right
        anchors.rightMargin: 11
        anchors.verticalCenter: parent.verticalCenter
        text: row.count
        size: 9
        weight: Font.Medium
        color: row.ink
    }
}
