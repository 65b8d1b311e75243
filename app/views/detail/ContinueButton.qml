import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// The panel's main action. The window's key monitor does the same for Return, so that a text that
// is being edited keeps the key.
T.AbstractButton {
    id: button

    text: "在 Orvik 中继续"
    implicitHeight: 48
    hoverEnabled: true
    Accessible.name: text
    Accessible.onPressAction: clicked()

    SoftSurface {
        anchors.fill: parent
        radius: 8
        fill: SoftTheme.accent
        darkShadow.color: SoftTheme.withOpacity(SoftTheme.accent, 0.28)
        darkShadow.blur: 7
        darkShadow.x: 0
        darkShadow.y: 4
    }
    SoftVeil {
        target: button
        radius: 8
    }
    SoftText {
        // In the middle of the room that the arrow leaves.
        anchors.left: parent.left
        anchors.leftMargin: 16
        anchors.right: arrow.left
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        horizontalAlignment: Text.AlignHCenter
        text: button.text
        size: 12
        weight: Font.Bold
        design: SoftFont.Rounded
        color: SoftTheme.accentInk
    }
    SoftSymbol {
        id: arrow

        anchors.right: parent.right
        anchors.rightMargin: 16
        anchors.verticalCenter: parent.verticalCenter
        name: "arrow.right"
        size: 12
        weight: Font.Bold
        color: SoftTheme.accentInk
    }
    SoftFocusRing {
        target: button
        radius: 8
    }
}
