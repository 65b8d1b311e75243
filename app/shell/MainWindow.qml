import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Shell
import Orvik.Tallyview.Model
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// The application's one window, shown by its keeper. Its sizes are those of the content; the menu
// bar, and above it the title bar if the window draws its own frame, are added to them. If the
// screen has no room for the least size, as may be with large text, the window can be smaller and
// the content scrolls.
T.ApplicationWindow {
    id: window

    required property DashboardModel model
    required property AppCommands commands
    required property WindowAppearance appearance
    required property WindowChrome chrome
    required property LayoutSettings layout
    required property Workspace workspace

    property int leastWidth: 1100
    property int leastHeight: 700
    readonly property int barsHeight: chrome.height + bar.implicitHeight
    // How much the desktop's panels may take of a screen that is too small.
    readonly property int screenMargin: 64

    title: "Orvik Tallyview"
    width: 1440
    height: 900 + barsHeight
    minimumWidth: leastWidth <= Screen.width ? leastWidth : Screen.width - screenMargin
    minimumHeight: leastHeight + barsHeight <= Screen.height ? leastHeight + barsHeight : Screen.height - screenMargin
    color: SoftTheme.canvas
    menuBar: Column {
        TitleBar {
            visible: window.chrome.titleBarShown
            width: window.width
            height: window.chrome.height
            chrome: window.chrome
            title: window.title
        }
        AppMenuBar {
            id: bar

            width: window.width
            commands: window.commands
        }
    }

    Binding {
        target: SoftTheme
        property: "dark"
        value: window.appearance.dark
    }
    Binding {
        target: SoftTheme
        property: "highContrast"
        value: window.appearance.highContrast
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
    Binding {
        target: SoftTheme
        property: "windowRim"
        value: window.chrome.rimShown ? 5 : 0
    }
    WindowRim {
        parent: window.contentItem.parent
        z: 3
        anchors.fill: parent
        visible: window.chrome.rimShown
    }
    KeyMonitor {
        commands: window.commands
        menuBar: bar
        popups: scroll.popups
    }
    SoftScrollView {
        id: scroll

        readonly property Item popups: T.Overlay.overlay

        anchors.fill: parent
        clip: false
        contentWidth: Math.max(width, window.leastWidth)
        contentHeight: Math.max(height, window.leastHeight)
        scrollersStay: true

        ContentView {
            width: parent.width
            height: parent.height
            focus: true
            model: window.model
            layout: window.layout
            workspace: window.workspace
        }
    }
}
