import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Theme

/// One command of a menu; `keysText` names its keys.
T.MenuItem {
    id: item

    property string keysText

    implicitWidth: title.implicitWidth + keys.implicitWidth + (keysText === "" ? 32 : 56)
    implicitHeight: 30
    Accessible.name: text
    background: Rectangle {
        anchors.fill: item
        anchors.leftMargin: 5
        anchors.rightMargin: 5
        radius: 6
        color: item.highlighted && item.enabled ? SoftTheme.accent : SoftTheme.clear
    }
    contentItem: Item {
        SoftText {
            id: title

            x: 16
            anchors.verticalCenter: parent.verticalCenter
            text: item.text
            size: 12
            color: !item.enabled ? SoftTheme.mutedInk : item.highlighted ? SoftTheme.accentInk : SoftTheme.primaryInk
        }
        SoftText {
            id: keys

            anchors.right: parent.right
            anchors.rightMargin: 16
            anchors.verticalCenter: parent.verticalCenter
            text: item.keysText
            size: 11
            color: item.highlighted && item.enabled ? SoftTheme.accentInk : SoftTheme.mutedInk
        }
    }
}
