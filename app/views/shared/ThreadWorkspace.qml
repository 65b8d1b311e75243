import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Model
import Orvik.Tallyview.Drawing

// The thread index beside the details of the selected thread.
FocusScope {
    id: workspace

    required property DashboardModel model
    required property string title
    property bool canGoBack: false
    // While it is being replaced it is not live and keeps what it shows.
    property bool live: true

    signal backRequested()

    function focusSearch() {
        threads.focusSearch();
    }
    function scrollForKey(key: int): bool {
        return threads.scrollForKey(key);
    }

    ThreadIndexView {
        id: threads

        anchors.left: parent.left
        anchors.right: divider.left
        height: parent.height
        focus: true
        live: workspace.live
        model: workspace.model
        title: workspace.title
        canGoBack: workspace.canGoBack
        onBackRequested: workspace.backRequested()
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
