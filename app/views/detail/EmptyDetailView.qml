import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// Invites to select a thread.
Item {
    Column {
        anchors.centerIn: parent
        width: parent.width - 48
        spacing: 14

        SoftSymbol {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "sidebar.right"
            size: 30
            weight: Font.Light
            color: SoftTheme.accent
        }
        SoftText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: "选择一个任务"
            size: 18
            weight: Font.Bold
        }
        SoftText {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.Wrap
            text: "这里会显示上下文，并提供跳回 Orvik 的入口。"
            size: 10
            color: SoftTheme.secondaryInk
        }
    }
}
