pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Model
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// All projects, the shortcuts to filters, and the largest projects.
SoftScrollView {
    id: view

    required property DashboardModel model
    required property bool live

    placeName: "projects"
    contentHeight: rows.height + 12

    ProjectNavigation {
        id: navigation

        live: view.live
        model: view.model
    }
    Column {
        id: rows

        x: 14
        width: view.width - 28
        spacing: 4

        Item {
            width: parent.width
            height: 34

            SoftText {
                x: 6
                anchors.verticalCenter: parent.verticalCenter
                text: "项目"
                weight: Font.DemiBold
                color: SoftTheme.secondaryInk
            }
        }
        AllProjectsRow {
            width: parent.width
            selected: navigation.allProjects
            count: navigation.threadCount
            label: navigation.allProjectsLabel
            onClicked: navigation.chooseAllProjects()
        }
        QuickRow {
            width: parent.width
            code: "24H"
            title: "今天更新"
            count: navigation.todayCount
            onClicked: navigation.showToday()
        }
        QuickRow {
            width: parent.width
            code: "PIN"
            title: "已固定"
            count: navigation.pinnedCount
            checkable: true
            chosen: navigation.pinnedOnly
            onClicked: navigation.togglePinnedOnly()
        }
        QuickRow {
            width: parent.width
            code: "ARC"
            title: "已归档"
            count: navigation.archivedCount
            onClicked: navigation.showArchived()
        }
        Item {
            width: parent.width
            height: 8 + 1 + 8

            SoftDivider {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width
                axis: Qt.Horizontal
            }
        }
        Repeater {
            model: navigation.projects

            delegate: ProjectRow {
                required property int index

                width: rows.width
                onClicked: navigation.choose(index)
                }
        }
    }
}
