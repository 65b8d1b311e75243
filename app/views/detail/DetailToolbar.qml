import QtQuick
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// The thread's short reference, pin and copy.
Item {
    id: toolbar

    required property string badge
    required property bool pinned

    signal pinToggled()
    signal copyRequested()

    height: 30

    SoftSurface {
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(badgeText.implicitWidth + 18, pin.x - 8)
        height: 26
        radius: 13
        fill: SoftTheme.withOpacity(SoftTheme.accent, 0.1)

        SoftText {
            id: badgeText

            x: 9
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 18
            text: toolbar.badge
            size: 9
            weight: Font.Bold
            design: SoftFont.Monospaced
            color: SoftTheme.accent
            maximumLineCount: 1
        }
    }
    SoftIconButton {
        id: pin

        anchors.right: copy.left
        anchors.rightMargin: 8
        symbol: toolbar.pinned ? "star.fill" : "star"
        symbolSize: 13
        helpText: toolbar.pinned ? "取消固定" : "固定任务"
        onClicked: toolbar.pinToggled()
    }
    SoftIconButton {
        id: copy

        anchors.right: parent.right
        symbol: "doc.on.doc"
        symbolSize: 13
        helpText: "复制 Thread ID"
        onClicked: toolbar.copyRequested()
    }
}
