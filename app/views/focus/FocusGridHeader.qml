import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// The title of the project grid, and the figures of all projects.
Item {
    id: header

    required property FocusGridState grid

    implicitHeight: row.height + 24 + 20

    Item {
        id: row

        x: 30
        y: 24
        width: header.width - 60
        height: Math.max(titles.height, figures.height)

        Column {
            id: titles

            anchors.left: parent.left
            anchors.right: figures.left
            anchors.rightMargin: 20
            anchors.bottom: parent.bottom
            spacing: 5

            SoftText {
                width: parent.width
                text: "专注空间"
                size: 24
                weight: Font.Bold
                maximumLineCount: 1
            }
            SoftText {
                width: parent.width
                text: "先选择项目，再进入它的任务动态"
                color: SoftTheme.secondaryInk
                maximumLineCount: 1
            }
        }
        Row {
            id: figures

            anchors.right: parent.right
            anchors.bottom: parent.bottom
            spacing: 20

            SummaryFigure {
                value: header.grid.projectCount
                label: "项目"
            }
            SummaryFigure {
                value: header.grid.runningCount
                label: "进行中"
                tint: SoftTheme.running
            }
            SummaryFigure {
                value: header.grid.totalCount
                label: "全部"
            }
        }
    }
}
