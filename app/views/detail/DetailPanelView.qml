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
        id: details

        live: view.live
        model: view.model
    }
    ReplacedContent {
        anchors.fill: parent
        identity: details.identity
        content: ReplaceableContent {
            id: shown

            property threadDetail detail

            Binding {
                target: shown
                property: "detail"
                value: details.detail
                when: shown.live
                restoreMode: Binding.RestoreNone
            }
            // Each face exists only while it shows.
            Repeater {
                model: shown.detail.exists ? 1 : 0

                delegate: ThreadDetailView {
                    anchors.fill: parent
                    detail: shown.detail
                    actions: details
                }
            }
            Repeater {
                model: shown.detail.exists ? 0 : 1

                delegate: EmptyDetailView {
                    anchors.fill: parent
                }
            }
        }
    }
}
