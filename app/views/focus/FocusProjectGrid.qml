pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls

// The project cards, as many in a row as fit.
SoftScrollView {
    id: scroll

    required property var cards

    readonly property real smallestCell: 220
    readonly property real largestCell: 320
    readonly property real smallestCard: 190
    readonly property real gap: 16
    readonly property real sidePadding: 30
    readonly property real bottomPadding: 28
    // Above the first row, for its rim, its highlight and the focus ring. The view begins this much
    // higher than the cards do.
    readonly property real headRoom: 14

    readonly property real room: width - 2 * sidePadding
    readonly property int columns: Math.max(1, Math.floor((room + gap) / (smallestCell + gap)))
    readonly property real fittingCell: (room - (columns - 1) * gap) / columns
    readonly property real cellWidth: Math.max(smallestCell, Math.min(largestCell, fittingCell))

    // Cards exist near the visible stretch only; how near changes by whole rows.
    readonly property real pitch: smallestCard + gap
    readonly property real nearTop: (Math.floor(contentY / pitch) - 1) * pitch
    readonly property real nearBottom: nearTop + (Math.ceil(height / pitch) + 3) * pitch
    property bool placed: false

    // Where the card under the pointer is, and what its help says.
    property Item helped: scroll
    property string help

    // The exact name of the project.
    signal selected(key: string)

    revealMargin: headRoom
    contentHeight: headRoom + grid.height + bottomPadding

    Grid {
        id: grid

        x: scroll.sidePadding
        y: scroll.headRoom
        columns: scroll.columns
        spacing: scroll.gap

        Repeater {
            model: scroll.cards

            delegate: Item {
                id: cell

                required property projectCard row
                property bool holdsFocus: false
                readonly property bool isNear: y < scroll.nearBottom && y + height > scroll.nearTop

                function offerHelp(offered: bool) {
                    if (offered) {
                        scroll.helped = cell;
                        scroll.help = row.helpText;
                    } else if (scroll.helped === cell) {
                        scroll.helped = scroll;
                        scroll.help = "";
                    }
                }

                width: scroll.cellWidth
                // A card that goes leaves its height.
                height: scroll.smallestCard

                Repeater {
                    model: cell.holdsFocus || scroll.placed && cell.isNear ? 1 : 0
                    onItemRemoved: cell.offerHelp(false)

                    delegate: FocusProjectCard {
                        row: cell.row
                        smallestHeight: scroll.smallestCard
                        width: cell.width
                        onHeightChanged: cell.height = height
                        onClicked: scroll.selected(row.key)
                        // The pointer may leave it as it goes, when its cell is gone already.
                        onHoveredChanged: cell?.offerHelp(hovered)
                        onActiveFocusChanged: cell.holdsFocus = activeFocus
                    }
                }
            }
        }
        onPositioningComplete: scroll.placed = true
    }
    // One for all: there may be many cards.
    SoftToolTip {
        parent: scroll.helped
        text: scroll.help
        // A card that goes may still count as hovered.
        visible: scroll.help !== "" && Boolean(scroll.helped?.Window.window)
    }
}
