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
    required property string title
    // Shows the back button, and keeps the project when filters are reset.
    property bool canGoBack: false
    // While it is being replaced it is not live and keeps what it shows.
    property bool live: true

    readonly property bool searchFocused: header.searchFocused

    signal backRequested()

    function focusSearch() {
        header.focusSearch();
    }
    function scrollForKey(key: int): bool {
        return replaced.current.scrollForKey(key);
    }

    Keys.onPressed: event => event.accepted = scrollForKey(event.key)

    Rectangle {
        anchors.fill: parent
        color: SoftTheme.canvas
    }
    ThreadIndexState {
        id: threadIndex

        live: view.live
        model: view.model
    }
    // First in reading order, and above the list that fades and grows below it.
    ThreadIndexHeader {
        id: header

        z: 1
        anchors.left: parent.left
        anchors.right: parent.right
        index: threadIndex
        title: view.title
        canGoBack: view.canGoBack
        onBackRequested: view.backRequested()
    }
    ReplacedContent {
        id: replaced

        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        identity: threadIndex.contentIdentity
        content: ReplaceableContent {
            id: shown

            function scrollForKey(key: int): bool {
                return list.count > 0 && (list.itemAt(0) as ThreadList).scrollForKey(key);
            }

            ThreadIndexContent {
                id: faces

                live: shown.live
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
                id: list

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
                    title: isError ? "无法读取任务" : "没有匹配的任务"
                    message: isError ? faces.errorMessage : "换一个时间范围或状态，也可以重置全部筛选。"
                }
            }
        }
    }
}
