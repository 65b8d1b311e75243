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
    required property LayoutSettings layout
    required property Workspace workspace

    Keys.forwardTo: [PageKeys.taker]
    Keys.onEscapePressed: workspace.focusProject.close()
    Component.onCompleted: model.startMonitoring()
    Window.onVisibilityChanged: {
        if (Window.visibility !== Window.Hidden)
            layout.healSidebarWidth();
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
        appearanceMode: view.layout.appearanceMode
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
        anchors.left: handle.right
        anchors.right: parent.right
        height: parent.height
        identity: view.workspace.focusMode ? "focus" : "standard"
        content: ReplaceableContent {
            id: shown

            readonly property bool isFocus: identity === "focus"

            Repeater {
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
                model: shown.isFocus ? 0 : 1

                delegate: ThreadWorkspace {
                    anchors.fill: parent
                    focus: true
                    live: shown.live
                    model: view.model
                }
            }
        }
    }
}
