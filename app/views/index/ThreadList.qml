pragma ComponentBehavior: Bound

import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls

// The threads grouped by time. Only the rows near the visible stretch exist.
SoftScrollView {
    id: list

    required property ThreadIndexContent content

    // The time line is left of the rows.
    readonly property real rowIndent: 31
    readonly property real sidePadding: 24
    property bool placed: false
    readonly property int rowsRevision: content?.rowsRevision ?? 0

    // When both are replaced, the content is destroyed before the list.
    contentHeight: content?.contentHeight ?? 0
    takesWindowKeys: true
    onEnabledChanged: ScrollPlaces.keep(content.request, contentY)
    onRowsRevisionChanged: ReadingOrder.sortByTop(contentItem)
    Component.onCompleted: {
        contentY = content.viewTop;
        placed = true;
        ReadingOrder.sortByTop(contentItem);
    }

    Binding {
        when: list.placed
        target: list.content
        property: "viewTop"
        value: list.contentY
        restoreMode: Binding.RestoreNone
    }
    Binding {
        target: list.content
        property: "viewHeight"
        value: list.height
    }
    Connections {
        function onScrollRequested(top: real, animated: bool) {
            list.scrollTo(top, animated);
        }

        target: list.content
    }

    Repeater {
        model: list.content?.headers ?? null

        delegate: TimeGroupHeader {
            x: list.sidePadding
            y: row.top
            width: list.width - 2 * list.sidePadding
        }
    }
    Repeater {
        model: list.content?.rows ?? null

        delegate: TaskRowView {
            required property int index

            x: list.sidePadding + list.rowIndent
            y: row.top
            width: list.width - 2 * list.sidePadding - list.rowIndent
            onChosen: list.content.select(index)
            onOpenRequested: list.content.open(index)
        }
    }
}
