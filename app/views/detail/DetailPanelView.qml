pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Model
import Orvik.Tallyview.Controls
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
    DetailState {
        id: selection

        live: view.live
        model: view.model
    }
    ReplacedContent {
        anchors.fill: parent
        identity: selection.identity
        content: ReplaceableContent {
            id: shown

            DetailState {
                id: thread

                live: shown.live && view.live
                model: view.model
            }
            // Each face exists only while it shows.
            Repeater {
                model: thread.detail.exists ? 1 : 0

                delegate: ThreadDetailView {
                    anchors.fill: parent
                    placeName: "details of " + shown.identity
                    detail: thread.detail
                    actions: thread
                }
            }
            Repeater {
                model: thread.detail.exists ? 0 : 1

                delegate: EmptyDetailView {
                    anchors.fill: parent
                }
            }
        }
    }
}
