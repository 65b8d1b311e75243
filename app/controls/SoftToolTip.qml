pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

/// Help that appears below `about` after the pointer or the keyboard's focus has rested there;
/// `wanted` says whether one of them does. Made only then, as there are many.
Instantiator {
    id: help

    required property Item about
    required property string text
    required property bool wanted

    readonly property real longestLine: 420

    active: wanted

    delegate: T.ToolTip {
        id: tip

        parent: help.about
        x: Math.round((help.about.width - width) / 2)
        y: help.about.height + 6
        implicitWidth: Math.min(help.longestLine, contentItem.implicitWidth) + leftPadding + rightPadding
        implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
        horizontalPadding: 9
        verticalPadding: 5
        margins: 6
        delay: 700
        text: help.text
        // What has left the window may still count as hovered until the next frame.
        visible: !!help.about.Window.window
        closePolicy: T.Popup.CloseOnPressOutsideParent

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

        // What has not the focus hears no keys.
        Shortcut {
            sequence: "Escape"
            enabled: tip.visible
            onActivated: tip.close()
            onActivatedAmbiguously: tip.close()
        }
    }
}
