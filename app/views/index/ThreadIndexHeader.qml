pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// Title and actions, status and search, recency and count.
Item {
    id: header

    required property ThreadIndexState index

    readonly property bool canGoBack: index.project !== null

    implicitHeight: rows.height + 20 + 16

    Column {
        id: rows

        x: 24
        y: 20
        width: header.width - 48
        spacing: 12

        Item {
            width: parent.width
            height: 30

            SoftIconButton {
                id: back

                anchors.verticalCenter: parent.verticalCenter
                visible: header.canGoBack
                symbol: "chevron.left"
                symbolSize: 11
                symbolWeight: Font.Bold
                helpText: "返回项目"
                label: "返回项目列表"
                onClicked: header.index.project.close()
            }
            SoftText {
                id: title

                anchors.left: header.canGoBack ? back.right : parent.left
                anchors.leftMargin: header.canGoBack ? 8 : 0
                anchors.right: reset.visible ? reset.left : refresh.left
                anchors.rightMargin: 16
                anchors.verticalCenter: parent.verticalCenter
                text: header.index.title
                size: 22
                weight: Font.Bold
                design: SoftFont.Rounded
                maximumLineCount: 1
            }
            T.AbstractButton {
                id: reset

                anchors.right: refresh.left
                anchors.rightMargin: 8
                anchors.verticalCenter: parent.verticalCenter
                enabled: header.index.hasExtraFilters
                opacity: enabled ? 1 : 0
                visible: opacity > 0
                text: "重置筛选"
                implicitWidth: resetText.implicitWidth
                implicitHeight: resetText.implicitHeight
                hoverEnabled: true
                Accessible.name: text
                Accessible.onPressAction: clicked()
                onClicked: header.index.resetFilters()

                Behavior on opacity { ReplaceAnimation {} }

                SoftVeil {
                    anchors.margins: -4
                    target: reset
                    radius: 6
                }
                SoftText {
                    id: resetText

                    text: reset.text
                    size: 10
                    weight: Font.DemiBold
                    design: SoftFont.Rounded
                    color: SoftTheme.accent
                }
                SoftFocusRing {
                    anchors.margins: -4
                    target: reset
                    radius: 4
                }
            }
            SoftIconButton {
                id: refresh

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                symbol: "arrow.clockwise"
                symbolSize: 11
                symbolWeight: Font.DemiBold
                helpText: "刷新任务"
                enabled: !header.index.loading
                spinning: header.index.loading
                onClicked: header.index.refresh()
            }
        }
        Item {
            width: parent.width
            height: status.height

            // If there is no room for both, the segments shrink so that one can type.
            StatusControl {
                id: status

                width: Math.max(186, Math.min(310, parent.width - 14 - search.leastWidth))
                index: header.index
            }
            SearchField {
                id: search

                anchors.left: status.right
                anchors.leftMargin: 14
                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                index: header.index
            }
        }
        Item {
            width: parent.width
            height: 30

            Row {
                spacing: 9

                Repeater {
                    model: header.index.recencyTitles

                    delegate: RecencyCapsule {
                        required property int index
                        required property string modelData

                        text: modelData
                        chosen: header.index.recencyFilter === index
                        onClicked: header.index.chooseRecency(index)
                    }
                }
            }
            SoftText {
                id: count

                anchors.right: parent.right
                anchors.verticalCenter: parent.verticalCenter
                Accessible.role: Accessible.Notification
                text: header.index.visibleCount
                size: 9
                design: SoftFont.Monospaced
                color: SoftTheme.mutedInk
            }
            Announcement {
                item: count
                occasion: header.index.request
            }
        }
    }
}
