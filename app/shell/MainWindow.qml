import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Shell
import Orvik.Tallyview.Model
import Orvik.Tallyview.Theme

// The application's one window, shown by its keeper. Its sizes are those of the content; the menu bar
// comes on top.
T.ApplicationWindow {
    id: window

    required property DashboardModel model
    required property AppCommands commands
    required property WindowAppearance appearance
    required property LayoutSettings layout
    required property Workspace workspace

    title: "Orvik Tallyview"
    width: 1440
    height: 900 + bar.implicitHeight
    minimumWidth: 1100
    minimumHeight: 700 + bar.implicitHeight
    color: SoftTheme.canvas
    menuBar: AppMenuBar {
        id: bar

        width: window.width
        commands: window.commands
    }

    Binding {
        target: SoftTheme
        property: "dark"
        value: window.appearance.dark
    }
    Binding {
        target: SoftTheme
        property: "reducedMotion"
        value: window.appearance.reducedMotion
    }
    Binding {
        target: SoftTheme
        property: "unseen"
        value: !window.visible || window.visibility === Window.Minimized
    }
    ContentView {
        anchors.fill: parent
        focus: true
        model: window.model
        commands: window.commands
        layout: window.layout
        workspace: window.workspace
    }
}
