pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Theme

// The project cards, as many in a row as fit.
SoftScrollView {
    id: scroll

    required property var cards

    readonly property real smallestCell: 220
    readonly property real largestCell: 320
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

    // The card under the pointer, else this view, and what the card's help says.
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

            delegate: FocusProjectCard {
                id: card

                width: scroll.cellWidth
                onClicked: scroll.selected(row.key)
                onHoveredChanged: {
                    if (hovered) {
                        scroll.helped = card;
                        scroll.help = row.helpText;
                    } else if (scroll.helped === card) {
                        scroll.helped = scroll;
                        scroll.help = "";
                    }
                }
            }
        }
    }
    // One for all: there may be many cards.
    SoftToolTip {
        parent: scroll.helped
        text: scroll.help
        // A card that goes may still count as hovered.
        visible: scroll.help !== "" && scroll.helped.Window.window !== null
    }
}
