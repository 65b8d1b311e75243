pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

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
    readonly property real columnPitch: Math.max(smallestCell, Math.min(largestCell, fittingCell)) + gap

    // Cards exist near the visible stretch only; how near changes by whole rows.
    readonly property real pitch: smallestCard + gap
    readonly property real nearTop: (Math.floor(contentY / pitch) - 1) * pitch
    readonly property real nearBottom: nearTop + (Math.ceil(height / pitch) + 3) * pitch
    property bool placed: false

    // The exact name of the project.
    signal selected(key: string)

    revealMargin: headRoom
    takesWindowKeys: true
    placeName: "cards"
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
                required property int index
                readonly property int column: index % scroll.columns
                property bool holdsFocus: false
                readonly property bool isNear: y < scroll.nearBottom && y + scroll.smallestCard > scroll.nearTop

                // Whole points: every gap is the same, and the last column ends where the room does.
                width: Math.round((column + 1) * scroll.columnPitch) - Math.round(column * scroll.columnPitch) - scroll.gap
                height: scroll.smallestCard

                Repeater {
                    model: cell.holdsFocus || scroll.placed && cell.isNear ? 1 : 0

                    delegate: FocusProjectCard {
                        id: card

                        row: cell.row
                        smallestHeight: scroll.smallestCard
                        width: cell.width
                        onClicked: scroll.selected(row.key)
                        onActiveFocusChanged: cell.holdsFocus = activeFocus

                        // Stays with the cell when the card goes.
                        Binding {
                            target: cell
                            property: "height"
                            value: card.height
                            restoreMode: Binding.RestoreNone
                        }
                    }
                }
            }
        }
        onPositioningComplete: scroll.placed = true
    }
    // What scrolls up stays out of the header, into which the room for the first row reaches.
    Rectangle {
        parent: scroll
        width: parent.width
        height: Math.min(scroll.headRoom, scroll.contentY)
        color: SoftTheme.canvas
    }
}
