import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// The application's name and the switch of the workspace mode.
Item {
    id: header

    required property bool focusMode

    signal modeToggled()

    SoftSurface {
        // The tile that the icon draws inside its square.
        anchors.fill: icon
        anchors.margins: icon.tileInset
        radius: icon.tileRadius
        continuous: false
        fill: SoftTheme.accent
        darkShadow.color: SoftTheme.softShadowDark
        darkShadow.blur: 4
        darkShadow.x: 2
        darkShadow.y: 3
    }
    OrvikIconView {
        id: icon

        anchors.verticalCenter: parent.verticalCenter
        size: 36
    }
    Column {
        anchors.left: icon.right
        anchors.leftMargin: 11
        anchors.right: mode.left
        anchors.rightMargin: 11
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        SoftText {
            width: parent.width
            text: "Orvik"
            size: 19
            weight: Font.Bold
        }
        SoftText {
            width: parent.width
            text: "本地任务看板"
            size: 10
            weight: Font.Medium
            color: SoftTheme.secondaryInk
        }
    }
    SoftIconButton {
        id: mode

        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        // The mode that the button leads to.
        symbol: header.focusMode ? "rectangle.split.3x1" : "square.grid.2x2"
        symbolSize: 13
        symbolWeight: Font.DemiBold
        replacesSymbol: true
        edge: 34
        helpText: header.focusMode ? "切换到标准模式" : "切换到专注模式"
        hint: "在项目平铺视图和标准三栏视图之间切换"
        onClicked: header.modeToggled()
    }
}
