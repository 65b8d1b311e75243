pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Shell
import Orvik.Tallyview.Views
import Orvik.Tallyview.Model
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// Everything inside the window below the menu bar: the sidebar, the edge that resizes it, and the
// workspace.
FocusScope {
    id: view

    required property DashboardModel model
    required property AppCommands commands
    required property LayoutSettings layout
    required property Workspace workspace

    Keys.onPressed: event => event.accepted = area.current.scrollForKey(event.key)
    Component.onCompleted: model.startMonitoring()
    Window.onVisibilityChanged: {
        if (Window.visibility !== Window.Hidden)
            layout.healSidebarWidth();
    }

    KeyMonitor {
        commands: view.commands
        installed: true
    }
    Connections {
        function onFocusTaskSearch() {
            area.current.focusSearch();
        }

        target: view.commands
    }
    Rectangle {
        anchors.fill: parent
        color: SoftTheme.canvas
    }
    // The columns come in reading order; what is to the left is drawn on top, so that a workspace
    // that slides in never covers it.
    SidebarView {
        id: sidebar

        z: 1
        width: view.layout.sidebarWidth
        height: parent.height
        model: view.model
        focusMode: view.workspace.focusMode
        appearanceModeRaw: view.layout.appearanceMode
        onModeToggled: view.workspace.toggleMode()
        onAppearanceChosen: rawValue => view.layout.appearanceMode = rawValue
    }
    SidebarResizeHandle {
        id: handle

        z: 1
        anchors.left: sidebar.right
        height: parent.height
        minimumValue: view.layout.minimumSidebarWidth
        maximumValue: view.layout.maximumSidebarWidth
        defaultValue: view.layout.defaultSidebarWidth
        onResized: width => view.layout.sidebarWidth = width

        Binding on value {
            value: view.layout.sidebarWidth
        }
    }
    ReplacedContent {
        id: area

        anchors.left: handle.right
        anchors.right: parent.right
        height: parent.height
        identity: view.workspace.focusMode ? "focus" : "standard"
        content: ReplaceableContent {
            id: shown

            readonly property bool isFocus: identity === "focus"

            function focusSearch() {
                if (isFocus)
                    (focusWorkspace.itemAt(0) as FocusWorkspaceView).focusSearch();
                else
                    (standardWorkspace.itemAt(0) as ThreadWorkspace).focusSearch();
            }
            function scrollForKey(key: int): bool {
                return isFocus ? (focusWorkspace.itemAt(0) as FocusWorkspaceView).scrollForKey(key) : (standardWorkspace.itemAt(0) as ThreadWorkspace).scrollForKey(key);
            }

            Repeater {
                id: focusWorkspace

                model: shown.isFocus ? 1 : 0

                delegate: FocusWorkspaceView {
                    anchors.fill: parent
                    focus: true
                    live: shown.live
                    model: view.model
                    focusProject: view.workspace.focusProject
                }
            }
            Repeater {
                id: standardWorkspace

                model: shown.isFocus ? 0 : 1

                delegate: ThreadWorkspace {
                    anchors.fill: parent
                    focus: true
                    live: shown.live
                    model: view.model
                    title: "任务动态"
                }
            }
        }
    }
}
