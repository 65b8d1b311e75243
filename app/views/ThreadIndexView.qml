pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Model
import Orvik.Tallyview.Theme

// The threads of the current filters below the header that sets them.
FocusScope {
    id: view

    required property DashboardModel model
    required property string title
    // Shows the back button, and keeps the project when filters are reset.
    property bool canGoBack: false

    readonly property bool searchFocused: header.searchFocused

    signal backRequested()

    function focusSearch() {
        header.focusSearch();
    }

    Rectangle {
        anchors.fill: parent
        color: SoftTheme.canvas
    }
    ThreadIndexState {
        id: state

        model: view.model
    }
    ReplacedContent {
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        identity: state.contentIdentity
        content: ReplaceableContent {
            id: shown

            ThreadIndexContent {
                id: content

                live: shown.live
                index: state
            }
            Loader {
                anchors.fill: parent
                sourceComponent: {
                    switch (content.face) {
                    case ThreadIndexContent.Loading:
                        return loadingFace;
                    case ThreadIndexContent.List:
                        return listFace;
                    default:
                        return emptyFace;
                    }
                }
            }
            Component {
                id: loadingFace

                LoadingIndexView {}
            }
            Component {
                id: listFace

                ThreadList {
                    content: content
                }
            }
            Component {
                id: emptyFace

                EmptyIndexView {
                    isError: content.face === ThreadIndexContent.Error
                    symbol: isError ? "exclamationmark.triangle" : "line.3.horizontal.decrease.circle"
                    title: isError ? "无法读取任务" : "没有匹配的任务"
                    message: isError ? content.errorMessage : "换一个时间范围或状态，也可以重置全部筛选。"
                }
            }
        }
    }
    ThreadIndexHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        index: state
        title: view.title
        canGoBack: view.canGoBack
        onBackRequested: view.backRequested()
    }
}
