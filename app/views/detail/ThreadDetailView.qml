import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Drawing
import Orvik.Tallyview.Theme

// One thread: what it is about, the way back to it, its properties.
SoftScrollView {
    id: view

    required property threadDetail detail
    required property DetailState actions

    readonly property real sidePadding: 26

    contentHeight: pieces.height + 2 * pieces.y

    CopyMenu {
        id: copyMenu

        onCopyRequested: text => view.actions.copyText(text)
    }
    Column {
        id: pieces

        x: view.sidePadding
        y: 16
        width: view.width - 2 * view.sidePadding

        DetailToolbar {
            width: parent.width
            badge: view.detail.badge
            pinned: view.detail.pinned
            onPinToggled: view.actions.togglePin()
            onCopyRequested: view.actions.copyID()
        }
        Item {
            width: 1
            height: 26
        }
        StatusPill {
            active: view.detail.active
            label: view.detail.stateLabel
        }
        SoftParagraph {
            width: parent.width
            topPadding: 18
            text: view.detail.title
            size: 19
            weight: Font.Bold
            design: SoftFont.Rounded
            spacing: 3
            maximumLineCount: 7
            color: SoftTheme.primaryInk
        }
        SoftParagraph {
            width: parent.width
            topPadding: 14
            text: view.detail.preview
            size: 10
            design: SoftFont.Rounded
            spacing: 5
            maximumLineCount: 6
            color: SoftTheme.secondaryInk
        }
        Item {
            width: 1
            height: 24
        }
        ContinueButton {
            width: parent.width
            onClicked: view.actions.open()
        }
        Item {
            width: parent.width
            height: 24 + 1 + 24

            SoftDivider {
                anchors.verticalCenter: parent.verticalCenter
                width: parent.width
                axis: Qt.Horizontal
            }
        }
        ThreadProperties {
            width: parent.width
            detail: view.detail
            copyMenu: copyMenu
        }
        Item {
            width: 1
            height: 26
        }
        InfoBox {
            width: parent.width
        }
    }
}
