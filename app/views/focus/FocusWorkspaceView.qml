pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Model
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// Every project as a card or, once one is chosen, its threads. Opening a project moves right,
// going back moves left.
FocusScope {
    id: view

    required property DashboardModel model
    required property FocusProject focusProject
    // While it is being replaced it is not live and keeps what it shows.
    property bool live: true

    // The title of the open project, empty for the grid.
    property string shownTitle

    function focusSearch() {
        replaced.current.focusSearch();
    }
    function scrollForKey(key: int): bool {
        return replaced.current.scrollForKey(key);
    }

    Binding on shownTitle {
        value: view.focusProject.title
        when: view.live
        restoreMode: Binding.RestoreNone
    }
    ReplacedContent {
        id: replaced

        anchors.fill: parent
        identity: view.shownTitle
        duration: SoftTheme.focusSlideDuration
        content: ReplaceableContent {
            id: shown

            readonly property bool isGrid: identity === ""

            function focusSearch() {
                if (!isGrid)
                    (opened.itemAt(0) as ThreadWorkspace).focusSearch();
            }
            function scrollForKey(key: int): bool {
                return isGrid ? (grid.itemAt(0) as FocusProjectGridView).scrollForKey(key) : (opened.itemAt(0) as ThreadWorkspace).scrollForKey(key);
            }

            enterOffset: isGrid ? -10 : 12
            enterScale: 1
            leaveScale: isGrid ? 1 : 0.985

            Repeater {
                id: grid

                model: shown.isGrid ? 1 : 0

                delegate: FocusProjectGridView {
                    anchors.fill: parent
                    focus: true
                    live: shown.live && view.live
                    model: view.model
                    onSelected: key => view.focusProject.open(key)
                }
            }
            Repeater {
                id: opened

                model: shown.isGrid ? 0 : 1

                delegate: ThreadWorkspace {
                    anchors.fill: parent
                    focus: true
                    live: shown.live && view.live
                    model: view.model
                    title: shown.identity
                    canGoBack: true
                    onBackRequested: view.focusProject.close()
                }
            }
        }
    }
}
