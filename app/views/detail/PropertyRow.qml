import QtQuick
import Orvik.Tallyview.Views
import Orvik.Tallyview.Presentation
import Orvik.Tallyview.Controls
import Orvik.Tallyview.Theme

// A label and a value that can be selected and copied, with the mouse or, while the row has the
// focus, with the keys of a text editor.
Item {
    id: view

    required property detailProperty row
    required property CopyMenu copyMenu

    // Both are at least those of a line with Han, so that rows without are no closer.
    readonly property real firstBaseline: Math.max(10.4, title.baselineOffset, excerpt.ascent)

    activeFocusOnTab: true
    Keys.forwardTo: [text]
    Accessible.role: Accessible.StaticText
    Accessible.name: row.value
    Accessible.description: row.label
    onActiveFocusChanged: {
        if (!activeFocus)
            text.deselect();
    }
    implicitHeight: Math.max(14, title.y + title.height, text.y + text.height)

    SoftText {
        id: title

        y: Math.round(view.firstBaseline - baselineOffset)
        width: 74
        text: view.row.label
        size: 9
        design: SoftFont.Rounded
        color: SoftTheme.secondaryInk
    }
    SoftExcerpt {
        id: excerpt

        text: view.row.value
        font: text.font
        width: text.width
        lineCount: view.row.maximumLines
    }
    TextEdit {
        id: text

        y: Math.round(view.firstBaseline - excerpt.ascent)
        anchors.left: title.right
        anchors.leftMargin: 10
        anchors.right: parent.right
        readOnly: true
        selectByMouse: true
        selectByKeyboard: true
        // The menu takes the focus; what it copies stays selected.
        persistentSelection: true
        textFormat: TextEdit.PlainText
        wrapMode: TextEdit.Wrap
        horizontalAlignment: TextEdit.AlignLeft
        text: excerpt.shown
        font: SoftFont.font(view.row.monospaced ? 9 : 10, Font.Normal, view.row.monospaced ? SoftFont.Monospaced : SoftFont.Rounded)
        color: SoftTheme.primaryInk
        selectionColor: SoftTheme.accent
        selectedTextColor: SoftTheme.accentInk
        Accessible.ignored: true
        onActiveFocusChanged: {
            if (!activeFocus && !view.copyMenu.visible)
                deselect();
        }
        Keys.onPressed: event => {
            event.accepted = event.matches(StandardKey.Copy);
            if (event.accepted)
                view.copyMenu.copyRequested(excerpt.original(text.selectionStart, text.selectionEnd));
        }

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.RightButton
            cursorShape: Qt.IBeamCursor
            onPressed: {
                text.forceActiveFocus(Qt.MouseFocusReason);
                view.copyMenu.offer(excerpt.original(text.selectionStart, text.selectionEnd));
            }
        }
    }
    SoftFocusRing {
        target: view
        wanted: view.activeFocus
        radius: 4
    }
}
