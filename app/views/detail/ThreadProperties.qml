pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation

// The recorded properties of a thread.
Column {
    id: properties

    required property threadDetail detail
    required property CopyMenu copyMenu

    spacing: 16

    // By number, so that a row stays, and what is selected in it, when its value changes.
    Repeater {
        model: properties.detail.properties.length

        delegate: PropertyRow {
            required property int index

            width: properties.width
            row: properties.detail.properties[index]
            copyMenu: properties.copyMenu
        }
    }
}
