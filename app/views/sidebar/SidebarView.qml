pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Model
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// Brand and workspace switch, the projects or the focus summary, appearance, and the database's
// state.
FocusScope {
    id: view

    required property DashboardModel model
    required property bool focusMode
    required property string appearanceMode

    // The other workspace mode is wanted.
    signal modeToggled()
    signal appearanceChosen(rawValue: string)

    Rectangle {
        anchors.fill: parent
        color: SoftTheme.raisedSurface
    }
    BrandHeader {
        id: header

        x: 17
        width: parent.width - 34
        height: 78
        focusMode: view.focusMode
        onModeToggled: view.modeToggled()
    }
    ReplacedContent {
        anchors.top: header.bottom
        anchors.bottom: picker.top
        anchors.left: parent.left
        anchors.right: parent.right
        identity: view.focusMode ? "focus" : "standard"
        content: ReplaceableContent {
            id: shown

            readonly property bool isFocus: identity === "focus"

            Repeater {
                model: shown.isFocus ? 0 : 1

                delegate: ProjectNavigationView {
                    anchors.fill: parent
                    model: view.model
                    live: shown.live
                }
            }
            Repeater {
                model: shown.isFocus ? 1 : 0

                delegate: FocusSummaryView {
                    anchors.fill: parent
                    model: view.model
                    live: shown.live
                }
            }
        }
    }
    AppearancePicker {
        id: picker

        anchors.bottom: footer.top
        width: parent.width
        current: view.appearanceMode
        onChosen: rawValue => view.appearanceChosen(rawValue)
    }
    StatusFooter {
        id: footer

        anchors.bottom: parent.bottom
        width: parent.width
        model: view.model
    }
}
