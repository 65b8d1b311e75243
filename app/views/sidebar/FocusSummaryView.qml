import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Model
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// What the focus mode is, and two figures.
Item {
    id: view

    required property DashboardModel model
    required property bool live

    clip: true

    SidebarState {
        id: figures

        live: view.live
        model: view.model
    }
    Column {
        x: 18
        y: 20
        width: view.width - 36
        spacing: 18

        Column {
            width: parent.width
            spacing: 7

            Row {
                spacing: 6

                SoftSymbol {
                    anchors.verticalCenter: parent.verticalCenter
                    name: "scope"
                    size: 13
                    weight: Font.Bold
                    color: SoftTheme.accent
                }
                SoftText {
                    anchors.verticalCenter: parent.verticalCenter
                    text: "专注模式"
                    size: 13
                    weight: Font.Bold
                    design: SoftFont.Rounded
                    color: SoftTheme.accent
                }
            }
            SoftParagraph {
                width: parent.width
                text: "主界面只保留项目入口。选择项目后，再逐步进入相关任务。"
                size: 10
                spacing: 4
                color: SoftTheme.secondaryInk
            }
        }
        Row {
            id: metrics

            width: parent.width
            spacing: 10

            FocusMetric {
                width: (metrics.width - metrics.spacing) / 2
                value: figures.projectCount
                label: "项目"
            }
            FocusMetric {
                width: (metrics.width - metrics.spacing) / 2
                value: figures.runningCount
                label: "进行中"
                tint: SoftTheme.running
            }
        }
        SoftSurface {
            width: parent.width
            height: Math.max(sparkles.implicitHeight, hint.implicitHeight) + 24
            radius: 11
            fill: SoftTheme.withOpacity(SoftTheme.insetSurface, 0.62)

            SoftSymbol {
                id: sparkles

                x: 12
                anchors.verticalCenter: parent.verticalCenter
                name: "sparkles"
                size: 11
                weight: Font.Medium
                color: SoftTheme.accent
            }
            SoftParagraph {
                id: hint

                anchors.left: sparkles.right
                anchors.leftMargin: 8
                anchors.right: parent.right
                anchors.rightMargin: 12
                anchors.verticalCenter: parent.verticalCenter
                text: "点击右上角按钮随时返回标准模式"
                size: 9
                color: SoftTheme.mutedInk
            }
        }
    }
}
