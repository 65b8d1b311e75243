import QtQuick
import Orvik.Tallyview.Shell
import Orvik.Tallyview.Model
import Orvik.Tallyview.Theme
import Orvik.Tallyview.Views

// Everything inside the window below the menu bar.
FocusScope {
    id: view

    required property DashboardModel model
    required property AppCommands commands

    Component.onCompleted: model.startMonitoring()

    Rectangle {
        anchors.fill: parent
        color: SoftTheme.canvas
    }
    ThreadIndexView {
        id: threads

        anchors.fill: parent
        focus: true
        model: view.model
        title: "任务动态"
    }
    Connections {
        function onFocusTaskSearch() {
            threads.focusSearch();
        }

        target: view.commands
    }
}
