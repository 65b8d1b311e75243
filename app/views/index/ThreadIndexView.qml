pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Model
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// The threads of the current filters below the header that sets them.
FocusScope {
    id: view

    required property DashboardModel model
    // The open project, or null for the threads of all.
    property FocusProject project: null
    // While it is being replaced it is not live and keeps what it shows.
    property bool live: true

    Rectangle {
        anchors.fill: parent
        color: SoftTheme.canvas
    }
    ThreadIndexState {
        id: threadIndex

        live: view.live
        project: view.project
        model: view.model
    }
    // First in reading order, and above the list that fades and grows below it.
    ThreadIndexHeader {
        id: header

        z: 1
        anchors.left: parent.left
        anchors.right: parent.right
        index: threadIndex
    }
    ReplacedContent {
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        identity: threadIndex.contentIdentity
        content: ReplaceableContent {
            id: shown

            ThreadIndexContent {
                id: faces

                live: shown.live
                viewTop: ScrollPlaces.top(threadIndex.requestNow())
                index: threadIndex
            }
            // Each face exists only while it shows.
            Repeater {
                model: faces.face === ThreadIndexContent.Loading ? 1 : 0

                delegate: LoadingIndexView {
                    anchors.fill: parent
                }
            }
            Repeater {
                model: faces.face === ThreadIndexContent.List ? 1 : 0

                delegate: ThreadList {
                    anchors.fill: parent
                    content: faces
                }
            }
            Repeater {
                model: faces.face === ThreadIndexContent.Error || faces.face === ThreadIndexContent.Empty ? 1 : 0

                delegate: EmptyIndexView {
                    anchors.fill: parent
                    isError: faces.face === ThreadIndexContent.Error
                    symbol: isError ? "exclamationmark.triangle" : "line.3.horizontal.decrease.circle"
                    title: isError ? "无法读取任务" : faces.emptyTitle
                    message: isError ? faces.errorMessage : "换一个时间范围或状态，也可以重置全部筛选。"
                }
            }
        }
    }
}
