import QtQuick
import Orvik.Tallyview.Model
import Orvik.Tallyview.Theme

// What is known of the selected thread, and what can be done with it.
FocusScope {
    id: view

    required property DashboardModel model
    // While it is being replaced it is not live and keeps what it shows.
    property bool live: true

    Rectangle {
        anchors.fill: parent
        color: SoftTheme.raisedSurface
    }
}
