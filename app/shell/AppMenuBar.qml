import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Shell
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

T.MenuBar {
    id: menuBar

    required property AppCommands commands

    readonly property bool hasOpenMenu: Array.from(menus).some(menu => menu.visible)

    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: 30
    leftPadding: 8
    background: Rectangle {
        color: SoftTheme.raisedSurface

        SoftDivider {
            anchors.bottom: parent.bottom
            width: parent.width
            axis: Qt.Horizontal
        }
    }
    contentItem: Row {
        Repeater {
            model: menuBar.contentModel
        }
    }
    delegate: T.MenuBarItem {
        id: title

        implicitWidth: implicitContentWidth + 20
        implicitHeight: 29
        // A menu bar takes a menu that is closed while its title is hovered for open.
        hoverEnabled: false
        Accessible.role: Accessible.MenuItem
        Accessible.name: text
        Accessible.onPressAction: triggered()
        background: Rectangle {
            anchors.fill: parent
            anchors.topMargin: 3
            anchors.bottomMargin: 3
            radius: 6
            color: title.highlighted || pointer.hovered ? SoftTheme.insetSurface : SoftTheme.clear
        }
        contentItem: SoftText {
            horizontalAlignment: Text.AlignHCenter
            verticalAlignment: Text.AlignVCenter
            text: title.text
            size: 12
        }

        HoverHandler {
            id: pointer

            onHoveredChanged: {
                if (pointer.hovered && !title.highlighted && (title.menuBar as AppMenuBar).hasOpenMenu) {
                    title.triggered();
                }
            }
        }
    }

    Shortcut {
        sequence: "F10"
        onActivated: (menuBar.itemAt(0) as T.MenuBarItem).triggered()
    }
    AppMenu {
        title: "文件"

        AppAction {
            text: "退出"
            shortcut: "Ctrl+Q"
            onTriggered: menuBar.commands.quit()
        }
    }
    AppMenu {
        title: "任务"

        AppAction {
            text: "搜索任务"
            shortcut: "Ctrl+K"
            onTriggered: menuBar.commands.focusTaskSearch()
        }
        AppAction {
            text: "打开所选任务"
            shortcut: "Ctrl+O"
            enabled: menuBar.commands.canOpenSelected
            onTriggered: menuBar.commands.openSelected()
        }
        AppAction {
            text: "刷新索引"
            shortcut: "Ctrl+R"
            onTriggered: menuBar.commands.refresh()
        }
        T.MenuSeparator {
            implicitWidth: 200
            implicitHeight: 11
            contentItem: Item {
                SoftDivider {
                    anchors.verticalCenter: parent.verticalCenter
                    x: 12
                    width: parent.width - 24
                    axis: Qt.Horizontal
                }
            }
        }
        AppAction {
            text: "发送测试通知"
            shortcut: "Ctrl+Shift+N"
            onTriggered: menuBar.commands.sendTestNotification()
        }
    }
}
