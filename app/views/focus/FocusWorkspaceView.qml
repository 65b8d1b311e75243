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

    Binding on shownTitle {
        value: view.focusProject.title
        when: view.live
        restoreMode: Binding.RestoreNone
    }
    ReplacedContent {
        anchors.fill: parent
        identity: view.shownTitle
        duration: SoftTheme.focusSlideDuration
        content: ReplaceableContent {
            id: shown

            readonly property bool isGrid: identity === ""

            enterOffset: isGrid ? -10 : 12
            enterScale: 1
            leaveScale: isGrid ? 1 : 0.985

            Repeater {
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
                model: shown.isGrid ? 0 : 1

                delegate: ThreadWorkspace {
                    anchors.fill: parent
                    focus: true
                    live: shown.live && view.live
                    model: view.model
                    project: view.focusProject
                }
            }
        }
    }
}
