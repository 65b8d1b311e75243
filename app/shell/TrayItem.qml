import Qt.labs.platform
import Orvik.Tallyview.Shell
import Orvik.Tallyview.Presentation

// The application's item in the tray. To be made once there is a tray: Qt looks for one only once,
// but registers what it has made with every later one.
SystemTrayIcon {
    id: item

    required property TaskSummary summary
    required property AppCommands commands

    visible: true
    // The tray draws the installed icon by its name; where none is installed, this one.
    icon.name: "org.orvik.Tallyview"
    icon.source: "qrc:/qt/qml/Orvik/Tallyview/Drawing/OrvikIcon.png"
    tooltip: item.summary.toolTip
    onActivated: reason => {
        if (reason === SystemTrayIcon.Trigger)
            commands.showWindow();
    }

    menu: Menu {
        MenuItem {
            text: "显示窗口"
            onTriggered: item.commands.showWindow()
        }
        MenuItem {
            text: "刷新索引"
            onTriggered: item.commands.refresh()
        }
        MenuItem {
            text: "退出"
            onTriggered: item.commands.quit()
        }
    }
}
