import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Shell
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// The title bar of a window that draws its own frame: dragging moves the window, a double click
// maximizes it, the right button opens the window's menu.
Rectangle {
    id: bar

    required property WindowChrome chrome
    required property string title

    color: SoftTheme.raisedSurface
    Accessible.role: Accessible.TitleBar
    Accessible.name: title

    MouseArea {
        anchors.fill: parent
        onDoubleClicked: bar.chrome.perform("maximize")
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.RightButton
        onClicked: menu.popup()
    }
    DragHandler {
        target: null
        grabPermissions: PointerHandler.CanTakeOverFromAnything
        onActiveChanged: {
            if (active)
                bar.Window.window.startSystemMove();
        }
    }
    TitleBarButtons {
        id: left

        x: 8
        anchors.verticalCenter: parent.verticalCenter
        chrome: bar.chrome
        names: bar.chrome.leftButtons
    }
    SoftText {
        anchors.centerIn: parent
        width: Math.min(implicitWidth, parent.width - 2 * Math.max(left.width, right.width) - 32)
        text: bar.title
        size: 13
        weight: Font.DemiBold
        color: Window.active ? SoftTheme.secondaryInk : SoftTheme.mutedInk
    }
    TitleBarButtons {
        id: right

        anchors.right: parent.right
        anchors.rightMargin: 8
        anchors.verticalCenter: parent.verticalCenter
        chrome: bar.chrome
        names: bar.chrome.rightButtons
    }
    SoftMenu {
        id: menu

        leastWidth: 140

        T.Action {
            text: bar.chrome.title("maximize", bar.chrome.maximized)
            onTriggered: bar.chrome.perform("maximize")
        }
        T.Action {
            text: bar.chrome.title("minimize", bar.chrome.maximized)
            onTriggered: bar.chrome.perform("minimize")
        }
        T.Action {
            text: bar.chrome.title("close", bar.chrome.maximized)
            onTriggered: bar.chrome.perform("close")
        }
    }
}
