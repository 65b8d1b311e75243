pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Model
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// Every project as a card, below the figures of them all.
FocusScope {
    id: view

    required property DashboardModel model
    // While it is being replaced it is not live and keeps what it shows.
    property bool live: true

    // The exact name of the project.
    signal selected(key: string)

    FocusGridState {
        id: projects

        live: view.live
        model: view.model
    }
    Rectangle {
        anchors.fill: parent
        color: SoftTheme.canvas
    }
    FocusGridHeader {
        id: header

        anchors.left: parent.left
        anchors.right: parent.right
        grid: projects
    }
    ReplacedContent {
        anchors.top: header.bottom
        anchors.bottom: parent.bottom
        anchors.left: parent.left
        anchors.right: parent.right
        identity: projects.contentIdentity
        content: ReplaceableContent {
            id: shown

            FocusGridContent {
                id: faces

                live: shown.live && view.live
                grid: projects
            }
            Repeater {
                model: faces.face === FocusGridState.Loading ? 1 : 0

                delegate: ProgressIndicator {
                    anchors.centerIn: parent
                    label: "正在读取本机任务…"
                }
            }
            Repeater {
                model: faces.face === FocusGridState.Grid ? 1 : 0

                delegate: FocusProjectGrid {
                    anchors.fill: parent
                    anchors.topMargin: -headRoom
                    cards: faces.cards
                    onSelected: key => view.selected(key)
                }
            }
            Repeater {
                model: faces.face === FocusGridState.Empty ? 1 : 0

                delegate: EmptyIndexView {
                    anchors.fill: parent
                    isError: false
                    longestLine: width - 2 * 58
                    symbol: "square.grid.2x2"
                    title: "还没有可展示的项目"
                    message: faces.message
                }
            }
        }
    }
}
