import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// Says what the panel is for.
SoftSurface {
    implicitHeight: Math.max(symbol.implicitHeight, note.implicitHeight) + 28
    radius: 10
    fill: SoftTheme.withOpacity(SoftTheme.insetSurface, 0.66)
    outline: SoftTheme.hairline

    SoftSymbol {
        id: symbol

        x: 14
        y: 14
        name: "info.circle"
        size: 12
        weight: Font.Medium
        color: SoftTheme.accent
    }
    SoftParagraph {
        id: note

        anchors.left: symbol.right
        anchors.leftMargin: 10
        anchors.right: parent.right
        anchors.rightMargin: 14
        y: 14
        text: "详情用于确认任务上下文；任务正文和蓝色按钮都会打开 Orvik 原始对话，Tallyview 不复制对话功能。"
        size: 9
        design: SoftFont.Rounded
        spacing: 4
        color: SoftTheme.secondaryInk
    }
}
