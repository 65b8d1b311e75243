import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Model
import Orvik.Tallyview.Drawing

// The thread index beside the details of the selected thread.
FocusScope {
    id: workspace

    required property DashboardModel model
    // The open project, or null for the threads of all.
    property FocusProject project: null
    // While it is being replaced it is not live and keeps what it shows.
    property bool live: true

    ThreadIndexView {
        anchors.left: parent.left
        anchors.right: divider.left
        height: parent.height
        focus: true
        live: workspace.live
        model: workspace.model
        project: workspace.project
    }
    SoftDivider {
        id: divider

        anchors.right: details.left
        height: parent.height
        axis: Qt.Vertical
    }
    DetailPanelView {
        id: details

        anchors.right: parent.right
        width: 340
        height: parent.height
        live: workspace.live
        model: workspace.model
    }
}
