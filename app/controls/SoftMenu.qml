import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

/// A menu of the menu bar or of a context.
T.Menu {
    id: menu

    property real leastWidth: 240

    implicitWidth: Math.max(leastWidth, contentItem.implicitWidth + leftPadding + rightPadding)
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    margins: 4
    topPadding: 6
    bottomPadding: 6
    overlap: 0
    delegate: SoftMenuItem {}
    background: SoftSurface {
        radius: 10
        fill: SoftTheme.raisedSurface
        outline: SoftTheme.hairline
        darkShadow.color: SoftTheme.softShadowDark
        darkShadow.blur: 14
        darkShadow.x: 0
        darkShadow.y: 6
    }
    contentItem: ListView {
        implicitWidth: contentItem.childrenRect.width
        implicitHeight: contentHeight
        model: menu.contentModel
        currentIndex: menu.currentIndex
        interactive: false
    }
}
