import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// Help that appears below its parent after the pointer or the keyboard's focus has rested there.
T.ToolTip {
    id: tip

    // Whether one of them rests there.
    property bool wanted: true

    readonly property real longestLine: 420

    x: parent ? Math.round((parent.width - width) / 2) : 0
    y: parent ? parent.height + 6 : 0
    implicitWidth: Math.min(longestLine, contentItem.implicitWidth) + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    horizontalPadding: 9
    verticalPadding: 5
    margins: 6
    delay: 700
    // What has left the window may still count as hovered until the next frame.
    visible: wanted && !!parent && !!parent.Window.window
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    contentItem: SoftText {
        text: tip.text
        wrapMode: Text.Wrap
    }

    background: SoftSurface {
        radius: 7
        fill: SoftTheme.liftedSurface
        outline: SoftTheme.hairline
        darkShadow.color: SoftTheme.softShadowDark
        darkShadow.blur: 6
        darkShadow.x: 2
        darkShadow.y: 3
    }
}
