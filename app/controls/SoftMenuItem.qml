import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

/// One command of a menu; `keysText` names its keys.
T.MenuItem {
    id: item

    property string keysText

    readonly property bool lit: highlighted && enabled

    implicitWidth: leftPadding + implicitContentWidth + rightPadding + (keysText === "" ? 0 : 24 + keys.implicitWidth)
    implicitHeight: 30
    leftPadding: 16
    rightPadding: 16
    hoverEnabled: true
    Accessible.name: text
    background: Rectangle {
        anchors.fill: item
        anchors.leftMargin: 5
        anchors.rightMargin: 5
        radius: 6
        color: item.lit ? SoftTheme.accent : SoftTheme.clear
    }
    contentItem: SoftText {
        verticalAlignment: Text.AlignVCenter
        text: item.text
        size: 12
        color: !item.enabled ? SoftTheme.mutedInk : item.lit ? SoftTheme.accentInk : SoftTheme.primaryInk
    }

    SoftText {
        id: keys

        anchors.right: parent.right
        anchors.rightMargin: item.rightPadding
        anchors.verticalCenter: parent.verticalCenter
        text: item.keysText
        color: item.lit ? SoftTheme.accentInk : SoftTheme.mutedInk
    }
}
